#include "host/http/address.h"

#include "host/cim/whole_number.h"

#include <algorithm>
#include <stdexcept>

namespace cmpihost::http {

namespace {

namespace ip = boost::asio::ip;

struct Parts {
    std::string_view address;
    std::optional<std::string_view> port;
};

/// Nothing if the brackets are unbalanced.
std::optional<Parts> split(std::string_view text) {
    if (text.starts_with('[')) {
        const std::size_t end = text.find(']');
        if (end == std::string_view::npos)
            return std::nullopt;
        const std::string_view rest = text.substr(end + 1);
        if (!rest.empty() && !rest.starts_with(':'))
            return std::nullopt;
        return Parts{text.substr(1, end - 1), rest.empty() ? std::nullopt : std::optional(rest.substr(1))};
    }
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || text.find(':', colon + 1) != std::string_view::npos)
        return Parts{text, std::nullopt};
    return Parts{text.substr(0, colon), text.substr(colon + 1)};
}

} // namespace

Endpoint read_endpoint(std::string_view text, std::uint16_t default_port) {
    const auto refuse = [text](const char* expected) {
        return std::runtime_error("--listen " + std::string(text) + ": expected " + expected);
    };
    const auto parts = split(text);
    boost::system::error_code error;
    if (!parts || (ip::make_address(std::string(parts->address), error), error))
        throw refuse("an IPv4 address, or an IPv6 address in brackets, with or without :PORT");
    const auto port = parts->port ? whole_number<std::uint16_t>(*parts->port) : default_port;
    if (!port)
        throw refuse("a port between 0 and 65535");
    return {std::string(parts->address), *port, false};
}

bool is_loopback(const Endpoint& endpoint) {
    boost::system::error_code error;
    const ip::address address = ip::make_address(endpoint.address, error);
    return !error && address.is_loopback();
}

std::string authority(const ip::address& address, std::uint16_t port) {
    const std::string text = address.to_string();
    return (address.is_v6() ? "[" + text + "]" : text) + ":" + std::to_string(port);
}

Source source_of(const ip::address& address) {
    Source source{};
    if (address.is_v6() && !address.to_v6().is_v4_mapped()) {
        const auto bytes = address.to_v6().to_bytes();
        std::copy_n(bytes.begin(), 8, source.begin());
        return source;
    }
    const auto v4 = address.is_v4() ? address.to_v4() : ip::make_address_v4(ip::v4_mapped, address.to_v6());
    const auto bytes = ip::make_address_v6(ip::v4_mapped, v4).to_bytes();
    std::ranges::copy(bytes, source.begin());
    return source;
}

} // namespace cmpihost::http
