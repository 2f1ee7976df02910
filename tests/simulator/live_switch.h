// Fixture of the tests of a switch that lives. The clock stands still but for steps.
#pragma once

#include "tests/simulator/scenario_lines.h"

#include "simulator/bytes.h"

#include <utility>

using switchsim::get_big;
using switchsim::the_switch;

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

inline const std::string first_counters = "[[fibre_channel]]\nslot = 1\nport = 9\n[fibre_channel.counters]\n";

inline std::uint64_t fibre_bytes() {
    return get_big<std::uint64_t>(the_switch().ports.at(0x01010009).counters->bytes, 275);
}

/// A counter of tunnel 1's errors.
inline std::uint64_t error_counter(std::size_t offset) {
    return get_big<std::uint64_t>(the_switch().link_errors.at({1, 0}).bytes, offset);
}
