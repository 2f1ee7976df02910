// Commands to a switch that lives.
#include "tests/simulator/live_switch.h"

#include <chrono>
#include <thread>

TEST_F(LiveSwitch, SetTakesEveryKindOfRow) {
    load(first_counters);
    expect_done({"set", "tunnel", "1/1", "errors", "{timestamp_expiries = 5}"});
    expect_done({"set", "tunnel", "1", "errors.timestamp_expiries", "6"});
    expect_done({"set", "profile", "1", "port", "7"});
    expect_done({"set", "ethernet", "1/1", "name", "a port"});
    expect_done({"set", "fibre_channel", "1/9", "mtu", "9"});
    expect_done({"set", "vsan", "1", "domain", "false"});
    expect_done({"set", "switch", "name", "other"});
    expect_done({"set", "ip", "default_ttl", "9"});
    EXPECT_EQ(error_counter(72), 6U);
    EXPECT_EQ(the_switch().profiles.at(1).listen_port, 7U);
    EXPECT_EQ(port().name, "a port");
    EXPECT_EQ(the_switch().ports.at(0x01010009).mtu, 9U);
    EXPECT_FALSE(the_switch().vsans.at(1).domain);
    EXPECT_EQ(the_switch().name, "other");
    EXPECT_EQ(the_switch().ip_configuration->default_ttl, 9);
    EXPECT_EQ(the_switch().links.size(), 1U);
    expect_done({"set", "ethernet", "1/1", "name", "default"});
    EXPECT_EQ(port().name, "GigabitEthernet1/1");
}

TEST_F(LiveSwitch, SetLeavesEverythingElseAsItIs) {
    ASSERT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
    const std::string before = switchsim::command({"save"}).text;
    std::string last;
    for (const auto& [key, link] : the_switch().links)
        last = std::to_string(key.first) + "/" + std::to_string(key.second + 1);
    expect_done({"set", "tunnel", last, "cost", "77"});
    EXPECT_FALSE(switchsim::command({"save"}).text == before);
    expect_done({"set", "tunnel", last, "cost", "4000"});
    EXPECT_TRUE(switchsim::command({"save"}).text == before);
}

TEST_F(LiveSwitch, BadCommandsChangeNothing) {
    load("");
    EXPECT_EQ(refused({}), "expected show, set, add, remove, fault, delay, clear, step or save");
    EXPECT_EQ(refused({"set", "tunnel", "2", "cost", "1"}), "no tunnel is called 2");
    EXPECT_EQ(refused({"set", "tunnel", "1", "cost"}), "set: expected a key and a value");
    EXPECT_NE(refused({"set", "tunnel", "1", "cots", "1"}).find("unknown key cots; did you mean cost?"),
              std::string::npos);
    EXPECT_NE(refused({"set", "tunnel", "1", "cost", "x"}).find("cost: expected an integer"), std::string::npos);
    EXPECT_NE(refused({"set", "router", "1", "cost", "1"}).find("\"router\" is none of"), std::string::npos);
    EXPECT_NE(refused({"add", "[[tunnel]]\nprofile = 1\nindex = 0\nremote_address = \"none\"\n"})
                  .find("an index that no other tunnel of the profile has"),
              std::string::npos);
    EXPECT_NE(refused({"add", "[[profile]]\nid = 5\naddress = \"none\"\n[[profile]]\nid = 1\naddress = \"none\"\n"})
                  .find("an id that no other profile has"),
              std::string::npos);
    EXPECT_NE(refused({"add", "[switch]\nname = \"b\"\n"}).find("expected one of the keys vsan"), std::string::npos);
    EXPECT_EQ(refused({"fault", "nothing"}), "no platform function is called \"nothing\"");
}

