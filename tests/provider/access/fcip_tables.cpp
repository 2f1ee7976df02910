// The FCIP service's tables: single reads, the walks, the profile lookups and the profile interface list.
#include "provider/access/fcip_tables.h"
#include "tests/provider/access/access_test.h"

namespace fcip {
namespace {

using switchsim::Fault;

/// A link row that is in no table.
FcipLinkEntry row_of(std::uint32_t entity_id, std::uint32_t link_index) {
    FcipLinkEntry row{};
    row.entity_id = entity_id;
    row.link_index = link_index;
    return row;
}

class FcipTables : public AccessTest {
  protected:
    FcipEntityEntry profile_{};
    FcipLinkEntry link_{};

    /// What walk_links hands over, as "entity/index" words.
    std::string walked_links(walk answer = walk::go_on) {
        std::string rows;
        left_row_ = call([&] {
            return walk_links(mts_q, [&](const FcipLinkEntry& link) {
                rows += std::to_string(link.entity_id) + "/" + std::to_string(link.link_index) + " ";
                return answer;
            });
        });
        return rows;
    }

    std::string walked_entities(int patience = 0) {
        std::string rows;
        left_row_ = call([&] {
            return walk_entities(
                mts_q,
                [&](const FcipEntityEntry& entity) {
                    rows += std::to_string(entity.entity_id) + " ";
                    return walk::go_on;
                },
                patience);
        });
        return rows;
    }

    bool left_row_ = false;
};

// ---------------------------------------------------------------------------------------------- single reads

TEST_F(FcipTables, ReadThatSucceedsHoldsItsRow) {
    profile(5).listen_port = 3225;
    link(5, 1, 99);
    call([] {
        const auto entity = fetch_entity(mts_q, platform_exact, 5);
        EXPECT_TRUE(entity);
        EXPECT_EQ(entity.row->listen_port, 3225u);
        const auto row = fetch_link(mts_q, platform_exact, {5, 1});
        EXPECT_TRUE(row);
        EXPECT_EQ(row.row->link_if_index, 99u);
        EXPECT_EQ(profile_of(*row.row)->listen_port, 3225u);
    });
    EXPECT_EQ(trace, "");
}

TEST_F(FcipTables, ReadThatFailsOrBringsNoRowCountsAsFailed) {
    profile(5);
    link(5, 1);
    the_switch().link_errors[{5, 1}] = {};
    for (const auto fault : test::read_faults) {
        switchsim::clear_faults();
        for (const char* function : {"fcip_get_entity_entry", "fcip_get_link_entry", "fcip_snmp_get_link_errors"})
            switchsim::inject(function, fault);
        call([&] {
            const FcipLinkEntry row = row_of(5, 1);
            EXPECT_FALSE(fetch_entity(mts_q, platform_exact, 5));
            EXPECT_FALSE(fetch_link(mts_q, platform_exact, {5, 1}));
            EXPECT_EQ(profile_of(row), nullptr);
            const auto errors = fetch_link_errors(row);
            EXPECT_FALSE(errors);
            EXPECT_EQ(errors.row != nullptr, fault == Fault::fail_leaving_record);
        });
    }
}

TEST_F(FcipTables, LinkErrorsAreReadByTheLinksKey) {
    the_switch().link_errors[{5, 1}].bytes[79] = 42;
    call([&] {
        const auto errors = fetch_link_errors(row_of(5, 1));
        ASSERT_TRUE(errors);
        EXPECT_EQ(errors.row->bytes[79], 42);
        EXPECT_FALSE(fetch_link_errors(row_of(1, 5)));
    });
}

// ---------------------------------------------------------------------------------------------- walks

TEST_F(FcipTables, LinksAreWalkedByEntityThenIndexFromKey0) {
    link(7, 6);
    link(3, 2);
    link(3, 0);
    link(0xFFFFFFFF, 0);
    link(3, 0xFFFFFFFF);
    EXPECT_EQ(walked_links(), "3/0 3/2 3/4294967295 7/6 4294967295/0 ");
    EXPECT_FALSE(left_row_);
    EXPECT_EQ(calls("fcip_get_link_entry"), 6u);
}

TEST_F(FcipTables, WalkEndsWhenTheVisitorSaysSo) {
    link(3, 0);
    link(3, 1);
    EXPECT_EQ(walked_links(walk::stop), "3/0 ");
    EXPECT_EQ(calls("fcip_get_link_entry"), 1u);
}

TEST_F(FcipTables, LinkWalkTellsWhetherTheFailedReadLeftARow) {
    link(3, 0);
    link(3, 1);
    link(3, 2);
    for (const auto fault : test::read_faults) {
        switchsim::clear_faults();
        switchsim::inject("fcip_get_link_entry", fault, 3);
        EXPECT_EQ(walked_links(), "3/0 3/1 ");
        EXPECT_EQ(left_row_, fault == Fault::fail_leaving_record);
    }
}

TEST_F(FcipTables, EntitiesAreWalkedByIdFromKey0) {
    profile(0xFFFFFFFF);
    profile(1);
    profile(30);
    EXPECT_EQ(walked_entities(), "1 30 4294967295 ");
    EXPECT_FALSE(left_row_);
    EXPECT_EQ(calls("fcip_get_entity_entry"), 4u);
}

TEST_F(FcipTables, EntityWalkTellsWhetherTheFailedReadLeftARow) {
    profile(1);
    profile(2);
    for (const auto fault : test::read_faults) {
        switchsim::clear_faults();
        switchsim::inject("fcip_get_entity_entry", fault, 2);
        EXPECT_EQ(walked_entities(), "1 ");
        EXPECT_EQ(left_row_, fault == Fault::fail_leaving_record);
    }
}

TEST_F(FcipTables, PatientWalkRepeatsAReadWithoutARowWithTheSameKey) {
    profile(1);
    profile(2);
    for (int call_number = 2; call_number <= 11; ++call_number)
        switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record, static_cast<unsigned>(call_number));
    EXPECT_EQ(walked_entities(patient), "1 2 ");
    EXPECT_EQ(calls("fcip_get_entity_entry"), 13u);
}

TEST_F(FcipTables, PatienceBeginsAnewWithEachRow) {
    profile(1);
    profile(2);
    for (unsigned call_number = 1; call_number <= 60; ++call_number) {
        switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record, call_number);
        switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record, 61 + call_number);
    }
    EXPECT_EQ(walked_entities(patient), "1 2 ");
    EXPECT_EQ(calls("fcip_get_entity_entry"), 123u);
}

