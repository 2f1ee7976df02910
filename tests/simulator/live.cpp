// A switch that lives: counters that move, events, and commands. The clock stands still but for steps.
#include "tests/simulator/scenario_lines.h"

#include "simulator/bytes.h"

#include <algorithm>
#include <chrono>
#include <thread>

using switchsim::get_big;
using switchsim::the_switch;

namespace {

class LiveSwitch : public SimulatorTest {
  protected:
    void SetUp() override {
        SimulatorTest::SetUp();
        switchsim::stop_clock(true);
    }

    static void load(const std::string& lines) { load_ok(base + lines); }

    static const switchsim::Port& port() { return the_switch().ports.at(gigabit); }

    static std::uint32_t status() { return the_switch().links.at({1, 0}).status; }

    static void expect_done(const std::vector<std::string>& words) {
        const auto result = switchsim::command(words);
        EXPECT_TRUE(result.good) << words[0] << ": " << result.text;
    }

    /// Lets an event of a second happen; nothing is left of it, but time, and it did something.
    static void expect_undone(const std::string& line, const std::string& rows) {
        the_switch().now = 0;
        const std::string before = saved();
        the_switch().events = {{1000, line, 1000, rows}};
        testing::internal::CaptureStderr();
        switchsim::step(1500);
        const std::string undo = switchsim::command({"save"}).text;
        EXPECT_NE(the_switch().events.size(), 0U);
        the_switch().events.clear();
        EXPECT_NE(saved(), before) << "the event changes nothing";
        ASSERT_EQ(switchsim::load_text(undo, "saved"), "") << undo;
        switchsim::step(500);
        EXPECT_EQ(saved(), before);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }

    /// The switch as it would be saved when its clock begins.
    static std::string saved() {
        const std::uint64_t now = std::exchange(the_switch().now, 0);
        std::string text = switchsim::command({"save"}).text;
        the_switch().now = now;
        return text;
    }

    static std::string refused(const std::vector<std::string>& words) {
        const std::string before = switchsim::command({"save"}).text;
        const auto result = switchsim::command(words);
        EXPECT_FALSE(result.good) << words[0];
        EXPECT_EQ(switchsim::command({"save"}).text, before);
        return result.text;
    }

    inline static const std::string base = "[[vsan]]\nid = 1\ndomain = \"d\"\n[[ethernet]]\nslot = 1\nport = 1\n"
                                           "[[profile]]\nid = 1\naddress = \"10.0.0.1\"\n[[tunnel]]\nprofile = 1\n"
                                           "index = 0\nremote_address = \"10.0.0.2\"\nethernet = \"1/1\"\n";
};

const std::string first_counters = "[[fibre_channel]]\nslot = 1\nport = 9\n[fibre_channel.counters]\n";

std::uint64_t fibre_bytes() {
    return get_big<std::uint64_t>(the_switch().ports.at(0x01010009).counters->bytes, 275);
}

/// A counter of tunnel 1's errors.
std::uint64_t error_counter(std::size_t offset) {
    return get_big<std::uint64_t>(the_switch().link_errors.at({1, 0}).bytes, offset);
}

} // namespace

TEST_F(LiveSwitch, CountersMoveAtTheirRate) {
    load(first_counters + "bytes_received = {value = 7, rate = 100}\n");
    EXPECT_EQ(fibre_bytes(), 7U);
    switchsim::step(999);
    EXPECT_EQ(fibre_bytes(), 7U);
    switchsim::step(1);
    EXPECT_EQ(fibre_bytes(), 107U);
    switchsim::step(10500);
    EXPECT_EQ(fibre_bytes(), 1107U);
}

TEST_F(LiveSwitch, PeriodSaysHowOftenCountersMove) {
    load(first_counters + "bytes_received = {rate = 100, period = 2.5}\n");
    switchsim::step(2499);
    EXPECT_EQ(fibre_bytes(), 0U);
    switchsim::step(1);
    EXPECT_EQ(fibre_bytes(), 250U);
}

