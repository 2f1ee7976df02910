// Addresses: where to listen, and who a client is.
#pragma once

#include "host/http/options.h"

#include <boost/asio/ip/address.hpp>

#include <array>
#include <string_view>

namespace cmpihost::http {

/// Reads ADDRESS[:PORT]; an IPv6 address with a port stands in brackets.
/// @throws std::runtime_error whose what() is one line
Endpoint read_endpoint(std::string_view text, std::uint16_t default_port);

/// Whether only clients on this machine reach the endpoint.
bool is_loopback(const Endpoint& endpoint);

/// "127.0.0.1:5988", "[::1]:5988"
std::string authority(const boost::asio::ip::address& address, std::uint16_t port);

/// What clients are told apart by: an IPv4 address, or an IPv6 network of 64 bits.
using Source = std::array<unsigned char, 16>;

Source source_of(const boost::asio::ip::address& address);

} // namespace cmpihost::http