TEST_F(FcipTables, PatientWalkEndsAfter100RepetitionsWithoutProgress) {
    profile(1);
    switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record);
    EXPECT_EQ(walked_entities(patient), "");
    EXPECT_EQ(calls("fcip_get_entity_entry"), 101u);
}

TEST_F(FcipTables, GetAllLinkEntriesReadsTheWholeTableAndReturns0) {
    link(1, 1);
    link(1, 2);
    EXPECT_EQ(call([] { return get_all_link_entries(mts_q); }), 0);
    EXPECT_EQ(calls("fcip_get_link_entry"), 3u);
    switchsim::inject("fcip_get_link_entry", Fault::fail_leaving_record);
    EXPECT_EQ(call([] { return get_all_link_entries(mts_q); }), 0);
    EXPECT_EQ(trace, "");
}

// ---------------------------------------------------------------------------------------------- profile lookups

TEST_F(FcipTables, ProfileOfAKeyTextMatchesTheIdsTextExactly) {
    profile(5).listen_port = 55;
    profile(7).listen_port = 77;
    profile(0x80000001).listen_port = 88;
    const auto port_of = [&](const char* key) {
        profile_.listen_port = 0;
        const int found = call([&] { return get_fcip_entity_from_key_value(mts_q, key, &profile_); });
        EXPECT_EQ(found, profile_.listen_port != 0) << key;
        EXPECT_EQ(trace, "") << key;
        return profile_.listen_port;
    };
    EXPECT_EQ(port_of("5"), 55u);
    EXPECT_EQ(port_of("7"), 77u);
    EXPECT_EQ(port_of("-2147483647"), 88u) << "ids print signed";
    for (const char* key : {"5x", "07", "7 ", " 7", "", "2147483649", "6"})
        EXPECT_EQ(port_of(key), 0u) << key;
}

