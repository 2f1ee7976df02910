// cmpihost with many objects, and with instances that lack what the schema knows; counts, times and progress.
#include "tests/host/cli/command_line_test.h"
#include "tests/host/mof/schema_file.h"

#include <array>
#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

namespace cmpihost {
namespace {

constexpr const char* fault_mof = "class Fault_Keyless {\n"
                                  "    [Key] string Name;\n"
                                  "    [ValueMap{\"1\", \"2\"}, Values{\"Off\", \"On\"}] uint16 Mapped;\n"
                                  "};\n"
                                  "class Fault_After : Fault_Keyless {\n};\n"
                                  "class Fault_Open : Fault_Keyless {\n};\n"
                                  "class Fault_Kind : Fault_Keyless {\n};\n";

class FaultyAnswers : public CommandLines {
  protected:
    Outcome ask(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"--provider", fault_provider, "--name", "Any", "--schema", mof_});
        return cmpihost_with(arguments);
    }
    void TearDown() override { unsetenv("FAULT_MANY"); }

    SchemaFolder folder_;
    std::string mof_ = folder_.file("fault.mof", fault_mof);
};

// ---------------------------------------------------------------------------------------------- what a schema adds

TEST_F(FaultyAnswers, InstancesShowThePathThatTheirClassDeclares) {
    EXPECT_EQ(ask({"ei", "Fault_Keyless", "Name"}).out.find("root/cimv2:Fault_Keyless.Name=\"first\"\n"), 0u);
    const Outcome json = ask({"-o", "json", "gi", "Fault_Keyless"});
    EXPECT_NE(json.out.find("\"keys\": [\n        {\n          \"name\": \"Name\""), std::string::npos) << json.out;
    EXPECT_EQ(ask({"-o", "paths", "ei", "Fault_Keyless"}).out, "'root/cimv2:Fault_Keyless.Name=\"first\"'\n");
}

TEST_F(FaultyAnswers, EnumeratedValuesShowTheirText) {
    EXPECT_EQ(ask({"ei", "Fault_Keyless"}).out, "root/cimv2:Fault_Keyless.Name=\"first\"\n"
                                                "  Name    string  \"first\"\n"
                                                "  Mapped  uint16  2 (On)\n"
                                                "\n"
                                                "1 object\n");
}

// ----------------------------------------------------------------------------------------------------------- check

TEST_F(FaultyAnswers, AreCheckedForTheWayTheyAreGiven) {
    const auto findings = [this](const char* verb, const char* class_name) {
        const Outcome outcome = ask({"--check", verb, class_name});
        EXPECT_EQ(outcome.exit_code, 4) << class_name;
        return outcome.err;
    };
    EXPECT_EQ(findings("ein", "Fault_After"), "check: enumerateInstanceNames: results after returnDone (1 answer)\n");
    EXPECT_EQ(findings("ei", "Fault_Open"), "check: enumerateInstances: no returnDone (1 answer)\n");
    EXPECT_EQ(findings("ein", "Fault_Kind"), "check: Fault_Kind: an instance, expected a path (1 object)\n");
    EXPECT_EQ(findings("ei", "Fault_Kind"), "check: Fault_Kind: a path, expected an instance (1 object)\n");
    EXPECT_EQ(ask({"--check", "ei", "Fault_Keyless"}).exit_code, 0);
}

TEST_F(FaultyAnswers, AreForgivenByTheDeviations) {
    folder_.file("deviations.txt", "enumerateInstances: no returnDone\n");
    EXPECT_EQ(ask({"--check", "ei", "Fault_Open"}).exit_code, 0);
    EXPECT_EQ(ask({"--check", "ein", "Fault_Open"}).exit_code, 4);
}

// -------------------------------------------------------------------------------------------------------- upcalls

TEST_F(FaultyAnswers, RequestsToTheBrokerReachTheProvider) {
    const Outcome outcome = ask({"ei", "Fault_Up"});
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "root/cimv2:Fault_Up.Name=\"up\"\n"
                           "  Name      string  \"first\"\n"
                           "  Got       uint16  2\n"
                           "  Property  uint16  2\n"
                           "\n"
                           "1 object\n");
}

