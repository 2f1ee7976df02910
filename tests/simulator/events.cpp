// Events on the time line, and how they are undone.
#include "tests/simulator/live_switch.h"

#include <chrono>
#include <thread>

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
