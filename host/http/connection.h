// A client's connection: its requests, one after the other.
#pragma once

#include "host/http/figures.h"
#include "host/http/log.h"
#include "host/http/login.h"
#include "host/http/page_check.h"
#include "host/http/places.h"
#include "host/http/request_check.h"
#include "host/http/request_reader.h"
#include "host/http/stream.h"
#include "host/worker/backend.h"

#include <boost/asio/steady_timer.hpp>

#include <unordered_set>

namespace cmpihost::http {

class Connection;

/// What the connections of a listener share.
struct Shared {
    Shared(boost::asio::io_context& context_, worker::Backend& backend_, Log& log_, const ListenerOptions& options)
        : context(context_), backend(backend_), log(log_), limits(options.limits), hosts(options.hosts),
          metrics_user(options.metrics_user), places(limits) {}

    server::ServerFigures server_figures() const;

    /// The listener's own metrics.
    std::string metrics(bool answered) const;

    boost::asio::io_context& context;
    worker::Backend& backend;
    Log& log;
    Limits limits;
    std::vector<std::string> hosts; ///< as in ListenerOptions, and so is the next
    std::string metrics_user;
    Figures figures{};
    Places places;
    std::unique_ptr<Login> login; ///< null: no credentials are asked for
    std::unordered_set<Connection*> connections{};
    bool stopping = false; ///< each reply is a connection's last
};

/// Each phase of a connection has a deadline, which single bytes do not move. It keeps itself alive until it is closed.
class Connection : public std::enable_shared_from_this<Connection> {
  public:
    /// @param tls null: plain
    Connection(std::shared_ptr<Shared> shared, boost::asio::ip::tcp::socket socket,
               std::shared_ptr<boost::asio::ssl::context> tls, const boost::asio::ip::address& address, bool counted);

    void start();

    /// Ends the connection, after the reply if one is being made.
    void drain();

    void close();

  private:
    using Time = std::chrono::steady_clock::time_point;
    using Error = Stream::Error;
    using Step = void (Connection::*)();

    enum class Phase { handshake, idle, head, login, body, provider, sending, lingering, closed };

    void enter(Phase phase, milliseconds limit);
    void enter_without_limit(Phase phase);
    void arm(Time deadline);
    void await_deadline();
    void expire();

    void handshake();
    void read();
    void on_read(const Error& error, std::size_t bytes);
    void on_late();
    void advance();
    void on_head();
    void on_login(Verdict verdict, const std::string& user);
    void on_admitted();
    void begin_body();
    Time body_deadline() const;
    void ask();
    void answer_scraper();
    void on_reply(worker::Reply reply);
    std::optional<Refusal> refusal_of_page();
    void on_page_reply();

    void refuse(const Refusal& refusal);
    void refuse_for_now(unsigned status, seconds retry_after);
    void send(std::string head, Step then);
    Stream::Buffers unsent() const;
    void write();
    void on_written(const Error& error, std::size_t bytes);
    void on_sent();
    void log_request();
    void next_request();
    void linger();
    void discard();
    void discard_more();

    std::shared_ptr<Shared> shared_;
    std::string host_; ///< this server, where the client does not name it
    Stream stream_;
    Source source_;
    std::string address_;
    std::unique_ptr<Places::Place> place_;
    boost::asio::steady_timer timer_; ///< rings at the deadline or before
    bool timer_waits_ = false;
    Time deadline_ = Time::max(); ///< of the phase
    Phase phase_ = Phase::handshake;
    bool expired_ = false; ///< the deadline passed while bytes were awaited

    RequestReader reader_;
    CimHeaders cim_;
    std::optional<server::PageRequest> page_; ///< what is asked for in place of an operation
    LogRecord record_;
    Time received_{};         ///< the request's last byte
    std::uint64_t asked_ = 0; ///< questions so far; replies to others than the last are dropped
    Time body_began_{};
    std::size_t body_bytes_ = 0;
    bool must_close_ = false;
    bool keep_alive_ = false;

    std::string head_; ///< of the reply
    worker::Reply reply_;
    std::size_t block_ = 0;  ///< next to be sent: 0 is the head, others are blocks of the body
    std::size_t offset_ = 0; ///< in it
    Step then_ = nullptr;    ///< when all is sent
    Time linger_end_{};
    std::array<char, 1024> scratch_{};
};

} // namespace cmpihost::http
