// Scenario files as a whole: those that are shipped, the built-in one, what is wrong with files.
#include "tests/simulator/scenario_lines.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

using ScenarioFiles = SimulatorTest;
using switchsim::the_switch;

namespace {

std::string read_text(const std::string& file) {
    std::ifstream stream(file);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

} // namespace

TEST_F(ScenarioFiles, ShippedOnesLoad) {
    EXPECT_EQ(switchsim::load(scenario("single-tunnel.toml")), "");
    EXPECT_EQ(the_switch().links.size(), 1U);
    EXPECT_EQ(switchsim::load(scenario("two-site.toml")), "");
    EXPECT_EQ(the_switch().links.size(), 10U);
    EXPECT_EQ(switchsim::load(scenario("ten-thousand.toml")), "");
    EXPECT_EQ(the_switch().links.size(), 10000U);
}

TEST_F(ScenarioFiles, BuiltInOneIsTheTwoSiteSwitch) {
    EXPECT_EQ(switchsim::built_in_scenario(), read_text(scenario("two-site.toml")));
}

TEST_F(ScenarioFiles, MissingFileIsNamedWithTheReason) {
    EXPECT_EQ(switchsim::load("/nowhere/x.toml"), "/nowhere/x.toml: cannot read: No such file or directory");
    EXPECT_EQ(switchsim::load("/"), "/: cannot read: Is a directory");
}

TEST_F(ScenarioFiles, EndlessFileIsRefused) {
    EXPECT_EQ(switchsim::load("/dev/zero"), "/dev/zero: cannot read: larger than 64 MB");
}

TEST_F(ScenarioFiles, LoaderEntryCutsItsMessage) {
    char message[13];
    EXPECT_EQ(switchsim_load_scenario("/nowhere/x.toml", message, sizeof message), -1);
    EXPECT_STREQ(message, "/nowhere/x.t");
    EXPECT_EQ(switchsim_load_scenario("/nowhere/x.toml", nullptr, 0), -1);
    EXPECT_EQ(switchsim_load_scenario(nullptr, message, sizeof message), -1);
    EXPECT_STREQ(message, "no scenario ");
}

TEST_F(ScenarioFiles, ErrorLeavesTheOldSwitchAlone) {
    EXPECT_NE(load_lines("[[profile]]\nid = 5\naddress = \"10.0.0.9\"\n[[tunnel]]\n"), "");
    EXPECT_EQ(the_switch().name, "edge-sw1");
    EXPECT_EQ(the_switch().profiles.size(), 1U);
    EXPECT_TRUE(the_switch().profiles.contains(1));
}

TEST_F(ScenarioFiles, LoadingKeepsFaultsAndCounts) {
    getCSName();
    switchsim::inject("getCSName", switchsim::Fault::fail);
    load_ok("");
    EXPECT_EQ(getCSName(), nullptr);
    EXPECT_EQ(switchsim::calls("getCSName"), 2U);
}

TEST_F(ScenarioFiles, TwoSiteShowsWhatItPromises) {
    ASSERT_EQ(switchsim::load(scenario("two-site.toml")), "");
    std::set<std::uint32_t> families;
    std::set<std::uint32_t> states;
    for (const auto& [key, link] : the_switch().links) {
        families.insert(link.remote_address.family);
        states.insert(link.status);
    }
    EXPECT_EQ(families, (std::set<std::uint32_t>{ip_family_ipv4, ip_family_ipv6}));
    EXPECT_EQ(states, (std::set<std::uint32_t>{1, 2, 3}));
    EXPECT_GE(the_switch().profiles.size(), 4U);
    EXPECT_GE(the_switch().vsans.size(), 4U);
    EXPECT_EQ(the_switch().slots.size(), 2U);
    const auto undomained = std::find_if(the_switch().links.begin(), the_switch().links.end(), [](const auto& row) {
        const auto& port = the_switch().ports.at(row.second.link_if_index);
        return !the_switch().vsans.at(port.vsan_id).domain;
    });
    EXPECT_NE(undomained, the_switch().links.end());
    auto port = the_switch().ports.upper_bound(0x82FFFFFF);
    unsigned run = 0;
    for (; port->second.kind == switchsim::kind_ethernet; ++port)
        ++run;
    EXPECT_EQ(run, 4U);
    EXPECT_EQ(the_switch().ports.rbegin()->second.kind, switchsim::kind_ethernet);
}

// ---------------------------------------------------------------------------------------------- documentation

namespace {

/// The keys that a table may have, as the error about an unknown one lists them.
std::vector<std::string> keys_of(const std::string& table_with_unknown_key) {
    const std::string prefix = "expected one of the keys ";
    const std::string error = switchsim::load_text(table_with_unknown_key, "keys.toml");
    const std::size_t begin = error.find(prefix);
    EXPECT_NE(begin, std::string::npos) << error;
    std::vector<std::string> keys;
    if (begin == std::string::npos)
        return keys;
    std::istringstream list(error.substr(begin + prefix.size()));
    for (std::string key; list >> key;)
        keys.push_back(key.back() == ',' ? key.substr(0, key.size() - 1) : key);
    return keys;
}

/// The part of the document from one heading to the next.
std::string section(const std::string& document, const std::string& heading) {
    const std::size_t begin = document.find("\n## " + heading);
    EXPECT_NE(begin, std::string::npos) << heading;
    return begin == std::string::npos ? "" : document.substr(begin, document.find("\n## ", begin + 1) - begin);
}

} // namespace

TEST_F(ScenarioFiles, EveryKeyIsDocumented) {
    const std::string document = read_text(FCIP_SOURCE_DIR "/docs/scenarios.md");
    const std::string start = "[switch]\nname = \"a\"\n";
    const std::string port = start + "[[vsan]]\nid = 1\ndomain = \"d\"\n[[ethernet]]\nslot = 1\nport = 1\n";
    const std::string tunnel = start + "[[tunnel]]\nprofile = 1\nprofile_missing = true\nindex = 0\n"
                                       "remote_address = \"none\"\nvsan_missing = true\n";
    const std::pair<std::string, std::string> tables[] = {
        {"`[switch]`", start + "x = 1\n"},
        {"`[ip]`", start + "[ip]\nx = 1\n"},
        {"`[[vsan]]`", start + "[[vsan]]\nid = 1\ndomain = \"d\"\nx = 1\n"},
        {"`[[ethernet]]`", port + "x = 1\n"},
        {"`[[ethernet]]`", port + "[ethernet.counters]\nx = 1\n"},
        {"`[[ethernet]]`", port + "[ethernet.mac_statistics]\nx = 1\n"},
        {"`[[ethernet]]`", port + "[ethernet.ip_statistics]\nx = 1\n"},
        {"`[[ethernet]]`", port + "[ethernet.tcp_statistics]\nx = 1\n"},
        {"`[[profile]]`", start + "[[profile]]\nid = 1\naddress = \"none\"\nx = 1\n"},
        {"`[[tunnel]]`", tunnel + "x = 1\n"},
        {"`[[tunnel]]`", tunnel + "[tunnel.connection]\nx = 1\n"},
        {"`[[tunnel]]`", tunnel + "[tunnel.errors]\nx = 1\n"},
        {"`[clock]`", start + "[clock]\nx = 1\n"},
        {"`[[event]]`", start + "[[event]]\nat = 1\ndo = \"remove tunnel 1\"\nx = 1\n"},
        {"`[generate]`", start + "[generate]\ntunnels = 0\nx = 1\n"},
    };
    for (const auto& [heading, toml] : tables) {
        const std::string text = section(document, heading);
        for (const std::string& key : keys_of(toml)) {
            const bool in_a_range = key.starts_with("receive_errors_");
            EXPECT_NE(text.find("`" + (in_a_range ? "receive_errors_1` to `receive_errors_5" : key) + "`"),
                      std::string::npos)
                << key << " under " << heading;
        }
    }
}

TEST_F(ScenarioFiles, DocumentedExampleLoads) {
    const std::string document = read_text(FCIP_SOURCE_DIR "/docs/scenarios.md");
    const std::size_t begin = document.find("```toml\n") + 8;
    EXPECT_EQ(switchsim::load_text(document.substr(begin, document.find("```", begin) - begin), "example"), "");
    EXPECT_EQ(the_switch().links.size(), 1U);
}
