// A listener inside the test, with a backend that answers what the test says, and clients that speak raw bytes.
#pragma once

#include "host/http/listener.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <future>
#include <mutex>
#include <sstream>
#include <thread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace cmpihost::http {

/// A file of this test alone, gone at its end.
class TestFile {
  public:
    explicit TestFile(const std::string& content = {}, unsigned mode = 0600) {
        name_ = testing::TempDir() + "http_test_" + std::to_string(getpid()) + "_" + std::to_string(++made());
        write(content);
        std::filesystem::permissions(name_, static_cast<std::filesystem::perms>(mode));
    }
    ~TestFile() { std::filesystem::remove(name_); }
    TestFile(const TestFile&) = delete;
    TestFile& operator=(const TestFile&) = delete;

    const std::string& name() const { return name_; }
    void write(const std::string& content) const { std::ofstream(name_) << content; }
    std::string text() const {
        std::ostringstream text;
        text << std::ifstream(name_).rdbuf();
        return text.str();
    }

  private:
    static unsigned& made() {
        static unsigned count = 0;
        return count;
    }
    std::string name_;
};

/// Answers each request with a reply of the test's, at once, or when it is told to.
class FakeBackend : public worker::Backend {
  public:
    bool ask(server::Question question, Done done) override {
        const std::lock_guard lock(mutex_);
        if (full)
            return false;
        questions_.push_back(std::move(question));
        held_.push_back(std::move(done));
        if (!hold)
            answer_all();
        return true;
    }
    void stop(std::function<void()> stopped) override { stopped(); }

    /// Answers those that are held. On the event loop's thread.
    void release() {
        const std::lock_guard lock(mutex_);
        answer_all();
    }

    std::vector<server::Question> questions() {
        const std::lock_guard lock(mutex_);
        return questions_;
    }

    std::atomic<bool> full = false;
    std::atomic<bool> hold = false;
    worker::Reply reply; ///< set before a request is sent

  private:
    void answer_all() {
        for (const Done& done : std::exchange(held_, {}))
            done(reply);
    }

    std::mutex mutex_;
    std::vector<server::Question> questions_;
    std::vector<Done> held_;
};

/// A reply as it came.
struct RawReply {
    std::string head; ///< status line and headers, with the empty line
    std::string body;

    unsigned status() const { return head.size() < 12 ? 0 : static_cast<unsigned>(std::stoul(head.substr(9, 3))); }
    /// "(none)" if there is none of this name, spelt so.
    std::string header(const std::string& name) const {
        const std::size_t at = head.find("\r\n" + name + ": ");
        if (at == std::string::npos)
            return "(none)";
        const std::size_t value = at + name.size() + 4;
        return head.substr(value, head.find("\r\n", value) - value);
    }
};

/// What is waited for comes within this, however busy the machine is.
constexpr int most_patience_ms = 120'000;

/// Waits until something holds, by looking now and then.
template <class Condition>
bool comes_true(Condition holds) {
    const auto end = std::chrono::steady_clock::now() + milliseconds{most_patience_ms};
    while (std::chrono::steady_clock::now() < end) {
        if (holds())
            return true;
        std::this_thread::sleep_for(milliseconds{2});
    }
    return false;
}

/// A client on a socket.
class RawClient {
  public:
    explicit RawClient(std::uint16_t port, int receive_buffer = 0) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        if (receive_buffer > 0)
            setsockopt(socket_, SOL_SOCKET, SO_RCVBUF, &receive_buffer, sizeof receive_buffer);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }
    ~RawClient() { ::close(socket_); }
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    int socket() const { return socket_; }

    /// Whether all bytes were taken.
    bool send(std::string_view bytes) const {
        return ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
    }
    void end_sending() const { shutdown(socket_, SHUT_WR); }

    /// Waits for more bytes. False at the end, after a reset, and when none come.
    bool read_some(int patience_ms = most_patience_ms) {
        pollfd ready{socket_, POLLIN, 0};
        if (poll(&ready, 1, patience_ms) != 1)
            return false;
        char buffer[65536];
        const ssize_t count = recv(socket_, buffer, sizeof buffer, 0);
        reset_ = count < 0;
        ended_ = count <= 0;
        if (count > 0)
            bytes_.append(buffer, static_cast<std::size_t>(count));
        return count > 0;
    }

    /// The next reply, as long as its Content-Length says.
    RawReply read_reply() {
        std::size_t end = std::string::npos;
        while ((end = bytes_.find("\r\n\r\n")) == std::string::npos)
            if (!read_some())
                return {};
        RawReply reply{bytes_.substr(0, end + 4), {}};
        const std::string length = reply.header("Content-Length");
        const std::size_t size = length == "(none)" ? 0 : std::stoul(length);
        while (bytes_.size() < end + 4 + size)
            if (!read_some())
                break;
        reply.body = bytes_.substr(end + 4, size);
        bytes_.erase(0, std::min(bytes_.size(), end + 4 + size));
        return reply;
    }

    /// Whether the server closes the connection in order, without a byte more.
    bool sees_end() {
        while (read_some()) {
        }
        return ended_ && !reset_ && bytes_.empty();
    }

    /// Whether the server closes, be it by a reset.
    bool is_closed() {
        while (read_some()) {
        }
        return ended_;
    }

    /// Whether nothing comes for a while, no end either.
    bool hears_nothing(int patience_ms) { return !read_some(patience_ms) && !ended_; }

  private:
    int socket_;
    std::string bytes_;
    bool ended_ = false;
    bool reset_ = false;
};