TEST_F(LiveSwitch, CountersWrapAtTheirWidth) {
    load(first_counters + "bytes_received = {value = \"18446744073709551615\", rate = 2}\n"
                          "multicast_received = {value = 4294967295, rate = 2}\n");
    switchsim::step(1000);
    EXPECT_EQ(fibre_bytes(), 1U);
    EXPECT_EQ(get_big<std::uint32_t>(the_switch().ports.at(0x01010009).counters->bytes, 259), 1U);
}

TEST_F(LiveSwitch, JitterComesFromTheSeedAndNeverFallsBack) {
    const auto run = [&](const std::string& seed) {
        load("[clock]\nseed = " + seed + "\n" + first_counters + "bytes_received = {rate = 1000, jitter = 100}\n");
        std::vector<std::uint64_t> values;
        for (int second = 0; second < 20; ++second) {
            switchsim::step(1000);
            values.push_back(fibre_bytes());
        }
        return values;
    };
    const auto one = run("1");
    EXPECT_EQ(run("1"), one);
    EXPECT_NE(run("2"), one);
    EXPECT_TRUE(std::is_sorted(one.begin(), one.end()));
    for (std::size_t i = 0; i < one.size(); ++i) {
        EXPECT_GE(one[i], 1000 * (i + 1));
        EXPECT_LE(one[i], 1000 * (i + 2));
    }
}

TEST_F(LiveSwitch, CountersOfEveryTableMove) {
    load("[[ethernet]]\nslot = 1\nport = 2\n[ethernet.mac_statistics]\ncollisions = {rate = 1}\n"
         "[ethernet.ip_statistics]\nreceived = {rate = 2}\n[ethernet.tcp_statistics]\nactive_opens = {rate = 3}\n"
         "[[tunnel]]\nprofile = 1\nindex = 1\nremote_address = \"10.0.0.3\"\n"
         "[tunnel.errors]\nlost_synchronisation = {rate = 4}\n");
    switchsim::step(1000);
    const auto& port = the_switch().ports.at(0x83010002);
    EXPECT_EQ(get_big<std::uint64_t>(port.mac_statistics.data(), 40), 1U);
    EXPECT_EQ(get_big<std::uint32_t>(port.ip_statistics.data(), 36), 2U);
    EXPECT_EQ(get_big<std::uint32_t>(port.tcp_statistics[0].data(), 36), 3U);
    EXPECT_EQ(get_big<std::uint64_t>(the_switch().link_errors.at({1, 1}).bytes, 8), 4U);
}

TEST_F(LiveSwitch, WallClockMovesCountersBetweenPlatformCalls) {
    load(first_counters + "bytes_received = {rate = 1000, period = 0.01}\n");
    switchsim::stop_clock(false);
    const std::uint64_t before = fibre_bytes();
    for (int tries = 0; tries < 500 && fibre_bytes() == before; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        getCSName();
    }
    EXPECT_GT(fibre_bytes(), before);
}

TEST_F(LiveSwitch, ClockGoesWhereNothingMoves) {
    load("");
    switchsim::stop_clock(false);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    expect_done({"add", first_counters + "bytes_received = {rate = 1000}\n"});
    ASSERT_EQ(the_switch().rates.size(), 1U);
    EXPECT_GE(the_switch().rates.begin()->second.since, 90U) << "it would count what passed before";
    expect_done({"remove", "fibre_channel", "1/9"});
    const std::uint64_t before = the_switch().now;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(switchsim::command({"show"}).text.find("clock 0.0"), std::string::npos);
    EXPECT_GE(the_switch().now, before + 40);
}

TEST_F(LiveSwitch, SetLeavesRatesOfOtherCountersAlone) {
    load("errors = {timestamp_expiries = {rate = 100, period = 10}, lost_synchronisation = {rate = 1}}\n");
    for (int cost = 0; cost < 7; ++cost) {
        switchsim::step(9000);
        expect_done({"set", "tunnel", "1", "cost", std::to_string(cost)});
    }
    EXPECT_EQ(error_counter(72), 6000U);
    expect_done({"set", "tunnel", "1", "errors.timestamp_expiries.rate", "10"});
    switchsim::step(9999);
    EXPECT_EQ(error_counter(72), 6000U);
    EXPECT_EQ(error_counter(8), 72U);
    switchsim::step(1);
    EXPECT_EQ(error_counter(72), 6100U);
}

