// The command line with a provider: every verb, every format, every outcome.
#include "tests/host/cli/command_line_test.h"
#include "tests/host/mof/schema_file.h"

#include <array>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <unistd.h>

namespace cmpihost {
namespace {

constexpr const char* things = "Name              Number\n"
                               "thing 1           1\n"
                               "a \"second\" thing  2\n"
                               "thing 3           3\n"
                               "\n"
                               "3 objects\n";

/// The properties of Test_Echo, as text output shows them.
std::string echo(const std::string& operation, const std::string& path, const std::string& properties,
                 const std::string& more = "") {
    return path + "\n  Operation      string  \"" + operation + "\"\n  Path           string  \"" + path +
           "\"\n  InitNameSpace  string  \"root/cimv2\"\n  Properties     string  \"" + properties + "\"\n" + more +
           "\n1 object\n";
}

void expect_output(const Outcome& outcome, const std::string& out) {
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out, out);
    EXPECT_EQ(outcome.err, "");
}

void expect_error(const Outcome& outcome, int exit_code, const std::string& err) {
    EXPECT_EQ(outcome.exit_code, exit_code);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, err);
}

// ---------------------------------------------------------------------------------------------------------- verbs

TEST_F(CommandLines, EnumerateInstanceNames) {
    expect_output(ask({"ein", "Test_Thing"}), things);
}

