// Requests that take too long, and workers that hang.
#include "tests/host/worker/supervisor_test.h"

namespace cmpihost::worker {
namespace {

class SupervisorLimits : public SupervisorTest {
  protected:
    static const std::string& timed_out() {
        static const std::string reply = error_reply("the provider did not answer GetInstance of C within 600 s");
        return reply;
    }

    /// A request whose subject is told, and nothing more.
    unsigned ask_what_hangs() { return ask_and_see("subject C", "hang"); }
};

TEST_F(SupervisorLimits, RequestThatHangsIsError1) {
    ASSERT_EQ(start(), "");
    const unsigned number = ask_what_hangs();
    pass(options_.timeout);
    const Reply& reply = reply_to(number);
    EXPECT_EQ(text(reply), timed_out());
    EXPECT_EQ(reply.outcome.cim_status, 1u);
}

TEST_F(SupervisorLimits, RequestThatWasNotReadInTimeIsHttp500) {
    ASSERT_EQ(start(), "");
    const unsigned number = ask("hang");
    pass(options_.timeout);
    EXPECT_EQ(reply_to(number).outcome.http_status, 500u);
}

TEST_F(SupervisorLimits, HangIsLoggedAtAThirdOfTheLimit) {
    ASSERT_EQ(start(), "");
    const unsigned number = ask_what_hangs();
    EXPECT_FALSE(logged(LogLevel::warning, "has not answered"));
    pass(options_.timeout / 3);
    EXPECT_TRUE(logged(LogLevel::warning, " has not answered GetInstance of C for 200 s"));
    EXPECT_FALSE(replies_.contains(number));
}

TEST_F(SupervisorLimits, AnotherWorkerTakesNewRequests) {
    ASSERT_EQ(start(), "");
    const pid_t first = worker_pid();
    const unsigned number = ask_what_hangs();
    pass(options_.timeout);
    EXPECT_EQ(text(reply_to(number)), timed_out());
    EXPECT_TRUE(logged(LogLevel::error, "worker " + std::to_string(first) +
                                            " hangs in GetInstance of C, another one takes new requests"));
    EXPECT_NE(worker_pid(), first);
}

TEST_F(SupervisorLimits, OthersOfTheHangingWorkerAreAnswered) {
    const FreshFile file;
    ASSERT_EQ(start(), "");
    const unsigned hangs = ask_what_hangs();
    pass(options_.timeout / 2);
    const unsigned runs = ask("await " + file.path.string() + ";process");
    const pid_t pid = worker_pid();
    pass(options_.timeout / 2);
    EXPECT_EQ(text(reply_to(hangs)), timed_out());
    EXPECT_FALSE(replies_.contains(runs));
    file.make();
    EXPECT_EQ(text(reply_to(runs)).substr(0, 4 + std::to_string(pid).size()), "pid " + std::to_string(pid));
}

TEST_F(SupervisorLimits, HangingWorkerEndsBySigabrtWhenItIsDrained) {
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    ask_what_hangs();
    pass(options_.timeout);
    wait_for_log(LogLevel::info, "worker " + std::to_string(pid) + " ended with SIGABRT");
    EXPECT_EQ(answer("say next"), "next");
}

TEST_F(SupervisorLimits, WorkerThatIgnoresSigabrtIsKilled) {
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    ask_and_see("subject C;ignore", "hang");
    pass(options_.timeout);
    pass(options_.abort_wait);
    wait_for_log(LogLevel::info, "worker " + std::to_string(pid) + " ended with SIGKILL");
}

TEST_F(SupervisorLimits, WorkerThatWakesUpWhileOthersRunEndsInPeace) {
    const FreshFile wake;
    const FreshFile awake;
    options_.command = {TEST_WORKER, "2"};
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    const unsigned late = ask_and_see("subject C", "await " + wake.path.string());
    pass(options_.timeout / 2);
    const unsigned other = ask("subject D;await " + awake.path.string() + ";say D");
    ask("make " + awake.path.string()); // by the thread of the late one, when that has ended
    pass(options_.timeout / 2);
    EXPECT_EQ(text(reply_to(late)), timed_out());
    wake.make();
    EXPECT_EQ(text(reply_to(other)), "D");
    wait_for_log(LogLevel::info, "worker " + std::to_string(pid) + " ended with exit status 0");
}

TEST_F(SupervisorLimits, LongWaitIsNoHang) {
    const FreshFile first;
    const FreshFile second;
    const FreshFile begun;
    options_.threads = 1;
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    const unsigned long_one = ask("await " + first.path.string());
    const unsigned late = ask("subject C;make " + begun.path.string() + ";await " + second.path.string());
    pass(options_.timeout / 2);
    first.make();
    reply_to(long_one);
    wait_for_file(begun);
    pass(options_.timeout / 2);
    EXPECT_EQ(text(reply_to(late)), timed_out());
    second.make();
    EXPECT_EQ(worker_pid(), pid);
}

TEST_F(SupervisorLimits, WaitingRequestTimesOutAlone) {
    options_.threads = 1;
    ASSERT_EQ(start(), "");
    const unsigned running = ask_what_hangs();
    const unsigned waiting = ask("say waited");
    pass(options_.timeout);
    EXPECT_EQ(text(reply_to(running)), timed_out());
    EXPECT_EQ(reply_to(waiting).outcome.http_status, 503u);
    EXPECT_EQ(answer("say next"), "next");
}

TEST_F(SupervisorLimits, EndlessReplyIsAHang) {
    options_.max_reply = std::size_t{1} << 20;
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    EXPECT_EQ(text(reply_to(ask("subject C;endless"))),
              error_reply("the reply to GetInstance of C takes more than 1048576 bytes"));
    EXPECT_EQ(answer("say meanwhile"), "meanwhile");
    pass(options_.timeout);
    wait_for_log(LogLevel::info, "worker " + std::to_string(pid) + " ended with SIGABRT");
    EXPECT_EQ(answer("say next"), "next");
}

TEST_F(SupervisorLimits, WorkerThatCrashesWhileItIsDrainedIsTold) {
    const FreshFile file;
    ASSERT_EQ(start(), "");
    const unsigned hangs = ask_what_hangs();
    pass(options_.timeout / 2);
    const unsigned crashes = ask_and_see("subject C", "await " + file.path.string() + ";crash");
    pass(options_.timeout / 2);
    EXPECT_EQ(text(reply_to(hangs)), timed_out());
    file.make();
    EXPECT_EQ(text(reply_to(crashes)), error_reply("the provider ended with SIGSEGV while answering GetInstance of C"));
    EXPECT_EQ(answer("say next"), "next");
}

} // namespace
} // namespace cmpihost::worker
