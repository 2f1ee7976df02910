// Requests that a worker answers, and how many it gets.
#include "tests/host/worker/supervisor_test.h"

#include <csignal>

#include <unistd.h>

namespace cmpihost::worker {
namespace {

class SupervisorAnswers : public SupervisorTest {};

TEST_F(SupervisorAnswers, ReplyHasSubjectOutcomeAndBody) {
    ASSERT_EQ(start(), "");
    const Reply& reply = reply_to(ask("subject C;say <a>;say </a>"));
    EXPECT_EQ(reply.subject.envelope.operation, "GetInstance");
    EXPECT_EQ(reply.subject.class_name, "C");
    EXPECT_EQ(reply.outcome.http_status, 200u);
    EXPECT_EQ(reply.outcome.objects, 3u);
    EXPECT_EQ(text(reply), "<a></a>");
}

TEST_F(SupervisorAnswers, DiscardedPartsAreNotInTheReply) {
    ASSERT_EQ(start(), "");
    EXPECT_EQ(answer("subject C;big 3;discard;say b"), "b");
}

TEST_F(SupervisorAnswers, HttpStatusIsHandedOn) {
    ASSERT_EQ(start(), "");
    EXPECT_EQ(reply_to(ask("status 501")).outcome.http_status, 501u);
}

TEST_F(SupervisorAnswers, LargeReplyComesInBlocks) {
    ASSERT_EQ(start(), "");
    const Reply& reply = reply_to(ask("subject C;big 20"));
    EXPECT_EQ(text(reply), std::string(std::size_t{20} << 20, 'x'));
    for (const std::string& block : reply.body)
        EXPECT_LE(block.size(), 65'536u);
}

TEST_F(SupervisorAnswers, SmallPartsShareABlock) {
    ASSERT_EQ(start(), "");
    EXPECT_EQ(reply_to(ask("subject C;say a;say b;say c")).body.size(), 1u);
}

TEST_F(SupervisorAnswers, LargeQuestionComesWhole) {
    ASSERT_EQ(start(), "");
    const std::string text(std::size_t{4} << 20, 'q');
    EXPECT_EQ(answer("say " + text), text);
}

TEST_F(SupervisorAnswers, QuestionBeyondWhatFramesCarryIsHttp413) {
    ASSERT_EQ(start(), "");
    const unsigned number = ask(std::string(std::size_t{17} << 20, 'q'));
    EXPECT_TRUE(replies_.empty()) << "answered before ask() returned";
    EXPECT_EQ(reply_to(number).outcome.http_status, 413u);
}

TEST_F(SupervisorAnswers, SeveralRequestsRunAtOnce) {
    const FreshFile file;
    ASSERT_EQ(start(), "");
    const unsigned slow = ask("await " + file.path.string() + ";say slow");
    EXPECT_EQ(answer("say quick"), "quick");
    EXPECT_FALSE(replies_.contains(slow));
    file.make();
    EXPECT_EQ(text(reply_to(slow)), "slow");
}

TEST_F(SupervisorAnswers, BeyondTheThreadsRequestsWait) {
    options_.command = {TEST_WORKER, "4"};
    options_.threads = 1; // less than the worker could do
    ASSERT_EQ(start(), "");
    const unsigned first = ask("sleep 50;say first");
    const unsigned second = ask("say second");
    reply_to(second);
    EXPECT_TRUE(replies_.contains(first));
}

TEST_F(SupervisorAnswers, BeyondTheQueueRequestsAreNotTaken) {
    options_.threads = 2;
    options_.waiting = 3;
    ASSERT_EQ(start(), "");
    unsigned last = 0;
    for (int count = 0; count < 5; ++count) {
        last = ask("sleep 20");
        EXPECT_NE(last, 0u) << count;
    }
    EXPECT_EQ(ask("say refused"), 0u);
    reply_to(last);
    EXPECT_EQ(answer("say taken"), "taken");
}

TEST_F(SupervisorAnswers, RequestsWaitUntilTheWorkerIsReady) {
    begin([](const std::string&) {});
    EXPECT_EQ(answer("say early"), "early");
}

TEST_F(SupervisorAnswers, WorkerHasThreeDescriptorsAndASocket) {
    const int inherited = dup(STDERR_FILENO); // as are those that libraries open
    EXPECT_EQ(start(), "");
    const std::string process = answer("process");
    // The fourth is the folder that lists them.
    EXPECT_NE(process.find(" descriptors 0 1 2 3 4 unblocked"), std::string::npos) << process;
    close(inherited);
}

TEST_F(SupervisorAnswers, WorkerHasAGroupOfItsOwn) {
    ASSERT_EQ(start(), "");
    const std::string process = answer("process");
    const std::string pid = process.substr(4, process.find(' ', 4) - 4);
    EXPECT_NE(process.find(" group " + pid + " "), std::string::npos) << process;
    EXPECT_NE(pid, std::to_string(getpid()));
}

TEST_F(SupervisorAnswers, WorkerHasDefaultSignals) {
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto handler = std::signal(SIGINT, SIG_IGN);
    EXPECT_EQ(start(), "");
    const std::string process = answer("process");
    EXPECT_NE(process.find(" unblocked default"), std::string::npos) << process;
    std::signal(SIGINT, handler);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST_F(SupervisorAnswers, ReplyBeyondItsLimitIsError1) {
    options_.max_reply = std::size_t{1} << 20;
    ASSERT_EQ(start(), "");
    EXPECT_EQ(answer("subject C;big 1").size(), std::size_t{1} << 20);
    const Reply& reply = reply_to(ask("subject C;big 1;say x"));
    EXPECT_EQ(text(reply), error_reply("the reply to GetInstance of C takes more than 1048576 bytes"));
    EXPECT_EQ(reply.outcome.cim_status, 1u);
    EXPECT_EQ(answer("say still here"), "still here");
}

TEST_F(SupervisorAnswers, RepliesBeyondTheMemoryForAllAreError1) {
    options_.max_replies = std::size_t{2} << 20;
    ASSERT_EQ(start(), "");
    const unsigned held = ask("subject C;big 1");
    reply_to(held);
    EXPECT_EQ(text(reply_to(ask("subject C;big 2"))),
              error_reply("the replies that are under way take too much memory for that to GetInstance of C"));
    EXPECT_EQ(answer("subject C;big 1").size(), std::size_t{1} << 20) << "what failed takes nothing";
    replies_.clear();
    EXPECT_EQ(answer("subject C;big 2").size(), std::size_t{2} << 20) << "what was dropped takes nothing";
}

TEST_F(SupervisorAnswers, HoldMayOutliveTheSupervisor) {
    ASSERT_EQ(start(), "");
    const Reply reply = reply_to(ask("subject C;big 1"));
    stop();
    supervisor_.reset();
    EXPECT_NE(reply.hold, nullptr);
}

} // namespace
} // namespace cmpihost::worker
