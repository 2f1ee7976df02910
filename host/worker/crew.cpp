#include "host/worker/crew.h"

#include <boost/asio/post.hpp>

#include <algorithm>
#include <csignal>
#include <system_error>
#include <utility>

namespace cmpihost::worker {

namespace {

using boost::system::error_code;

} // namespace

Crew::Crew(boost::asio::io_context& loop, const SupervisorOptions& options, Events events)
    : loop_(loop), options_(options), events_(std::move(events)), start_timer_(loop), pause_(options.first_pause) {}

Crew::~Crew() {
    for (const auto& worker : workers_) {
        worker->start_limit.cancel();
        worker->child->abandon();
    }
}

void Crew::start(std::function<void(const std::string&)> started) {
    at_work_ = true;
    started_ = std::move(started);
    try_to_start();
}

void Crew::try_to_start() {
    try {
        start_worker();
    } catch (const std::system_error& error) {
        if (!started_)
            return start_later();
        fail_start(error.what());
    }
}

void Crew::fail_start(const std::string& error) {
    at_work_ = false;
    tell_started(error);
}

void Crew::tell_started(const std::string& error) {
    if (started_)
        boost::asio::post(loop_, [tell = std::exchange(started_, nullptr), error] { tell(error); });
}

void Crew::start_worker() {
    const Process process = spawn(options_.command);
    auto worker = std::make_shared<Worker>(Worker{.pid = process.pid, .start_limit = Timer(loop_)});
    const std::weak_ptr<Worker> known = worker;
    worker->child =
        std::make_shared<Child>(loop_, process,
                                Child::Events{[this, known](const Frame& frame) { take(known.lock(), frame); },
                                              [this, known](const std::string& how) { ended(known.lock(), how); }});
    workers_.push_back(worker);
    worker->child->watch();
    limit_start(worker);
}

void Crew::limit_start(const std::shared_ptr<Worker>& worker) {
    worker->start_limit.expires_after(options_.start_timeout);
    worker->start_limit.async_wait([crew = weak_from_this(), worker](error_code error) {
        const auto self = crew.lock();
        if (error || !self || worker->ready)
            return;
        self->log(LogLevel::error, "worker " + std::to_string(worker->pid) + " is not ready after " +
                                       seconds_text(self->options_.start_timeout) + " and is ended");
        worker->child->signal({SIGABRT, SIGKILL}, self->options_.abort_wait);
    });
}

void Crew::take(const std::shared_ptr<Worker>& worker, const Frame& frame) {
    if (frame.kind == FrameKind::ready)
        become_ready(worker);
    else
        events_.frame(worker, frame);
}

void Crew::become_ready(const std::shared_ptr<Worker>& worker) {
    if (worker->ready)
        throw BrokenFrame("that it is ready for a second time");
    worker->ready = true;
    worker->start_limit.cancel();
    if (!at_work_)
        return;
    log(LogLevel::info, "worker " + std::to_string(worker->pid) + " is ready");
    current_ = worker;
    tell_started({});
    events_.ready();
}

void Crew::retire(Worker& worker) {
    if (std::exchange(worker.retired, true))
        return;
    current_ = nullptr;
    if (at_work_)
        try_to_start();
}

void Crew::finish(Worker& worker, const SupervisorOptions& options) {
    if (std::exchange(worker.ending, true))
        return;
    if (worker.requests > 0)
        return worker.child->signal({SIGABRT, SIGKILL}, options.abort_wait);
    worker.child->close_socket();
    worker.child->signal({0, SIGTERM, SIGKILL}, options.stop_wait);
}

void Crew::ended(const std::shared_ptr<Worker>& worker, const std::string& how) {
    worker->start_limit.cancel();
    std::erase(workers_, worker);
    if (current_ == worker)
        current_ = nullptr;
    events_.ended(worker, how);
    if (at_work_ && !worker->retired)
        replace(*worker, how);
    check_stopped();
}

void Crew::replace(const Worker& worker, const std::string& how) {
    if (started_)
        return fail_start("the worker " + how + " before it was ready");
    if (!worker.answered)
        return start_later();
    pause_ = options_.first_pause;
    try_to_start();
}

void Crew::start_later() {
    log(LogLevel::warning, "the next worker is started in " + seconds_text(pause_));
    start_timer_.expires_after(pause_);
    start_timer_.async_wait([crew = weak_from_this()](error_code error) {
        const auto self = crew.lock();
        if (!error && self && self->at_work_)
            self->try_to_start();
    });
    pause_ = std::min(2 * pause_, options_.longest_pause);
}

void Crew::stop(std::function<void()> stopped) {
    at_work_ = false;
    current_ = nullptr;
    started_ = nullptr;
    start_timer_.cancel();
    stopped_.push_back(std::move(stopped));
    for (const auto& worker : workers_) {
        worker->ending = true;
        worker->child->close_socket();
        worker->child->signal({0, SIGTERM, SIGKILL}, options_.stop_wait);
    }
    check_stopped();
}

void Crew::check_stopped() {
    if (at_work_ || !workers_.empty())
        return;
    for (auto& stopped : std::exchange(stopped_, {}))
        boost::asio::post(loop_, std::move(stopped));
}

void Crew::log(LogLevel level, const std::string& line) const {
    if (options_.log)
        options_.log(level, line);
}

} // namespace cmpihost::worker