TEST_F(LiveSwitch, FaultsHaveTheirCallAndShape) {
    load("");
    expect_done({"fault", "getCSName", "2", "fail"});
    EXPECT_NE(getCSName(), nullptr);
    EXPECT_EQ(getCSName(), nullptr);
    EXPECT_NE(getCSName(), nullptr);
    expect_done({"fault", "getCSName"});
    EXPECT_EQ(getCSName(), nullptr);
    EXPECT_EQ(getCSName(), nullptr);
    for (const char* shape : {"fail_leaving_record", "succeed_without_record"}) {
        expect_done({"clear"});
        expect_done({"fault", "fcip_get_entity_entry", "1", shape});
        FcipEntityEntry* row = nullptr;
        const int result = fcip_get_entity_entry(mts_q, platform_exact, 1, &row, 5);
        const Owned<FcipEntityEntry> owned(row);
        EXPECT_EQ(result, std::string(shape) == "succeed_without_record" ? 0 : -1);
        EXPECT_EQ(row == nullptr, std::string(shape) == "succeed_without_record");
    }
}

TEST_F(LiveSwitch, ReplyFaultsHaveTheirShape) {
    load("");
    const auto asked = [](const char* shape) {
        expect_done({"clear"});
        expect_done({"fault", "fcip_send_recv_with_mts_q", "1", shape});
        const mts_addr destination{0xFE000000, 60};
        const std::uint32_t id = 1;
        void* reply = nullptr;
        std::uint32_t length = 77;
        char buffer[256];
        const int result =
            fcip_send_recv_with_mts_q(8946, &destination, &id, sizeof id, mts_q, &reply, &length, buffer);
        const Owned<void> owned(reply);
        return std::pair(result, length);
    };
    EXPECT_EQ(asked("short_reply"), std::pair(0, 0U));
    EXPECT_EQ(asked("no_reply").first, -1);
}

TEST_F(LiveSwitch, ShowTellsFaultsFully) {
    load("");
    expect_done({"fault", "mts_recv", "3", "no_reply"});
    expect_done({"fault", "mts_recv", "3", "wrong_status"});
    expect_done({"fault", "mts_send", "every", "short_reply"});
    const std::string shown = switchsim::command({"show"}).text;
    for (const char* line :
         {"\nfault mts_recv 3 no_reply\n", "\nfault mts_recv 3 wrong_status\n", "\nfault mts_send every short_reply\n"})
        EXPECT_NE(shown.find(line), std::string::npos) << shown;
}

TEST_F(LiveSwitch, FaultsThatCanNeverHappenAreRefused) {
    load("");
    EXPECT_EQ(refused({"fault", "mutex_lock"}), "fault: fail can never happen to mutex_lock");
    EXPECT_EQ(refused({"fault", "getCSName", "every", "short_reply"}),
              "fault: short_reply can never happen to getCSName");
    EXPECT_EQ(refused({"fault", "cmi_req_resp", "1", "wrong_status"}),
              "fault: wrong_status can never happen to cmi_req_resp");
    EXPECT_EQ(refused({"delay", "mutex_unlock", "5"}), "delay: mutex_unlock can never take longer");
    EXPECT_EQ(switchsim::command({"show"}).text.find("fault"), std::string::npos);
}

TEST_F(LiveSwitch, ClockIsNotSteppedBeyondWhatScenariosSay) {
    load("[[event]]\nat = 999999999\nfor = 2\ndo = \"set tunnel 1 status down\"\n");
    expect_done({"step", "1000000000"});
    EXPECT_EQ(refused({"step", "1"}), "step: the clock goes to 1000000000 s, and stands at 1000000000.000 s");
    EXPECT_EQ(switchsim::scenario_errors(switchsim::command({"save"}).text, "saved"), std::vector<std::string>{});
}

TEST_F(LiveSwitch, AmbiguousTunnelsAreNamedByTheProfile) {
    load("[[profile]]\nid = 2\naddress = \"none\"\n[[tunnel]]\nprofile = 2\nindex = 0\nif_index = 5\n"
         "remote_address = \"none\"\n");
    EXPECT_EQ(refused({"remove", "tunnel", "1"}), "several tunnels are called 1; name one by PROFILE/NUMBER");
    expect_done({"remove", "tunnel", "2/1"});
    EXPECT_EQ(the_switch().links.size(), 1U);
    EXPECT_EQ(the_switch().ports.count(5), 0U);
}

