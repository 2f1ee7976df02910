#include "host/http/listener.h"

#include "host/http/connection.h"
#include "host/http/tls.h"

#include <boost/asio/ip/v6_only.hpp>
#include <boost/asio/post.hpp>

#include <stdexcept>

namespace cmpihost::http {

namespace {

using boost::asio::ip::tcp;
using Error = boost::system::error_code;

/// An address that is listened on.
struct Door {
    explicit Door(boost::asio::io_context& context) : acceptor(context), pause(context) {}

    tcp::acceptor acceptor;
    boost::asio::steady_timer pause;
    std::optional<tcp::socket> held; ///< who came when there was no place
};

void open(tcp::acceptor& acceptor, const tcp::endpoint& endpoint, Error& error) {
    acceptor.open(endpoint.protocol(), error);
    if (!error && endpoint.address().is_v6())
        acceptor.set_option(boost::asio::ip::v6_only(true), error);
    if (!error)
        acceptor.set_option(tcp::acceptor::reuse_address(true), error);
    if (!error)
        acceptor.bind(endpoint, error);
    if (!error)
        acceptor.listen(tcp::acceptor::max_listen_connections, error);
}

} // namespace

class Listener::State : public std::enable_shared_from_this<State> {
  public:
    State(boost::asio::io_context& context, worker::Backend& backend, Log& log, const ListenerOptions& options)
        : context_(context), options_(options), drain_(context),
          shared_(std::make_shared<Shared>(context, backend, log, options)) {
        if (options.tls)
            tls_ = make_tls(*options.tls);
        if (!options.users.empty())
            shared_->login = std::make_unique<Login>(context, options.login, Users::read(options.users));
        for (const Endpoint& endpoint : options.endpoints)
            add_door(endpoint);
        if (doors_.empty())
            throw std::runtime_error("there is no address to listen on");
    }

    void start();
    void close_all();
    std::vector<std::string> urls() const;
    void reload();
    void stop(std::function<void()> stopped);

  private:
    void add_door(const Endpoint& endpoint);
    void accept(Door& door);
    void accept_later(Door& door);
    void arrive(Door& door, tcp::socket socket);
    void on_change();
    void close_doors();
    void close_connections();

    boost::asio::io_context& context_;
    ListenerOptions options_;
    boost::asio::steady_timer drain_;
    std::shared_ptr<Shared> shared_;
    std::shared_ptr<boost::asio::ssl::context> tls_;
    std::list<Door> doors_;
    bool closed_ = false;
    bool change_told_ = false;
    std::function<void()> stopped_;
};

void Listener::State::add_door(const Endpoint& endpoint) {
    doors_.emplace_back(context_);
    const tcp::endpoint wanted(boost::asio::ip::make_address(endpoint.address), endpoint.port);
    Error error;
    open(doors_.back().acceptor, wanted, error);
    if (!error)
        return;
    doors_.pop_back();
    const bool absent = error == boost::asio::error::address_family_not_supported ||
                        error == boost::system::errc::address_not_available;
    if (!endpoint.optional || !absent)
        throw std::runtime_error(authority(wanted.address(), wanted.port()) +
                                 ": cannot be listened on: " + error.message());
}

void Listener::State::start() {
    shared_->places.on_change([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self || std::exchange(self->change_told_, true))
            return;
        boost::asio::post(self->context_, [self] { self->on_change(); });
    });
    for (Door& door : doors_)
        accept(door);
}

void Listener::State::accept(Door& door) {
    door.acceptor.async_accept([self = shared_from_this(), &door](const Error& error, tcp::socket socket) {
        if (self->closed_)
            return;
        if (error)
            return self->accept_later(door);
        self->arrive(door, std::move(socket));
    });
}

/// There may be no descriptor left.
void Listener::State::accept_later(Door& door) {
    door.pause.expires_after(options_.limits.accept_pause);
    door.pause.async_wait([self = shared_from_this(), &door](const Error&) {
        if (!self->closed_)
            self->accept(door);
    });
}

void Listener::State::arrive(Door& door, tcp::socket socket) {
    Error error;
    const auto address = socket.remote_endpoint(error).address();
    const bool counted = options_.limits.count_loopback || !address.is_loopback();
    const auto room = error ? Places::Room::none_for_address : shared_->places.make_room(source_of(address), counted);
    if (room == Places::Room::no) {
        door.held = std::move(socket);
        return;
    }
    if (room == Places::Room::yes) {
        socket.set_option(tcp::no_delay(true), error);
        std::make_shared<Connection>(shared_, std::move(socket), tls_, address, counted)->start();
    }
    accept(door);
}

void Listener::State::on_change() {
    change_told_ = false;
    if (closed_) {
        if (shared_->places.taken() == 0 && stopped_) {
            drain_.cancel();
            std::exchange(stopped_, nullptr)();
        }
        return;
    }
    for (Door& door : doors_) {
        if (!door.held)
            continue;
        tcp::socket socket = std::move(*door.held);
        door.held.reset();
        arrive(door, std::move(socket));
    }
}

std::vector<std::string> Listener::State::urls() const {
    std::vector<std::string> urls;
    for (const Door& door : doors_) {
        const tcp::endpoint endpoint = door.acceptor.local_endpoint();
        urls.push_back((tls_ ? "https://" : "http://") + authority(endpoint.address(), endpoint.port()) + "/cimom");
    }
    return urls;
}

void Listener::State::reload() {
    const auto attempt = [this](const std::string& what, const auto& read) {
        try {
            read();
            shared_->log.note(what + " read anew");
        } catch (const std::runtime_error& error) {
            shared_->log.note(what + " stay as they were: " + error.what());
        }
    };
    if (tls_)
        attempt("certificate and key", [this] { tls_ = make_tls(*options_.tls); });
    if (shared_->login)
        attempt("users", [this] { shared_->login->replace(Users::read(options_.users)); });
}

void Listener::State::stop(std::function<void()> stopped) {
    stopped_ = std::move(stopped);
    close_doors();
    shared_->stopping = true;
    for (Connection* connection : std::vector(shared_->connections.begin(), shared_->connections.end()))
        connection->drain();
    drain_.expires_after(options_.limits.drain);
    drain_.async_wait([self = shared_from_this()](const Error& error) {
        if (!error)
            self->close_connections();
    });
    boost::asio::post(context_, [self = shared_from_this()] { self->on_change(); });
}

void Listener::State::close_all() {
    close_doors();
    close_connections();
    shared_->login.reset(); // who waits for a hash is held by it, and the thread that hashes needs the loop
    drain_.cancel();
}

void Listener::State::close_connections() {
    for (Connection* connection : std::vector(shared_->connections.begin(), shared_->connections.end()))
        connection->close();
}

void Listener::State::close_doors() {
    closed_ = true;
    for (Door& door : doors_) {
        Error ignored;
        door.acceptor.close(ignored);
        door.pause.cancel();
        door.held.reset();
    }
}

Listener::Listener(boost::asio::io_context& context, worker::Backend& backend, Log& log, const ListenerOptions& options)
    : state_(std::make_shared<State>(context, backend, log, options)) {
    state_->start();
}

Listener::~Listener() {
    state_->close_all();
}

std::vector<std::string> Listener::urls() const {
    return state_->urls();
}

void Listener::reload() {
    state_->reload();
}

void Listener::stop(std::function<void()> stopped) {
    state_->stop(std::move(stopped));
}

} // namespace cmpihost::http
