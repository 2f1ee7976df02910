#include "host/worker/child.h"

#include <sys/socket.h>

#include <cerrno>
#include <csignal>
#include <utility>

namespace cmpihost::worker {

namespace {

using boost::system::error_code;

constexpr unsigned rounds_at_once = 16; // others on the loop want their turn
constexpr std::chrono::seconds time_to_end{1};
constexpr unsigned rounds_at_end = 1'024; // a child of the provider may go on writing

} // namespace

Child::Child(boost::asio::io_context& loop, const Process& process, Events events)
    : process_(process), events_(std::move(events)),
      socket_(loop, boost::asio::local::stream_protocol(), process.socket), end_(loop, process.pidfd), timer_(loop) {}

Child::~Child() {
    abandon();
}

void Child::watch() {
    wait_readable();
    wait_end();
}

void Child::wait_readable() {
    socket_.async_wait(socket_.wait_read, [self = shared_from_this()](error_code error) {
        if (!error && self->read_available(rounds_at_once))
            self->wait_readable();
    });
}

void Child::wait_end() {
    end_.async_wait(end_.wait_read, [self = shared_from_this()](error_code error) {
        if (!error)
            self->end();
    });
}

/// Reads without waiting, so that nothing is under way when the end of the process is noticed.
/// @return false: nothing more will come
bool Child::read_available(unsigned rounds) {
    for (; rounds > 0 && socket_.is_open(); --rounds) {
        const std::span<char> room = reader_.room();
        const ssize_t count = recv(socket_.native_handle(), room.data(), room.size(), MSG_DONTWAIT);
        if (count < 0 && errno == EAGAIN)
            return true;
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) {
            lose_connection();
            return false;
        }
        reader_.filled(static_cast<std::size_t>(count));
        if (!hand_over())
            return false;
        if (static_cast<std::size_t>(count) < room.size()) // that was all
            break;
    }
    return socket_.is_open();
}

bool Child::hand_over() {
    try {
        while (const auto frame = reader_.next())
            events_.frame(*frame);
        return true;
    } catch (const BrokenFrame& broken) {
        break_off(std::string("sent ") + broken.what());
        return false;
    }
}

void Child::break_off(const std::string& fault) {
    fault_ = fault;
    signal({SIGKILL}, {}); // before the socket's end tells it to end by itself
    close_socket();
}

/// Most often the process is ending, and its end tells why.
void Child::lose_connection() {
    close_socket();
    timer_.expires_after(time_to_end);
    timer_.async_wait([self = shared_from_this()](error_code error) {
        if (!error)
            self->break_off("closed its connection");
    });
}

void Child::send(Outgoing question) {
    outgoing_.push_back(std::move(question));
    if (!waits_to_write_)
        write_available();
}

void Child::write_available() {
    while (!outgoing_.empty() && socket_.is_open()) {
        Outgoing& first = outgoing_.front();
        const ssize_t count = ::send(socket_.native_handle(), first.frames.data() + first.sent,
                                     first.frames.size() - first.sent, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count < 0 && errno == EAGAIN)
            return wait_writable();
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0) // the end of the process will be noticed
            return;
        first.sent += static_cast<std::size_t>(count);
        if (first.sent == first.frames.size())
            outgoing_.pop_front();
    }
}

void Child::wait_writable() {
    waits_to_write_ = true;
    socket_.async_wait(socket_.wait_write, [self = shared_from_this()](error_code error) {
        self->waits_to_write_ = false;
        if (!error)
            self->write_available();
    });
}

std::deque<Child::Outgoing> Child::take_unsent() {
    if (!outgoing_.empty() && outgoing_.front().sent > 0)
        outgoing_.pop_front();
    return std::exchange(outgoing_, {});
}

void Child::close_socket() {
    error_code ignored;
    socket_.close(ignored);
}

void Child::signal(std::deque<int> signals, std::chrono::milliseconds between) {
    if (signals.empty() || process_.pid < 0)
        return;
    send_signal(process_, signals.front());
    signals.pop_front();
    timer_.expires_after(between);
    timer_.async_wait([self = shared_from_this(), signals = std::move(signals), between](error_code error) {
        if (!error)
            self->signal(signals, between);
    });
}

void Child::end() {
    read_available(rounds_at_end);
    close_socket();
    timer_.cancel();
    std::string how = reap(std::exchange(process_.pid, -1));
    error_code ignored;
    end_.close(ignored);
    if (how == "ended with SIGKILL" && !fault_.empty())
        how = fault_ + " and was ended";
    if (const auto ended = std::exchange(events_, {}).ended)
        ended(how);
}

void Child::abandon() {
    events_ = {[](const Frame&) {}, nullptr};
    close_socket();
    timer_.cancel();
    if (process_.pid < 0)
        return;
    send_signal(process_, SIGKILL);
    reap(std::exchange(process_.pid, -1));
    error_code ignored;
    end_.close(ignored);
}

} // namespace cmpihost::worker