const std::string second_tunnel = "[[profile]]\nid = 2\naddress = \"none\"\n[[tunnel]]\nprofile = 2\nindex = 9\n"
                                  "remote_address = \"none\"\nport_row = false\n";

TEST_F(LiveSwitch, TunnelLeavesAnotherTunnelsInterfaceAlone) {
    load(second_tunnel + "if_index = 167772160\n");
    expect_done({"set", "tunnel", "2/10", "cost", "5"});
    EXPECT_EQ(the_switch().links.at({2, 9}).cost, 5U);
    EXPECT_EQ(the_switch().ports.count(fcip1), 1U);
    expect_done({"remove", "tunnel", "2/10"});
    EXPECT_EQ(the_switch().ports.count(fcip1), 1U);
    expect_done({"remove", "tunnel", "1/1"});
    EXPECT_EQ(the_switch().ports.count(fcip1), 0U);
}

TEST_F(LiveSwitch, TunnelLeavesAPortsRatesAlone) {
    load("[[ethernet]]\nslot = 1\nport = 2\n[ethernet.mac_statistics]\ncollisions = {rate = 1}\n" + second_tunnel +
         "if_index = 2197880834\nerrors = {timestamp_expiries = {rate = 1}}\n");
    ASSERT_EQ(the_switch().rates.size(), 2U);
    expect_done({"set", "tunnel", "2/10", "cost", "5"});
    EXPECT_EQ(the_switch().rates.size(), 2U);
    expect_done({"remove", "tunnel", "2/10"});
    EXPECT_EQ(the_switch().rates.size(), 1U);
    EXPECT_EQ(the_switch().ports.count(0x83010002), 1U);
    expect_done({"remove", "ethernet", "1/2"});
    EXPECT_EQ(the_switch().rates.size(), 0U) << "the port's own";
}

TEST_F(LiveSwitch, RemoveTakesARowWithAllBehindIt) {
    load("connection = {}\nerrors = {timestamp_expiries = {rate = 1}}\n");
    ASSERT_EQ(the_switch().rates.size(), 1U);
    expect_done({"remove", "tunnel", "1"});
    EXPECT_TRUE(the_switch().links.empty() && the_switch().connections.empty());
    EXPECT_TRUE(the_switch().link_errors.empty() && the_switch().rates.empty());
    EXPECT_EQ(the_switch().ports.count(fcip1), 0U);
    EXPECT_EQ(the_switch().ports.size(), 1U);
    expect_done({"remove", "ethernet", "1/1"});
    expect_done({"remove", "profile", "1"});
    expect_done({"remove", "vsan", "1"});
    EXPECT_TRUE(the_switch().ports.empty() && the_switch().profiles.empty() && the_switch().vsans.empty());
}

TEST_F(LiveSwitch, SaveKeepsValuesRatesClockAndEventsToCome) {
    load("errors = {timestamp_expiries = {value = 4, rate = 10, period = 0.5, jitter = 3}}\n"
         "[clock]\nseed = 9\n[[event]]\nat = 1\nfor = 5\ndo = \"set tunnel 1 status down\"\n"
         "[[event]]\nat = 99.5\nfor = 1\ndo = \"remove tunnel 1\"\n");
    switchsim::step(2000);
    const std::string saved = switchsim::command({"save"}).text;
    ASSERT_EQ(switchsim::load_text(saved, "saved"), "") << saved;
    EXPECT_EQ(switchsim::command({"save"}).text, saved);
    EXPECT_EQ(the_switch().now, 2000U);
    EXPECT_EQ(the_switch().seed, 9U);
    EXPECT_EQ(the_switch().rates.size(), 1U);
    EXPECT_EQ(the_switch().events.size(), 2U);
    EXPECT_EQ(status(), 2U);
    switchsim::step(4000);
    EXPECT_EQ(status(), 1U);
    EXPECT_GE(error_counter(72), 64U);
}

