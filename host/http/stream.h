// A client's connection as a stream of bytes, under TLS or plain.
#pragma once

#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace boost::asio::ssl {
class context;
}

namespace cmpihost::http {

/// One read and one write at a time. Handlers are called from the event loop, with operation_aborted after cancel() or
/// close(); whoever is called back keeps the stream alive until then.
class Stream {
  public:
    using Error = boost::system::error_code;
    using Done = std::function<void(const Error& error)>;
    using Moved = std::function<void(const Error& error, std::size_t bytes)>;
    using Buffers = std::vector<boost::asio::const_buffer>;

    /// @param tls null: plain
    Stream(boost::asio::ip::tcp::socket socket, std::shared_ptr<boost::asio::ssl::context> tls);
    ~Stream();
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    bool is_tls() const { return tls_ != nullptr; }
    void handshake(Done done);
    void read_some(std::span<char> room, Moved done);

    /// Some of the bytes, those in front.
    void write_some(const Buffers& buffers, Moved done);

    /// Ends TLS, and waits for the client to do so.
    void shut_tls_down(Done done);

    /// Tells the client that nothing more comes. What it still sends can be read, without TLS.
    void end_sending();
    void read_some_raw(std::span<char> room, Moved done);

    void cancel();
    void close();

  private:
    struct Tls;

    std::shared_ptr<boost::asio::ssl::context> context_;
    std::unique_ptr<Tls> tls_;
    std::unique_ptr<boost::asio::ip::tcp::socket> plain_; ///< null under TLS
    boost::asio::ip::tcp::socket& socket_;
};

} // namespace cmpihost::http
