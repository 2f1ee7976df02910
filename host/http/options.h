// What a listener is told: where it listens, and what it grants.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cmpihost::http {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// Where to listen.
struct Endpoint {
    std::string address;    ///< of IPv4 or IPv6, without brackets
    std::uint16_t port = 0; ///< 0: any that is free
    bool optional = false;  ///< a machine without this address is fine
};

/// PEM files. The certificate's may hold a chain.
struct TlsFiles {
    std::string certificate;
    std::string key;
};

/// What clients get at most.
struct Limits {
    std::size_t connections = 512;
    std::size_t connections_per_address = 64; ///< of IPv6: per network of 64 bits
    bool count_loopback = false; ///< whether clients on this machine, who share an address, are counted by it
    std::size_t header_bytes = std::size_t{16} << 10;
    std::size_t body_bytes = std::size_t{1} << 20;

    milliseconds handshake = seconds{10};
    milliseconds header = seconds{10}; ///< from its first byte to its last, or from connecting
    milliseconds body = seconds{20};   ///< and one second more for each `body_rate` bytes
    std::size_t body_rate = 500;
    milliseconds body_most = seconds{60};
    milliseconds sending = seconds{20};      ///< without progress
    milliseconds idle = seconds{75};         ///< between requests
    milliseconds linger_silent = seconds{5}; ///< for the client to close after the last reply, without a byte from it
    milliseconds linger = seconds{30};       ///< the same in all
    milliseconds drain = seconds{5};         ///< for running requests when the listener is stopped
    milliseconds accept_pause{100};          ///< after a connection could not be accepted
    seconds retry_after{2};                  ///< told to clients that are sent away
};

/// What failed logins cost an address.
struct PenaltyLimits {
    milliseconds failure = seconds{5};
    milliseconds tolerated = seconds{15}; ///< in force above this
    milliseconds most = seconds{600};
    std::size_t addresses = 65'536;
};

struct LoginLimits {
    std::size_t waiting = 32;              ///< passwords to be hashed
    milliseconds remembered = seconds{60}; ///< a verified password
    std::size_t remembered_passwords = 1'024;
    PenaltyLimits penalties{};
};

struct LogOptions {
    std::string file; ///< appended to; empty: standard error
    bool json = false;
    bool quiet = false; ///< no line per request
};

struct ListenerOptions {
    std::vector<Endpoint> endpoints;
    std::optional<TlsFiles> tls;      ///< for all endpoints
    std::string users;                ///< file; empty: no credentials are asked for
    std::vector<std::string> hosts{}; ///< names of this server, besides localhost and its addresses
    std::string metrics_user{};       ///< who gets metrics and nothing else; empty: nobody is confined so
    Limits limits{};
    LoginLimits login{};
};

} // namespace cmpihost::http