TEST_F(FcipTables, ProfileOfAKeyTextWalksOnAfterAMatch) {
    profile(5);
    profile(7);
    EXPECT_EQ(call([&] { return get_fcip_entity_from_key_value(mts_q, "5", &profile_); }), 1);
    EXPECT_EQ(calls("fcip_get_entity_entry"), 3u);
}

TEST_F(FcipTables, ProfileOfAKeyTextRepeatsReadsThatBringNoRow) {
    profile(5);
    switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record, 1);
    EXPECT_EQ(call([&] { return get_fcip_entity_from_key_value(mts_q, "5", &profile_); }), 1);
    EXPECT_EQ(profile_.entity_id, 5u);
    switchsim::clear_counts();
    switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record);
    EXPECT_EQ(call([&] { return get_fcip_entity_from_key_value(mts_q, "5", &profile_); }), 0);
    EXPECT_EQ(calls("fcip_get_entity_entry"), 101u);
}

TEST_F(FcipTables, ProfileOfAKeyTextFailsWithTheTable) {
    profile(5);
    switchsim::inject("fcip_get_entity_entry", Fault::fail_leaving_record);
    EXPECT_EQ(call([&] { return get_fcip_entity_from_key_value(mts_q, "5", &profile_); }), 0);
    EXPECT_EQ(profile_.entity_id, 0u);
}

TEST_F(FcipTables, ProfileOfADecimalKeyTakesTheFirstMatchAndStops) {
    profile(5).listen_port = 55;
    profile(7).listen_port = 77;
    const auto port_of = [&](const char* key) {
        profile_.listen_port = 0;
        EXPECT_EQ(call([&] { return get_fcip_entity_from(key, &profile_); }), 0) << key;
        return profile_.listen_port;
    };
    EXPECT_EQ(port_of("5"), 55u);
    EXPECT_EQ(trace, "Entering get_fcip_entity_from\nMatch Found Exiting get_fcip_entity_from\n");
    EXPECT_EQ(calls("fcip_get_entity_entry"), 1u);
    EXPECT_EQ(port_of("07x"), 77u);
    EXPECT_EQ(port_of("6"), 0u);
    EXPECT_EQ(trace, "Entering get_fcip_entity_from\nExiting get_fcip_entity_from\n");
    EXPECT_EQ(port_of(""), 0u);
}

TEST_F(FcipTables, ProfileByIdEndsAtAReadThatFailsOrBringsNoRow) {
    profile(5);
    profile(7);
    for (const auto fault : test::read_faults) {
        SCOPED_TRACE(static_cast<int>(fault));
        switchsim::clear_faults();
        switchsim::clear_counts();
        switchsim::inject("fcip_get_entity_entry", fault, 2);
        profile_.listen_port = 1234;
        EXPECT_EQ(call([&] { return get_fcip_entity_from("7", &profile_); }), 0);
        EXPECT_EQ(profile_.listen_port, 1234u);
        EXPECT_EQ(calls("fcip_get_entity_entry"), 2u) << "not repeated";
        EXPECT_EQ(trace, "Entering get_fcip_entity_from\nExiting get_fcip_entity_from\n");
    }
}

TEST_F(FcipTables, ProfileOfANullKeyIsMinusOneAtOnce) {
    EXPECT_EQ(call([&] { return get_fcip_entity_from(nullptr, &profile_); }), -1);
    EXPECT_EQ(trace, "");
    EXPECT_EQ(calls("fcip_get_entity_entry"), 0u);
}

TEST_F(FcipTables, ProfileOfALinkPrintsErrorAfterASuccessAndReturns0) {
    profile(5).listen_port = 55;
    const FcipLinkEntry row = row_of(5, 0);
    EXPECT_EQ(call([&] { return get_profile_from_link_entry(&row, &profile_); }), 0);
    EXPECT_EQ(profile_.listen_port, 55u);
    EXPECT_EQ(trace, "get_profile_from_link_entry : Error\n");
}

TEST_F(FcipTables, UnreadableProfileOfALinkIsPrintedIfItLeftARow) {
    profile(5);
    const FcipLinkEntry row = row_of(5, 0);
    for (const auto fault : test::read_faults) {
        switchsim::clear_faults();
        switchsim::inject("fcip_get_entity_entry", fault);
        profile_.listen_port = 1234;
        EXPECT_EQ(call([&] { return get_profile_from_link_entry(&row, &profile_); }), -1);
        EXPECT_EQ(trace, fault == Fault::fail_leaving_record ? "get_profile_from_link_entry : Error\n" : "");
        EXPECT_EQ(profile_.listen_port, 1234u);
    }
}

