// get_fcip_link_entry_from: how each mode reads a key, which row it finds, and what it prints on the way.
#include "provider/access/fcip_tables.h"
#include "tests/provider/access/access_test.h"

#include <cstring>
#include <tuple>

namespace fcip {
namespace {

const std::string entering = "Entering get_fcip_link_entry_from\n";
const std::string exiting = "Exiting get_fcip_link_entry_from\n";

std::string location(int line) {
    return " Function : get_fcip_link_entry_from Line " + std::to_string(line) + " \n";
}

constexpr std::uint32_t no_row = 0xFFFFFFFF;

/// Three links that differ in everything that a mode compares. Keys are tried against them in this order.
class FcipLookup : public AccessTest {
  protected:
    void SetUp() override {
        AccessTest::SetUp();
        FcipLinkEntry& first = link(3, 0, 101);
        first.ethernet_if_index = 11;
        first.remote_address = test::address("10.1.1.2");
        FcipLinkEntry& second = link(3, 2, 12);
        second.ethernet_if_index = 22;
        second.remote_address = test::address("2001:db8::AB");
        FcipLinkEntry& third = link(7, 6, 0x8A000001);
        third.ethernet_if_index = 0x83000000;
        third.remote_address = test::address("10.1.1.3");
        third.unread_144[1031] = 0x5A;
        destination_.link_index = no_row;
    }

    int find(const std::string& key, lookup_mode mode) {
        return call([&] { return get_fcip_link_entry_from(key.c_str(), &destination_, mode); });
    }

    /// The link index that a key finds; no_row if the destination stays as it was.
    std::uint32_t found(const std::string& key, lookup_mode mode) {
        destination_.link_index = no_row;
        EXPECT_EQ(find(key, mode), 0) << key;
        return destination_.link_index;
    }