TEST_F(CommandLines, EnumerateInstances) {
    const Outcome outcome = ask({"ei", "Test_Thing"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out.find("//switch/root/cimv2:Test_Thing.Name=\"thing 1\",Number=1\n"
                               "  Name     string    \"N\"\n"
                               "  Flag     boolean   TRUE\n"
                               "  U8       uint8     255\n"
                               "  U64      uint64    18446744073709551615\n"
                               "  S64      sint64    -9223372036854775808\n"
                               "  Real     real64    2.5\n"
                               "  Letter   char16    'A'\n"
                               "  Missing  string    NULL\n"
                               "  Since    datetime  \"20260102030405.000006+060\"\n"
                               "  List     uint16[]  {7, NULL}\n"
                               "  Text     string    \"tab\\there\"\n"
                               "\n"),
              0u)
        << outcome.out;
    EXPECT_NE(outcome.out.find("\n3 objects\n"), std::string::npos);
}

TEST_F(CommandLines, PropertyListsReachTheProvider) {
    expect_output(ask({"gi", "Test_Thing", "flag", "Text"}),
                  "//switch/root/cimv2:Test_Thing.Name=\"thing 1\",Number=1\n"
                  "  Name  string   \"N\"\n"
                  "  Flag  boolean  TRUE\n"
                  "  Text  string   \"tab\\there\"\n"
                  "\n"
                  "1 object\n");
    expect_output(ask({"ei", "Test_Echo", "A", "B"}), echo("enumerateInstances", "root/cimv2:Test_Echo", "A;B;"));
    expect_output(ask({"ei", "Test_Echo", ""}), echo("enumerateInstances", "root/cimv2:Test_Echo", ""));
}

TEST_F(CommandLines, GetInstance) {
    expect_output(ask({"gi", "Test_Echo"}), echo("getInstance", "root/cimv2:Test_Echo", "(null)"));
}

TEST_F(CommandLines, KeysReachTheProvider) {
    const Outcome outcome =
        ask({"-o", "json", "gi", R"(//h/ns:Test_Echo.S="s",N=5,M=-5,B=TRUE,R="Other.k=\"v\"",Q="n:Other.k=1")"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_NE(outcome.out.find(R"("value": "//h/ns:Test_Echo.S=\"s\",N=5,M=-5,B=TRUE,R=\"ns:Other.k=\\\"v\\\"\",)"
                               R"(Q=\"n:Other.k=1\"")"),
              std::string::npos)
        << outcome.out;
}

TEST_F(CommandLines, TheNamespaceIsGivenOrInThePath) {
    expect_output(ask({"-n", "root/cimv2", "gi", "Test_Echo"}), echo("getInstance", "root/cimv2:Test_Echo", "(null)"));
    const Outcome both = ask({"-n", "other", "gi", "ns:Test_Echo"});
    EXPECT_EQ(both.out.find("ns:Test_Echo\n"), 0u) << both.out;
    const Outcome option = ask({"-n", "other", "gi", "Test_Echo"});
    EXPECT_EQ(option.out.find("other:Test_Echo\n"), 0u) << option.out;
}

TEST_F(CommandLines, Associators) {
    expect_output(ask({"ai", "Test_Echo", "P", "--ac", "AC", "--arc", "ARC", "--ar", "AR", "--arr", "ARR"}),
                  echo("associators", "root/cimv2:Test_Echo", "P;", "  Filters        string  \"AC|ARC|AR|ARR\"\n"));
    expect_output(ask({"ai", "Test_Echo"}), echo("associators", "root/cimv2:Test_Echo", "(null)",
                                                 "  Filters        string  \"(null)|(null)|(null)|(null)\"\n"));
}

TEST_F(CommandLines, AssociatorNames) {
    expect_output(ask({"ain", "X", "--ac", "AC", "--arc", "ARC", "--ar", "AR", "--arr", "ARR"}),
                  "CLASS         AC  ARC  AR  ARR  Name     Number\n"
                  "Test_Filters  AC  ARC  AR  ARR  -        -\n"
                  "Test_Thing    -   -    -   -    thing 1  1\n"
                  "\n"
                  "2 objects\n");
}

TEST_F(CommandLines, References) {
    expect_output(
        ask({"ri", "Test_Echo", "P", "--arc", "ARC", "--ar", "AR"}),
        echo("references", "root/cimv2:Test_Echo", "P;", "  Filters        string  \"(null)|ARC|AR|(null)\"\n"));
}

TEST_F(CommandLines, ReferenceNames) {
    expect_output(
        ask({"rin", "X", "--arc", "ARC", "--ar", "AR"}),
        R"(root/cimv2:Test_Pair.First="//switch/root/cimv2:Test_Thing.Name=\"thing 1\",Number=1",)"
        R"(Second="//switch/root/cimv2:Test_Thing.Name=\"a \\\"second\\\" thing\",Number=2",ARC="ARC",AR="AR")"
        "\n\n1 object\n");
}

TEST_F(CommandLines, CreateInstance) {
    expect_output(ask({"ci", "Test_Echo.Name=\"n\""}), "Name\nn\n\n1 object\n");
}

TEST_F(CommandLines, CreateInstanceWithValuesOfEveryNotation) {
    expect_output(ask({"ci", "C", "Number=-5", "Flag=true", "Quoted=\"a b\"", "Plain=a b", "Empty="}),
                  "Number  Flag  Quoted  Plain  Empty\n"
                  "-5      TRUE  a b     a b    \"\"\n"
                  "\n1 object\n");
}

TEST_F(CommandLines, ModifyInstance) {
    expect_output(ask({"mi", "Test_Echo"}), echo("modifyInstance", "root/cimv2:Test_Echo", "(null)"));
    expect_output(ask({"mi", "Test_Echo", "P=1", "Q=text"}), echo("modifyInstance", "root/cimv2:Test_Echo", "P;Q;"));
}

TEST_F(CommandLines, CallMethod) {
    expect_output(ask({"cm", "Test_Thing.Name=\"n\"", "Add", "A=2", "B=40"}),
                  "ReturnValue  uint64  42\n"
                  "Text         string  \"2 and 40\"\n"
                  "Where        string  \"root/cimv2:Test_Thing.Name=\\\"n\\\"\"\n");
    expect_output(ask({"cm", "Test_Thing", "Quiet"}), "");
    expect_error(ask({"cm", "Test_Thing", "Other"}), 1,
                 "note: class Test_Thing is not in the schema\nCIM error 17 (METHOD_NOT_FOUND)\n");
    expect_error(cmpihost_with({"--provider", good_provider, "--name", "Half", "cm", "Test_Thing", "Add"}), 1,
                 "note: class Test_Thing is not in the schema\nCIM error 16 (METHOD_NOT_AVAILABLE)\n");
}

TEST_F(CommandLines, CallMethodInJson) {
    const Outcome outcome = ask({"-o", "json", "cm", "Test_Thing", "Add", "A=2", "B=40"});
    EXPECT_NE(outcome.out.find("\"returned\": {\n    \"type\": \"uint64\",\n    \"value\": 42\n  }"), std::string::npos)
        << outcome.out;
    EXPECT_NE(outcome.out.find("\"name\": \"Text\",\n      \"type\": \"string\",\n      \"value\": \"2 and 40\""),
              std::string::npos)
        << outcome.out;
}

TEST_F(CommandLines, DeleteInstance) {
    expect_error(ask({"di", "Test_Echo"}), 1,
                 "note: class Test_Echo is not in the schema\nCIM error 7 (NOT_SUPPORTED)\n");
}

TEST_F(CommandLines, ExecuteQuery) {
    expect_output(ask({"xq", "Test_Echo", "A", "B"}), echo("execQuery", "root/cimv2:Test_Echo", "(null)",
                                                           "  Query          string  \"SELECT A, B FROM Test_Echo\"\n"
                                                           "  Language       string  \"WQL\"\n"));
    EXPECT_NE(ask({"xq", "Test_Echo"}).out.find("\"SELECT * FROM Test_Echo\""), std::string::npos);
}

TEST_F(CommandLines, AProviderWithoutAnInterface) {
    expect_error(cmpihost_with({"--provider", good_provider, "--name", "Half", "ai", "Test_Echo"}), 1,
                 "note: class Test_Echo is not in the schema\nCIM error 7 (NOT_SUPPORTED)\n");
}

// -------------------------------------------------------------------------------------------------------- formats

TEST_F(CommandLines, Mof) {
    expect_output(ask({"-o", "mof", "gi", "Test_Thing", "Flag", "List"}),
                  "// //switch/root/cimv2:Test_Thing.Name=\"thing 1\",Number=1\n"
                  "instance of Test_Thing {\n"
                  "    Name = \"N\";\n"
                  "    Flag = TRUE;\n"
                  "    List = {7, NULL};\n"
                  "};\n");
    expect_output(ask({"-o", "mof", "ein", "Test_Thing"}),
                  "// //switch/root/cimv2:Test_Thing.Name=\"thing 1\",Number=1\n"
                  "// //switch/root/cimv2:Test_Thing.Name=\"a \\\"second\\\" thing\",Number=2\n"
                  "// //switch/root/cimv2:Test_Thing.Name=\"thing 3\",Number=3\n");
}

/// A reference to a thing as JSON shows it among the keys or the properties of an object.
std::string json_reference(const std::string& role, const std::string& name, int number) {
    return R"(        {
          "name": ")" +
           role + R"(",
          "type": "reference",
          "value": {
            "class": "Test_Thing",
            "namespace": "root/cimv2",
            "host": "switch",
            "keys": [
              {
                "name": "Name",
                "type": "string",
                "value": ")" +
           name + R"("
              },
              {
                "name": "Number",
                "type": "uint32",
                "value": )" +
           std::to_string(number) + R"(
              }
            ],
            "properties": []
          }
        })";
}

