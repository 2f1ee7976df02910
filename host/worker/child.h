// A worker process, as the front sees it.
#pragma once

#include "host/worker/clock.h"
#include "host/worker/frames.h"
#include "host/worker/spawn.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/local/stream_protocol.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>

#include <deque>
#include <memory>

namespace cmpihost::worker {

/// Sends questions, hands over frames, notices the end, reaps. Used on the event loop's thread.
class Child : public std::enable_shared_from_this<Child> {
  public:
    struct Events {
        /// A frame came. What it throws (BrokenFrame) ends the process.
        std::function<void(const Frame& frame)> frame;

        /// The process has ended and is reaped, all that it sent was handed over. The text follows "the provider":
        /// "ended with SIGSEGV".
        std::function<void(const std::string& how)> ended;
    };

    /// The frames of a question.
    struct Outgoing {
        std::uint32_t request = 0;
        std::string frames;
        std::size_t sent = 0;
    };

    Child(boost::asio::io_context& loop, const Process& process, Events events);

    /// Kills and reaps what has not ended.
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Begins to hand over frames. Called once.
    void watch();
    void send(Outgoing question);

    /// Questions of which not one byte was sent.
    std::deque<Outgoing> take_unsent();

    /// Closes the socket, which is the worker's sign to end.
    void close_socket();

    /// Sends the signals one by one, as long as the process has not ended.
    void signal(std::deque<int> signals, std::chrono::milliseconds between);

    /// No more events; the process is killed and reaped.
    void abandon();

  private:
    void wait_readable();
    void wait_writable();
    void wait_end();
    bool read_available(unsigned rounds);
    bool hand_over();
    void write_available();
    void lose_connection();
    void break_off(const std::string& fault);
    void end();

    Process process_;
    Events events_;
    FrameReader reader_{Sender::worker};
    boost::asio::local::stream_protocol::socket socket_;
    boost::asio::posix::stream_descriptor end_;
    Timer timer_;
    std::deque<Outgoing> outgoing_;
    std::string fault_; ///< why the process was killed for what it did
    bool waits_to_write_ = false;
};

} // namespace cmpihost::worker
