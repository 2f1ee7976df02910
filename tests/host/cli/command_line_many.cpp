// cmpihost with many objects, and with instances that lack what the schema knows; counts, times and progress.
#include "tests/host/cli/command_line_test.h"
#include "tests/host/mof/schema_file.h"

#include <sys/resource.h>
#include <sys/wait.h>

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

/// Memory in KiB that a run takes in a process of its own, with all that it starts.
long memory_of(const std::vector<std::string>& arguments) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        std::FILE* out = std::fopen("/dev/null", "w");
        _exit(out == nullptr ? 9 : run_command_line(arguments, out, out));
    }
    int status = 0;
    rusage use{};
    EXPECT_EQ(wait4(child, &status, 0, &use), child);
    EXPECT_EQ(status, 0);
    return use.ru_maxrss;
}

TEST_F(FaultyAnswers, ManyTakeNoMoreMemoryThanFew) {
    const auto arguments = [this](const char* format) {
        return std::vector<std::string>{"--provider", fault_provider, "--name", "Any", "--schema",
                                        mof_,         "-o",           format,   "ein", "Fault_Many"};
    };
    for (const char* format : {"text", "json", "mof", "paths"}) {
        setenv("FAULT_MANY", "2000", 1);
        const long few = memory_of(arguments(format));
        setenv("FAULT_MANY", "20000", 1);
        const long many = memory_of(arguments(format));
        EXPECT_LT(many - few, 20000 / 2) << format << ": half a KiB for each path, which the provider's process holds";
    }
}

} // namespace
} // namespace cmpihost
