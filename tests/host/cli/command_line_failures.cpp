// cmpihost with providers that crash, end the process, never come back, or never end.
#include "tests/host/cli/command_line_test.h"
#include "tests/host/mof/schema_file.h"

namespace cmpihost {
namespace {

struct FailureRow {
    std::vector<std::string> arguments;
    const char* out;
    const char* error;
};

Outcome ask_bad(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--provider", bad_provider, "--name", "Bad"});
    return cmpihost_with(arguments);
}

Outcome ask_fault(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--provider", fault_provider, "--name", "Any"});
    return cmpihost_with(arguments);
}

TEST_F(CommandLines, AMisbehavingProviderIsToldInOneLine) {
    const std::vector<FailureRow> rows{
        {{"ei", "Bad_Segv"},
         "",
         "the provider died of signal 11 (SIGSEGV) in enumerateInstances of root/cimv2:Bad_Segv"},
        {{"ein", "Bad_Abort"},
         "",
         "the provider died of signal 6 (SIGABRT) in enumerateInstanceNames of root/cimv2:Bad_Abort"},
        {{"gi", "Bad_Stack.Name=\"x\""},
         "",
         "the provider died of signal 11 (SIGSEGV) in getInstance of root/cimv2:Bad_Stack.Name=\"x\""},
        {{"ei", "Bad_Exit"}, "", "the provider called exit(3) in enumerateInstances of root/cimv2:Bad_Exit"},
        {{"--max-objects", "2", "ein", "Bad_Endless"},
         "Name\ngood\ngood\n\n2 objects\n",
         "the provider returned more than 2 objects in enumerateInstanceNames of root/cimv2:Bad_Endless"},
    };
    for (const FailureRow& row : rows) {
        SCOPED_TRACE(row.error);
        const Outcome outcome = ask_bad(row.arguments);
        EXPECT_EQ(outcome.exit_code, 5);
        EXPECT_EQ(outcome.out, row.out);
        EXPECT_EQ(outcome.err, "cmpihost: " + std::string(row.error) + "\n");
    }
}

/// What is told of a provider that has little time to answer. The time holds for loading, too, which a busy machine may
/// not do in it: more is given then.
std::string told_in_time(const std::string& class_name) {
    for (const std::string seconds : {"0.3", "3", "30"}) {
        const Outcome outcome = ask_bad({"--timeout", seconds, "ei", class_name});
        EXPECT_EQ(outcome.exit_code, 5);
        EXPECT_EQ(outcome.out, "");
        std::string told = outcome.err;
        if (const std::size_t at = told.find(seconds); at != std::string::npos)
            told.replace(at, seconds.size(), "N");
        if (told != "cmpihost: the provider gave no answer for N seconds while it was loaded\n")
            return told;
    }
    return "it was never asked";
}

TEST_F(CommandLines, AProviderThatGivesNoAnswerIsEnded) {
    EXPECT_EQ(told_in_time("Bad_Loop"),
              "cmpihost: the provider gave no answer for N seconds in enumerateInstances of root/cimv2:Bad_Loop\n");
    EXPECT_EQ(told_in_time("Bad_Closes"),
              "cmpihost: the provider closed its connection in enumerateInstances of root/cimv2:Bad_Closes\n");
}

TEST_F(CommandLines, WhatWasAnsweredBeforeACrashIsShown) {
    const Outcome names = ask_fault({"ein", "Fault_Late"});
    EXPECT_EQ(names.exit_code, 5);
    EXPECT_EQ(names.out, "Name\nfirst\nsecond\n\n2 objects\n");
    const Outcome instances = ask_fault({"-o", "mof", "ei", "Fault_Late", "Name"});
    EXPECT_NE(instances.out.find("Name = \"second\""), std::string::npos) << instances.out;
    const Outcome json = ask_fault({"-o", "json", "ein", "Fault_Late"});
    EXPECT_NE(json.out.find("\"second\""), std::string::npos);
    EXPECT_NE(json.out.find("  \"status\": {\n    \"rc\": null,\n    \"message\": \"the provider died of signal 11"),
              std::string::npos)
        << json.out;
}

TEST_F(CommandLines, TheTraceBeforeACrashIsShown) {
    EXPECT_EQ(ask_fault({"--trace", "-", "ein", "Fault_Late"}).err,
              "about to crash\n"
              "cmpihost: the provider died of signal 11 (SIGSEGV) in enumerateInstanceNames of "
              "root/cimv2:Fault_Late\n");
}

TEST_F(CommandLines, AFailureOutsideOfACallIsToldToo) {
    const Outcome loading = cmpihost_with({"--provider", fault_provider, "--name", "Crash", "ein", "C"});
    EXPECT_EQ(loading.exit_code, 5);
    EXPECT_EQ(loading.err, "cmpihost: the provider died of signal 6 (SIGABRT) while it was loaded\n");
    const Outcome cleanup = ask_fault({"ein", "Fault_Cleanup"});
    EXPECT_EQ(cleanup.exit_code, 5);
    EXPECT_EQ(cleanup.out, "Name\nfirst\n\n1 object\n");
    EXPECT_EQ(cleanup.err, "cmpihost: the provider called exit(7) while it cleaned up\n");
}

TEST_F(CommandLines, AnExceptionIsToldAndNothingElse) {
    const auto error_of = [](const char* class_name, const char* fork) {
        std::vector<std::string> arguments{"--provider", throwing_provider, "--name", "Throw", "ein", class_name};
        if (*fork != '\0')
            arguments.emplace_back(fork);
        const Outcome outcome = cmpihost_with(arguments);
        EXPECT_EQ(outcome.exit_code, 5);
        return outcome.err;
    };
    const std::string call = " in enumerateInstanceNames of root/cimv2:Throw_";
    for (const char* fork : {"", "--no-fork"}) {
        EXPECT_EQ(error_of("Throw_Exception", fork),
                  "cmpihost: the provider threw an exception (no memory\\nfor this)" + call + "Exception\n");
        EXPECT_EQ(error_of("Throw_Number", fork),
                  "cmpihost: the provider threw an object that is no exception" + call + "Number\n");
    }
    testing::internal::CaptureStderr();
    EXPECT_EQ(error_of("Throw_Noexcept", ""),
              "cmpihost: the provider died of signal 6 (SIGABRT)" + call + "Noexcept\n");
    const std::string other = testing::internal::GetCapturedStderr(); // an emulator tells of the signal, too
    EXPECT_EQ(other.find("terminate called"), std::string::npos) << other;
}

TEST_F(CommandLines, AProviderInTimeIsNotDisturbed) {
    const Outcome outcome = ask_bad({"--timeout", "1000", "--max-objects", "1", "ein", "Bad_Sleep50"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(CommandLines, AProviderCanRunInThisProcess) {
    EXPECT_EQ(ask({"--no-fork", "ein", "Test_Thing"}).out, ask({"ein", "Test_Thing"}).out);
    EXPECT_EQ(ask({"--no-fork", "ei", "Test_Thing"}).out, ask({"ei", "Test_Thing"}).out);
}

TEST_F(CommandLines, AGraphTellsOfACrash) {
    const SchemaFolder folder;
    const std::string mof = folder.file("bad.mof", "class Bad_Segv { [Key] string Name; };\n");
    const Outcome outcome = cmpihost_with({"--provider", bad_provider, "--name", "Bad", "--schema", mof, "graph"});
    EXPECT_EQ(outcome.exit_code, 5);
    EXPECT_EQ(outcome.err, "cmpihost: the provider died of signal 11 (SIGSEGV) in enumerateInstanceNames of "
                           "root/cimv2:Bad_Segv\n");
}

} // namespace
} // namespace cmpihost