TEST_F(FcipTables, LinkOfALinkIndexIsTheFirstWhateverItsProfile) {
    link(3, 4, 34);
    link(7, 4, 74);
    link(7, 5, 75);
    EXPECT_EQ(call([&] { return get_link_from_link_index(mts_q, 4, &link_); }), 0);
    EXPECT_EQ(link_.link_if_index, 34u);
    EXPECT_EQ(calls("fcip_get_link_entry"), 1u);
    EXPECT_EQ(call([&] { return get_link_from_link_index(mts_q, 5, &link_); }), 0);
    EXPECT_EQ(link_.link_if_index, 75u);
    EXPECT_EQ(call([&] { return get_link_from_link_index(mts_q, 6, &link_); }), -1);
    EXPECT_EQ(link_.link_if_index, 75u) << "untouched";
    EXPECT_EQ(trace, "");
}

TEST_F(FcipTables, LinkOfALinkIndexFailsWithTheTable) {
    link(3, 4);
    for (const auto fault : test::read_faults) {
        switchsim::clear_faults();
        switchsim::inject("fcip_get_link_entry", fault);
        EXPECT_EQ(call([&] { return get_link_from_link_index(mts_q, 4, &link_); }), -1);
    }
}

// ---------------------------------------------------------------------------------------------- interface list

TEST_F(FcipTables, InterfacesOfAProfileAreThoseOfItsLinks) {
    profile(3);
    profile(4);
    link(3, 0, 101);
    link(3, 2, 0x8A000001);
    link(7, 6, 103);
    call([] {
        const interface_list list = fcip_get_ifs_for_this_profile(3, mts_q);
        ASSERT_TRUE(list);
        ASSERT_EQ(list.count, 2u);
        EXPECT_EQ(list[0], 101u);
        EXPECT_EQ(list[1], 0x8A000001u);
        const interface_list none = fcip_get_ifs_for_this_profile(4, mts_q);
        EXPECT_TRUE(none);
        EXPECT_EQ(none.count, 0u);
    });
    EXPECT_EQ(trace, "");
}

TEST_F(FcipTables, InterfaceListThatIsMissingIsNull) {
    profile(3);
    call([] { EXPECT_FALSE(fcip_get_ifs_for_this_profile(99, mts_q)); });
    for (const auto fault : {Fault::fail, Fault::succeed_without_record, Fault::no_reply}) {
        switchsim::clear_faults();
        switchsim::inject("fcip_send_recv_with_mts_q", fault);
        call([] { EXPECT_FALSE(fcip_get_ifs_for_this_profile(3, mts_q)); });
    }
}

TEST_F(FcipTables, StatusOfTheInterfaceListIsNotExamined) {
    profile(3);
    link(3, 0, 101);
    switchsim::inject("fcip_send_recv_with_mts_q", Fault::fail_leaving_record);
    call([] {
        const interface_list list = fcip_get_ifs_for_this_profile(3, mts_q);
        EXPECT_TRUE(list) << "the reply counts, not the result";
        EXPECT_EQ(list.count, 0u);
    });
}

TEST_F(FcipTables, ShortInterfaceListIsCutToWhatTheReplyHolds) {
    profile(3);
    for (std::uint32_t index = 0; index < 3; ++index)
        link(3, index, 101 + index);
    for (const int size : {0, 1, 3, 4, 7, 8, 11, 12, 16}) {
        SCOPED_TRACE(size);
        switchsim::clear_faults();
        switchsim::inject("fcip_send_recv_with_mts_q", Fault::short_reply, switchsim::every_call, size);
        call([&] {
            const interface_list list = fcip_get_ifs_for_this_profile(3, mts_q);
            ASSERT_EQ(static_cast<bool>(list), size >= 4);
            EXPECT_EQ(list.count, size < 4 ? 0u : static_cast<std::uint32_t>(size) / 4 - 1);
            for (std::uint32_t position = 0; position < list.count; ++position)
                EXPECT_EQ(list[position], 101 + position);
        });
    }
}

} // namespace
} // namespace fcip
