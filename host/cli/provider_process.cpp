#include "host/cli/provider_process.h"

#include "host/broker/held.h"
#include "host/cli/call_text.h"
#include "host/cli/wire.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <thread>

#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cmpihost {

namespace {

/// What a message from the provider's process is. Its first byte; a text or a WireWriter's bytes follow.
enum class Message : char { loaded, refused, object, answered, failed, closed };

constexpr double longest_end = 10; // seconds from the end of the connection to that of the process

// ------------------------------------------------------------------------------------------------- both processes

/// False: the other end is gone.
bool send_all(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(sent, 0)));
    }
    return true;
}

bool send_message(int socket, std::string_view body) {
    WireWriter framed;
    framed.text(body);
    return send_all(socket, framed.bytes());
}

/// Takes the first message out of the bytes behind `read`; nothing if it is not there in full.
std::optional<std::string> next_message(std::string& received, std::size_t& read) {
    const std::string_view rest = std::string_view(received).substr(read);
    if (rest.size() < sizeof(std::uint64_t))
        return std::nullopt;
    const std::uint64_t announced = WireReader(rest).number();
    if (rest.size() - sizeof announced < announced)
        return std::nullopt;
    const auto size = static_cast<std::size_t>(announced);
    std::string message(rest.substr(sizeof announced, size));
    read += sizeof announced + size;
    if (read == received.size()) {
        received.clear();
        read = 0;
    }
    return message;
}

/// Appends what has come. False: the other end is gone.
bool receive_more(int socket, std::string& received, std::size_t& read) {
    std::array<char, 65536> block;
    ssize_t size = 0;
    do
        size = recv(socket, block.data(), block.size(), 0);
    while (size < 0 && errno == EINTR);
    if (size <= 0)
        return false;
    received.erase(0, read);
    read = 0;
    received.append(block.data(), static_cast<std::size_t>(size));
    return true;
}

// --------------------------------------------------------------------------------------------- the provider's side

/// The provider's process, which answers what comes through the socket.
class Child {
  public:
    explicit Child(int socket) : socket_(socket) {}

    void serve(const Options& options, const Streams& streams) {
        try {
            const LoadedProvider provider(options, streams);
            tell(Message::loaded, {});
            while (const auto request = next_request())
                answer(provider, *request);
        } catch (const std::runtime_error& error) {
            tell(Message::refused, error.what());
        }
        std::fflush(streams.err);
        tell(Message::closed, {});
    }

  private:
    void tell(Message kind, std::string_view body) const {
        std::string message(1, static_cast<char>(kind));
        if (!send_message(socket_, message.append(body)))
            _exit(0); // nobody wants to know
    }

    std::optional<Request> next_request() {
        auto message = next_message(received_, read_);
        while (!message && receive_more(socket_, received_, read_))
            message = next_message(received_, read_);
        return message ? std::optional(WireReader(*message).request()) : std::nullopt;
    }

    void answer(const LoadedProvider& provider, const Request& request) const {
        const Sink sink = [this](const HeldObject& object, bool is_instance) {
            WireWriter body;
            body.number(is_instance);
            body.object(plain(object));
            tell(Message::object, body.bytes());
        };
        try {
            WireWriter body;
            body.answer(provider.ask(request, sink));
            tell(Message::answered, body.bytes());
        } catch (const ProviderFailed& failure) {
            tell(Message::failed, failure.what());
        }
    }

    int socket_;
    std::string received_;
    std::size_t read_ = 0;
};

/// What the provider does ends this process as it would end any, whoever handled it in the one that this is a copy of.
void take_signals_as_they_come() {
    for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGTRAP, SIGSYS})
        std::signal(signal, SIG_DFL);
    std::set_terminate(std::abort);
}

[[noreturn]] void be_the_provider(int socket, const Options& options, const Streams& streams) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    take_signals_as_they_come();
    if (!options.trace.empty())
        std::setvbuf(stdout, nullptr, _IONBF, 0); // for the lines before a crash
    Child(socket).serve(options, streams);
    _exit(0);
}

