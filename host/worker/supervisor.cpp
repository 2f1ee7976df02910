#include "host/worker/supervisor.h"

#include "host/worker/crew.h"
#include "host/worker/exchange.h"
#include "host/worker/failure.h"
#include "host/worker/records.h"

#include <boost/asio/post.hpp>

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

namespace cmpihost::worker {

namespace {

using boost::system::error_code;

constexpr unsigned too_large = 413;

/// A request, until its worker has ended it.
struct Request {
    Exchange exchange;
    std::string frames; ///< until they are sent
    Clock::time_point asked;
    Clock::time_point due{}; ///< when it is looked after next
    Clock::time_point sent{};
    std::shared_ptr<Worker> worker{}; ///< null while it waits
    bool warned = false;
};

} // namespace

/// The requests, and which worker has which.
class Supervisor::State : public std::enable_shared_from_this<State> {
  public:
    State(boost::asio::io_context& loop, SupervisorOptions options);

    void start(std::function<void(const std::string&)> started);
    bool ask(const server::Question& question, Done done);
    void stop(std::function<void()> stopped);
    std::uint64_t restarts() const { return restarts_; }

  private:
    bool may_send() const;
    void add(const std::string& record, Done done);
    void send_waiting();
    void wait_until(Clock::time_point time, Request& request);
    void ring_at(Clock::time_point time);
    void ring();
    void look_after(std::uint32_t number, Request& request);
    void warn(Request& request);
    void time_out(std::uint32_t number, Request& request);
    void time_out_sent(Request& request);
    void take(const std::shared_ptr<Worker>& worker, const Frame& frame);
    void end_if_drained(const std::shared_ptr<Worker>& worker);
    void ended(const std::shared_ptr<Worker>& worker, const std::string& how);
    void take_back(Worker& worker);
    std::string fail_requests(const std::shared_ptr<Worker>& worker, const std::string& how);
    void fail_all(const std::string& text);
    void log(LogLevel level, const std::string& line) const;

