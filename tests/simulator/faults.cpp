// Counting, recording, faults, complaints and the lock, over all platform functions.
#include "tests/simulator/platform_calls.h"

#include "simulator/functions.h"

#include <algorithm>
#include <set>
#include <thread>

using Counting = SimulatorTest;
using Faults = SimulatorTest;
using Lock = SimulatorTest;
using switchsim::Fault;

namespace {

/// Calls a function; the ones that need a message get one made before and dropped after.
Outcome call_alone(const PlatformCall& function) {
    const std::string name = function.name;
    const auto all = platform_calls();
    const auto by_name = [&](std::string_view wanted) {
        return std::find_if(all.begin(), all.end(), [&](const PlatformCall& one) { return one.name == wanted; });
    };
    const bool needs_message = name == "mts_rr_token_get" || name == "mts_payload_get" || name == "mts_payload_size" ||
                               name == "mts_recv" || name == "mts_drop";
    const bool needs_entry = name == "vsan_cim_get_vsan_key";
    const bool needs_domain = name == "vsan_cim_get_vsan_admindomain_key";
    if (needs_message)
        by_name("mts_send")->call();
    if (needs_entry)
        by_name("vsan_cim_get_vsanEntry")->call();
    if (needs_domain)
        by_name("dm_cim_get_dmEntry")->call();
    Outcome outcome = function.call();
    if (name == "mts_send" || (needs_message && name != "mts_drop"))
        by_name("mts_drop")->call();
    return outcome;
}

Outcome call_with_fault(const PlatformCall& function, Fault fault, int code) {
    switchsim::inject(function.name, fault, switchsim::every_call, code);
    Outcome outcome = call_alone(function);
    switchsim::clear_faults();
    return outcome;
}

int expected_code(const PlatformCall& function, int code) {
    return function.takes == Takes::nothing ? 0 : function.takes == Takes::faults_as_null ? -1 : code;
}

} // namespace

// ---------------------------------------------------------------------------------------------- success

TEST_F(Faults, EveryFunctionSucceedsWithoutOne) {
    for (const auto& function : platform_calls()) {
        SCOPED_TRACE(function.name);
        const Outcome outcome = call_alone(function);
        EXPECT_EQ(outcome.result, 0);
        EXPECT_EQ(outcome.record ? outcome.record->size() : 0, function.record_size);
    }
}

TEST_F(Faults, TableOfTheseTestsIsComplete) {
    std::set<std::string_view> missing(switchsim::function_names.begin(), switchsim::function_names.end());
    for (const auto& function : platform_calls())
        EXPECT_EQ(missing.erase(function.name), 1U) << function.name;
    EXPECT_EQ(missing, (std::set<std::string_view>{"association_class_build_instance_path", "fcport_build_instance_pm",
                                                   "fcport_fill_reference_pm", "mutex_lock", "mutex_unlock",
                                                   "switch_build_instance_str", "switch_fill_reference",
                                                   "switch_fill_reference_str"}));
}

// ---------------------------------------------------------------------------------------------- faults by name

TEST_F(Faults, FailGivesTheCodeAndNoRecord) {
    for (const auto& function : platform_calls()) {
        SCOPED_TRACE(function.name);
        const Outcome outcome = call_with_fault(function, Fault::fail, -77);
        EXPECT_EQ(outcome.result, expected_code(function, -77));
        EXPECT_FALSE(outcome.record);
    }
}

TEST_F(Faults, FailLeavingRecordGivesTheCodeAndAZeroedRecord) {
    for (const auto& function : platform_calls()) {
        SCOPED_TRACE(function.name);
        const Outcome outcome = call_with_fault(function, Fault::fail_leaving_record, 42);
        EXPECT_EQ(outcome.result, expected_code(function, 42));
        ASSERT_EQ(outcome.record.has_value(), function.record_size > 0);
        if (outcome.record) {
            EXPECT_EQ(*outcome.record, std::vector<std::uint8_t>(function.record_size));
        }
    }
}

TEST_F(Faults, SucceedWithoutRecordGivesZeroAndNoRecord) {
    for (const auto& function : platform_calls()) {
        SCOPED_TRACE(function.name);
        const Outcome outcome = call_with_fault(function, Fault::succeed_without_record, -1);
        EXPECT_EQ(outcome.result, expected_code(function, 0));
        EXPECT_FALSE(outcome.record);
    }
}

