// How a supervisor's first worker starts, and how all end. The fixture looks for what is left after each.
#include "tests/host/worker/supervisor_test.h"

namespace cmpihost::worker {
namespace {

class SupervisorStart : public SupervisorTest {};
class SupervisorStop : public SupervisorTest {};

TEST_F(SupervisorStart, WorkerThatEndsBeforeItIsReadyIsTheReason) {
    const FreshFile file;
    options_.command = {TEST_WORKER, "4", file.path, "1", "1000"};
    EXPECT_EQ(start(), "the worker ended with exit status 2 before it was ready");
    EXPECT_EQ(file.size(), 1u) << "none is started in its place";
    EXPECT_EQ(ask("say a"), 0u);
}

TEST_F(SupervisorStart, ProgramThatIsNotThereIsTheReason) {
    options_.command = {"/nowhere/worker"};
    EXPECT_EQ(start(), "/nowhere/worker cannot be started: No such file or directory");
    EXPECT_EQ(ask("say a"), 0u);
}

TEST_F(SupervisorStart, WorkerThatDoesNotBecomeReadyIsEnded) {
    options_.command = {TEST_WORKER, "never"};
    options_.start_timeout = std::chrono::milliseconds(100);
    EXPECT_EQ(start(), "the worker ended with SIGABRT before it was ready");
    EXPECT_TRUE(logged(LogLevel::error, " is not ready after 0.1 s and is ended"));
}

TEST_F(SupervisorStart, BecomingReadyIsLogged) {
    ASSERT_EQ(start(), "");
    EXPECT_TRUE(logged(LogLevel::info, "worker " + std::to_string(worker_pid()) + " is ready"));
}

TEST_F(SupervisorStart, RequestsOfAStartThatFailsAreAnswered) {
    options_.command = {TEST_WORKER, "never"};
    options_.start_timeout = std::chrono::milliseconds(100);
    options_.timeout = std::chrono::milliseconds(300);
    begin([](const std::string&) {});
    EXPECT_EQ(reply_to(ask("say a")).outcome.http_status, 503u);
}

TEST_F(SupervisorStop, EndOfFileEndsTheWorker) {
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    stop();
    EXPECT_TRUE(logged(LogLevel::info, "worker " + std::to_string(pid) + " ended with exit status 0"));
    EXPECT_EQ(ask("say a"), 0u);
}

TEST_F(SupervisorStop, WorkerThatHangsEndsBySigterm) {
    options_.command = {TEST_WORKER, "4", "60000"}; // it waits long for what runs
    options_.stop_wait = std::chrono::milliseconds(50);
    ASSERT_EQ(start(), "");
    const unsigned number = ask("subject C;hang");
    EXPECT_EQ(answer("sleep 50;say other"), "other");
    stop();
    EXPECT_EQ(text(replies_.at(number)), error_reply("the server is being stopped"));
    EXPECT_TRUE(logged(LogLevel::info, " ended with SIGTERM"));
}

TEST_F(SupervisorStop, WorkerThatIgnoresSigtermIsKilled) {
    options_.command = {TEST_WORKER, "4", "60000"};
    options_.stop_wait = std::chrono::milliseconds(50);
    ASSERT_EQ(start(), "");
    const unsigned number = ask("subject C;ignore;hang");
    EXPECT_EQ(answer("sleep 50;say other"), "other");
    stop();
    EXPECT_TRUE(replies_.contains(number));
    EXPECT_TRUE(logged(LogLevel::info, " ended with SIGKILL"));
}

TEST_F(SupervisorStop, WorkerThatHangsEndsByItself) {
    options_.stop_wait = std::chrono::seconds(30); // longer than a worker waits for what runs
    ASSERT_EQ(start(), "");
    ask("hang");
    EXPECT_EQ(answer("sleep 50;say other"), "other");
    stop();
    EXPECT_TRUE(logged(LogLevel::info, " ended with exit status 1"));
}

TEST_F(SupervisorStop, RequestsThatWaitAreAnswered) {
    options_.threads = 1;
    options_.stop_wait = std::chrono::milliseconds(50);
    ASSERT_EQ(start(), "");
    ask("hang");
    const unsigned waiting = ask("say waiting");
    stop();
    EXPECT_EQ(replies_.at(waiting).outcome.http_status, 503u);
}

TEST_F(SupervisorStop, WhileAPauseLastsNothingIsStarted) {
    const FreshFile file;
    options_.command = {TEST_WORKER, "4", file.path, "2", "1000"};
    options_.first_pause = std::chrono::milliseconds(20);
    options_.longest_pause = std::chrono::hours(1);
    ASSERT_EQ(start(), "");
    reply_to(ask("crash"));
    stop();
    loop_->run_for(std::chrono::milliseconds(100));
    EXPECT_EQ(file.size(), 1u);
}

TEST_F(SupervisorStop, BeforeTheWorkerIsReady) {
    options_.command = {TEST_WORKER, "never"};
    options_.stop_wait = std::chrono::milliseconds(20);
    bool told = false;
    begin([&told](const std::string&) { told = true; });
    stop();
    EXPECT_FALSE(told);
}

TEST_F(SupervisorStop, WithoutItWorkersAreKilled) {
    ASSERT_EQ(start(), "");
    ask("hang");
    EXPECT_EQ(answer("sleep 50;say other"), "other");
    supervisor_.reset();
}

TEST_F(SupervisorStop, HangingAndNewWorkerBothEnd) {
    options_.timeout = std::chrono::milliseconds(200);
    options_.abort_wait = std::chrono::hours(1);
    options_.stop_wait = std::chrono::milliseconds(500);
    options_.command = {TEST_WORKER, "4", "60000"};
    ASSERT_EQ(start(), "");
    reply_to(ask("subject C;ignore;hang"));
    EXPECT_EQ(answer("say next"), "next");
    stop();
    EXPECT_TRUE(logged(LogLevel::info, " ended with SIGKILL"));
    EXPECT_TRUE(logged(LogLevel::info, " ended with exit status 0"));
}

} // namespace
} // namespace cmpihost::worker
