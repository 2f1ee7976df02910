// The server's sockets.
#pragma once

#include "host/http/log.h"
#include "host/http/options.h"
#include "host/worker/backend.h"

namespace boost::asio {
class io_context;
}

namespace cmpihost::http {

/// Listens, and has requests answered by a backend. Used on the thread of the event loop.
class Listener {
  public:
    /// Reads certificate and users, and listens.
    /// @param backend and log outlive the listener
    /// @throws std::runtime_error whose what() is one line
    Listener(boost::asio::io_context& context, worker::Backend& backend, Log& log, const ListenerOptions& options);

    /// Closes all connections.
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// "http://127.0.0.1:5988/cimom" and its like, one for each address that is listened on.
    std::vector<std::string> urls() const;

    /// Reads certificate and users anew. What cannot be read stays as it was, and the log says so.
    void reload();

    /// Takes no more connections, and lets running requests end for a while.
    void stop(std::function<void()> stopped);

  private:
    class State;
    std::shared_ptr<State> state_;
};

} // namespace cmpihost::http
