#include "host/worker/in_process.h"

#include "host/worker/failure.h"
#include "host/worker/reply_body.h"
#include "host/worker/thread_pool.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>

#include <atomic>
#include <limits>
#include <unordered_map>

namespace cmpihost::worker {

namespace {

/// Collects a reply. How much it may take is the service's own limit.
class CollectingSink : public server::ReplySink {
  public:
    void subject(const server::Subject& subject) override { subject_ = subject; }
    void append(std::string_view part) override { body_.append(part); }
    void discard() override { body_.clear(); }

    Reply reply(server::Outcome outcome) {
        Reply reply;
        reply.subject = subject_.value_or(server::Subject{});
        reply.outcome = std::move(outcome);
        body_.move_to(reply);
        return reply;
    }

    Reply failed(const std::string& text) {
        Failure failed = failure(subject_ ? &*subject_ : nullptr, text);
        failed.outcome.notes.push_back(text);
        body_.clear();
        body_.append(failed.body);
        return reply(std::move(failed.outcome));
    }

  private:
    std::optional<server::Subject> subject_;
    ReplyBody body_{std::make_shared<ReplyMemory>(ReplyMemory{std::numeric_limits<std::size_t>::max()})};
};

Reply reply_to(const AnswerFunction& answer, const server::Question& question) {
    CollectingSink sink;
    try {
        return sink.reply(answer(question, sink));
    } catch (const std::exception& error) {
        return sink.failed(std::string("the server failed: ") + error.what());
    } catch (...) {
        return sink.failed("the server failed: something else than an error was thrown");
    }
}

} // namespace

/// All but what the threads do happens on the event loop's thread.
class InProcess::State : public std::enable_shared_from_this<State> {
  public:
    State(boost::asio::io_context& loop, AnswerFunction answer, unsigned threads, std::size_t waiting)
        : loop_(loop), answer_(std::move(answer)), most_(threads + waiting), pool_(threads) {}

    bool ask(server::Question question, Done done);
    void stop(std::function<void()> stopped);

  private:
    void run(std::uint64_t number, const server::Question& question);
    void finish(std::uint64_t number, Reply reply);
    void check_stopped();

    boost::asio::io_context& loop_;
    AnswerFunction answer_;
    std::size_t most_;
    std::atomic<bool> stopping_ = false;
    std::unordered_map<std::uint64_t, Done> requests_{}; ///< null what is answered already
    std::uint64_t last_number_ = 0;
    std::vector<std::function<void()>> stopped_{};
    ThreadPool pool_; // the last member, since its end waits for what uses the others
};

bool InProcess::State::ask(server::Question question, Done done) {
    if (stopping_ || requests_.size() >= most_)
        return false;
    const std::uint64_t number = ++last_number_;
    requests_.emplace(number, std::move(done));
    pool_.add([this, number, question = std::move(question), work = boost::asio::make_work_guard(loop_)] {
        run(number, question);
    });
    return true;
}

void InProcess::State::run(std::uint64_t number, const server::Question& question) {
    Reply reply;
    if (!stopping_)
        reply = reply_to(answer_, question);
    boost::asio::post(loop_, [state = weak_from_this(), number, reply = std::move(reply)]() mutable {
        if (const auto self = state.lock())
            self->finish(number, std::move(reply));
    });
}

void InProcess::State::finish(std::uint64_t number, Reply reply) {
    const Done done = std::move(requests_.at(number));
    requests_.erase(number);
    if (done)
        done(std::move(reply));
    check_stopped();
}

void InProcess::State::stop(std::function<void()> stopped) {
    stopping_ = true;
    stopped_.push_back(std::move(stopped));
    for (auto& [number, done] : requests_) {
        Reply reply;
        reply.outcome = failure(nullptr, {}, service_unavailable).outcome;
        if (done)
            boost::asio::post(loop_, [done = std::exchange(done, nullptr), reply] { done(reply); });
    }
    check_stopped();
}

void InProcess::State::check_stopped() {
    if (!stopping_ || !requests_.empty())
        return;
    for (auto& stopped : std::exchange(stopped_, {}))
        boost::asio::post(loop_, std::move(stopped));
}

InProcess::InProcess(boost::asio::io_context& loop, AnswerFunction answer, unsigned threads, std::size_t waiting)
    : state_(std::make_shared<State>(loop, std::move(answer), threads, waiting)) {}

InProcess::~InProcess() = default;

bool InProcess::ask(server::Question question, Done done) {
    return state_->ask(std::move(question), std::move(done));
}

void InProcess::stop(std::function<void()> stopped) {
    state_->stop(std::move(stopped));
}

} // namespace cmpihost::worker
