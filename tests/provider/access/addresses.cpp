// IP addresses as text.
#include "provider/access/addresses.h"
#include "tests/provider/access/access_test.h"

#include <cstring>

namespace fcip {
namespace {

class Addresses : public AccessTest {
  protected:
    int convert(const ip_addr_value& address, int length = 64) {
        buffer_ = {"untouched"};
        is_ipv6_ = -1;
        return call([&] { return ip_addr_to_str_type(&address, buffer_.data(), length, &is_ipv6_); });
    }

    std::array<char, 64> buffer_{};
    int is_ipv6_ = -1;
};

TEST_F(Addresses, TypeIsTheFamilyWord) {
    for (const std::uint32_t family : {0u, 1u, 2u, 3u, 0xFFFFFFFFu}) {
        const ip_addr_value address{family, {}};
        EXPECT_EQ(get_ip_addr_type(&address), family);
    }
}

TEST_F(Addresses, Ipv4SetsTheFlagTo0) {
    EXPECT_EQ(convert(test::address("192.168.100.101")), 0);
    EXPECT_STREQ(buffer_.data(), "192.168.100.101");
    EXPECT_EQ(is_ipv6_, 0);
    EXPECT_EQ(trace, "");
}

TEST_F(Addresses, Ipv4LooksAtTheFirstFourBytesOnly) {
    ip_addr_value address{};
    std::memset(&address.address, 9, sizeof address.address);
    address.family = ip_family_ipv4;
    EXPECT_EQ(convert(address), 0);
    EXPECT_STREQ(buffer_.data(), "9.9.9.9");
}

TEST_F(Addresses, Ipv6SetsTheFlagTo1) {
    EXPECT_EQ(convert(test::address("2001:db8::2")), 0);
    EXPECT_STREQ(buffer_.data(), "2001:db8::2");
    EXPECT_EQ(is_ipv6_, 1);
}

TEST_F(Addresses, AllZeroValueOfFamily0IsNullAndLeavesTheFlag) {
    EXPECT_EQ(convert({}), 0);
    EXPECT_STREQ(buffer_.data(), "null");
    EXPECT_EQ(is_ipv6_, -1);
}

TEST_F(Addresses, OtherValuesOfFamily0AreNotFormatted) {
    ip_addr_value address{};
    for (const std::size_t offset : {0U, 15U}) {
        address = {};
        address.address[offset] = 1;
        EXPECT_EQ(convert(address), -1);
        EXPECT_STREQ(buffer_.data(), "untouched");
        EXPECT_EQ(is_ipv6_, -1);
    }
}

TEST_F(Addresses, OtherFamiliesFail) {
    for (const std::uint32_t family : {3u, 10u, 0xFFFFFFFFu}) {
        EXPECT_EQ(convert({family, {1, 2, 3, 4}}), -1) << family;
        EXPECT_STREQ(buffer_.data(), "untouched");
        EXPECT_EQ(is_ipv6_, -1);
    }
}

TEST_F(Addresses, BufferTooSmallFailsWithTheFlagSet) {
    EXPECT_EQ(convert(test::address("192.168.100.101"), 15), -1);
    EXPECT_EQ(is_ipv6_, 0);
    EXPECT_EQ(convert(test::address("2001:db8::2"), 11), -1);
    EXPECT_EQ(is_ipv6_, 1);
    EXPECT_EQ(convert(test::address("192.168.100.101"), 16), 0);
}

TEST_F(Addresses, AddressTextIsThePlatformsCutToItsSize) {
    const ip_addr_value address = test::address("2001:db8:1:2:3:4:5:6");
    call([&] {
        EXPECT_STREQ(address_text(address).data(), "2001:db8:1:2:3:4:5:6");
        EXPECT_STREQ(address_text<20>(address).data(), "2001:db8:1:2:3:4:5:");
        EXPECT_EQ(address_text(address).size(), 128u);
    });
}

} // namespace
} // namespace fcip
