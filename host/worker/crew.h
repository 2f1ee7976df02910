// The worker processes: the one that gets requests, and those that hang and are about to end.
#pragma once

#include "host/worker/child.h"
#include "host/worker/supervisor_options.h"

namespace cmpihost::worker {

struct Worker {
    std::shared_ptr<Child> child{};
    pid_t pid = -1;
    Timer start_limit;
    bool ready = false;
    bool answered = false; ///< a request
    bool retired = false;  ///< gets no more requests
    bool ending = false;   ///< was told to end
    unsigned requests = 0; ///< that it has not ended, also those that are answered with an error already
};

/// Starts workers, and others in their place. Used on the event loop's thread; calls back from events, not from calls.
class Crew : public std::enable_shared_from_this<Crew> {
  public:
    struct Events {
        std::function<void()> ready; ///< there is a current worker
        std::function<void(const std::shared_ptr<Worker>&, const Frame&)> frame;
        std::function<void(const std::shared_ptr<Worker>&, const std::string& how)> ended;
    };

    Crew(boost::asio::io_context& loop, const SupervisorOptions& options, Events events);
    ~Crew();
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;

    /// @param started called once, as Supervisor::start says
    void start(std::function<void(const std::string& error)> started);

    /// Whether a worker runs or will run.
    bool at_work() const { return at_work_; }

    /// The worker that gets requests; null while none is ready.
    const std::shared_ptr<Worker>& current() const { return current_; }

    /// Starts another worker for new requests.
    void retire(Worker& worker);

    /// Ends a retired worker: by SIGABRT if requests still run, which tells where.
    static void finish(Worker& worker, const SupervisorOptions& options);

    /// Ends all workers. Then calls back.
    void stop(std::function<void()> stopped);

  private:
    void start_worker();
    void start_later();
    void try_to_start();
    void fail_start(const std::string& error);
    void tell_started(const std::string& error);
    void limit_start(const std::shared_ptr<Worker>& worker);
    void take(const std::shared_ptr<Worker>& worker, const Frame& frame);
    void become_ready(const std::shared_ptr<Worker>& worker);
    void ended(const std::shared_ptr<Worker>& worker, const std::string& how);
    void replace(const Worker& worker, const std::string& how);
    void check_stopped();
    void log(LogLevel level, const std::string& line) const;

    boost::asio::io_context& loop_;
    const SupervisorOptions& options_;
    Events events_;
    Timer start_timer_;
    std::chrono::milliseconds pause_;
    std::function<void(const std::string&)> started_{}; ///< until the first worker is ready
    std::vector<std::function<void()>> stopped_{};
    bool at_work_ = false;
    std::shared_ptr<Worker> current_{};
    std::vector<std::shared_ptr<Worker>> workers_{};
};

} // namespace cmpihost::worker
