// What is wrong with a scenario, and the line that says so.
#include "tests/simulator/simulator_test.h"

using ScenarioErrors = SimulatorTest;

namespace {

struct Bad {
    const char* name;
    const char* toml;
    const char* message;
};

constexpr const char* word_range = "an integer from 0 to 4294967295";

void expect_errors(const std::vector<Bad>& rows) {
    for (const Bad& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(switchsim::load_text(row.toml, "bad.toml"), std::string("bad.toml:") + row.message);
    }
}

} // namespace

TEST_F(ScenarioErrors, Syntax) {
    expect_errors({
        {"no value", "[switch]\nname =\n", "2:7: TOML: Error while parsing key-value pair: expected value, saw '\\n'"},
        {"key twice", "[switch]\nname = \"a\"\nname = \"b\"\n",
         "3:8: TOML: Error while parsing key-value pair: cannot redefine existing string 'name'"},
    });
}

TEST_F(ScenarioErrors, TableHeaderOverTwoLines) {
    EXPECT_EQ(switchsim::load_text("[\nswitch]\n", "bad.toml").find("bad.toml:1:2: TOML: "), 0U);
}

TEST_F(ScenarioErrors, CharactersBeyondAscii) {
    const std::string expected = " TOML: expected ASCII outside comments and strings of one line";
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"\u0128 = 1", "1:1:"},
        {"[switch]\nname = \"\u00fc\" \u00fc", "2:12:"},
        {"\xEF\xBB\xBF\u0128", "1:1:"},
        {"# \u00fc \"\n\u00fc", "2:1:"},
        {"a = '\\' \u00fc", "1:9:"},
        {"a = \"\\\"#\" \u00fc", "1:11:"},
        {"a = \"\"\"b\nc\"\"\"\"\" \u00fc", "2:8:"},
        {"a = \"\"\"b\\\n\u00fc\"\"\"", "2:1:"},
        {"a = '''\n\u00fc'''", "2:1:"},
        {"a = \"open\n\u00fc", "2:1:"},
    };
    for (const auto& [toml, place] : rows) {
        SCOPED_TRACE(toml);
        EXPECT_EQ(switchsim::load_text(toml, "bad.toml"), std::string("bad.toml:") + place + expected);
    }
}

TEST_F(ScenarioErrors, CharactersBeyondAsciiInCommentsAndStringsAreNone) {
    EXPECT_EQ(switchsim::load_text("\xEF\xBB\xBF# \u00fc\n[switch] # \u00fc\n"
                                   "name = \"Z\u00fcrich \\\"1\\\" \u0128\" # \u0128\n"
                                   "system_name = 'Z\u00fcrich'",
                                   "good.toml"),
              "");
    EXPECT_EQ(switchsim::the_switch().name, "Z\u00fcrich \"1\" \u0128");
    EXPECT_EQ(switchsim::the_switch().system_name, "Z\u00fcrich");
}

