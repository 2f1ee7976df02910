// Platform functions are C functions: without memory they fail, and nothing is thrown out of them. The program's
// operator new fails on demand, at the n-th allocation for every n, until the call gets by without the n-th.
#include "tests/simulator/simulator_test.h"

#include <functional>
#include <new>

namespace {

unsigned fail_at = 0; ///< counts down to the allocation that fails; 0 = none does

bool fails_now() {
    return fail_at > 0 && --fail_at == 0;
}

} // namespace

// Not hidden: they stand for all libraries of the program.
[[gnu::visibility("default")]] void* operator new(std::size_t size) {
    void* block = fails_now() ? nullptr : std::malloc(size > 0 ? size : 1);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}
[[gnu::visibility("default")]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::visibility("default")]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace {

/// Makes a call whose n-th allocation fails. @return whether it came so far
template <class Call>
bool call_without_memory(unsigned nth, Call call, int& result) {
    fail_at = nth;
    result = call();
    const bool failed = fail_at == 0;
    fail_at = 0;
    return failed;
}

/// Calls until no allocation fails any more; with each that fails, so does the call.
/// @return how many allocations the call makes
template <class Call>
unsigned sweep(
    Call call, const std::function<void(int)>& after = [](int) {}) {
    for (unsigned nth = 1;; ++nth) {
        int result = 0;
        const bool without_memory = call_without_memory(nth, call, result);
        EXPECT_EQ(result, without_memory ? -1 : 0) << "allocation " << nth;
        after(result);
        if (!without_memory || ::testing::Test::HasFailure())
            return nth - 1;
    }
}

class OutOfMemory : public SimulatorTest {
  protected:
    void TearDown() override {
        fail_at = 0;
        SimulatorTest::TearDown();
    }
};

std::uint8_t request[32] = {0, 0, 0, 0, 0xFF, 0xFF};

int send(mts_msg* message) {
    const mts_addr destination{switchsim::node_of_slot(1), 943};
    const std::uint8_t if_index[4] = {0x83, 0x01, 0x00, 0x01};
    std::memcpy(request + 24, if_index, sizeof if_index);
    return mts_send(mts_q, &destination, 1917, request, sizeof request, message, 0, 0);
}

int receive(mts_msg* message) {
    const mts_recv_options options{{1, 0, 5, 0, 0, 0, 0, 0}};
    return mts_recv(mts_q, message, &options, 5);
}

} // namespace

TEST_F(OutOfMemory, InterfaceListFails) {
    const mts_addr destination{0xFE000000, 60};
    const std::uint32_t id = 1;
    std::uint8_t scratch[256];
    void* reply = nullptr;
    const auto ask = [&] {
        std::uint32_t length = 0;
        reply = nullptr;
        return fcip_send_recv_with_mts_q(8946, &destination, &id, sizeof id, mts_q, &reply, &length, scratch);
    };
    const auto after = [&](int result) {
        EXPECT_EQ(reply != nullptr, result == 0);
        std::free(reply);
    };
    EXPECT_GE(sweep(ask, after), 1U);
}

TEST_F(OutOfMemory, SentRequestFailsAndHoldsNoMessage) {
    mts_msg message{};
    const auto after = [&](int result) {
        EXPECT_EQ(switchsim::undropped_messages(), result == 0 ? 1U : 0U);
        mts_msg received{};
        if (result != 0) {
            EXPECT_NE(receive(&received), 0) << "no reply is left behind";
        } else {
            mts_drop(mts_q, &message);
        }
    };
    EXPECT_GE(sweep([&] { return send(&message); }, after), 4U);
}

TEST_F(OutOfMemory, ReceivedReplyFailsAndHoldsNoMessage) {
    mts_msg received{};
    const auto exchange = [&] {
        const unsigned nth = fail_at;
        mts_msg sent{};
        fail_at = 0;
        EXPECT_EQ(send(&sent), 0);
        mts_drop(mts_q, &sent);
        fail_at = nth;
        return receive(&received);
    };
    const auto after = [&](int result) {
        EXPECT_EQ(switchsim::undropped_messages(), result == 0 ? 1U : 0U);
        if (result == 0)
            mts_drop(mts_q, &received);
    };
    EXPECT_GE(sweep(exchange, after), 1U);
}

TEST_F(OutOfMemory, CallThatCannotBeRecordedFails) {
    switchsim::record_calls(true);
    PmPortInfo* record = nullptr;
    const auto read = [&] {
        record = nullptr;
        return pm_cim_get_port_info(&record, platform_exact, gigabit, mts_q);
    };
    const auto after = [&](int result) {
        EXPECT_EQ(record != nullptr, result == 0);
        std::free(record);
    };
    EXPECT_GE(sweep(read, after), 1U);
    switchsim::record_calls(false);
}

TEST_F(OutOfMemory, ComplaintIsLostWithALineOnStandardError) {
    for (unsigned nth = 1;; ++nth) {
        ::testing::internal::CaptureStderr();
        int result = 0;
        const bool without_memory = call_without_memory(
            nth, [] { return vsan_cim_get_vsanEntry(mts_q, platform_next, request); }, result);
        const std::string line = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(result, -1);
        EXPECT_EQ(line, without_memory ? "switchsim: vsan_cim_get_vsanEntry: no memory for a complaint\n" : "");
        EXPECT_EQ(take_complaints().size(), without_memory ? 0U : 1U);
        if (!without_memory || HasFailure()) {
            EXPECT_GE(nth, 3U);
            return;
        }
    }
}

TEST_F(OutOfMemory, NullPointerStillFailsTheCall) {
    for (unsigned nth = 1;; ++nth) {
        ::testing::internal::CaptureStderr();
        int result = 0;
        const bool without_memory = call_without_memory(
            nth, [] { return sprintf_if_index(nullptr, gigabit); }, result);
        ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(result, -1);
        EXPECT_EQ(take_complaints().size(), without_memory ? 0U : 1U);
        if (!without_memory || HasFailure()) {
            EXPECT_GE(nth, 3U);
            return;
        }
    }
}

TEST_F(OutOfMemory, ScenarioIsNotHalfLoaded) {
    const std::string file = scenario("single-tunnel.toml");
    switchsim::the_switch().name = "unchanged";
    char message[64];
    const auto load = [&] { return switchsim_load_scenario(file.c_str(), message, sizeof message); };
    const auto after = [&](int result) {
        EXPECT_STREQ(message, result == 0 ? "" : "not enough memory for the scenario");
        EXPECT_EQ(switchsim::the_switch().name, result == 0 ? "edge-sw1" : "unchanged");
    };
    EXPECT_GE(sweep(load, after), 100U);
}

// The first platform call loads the switch, and a process does that once: death tests run before all others.
TEST(OutOfMemoryDeathTest, FirstCallFailsAndTheNextOneLoadsTheSwitch) {
    EXPECT_EXIT(
        {
            setenv("SWITCHSIM_SCENARIO", FCIP_SOURCE_DIR "/scenarios/single-tunnel.toml", 1);
            mutex_lock();
            const unsigned allocations = sweep([] { return init_mts(&mts_q); });
            std::exit(allocations >= 100 && std::strcmp(getCSName(), "edge-sw1") == 0 ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "^$");
}