TEST_F(Faults, ReplyFaultsLeaveOtherFunctionsAlone) {
    for (const auto& function : platform_calls()) {
        SCOPED_TRACE(function.name);
        const std::string name = function.name;
        if (name == "mts_recv" || name == "mts_send" || name == "fcip_send_recv_with_mts_q" || name == "cmi_req_resp")
            continue;
        for (const Fault fault : {Fault::short_reply, Fault::wrong_status, Fault::no_reply})
            EXPECT_EQ(call_with_fault(function, fault, 1).result, 0);
    }
}

TEST_F(Faults, HitTheNthCallFromNowOnAndNoOther) {
    switchsim::inject("getCSName", Fault::fail, 2);
    EXPECT_NE(getCSName(), nullptr);
    EXPECT_EQ(getCSName(), nullptr);
    EXPECT_NE(getCSName(), nullptr);
}

TEST_F(Faults, HitEveryCallUntilCleared) {
    switchsim::inject("getCSName", Fault::fail);
    EXPECT_EQ(getCSName(), nullptr);
    EXPECT_EQ(getCSName(), nullptr);
    EXPECT_NE(CSgetName(mts_q), nullptr);
    switchsim::clear_faults();
    EXPECT_NE(getCSName(), nullptr);
}

TEST_F(Faults, SeveralWaitForTheirCallsTogether) {
    switchsim::inject("getCSName", Fault::fail, 1);
    switchsim::inject("getCSName", Fault::fail, 3);
    EXPECT_EQ(getCSName(), nullptr);
    EXPECT_NE(getCSName(), nullptr);
    EXPECT_EQ(getCSName(), nullptr);
    EXPECT_NE(getCSName(), nullptr);
}

TEST_F(Faults, UnknownFunctionNamesAreRefused) {
    EXPECT_THROW(switchsim::inject("get_name", Fault::fail), std::invalid_argument);
    EXPECT_THROW(switchsim::calls("get_name"), std::invalid_argument);
}

TEST_F(Faults, CommandsTakeThoseThatCanHappen) {
    const std::set<std::string_view> replies{"mts_send", "mts_recv", "fcip_send_recv_with_mts_q", "cmi_req_resp"};
    for (const auto& function : platform_calls()) {
        SCOPED_TRACE(function.name);
        const auto taken = [&](const char* shape) {
            return switchsim::command({"fault", function.name, "1", shape}).good;
        };
        for (const char* shape : {"fail", "fail_leaving_record", "succeed_without_record"})
            EXPECT_EQ(taken(shape), function.takes != Takes::nothing) << shape;
        for (const char* shape : {"short_reply", "no_reply"})
            EXPECT_EQ(taken(shape), replies.contains(function.name)) << shape;
        EXPECT_EQ(taken("wrong_status"),
                  std::string(function.name).starts_with("mts_") && replies.contains(function.name));
    }
}

// ---------------------------------------------------------------------------------------------- faults by number

TEST_F(Faults, HitTheNthCallOfAnyFunction) {
    switchsim::inject_at(3, Fault::fail, 9);
    std::uint8_t slot = 0;
    EXPECT_EQ(if_index_get_slot(gigabit, &slot), 0);
    EXPECT_NE(getCSName(), nullptr);
    EXPECT_EQ(if_index_get_slot(gigabit, &slot), 9);
    EXPECT_EQ(if_index_get_slot(gigabit, &slot), 0);
}

TEST_F(Faults, LockFunctionsDoNotCountAsCalls) {
    switchsim::inject_at(1, Fault::fail);
    mutex_unlock();
    mutex_lock();
    EXPECT_EQ(getCSName(), nullptr);
}

TEST_F(Faults, OnAFunctionThatCannotFailAreSpent) {
    switchsim::inject_at(1, Fault::fail);
    EXPECT_EQ(hton_if_index(0), 0U);
    EXPECT_NE(getCSName(), nullptr);
}

// ---------------------------------------------------------------------------------------------- counts

TEST_F(Counting, EveryFunctionIsCountedByName) {
    for (const auto& function : platform_calls()) {
        SCOPED_TRACE(function.name);
        switchsim::clear_counts();
        switchsim::record_calls(true);
        call_alone(function);
        switchsim::record_calls(false);
        EXPECT_EQ(switchsim::calls(function.name), 1U);
        EXPECT_EQ(switchsim::total_calls(), switchsim::recorded_calls().size());
    }
}

TEST_F(Counting, LockFunctionsAreCountedButNotInTheTotal) {
    mutex_unlock();
    mutex_lock();
    EXPECT_EQ(switchsim::calls("mutex_lock"), 1U);
    EXPECT_EQ(switchsim::calls("mutex_unlock"), 1U);
    EXPECT_EQ(switchsim::total_calls(), 0U);
}