TEST_F(ScenarioErrors, SwitchTable) {
    expect_errors({
        {"missing", "", "1:1: switch: expected a table [switch], but the key is missing"},
        {"not a table", "switch = 1", "1:10: switch: expected a table"},
        {"no name", "[switch]\nwwn = \"20:00:00:00:5e:11:22:33\"",
         "1:1: switch.name: expected a text, but the key is missing"},
        {"name no text", "[switch]\nname = 1", "2:8: switch.name: expected a text"},
        {"NUL in the name", "[switch]\nname = \"a\\u0000b\"", "2:8: switch.name: expected a text"},
        {"has_name no boolean", "[switch]\nname = \"a\"\nhas_name = 1",
         "3:12: switch.has_name: expected true or false"},
        {"short WWN", "[switch]\nname = \"a\"\nwwn = \"20:00\"",
         "3:7: switch.wwn: expected a WWN like \"20:00:00:00:5e:11:22:33\""},
        {"WWN with other signs", "[switch]\nname = \"a\"\nwwn = \"20-00-00-00-5e-11-22-33\"",
         "3:7: switch.wwn: expected a WWN like \"20:00:00:00:5e:11:22:33\""},
        {"WWN with a letter beyond f", "[switch]\nname = \"a\"\nwwn = \"20:00:00:0g:5e:11:22:33\"",
         "3:7: switch.wwn: expected a WWN like \"20:00:00:00:5e:11:22:33\""},
        {"WWN no text", "[switch]\nname = \"a\"\nwwn = 5",
         "3:7: switch.wwn: expected a WWN like \"20:00:00:00:5e:11:22:33\""},
        {"slots no array", "[switch]\nname = \"a\"\nslots = 1",
         "3:9: switch.slots: expected an array of different integers from 0 to 255"},
        {"slot too large", "[switch]\nname = \"a\"\nslots = [256]",
         "3:9: switch.slots: expected an array of different integers from 0 to 255"},
        {"slot below 0", "[switch]\nname = \"a\"\nslots = [1, -1]",
         "3:9: switch.slots: expected an array of different integers from 0 to 255"},
        {"slot no integer", "[switch]\nname = \"a\"\nslots = [\"1\"]",
         "3:9: switch.slots: expected an array of different integers from 0 to 255"},
        {"slot twice", "[switch]\nname = \"a\"\nslots = [1, 1]",
         "3:9: switch.slots: expected an array of different integers from 0 to 255"},
        {"unknown key", "[switch]\nname = \"a\"\ncolour = \"grey\"",
         "3:1: switch.colour: expected one of the keys name, system_name, has_name, wwn, slots"},
        {"unknown table", "[switch]\nname = \"a\"\n[router]",
         "3:2: router: expected one of the keys switch, ip, generate, vsan, ethernet, fibre_channel, port_channel, "
         "profile, tunnel, wwn_text, clock, event"},
    });
}

TEST_F(ScenarioErrors, AreOneLineWhateverTheKey) {
    expect_errors({{"line end in a key", "[switch]\nname = \"a\"\n\"a\\nb\" = 1\n",
                    "3:1: switch.a?b: expected one of the keys name, system_name, has_name, wwn, slots"}});
}

TEST_F(ScenarioErrors, IpTable) {
    expect_errors({
        {"forwarding", "[switch]\nname = \"a\"\n[ip]\nforwarding = \"yes\"",
         "4:14: ip.forwarding: expected true, false or an integer from 0 to 4294967295"},
        {"negative flag", "[switch]\nname = \"a\"\n[ip]\nforwarding = -1",
         "4:14: ip.forwarding: expected true, false or an integer from 0 to 4294967295"},
        {"flag beyond 32 bits", "[switch]\nname = \"a\"\n[ip]\nforwarding = 4294967296",
         "4:14: ip.forwarding: expected true, false or an integer from 0 to 4294967295"},
        {"time to live", "[switch]\nname = \"a\"\n[ip]\ndefault_ttl = 256",
         "4:15: ip.default_ttl: expected an integer from 0 to 255"},
    });
}

TEST_F(ScenarioErrors, Vsans) {
    expect_errors({
        {"no array", "[switch]\nname = \"a\"\n[vsan]\nid = 1", "3:1: vsan: expected an array of tables [[vsan]]"},
        {"no array of tables", "vsan = [1]\n[switch]\nname = \"a\"", "1:8: vsan: expected an array of tables [[vsan]]"},
        {"id 0", "[switch]\nname = \"a\"\n[[vsan]]\nid = 0\ndomain = \"d\"",
         "4:6: vsan[0].id: expected an integer from 1 to 4094"},
        {"no domain", "[switch]\nname = \"a\"\n[[vsan]]\nid = 1",
         "3:1: vsan[0].domain: expected a text, or false for a VSAN without a domain entry, but the key is missing"},
        {"domain true", "[switch]\nname = \"a\"\n[[vsan]]\nid = 1\ndomain = true",
         "5:10: vsan[0].domain: expected a text of at most 255 bytes"},
        {"id twice", "[switch]\nname = \"a\"\n[[vsan]]\nid = 1\ndomain = \"d\"\n[[vsan]]\nid = 1\ndomain = \"d\"",
         "7:6: vsan[1].id: expected an id that no other VSAN has"},
    });
}

namespace {

const std::string head = "[switch]\nname = \"a\"\n[[vsan]]\nid = 1\ndomain = \"d\"\n"; // lines 1 to 5

void expect_error_after_head(const std::string& lines, const std::string& message) {
    SCOPED_TRACE(lines);
    EXPECT_EQ(switchsim::load_text(head + lines, "bad.toml"), "bad.toml:" + message);
}

} // namespace

