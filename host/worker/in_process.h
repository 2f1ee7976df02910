// Answers requests in this process, for debuggers: what crashes or hangs the provider crashes or hangs all.
#pragma once

#include "host/worker/backend.h"
#include "host/worker/worker_process.h"

namespace boost::asio {
class io_context;
}

namespace cmpihost::worker {

class InProcess : public Backend {
  public:
    /// @param waiting requests that may wait while all threads answer others
    InProcess(boost::asio::io_context& loop, AnswerFunction answer, unsigned threads, std::size_t waiting = 256);

    /// Waits for what runs.
    ~InProcess() override;
    InProcess(const InProcess&) = delete;
    InProcess& operator=(const InProcess&) = delete;

    bool ask(server::Question question, Done done) override;

    /// Calls back when nothing runs any more.
    void stop(std::function<void()> stopped) override;

  private:
    class State;
    std::shared_ptr<State> state_;
};

} // namespace cmpihost::worker