TEST_F(Counting, NamesAreRecordedInOrderWhileSwitchedOn) {
    getCSName();
    switchsim::record_calls(true);
    hton_if_index(1);
    mutex_unlock();
    mutex_lock();
    getCSName();
    switchsim::record_calls(false);
    CSgetName(mts_q);
    EXPECT_EQ(switchsim::recorded_calls(), (std::vector<std::string>{"hton_if_index", "getCSName"}));
    EXPECT_EQ(switchsim::total_calls(), 4U);
    switchsim::clear_counts();
    EXPECT_TRUE(switchsim::recorded_calls().empty());
}

TEST_F(Counting, ResetForgetsEverything) {
    switchsim::inject("getCSName", Fault::fail);
    fcip_if_str(gigabit, nullptr);
    switchsim::reset();
    EXPECT_EQ(switchsim::total_calls(), 0U);
    EXPECT_TRUE(switchsim::complaints().empty());
    EXPECT_TRUE(switchsim::the_switch().ports.empty());
    EXPECT_STREQ(getCSName(), "switch");
}

// ---------------------------------------------------------------------------------------------- the lock

TEST_F(Lock, EveryFunctionWantsItHeld) {
    for (const auto& function : platform_calls()) {
        SCOPED_TRACE(function.name);
        mutex_unlock();
        call_alone(function);
        mutex_lock();
        const auto complaints = take_complaints();
        EXPECT_NE(std::find(complaints.begin(), complaints.end(),
                            std::string(function.name) + ": called without the process-wide lock"),
                  complaints.end());
    }
}

TEST_F(Lock, HeldByAnotherThreadDoesNotCount) {
    const char* name = "";
    std::thread([&name] { name = getCSName(); }).join();
    EXPECT_STREQ(name, "edge-sw1");
    EXPECT_EQ(take_complaint(), "getCSName: called without the process-wide lock");
}

TEST_F(Lock, SaysWhoHoldsIt) {
    EXPECT_TRUE(switchsim::lock_held());
    EXPECT_TRUE(switchsim::lock_held_here());
    std::thread([] {
        EXPECT_TRUE(switchsim::lock_held());
        EXPECT_FALSE(switchsim::lock_held_here());
    }).join();
    mutex_unlock();
    EXPECT_FALSE(switchsim::lock_held());
    EXPECT_FALSE(switchsim::lock_held_here());
}

TEST_F(Lock, TakenTwiceIsAComplaintAndNoDeadlock) {
    mutex_lock();
    EXPECT_EQ(take_complaint(), "mutex_lock: the calling thread holds the lock already");
    EXPECT_TRUE(switchsim::lock_held_here());
}

TEST_F(Lock, ReleasedByAnotherThreadIsAComplaintAndStaysHeld) {
    std::thread([] { mutex_unlock(); }).join();
    EXPECT_EQ(take_complaint(), "mutex_unlock: the calling thread does not hold the lock");
    EXPECT_TRUE(switchsim::lock_held_here());
}

TEST_F(Lock, ReleasedTwiceIsAComplaint) {
    mutex_unlock();
    mutex_unlock();
    EXPECT_EQ(take_complaint(), "mutex_unlock: the calling thread does not hold the lock");
}

TEST_F(Lock, ExcludesOtherThreads) {
    mutex_unlock();
    unsigned sum = 0; // the thread sanitizer watches it
    const auto work = [&sum] {
        for (int i = 0; i < 200; ++i) {
            mutex_lock();
            getCSName();
            ++sum;
            mutex_unlock();
        }
    };
    std::thread one(work);
    std::thread two(work);
    one.join();
    two.join();
    EXPECT_EQ(sum, 400U);
    EXPECT_EQ(switchsim::calls("getCSName"), 400U);
}

using Complaints = SimulatorTest;
using FatalComplaints = SimulatorTest;

TEST_F(Complaints, AreNotedUpToAThousand) {
    for (int i = 0; i < 1001; ++i)
        fcip_if_str(gigabit, nullptr);
    EXPECT_EQ(take_complaints().size(), 1000U);
}

TEST_F(FatalComplaints, EndTheProcessWithTheLine) {
    EXPECT_DEATH(
        {
            switchsim::complaints_are_fatal(true);
            fcip_if_str(gigabit, nullptr);
        },
        "switchsim: fcip_if_str: the buffer is null");
    EXPECT_DEATH(
        {
            switchsim::complaints_are_fatal(true);
            mutex_lock();
        },
        "switchsim: mutex_lock: the calling thread holds the lock already");
}
