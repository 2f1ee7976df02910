#include "host/http/connection.h"

#include "host/cim/names.h"

#include <boost/asio/error.hpp>

#include <utility>

namespace cmpihost::http {

namespace {

std::chrono::steady_clock::time_point now() {
    return std::chrono::steady_clock::now();
}

/// What a client that names no host is answered with.
std::string local_host(const boost::asio::ip::tcp::socket& socket) {
    Stream::Error error;
    const auto endpoint = socket.local_endpoint(error);
    return error ? "localhost" : authority(endpoint.address(), endpoint.port());
}

} // namespace

server::ServerFigures Shared::server_figures() const {
    return {figures.since(), figures.requests(), figures.failures(), backend.restarts(), connections.size()};
}

std::string Shared::metrics(bool answered) const {
    return figures.text({connections.size(), backend.restarts(), answered});
}

Connection::Connection(std::shared_ptr<Shared> shared, boost::asio::ip::tcp::socket socket,
                       std::shared_ptr<boost::asio::ssl::context> tls, const boost::asio::ip::address& address,
                       bool counted)
    : shared_(std::move(shared)), host_(local_host(socket)), stream_(std::move(socket), std::move(tls)),
      source_(source_of(address)), address_(address.to_string()),
      place_(std::make_unique<Places::Place>(shared_->places, source_, counted, [this] { close(); })),
      timer_(shared_->context), reader_(shared_->limits.header_bytes, shared_->limits.body_bytes) {}

void Connection::start() {
    shared_->connections.insert(this);
    shared_->figures.count_connection();
    if (stream_.is_tls())
        return handshake();
    enter(Phase::head, shared_->limits.header);
    read();
}

void Connection::drain() {
    if (phase_ == Phase::handshake || phase_ == Phase::idle || phase_ == Phase::head || phase_ == Phase::login)
        close();
}

void Connection::close() {
    if (phase_ == Phase::closed)
        return;
    if (phase_ == Phase::sending && then_ == &Connection::on_sent)
        log_request(); // the client did not wait for all of it
    phase_ = Phase::closed;
    timer_.cancel();
    stream_.close();
    shared_->connections.erase(this);
    place_.reset();
}

// ------------------------------------------------------------------------------------------------ deadlines

void Connection::enter(Phase phase, milliseconds limit) {
    phase_ = phase;
    place_->set_idle(phase == Phase::idle || phase == Phase::lingering);
    arm(now() + limit);
}

void Connection::enter_without_limit(Phase phase) {
    phase_ = phase;
    deadline_ = Time::max();
}

/// Deadlines move with each phase, and hardly any is reached: a timer that rings before the new one is left alone.
void Connection::arm(Time deadline) {
    deadline_ = deadline;
    if (!timer_waits_ || timer_.expiry() > deadline)
        await_deadline();
}

void Connection::await_deadline() {
    timer_waits_ = true;
    timer_.expires_at(deadline_);
    timer_.async_wait([self = shared_from_this()](const Error& error) {
        if (error || self->phase_ == Phase::closed)
            return;
        self->timer_waits_ = false;
        if (self->deadline_ <= now())
            self->expire();
        else if (self->deadline_ != Time::max())
            self->await_deadline();
    });
}

void Connection::expire() {
    if (phase_ == Phase::login)
        return; // which has a limit of its own
    if (phase_ == Phase::provider)
        return answer_scraper();
    if (phase_ != Phase::idle && phase_ != Phase::head && phase_ != Phase::body)
        return close();
    expired_ = true;
    stream_.cancel(); // on_read() goes on
}

// ------------------------------------------------------------------------------------------------ reading

void Connection::handshake() {
    enter(Phase::handshake, shared_->limits.handshake);
    stream_.handshake([self = shared_from_this()](const Error& error) {
        if (error || self->phase_ == Phase::closed)
            return self->close();
        self->enter(Phase::head, self->shared_->limits.header);
        self->read();
    });
}

void Connection::read() {
    stream_.read_some(reader_.room(), [self = shared_from_this()](const Error& error, std::size_t bytes) {
        if (self->phase_ != Phase::closed)
            self->on_read(error, bytes);
    });
}

void Connection::on_read(const Error& error, std::size_t bytes) {
    reader_.received(bytes);
    const bool late = std::exchange(expired_, false);
    if (late && (phase_ != Phase::idle || bytes == 0)) // a request that just came is served
        return on_late();
    if (error == boost::asio::error::eof && reader_.has_begun())
        return refuse({400}); // half a request; the client may still read
    if (error)
        return close();
    if (late)
        enter(Phase::head, shared_->limits.header);
    if (phase_ == Phase::body) {
        body_bytes_ += bytes;
        arm(body_deadline());
    }
    advance();
}

void Connection::on_late() {
    if (!reader_.has_begun())
        return linger();
    refuse({408});
}

void Connection::advance() {
    const auto progress = reader_.advance();
    if (phase_ == Phase::idle && reader_.has_begun()) // empty lines are no request
        enter(Phase::head, shared_->limits.header);
    switch (progress) {
    case RequestReader::Progress::wants_more:
        return read();
    case RequestReader::Progress::head:
        return on_head();
    case RequestReader::Progress::complete:
        return ask();
    case RequestReader::Progress::refused:
        return refuse({reader_.status()});
    }
}

void Connection::on_head() {
    received_ = now();
    record_ = {};
    record_.time = std::chrono::system_clock::now();
    auto& authorizations = reader_.head().authorizations;
    if (const unsigned fault = authorizations.size() > 1 ? 400 : framing_fault(reader_.head())) {
        must_close_ = true;
        return refuse({fault});
    }
    if (!shared_->login)
        return on_admitted();
    enter_without_limit(Phase::login);
    const Secret authorization = authorizations.empty() ? Secret() : std::move(authorizations.front());
    shared_->login->check(source_, authorization,
                          [self = shared_from_this()](Verdict verdict, const std::string& user) {
                              if (self->phase_ != Phase::closed)
                                  self->on_login(verdict, user);
                          });
}

void Connection::on_login(Verdict verdict, const std::string& user) {
    record_.user = user;
    switch (verdict) {
    case Verdict::accepted:
        return on_admitted();
    case Verdict::refused:
        return refuse({401, {}, {{"WWW-Authenticate", "Basic realm=\"cmpihost\""}}, {}});
    case Verdict::slowed:
        return refuse_for_now(429, std::chrono::ceil<seconds>(shared_->login->slowed(source_)));
    case Verdict::busy:
        return refuse_for_now(503, shared_->limits.retry_after);
    }
}

void Connection::on_admitted() {
    page_.reset();
    if (is_page(reader_.head())) {
        const auto refusal = refusal_of_page();
        return refusal ? refuse(*refusal) : begin_body();
    }
    if (is_cross_site(reader_.head(), shared_->hosts) ||
        (!record_.user.empty() && record_.user == shared_->metrics_user))
        return refuse({403});
    auto checked = check_request(reader_.head());
    if (auto* refusal = std::get_if<Refusal>(&checked))
        return refuse(*refusal);
    cim_ = std::get<CimHeaders>(std::move(checked));
    const std::string* expected = reader_.head().field("Expect");
    const bool waits = expected != nullptr && same_name(*expected, "100-continue") && reader_.head().version_1_1;
    if (waits && !reader_.has_more() && !reader_.is_complete())
        return send("HTTP/1.1 100 Continue\r\n\r\n", &Connection::begin_body);
    begin_body();
}

std::optional<Refusal> Connection::refusal_of_page() {
    const RequestHead& head = reader_.head();
    record_.operation = head.method;
    record_.class_name = path_of(head.target);
    auto checked = check_page(head, shared_->hosts);
    if (auto* refusal = std::get_if<Refusal>(&checked))
        return std::move(*refusal);
    const bool confined = !record_.user.empty() && record_.user == shared_->metrics_user;
    if (confined && record_.class_name != metrics_path)
        return Refusal{403};
    cim_ = {};
    page_ = std::get<server::PageRequest>(std::move(checked));
    page_->figures = shared_->server_figures();
    return std::nullopt;
}

void Connection::begin_body() {
    phase_ = Phase::body;
    body_began_ = now();
    body_bytes_ = 0;
    arm(body_deadline());
    advance();
}

Connection::Time Connection::body_deadline() const {
    const Limits& limits = shared_->limits;
    const milliseconds earned{body_bytes_ * 1000 / limits.body_rate};
    return body_began_ + std::min(limits.body + earned, limits.body_most);
}

void Connection::ask() {
    enter_without_limit(Phase::provider);
    received_ = now();
    if (page_ && record_.class_name == metrics_path && page_->time.count() > 0)
        arm(received_ + page_->time * 9 / 10);
    const RequestHead& head = reader_.head();
    const std::string host = host_of(head).value_or(std::string());
    server::Question question{cim_.method, cim_.object, host.empty() ? host_ : host, std::move(reader_.body()), page_};
    const auto done = [self = shared_from_this(), number = ++asked_](worker::Reply reply) {
        if (self->phase_ != Phase::closed && self->asked_ == number)
            self->on_reply(std::move(reply));
    };
    if (!shared_->backend.ask(std::move(question), done))
        refuse_for_now(503, shared_->limits.retry_after);
}

/// A scraper that gave up would not even learn that the providers do not answer. What they say later is dropped.
void Connection::answer_scraper() {
    ++asked_;
    worker::Reply none;
    none.outcome.notes.emplace_back("the providers did not answer in the time that the scraper allows");
    on_reply(std::move(none));
}

} // namespace cmpihost::http
