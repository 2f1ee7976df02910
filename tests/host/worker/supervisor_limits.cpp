// Requests that take too long, and workers that hang.
#include "tests/host/worker/supervisor_test.h"

namespace cmpihost::worker {
namespace {

class SupervisorLimits : public SupervisorTest {
  protected:
    SupervisorLimits() {
        options_.timeout = std::chrono::milliseconds(200);
        options_.abort_wait = std::chrono::milliseconds(100);
        options_.stop_wait = std::chrono::milliseconds(100);
    }

    static const std::string& timed_out() {
        static const std::string reply = error_reply("the provider did not answer GetInstance of C within 0.2 s");
        return reply;
    }

    void wait_for_log(LogLevel level, const std::string& part) {
        run_until([&] { return logged(level, part); });
    }
};

TEST_F(SupervisorLimits, RequestThatHangsIsError1) {
    ASSERT_EQ(start(), "");
    const Reply& reply = reply_to(ask("subject C;hang"));
    EXPECT_EQ(text(reply), timed_out());
    EXPECT_EQ(reply.outcome.cim_status, 1u);
}

TEST_F(SupervisorLimits, RequestThatWasNotReadInTimeIsHttp500) {
    ASSERT_EQ(start(), "");
    EXPECT_EQ(reply_to(ask("hang")).outcome.http_status, 500u);
}

TEST_F(SupervisorLimits, HangIsLoggedAtAThirdOfTheLimit) {
    options_.timeout = std::chrono::milliseconds(300);
    ASSERT_EQ(start(), "");
    const unsigned number = ask("subject C;hang");
    wait_for_log(LogLevel::warning, " has not answered GetInstance of C for 0.1 s");
    EXPECT_FALSE(replies_.contains(number));
    reply_to(number);
}

TEST_F(SupervisorLimits, AnotherWorkerTakesNewRequests) {
    ASSERT_EQ(start(), "");
    const pid_t first = worker_pid();
    reply_to(ask("subject C;hang"));
    EXPECT_TRUE(logged(LogLevel::error, "worker " + std::to_string(first) +
                                            " hangs in GetInstance of C, another one takes new requests"));
    EXPECT_NE(worker_pid(), first);
}

TEST_F(SupervisorLimits, OthersOfTheHangingWorkerAreAnswered) {
    const FreshFile file;
    options_.timeout = std::chrono::milliseconds(1'000);
    ASSERT_EQ(start(), "");
    const unsigned hangs = ask("subject C;hang");
    run_until([this] { return logged(LogLevel::warning, "has not answered"); });
    const unsigned runs = ask("await " + file.path.string() + ";process");
    const pid_t pid = worker_pid();
    reply_to(hangs);
    EXPECT_FALSE(replies_.contains(runs));
    file.make();
    EXPECT_EQ(text(reply_to(runs)).substr(0, 4 + std::to_string(pid).size()), "pid " + std::to_string(pid));
}

TEST_F(SupervisorLimits, HangingWorkerEndsBySigabrtWhenItIsDrained) {
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    reply_to(ask("subject C;hang"));
    wait_for_log(LogLevel::info, "worker " + std::to_string(pid) + " ended with SIGABRT");
    EXPECT_EQ(answer("say next"), "next");
}

TEST_F(SupervisorLimits, WorkerThatIgnoresSigabrtIsKilled) {
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    reply_to(ask("subject C;ignore;hang"));
    wait_for_log(LogLevel::info, "worker " + std::to_string(pid) + " ended with SIGKILL");
}

TEST_F(SupervisorLimits, WorkerThatWakesUpWhileOthersRunEndsInPeace) {
    const FreshFile file;
    options_.timeout = std::chrono::milliseconds(1'000);
    options_.stop_wait = std::chrono::seconds(30);
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    const unsigned late = ask("subject C;await " + file.path.string());
    run_until([this] { return logged(LogLevel::warning, "has not answered"); });
    const unsigned other = ask("subject D;await " + file.path.string() + ";sleep 100;say D");
    reply_to(late);
    file.make();
    EXPECT_EQ(text(reply_to(other)), "D");
    wait_for_log(LogLevel::info, "worker " + std::to_string(pid) + " ended with exit status 0");
}

TEST_F(SupervisorLimits, LongWaitIsNoHang) {
    const FreshFile first;
    const FreshFile second;
    options_.threads = 1;
    options_.timeout = std::chrono::milliseconds(1'200);
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    ask("await " + first.path.string());
    const unsigned late = ask("subject C;await " + second.path.string());
    run_until([this] { return logged(LogLevel::warning, "has not answered a request for 0.4 s"); });
    first.make();
    EXPECT_EQ(text(reply_to(late)), error_reply("the provider did not answer GetInstance of C within 1.2 s"));
    second.make();
    EXPECT_EQ(worker_pid(), pid);
}

TEST_F(SupervisorLimits, WaitingRequestTimesOutAlone) {
    options_.threads = 1;
    ASSERT_EQ(start(), "");
    const unsigned running = ask("subject C;hang");
    const unsigned waiting = ask("say waited");
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
    wait_for_log(LogLevel::info, "worker " + std::to_string(pid) + " ended with SIGABRT");
    EXPECT_EQ(answer("say next"), "next");
}

TEST_F(SupervisorLimits, WorkerThatCrashesWhileItIsDrainedIsTold) {
    const FreshFile file;
    options_.timeout = std::chrono::milliseconds(1'000);
    ASSERT_EQ(start(), "");
    const unsigned hangs = ask("subject C;hang");
    run_until([this] { return logged(LogLevel::warning, "has not answered"); });
    const unsigned crashes = ask("subject C;await " + file.path.string() + ";crash");
    reply_to(hangs);
    file.make();
    EXPECT_EQ(text(reply_to(crashes)), error_reply("the provider ended with SIGSEGV while answering GetInstance of C"));
    EXPECT_EQ(answer("say next"), "next");
}

} // namespace
} // namespace cmpihost::worker
