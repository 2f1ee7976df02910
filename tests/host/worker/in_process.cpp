// Answers without a process of their own.
#include "host/worker/in_process.h"

#include <boost/asio/io_context.hpp>

#include <gtest/gtest.h>

#include <future>
#include <map>

namespace cmpihost::worker {
namespace {

class InProcessTest : public testing::Test {
  protected:
    void begin(unsigned threads = 2, std::size_t waiting = 256) {
        backend_ = std::make_unique<InProcess>(
            loop_, [this](const auto& question, auto& sink) { return answer(question, sink); }, threads, waiting);
    }

    server::Outcome answer(const server::Question& question, server::ReplySink& sink) {
        if (question.body == "wait")
            go_on_.get_future().wait();
        if (question.body == "unread")
            throw std::runtime_error("not read");
        if (question.body == "odd")
            throw 7;
        sink.subject({{"7", "1.0", question.cim_method, "root/test", std::nullopt}, "C"});
        sink.append("dropped");
        sink.discard();
        sink.append("<" + question.body);
        sink.append(">");
        if (question.body == "throw")
            throw std::runtime_error("no luck");
        return {.objects = 2};
    }

    bool ask(int number, const std::string& body) {
        return backend_->ask({"GetInstance", "root/test", "host", body}, [this, number](Reply reply) {
            EXPECT_TRUE(std::this_thread::get_id() == thread_);
            EXPECT_FALSE(replies_.contains(number));
            replies_[number] = std::move(reply);
        });
    }

    const Reply& reply_to(int number) {
        while (!replies_.contains(number)) {
            if (loop_.stopped())
                loop_.restart();
            if (loop_.run_one_for(std::chrono::seconds(60)) == 0) {
                ADD_FAILURE() << "nothing happens any more";
                break;
            }
        }
        return replies_[number];
    }

    static std::string text(const Reply& reply) {
        std::string text;
        for (const std::string& block : reply.body)
            text += block;
        return text;
    }

    std::thread::id thread_ = std::this_thread::get_id();
    std::promise<void> go_on_; ///< for one request that waits
    boost::asio::io_context loop_;
    std::unique_ptr<InProcess> backend_;
    std::map<int, Reply> replies_;
};

TEST_F(InProcessTest, AnswersOnTheEventLoopsThread) {
    begin();
    ASSERT_TRUE(ask(1, "a"));
    const Reply& reply = reply_to(1);
    EXPECT_EQ(text(reply), "<a>");
    EXPECT_EQ(reply.subject.class_name, "C");
    EXPECT_EQ(reply.outcome.objects, 2u);
}

TEST_F(InProcessTest, WhatIsThrownBecomesError1) {
    begin();
    ASSERT_TRUE(ask(1, "throw"));
    const Reply& reply = reply_to(1);
    EXPECT_EQ(reply.outcome.cim_status, 1u);
    EXPECT_NE(text(reply).find("<ERROR CODE=\"1\" DESCRIPTION=\"the server failed: no luck\">"), std::string::npos);
    EXPECT_EQ(text(reply).find("<throw>"), std::string::npos);
    ASSERT_TRUE(ask(2, "unread"));
    EXPECT_EQ(reply_to(2).outcome.http_status, 500u);
    ASSERT_TRUE(ask(3, "odd"));
    EXPECT_EQ(reply_to(3).outcome.notes,
              std::vector<std::string>{"the server failed: something else than an error was thrown"});
}

TEST_F(InProcessTest, BeyondTheQueueRequestsAreNotTaken) {
    begin(1, 2);
    EXPECT_TRUE(ask(1, "wait"));
    EXPECT_TRUE(ask(2, "b"));
    EXPECT_TRUE(ask(3, "c"));
    EXPECT_FALSE(ask(4, "d"));
    go_on_.set_value();
    reply_to(1);
    EXPECT_TRUE(ask(5, "e"));
    EXPECT_EQ(text(reply_to(5)), "<e>");
}

TEST_F(InProcessTest, StopAnswersAllAndWaitsForWhatRuns) {
    begin(1);
    ASSERT_TRUE(ask(1, "wait"));
    ASSERT_TRUE(ask(2, "b"));
    bool stopped = false;
    backend_->stop([&stopped] { stopped = true; });
    EXPECT_FALSE(ask(3, "c"));
    EXPECT_EQ(reply_to(1).outcome.http_status, 503u);
    EXPECT_EQ(reply_to(2).outcome.http_status, 503u);
    loop_.poll();
    EXPECT_FALSE(stopped);
    go_on_.set_value();
    loop_.run_for(std::chrono::seconds(60)); // ends when nothing is left to do
    EXPECT_TRUE(stopped);
}

TEST_F(InProcessTest, StopWithoutRequestsCallsBack) {
    begin();
    bool stopped = false;
    backend_->stop([&stopped] { stopped = true; });
    EXPECT_FALSE(stopped) << "never from within stop()";
    loop_.run_for(std::chrono::seconds(60));
    EXPECT_TRUE(stopped);
}

} // namespace
} // namespace cmpihost::worker
