// switchdump --anonymous: nothing tells whose switch it is, and what belongs together still does.
#include "switchdump/anonymous.h"

#include "simulator/bytes.h"
#include "tests/switchdump/capture_test.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

#include <arpa/inet.h>

namespace {

using switchsim::the_switch;

class Anonymous : public CaptureTest {
  protected:
    static std::string anonymous() { return captured({"switchdump", "--anonymous", "--scenario"}); }
};

std::string address_text(const ip_addr_value& address) {
    char text[INET6_ADDRSTRLEN] = "";
    if (address.family != ip_family_none)
        inet_ntop(address.family == ip_family_ipv4 ? AF_INET : AF_INET6, address.address, text, sizeof text);
    return text;
}

std::string wwn_text(const std::uint8_t* bytes) {
    switchsim::Wwn wwn;
    std::copy_n(bytes, wwn.size(), wwn.begin());
    return switchsim::plain_text(wwn);
}

template <class Value>
std::size_t distinct(std::vector<Value> values) {
    std::ranges::sort(values);
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values.size();
}

/// The texts that tell whose switch it is, as far as they are written as they are.
std::vector<std::string> telling_texts(const switchsim::Switch& contents) {
    std::vector<std::string> texts = {contents.name, contents.system_name, switchsim::plain_text(contents.wwn)};
    for (const auto& [id, vsan] : contents.vsans)
        texts.insert(texts.end(), {vsan.name, vsan.domain.value_or("")});
    for (const auto& [if_index, port] : contents.ports)
        texts.insert(texts.end(), {port.name, port.kernel_name, port.network_address});
    for (const auto& [key, profile] : contents.profiles)
        texts.push_back(address_text(profile.local_address));
    for (const auto& [key, link] : contents.links)
        texts.insert(texts.end(), {address_text(link.remote_address), wwn_text(link.remote_wwn)});
    for (const auto& [wwn, text] : contents.wwn_texts)
        texts.push_back(text);
    for (std::string& text : texts)
        text.resize(std::min(text.size(), text.find('"')));
    std::erase(texts, "");
    return texts;
}

bool is_in_an_ipv4_range(const std::uint8_t* address) {
    const std::uint32_t number = switchsim::get_big<std::uint32_t>(address, 0);
    const auto network = [number](unsigned bits) { return number >> (32 - bits) << (32 - bits); };
    return network(24) == 0xC0000200 || network(24) == 0xC6336400 || network(24) == 0xCB007100 ||
           network(15) == 0xC6120000 || network(10) == 0x64400000;
}

bool is_in_the_ipv6_range(const std::uint8_t* address) {
    return switchsim::get_big<std::uint32_t>(address, 0) == 0x20010DB8;
}

TEST_F(Anonymous, HoldsNothingThatTellsWhoseSwitchItIs) {
    ASSERT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
    change_every_field();
    const auto texts = telling_texts(the_switch());
    EXPECT_EQ(distinct(texts), texts.size());
    ASSERT_GT(texts.size(), 80U);
    const std::string plain = captured();
    const std::string scenario = anonymous();
    for (const std::string& text : texts) {
        EXPECT_NE(plain.find("\"" + text), std::string::npos) << text;
        EXPECT_EQ(scenario.find("\"" + text), std::string::npos) << text;
    }
    EXPECT_EQ(switchsim::load_text(scenario, "anonymous"), "");
}

TEST_F(Anonymous, KeepsWhatIsEqualEqual) {
    switchsim::generate(2);
    auto& links = the_switch().links;
    auto& profile = the_switch().profiles.begin()->second;
    links.begin()->second.remote_address = profile.local_address;
    std::prev(links.end())->second.remote_address = {};
    the_switch().system_name = the_switch().name;
    ASSERT_EQ(switchsim::load_text(captured({"switchdump", "--scenario", "--anonymous"}), "anonymous"), "");
    const auto& local = the_switch().profiles.begin()->second.local_address;
    EXPECT_EQ(std::memcmp(&local, &the_switch().links.begin()->second.remote_address, sizeof local), 0);
    EXPECT_TRUE(is_in_an_ipv4_range(local.address));
    EXPECT_EQ(the_switch().links.rbegin()->second.remote_address.family, ip_family_none);
    EXPECT_TRUE(the_switch().name.starts_with("name-"));
    EXPECT_EQ(the_switch().ports.begin()->second.name, "fcip1");
}

TEST_F(Anonymous, IsAnotherOneInEachRunUnlessTheSaltIsGiven) {
    ASSERT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
    EXPECT_NE(anonymous(), anonymous());
    const auto salted = [](const char* salt) {
        return captured({"switchdump", "--scenario", "--anonymous", "--salt", salt});
    };
    EXPECT_EQ(salted("one"), salted("one"));
    EXPECT_NE(salted("one"), salted("two"));
}

TEST_F(Anonymous, ReplacementsOfEachKindDependOnTheSalt) {
    const auto texts = [](const char* salt) {
        EXPECT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
        auto contents = the_switch();
        switchdump::make_anonymous(contents, salt);
        const int distance = std::stoi(contents.name.substr(5)) - std::stoi(contents.system_name.substr(5));
        return std::vector<std::string>{contents.name,
                                        std::to_string(distance),
                                        switchsim::plain_text(contents.wwn),
                                        contents.ports.at(0x83010001).network_address,
                                        address_text(contents.profiles.at(1).local_address),
                                        address_text(contents.profiles.at(3).local_address)};
    };
    const auto one = texts("one");
    const auto two = texts("two");
    EXPECT_EQ(one, texts("one"));
    for (std::size_t i = 0; i < one.size(); ++i)
        EXPECT_NE(one[i], two[i]);
}

/// So many tunnels, the first 1,000 over IPv6, each with an address and a WWN of its own.
void add_links(switchsim::Switch& contents, std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i) {
        FcipLinkEntry& link = contents.links[{1, i}];
        link.link_index = i;
        link.remote_address.family = i < 1000 ? ip_family_ipv6 : ip_family_ipv4;
        switchsim::put_big(link.remote_address.address, 0, 0x0A000000 + i);
        switchsim::put_big(link.remote_wwn, 0, 0x50000000 + i);
    }
}