TEST_F(ScenarioErrors, Ports) {
    const std::string port = "[[ethernet]]\nslot = 1\nport = 1\n"; // lines 6 to 8
    expect_error_after_head("[[ethernet]]\nport = 1\n",
                            "6:1: ethernet[0].slot: expected an integer from 0 to 255, but the key is missing");
    expect_error_after_head("[[ethernet]]\nslot = true\nport = 1\n",
                            "7:8: ethernet[0].slot: expected an integer from 0 to 255");
    expect_error_after_head(
        "[[ethernet]]\nslot = 2\nport = 1\n",
        "7:8: ethernet[0].slot: 2 is not one of [switch] slots, which are [1] (the default); expected one of them, or "
        "card_missing = true");
    expect_error_after_head("[[fibre_channel]]\nslot = false\nport = 1\n",
                            "6:1: fibre_channel[0].if_index: expected an interface index, for it cannot be derived "
                            "without slot and port");
    expect_error_after_head("[[fibre_channel]]\nslot = 1\nport = false\n",
                            "6:1: fibre_channel[0].if_index: expected an interface index, for it cannot be derived "
                            "without slot and port");
    expect_error_after_head(port + "if_index = 0x82FFFFFF\n",
                            "9:12: ethernet[0].if_index: expected an integer from 2197815296 to 4294967295");
    expect_error_after_head("[[port_channel]]\nslot = 1\nport = 1\nif_index = 0\n",
                            "9:12: port_channel[0].if_index: expected an integer from 1 to 4294967295");
    expect_error_after_head(port + port,
                            "11:8: ethernet[1].port: 2197880833 (the default of if_index) is another interface's");
    expect_error_after_head(port + "[[fibre_channel]]\nslot = 1\nport = 1\nif_index = 0x83010001\n",
                            "12:12: fibre_channel[0].if_index: expected an interface index that no other interface "
                            "has, not 2197880833");
    expect_error_after_head(port + "mac = \"02:00\"\n",
                            "9:7: ethernet[0].mac: expected a MAC address like \"02:00:00:aa:bb:cc\"");
    expect_error_after_head(port + "subnet_mask = \"255.255\"\n",
                            "9:15: ethernet[0].subnet_mask: expected four numbers like \"255.255.255.0\"");
    expect_error_after_head(port + "prefix_length = 129\n",
                            "9:17: ethernet[0].prefix_length: expected an integer from 0 to 128");
    expect_error_after_head(port + "counter_mtu = true\n",
                            "9:15: ethernet[0].counter_mtu: expected an integer from 0 to 4294967295");
    expect_error_after_head(port + "vsan = 2\n",
                            "9:8: ethernet[0].vsan: expected the id of a [[vsan]], or vsan_missing = true");
    expect_error_after_head(
        "[[fibre_channel]]\nslot = 1\nport = 1\nmac = \"02:00:00:aa:bb:cc\"\n",
        "9:1: fibre_channel[0].mac: expected one of the keys slot, port, card_missing, if_index, "
        "name, kernel_name, type_known, fc_interface, mtu, vsan, vsan_missing, config_word, counters");
}

TEST_F(ScenarioErrors, Counters) {
    const std::string port = "[[ethernet]]\nslot = 1\nport = 1\n"; // lines 6 to 8
    expect_error_after_head(port + "counters = 1\n", "9:12: ethernet[0].counters: expected a table");
    expect_error_after_head(port + "counters = {multicast_received = 4294967296}\n",
                            "9:34: ethernet[0].counters.multicast_received: expected an integer from 0 to 4294967295");
    expect_error_after_head(
        port + "counters = {bytes_received = \"18446744073709551616\"}\n",
        "9:30: ethernet[0].counters.bytes_received: expected an integer from 0 to 18446744073709551615");
    expect_error_after_head(
        port + "counters = {bytes_received = \"1x\"}\n",
        "9:30: ethernet[0].counters.bytes_received: expected an integer from 0 to 18446744073709551615");
    expect_error_after_head(
        port + "counters = {bytes_received = -1}\n",
        "9:30: ethernet[0].counters.bytes_received: expected an integer from 0 to 18446744073709551615");
    expect_error_after_head(port + "counters = {bytes = 1}\n",
                            "9:13: ethernet[0].counters.bytes: expected one of the keys multicast_received, "
                            "broadcast_received, multicast_transmitted, broadcast_transmitted, bytes_received, "
                            "unicast_received, bytes_transmitted, unicast_transmitted");
    expect_error_after_head(port + "tcp_statistics = {continuations = 1001}\n",
                            "9:35: ethernet[0].tcp_statistics.continuations: expected an integer from 0 to 1000");
}

