// Fixture of the simulator's tests: the small switch loaded, the lock held, the queue open. What callers are
// complained about has to be taken note of, or the test fails.
#pragma once

#include "platform/services.h"
#include "simulator/switchsim.h"
#include "tests/support/read_faults.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>

struct Free {
    void operator()(void* block) const { std::free(block); }
};
template <class Record>
using Owned = std::unique_ptr<Record, Free>;

// What single-tunnel.toml calls its interfaces.
inline constexpr std::uint32_t gigabit = 0x83010001;
inline constexpr std::uint32_t fcip1 = 0x0A000000;

class SimulatorTest : public ::testing::Test {
  protected:
    void SetUp() override {
        switchsim::reset();
        switchsim::complaints_are_fatal(false);
        switchsim::record_calls(false);
        ASSERT_EQ(switchsim::load(scenario("single-tunnel.toml")), "");
        mutex_lock();
        ASSERT_EQ(init_mts(&mts_q), 0);
        switchsim::clear_counts();
    }

    void TearDown() override {
        EXPECT_EQ(switchsim::complaints(), std::vector<std::string>{});
        EXPECT_EQ(switchsim::undropped_messages(), 0U);
        if (switchsim::lock_held_here())
            mutex_unlock();
        switchsim::reset();
    }

    static std::string scenario(const std::string& name) { return FCIP_SOURCE_DIR "/scenarios/" + name; }

    /// The complaints so far; they count as expected.
    static std::vector<std::string> take_complaints() {
        auto taken = switchsim::complaints();
        switchsim::clear_complaints();
        return taken;
    }

    /// The only complaint so far, or what is wrong with that.
    static std::string take_complaint() {
        const auto taken = take_complaints();
        return taken.size() == 1 ? taken[0] : std::to_string(taken.size()) + " complaints";
    }
};