TEST_F(Anonymous, HasAnotherAddressForEachOfManyThousands) {
    constexpr std::uint32_t count = 134000; // more than three networks and one of 15 bits hold
    auto contents = std::make_unique<switchsim::Switch>();
    add_links(*contents, count);
    switchdump::make_anonymous(*contents, "salt");
    std::vector<std::uint64_t> addresses;
    std::vector<std::uint64_t> wwns;
    for (const auto& [key, link] : contents->links) {
        const auto* address = link.remote_address.address;
        const bool is_ipv4 = link.remote_address.family == ip_family_ipv4;
        ASSERT_TRUE((is_ipv4 ? is_in_an_ipv4_range : is_in_the_ipv6_range)(address))
            << address_text(link.remote_address);
        addresses.push_back(is_ipv4 ? switchsim::get_big<std::uint32_t>(address, 0)
                                    : 1ULL << 32 | switchsim::get_big<std::uint32_t>(address, 12));
        const std::uint64_t wwn = switchsim::get_big<std::uint64_t>(link.remote_wwn, 0);
        ASSERT_EQ(wwn & 0xF000FFFFFFFFFF00, 0x200000005E005300) << wwn_text(link.remote_wwn);
        wwns.push_back(wwn);
    }
    EXPECT_EQ(distinct(addresses), count);
    EXPECT_EQ(distinct(wwns), count);
}

TEST_F(Anonymous, HasAnotherMacForEachOfManyThousandPorts) {
    constexpr std::uint32_t count = 70000; // more than two bytes tell apart
    auto contents = std::make_unique<switchsim::Switch>();
    for (std::uint32_t i = 0; i < count; ++i) {
        char mac[18];
        std::snprintf(mac, sizeof mac, "aa:bb:cc:%02x:%02x:%02x", i >> 16 & 0xFF, i >> 8 & 0xFF, i & 0xFF);
        contents->ports[switchsim::ethernet_base + i].network_address = mac;
    }
    switchdump::make_anonymous(*contents, "salt");
    std::vector<std::string> macs;
    for (const auto& [if_index, port] : contents->ports) {
        EXPECT_TRUE(port.network_address.starts_with("00:00:5e:00:53:") ||
                    port.network_address.starts_with("02:00:00:"));
        macs.push_back(port.network_address);
    }
    EXPECT_EQ(distinct(macs), count);
}

} // namespace