TEST_F(LiveSwitch, JitterDoesNotPileUp) {
    load("errors = {timestamp_expiries = {rate = 1000, jitter = 100}}\n");
    for (std::uint64_t second = 1; second <= 40; ++second) {
        switchsim::step(1000);
        if (second % 2 == 0)
            expect_done({"set", "tunnel", "1", "cost", std::to_string(second)});
        else
            ASSERT_EQ(switchsim::load_text(switchsim::command({"save"}).text, "saved"), "");
        EXPECT_GE(error_counter(72), 1000 * second);
        EXPECT_LE(error_counter(72), 1000 * (second + 1));
    }
}

TEST_F(LiveSwitch, SavedCountersGoOnAsTheyBegan) {
    const std::string lines = "[clock]\nseed = 3\n" + first_counters +
                              "bytes_received = {value = 7, rate = 100, period = 10, jitter = 50}\n"
                              "multicast_received = {value = 4294967295, rate = 1}\n";
    std::vector<std::uint64_t> values;
    const auto run = [&](bool saves) {
        load(lines);
        values.clear();
        for (int step = 0; step < 10; ++step) {
            switchsim::step(7300);
            if (saves) {
                ASSERT_EQ(switchsim::load_text(switchsim::command({"save"}).text, "saved"), "");
            }
            values.push_back(fibre_bytes());
            values.push_back(get_big<std::uint32_t>(the_switch().ports.at(0x01010009).counters->bytes, 259));
        }
    };
    run(false);
    const auto expected = values;
    run(true);
    EXPECT_EQ(values, expected);
}

TEST_F(LiveSwitch, WrongRatesAreErrors) {
    const auto error = [&](const std::string& rate) {
        return load_lines(base + first_counters + "bytes_received = " + rate + "\n");
    };
    const std::string key = ": fibre_channel[0].counters.bytes_received.";
    EXPECT_NE(error("{value = 1}").find(key + "rate: expected an integer"), std::string::npos);
    EXPECT_NE(error("{rate = -1}").find(key + "rate: expected an integer from 0"), std::string::npos);
    EXPECT_NE(error("{rate = 1, period = 0}").find(key + "period: expected seconds from 0.001"), std::string::npos);
    EXPECT_NE(error("{rate = 1, jitter = 101}").find(key + "jitter: expected an integer from 0 to 100"),
              std::string::npos);
    EXPECT_NE(error("{rate = 1, since = 0.001}").find(key + "since: expected seconds that are not after"),
              std::string::npos);
    EXPECT_NE(
        error("{rate = 1, x = 1}").find(key + "x: expected one of the keys value, rate, period, jitter, start, since"),
        std::string::npos);
}

// ---------------------------------------------------------------------------------------------- events

TEST_F(LiveSwitch, EventHappensAtItsTimeAndIsUndone) {
    load("[[event]]\nat = 10\nfor = 5\ndo = \"set tunnel 1 status down\"\n");
    switchsim::step(9999);
    EXPECT_EQ(status(), 1U);
    switchsim::step(1);
    EXPECT_EQ(status(), 2U);
    switchsim::step(4999);
    EXPECT_EQ(status(), 2U);
    switchsim::step(1);
    EXPECT_EQ(status(), 1U);
    EXPECT_TRUE(the_switch().events.empty());
}

TEST_F(LiveSwitch, EventAndItsEndWithinOneStep) {
    load("[[event]]\nat = 1\nfor = 1\ndo = \"remove tunnel 1\"\n[[event]]\nat = 3\ndo = \"set tunnel 1 cost 5\"\n");
    switchsim::step(100000);
    EXPECT_EQ(the_switch().links.at({1, 0}).cost, 5U);
}