/// The status of a process that ends, which is reaped then; nothing if it has not ended in time.
std::optional<int> status_of_end(pid_t process, double seconds) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    int status = 0;
    for (;;) {
        const pid_t ended = waitpid(process, &status, WNOHANG);
        if (ended == process)
            return status;
        if ((ended < 0 && errno != EINTR) || std::chrono::steady_clock::now() > limit)
            return std::nullopt;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

std::string end_text(int status) {
    if (WIFSIGNALED(status)) {
        const char* name = sigabbrev_np(WTERMSIG(status));
        return "died of signal " + std::to_string(WTERMSIG(status)) + (name ? " (SIG" + std::string(name) + ")" : "");
    }
    return "called exit(" + std::to_string(WEXITSTATUS(status)) + ")";
}

std::string seconds_text(double seconds) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g second%s", seconds, seconds == 1 ? "" : "s");
    return text.data();
}

} // namespace

// --------------------------------------------------------------------------------------------------- this process

ProviderProcess::ProviderProcess(const Options& options, const Streams& streams)
    : timeout_(options.timeout), max_objects_(options.max_objects) {
    std::fflush(nullptr); // what is still to be written is this process's alone
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        throw std::runtime_error(std::string("no process for the provider: ") + std::strerror(errno));
    process_ = fork();
    if (process_ == 0) {
        ::close(ends[0]);
        be_the_provider(ends[1], options, streams);
    }
    socket_ = ends[0];
    ::close(ends[1]);
    if (process_ < 0)
        throw std::runtime_error(std::string("no process for the provider: ") + std::strerror(errno));
    const std::string message = receive();
    if (message.front() != static_cast<char>(Message::refused))
        return;
    end(SIGKILL);
    throw std::runtime_error(message.substr(1));
}

ProviderProcess::~ProviderProcess() {
    end(SIGKILL);
}

/// Waits for the end of the process, after helping it along if there is a signal.
void ProviderProcess::end(int signal) {
    if (socket_ >= 0)
        ::close(socket_);
    socket_ = -1;
    if (process_ < 0)
        return;
    if (signal != 0)
        kill(process_, signal);
    while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
}

/// False: the time is over.
bool ProviderProcess::wait_for_bytes() const {
    pollfd wanted{socket_, POLLIN, 0};
    const int milliseconds = timeout_ > 0 ? static_cast<int>(timeout_ * 1000) : -1;
    int ready = 0;
    do
        ready = poll(&wanted, 1, milliseconds);
    while (ready < 0 && errno == EINTR);
    return ready != 0;
}

void ProviderProcess::fail_by_time() {
    end(SIGKILL);
    throw ProviderFailed("the provider gave no answer for " + seconds_text(timeout_) + " " + doing_);
}

/// Its end is what closes the connection, but for a provider that closes what is not its own.
void ProviderProcess::fail_by_death() {
    const auto status = status_of_end(process_, timeout_ > 0 ? std::min(timeout_, longest_end) : longest_end);
    if (!status) {
        end(SIGKILL);
        throw ProviderFailed("the provider closed its connection " + doing_);
    }
    process_ = -1;
    end(0);
    throw ProviderFailed("the provider " + end_text(*status) + " " + doing_);
}

std::string ProviderProcess::receive() {
    for (;;) {
        if (auto message = next_message(received_, read_))
            return std::move(*message);
        if (!wait_for_bytes())
            fail_by_time();
        if (!receive_more(socket_, received_, read_))
            fail_by_death();
    }
}

Answer ProviderProcess::ask(const Request& request, const Take& take) {
    doing_ = "in " + call_text(request);
    WireWriter body;
    body.request(request);
    send_message(socket_, body.bytes()); // if nobody is there, receive() tells
    for (std::size_t objects = 0;; ++objects) {
        const std::string message = receive();
        WireReader reader(std::string_view(message).substr(1));
        switch (static_cast<Message>(message.front())) {
        case Message::object: {
            if (objects == max_objects_) {
                end(SIGKILL);
                throw ProviderFailed("the provider returned more than " + std::to_string(max_objects_) + " objects " +
                                     doing_);
            }
            const bool is_instance = reader.number() != 0;
            take(reader.object(), is_instance);
            break;
        }
        case Message::answered:
            return reader.answer();
        default:
            throw ProviderFailed(message.substr(1));
        }
    }
}

void ProviderProcess::close() {
    if (process_ < 0)
        return;
    doing_ = "while it cleaned up";
    shutdown(socket_, SHUT_WR);
    receive(); // that it is closed, or a failure
    end(0);
}

} // namespace cmpihost
