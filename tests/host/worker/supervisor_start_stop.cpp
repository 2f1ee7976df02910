// How a supervisor's first worker starts, and how all end. The fixture looks for what is left after each.
#include "tests/host/worker/supervisor_test.h"

#include <sys/wait.h>

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
    std::string told;
    begin([&told](const std::string& error) { told = error; });
    pass(options_.start_timeout);
    run_until([&told] { return !told.empty(); });
    EXPECT_EQ(told, "the worker ended with SIGABRT before it was ready");
    EXPECT_TRUE(logged(LogLevel::error, " is not ready after 86400 s and is ended"));
}

TEST_F(SupervisorStart, BecomingReadyIsLogged) {
    ASSERT_EQ(start(), "");
    EXPECT_TRUE(logged(LogLevel::info, "worker " + std::to_string(worker_pid()) + " is ready"));
}

TEST_F(SupervisorStart, RequestsOfAStartThatFailsAreAnswered) {
    options_.command = {TEST_WORKER, "never"};
    options_.start_timeout = options_.timeout / 2;
    bool told = false;
    begin([&told](const std::string&) { told = true; });
    const unsigned number = ask("say a");
    pass(options_.start_timeout);
    run_until([&told] { return told; });
    EXPECT_EQ(reply_to(number).outcome.http_status, 503u) << "at once, not when its time is over";
}

TEST_F(SupervisorStop, EndOfFileEndsTheWorker) {
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    stop();
    EXPECT_TRUE(logged(LogLevel::info, "worker " + std::to_string(pid) + " ended with exit status 0"));
    EXPECT_EQ(ask("say a"), 0u);
}

TEST_F(SupervisorStop, WorkerThatHangsEndsBySigterm) {
    ASSERT_EQ(start(), "");
    const unsigned number = ask_and_see("subject C", "hang");
    stop(1);
    EXPECT_EQ(text(replies_.at(number)), error_reply("the server is being stopped"));
    EXPECT_TRUE(logged(LogLevel::info, " ended with SIGTERM"));
}

TEST_F(SupervisorStop, WorkerThatIgnoresSigtermIsKilled) {
    ASSERT_EQ(start(), "");
    const unsigned number = ask_and_see("subject C;ignore", "hang");
    stop(2);
    EXPECT_TRUE(replies_.contains(number));
    EXPECT_TRUE(logged(LogLevel::info, " ended with SIGKILL"));
}

TEST_F(SupervisorStop, WorkerThatHangsEndsByItself) {
    options_.command = {TEST_WORKER, "4", "200"}; // for which it waits for what runs
    ASSERT_EQ(start(), "");
    ask_and_see("subject C", "hang");
    stop();
    EXPECT_TRUE(logged(LogLevel::info, " ended with exit status 1"));
}

TEST_F(SupervisorStop, RequestsThatWaitAreAnswered) {
    options_.threads = 1;
    ASSERT_EQ(start(), "");
    ask("hang");
    const unsigned waiting = ask("say waiting");
    stop(1);
    EXPECT_EQ(replies_.at(waiting).outcome.http_status, 503u);
}

TEST_F(SupervisorStop, WhileAPauseLastsNothingIsStarted) {
    const FreshFile file;
    options_.command = {TEST_WORKER, "4", file.path, "2", "1000"};
    options_.first_pause = std::chrono::minutes(1);
    ASSERT_EQ(start(), "");
    reply_to(ask("crash"));
    stop();
    pass(options_.first_pause);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a worker was started";
    EXPECT_EQ(file.size(), 1u);
}

TEST_F(SupervisorStop, BeforeTheWorkerIsReady) {
    options_.command = {TEST_WORKER, "never"};
    bool told = false;
    begin([&told](const std::string&) { told = true; });
    stop(1);
    EXPECT_FALSE(told);
}

TEST_F(SupervisorStop, WithoutItWorkersAreKilled) {
    ASSERT_EQ(start(), "");
    ask_and_see("subject C", "hang");
    supervisor_.reset();
}

TEST_F(SupervisorStop, HangingAndNewWorkerBothEnd) {
    ASSERT_EQ(start(), "");
    ask_and_see("subject C;ignore", "hang");
    pass(options_.timeout);
    EXPECT_EQ(answer("say next"), "next");
    supervisor_->stop([] {});
    wait_for_log(LogLevel::info, " ended with exit status 0");
    stop(2);
    EXPECT_TRUE(logged(LogLevel::info, " ended with SIGKILL"));
}

} // namespace
} // namespace cmpihost::worker
