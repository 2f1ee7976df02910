#include "provider/classes/fcip/fcip_profile.h"

#include "tests/support/class_test.h"

namespace test {

namespace {

class FcipProfile : public ClassTest {
  protected:
    CMPIInstance* build(const FcipEntityEntry& row) {
        return call([&] { return fcip::fcip_profile_build_instance(made_up_class, name_space, &row, nullptr); });
    }

    CMPIObjectPath* path_of(const FcipEntityEntry& row) {
        return call([&] { return fcip::fcip_profile_fill_reference(made_up_class, name_space, &row); });
    }
};

TEST_F(FcipProfile, Ipv6ProfileHasItsAddressAndItsOwnFlags) {
    const CMPIInstance* instance = build(profile(7));
    EXPECT_EQ(value_of(instance, "FcipEntityAddress"), "2001:db8::1");
    EXPECT_EQ(value_of(instance, "FcipEntitySeqNumWrap"), "false");
    EXPECT_EQ(value_of(instance, "FcipEntitySACKOption"), "false");
    EXPECT_EQ(value_of(instance, "FcipEntityPHBSupport"), "true");
}

TEST_F(FcipProfile, Profile7WithAddress10_1_1_1AndPort3225) {
    profile(7).local_address = address("10.1.1.1");
    profile(7).listen_port = 3225;
    const CMPIInstance* instance = build(profile(7));
    for (const char* name : {"InstanceID", "Name", "Caption", "ElementName"})
        EXPECT_EQ(value_of(instance, name), "7") << name;
    EXPECT_EQ(value_of(instance, "FcipEntityAddress"), "10.1.1.1");
    EXPECT_EQ(value_of(instance, "FcipEntityTcpConnPort"), "3225");
}

TEST_F(FcipProfile, OnlyTheWord1SetsAFlag) {
    const struct {
        std::uint32_t FcipEntityEntry::*word;
        const char* property;
    } flags[] = {
        {&FcipEntityEntry::sequence_number_wrap, "FcipEntitySeqNumWrap"},
        {&FcipEntityEntry::sack, "FcipEntitySACKOption"},
        {&FcipEntityEntry::phb_support, "FcipEntityPHBSupport"},
    };
    for (const auto& flag : flags) {
        SCOPED_TRACE(flag.property);
        for (const std::uint32_t word : {0u, 1u, 2u, 0x101u, 0x01000000u, 0xFFFFFFFFu}) {
            FcipEntityEntry row{};
            row.*flag.word = word;
            EXPECT_EQ(value_of(build(row), flag.property), word == 1 ? "true" : "false") << word;
        }
    }
}

TEST_F(FcipProfile, EntityId123456789IsCutTo8DigitsInThePathOnly) {
    profile().entity_id = 123456789;
    EXPECT_EQ(value_of(path_of(profile()), "InstanceID"), "12345678");
    EXPECT_EQ(value_of(build(profile()), "InstanceID"), "123456789");
}

TEST_F(FcipProfile, EntityIdIsPrintedSigned) {
    profile().entity_id = 0xFFFFFFFE;
    EXPECT_EQ(value_of(path_of(profile()), "InstanceID"), "-2");
    EXPECT_EQ(value_of(build(profile()), "InstanceID"), "-2");
}

TEST_F(FcipProfile, LongestAddressIsNotCut) {
    const char* longest = "2001:db8:1111:2222:3333:4444:5555:6666";
    profile().local_address = address(longest);
    EXPECT_EQ(value_of(build(profile()), "FcipEntityAddress"), longest);
}

TEST_F(FcipProfile, InstanceTracesTheId) {
    build(profile());
    EXPECT_EQ(trace,
              entering("fcip_profile_build_instance") + " wwn_str 3 \n" + exiting("fcip_profile_build_instance"));
}

TEST_F(FcipProfile, PathTracesNothing) {
    path_of(profile());
    EXPECT_EQ(trace, "");
}

} // namespace

} // namespace test