TEST_F(LiveSwitch, RowsComeAndGo) {
    load("[[event]]\nat = 1\nfor = 1\ndo = \"add\"\nrows = '''\n[[profile]]\nid = 2\naddress = \"none\"\n[[tunnel]]\n"
         "profile = 2\nindex = 4\nremote_address = \"none\"\n'''\n");
    switchsim::step(1000);
    EXPECT_EQ(the_switch().links.count({2, 4}), 1U);
    EXPECT_EQ(the_switch().ports.count(0x0A000004), 1U);
    switchsim::step(1000);
    EXPECT_EQ(the_switch().links.size(), 1U);
    EXPECT_EQ(the_switch().profiles.size(), 1U);
    EXPECT_EQ(the_switch().ports.size(), 2U);
}

TEST_F(LiveSwitch, LineCardIsPulledAndPutBack) {
    load("[[event]]\nat = 1\nfor = 1\ndo = \"remove card 1\"\n");
    switchsim::step(1000);
    EXPECT_TRUE(the_switch().slots.empty());
    switchsim::step(1000);
    EXPECT_EQ(the_switch().slots, std::vector<std::uint8_t>{1});
}

TEST_F(LiveSwitch, WhatEndsGoesBeforeWhatBegins) {
    load("[[event]]\nat = 10\nfor = 5\ndo = \"set tunnel 1 status down\"\n"
         "[[event]]\nat = 15\nfor = 5\ndo = \"set tunnel 1 status down\"\n"
         "[[event]]\nat = 1\nfor = 3\ndo = \"remove card 1\"\n[[event]]\nat = 4\nfor = 3\ndo = \"remove card 1\"\n");
    testing::internal::CaptureStderr();
    switchsim::step(6000);
    EXPECT_TRUE(the_switch().slots.empty());
    switchsim::step(1000);
    EXPECT_EQ(the_switch().slots.size(), 1U);
    switchsim::step(12999);
    EXPECT_EQ(status(), 2U);
    switchsim::step(1);
    EXPECT_EQ(status(), 1U);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(LiveSwitch, EventsThatEndTogetherEndInTurn) {
    load("[[event]]\nat = 1\nfor = 4\ndo = \"set tunnel 1 status 2\"\n"
         "[[event]]\nat = 2\nfor = 3\ndo = \"set tunnel 1 status 3\"\n");
    switchsim::step(4999);
    EXPECT_EQ(status(), 3U);
    switchsim::step(1);
    EXPECT_EQ(status(), 1U);
}

TEST_F(LiveSwitch, EveryEventIsUndone) {
    const std::string rows = "connection = {}\nerrors = {timestamp_expiries = 3, lost_synchronisation = 4}\n" +
                             first_counters + "bytes_received = 5\n[[port_channel]]\nslot = 1\nport = 1\n" +
                             "[[wwn_text]]\nwwn = \"20:00:00:00:00:00:00:01\"\ntext = \"a\"\n";
    for (const char* command : {"set tunnel 1 index 7",
                                "set tunnel 1 if_index 167772167",
                                "set tunnel 1 errors {lost_synchronisation = 1}",
                                "set tunnel 1 errors default",
                                "set tunnel 1 errors.timestamp_expiries 9",
                                "set tunnel 1 connection {purpose = 2}",
                                "set tunnel 1 connection default",
                                "set tunnel 1 ethernet_if_index default",
                                "set tunnel 1 physical 1/2",
                                "set tunnel 1 name a  b",
                                "set profile 1 address_interface 1/1",
                                "set ethernet 1/1 if_index 2197815297",
                                "set ethernet 1/1 network_address 02:00:00:00:00:01",
                                "set ethernet 1/1 mac_statistics {collisions = 1}",
                                "set fibre_channel 1/9 counters default",
                                "set fibre_channel 1/9 counters.bytes_received {rate = 1}",
                                "set port_channel 1/1 port 2",
                                "set vsan 1 id 9",
                                "set vsan 1 domain false",
                                "set switch slots [1, 2]",
                                "set switch wwn 20:00:00:00:00:00:00:01",
                                "set ip default_ttl 9",
                                "remove tunnel 1",
                                "remove ethernet 1/1",
                                "remove vsan 1",
                                "remove wwn_text 20:00:00:00:00:00:00:01",
                                "set wwn_text 20:00:00:00:00:00:00:01 text b",
                                "remove card 1",
                                "add card 2"}) {
        SCOPED_TRACE(command);
        load(rows + "[[ethernet]]\nslot = 1\nport = 2\n");
        expect_undone(command, "");
    }
    load(rows);
    expect_undone("set tunnel 1", "profile 2\nprofile_missing true\nindex 3\nname \"a\\nb\"\n");
    load(rows);
    expect_undone("set ethernet 1/1", "slot 3\ncard_missing true\n");
    load(rows + "[ip]\nforwarding = true\n");
    expect_undone("remove ip", "");
    for (const char* command : {"set profile 1 id 3", "remove profile 1"}) {
        load(""); // a connection would be lost when it is saved without its profile
        expect_undone(command, "");
    }
    load("");
    expect_undone("add", "[[wwn_text]]\nwwn = \"20:00:00:00:00:00:00:02\"\ntext = \"a\"\n[[vsan]]\nid = 2\n"
                         "domain = \"b\"\n" +
                             first_counters +
                             "[[tunnel]]\nprofile = 1\nindex = 4294967295\n"
                             "remote_address = \"none\"\nif_index = 7\n");
}

TEST_F(LiveSwitch, RowsReturnWhateverBecameOfOthers) {
    load("[[event]]\nat = 1\nfor = 3\ndo = \"remove ethernet 1/1\"\n[[event]]\nat = 1\nfor = 3\n"
         "do = \"remove tunnel 1\"\n[[event]]\nat = 2\nfor = 9\ndo = \"remove card 1\"\n"
         "[[event]]\nat = 2\nfor = 9\ndo = \"remove vsan 1\"\n"
         "[[event]]\nat = 2\nfor = 9\ndo = \"remove profile 1\"\n");
    switchsim::step(4000);
    EXPECT_EQ(the_switch().ports.size(), 2U);
    EXPECT_EQ(the_switch().links.size(), 1U);
    EXPECT_TRUE(the_switch().slots.empty() && the_switch().vsans.empty() && the_switch().profiles.empty());
}

TEST_F(LiveSwitch, SettingsReturnWhateverBecameOfOtherRows) {
    load("[[event]]\nat = 1\nfor = 3\ndo = \"set ethernet 1/1\"\nrows = \"slot 2\\ncard_missing true\\nif_index "
         "2197880833\"\n"
         "[[event]]\nat = 1\nfor = 3\ndo = \"set tunnel 1\"\n"
         "rows = \"profile 3\\nprofile_missing true\\nvsan 5\\nvsan_missing true\\nslot 2\"\n"
         "[[event]]\nat = 2\ndo = \"remove card 1\"\n[[event]]\nat = 2\ndo = \"remove vsan 1\"\n"
         "[[event]]\nat = 2\ndo = \"remove profile 1\"\n");
    switchsim::step(2000);
    EXPECT_EQ(port().slot, 2);
    EXPECT_EQ(the_switch().links.count({3, 0}), 1U);
    switchsim::step(2000);
    EXPECT_EQ(port().slot, 1);
    EXPECT_EQ(the_switch().links.count({1, 0}), 1U);
    EXPECT_EQ(the_switch().ports.at(fcip1).vsan_id, 1U);
    EXPECT_EQ(the_switch().ports.at(fcip1).slot, 1);
}

TEST_F(LiveSwitch, UndoingIsShown) {
    load("[[event]]\nat = 1\nfor = 3\ndo = \"set tunnel 1 name a \\\"b\\\"  c\"\n"
         "[[event]]\nat = 1.5\nfor = 3\ndo = \"set tunnel 1 name x\"\n");
    switchsim::step(2000);
    EXPECT_NE(switchsim::command({"show"}).text.find("event at 4.500 s: set tunnel 1/1 name \"a \\\"b\\\"  c\"\n"
                                                     "event at 4.000 s: set tunnel 1/1 name default\n"),
              std::string::npos)
        << switchsim::command({"show"}).text;
}

TEST_F(LiveSwitch, UndoingLeavesOtherKeysAlone) {
    load("errors = {}\n[[event]]\nat = 1\nfor = 4\ndo = \"set tunnel 1 errors.timestamp_expiries 9\"\n"
         "[[event]]\nat = 2\ndo = \"set tunnel 1 errors.lost_synchronisation 5\"\n");
    switchsim::step(5000);
    EXPECT_EQ(error_counter(72), 0U);
    EXPECT_EQ(error_counter(8), 5U);
}

TEST_F(LiveSwitch, EventWaitsUntilTheRequestIsOver) {
    load(first_counters + "bytes_received = {rate = 1000, period = 0.01}\n[[event]]\nat = 0.05\n"
                          "do = \"set tunnel 1 status down\"\n");
    switchsim::stop_clock(false);
    for (int tries = 0; tries < 3000 && the_switch().now < 70; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        getCSName();
    }
    EXPECT_GE(fibre_bytes(), 60U) << "counters move";
    EXPECT_EQ(status(), 1U) << "this fixture holds the lock";
    mutex_unlock();
    mutex_lock();
    EXPECT_EQ(status(), 2U);
}

TEST_F(LiveSwitch, CallWithoutTheLockSeesEvents) {
    load("[[event]]\nat = 0.02\ndo = \"set tunnel 1 status down\"\n");
    switchsim::stop_clock(false);
    mutex_unlock();
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    getCSName();
    EXPECT_EQ(status(), 2U);
    EXPECT_EQ(take_complaint(), "getCSName: called without the process-wide lock");
}

TEST_F(LiveSwitch, EventThatCannotHappenIsTold) {
    load("[[event]]\nat = 1\ndo = \"remove tunnel 9\"\n");
    testing::internal::CaptureStderr();
    switchsim::step(1000);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "switchsim: event at 1000 ms: no tunnel is called 9\n");
    EXPECT_EQ(the_switch().links.size(), 1U);
}