TEST_F(CommandLines, Json) {
    const std::string first = json_reference("First", "thing 1", 1);
    const std::string second = json_reference("Second", R"(a \"second\" thing)", 2);
    expect_output(ask({"-o", "json", "ei", "Test_Pair"}), R"({
  "objects": [
    {
      "class": "Test_Pair",
      "namespace": "root/cimv2",
      "host": null,
      "keys": [
)" + first + ",\n" + second + R"(
      ],
      "properties": [
)" + first + R"(
      ]
    }
  ],
  "status": {
    "rc": 0,
    "message": null
  },
  "nullResults": 0,
  "invalidResults": 0
}
)");
}

// ------------------------------------------------------------------------------------------------------- outcomes

TEST_F(CommandLines, CimErrorsAreToldWithTheirName) {
    expect_error(ask({"ei", "No_Such"}), 1,
                 "note: class No_Such is not in the schema\nCIM error 5 (INVALID_CLASS): no class No_Such\n");
    expect_error(ask({"ei", "Test_Codes"}), 1,
                 "note: class Test_Codes is not in the schema\nCIM error 4711 (UNKNOWN)\n");
    expect_error(ask({"-o", "mof", "ei", "No_Such"}), 1,
                 "note: class No_Such is not in the schema\nCIM error 5 (INVALID_CLASS): no class No_Such\n");
}

TEST_F(CommandLines, CimErrorsAreInJsonToo) {
    const Outcome outcome = ask({"-o", "json", "ei", "No_Such"});
    EXPECT_EQ(outcome.exit_code, 1);
    EXPECT_NE(outcome.out.find("\"rc\": 5,\n    \"message\": \"no class No_Such\""), std::string::npos) << outcome.out;
    EXPECT_EQ(outcome.err, "note: class No_Such is not in the schema\nCIM error 5 (INVALID_CLASS): no class No_Such\n");
}