TEST_F(ScenarioErrors, Profiles) {
    expect_error_after_head("[[profile]]\naddress = \"10.0.0.1\"\n",
                            "6:1: profile[0].id: expected an integer from 1 to 4294967295, but the key is missing");
    expect_error_after_head("[[profile]]\nid = 0\naddress = \"10.0.0.1\"\n",
                            "7:6: profile[0].id: expected an integer from 1 to 4294967295");
    expect_error_after_head("[[profile]]\nid = 1\n",
                            "6:1: profile[0].address: expected an IPv4 or IPv6 address, but the key is missing");
    for (const char* address : {"10.0.0", "10.0.0.256", "2001:db8", "host", ""}) {
        expect_error_after_head("[[profile]]\nid = 1\naddress = \"" + std::string(address) + "\"\n",
                                "8:11: profile[0].address: expected an IPv4 or IPv6 address or \"none\"");
    }
    const std::string profile = "[[profile]]\nid = 1\naddress = \"10.0.0.1\"\n"; // lines 6 to 8
    expect_error_after_head(profile + profile, "10:6: profile[1].id: expected an id that no other profile has");
    expect_error_after_head(profile + "port = 4294967296\n",
                            "9:8: profile[0].port: expected " + std::string(word_range));
    expect_error_after_head(profile + "keep_alive = 1.5\n",
                            "9:14: profile[0].keep_alive: expected " + std::string(word_range));
    expect_error_after_head(profile + "sack = \"on\"\n",
                            "9:8: profile[0].sack: expected true, false or " + std::string(word_range));
    expect_error_after_head(profile + "address_interface = \"11\"\n",
                            "9:21: profile[0].address_interface: expected slot and port like \"1/2\"");
    expect_error_after_head(profile + "address_interface = \"1/300\"\n",
                            "9:21: profile[0].address_interface: expected slot and port like \"1/2\"");
    expect_error_after_head(profile + "address_interface = \"1/2\"\n",
                            "9:21: profile[0].address_interface: expected slot and port of an [[ethernet]] port; for "
                            "any other index use address_if_index");
}