// ------------------------------------------------------------------------------------------------- counts and times

TEST_F(FaultyAnswers, AreCounted) {
    setenv("FAULT_MANY", "12", 1);
    EXPECT_EQ(ask({"count", "Fault_Many"}).out, "12\n");
    EXPECT_EQ(ask({"--count", "ei", "Fault_Keyless"}).out, "1\n");
    EXPECT_EQ(ask({"count"}).out, "CLASS          INSTANCES\n"
                                  "Fault_Keyless  1\n"
                                  "Fault_After    2\n"
                                  "Fault_Open     1\n"
                                  "Fault_Kind     1\n");
    const Outcome unknown = ask({"count", "No_Such"});
    EXPECT_EQ(unknown.exit_code, 1);
    EXPECT_EQ(unknown.out, "");
}

TEST_F(FaultyAnswers, AreTimedWhenRepeated) {
    const Outcome outcome = ask({"--repeat", "3", "ein", "Fault_Keyless"});
    EXPECT_EQ(outcome.out, "Name\nfirst\n\n1 object\n");
    EXPECT_EQ(outcome.err.find("3 times: least "), 0u) << outcome.err;
    EXPECT_TRUE(outcome.err.ends_with(" ms\n"));
    EXPECT_EQ(ask({"ein", "Fault_Keyless"}).err, "");
}

// ------------------------------------------------------------------------------------------------------- streaming

TEST_F(FaultyAnswers, ATableHasTheColumnsOfItsFirstThousandRows) {
    const Outcome outcome = ask({"ein", "Fault_Wide"});
    EXPECT_EQ(outcome.out.find("Name\nnumber 0\n"), 0u);
    EXPECT_NE(outcome.out.find("\nnumber 999\nroot/cimv2:Fault_Wide.Other=\"odd\"\n\n1001 objects\n"),
              std::string::npos);
}

/// What can be read of an answer while it goes on, up to its second line with this text; then nobody reads any more.
std::string beginning_of(const std::vector<std::string>& arguments, const char* text, int& status) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        std::FILE* out = fdopen(ends[1], "w");
        _exit(out == nullptr ? 9 : run_command_line(arguments, out, stderr));
    }
    close(ends[1]);
    std::FILE* in = fdopen(ends[0], "r");
    std::array<char, 256> line{};
    std::string found;
    for (int lines = 0; lines < 2 && std::fgets(line.data(), line.size(), in) != nullptr;)
        if (std::string_view(line.data()).find(text) != std::string_view::npos) {
            found += line.data();
            ++lines;
        }
    std::fclose(in);
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return found;
}

TEST_F(CommandLines, AnEndlessAnswerIsShownUntilNobodyReadsIt) {
    const auto arguments = [](const char* verb, const char* format) {
        return std::vector<std::string>{"--provider", bad_provider, "--name",      "Bad",           "-o",
                                        format,       verb,         "Bad_Endless", "--max-objects", "1000000000"};
    };
    const std::string path = R"(root/cimv2:Bad_Endless.Name="good")";
    const std::string name = R"(          "value": "good")";
    const std::vector<std::tuple<const char*, const char*, std::string>> rows{
        {"ein", "text", "good"},      {"ei", "text", path},        {"ein", "paths", '\'' + path + '\''},
        {"ein", "mof", "// " + path}, {"ei", "mof", "// " + path}, {"ein", "json", name},
    };
    for (const auto& [verb, format, line] : rows) {
        SCOPED_TRACE(std::string(verb) + " " + format);
        int status = 0;
        EXPECT_EQ(beginning_of(arguments(verb, format), line.c_str(), status), line + "\n" + line + "\n");
        EXPECT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(WTERMSIG(status), SIGPIPE);
    }
}

} // namespace
} // namespace cmpihost