    boost::asio::io_context& loop_;
    SupervisorOptions options_;
    std::shared_ptr<ReplyMemory> memory_;
    std::shared_ptr<Crew> crew_;
    std::unordered_map<std::uint32_t, Request> requests_{};
    std::deque<std::uint32_t> waiting_{};
    std::uint32_t last_number_ = 0;
    Timer timer_; ///< rings when the first request is due, or before
    Clock::time_point rings_at_ = Clock::time_point::max();
    std::uint64_t restarts_ = 0;
};

Supervisor::State::State(boost::asio::io_context& loop, SupervisorOptions options)
    : loop_(loop), options_(std::move(options)),
      memory_(std::make_shared<ReplyMemory>(ReplyMemory{options_.max_replies})),
      crew_(std::make_shared<Crew>(
          loop, options_,
          Crew::Events{[this] { send_waiting(); },
                       [this](const std::shared_ptr<Worker>& worker, const Frame& frame) { take(worker, frame); },
                       [this](const std::shared_ptr<Worker>& worker, const std::string& how) { ended(worker, how); }})),
      timer_(loop) {}

void Supervisor::State::start(std::function<void(const std::string&)> started) {
    crew_->start([state = weak_from_this(), started = std::move(started)](const std::string& error) {
        if (const auto self = state.lock(); self && !error.empty())
            self->fail_all(error);
        started(error);
    });
}

bool Supervisor::State::may_send() const {
    const auto& worker = crew_->current();
    return worker && worker->requests < options_.threads;
}

bool Supervisor::State::ask(const server::Question& question, Done done) {
    if (!crew_->at_work() || (!may_send() && waiting_.size() >= options_.waiting))
        return false;
    // Never from within ask(), nor from the midst of a change of state.
    Done later = [this_loop = &loop_, done = std::move(done)](Reply reply) {
        boost::asio::post(*this_loop, [done, reply = std::move(reply)]() mutable { done(std::move(reply)); });
    };
    const std::string record = encode(question);
    if (record.size() > max_record)
        Exchange(std::move(later), memory_, 0)
            .fail("a request of " + std::to_string(record.size()) + " bytes", too_large);
    else
        add(record, std::move(later));
    return true;
}

void Supervisor::State::add(const std::string& record, Done done) {
    do {
        ++last_number_;
    } while (last_number_ == 0 || requests_.contains(last_number_));
    const std::uint32_t number = last_number_;
    Request& request = requests_
                           .try_emplace(number, Request{Exchange(std::move(done), memory_, options_.max_reply),
                                                        frames_of(FrameKind::question, number, record), Clock::now()})
                           .first->second;
    wait_until(request.asked + options_.timeout / 3, request);
    waiting_.push_back(number);
    send_waiting();
}

void Supervisor::State::send_waiting() {
    while (may_send() && !waiting_.empty()) {
        const std::uint32_t number = waiting_.front();
        waiting_.pop_front();
        Request& request = requests_.at(number);
        request.worker = crew_->current();
        request.sent = Clock::now();
        ++request.worker->requests;
        request.worker->child->send({number, std::move(request.frames)});
    }
}

/// One timer serves all requests, and is left alone where it rings before: hardly any request is ever due.
void Supervisor::State::wait_until(Clock::time_point time, Request& request) {
    request.due = time;
    if (time < rings_at_)
        ring_at(time);
}

void Supervisor::State::ring_at(Clock::time_point time) {
    rings_at_ = time;
    timer_.expires_at(time);
    timer_.async_wait([state = weak_from_this()](error_code error) {
        if (const auto self = state.lock(); self && !error)
            self->ring();
    });
}

/// Looks after the requests that are due.
void Supervisor::State::ring() {
    rings_at_ = Clock::time_point::max();
    const auto now = Clock::now();
    std::vector<std::uint32_t> due;
    for (const auto& [number, request] : requests_)
        if (request.due <= now)
            due.push_back(number);
    for (const std::uint32_t number : due)
        if (const auto found = requests_.find(number); found != requests_.end())
            look_after(number, found->second);
    auto next = rings_at_;
    for (const auto& [number, request] : requests_)
        next = std::min(next, request.due);
    if (next < rings_at_)
        ring_at(next);
}

void Supervisor::State::look_after(std::uint32_t number, Request& request) {
    request.due = Clock::time_point::max();
    if (std::exchange(request.warned, true))
        time_out(number, request);
    else
        warn(request);
}

void Supervisor::State::warn(Request& request) {
    if (request.worker && !request.exchange.answered())
        log(LogLevel::warning, "worker " + std::to_string(request.worker->pid) + " has not answered " +
                                   request.exchange.name() + " for " + seconds_text(options_.timeout / 3));
    wait_until(request.asked + options_.timeout, request);
}

void Supervisor::State::time_out(std::uint32_t number, Request& request) {
    const std::string text =
        "the provider did not answer " + request.exchange.name() + " within " + seconds_text(options_.timeout);
    if (request.worker) {
        request.exchange.fail(text);
        return time_out_sent(request);
    }
    request.exchange.fail(text, service_unavailable);
    std::erase(waiting_, number);
    requests_.erase(number);
}

/// What has waited for long may have been sent just now: that alone is no hang.
void Supervisor::State::time_out_sent(Request& request) {
    const std::shared_ptr<Worker> worker = request.worker;
    const auto hangs_at = request.sent + options_.timeout;
    if (Clock::now() < hangs_at) {
        wait_until(hangs_at, request);
    } else if (!worker->retired) {
        log(LogLevel::error, "worker " + std::to_string(worker->pid) + " hangs in " + request.exchange.name() +
                                 ", another one takes new requests");
        crew_->retire(*worker);
    }
    end_if_drained(worker);
}

void Supervisor::State::take(const std::shared_ptr<Worker>& worker, const Frame& frame) {
    const auto found = requests_.find(frame.request);
    if (found == requests_.end() || found->second.worker != worker)
        throw BrokenFrame("an answer to a request that it does not have");
    if (!found->second.exchange.take(frame))
        return;
    requests_.erase(found);
    --worker->requests;
    worker->answered = true;
    end_if_drained(worker);
    send_waiting();
}

/// Ends a worker that hangs, when nobody waits for an answer of it any more.
void Supervisor::State::end_if_drained(const std::shared_ptr<Worker>& worker) {
    if (!worker->retired)
        return;
    const bool awaited = std::any_of(requests_.begin(), requests_.end(), [&worker](const auto& entry) {
        return entry.second.worker == worker && !entry.second.exchange.answered();
    });
    if (!awaited)
        Crew::finish(*worker, options_);
}

void Supervisor::State::ended(const std::shared_ptr<Worker>& worker, const std::string& how) {
    take_back(*worker);
    restarts_ += crew_->at_work() ? 1U : 0U;
    const std::string line = "worker " + std::to_string(worker->pid) + " " + how + fail_requests(worker, how);
    log(worker->ending ? LogLevel::info : LogLevel::error, line);
    send_waiting();
}

/// What a worker was never sent is for the next one, before all that came later.
void Supervisor::State::take_back(Worker& worker) {
    auto unsent = worker.child->take_unsent();
    for (auto question = unsent.rbegin(); question != unsent.rend(); ++question) {
        const auto found = requests_.find(question->request); // not there if it was answered unread
        if (found == requests_.end() || found->second.exchange.answered() || !crew_->at_work())
            continue;
        Request& request = found->second;
        request.worker = nullptr;
        request.frames = std::move(question->frames);
        waiting_.push_front(question->request);
    }
}

/// @return " while answering EnumerateInstances of X, GetInstance of Y"; empty if there was nothing to answer
std::string Supervisor::State::fail_requests(const std::shared_ptr<Worker>& worker, const std::string& how) {
    std::string names;
    for (auto& [number, request] : requests_) {
        if (request.worker != worker || request.exchange.answered())
            continue;
        const std::string name = request.exchange.name();
        std::string text = "the provider " + how;
        text.append(" while answering ").append(name);
        request.exchange.fail(text);
        names += names.empty() ? " while answering " : ", ";
        names += name;
    }
    std::erase_if(requests_, [&worker](const auto& entry) { return entry.second.worker == worker; });
    return names;
}

/// What a worker has is kept until it ends that.
void Supervisor::State::fail_all(const std::string& text) {
    for (auto& [number, request] : requests_)
        request.exchange.fail(text, service_unavailable);
    waiting_.clear();
    std::erase_if(requests_, [](const auto& entry) { return entry.second.worker == nullptr; });
}

void Supervisor::State::stop(std::function<void()> stopped) {
    timer_.cancel();
    fail_all("the server is being stopped");
    crew_->stop(std::move(stopped));
}

void Supervisor::State::log(LogLevel level, const std::string& line) const {
    if (options_.log)
        options_.log(level, line);
}

Supervisor::Supervisor(boost::asio::io_context& loop, SupervisorOptions options)
    : state_(std::make_shared<State>(loop, std::move(options))) {}

Supervisor::~Supervisor() = default;

void Supervisor::start(std::function<void(const std::string&)> started) {
    state_->start(std::move(started));
}

bool Supervisor::ask(server::Question question, Done done) {
    return state_->ask(question, std::move(done));
}

std::uint64_t Supervisor::restarts() const {
    return state_->restarts();
}

void Supervisor::stop(std::function<void()> stopped) {
    state_->stop(std::move(stopped));
}

} // namespace cmpihost::worker
