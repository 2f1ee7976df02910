// Answers requests by a worker process, which may crash or hang.
#pragma once

#include "host/worker/backend.h"
#include "host/worker/supervisor_options.h"

namespace boost::asio {
class io_context;
}

namespace cmpihost::worker {

/// Requests that a worker was working on when it ended are answered with CIM error 1, those that were not yet sent go
/// to the next worker. A request that takes too long fails by itself; if a worker has had it for the whole time,
/// another worker gets new requests, and the first one is ended when all that it had is answered or has failed.
class Supervisor : public Backend {
  public:
    Supervisor(boost::asio::io_context& loop, SupervisorOptions options);

    /// Kills and reaps what stop() has not ended. Requests are dropped.
    ~Supervisor() override;
    Supervisor(const Supervisor&) = delete;
    Supervisor& operator=(const Supervisor&) = delete;

    /// Starts the first worker. Requests may be asked before it is ready.
    /// @param started called once: with an empty text when the worker is ready; else with the reason why it is not, and
    /// no other worker is started then. What the worker itself had to say went to the standard error that it shares.
    void start(std::function<void(const std::string& error)> started);

    /// @return false also before start(), and after stop() or a start that failed
    bool ask(server::Question question, Done done) override;
    std::uint64_t restarts() const override;
    void stop(std::function<void()> stopped) override;

  private:
    class State;
    std::shared_ptr<State> state_;
};

} // namespace cmpihost::worker
