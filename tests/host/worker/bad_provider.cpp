// The provider that misbehaves does what the tests of the server expect of it.
#include "host/broker/loader.h"

#include <gtest/gtest.h>

#include <sys/time.h>

#include <csignal>

namespace cmpihost {
namespace {

using Operation = Request::Operation;

class BadProvider : public testing::Test {
  protected:
    BadProvider() { library_.create("Bad"); }

    Answer ask(const std::string& class_name, Operation operation = Operation::enumerate_instances) {
        Request request;
        request.operation = operation;
        request.path.class_name = class_name;
        request.path.name_space = "root/test";
        return run(library_.provider(), request);
    }

    /// As ask(), in a process of its own.
    void die_of(const std::string& class_name) {
        std::signal(SIGSEGV, SIG_DFL); // sanitizers have handlers of their own
        std::signal(SIGABRT, SIG_DFL);
        ask(class_name);
    }

    /// As ask(), in a process that ends after a while.
    void ask_for_a_while(const std::string& class_name) {
        const itimerval limit{{0, 0}, {0, 200'000}};
        setitimer(ITIMER_REAL, &limit, nullptr);
        ask(class_name);
    }

    Library library_{TEST_PROVIDERS "/host_bad_provider.so"};
};

TEST_F(BadProvider, EndsTheProcessAsTheClassSays) {
    EXPECT_EXIT(die_of("Bad_Segv"), testing::KilledBySignal(SIGSEGV), "");
    EXPECT_EXIT(die_of("Bad_Abort"), testing::KilledBySignal(SIGABRT), "");
    EXPECT_EXIT(die_of("Bad_Exit"), testing::ExitedWithCode(3), "");
    EXPECT_EXIT(ask_for_a_while("Bad_Loop"), testing::KilledBySignal(SIGALRM), "");
}

TEST_F(BadProvider, RunsOutOfStack) {
    EXPECT_EXIT(die_of("Bad_Stack"), testing::KilledBySignal(SIGSEGV), "");
}

TEST_F(BadProvider, NeverStopsReturningResults) {
    unsigned results = 0;
    const auto leave_after_many = [&results](const HeldObject&, bool) {
        if (++results == 10'000)
            _exit(4);
    };
    Request request;
    request.path = {"Bad_Endless", "root/test", std::nullopt, {}, {}};
    EXPECT_EXIT(run(library_.provider(), request, leave_after_many), testing::ExitedWithCode(4), "");
}

TEST_F(BadProvider, NullAndInvalidResultsAreAroundAGoodOne) {
    for (const Operation operation : {Operation::enumerate_instances, Operation::enumerate_instance_names}) {
        const Answer nulls = ask("Bad_Null", operation);
        EXPECT_EQ(nulls.null_results, 2u);
        EXPECT_EQ(nulls.objects.size(), 1u);
        const Answer invalid = ask("Bad_Garbage", operation);
        EXPECT_EQ(invalid.invalid_results, 2u);
        EXPECT_EQ(invalid.objects.size(), 1u);
    }
}

TEST_F(BadProvider, OthersAnswer) {
    for (const char* name : {"Bad_Good", "Bad_Sleep20", "Bad_Sleep0"})
        for (const auto operation :
             {Operation::enumerate_instances, Operation::enumerate_instance_names, Operation::get_instance}) {
            const Answer answer = ask(name, operation);
            ASSERT_EQ(answer.objects.size(), 1u) << name;
            EXPECT_EQ(answer.objects[0].class_name, name);
            EXPECT_NE(answer.objects[0].key("Name"), nullptr) << name;
        }
    EXPECT_EQ(ask("Other_Good").rc, CMPI_RC_ERR_INVALID_CLASS);
}

TEST_F(BadProvider, PrintsToStandardOutput) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(ask("Bad_Prints").objects.size(), 1u);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "the provider was here\n");
}

} // namespace
} // namespace cmpihost