TEST_F(ScenarioErrors, Tunnels) {
    const std::string profile = "[[profile]]\nid = 1\naddress = \"10.0.0.1\"\n";                      // lines 6 to 8
    const std::string tunnel = "[[tunnel]]\nprofile = 1\nindex = 0\nremote_address = \"10.0.0.2\"\n"; // 9 to 12
    expect_error_after_head("[[tunnel]]\nprofile = 0\nindex = 0\nremote_address = \"none\"\n",
                            "7:11: tunnel[0].profile: expected an integer from 1 to 4294967295");
    expect_error_after_head("[[tunnel]]\nprofile = 2\nindex = 0\nremote_address = \"none\"\n",
                            "7:11: tunnel[0].profile: expected the id of a [[profile]], or profile_missing = true");
    expect_error_after_head(profile + "[[tunnel]]\nprofile = 1\nremote_address = \"none\"\n",
                            "9:1: tunnel[0].index: expected an integer from 0 to 4294967295, but the key is missing");
    expect_error_after_head(profile + "[[tunnel]]\nprofile = 1\nindex = 0\n",
                            "9:1: tunnel[0].remote_address: expected an IPv4 or IPv6 address, but the key is missing");
    expect_error_after_head(profile + tunnel + tunnel,
                            "15:9: tunnel[1].index: expected an index that no other tunnel of the profile has");
    expect_error_after_head(profile + "[[profile]]\nid = 2\naddress = \"none\"\n" + tunnel +
                                "[[tunnel]]\nprofile = 2\nindex = 0\nremote_address = \"10.0.0.3\"\n",
                            "18:9: tunnel[1].index: 167772160 (the default of if_index) is another interface's");
    expect_error_after_head(profile + tunnel + "vsan = 2\n",
                            "13:8: tunnel[0].vsan: expected the id of a [[vsan]], or vsan_missing = true");
    expect_error_after_head(profile + tunnel + "ethernet = \"1/1\"\n",
                            "13:12: tunnel[0].ethernet: expected slot and port of an [[ethernet]] port; for any other "
                            "index use ethernet_if_index");
    expect_error_after_head(profile + tunnel + "[[ethernet]]\nslot = 1\nport = 1\n[tunnel.connection]\nwindow = 1\n",
                            "17:1: tunnel[0].connection.window: expected one of the keys purpose, "
                            "receiver_window_size, maximum_segment_size, timeout");
    expect_error_after_head(profile + tunnel + "ethernet = \"1/1\"\nethernet_if_index = 5\n",
                            "13:12: tunnel[0].ethernet: expected either this key or ethernet_if_index");
    expect_error_after_head(profile + tunnel + "connection = 1\n", "13:14: tunnel[0].connection: expected a table");
    expect_error_after_head(profile + tunnel + "errors = {lost = 1}\n",
                            "13:11: tunnel[0].errors.lost: expected one of the keys lost_synchronisation, "
                            "special_frames_not_received, special_frame_responses_not_received, "
                            "special_frame_response_mismatches, special_frame_invalid_nonces, "
                            "duplicate_special_frames, special_frame_invalid_wwns, bb2_keep_alive_timeouts, "
                            "timestamp_expiries");
}

// ---------------------------------------------------------------------------------------------- all of them

namespace {

/// The errors of a scenario, without the file's name and each but for its place.
std::vector<std::string> all_errors(const std::string& toml) {
    std::vector<std::string> lines = switchsim::scenario_errors(toml, "bad.toml");
    for (std::string& line : lines) {
        EXPECT_TRUE(line.starts_with("bad.toml:")) << line;
        line.erase(0, std::string("bad.toml:").size());
    }
    return lines;
}

using Lines = std::vector<std::string>;

} // namespace

TEST_F(ScenarioErrors, AllOfAFileInOrderOfPlace) {
    EXPECT_EQ(all_errors("[[tunnel]]\nprofile = 0\nindex = 0\nremote_address = 1\n"
                         "[switch]\nwwn = 1\nslots = [1]\n"
                         "[[vsan]]\nid = 1\ndomain = \"d\"\n[[vsan]]\nid = 1\ndomain = 7\n"),
              (Lines{"2:11: tunnel[0].profile: expected an integer from 1 to 4294967295",
                     "4:18: tunnel[0].remote_address: expected an IPv4 or IPv6 address or \"none\"",
                     "5:1: switch.name: expected a text, but the key is missing",
                     "6:7: switch.wwn: expected a WWN like \"20:00:00:00:5e:11:22:33\"",
                     "12:6: vsan[1].id: expected an id that no other VSAN has",
                     "13:10: vsan[1].domain: expected a text of at most 255 bytes"}));
}

TEST_F(ScenarioErrors, FirstIsGivenWithTheNumberOfOthers) {
    EXPECT_EQ(switchsim::load_text("[switch]\nname = 1\nwwn = 1\nslots = 1\n", "bad.toml"),
              "bad.toml:2:8: switch.name: expected a text (and 2 more)");
}

TEST_F(ScenarioErrors, MisspeltKeyComesBeforeTheMissingOne) {
    EXPECT_EQ(all_errors(head + "[[profile]]\nid = 1\nadress = \"10.0.0.1\"\n"),
              (Lines{"8:1: profile[0].adress: unknown key adress; did you mean address?",
                     "8:1: profile[0].address: expected an IPv4 or IPv6 address, but the key is missing"}));
    EXPECT_EQ(all_errors(head + "[[ethernet]]\nslot = 1\nport = 1\nvsna = 5\ncolour = 1\n").size(), 2U);
}

TEST_F(ScenarioErrors, KeyThatIsThereAlreadyWasNotMeant) {
    EXPECT_EQ(all_errors("[switch]\nname = \"a\"\nnames = \"b\"\n"),
              Lines{"3:1: switch.names: expected one of the keys name, system_name, has_name, wwn, slots"});
}

