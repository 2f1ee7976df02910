#include "host/http/stream.h"

#include <boost/asio/ssl/stream.hpp>

namespace cmpihost::http {

namespace {

using boost::asio::ip::tcp;
namespace ssl = boost::asio::ssl;

} // namespace

struct Stream::Tls {
    Tls(tcp::socket socket, ssl::context& context) : stream(std::move(socket), context) {}

    ssl::stream<tcp::socket> stream;
};

Stream::Stream(tcp::socket socket, std::shared_ptr<ssl::context> tls)
    : context_(std::move(tls)), tls_(context_ ? std::make_unique<Tls>(std::move(socket), *context_) : nullptr),
      plain_(tls_ ? nullptr : std::make_unique<tcp::socket>(std::move(socket))),
      socket_(tls_ ? tls_->stream.next_layer() : *plain_) {}

Stream::~Stream() = default;

void Stream::handshake(Done done) {
    tls_->stream.async_handshake(ssl::stream_base::server, std::move(done));
}

void Stream::read_some(std::span<char> room, Moved done) {
    const auto buffer = boost::asio::buffer(room.data(), room.size());
    if (tls_)
        tls_->stream.async_read_some(buffer, std::move(done));
    else
        socket_.async_read_some(buffer, std::move(done));
}

void Stream::write_some(const Buffers& buffers, Moved done) {
    if (tls_)
        tls_->stream.async_write_some(buffers, std::move(done));
    else
        socket_.async_write_some(buffers, std::move(done));
}

void Stream::shut_tls_down(Done done) {
    tls_->stream.async_shutdown(std::move(done));
}

void Stream::end_sending() {
    Error ignored;
    socket_.shutdown(tcp::socket::shutdown_send, ignored);
}

void Stream::read_some_raw(std::span<char> room, Moved done) {
    socket_.async_read_some(boost::asio::buffer(room.data(), room.size()), std::move(done));
}

void Stream::cancel() {
    Error ignored;
    socket_.cancel(ignored);
}

void Stream::close() {
    Error ignored;
    socket_.close(ignored);
}

} // namespace cmpihost::http
