// The worker's own side, at the end of a socket.
#include "host/worker/worker_process.h"
#include "host/worker/frames.h"
#include "host/worker/records.h"

#include <gtest/gtest.h>

#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <future>
#include <thread>

namespace cmpihost::worker {
namespace {

server::Subject thing_subject() {
    return {{"7", "1.0", "GetInstance", "root/test", std::nullopt}, "C"};
}

/// What came for one request.
struct Answered {
    std::string subject;
    std::string body;
    std::optional<server::Outcome> outcome;
};

/// A worker on a thread of its own, and the other end of its socket.
class WorkerProcessTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends_.data()), 0); }

    void run(AnswerFunction answer, unsigned threads = 2) {
        status_ = std::async(std::launch::async, [this, answer = std::move(answer), threads] {
            return run_worker(ends_[1], answer, threads, std::chrono::minutes(10));
        });
        const auto frame = read();
        ASSERT_TRUE(frame.has_value());
        ASSERT_EQ(frame->kind, FrameKind::ready);
    }

    void ask(std::uint32_t request, const std::string& body) {
        send_bytes(frames_of(FrameKind::question, request, encode(server::Question{"", "", "", body})));
    }

    void send_bytes(const std::string& bytes) {
        ASSERT_EQ(::send(ends_[0], bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
    }

    /// The next frame; nothing at the end of file.
    std::optional<Frame> read() {
        for (;;) {
            if (const auto frame = reader_.next())
                return frame;
            const std::span<char> room = reader_.room();
            const ssize_t count = recv(ends_[0], room.data(), room.size(), 0);
            if (count <= 0)
                return std::nullopt;
            reader_.filled(static_cast<std::size_t>(count));
        }
    }

    /// Reads until the request has its outcome.
    Answered& answer_to(std::uint32_t request) {
        while (!answers_[request].outcome) {
            const auto frame = read();
            if (!frame) {
                ADD_FAILURE() << "end of file";
                break;
            }
            take(*frame);
        }
        return answers_[request];
    }

    void take(const Frame& frame) {
        Answered& answered = answers_[frame.request];
        if (frame.kind == FrameKind::subject)
            answered.subject += frame.payload;
        else if (frame.kind == FrameKind::part)
            answered.body += frame.payload;
        else if (frame.kind == FrameKind::discard)
            answered.body.clear();
        else
            answered.outcome = decode_outcome(frame.payload);
    }

    /// Whether the worker has read what was sent, in half a minute at most.
    bool all_is_read() const {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        int unread = 1;
        while (unread > 0 && std::chrono::steady_clock::now() < limit) {
            std::this_thread::yield();
            if (ioctl(ends_[1], FIONREAD, &unread) != 0)
                return false;
        }
        return unread == 0;
    }

    /// Ends what the worker reads, but not what it writes.
    int status_after_end_of_file() {
        shutdown(ends_[0], SHUT_WR);
        return status_.get();
    }

    void TearDown() override {
        shutdown(ends_[0], SHUT_RDWR);
        if (status_.valid())
            status_.get();
        close(ends_[0]);
        close(ends_[1]);
    }

    std::array<int, 2> ends_{-1, -1};
    std::future<int> status_;
    FrameReader reader_{Sender::worker};
    std::map<std::uint32_t, Answered> answers_;
};

TEST_F(WorkerProcessTest, AnswersWithSubjectPartsAndOutcome) {
    run([](const server::Question& question, server::ReplySink& sink) {
        sink.subject(thing_subject());
        sink.append("<" + question.body);
        sink.append("");
        sink.append(">");
        return server::Outcome{.cim_status = 6, .objects = 3};
    });
    ask(4, "body");
    const Answered& answered = answer_to(4);
    EXPECT_EQ(answered.subject, encode(thing_subject()));
    EXPECT_EQ(answered.body, "<body>");
    EXPECT_EQ(answered.outcome->cim_status, 6u);
    EXPECT_EQ(answered.outcome->objects, 3u);
}

TEST_F(WorkerProcessTest, ReadyIsTheFirstFrame) {
    run([](const server::Question&, server::ReplySink&) { return server::Outcome{}; }); // expects it
    EXPECT_EQ(status_after_end_of_file(), 0);
}

TEST_F(WorkerProcessTest, LargePartsAreSentAsTheyAreAppended) {
    std::promise<void> seen;
    auto go_on = seen.get_future().share();
    run([go_on](const server::Question&, server::ReplySink& sink) {
        sink.append("small");
        sink.append(std::string(max_payload, 'x'));
        go_on.wait();
        sink.append("last");
        return server::Outcome{};
    });
    ask(1, "");
    while (answers_[1].body.size() < max_payload + 5) {
        const auto frame = read();
        ASSERT_TRUE(frame.has_value());
        take(*frame);
    }
    seen.set_value();
    EXPECT_EQ(answer_to(1).body, "small" + std::string(max_payload, 'x') + "last");
}

TEST_F(WorkerProcessTest, DiscardedPartsAreNotSent) {
    run([](const server::Question&, server::ReplySink& sink) {
        sink.append("void");
        sink.discard();
        sink.append("error");
        return server::Outcome{};
    });
    ask(1, "");
    EXPECT_EQ(answer_to(1).body, "error");
}

TEST_F(WorkerProcessTest, MoreQuestionsThanThreadsWait) {
    std::promise<void> all_asked;
    auto go_on = all_asked.get_future().share();
    std::atomic<int> at_once = 0;
    std::atomic<int> most = 0;
    run([&, go_on](const server::Question&, server::ReplySink&) {
        const int now = ++at_once;
        for (int seen = most; seen < now && !most.compare_exchange_weak(seen, now);) {
        }
        go_on.wait();
        --at_once;
        return server::Outcome{};
    });
    for (std::uint32_t request = 1; request <= 10; ++request)
        ask(request, "");
    while (most < 2)
        std::this_thread::yield();
    ask(11, "");
    EXPECT_TRUE(all_is_read()); // by somebody who answers none
    all_asked.set_value();
    for (std::uint32_t request = 1; request <= 11; ++request)
        EXPECT_TRUE(answer_to(request).outcome.has_value());
    EXPECT_EQ(most, 2);
}

TEST_F(WorkerProcessTest, SmallAnswerDoesNotWaitForALargeOne) {
    std::atomic<bool> small_seen = false;
    run([&small_seen](const server::Question& question, server::ReplySink& sink) {
        for (int part = 0; question.body == "large" && part < 20'000 && !small_seen; ++part)
            sink.append(std::string(max_payload, 'x'));
        return server::Outcome{.objects = small_seen ? 1U : 0U};
    });
    ask(1, "large");
    const auto frame = read();
    ASSERT_TRUE(frame.has_value());
    ask(2, "small");
    answer_to(2);
    small_seen = true;
    EXPECT_EQ(answer_to(1).outcome->objects, 1u);
}

TEST_F(WorkerProcessTest, QuestionsOfManyFramesMayBeInterleaved) {
    run([](const server::Question& question, server::ReplySink& sink) {
        sink.append(question.body.substr(0, 1) + std::to_string(question.body.size()));
        return server::Outcome{};
    });
    const auto frames_for = [](std::uint32_t request, char letter) {
        return frames_of(FrameKind::question, request,
                         encode(server::Question{"", "", "", std::string(70'000, letter)}));
    };
    const std::string one = frames_for(1, 'a');
    const std::string other = frames_for(2, 'b');
    const std::size_t first = frame_header_size + max_payload;
    send_bytes(one.substr(0, first) + other.substr(0, first));
    send_bytes(other.substr(first) + one.substr(first));
    EXPECT_EQ(answer_to(1).body, "a70000");
    EXPECT_EQ(answer_to(2).body, "b70000");
}

TEST_F(WorkerProcessTest, WhatIsThrownBecomesAnError) {
    run([](const server::Question&, server::ReplySink& sink) -> server::Outcome {
        sink.subject(thing_subject());
        sink.append("half of a reply");
        throw std::runtime_error("no luck");
    });
    ask(1, "");
    const Answered& answered = answer_to(1);
    EXPECT_EQ(answered.outcome->http_status, 200u);
    EXPECT_EQ(answered.outcome->cim_status, 1u);
    EXPECT_EQ(answered.body, "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                             "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"7\" PROTOCOLVERSION=\"1.0\">"
                             "<SIMPLERSP><IMETHODRESPONSE NAME=\"GetInstance\">"
                             "<ERROR CODE=\"1\" DESCRIPTION=\"the server failed: no luck\"></ERROR>"
                             "</IMETHODRESPONSE></SIMPLERSP></MESSAGE></CIM>\n");
    EXPECT_EQ(answered.outcome->notes, std::vector<std::string>{"GetInstance of C: the server failed: no luck"});
}

TEST_F(WorkerProcessTest, WhatIsThrownBeforeTheSubjectIsHttp500) {
    run([](const server::Question&, server::ReplySink&) -> server::Outcome { throw 7; });
    ask(1, "");
    EXPECT_EQ(answer_to(1).outcome->http_status, 500u);
    EXPECT_EQ(answer_to(1).body, "");
    ask(2, "");
    EXPECT_TRUE(answer_to(2).outcome.has_value()) << "the thread has gone on";
}

TEST_F(WorkerProcessTest, EndOfFileWaitsForWhatRuns) {
    std::promise<void> begun;
    run([&begun](const server::Question&, server::ReplySink& sink) {
        begun.set_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        sink.append("late");
        return server::Outcome{};
    });
    ask(1, "");
    begun.get_future().wait();
    EXPECT_EQ(status_after_end_of_file(), 0);
    EXPECT_EQ(answer_to(1).body, "late");
}

TEST_F(WorkerProcessTest, FrontThatIsGoneEndsItWithoutSigpipe) {
    std::promise<void> begun;
    std::promise<void> gone;
    auto go_on = gone.get_future().share();
    run([&begun, go_on](const server::Question&, server::ReplySink& sink) {
        begun.set_value();
        go_on.wait();
        sink.append("nobody reads this");
        return server::Outcome{};
    });
    ask(1, "");
    begun.get_future().wait();
    shutdown(ends_[0], SHUT_RDWR);
    gone.set_value();
    EXPECT_EQ(status_.get(), 0);
}

TEST_F(WorkerProcessTest, BrokenFrameEndsItWithStatus1) {
    run([](const server::Question&, server::ReplySink&) { return server::Outcome{}; });
    send_bytes("this is no frame");
    EXPECT_EQ(status_.get(), 1);
}

std::atomic<unsigned> signals_seen = 0;

TEST_F(WorkerProcessTest, RepliesSurviveShortWritesAndSignals) {
    struct sigaction count {};
    struct sigaction before {};
    count.sa_handler = [](int) { ++signals_seen; }; // without SA_RESTART
    sigaction(SIGUSR1, &count, &before);
    const int small = 1;
    setsockopt(ends_[1], SOL_SOCKET, SO_SNDBUF, &small, sizeof small);
    std::string sent;
    for (int number = 0; number < 100'000; ++number)
        sent += std::to_string(number) + ' ';
    std::promise<pthread_t> thread;
    run([&](const server::Question&, server::ReplySink& sink) {
        thread.set_value(pthread_self());
        sink.append(sent);
        return server::Outcome{};
    });
    ask(1, "");
    const pthread_t writer = thread.get_future().get();
    while (!answers_[1].outcome) {
        pthread_kill(writer, SIGUSR1);
        const auto frame = read();
        ASSERT_TRUE(frame.has_value());
        take(*frame);
    }
    EXPECT_EQ(answers_[1].body, sent);
    EXPECT_GT(signals_seen, 0u);
    EXPECT_EQ(status_after_end_of_file(), 0); // no signal can come now
    sigaction(SIGUSR1, &before, nullptr);
}

} // namespace
} // namespace cmpihost::worker