TEST_F(LiveSwitch, SaveWritesRatesAndEventsInFull) {
    load(first_counters + "bytes_received = {value = 4, rate = 10, period = 0.5, jitter = 3}\n" +
         "[clock]\nnow = 2.5\nseed = 9\n[[event]]\nat = 99.5\nfor = 1.25\ndo = \"add\"\n" +
         "rows = \"[[profile]]\\nid = 9\\naddress = 'none'\"\n");
    const std::string saved = switchsim::command({"save"}).text;
    for (const char* part : {"\n[clock]\nnow = 2.500\nseed = 9\n",
                             "\nbytes_received = { value = 4, rate = 10, period = 0.500, jitter = 3 }\n",
                             "\n[[event]]\nat = 99.500\nfor = 1.250\ndo = \"add\"\n"
                             "rows = \"[[profile]]\\u000Aid = 9\\u000Aaddress = 'none'\"\n"})
        EXPECT_NE(saved.find(part), std::string::npos) << part << "in\n" << saved;
    ASSERT_EQ(switchsim::load_text(saved, "saved"), "");
    const switchsim::Rate& rate = the_switch().rates.begin()->second;
    EXPECT_EQ(rate, (switchsim::Rate{4, 10, 500, 3, 2500}));
    const switchsim::Event& event = the_switch().events.at(0);
    EXPECT_EQ(std::tuple(event.at, event.lasts, event.command, event.rows),
              std::tuple(99500U, std::optional<std::uint64_t>(1250), "add", "[[profile]]\nid = 9\naddress = 'none'"));
}

TEST_F(LiveSwitch, NamesThatCallersHoldOutliveCommands) {
    load("");
    the_switch().name = "a name that is too long to stand in the string itself";
    the_switch().system_name = "another name that is too long to stand in the string itself";
    const char* name = getCSName();
    const char* system_name = CSgetName(mts_q);
    expect_done({"set", "tunnel", "1", "cost", "1"});
    EXPECT_EQ(getCSName(), name);
    EXPECT_EQ(CSgetName(mts_q), system_name);
}

TEST_F(LiveSwitch, ShowTellsWhatTheSwitchHas) {
    load(first_counters + "bytes_received = {rate = 1}\n[[port_channel]]\nslot = 1\nport = 2\n[[event]]\nat = 10\n"
                          "do = \"remove card 1\"\n");
    expect_done({"add", "card", "3"});
    expect_done({"delay", "getCSName", "5"});
    expect_done({"fault", "getCSName", "7"});
    expect_done({"step", "1.001"});
    EXPECT_EQ(switchsim::command({"show"}).text, "switch sw\nclock 1.001 s\ncard 1\ncard 3\nport 16842761 fc1/9\n"
                                                 "port 2197880833 GigabitEthernet1/1\n"
                                                 "port 2214658050 port-channel1/2\nprofile 1\ntunnel 1/1 status 1\n"
                                                 "fault getCSName 7 fail\ndelay getCSName 5\n"
                                                 "event at 10.000 s: remove card 1\n1 counters move\n");
}

TEST_F(LiveSwitch, PortsAreNamedByPlaceOrIndex) {
    load(first_counters + "[[ethernet]]\nslot = false\nport = 7\nif_index = 2197815299\n");
    expect_done({"set", "ethernet", "2197880833", "mtu", "1"});
    expect_done({"set", "ethernet", "/7", "mtu", "2"});
    expect_done({"set", "fibre_channel", "16842761", "mtu", "3"});
    EXPECT_EQ(port().mtu, 1U);
    EXPECT_EQ(the_switch().ports.at(2197815299).mtu, 2U);
    EXPECT_EQ(the_switch().ports.at(0x01010009).mtu, 3U);
    EXPECT_EQ(refused({"remove", "ethernet", "16842761"}), "no such port is called 16842761");
}

TEST_F(LiveSwitch, LoadBeginsTheClockAnew) {
    load("");
    switchsim::stop_clock(false);
    load("[clock]\nnow = 1000000\n");
    for (int tries = 0; tries < 3000 && the_switch().now == 1000000000; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        switchsim::command({"show"});
    }
    EXPECT_GT(the_switch().now, 1000000000U);
}
