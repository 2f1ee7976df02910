// Counters that move, and the clock.
#include "tests/simulator/live_switch.h"

#include <chrono>
#include <thread>

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
