#include "host/worker/worker_process.h"

#include "host/worker/failure.h"
#include "host/worker/frame_writer.h"
#include "host/worker/question_queue.h"
#include "host/worker/records.h"

#include <fcntl.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace cmpihost::worker {

namespace {

constexpr std::size_t gathered = std::size_t{48} << 10;

/// The answer to one request, as frames. Parts are gathered, and the last ones go together with the outcome.
class FrameSink : public server::ReplySink {
  public:
    FrameSink(FrameWriter& writer, std::uint32_t request) : writer_(writer), request_(request) {}

    void subject(const server::Subject& subject) override {
        subject_ = subject;
        writer_.write(FrameKind::subject, request_, encode(subject));
    }

    void append(std::string_view part) override {
        if (part_.size() + part.size() > gathered)
            send_part();
        if (part.size() > gathered) // spares a copy
            writer_.write(FrameKind::part, request_, part);
        else
            part_ += part;
    }

    void discard() override {
        part_.clear();
        writer_.write(FrameKind::discard, request_, {});
    }

    void end(const server::Outcome& outcome) {
        const std::string record = encode(outcome);
        if (part_.empty() || record.size() > max_payload) {
            send_part();
            return writer_.write(FrameKind::outcome, request_, record);
        }
        writer_.write({FrameKind::part, false, request_, part_}, {FrameKind::outcome, false, request_, record});
    }

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
    void send_part() {
        if (!part_.empty())
            writer_.write(FrameKind::part, request_, part_);
        part_.clear();
    }

    FrameWriter& writer_;
    std::uint32_t request_;
    std::optional<server::Subject> subject_;
    std::string part_; ///< not sent yet
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

void answer_questions(QuestionQueue& questions, const AnswerFunction& answer, FrameWriter& writer) {
    while (const auto asked = questions.next()) {
        answer_question(answer, asked->question, FrameSink(writer, asked->request));
        questions.done();
    }
}

/// The exit status.
int await_end(QuestionQueue& questions) {
    try {
        questions.await_end();
        return EXIT_SUCCESS;
    } catch (const BrokenFrame& broken) {
        std::fprintf(stderr, "cmpihost worker: received %s\n", broken.what());
        return EXIT_FAILURE;
    }
}

/// A provider that never returns would keep the process for ever.
void end_answers(QuestionQueue& questions, std::chrono::milliseconds grace) {
    if (questions.await_idle(grace))
        return;
    std::fputs("cmpihost worker: ended while the provider was still answering\n", stderr);
    std::_Exit(EXIT_FAILURE);
}

} // namespace

int run_worker(int socket, const AnswerFunction& answer, unsigned threads, std::chrono::milliseconds grace) {
    std::signal(SIGPIPE, SIG_IGN);
    fcntl(socket, F_SETFD, FD_CLOEXEC);
    FrameWriter writer(socket);
    QuestionQueue questions(socket, threads);
    writer.write(FrameKind::ready, 0, {});
    std::vector<std::jthread> crew;
    while (crew.size() < threads + 1)
        crew.emplace_back([&] { answer_questions(questions, answer, writer); });
    const int status = await_end(questions);
    end_answers(questions, grace);
    return status;
}

} // namespace cmpihost::worker