/// The headers of an operation, but for those of its length.
inline const std::string cim_headers =
    "Content-Type: application/xml; charset=\"utf-8\"\r\nCIMOperation: MethodCall\r\n"
    "CIMMethod: EnumerateInstanceNames\r\nCIMObject: root%2Fcimv2\r\n";

inline std::string post(const std::string& body = "<CIM/>", const std::string& more_headers = {}) {
    return "POST /cimom HTTP/1.1\r\nHost: here:5988\r\n" + cim_headers + more_headers +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

/// A listener on a free port, on a thread of its own. Options are set before start(). Those of time are so long that
/// nothing ends by itself, unless the test is about it.
class ListenerTest : public testing::Test {
  protected:
    ListenerTest() {
        options.endpoints = {{"127.0.0.1", 0, false}};
        Limits& limits = options.limits;
        for (milliseconds* limit : {&limits.handshake, &limits.header, &limits.body, &limits.body_most, &limits.sending,
                                    &limits.idle, &limits.linger_silent, &limits.linger, &limits.drain})
            *limit = std::chrono::hours{1};
        options.login.remembered = std::chrono::hours{1};
        backend.reply.body = {"<answer/>"};
        log_options.file = log_file.name();
    }
    ~ListenerTest() override { finish(); }

    void start() {
        log = std::make_unique<Log>(log_options);
        listener = std::make_unique<Listener>(context, backend, *log, options);
        const std::string url = listener->urls().front();
        port = static_cast<std::uint16_t>(std::stoul(url.substr(url.rfind(':') + 1)));
        thread = std::thread([this] {
            const auto work = boost::asio::make_work_guard(context);
            context.run();
        });
    }

    /// Ends everything; what the log took is in its file then.
    void finish() {
        if (!thread.joinable())
            return;
        on_loop([this] { listener.reset(); });
        context.stop();
        thread.join();
        log.reset();
    }

    /// Does something on the thread of the event loop.
    template <class Do>
    void on_loop(Do action) {
        std::packaged_task<void()> task(std::ref(action));
        auto done = task.get_future();
        boost::asio::post(context, std::move(task));
        done.wait();
    }

    void release() {
        on_loop([this] { backend.release(); });
    }

    /// Waits until so many requests were handed over.
    void wait_for_questions(std::size_t count) {
        comes_true([&] { return backend.questions().size() >= count; });
        EXPECT_EQ(backend.questions().size(), count);
    }

    /// Does something while the event loop stands still, so that all of it is there when the loop goes on.
    template <class Do>
    void at_once(Do action) {
        std::promise<void> stands;
        std::promise<void> acted;
        std::packaged_task<void()> stand([&stands, until = acted.get_future()] {
            stands.set_value();
            until.wait();
        });
        auto over = stand.get_future();
        boost::asio::post(context, std::move(stand));
        stands.get_future().wait();
        action();
        acted.set_value();
        over.wait(); // which looks at both
    }

    /// Sends bytes on a connection of their own, and answers the first reply.
    RawReply ask(const std::string& bytes) const {
        RawClient client(port);
        client.send(bytes);
        return client.read_reply();
    }

    boost::asio::io_context context;
    FakeBackend backend;
    TestFile log_file;
    LogOptions log_options;
    ListenerOptions options;
    std::unique_ptr<Log> log;
    std::unique_ptr<Listener> listener;
    std::uint16_t port = 0;
    std::thread thread;
};

} // namespace cmpihost::http