    FcipLinkEntry destination_{};
};

TEST_F(FcipLookup, EachModeComparesItsFieldWithTheKeysToken) {
    struct row {
        lookup_mode mode;
        const char* key;
        std::uint32_t link_index;
    };
    const row rows[] = {
        {lookup_mode::tunnel, "3", 2},
        {lookup_mode::tunnel, "3_10.1.1.1_10.1.1.2", 2},
        {lookup_mode::tunnel, "1_", 0},
        {lookup_mode::tunnel, "_7_x", 6}, // leading delimiters are skipped
        {lookup_mode::tunnel, "7abc_x", 6},
        {lookup_mode::tunnel, " 7", 6},
        {lookup_mode::tunnel, "+7", 6},
        {lookup_mode::tunnel, "7:1", 6},
        {lookup_mode::tunnel, "2", no_row},
        {lookup_mode::tunnel, "0", no_row},
        {lookup_mode::tunnel, "abc", no_row},
        {lookup_mode::if_index, "12", 2},
        {lookup_mode::if_index, "12_anything_else", 2},
        {lookup_mode::if_index, "101abc_2", 0},
        {lookup_mode::if_index, "-1979711487", 6},
        {lookup_mode::if_index, "2315255809", no_row}, // beyond 32 bits signed: clamped
        {lookup_mode::if_index, "3", no_row},
        {lookup_mode::if_index_only, "12", 2},
        {lookup_mode::if_index_only, "12abc", 2},
        {lookup_mode::if_index_only, "12_101", 2},
        {lookup_mode::if_index_only, "_12", no_row}, // no token: the text as it stands
        {lookup_mode::if_index_only, "-1979711487", 6},
        {lookup_mode::if_index_only, "", no_row},
        {lookup_mode::ethernet_if_index, "22", 2},
        {lookup_mode::ethernet_if_index, "22:3", 2},
        {lookup_mode::ethernet_if_index, "22_3", 2},
        {lookup_mode::ethernet_if_index, ":_22:", 2},
        {lookup_mode::ethernet_if_index, "-2097152000", 6},
        {lookup_mode::ethernet_if_index, "12", no_row},
        {lookup_mode::entity, "3", 0}, // the first of the profile's links
        {lookup_mode::entity, "7", 6},
        {lookup_mode::entity, "7abc", 6},
        {lookup_mode::entity, "_7", no_row},
        {lookup_mode::entity, "5", no_row},
        {lookup_mode::peer_address, "0_10.1.1.2", 0},
        {lookup_mode::peer_address, "0_10.1.1.3", 6},
        {lookup_mode::peer_address, "0_2001:DB8::ab", 2}, // without regard to case
        {lookup_mode::peer_address, "0_10.1.1.2_more", 0},
        {lookup_mode::peer_address, "00_10.1.1.2", 0},
        {lookup_mode::peer_address, "abc_10.1.1.2", 0}, // no digits read as 0
        {lookup_mode::peer_address, "0_10.1.1", no_row},
        {lookup_mode::peer_address, "1_10.1.1.2", no_row},
        {lookup_mode::peer_if_index, "0_12", 2},
        {lookup_mode::peer_if_index, "0_12abc_more", 2},
        {lookup_mode::peer_if_index, "0_-1979711487", 6},
        {lookup_mode::peer_if_index, "0_13", no_row},
        {lookup_mode::peer_if_index, "1_12", no_row},
    };
    for (const row& one : rows)
        EXPECT_EQ(found(one.key, one.mode), one.link_index)
            << "mode " << static_cast<int>(one.mode) << ", key \"" << one.key << '"';
}

TEST_F(FcipLookup, ModesAreNumberedAsKeysOfOtherClassesExpect) {
    EXPECT_EQ(static_cast<int>(lookup_mode::tunnel), 1);
    EXPECT_EQ(static_cast<int>(lookup_mode::if_index), 2);
    EXPECT_EQ(static_cast<int>(lookup_mode::if_index_only), 3);
    EXPECT_EQ(static_cast<int>(lookup_mode::ethernet_if_index), 4);
    EXPECT_EQ(static_cast<int>(lookup_mode::entity), 5);
    EXPECT_EQ(static_cast<int>(lookup_mode::peer_address), 6);
    EXPECT_EQ(static_cast<int>(lookup_mode::peer_if_index), 7);
}

TEST_F(FcipLookup, KeyThatLacksATokenOfItsModeIsMinusOne) {
    struct row {
        lookup_mode mode;
        const char* key;
        std::string trace; ///< behind "Entering"
    };
    const row rows[] = {
        {lookup_mode::tunnel, "", ""},
        {lookup_mode::tunnel, "___", ""},
        {lookup_mode::if_index, "", location(76)},
        {lookup_mode::if_index, "_", location(76)},
        {lookup_mode::ethernet_if_index, "", location(113)},
        {lookup_mode::ethernet_if_index, ":_:", location(113)},
        {lookup_mode::peer_address, "", location(151)},
        {lookup_mode::peer_address, "0", location(151) + "if_index : 0 \n" + location(165)},
        {lookup_mode::peer_address, "0_", location(151) + "if_index : 0 \n" + location(165)},
        {lookup_mode::peer_if_index, "", location(193)},
        {lookup_mode::peer_if_index, "0", location(193) + "if_index : 0 \n"},
        {lookup_mode::peer_if_index, "0__", location(193) + "if_index : 0 \n"},
    };
    for (const row& one : rows) {
        SCOPED_TRACE("mode " + std::to_string(static_cast<int>(one.mode)) + ", key \"" + one.key + '"');
        switchsim::clear_counts();
        EXPECT_EQ(find(one.key, one.mode), -1);
        EXPECT_EQ(trace, entering + one.trace);
        EXPECT_EQ(destination_.link_index, no_row);
        EXPECT_EQ(calls("fcip_get_link_entry"), 1u) << "the first row decides";
    }
}

TEST_F(FcipLookup, FirstTokenOtherThan0WalksToTheEndWithoutAMatch) {
    for (const char* key : {"1", "1_", "1_10.1.1.2", "-1_12"}) {
        switchsim::clear_counts();
        EXPECT_EQ(found(key, lookup_mode::peer_address), no_row) << key;
        EXPECT_EQ(found(key, lookup_mode::peer_if_index), no_row) << key;
        EXPECT_EQ(calls("fcip_get_link_entry"), 8u) << key;
    }
}

// ---------------------------------------------------------------------------------------------- traces

TEST_F(FcipLookup, TraceOfMode1) {
    find("3_x", lookup_mode::tunnel);
    EXPECT_EQ(trace, entering + "tunnel id : 3 \ntunnel id : 3 \nEntry Found" + exiting);
}

TEST_F(FcipLookup, TraceOfMode2) {
    find("12_x", lookup_mode::if_index);
    EXPECT_EQ(trace,
              entering + location(76) + "if_index : 12 \n" + location(76) + "if_index : 12 \nEntry Found" + exiting);
}

TEST_F(FcipLookup, TraceOfMode3) {
    find("12", lookup_mode::if_index_only);
    EXPECT_EQ(trace, entering + "if_index : 12 \nif_index : 12 \nEntry Found" + exiting);
}

TEST_F(FcipLookup, TraceOfMode4) {
    find("22:x", lookup_mode::ethernet_if_index);
    EXPECT_EQ(trace, entering + location(113) + "if_index : 22 \n ret_entry->vrkFcipLinkExtEthIfIndex 11 \n" +
                         location(113) + "if_index : 22 \n ret_entry->vrkFcipLinkExtEthIfIndex 22 \nEntry Found" +
                         exiting);
}

TEST_F(FcipLookup, TraceOfMode4PrintsIndexesSigned) {
    find("-2097152000", lookup_mode::ethernet_if_index);
    EXPECT_NE(trace.find("if_index : -2097152000 \n ret_entry->vrkFcipLinkExtEthIfIndex -2097152000 \nEntry Found"),
              std::string::npos)
        << trace;
}

TEST_F(FcipLookup, TraceOfMode5) {
    find("7", lookup_mode::entity);
    EXPECT_EQ(trace, entering + "Entry Found" + exiting);
}

TEST_F(FcipLookup, TraceOfMode6) {
    find("0_2001:db8::ab", lookup_mode::peer_address);
    EXPECT_EQ(trace, entering + location(151) + "if_index : 0 \n" + location(170) + "ipstr: 10.1.1.2 \n" +
                         location(151) + "if_index : 0 \n" + location(170) + "ipstr: 2001:db8::ab \nEntry Found" +
                         exiting);
}

TEST_F(FcipLookup, TraceOfMode7) {
    find("0_12", lookup_mode::peer_if_index);
    EXPECT_EQ(trace, entering + location(193) + "if_index : 0 \nfcipifidx : 12 \n" + location(193) +
                         "if_index : 0 \nfcipifidx : 12 \nEntry Found" + exiting);
}

TEST_F(FcipLookup, TraceOfModes6And7WithAFirstTokenOtherThan0) {
    the_switch().links.erase({3, 2});
    for (const auto& [mode, line] : {std::pair{lookup_mode::peer_address, 151}, {lookup_mode::peer_if_index, 193}}) {
        const std::string row = location(line) + "if_index : 5 \n";
        find("5", mode);
        EXPECT_EQ(trace, entering + row + row + exiting);
    }
}

TEST_F(FcipLookup, TraceOfAKeyThatNamesNoRow) {
    find("99", lookup_mode::if_index_only);
    EXPECT_EQ(trace, entering + "if_index : 99 \nif_index : 99 \nif_index : 99 \n" + exiting);
}

TEST_F(FcipLookup, TraceOfMode4PrintsEachRowsOwnIndex) {
    the_switch().links.clear();
    std::string rows;
    std::uint32_t link_index = 0;
    for (const std::uint32_t if_index : {0u, 0u, 7u, 7u, 0u, 8u}) {
        link(3, link_index, link_index).ethernet_if_index = if_index;
        rows +=
            location(113) + "if_index : -1 \n ret_entry->vrkFcipLinkExtEthIfIndex " + std::to_string(if_index) + " \n";
        ++link_index;
    }
    find("-1:x", lookup_mode::ethernet_if_index);
    EXPECT_EQ(trace, entering + rows + exiting);
}

TEST_F(FcipLookup, TraceOfManyRowsIsWholeAndInOrder) {
    the_switch().links.clear();
    std::string rows;
    for (std::uint32_t index = 0; index < 1000; ++index) {
        link(3, index, index).ethernet_if_index = 100 + index;
        rows += location(113) + "if_index : -1 \n ret_entry->vrkFcipLinkExtEthIfIndex " + std::to_string(100 + index) +
                " \n";
    }
    find("-1:x", lookup_mode::ethernet_if_index);
    EXPECT_EQ(trace, entering + rows + exiting);
}

TEST_F(FcipLookup, UnknownModeMatchesNoRowAndPrintsNothingOfIt) {
    for (const int number : {0, 8, -1}) {
        EXPECT_EQ(found("3", static_cast<lookup_mode>(number)), no_row) << number;
        EXPECT_EQ(trace, entering + exiting) << number;
    }
}

// ---------------------------------------------------------------------------------------------- the walk

TEST_F(FcipLookup, WholeRowIsCopied) {
    ASSERT_EQ(found("7", lookup_mode::tunnel), 6u);
    EXPECT_EQ(std::memcmp(&destination_, &the_switch().links[{7, 6}], sizeof destination_), 0);
}

TEST_F(FcipLookup, WalkStopsAtTheFirstMatch) {
    link(9, 2, 12);
    found("3", lookup_mode::tunnel);
    EXPECT_EQ(destination_.entity_id, 3u);
    EXPECT_EQ(calls("fcip_get_link_entry"), 2u);
}

TEST_F(FcipLookup, EmptyTableAnswers0AndLeavesTheRowEvenForAShortKey) {
    the_switch().links.clear();
    for (int mode = 1; mode <= 7; ++mode) {
        for (const char* key : {"", "0", "3_x"}) {
            EXPECT_EQ(found(key, static_cast<lookup_mode>(mode)), no_row) << mode << ' ' << key;
            EXPECT_EQ(trace, entering + exiting) << mode << ' ' << key;
        }
    }
}

TEST_F(FcipLookup, FailedReadEndsTheWalk) {
    const std::string first_row_only = entering + "tunnel id : 3 \n" + exiting;
    for (const auto fault : test::read_faults) {
        switchsim::clear_faults();
        switchsim::inject("fcip_get_link_entry", fault, 2);
        EXPECT_EQ(found("3", lookup_mode::tunnel), no_row);
        EXPECT_EQ(trace, first_row_only);
    }
}

TEST_F(FcipLookup, KeyIsReadUpToItsFirst511Characters) {
    const std::string padding(510, '_');
    EXPECT_EQ(found(padding + "3", lookup_mode::tunnel), 2u);
    EXPECT_EQ(found(padding + "37", lookup_mode::tunnel), 2u) << "the 512th character is cut off";
    EXPECT_EQ(find(padding + "_3", lookup_mode::tunnel), -1) << "no token is left";
    const std::string blanks(509, ' ');
    for (const auto& [mode, number, link_index] :
         {std::tuple{lookup_mode::if_index_only, "12", 2u}, std::tuple{lookup_mode::entity, "07", 6u}}) {
        EXPECT_EQ(found(blanks + number, mode), link_index) << "the modes without tokens: up to the 511th";
        EXPECT_EQ(found(blanks + number + "0", mode), link_index) << "the 512th is cut off";
        EXPECT_EQ(found(blanks + "   " + number, mode), no_row) << "nothing but blanks is 0";
    }
}

} // namespace
} // namespace fcip