TEST_F(LiveSwitch, WrongEventsAreErrors) {
    const auto error = [&](const std::string& event) { return load_lines("[[event]]\n" + event); };
    EXPECT_EQ(error("at = 1\n"),
              "test.toml:3:1: event[0].do: expected a command like \"set tunnel 1 status down\", but "
              "the key is missing");
    EXPECT_EQ(error("do = \"remove tunnel 1\"\n"),
              "test.toml:3:1: event[0].at: expected seconds from 0 to 1000000000, but the key is missing");
    for (const char* wrong : {"clear", "add", "remove tunnel", "", "fault getCSName"})
        EXPECT_EQ(error("at = 1\ndo = \"" + std::string(wrong) + "\"\n"),
                  "test.toml:5:6: event[0].do: expected a command like \"set tunnel 1 status down\", or \"add\" with "
                  "rows");
    EXPECT_EQ(error("at = -1\ndo = \"remove tunnel 1\"\n"),
              "test.toml:4:6: event[0].at: expected seconds from 0 to 1000000000");
}

// ---------------------------------------------------------------------------------------------- commands

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

TEST_F(LiveSwitch, ThousandsOfCountersMoveEverySecond) {
    load("");
    for (std::uint32_t row = 0; row <= 1000; ++row)
        the_switch().rates[{switchsim::CounterTable::link_errors, {9, row}, 8, 64}] = {.per_second = 1};
    switchsim::stop_clock(false);
    for (int tries = 0; tries < 3000 && the_switch().now == 0; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        getCSName();
    }
    EXPECT_GE(the_switch().now, 1000U);
}