TEST_F(CommandLines, AMessageOfSuccessIsANote) {
    const Outcome outcome = ask({"ei", "Test_Note"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out, "0 objects\n");
    EXPECT_EQ(outcome.err, "note: class Test_Note is not in the schema\nnote: nothing to see\n");
}

TEST_F(CommandLines, NullAndInvalidResultsAreNoted) {
    const Outcome outcome = ask({"ei", "Test_Results"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_NE(outcome.out.find("\n1 object\n"), std::string::npos);
    EXPECT_EQ(outcome.err, "note: 2 null results\nnote: 1 invalid result\n");
    const Outcome json = ask({"-o", "json", "ei", "Test_Results"});
    EXPECT_NE(json.out.find("\"nullResults\": 2,\n  \"invalidResults\": 1\n"), std::string::npos) << json.out;
}

TEST_F(CommandLines, LoaderErrorsAreUsageErrors) {
    expect_error(cmpihost_with({"--provider", "/no/such.so", "ei", "C"}), 2,
                 "cmpihost: provider library /no/such.so: no such file\n");
    expect_error(
        cmpihost_with({"--provider", good_provider, "--name", "Bad", "ei", "C"}), 2,
        "cmpihost: provider library " + good_provider +
            ": has none of Bad_Create_InstanceMI, _Create_AssociationMI, _Create_MethodMI, "
            "_Create_PropertyMI; it has "
            "Good_Create_AssociationMI, Good_Create_InstanceMI, Good_Create_MethodMI, Half_Create_InstanceMI\n");
}

TEST_F(CommandLines, WhatCannotBeWrittenIsAnError) {
    std::FILE* full = std::fopen("/dev/full", "w");
    ASSERT_NE(full, nullptr);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--provider", good_provider, "--name", "Good", "ein", "Test_Thing"}, {"--help"}}) {
        std::FILE* err = std::tmpfile();
        EXPECT_EQ(run_command_line(arguments, full, err), 3);
        EXPECT_EQ(content_of(err), "cmpihost: output could not be written: No space left on device\n");
        std::fclose(err);
        std::clearerr(full);
    }
    std::fclose(full);
}

// ---------------------------------------------------------------------------------------------------------- trace

constexpr const char* trace_of_ein = "factory of instances\n"
                                     "factory of associations\n"
                                     "factory of methods\n"
                                     "Entering names\n"
                                     "cleanup of instances, terminating 1\n"
                                     "cleanup of associations, terminating 1\n"
                                     "cleanup of methods, terminating 1\n";

/// What reaches the test's own standard output while cmpihost runs.
std::string leaked_by(const std::vector<std::string>& arguments) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(cmpihost_with(arguments).out, things);
    return testing::internal::GetCapturedStdout();
}

TEST_F(CommandLines, TheTraceIsDropped) {
    EXPECT_EQ(leaked_by({"--provider", good_provider, "--name", "Good", "ein", "Test_Thing"}), "");
}

TEST_F(CommandLines, StandardOutputIsGivenBack) {
    testing::internal::CaptureStdout();
    std::printf("before\n");
    ask({"ein", "Test_Thing"});
    std::printf("after\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "before\nafter\n");
}

TEST_F(CommandLines, TheTraceGoesToStandardErrorOnRequest) {
    const Outcome outcome = ask({"--trace", "-", "ein", "Test_Thing"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out, things);
    EXPECT_EQ(outcome.err, trace_of_ein);
}

TEST_F(CommandLines, TheTraceGoesToAFile) {
    std::array<char, 32> name{"/tmp/cmpihost-trace-XXXXXX"};
    const int file = mkstemp(name.data());
    ASSERT_GE(file, 0);
    ASSERT_EQ(write(file, "old content that is longer than nothing", 39), 39);
    close(file);
    expect_output(ask({"--trace", name.data(), "ein", "Test_Thing"}), things);
    std::ifstream trace(name.data());
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(trace), {}), trace_of_ein);
    std::filesystem::remove(name.data());
}

TEST_F(CommandLines, ATraceFileThatCannotBeOpened) {
    expect_error(ask({"--trace", "/no/such/folder/file", "ein", "Test_Thing"}), 2,
                 "cmpihost: trace file /no/such/folder/file: cannot be opened: No such file or directory\n");
}

TEST_F(CommandLines, ATraceThatIsLostIsNoted) {
    const Outcome outcome = ask({"--trace", "/dev/full", "ein", "Test_Thing"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out, things);
    EXPECT_EQ(outcome.err, "note: the trace is incomplete: it could not be written\n");
}

// ------------------------------------------------------------------------------------------------------ scenarios

constexpr const char* bad_scenario = "cmpihost: bad.toml:3:7: ports: a list of tables is expected\n";

TEST_F(CommandLines, AScenarioIsLoadedBeforeTheFactoriesAreCalled) {
    expect_error(cmpihost_with({"--provider", odd_provider, "--name", "Empty", "--scenario", "good.toml", "ei", "C"}),
                 1, "note: class C is not in the schema\nCIM error 7 (NOT_SUPPORTED)\n");
    expect_error(cmpihost_with({"--provider", odd_provider, "--name", "Empty", "--scenario", "bad.toml", "ei", "C"}), 2,
                 bad_scenario);
    const Outcome without = ask({"--scenario", "good.toml", "ei", "C"});
    expect_error(without, 2,
                 "cmpihost: provider library " + good_provider +
                     ": takes no scenario (it does not come with switchsim_load_scenario())\n");
}

TEST_F(CommandLines, TheEnvironmentNamesAScenarioTheSameWay) {
    setenv("SWITCHSIM_SCENARIO", "bad.toml", 1);
    expect_error(cmpihost_with({"--provider", odd_provider, "--name", "Empty", "ei", "C"}), 2, bad_scenario);
    expect_error(cmpihost_with({"--provider", odd_provider, "--name", "Empty", "--scenario", "good.toml", "ei", "C"}),
                 1, "note: class C is not in the schema\nCIM error 7 (NOT_SUPPORTED)\n");
    setenv("SWITCHSIM_SCENARIO", "", 1);
    expect_error(cmpihost_with({"--provider", odd_provider, "--name", "Empty", "ei", "C"}), 1,
                 "note: class C is not in the schema\nCIM error 7 (NOT_SUPPORTED)\n");
    unsetenv("SWITCHSIM_SCENARIO");
}

TEST_F(CommandLines, TheEnvironmentsScenarioIsNotForOtherProviders) {
    setenv("SWITCHSIM_SCENARIO", "bad.toml", 1);
    expect_output(ask({"ein", "Test_Thing"}), things);
    unsetenv("SWITCHSIM_SCENARIO");
}

// --------------------------------------------------------------------------------------------------- typing errors

TEST_F(CommandLines, WhatTheSchemaDoesNotDeclareIsNoted) {
    const SchemaFolder folder;
    const std::string mof = folder.file("things.mof", things_mof);
    const Outcome property = ask({"--schema", mof, "ei", "Test_Thing", "flag", "Flagg"});
    EXPECT_EQ(property.exit_code, 0);
    EXPECT_NE(property.out.find("\n3 objects\n"), std::string::npos);
    EXPECT_EQ(property.err, "note: class Test_Thing declares no property Flagg\n");
    EXPECT_EQ(ask({"--schema", mof, "mi", "Test_Thing", "Nam=x"})
                  .err.find("note: class Test_Thing declares no property "
                            "Nam\n"),
              0u);
    EXPECT_EQ(ask({"--schema", mof, "ei", "Test_Thin"}).err,
              "note: class Test_Thin is not in the schema\nCIM error 5 (INVALID_CLASS): no class Test_Thin\n");
    EXPECT_EQ(ask({"--schema", mof, "ei", "Test_Thing", "Name,Number", "Flag"}).err, "");
}

TEST_F(CommandLines, APropertyListMayHaveCommas) {
    expect_output(ask({"ei", "Test_Echo", "A,B", "C"}), echo("enumerateInstances", "root/cimv2:Test_Echo", "A;B;C;"));
}

TEST_F(CommandLines, ATextOfEqualsSignsIsAReferenceWhereTheSchemaSaysSo) {
    const SchemaFolder folder;
    const std::string mof =
        folder.file("m.mof", "class Test_Echo { [Key] string InstanceID; };\n"
                             "[Association] class Test_Tie { [Key] Test_Echo REF A; [Key] Test_Echo REF B; };\n");
    const auto value_of = [&mof](const std::string& key) {
        const Outcome outcome = ask({"--schema", mof, "-o", "json", "gi", "Test_Echo." + key});
        const auto at = outcome.out.find("\"type\": ");
        return at == std::string::npos ? outcome.out : outcome.out.substr(at + 8, 12);
    };
    EXPECT_EQ(value_of("InstanceID=\"acme:x.y=1\"").substr(0, 8), "\"string\"");
    EXPECT_EQ(value_of("Other=\"acme:x.y=1\"").substr(0, 11), "\"reference\"");
}

TEST_F(CommandLines, APathMayStandAsOtherToolsWriteIt) {
    EXPECT_EQ(ask({"gi", "/root/x:Test_Echo"}).out.find("root/x:Test_Echo\n"), 0u);
    EXPECT_EQ(ask({"gi", "http://host:5988/root/x:Test_Echo"}).out.find("//host:5988/root/x:Test_Echo\n"), 0u);
}

TEST_F(CommandLines, AWholeQueryIsHandedOn) {
    const Outcome outcome = ask({"-n", "ns", "xq", "select A from Test_Echo where B = 1"});
    EXPECT_NE(outcome.out.find("\"select A from Test_Echo where B = 1\""), std::string::npos) << outcome.out;
    EXPECT_EQ(outcome.out.find("ns:Test_Echo\n"), 0u);
}

} // namespace
} // namespace cmpihost
