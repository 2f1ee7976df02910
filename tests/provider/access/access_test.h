// Fixture of the platform tests: the simulated switch starts empty, and tests add the rows they need.
#pragma once

#include "platform/services.h"
#include "tests/support/provider_test.h"

namespace fcip {

/// What tests put where a call is to write nothing.
inline constexpr std::uint32_t untouched = 0xA5A5A5A5;

class AccessTest : public test::ProviderTest {
  protected:
    void SetUp() override {
        ProviderTest::SetUp();
        the_switch() = {};
    }

    void TearDown() override {
        EXPECT_EQ(switchsim::undropped_messages(), 0u);
        ProviderTest::TearDown();
    }

    static unsigned calls(const char* function) { return switchsim::calls(function); }

    /// Adds a profile.
    static FcipEntityEntry& profile(std::uint32_t entity_id) {
        FcipEntityEntry& row = the_switch().profiles[entity_id];
        row.entity_id = entity_id;
        return row;
    }

    /// Adds a link.
    static FcipLinkEntry& link(std::uint32_t entity_id, std::uint32_t link_index, std::uint32_t if_index = 0) {
        FcipLinkEntry& row = the_switch().links[{entity_id, link_index}];
        row.entity_id = entity_id;
        row.link_index = link_index;
        row.link_if_index = if_index;
        return row;
    }
};

} // namespace fcip