TEST_F(ScenarioErrors, DefaultIsNamedWhereItIsWrong) {
    EXPECT_EQ(all_errors("[switch]\nname = \"a\"\n[[ethernet]]\nslot = 2\nport = 1\n"),
              (Lines{"3:1: ethernet[0].vsan: 1 (the default) is not the id of a [[vsan]]; expected one, or "
                     "vsan_missing = true",
                     "4:8: ethernet[0].slot: 2 is not one of [switch] slots, which are [1] (the default); expected one "
                     "of them, or "
                     "card_missing = true"}));
}

TEST_F(ScenarioErrors, ReferencesToWhatIsWrongAreNoFurtherErrors) {
    const std::string lines = "[[ethernet]]\nslot = 1\nport = 1\nvsan = 9\n"
                              "[[profile]]\nid = 7\naddress = \"none\"\naddress_interface = \"1/1\"\n"
                              "[[tunnel]]\nprofile = 7\nindex = 0\nremote_address = \"none\"\nethernet = \"1/1\"\n"
                              "vsan = 9\n";
    const std::string name = "[switch]\nname = \"a\"\n";
    const std::string vsan = "[[vsan]]\ndomain = \"d\"\nid = 9\n";
    const auto with = [&](std::string text, const std::string& part, const std::string& instead) {
        return all_errors(text.replace(text.find(part), part.size(), instead)).size();
    };
    EXPECT_EQ(all_errors(name + vsan + lines), Lines{});
    EXPECT_EQ(with(name + vsan + lines, "id = 9", "id = 0"), 1U);
    EXPECT_EQ(with(name + vsan + lines, "[[vsan]]", "[[vsam]]"), 1U);
    EXPECT_EQ(with(name + vsan + lines, "id = 7", "id = -7"), 1U);
    EXPECT_EQ(with(name + vsan + lines, "port = 1", "port = 300"), 1U);
    EXPECT_EQ(with(name + vsan + lines, "slot = 1", "if_index = 1\nslot = 1"), 1U);
    EXPECT_EQ(with(name + vsan + lines, "index = 0", "index = -1"), 1U);
    EXPECT_EQ(with(name + "slots = [300]\n" + vsan + lines, "slot = 1", "slot = 3"), 3U);
    EXPECT_EQ(with(name + "slot = [3]\n" + vsan + lines, "[[ethernet]]\nslot = 1", "[[ethernet]]\nslot = 3"), 3U);
}

TEST_F(ScenarioErrors, GeneratorTable) {
    const std::string name = "[switch]\nname = \"a\"\n";
    const auto load = [&](const std::string& lines) { return switchsim::load_text(name + lines, "bad.toml"); };
    EXPECT_EQ(load("[generate]\n"),
              "bad.toml:3:1: generate.tunnels: expected an integer from 0 to 1000000, but the key is missing");
    EXPECT_EQ(load("[generate]\ntunnels = 1000001\n"),
              "bad.toml:4:11: generate.tunnels: expected an integer from 0 to 1000000");
    const std::string one = "[generate]\ntunnels = 1\n";
    for (const auto& [key, largest] : {std::pair{"profiles", 65535}, {"ethernet_ports", 64}, {"vsans", 4094}}) {
        const std::string expected = std::string(key) + ": expected an integer from 1 to " + std::to_string(largest);
        for (const int wrong : {0, largest + 1})
            EXPECT_TRUE(load(one + key + " = " + std::to_string(wrong) + "\n").ends_with(": generate." + expected));
        for (const int right : {1, largest})
            EXPECT_EQ(load(one + key + " = " + std::to_string(right) + "\n"), "");
    }
    EXPECT_EQ(load(one + "vsans = 0\n"), "bad.toml:5:9: generate.vsans: expected an integer from 1 to 4094");
    for (const std::string other :
         {"vsan", "ethernet", "fibre_channel", "port_channel", "profile", "tunnel", "wwn_text"}) {
        const std::string header = "[[" + other + "]]\n";
        EXPECT_EQ(load(one + header),
                  "bad.toml:5:1: " + other +
                      ": expected nothing but [switch], [ip], [clock] and [[event]] beside [generate]");
    }
}
