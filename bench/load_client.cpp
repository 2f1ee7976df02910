// Puts load on a WBEM server of this machine:
//   load_client PORT REQUESTS CONNECTIONS SLOW FILE...
// sends REQUESTS requests over CONNECTIONS keep-alive connections at once. The files are requests, head and body, and
// are sent in turn. Beside them stand SLOW connections that send a byte a second, or half a request, or read nothing.
// Prints the requests answered with status 200, all others, and the median time in microseconds. Exits with 1 if a
// request failed.
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using asio::ip::tcp;
using Clock = std::chrono::steady_clock;
using Error = boost::system::error_code;

/// For the slow ones, before the others begin.
constexpr std::chrono::seconds time_to_get_stuck{2};

/// What all connections share.
struct Load {
    asio::io_context loop{1};
    tcp::endpoint server;
    std::vector<std::string> requests;
    std::size_t wanted = 0;
    std::size_t begun = 0;
    std::size_t good = 0;
    std::size_t bad = 0;
    std::vector<unsigned> microseconds{};

    bool all_ended() const { return good + bad == wanted; }
};

tcp::socket connected(Load& load) {
    tcp::socket socket(load.loop, tcp::v4());
    socket.connect(load.server);
    socket.set_option(tcp::no_delay(true));
    return socket;
}

/// A client that asks again and again.
class Client : public std::enable_shared_from_this<Client> {
  public:
    explicit Client(Load& load) : load_(load), socket_(connected(load)) {}

    void ask() {
        if (load_.begun == load_.wanted)
            return;
        const std::string& request = load_.requests[load_.begun++ % load_.requests.size()];
        asked_ = Clock::now();
        asio::async_write(socket_, asio::buffer(request), [self = shared_from_this()](Error error, std::size_t) {
            error ? self->fail(error.message()) : self->read();
        });
    }

  private:
    void read() {
        parser_.emplace();
        parser_->body_limit(std::numeric_limits<std::uint64_t>::max());
        http::async_read(socket_, buffer_, *parser_, [self = shared_from_this()](Error error, std::size_t) {
            error ? self->fail(error.message()) : self->take();
        });
    }

    void take() {
        if (parser_->get().result_int() != 200)
            return fail("status " + std::to_string(parser_->get().result_int()));
        const auto took = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - asked_);
        load_.microseconds.push_back(static_cast<unsigned>(took.count()));
        ++load_.good;
        go_on();
    }

    void fail(const std::string& why) {
        if (++load_.bad <= 10)
            std::fprintf(stderr, "load_client: a request failed: %s\n", why.c_str());
        go_on();
    }

    void go_on() {
        if (load_.all_ended())
            load_.loop.stop();
        else if (socket_.is_open())
            ask();
    }

    Load& load_;
    tcp::socket socket_;
    Clock::time_point asked_{};
    boost::beast::flat_buffer buffer_;
    std::optional<http::response_parser<http::string_body>> parser_;
};

/// A client that is slow or broken, in one of three ways. It comes again when the server has closed its connection.
class SlowClient : public std::enable_shared_from_this<SlowClient> {
  public:
    SlowClient(Load& load, std::size_t number) : load_(load), number_(number), socket_(load.loop), timer_(load.loop) {}

    void begin() {
        socket_ = connected(load_);
        sent_ = 0;
        switch (number_ % 3) {
        case 0:
            send_byte();
            return wait_for_end();
        case 1:
            send(load_.requests[0].size() / 2);
            return wait_for_end();
        default:
            ask_without_reading();
        }
    }

  private:
    void send(std::size_t bytes) {
        Error ignored;
        asio::write(socket_, asio::buffer(load_.requests[0].data() + sent_, bytes), ignored);
        sent_ += bytes;
    }

    void send_byte() {
        if (sent_ < load_.requests[0].size())
            send(1);
        wait(std::chrono::seconds(1), &SlowClient::send_byte);
    }

    /// Requests until the server takes no more; its replies stay where they are.
    void ask_without_reading() {
        Error error;
        socket_.non_blocking(true);
        for (int turn = 0; turn < 100 && !error; ++turn)
            for (const std::string& request : load_.requests)
                socket_.write_some(asio::buffer(request), error);
        if (error && error != asio::error::would_block)
            return begin_again();
        wait(std::chrono::seconds(1), &SlowClient::ask_without_reading);
    }

    void wait_for_end() {
        socket_.async_read_some(asio::buffer(scratch_), [self = shared_from_this()](Error error, std::size_t) {
            error ? self->begin_again() : self->wait_for_end();
        });
    }

    void begin_again() {
        timer_.cancel();
        socket_.close();
        wait(std::chrono::milliseconds(100), &SlowClient::begin);
    }

    void wait(std::chrono::milliseconds time, void (SlowClient::*then)()) {
        timer_.expires_after(time);
        timer_.async_wait([self = shared_from_this(), then](Error error) {
            if (!error)
                (*self.*then)();
        });
    }

    Load& load_;
    std::size_t number_;
    tcp::socket socket_;
    asio::steady_timer timer_;
    std::size_t sent_ = 0;
    std::array<char, 1024> scratch_{};
};

std::string text_of(const char* file) {
    std::ifstream stream(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    if (text.empty())
        throw std::runtime_error(std::string(file) + ": cannot be read");
    return text;
}

unsigned median(std::vector<unsigned>& values) {
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

int run(int count, char** arguments) {
    Load load;
    load.server = {asio::ip::address_v4::loopback(), static_cast<std::uint16_t>(std::stoul(arguments[1]))};
    load.wanted = std::stoul(arguments[2]);
    for (int i = 5; i < count; ++i)
        load.requests.push_back(text_of(arguments[i]));
    const std::size_t slow = std::stoul(arguments[4]);
    for (std::size_t number = 0; number < slow; ++number)
        std::make_shared<SlowClient>(load, number)->begin();
    asio::steady_timer start(load.loop, slow > 0 ? time_to_get_stuck : std::chrono::seconds(0));
    start.async_wait([&load, clients = std::stoul(arguments[3])](Error) {
        for (std::size_t number = 0; number < clients; ++number)
            std::make_shared<Client>(load)->ask();
    });
    load.loop.run();
    std::printf("%zu %zu %u\n", load.good, load.wanted - load.good, median(load.microseconds));
    return load.good == load.wanted ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) {
    if (count < 6) {
        std::fprintf(stderr, "usage: load_client PORT REQUESTS CONNECTIONS SLOW FILE...\n");
        return 2;
    }
    try {
        return run(count, arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "load_client: %s\n", error.what());
        return 1;
    }
}
