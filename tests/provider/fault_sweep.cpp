// Every platform call and every broker call of every request fails once, in every way it can. Nothing may crash, leak,
// keep the lock or turn into an error for the client.
#include "tests/support/corpus.h"

namespace {

using namespace test;
using switchsim::Fault;

class FaultSweep : public RequestTest {
  protected:
    /// Requests that differ in what they ask of the platform: most pairs of source and association ask for nothing.
    std::vector<cmpihost::Request> requests_that_ask() {
        std::vector<cmpihost::Request> asking;
        for (auto& request : all_requests()) {
            switchsim::clear_counts();
            ask(request);
            if (switchsim::total_calls() > 0)
                asking.push_back(std::move(request));
        }
        return asking;
    }

    void expect_quiet_end(const cmpihost::Answer& answer) {
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_FALSE(switchsim::lock_held());
        EXPECT_EQ(switchsim::undropped_messages(), 0u);
    }
};

TEST_F(FaultSweep, EveryPlatformCallFailsOnce) {
    whole_objects_expected = false;
    const auto requests = requests_that_ask();
    ASSERT_GT(requests.size(), 100u);
    // One tunnel is enough here: the walks' ends have tests of their own.
    the_switch().links.erase(tunnel_3);
    the_switch().links.erase(tunnel_7);
    unsigned faults = 0;
    for (const auto& request : requests) {
        SCOPED_TRACE(name_of(request));
        switchsim::clear_counts();
        ask(request);
        const unsigned calls = switchsim::total_calls();
        for (const Fault fault : {Fault::fail, Fault::fail_leaving_record, Fault::succeed_without_record,
                                  Fault::short_reply, Fault::wrong_status, Fault::no_reply}) {
            for (unsigned nth = 1; nth <= calls; ++nth) {
                switchsim::inject_at(nth, fault, fault == Fault::short_reply ? 3 : -1);
                expect_quiet_end(ask(request));
                switchsim::clear_faults();
                ++faults;
            }
        }
        if (HasFailure())
            return;
    }
    EXPECT_GT(faults, 5000u);
}

TEST_F(FaultSweep, EveryBrokerObjectFailsOnce) {
    whole_objects_expected = false;
    const auto requests = requests_that_ask();
    ASSERT_GT(requests.size(), 100u);
    the_switch().links.erase(tunnel_3);
    the_switch().links.erase(tunnel_7);
    for (const auto& request : requests) {
        SCOPED_TRACE(name_of(request));
        // More than any request of one tunnel makes; what lies behind the last object changes nothing.
        for (unsigned nth = 1; nth <= 12; ++nth) {
            auto answer = captured([&] { return cmpihost::run(provider, request, nth); });
            if (nth <= 3 && answer.message == "invalid key name")
                answer.message.reset(); // a class or key name that could not be had counts as empty
            expect_quiet_end(answer);
        }
        if (HasFailure())
            return;
    }
}

TEST_F(FaultSweep, ARequestAfterAFaultIsAnsweredAsEver) {
    const auto expected = enumerate_instances("ZANTO_TCPSettings");
    switchsim::inject("mts_recv", Fault::fail);
    enumerate_instances("ZANTO_TCPSettings");
    switchsim::clear_faults();
    EXPECT_EQ(enumerate_instances("ZANTO_TCPSettings").objects, expected.objects);
}

} // namespace
