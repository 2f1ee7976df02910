// Addresses to listen on, and addresses of clients.
#include "host/http/address.h"

#include <gtest/gtest.h>

namespace cmpihost::http {
namespace {

TEST(Addresses, AreReadWithAndWithoutPort) {
    struct Row {
        const char* text;
        const char* address;
        unsigned port;
    };
    const std::vector<Row> rows{
        {"127.0.0.1", "127.0.0.1", 5988},
        {"0.0.0.0:80", "0.0.0.0", 80},
        {"[::1]:0", "::1", 0},
        {"[::]", "::", 5988},
        {"::1", "::1", 5988},
        {"10.1.2.3:65535", "10.1.2.3", 65535},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const Endpoint endpoint = read_endpoint(row.text, 5988);
        EXPECT_EQ(endpoint.address, row.address);
        EXPECT_EQ(endpoint.port, row.port);
        EXPECT_FALSE(endpoint.optional);
    }
}

TEST(Addresses, ThatAreNoneAreToldInOneLine) {
    const std::string address = "an IPv4 address, or an IPv6 address in brackets, with or without :PORT";
    const std::string port = "a port between 0 and 65535";
    const std::vector<std::pair<std::string, std::string>> rows{
        {"", address},           {"here", address},    {"127.0.0", address}, {"[::1", address},
        {"[::1]x", address},     {":80", address},     {"1.2.3.4:", port},   {"1.2.3.4:x", port},
        {"1.2.3.4:65536", port}, {"1.2.3.4:-1", port}, {"[::1]:80x", port},
    };
    for (const auto& [text, expected] : rows) {
        try {
            read_endpoint(text, 1);
            ADD_FAILURE() << text;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), "--listen " + text + ": expected " + expected);
        }
    }
}

TEST(Addresses, OfThisMachineAlone) {
    for (const char* address : {"127.0.0.1", "127.1.2.3", "::1"})
        EXPECT_TRUE(is_loopback({address, 1, false})) << address;
    for (const char* address : {"0.0.0.0", "::", "10.0.0.1", "128.0.0.1", "::2"})
        EXPECT_FALSE(is_loopback({address, 1, false})) << address;
}

TEST(Addresses, OfClientsCountByNetwork) {
    const auto source = [](const char* text) { return source_of(boost::asio::ip::make_address(text)); };
    EXPECT_EQ(source("10.0.0.1"), source("::ffff:10.0.0.1"));
    EXPECT_NE(source("10.0.0.1"), source("10.0.0.2"));
    EXPECT_EQ(source("2001:db8:1:2::1"), source("2001:db8:1:2:ffff::9"));
    EXPECT_NE(source("2001:db8:1:2::1"), source("2001:db8:1:3::1"));
}

} // namespace
} // namespace cmpihost::http
