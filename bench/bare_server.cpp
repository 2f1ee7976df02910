// What the WBEM server is measured against: a bare Beast server that answers every request with the bytes of one file.
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using asio::ip::tcp;

/// One connection: read a request, write the file, again.
class Connection : public std::enable_shared_from_this<Connection> {
  public:
    Connection(tcp::socket socket, const std::string& body) : stream_(std::move(socket)), body_(body) {
        stream_.socket().set_option(tcp::no_delay(true));
    }

    void read() {
        request_ = {};
        http::async_read(stream_, buffer_, request_, [self = shared_from_this()](beast::error_code error, std::size_t) {
            if (!error)
                self->write();
        });
    }

  private:
    void write() {
        response_ = {};
        response_.set(http::field::content_type, "application/xml; charset=\"utf-8\"");
        response_.set("CIMOperation", "MethodResponse");
        response_.keep_alive(request_.keep_alive());
        response_.body() = {body_.data(), body_.size()};
        response_.prepare_payload();
        http::async_write(stream_, response_, [self = shared_from_this()](beast::error_code error, std::size_t) {
            if (!error && self->request_.keep_alive())
                self->read();
        });
    }

    beast::tcp_stream stream_;
    const std::string& body_;
    beast::flat_buffer buffer_;
    http::request<http::string_body> request_;
    http::response<http::span_body<const char>> response_;
};

void accept(tcp::acceptor& acceptor, const std::string& body) {
    acceptor.async_accept([&acceptor, &body](beast::error_code error, tcp::socket socket) {
        if (!error)
            std::make_shared<Connection>(std::move(socket), body)->read();
        accept(acceptor, body);
    });
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: bare_server FILE\n");
        return 2;
    }
    std::ifstream file(arguments[1], std::ios::binary);
    const std::string body{std::istreambuf_iterator<char>(file), {}};
    asio::io_context loop;
    tcp::acceptor acceptor(loop, {asio::ip::address_v4::loopback(), 0});
    std::printf("listening on http://127.0.0.1:%u/cimom\n", acceptor.local_endpoint().port());
    std::fflush(stdout);
    accept(acceptor, body);
    loop.run();
}
