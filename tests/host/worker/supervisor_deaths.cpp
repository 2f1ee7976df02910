// Workers that end before their time, and others in their place.
#include "tests/host/worker/supervisor_test.h"

#include <csignal>

namespace cmpihost::worker {
namespace {

class SupervisorDeaths : public SupervisorTest {
  protected:
    /// While the event loop stands still.
    static void wait_for_end(pid_t pid) {
        siginfo_t ended;
        ASSERT_EQ(waitid(P_PID, static_cast<id_t>(pid), &ended, WEXITED | WNOWAIT), 0);
    }
};

TEST_F(SupervisorDeaths, SignalIsTold) {
    ASSERT_EQ(start(), "");
    const Reply& reply = reply_to(ask("subject C;say half;crash"));
    const std::string told = "the provider ended with SIGSEGV while answering GetInstance of C";
    EXPECT_EQ(text(reply), error_reply(told));
    EXPECT_EQ(reply.outcome.http_status, 200u);
    EXPECT_EQ(reply.outcome.cim_status, 1u);
    EXPECT_EQ(reply.outcome.objects, 0u);
    EXPECT_EQ(reply.outcome.notes, std::vector<std::string>{told});
    EXPECT_EQ(reply.subject.class_name, "C");
    EXPECT_TRUE(logged(LogLevel::error, " ended with SIGSEGV while answering GetInstance of C"));
}

TEST_F(SupervisorDeaths, ExitStatusIsTold) {
    ASSERT_EQ(start(), "");
    EXPECT_EQ(answer("subject C;exit 3"),
              error_reply("the provider ended with exit status 3 while answering GetInstance of C"));
}

TEST_F(SupervisorDeaths, KillFromOutsideIsTold) {
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    const unsigned number = ask_and_see("subject C", "hang");
    kill(pid, SIGKILL);
    EXPECT_EQ(text(reply_to(number)), error_reply("the provider ended with SIGKILL while answering GetInstance of C"));
}

TEST_F(SupervisorDeaths, RequestWithoutClassIsTold) {
    ASSERT_EQ(start(), "");
    EXPECT_EQ(answer("subject ;crash"), error_reply("the provider ended with SIGSEGV while answering GetInstance"));
}

TEST_F(SupervisorDeaths, RequestThatWasNotReadIsHttp500) {
    ASSERT_EQ(start(), "");
    const Reply& reply = reply_to(ask("crash"));
    EXPECT_EQ(reply.outcome.http_status, 500u);
    EXPECT_TRUE(reply.body.empty());
    EXPECT_EQ(reply.outcome.notes,
              std::vector<std::string>{"the provider ended with SIGSEGV while answering a request"});
}

TEST_F(SupervisorDeaths, AllThatItWorkedOnAreAnswered) {
    const FreshFile file;
    ASSERT_EQ(start(), "");
    const unsigned first = ask_and_see("subject A", "hang");
    const unsigned second = ask_and_see("subject B", "await " + file.path.string() + ";crash");
    file.make();
    EXPECT_EQ(text(reply_to(first)), error_reply("the provider ended with SIGSEGV while answering GetInstance of A"));
    EXPECT_EQ(text(reply_to(second)), error_reply("the provider ended with SIGSEGV while answering GetInstance of B"));
}

TEST_F(SupervisorDeaths, WhatWasAnsweredBeforeIsHandedOver) {
    options_.command = {TEST_WORKER, "1"}; // one after the other, though both are sent
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    const std::string answered(50'000, 'x');
    const unsigned first = ask("subject A;say " + answered);
    const unsigned second = ask("subject B;crash");
    wait_for_end(pid); // before anything is read
    EXPECT_EQ(text(reply_to(first)), answered);
    EXPECT_EQ(text(reply_to(second)), error_reply("the provider ended with SIGSEGV while answering GetInstance of B"));
}

TEST_F(SupervisorDeaths, WhatWaitsGoesToTheNextWorker) {
    options_.threads = 1;
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    const unsigned first = ask("subject C;crash");
    const unsigned second = ask("process");
    EXPECT_EQ(reply_to(first).outcome.cim_status, 1u);
    EXPECT_NE(text(reply_to(second)).substr(0, 4 + std::to_string(pid).size()), "pid " + std::to_string(pid));
    EXPECT_EQ(replies_[second].outcome.objects, 1u);
}

TEST_F(SupervisorDeaths, WhatWasSentIsNotSentAgain) {
    const FreshFile file;
    options_.command = {TEST_WORKER, "4", file.path, "100", "100"};
    ASSERT_EQ(start(), "");
    EXPECT_EQ(reply_to(ask("crash")).outcome.http_status, 500u);
    EXPECT_EQ(answer("say next"), "next");
    EXPECT_EQ(file.size(), 2u) << "the second worker has not crashed";
}

TEST_F(SupervisorDeaths, WhatCannotBeSentIsForTheNextWorker) {
    ASSERT_EQ(start(), "");
    const pid_t pid = worker_pid();
    kill(pid, SIGKILL);
    wait_for_end(pid);
    EXPECT_EQ(answer("say from the next"), "from the next"); // the event loop does not know yet
}

TEST_F(SupervisorDeaths, AnswerToWhatWasNeverSentHarmsNobody) {
    const FreshFile file;
    options_.command = {TEST_WORKER, "forge", file.path};
    ASSERT_EQ(start(), "");
    const unsigned first = ask(std::string(std::size_t{4} << 20, 'q')); // more than the socket takes
    const unsigned second = ask("say second");
    file.make();
    EXPECT_EQ(text(reply_to(second)), "");
    const Reply& reply = reply_to(first);
    EXPECT_EQ(reply.outcome.http_status, 500u);
    EXPECT_EQ(reply.outcome.notes,
              std::vector<std::string>{"the provider ended with exit status 3 while answering a request"});
}

TEST_F(SupervisorDeaths, ChildThatKeepsTheSocketIsNotWaitedFor) {
    const FreshFile file;
    file.make();
    ASSERT_EQ(start(), "");
    EXPECT_EQ(answer("subject C;orphan " + file.path.string()),
              error_reply("the provider ended with SIGABRT while answering GetInstance of C"));
    EXPECT_EQ(answer("say next"), "next");
}

TEST_F(SupervisorDeaths, BrokenFrameEndsTheWorker) {
    ASSERT_EQ(start(), "");
    EXPECT_EQ(answer("subject C;garbage"), error_reply("the provider sent a frame of 1952999795 bytes and was ended "
                                                       "while answering GetInstance of C"));
    EXPECT_EQ(answer("say next"), "next");
}

TEST_F(SupervisorDeaths, SecondSubjectEndsTheWorker) {
    ASSERT_EQ(start(), "");
    EXPECT_EQ(answer("subject C;subject D;hang"),
              error_reply("the provider sent a second subject and was ended while answering GetInstance of C"));
}

TEST_F(SupervisorDeaths, ClosedConnectionEndsTheWorker) {
    ASSERT_EQ(start(), "");
    EXPECT_EQ(answer("subject C;shut"),
              error_reply("the provider closed its connection and was ended while answering GetInstance of C"));
}

TEST_F(SupervisorDeaths, WorkerThatAnsweredIsReplacedAtOnce) {
    options_.first_pause = std::chrono::hours(1);
    ASSERT_EQ(start(), "");
    EXPECT_EQ(answer("say one"), "one");
    reply_to(ask("crash"));
    EXPECT_EQ(answer("say two"), "two");
    EXPECT_FALSE(logged(LogLevel::warning, "the next worker"));
}

TEST_F(SupervisorDeaths, WorkerThatAnsweredNothingIsReplacedAfterAPause) {
    options_.first_pause = std::chrono::milliseconds(100);
    ASSERT_EQ(start(), "");
    const auto begin = std::chrono::steady_clock::now();
    reply_to(ask("crash"));
    EXPECT_EQ(answer("say two"), "two");
    EXPECT_GE(std::chrono::steady_clock::now() - begin, options_.first_pause);
    EXPECT_TRUE(logged(LogLevel::warning, "the next worker is started in 0.1 s"));
}

TEST_F(SupervisorDeaths, PauseDoublesUpToALimit) {
    const FreshFile file;
    options_.command = {TEST_WORKER, "4", file.path, "2", "6"};
    options_.first_pause = std::chrono::milliseconds(10);
    options_.longest_pause = std::chrono::milliseconds(30);
    ASSERT_EQ(start(), "");
    reply_to(ask("crash"));
    EXPECT_EQ(answer("say at last"), "at last");
    EXPECT_EQ(file.size(), 7u);
    std::vector<std::string> pauses;
    for (const auto& [level, line] : log_)
        if (line.starts_with("the next worker is started in "))
            pauses.push_back(line.substr(30));
    EXPECT_EQ(pauses, (std::vector<std::string>{"0.01 s", "0.02 s", "0.03 s", "0.03 s", "0.03 s", "0.03 s"}));
    EXPECT_TRUE(logged(LogLevel::error, " ended with exit status 2"));
}

TEST_F(SupervisorDeaths, PauseIsShortAgainAfterAnAnswer) {
    const FreshFile file;
    options_.command = {TEST_WORKER, "4", file.path, "2", "3"};
    options_.first_pause = std::chrono::milliseconds(10);
    ASSERT_EQ(start(), "");
    reply_to(ask("crash"));
    answer("say at last");
    reply_to(ask("crash")); // replaced at once
    log_.clear();
    reply_to(ask("crash"));
    answer("say again");
    EXPECT_TRUE(logged(LogLevel::warning, "the next worker is started in 0.01 s"));
}

TEST_F(SupervisorDeaths, RequestsThatWaitForAWorkerTimeOut) {
    const FreshFile file;
    options_.command = {TEST_WORKER, "4", file.path, "2", "1000"};
    options_.first_pause = std::chrono::hours(1);
    ASSERT_EQ(start(), "");
    reply_to(ask("crash"));
    const unsigned number = ask("say nobody hears it");
    pass(options_.timeout);
    const Reply& reply = reply_to(number);
    EXPECT_EQ(reply.outcome.http_status, 503u);
    EXPECT_EQ(reply.outcome.notes, std::vector<std::string>{"the provider did not answer a request within 600 s"});
}

} // namespace
} // namespace cmpihost::worker
