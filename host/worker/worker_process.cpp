#include "host/worker/worker_process.h"

#include "host/worker/failure.h"
#include "host/worker/frame_writer.h"
#include "host/worker/records.h"
#include "host/worker/thread_pool.h"

#include <fcntl.h>
#include <sys/socket.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <unordered_map>

namespace cmpihost::worker {

namespace {

/// The answer to one request, as frames.
class FrameSink : public server::ReplySink {
  public:
    FrameSink(FrameWriter& writer, std::uint32_t request) : writer_(writer), request_(request) {}

    void subject(const server::Subject& subject) override {
        subject_ = subject;
        writer_.write(FrameKind::subject, request_, encode(subject));
    }

    void append(std::string_view part) override {
        if (!part.empty())
            writer_.write(FrameKind::part, request_, part);
    }

    void discard() override { writer_.write(FrameKind::discard, request_, {}); }

    void end(const server::Outcome& outcome) { writer_.write(FrameKind::outcome, request_, encode(outcome)); }

    /// Replaces what was answered by an error.
    void fail(const std::string& text) {
        const Failure failed = failure(subject_ ? &*subject_ : nullptr, text);
        discard();
        append(failed.body);
        server::Outcome outcome = failed.outcome;
        outcome.notes.push_back(request_name(subject_ ? &*subject_ : nullptr) + ": " + text);
        end(outcome);
    }

  private:
    FrameWriter& writer_;
    std::uint32_t request_;
    std::optional<server::Subject> subject_;
};

void answer_question(const AnswerFunction& answer, const server::Question& question, FrameSink sink) {
    std::optional<server::Outcome> outcome;
    std::string thrown = "the server failed";
    try {
        outcome = answer(question, sink);
    } catch (const std::exception& error) {
        thrown += std::string(": ") + error.what();
    } catch (...) {
        thrown += ": something else than an error was thrown";
    }
    if (outcome)
        sink.end(*outcome);
    else
        sink.fail(thrown);
}

/// Bytes that come; 0 at the end of file, which an error is as well.
std::size_t receive(int socket, std::span<char> room) {
    for (;;) {
        const ssize_t count = recv(socket, room.data(), room.size(), 0);
        if (count >= 0 || errno != EINTR)
            return count < 0 ? 0 : static_cast<std::size_t>(count);
    }
}

using TakeQuestion = std::function<void(std::uint32_t request, server::Question question)>;

/// Hands over the questions whose last frame has come.
void take_frames(FrameReader& reader, std::unordered_map<std::uint32_t, std::string>& records,
                 const TakeQuestion& take) {
    while (const auto frame = reader.next()) {
        std::string& record = records[frame->request];
        if (!add_to_record(record, *frame))
            continue;
        take(frame->request, decode_question(record));
        records.erase(frame->request);
    }
}

/// Until the end of file.
void read_questions(int socket, const TakeQuestion& take) {
    FrameReader reader(Sender::front);
    std::unordered_map<std::uint32_t, std::string> records;
    while (const std::size_t count = receive(socket, reader.room())) {
        reader.filled(count);
        take_frames(reader, records, take);
    }
}

/// A provider that never returns would keep the process for ever.
void end_jobs(ThreadPool& pool, std::chrono::milliseconds grace) {
    pool.drop();
    if (pool.wait(grace))
        return;
    std::fputs("cmpihost worker: ended while the provider was still answering\n", stderr);
    std::_Exit(EXIT_FAILURE);
}

} // namespace

int run_worker(int socket, const AnswerFunction& answer, unsigned threads, std::chrono::milliseconds grace) {
    std::signal(SIGPIPE, SIG_IGN);
    fcntl(socket, F_SETFD, FD_CLOEXEC);
    FrameWriter writer(socket);
    ThreadPool pool(threads);
    int status = EXIT_SUCCESS;
    writer.write(FrameKind::ready, 0, {});
    try {
        read_questions(socket, [&](std::uint32_t request, server::Question question) {
            pool.add([&answer, &writer, request, asked = std::move(question)] {
                answer_question(answer, asked, FrameSink(writer, request));
            });
        });
    } catch (const BrokenFrame& broken) {
        std::fprintf(stderr, "cmpihost worker: received %s\n", broken.what());
        status = EXIT_FAILURE;
    }
    end_jobs(pool, grace);
    return status;
}

} // namespace cmpihost::worker
