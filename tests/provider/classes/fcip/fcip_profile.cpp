#include "provider/classes/fcip/fcip_profile.h"

#include "tests/provider/classes/fcip/fcip_class_test.h"
#include "tests/provider/classes/front_broker.h"

namespace test {

namespace {

class FcipProfile : public FcipClassTest {
  protected:
    FcipEntityEntry& profile(std::uint32_t id = 3) { return the_switch().profiles.at(id); }

    CMPIInstance* build(const FcipEntityEntry& row, const char** properties = nullptr) {
        return call(
            [&] { return fcip::fcip_profile_build_instance(test::made_up_class, name_space, &row, properties); });
    }

    CMPIObjectPath* path_of(const FcipEntityEntry& row) {
        return call([&] { return fcip::fcip_profile_fill_reference(test::made_up_class, name_space, &row); });
    }
};

const std::string instance_entry = entering("fcip_profile_build_instance");
const std::string instance_exit = exiting("fcip_profile_build_instance");

TEST_F(FcipProfile, InstanceHasItsPropertiesInOrder) {
    const Rows expected = {
        {"InstanceID", "string", "3"},
        {"Name", "string", "3"},
        {"Caption", "string", "3"},
        {"ElementName", "string", "3"},
        {"FcipEntityAddress", "string", "10.1.1.1"},
        {"FcipEntityTcpConnPort", "uint32", "3225"},
        {"FcipEntitySeqNumWrap", "boolean", "true"},
        {"FcipEntitySACKOption", "boolean", "true"},
        {"FcipEntityPHBSupport", "boolean", "false"},
    };
    EXPECT_EQ(properties(build(profile())), expected);
}

TEST_F(FcipProfile, IPv6ProfileHasItsAddressAndItsOwnFlags) {
    const Rows expected = {
        {"InstanceID", "string", "7"},
        {"Name", "string", "7"},
        {"Caption", "string", "7"},
        {"ElementName", "string", "7"},
        {"FcipEntityAddress", "string", "2001:db8::1"},
        {"FcipEntityTcpConnPort", "uint32", "3226"},
        {"FcipEntitySeqNumWrap", "boolean", "false"},
        {"FcipEntitySACKOption", "boolean", "false"},
        {"FcipEntityPHBSupport", "boolean", "true"},
    };
    EXPECT_EQ(properties(build(profile(7))), expected);
}

TEST_F(FcipProfile, PathHasOneKey) {
    const Rows expected = {{"InstanceID", "string", "3"}};
    EXPECT_EQ(keys(path_of(profile())), expected);
}

TEST_F(FcipProfile, Profile7WithAddress10_1_1_1AndPort3225) {
    profile(7).local_address = address("10.1.1.1");
    profile(7).listen_port = 3225;
    const CMPIInstance* instance = build(profile(7));
    for (const char* name : {"InstanceID", "Name", "Caption", "ElementName"})
        EXPECT_EQ(property(instance, name), "string 7") << name;
    EXPECT_EQ(property(instance, "FcipEntityAddress"), "string 10.1.1.1");
    EXPECT_EQ(property(instance, "FcipEntityTcpConnPort"), "uint32 3225");
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
            EXPECT_EQ(property(build(row), flag.property), word == 1 ? "boolean true" : "boolean false") << word;
        }
    }
}

TEST_F(FcipProfile, EntityId123456789IsCutTo8DigitsInThePathOnly) {
    profile().entity_id = 123456789;
    EXPECT_EQ(key(path_of(profile()), "InstanceID"), "string 12345678");
    EXPECT_EQ(property(build(profile()), "InstanceID"), "string 123456789");
}

TEST_F(FcipProfile, EntityIdIsPrintedSigned) {
    profile().entity_id = 0xFFFFFFFE;
    EXPECT_EQ(key(path_of(profile()), "InstanceID"), "string -2");
    EXPECT_EQ(property(build(profile()), "InstanceID"), "string -2");
}

TEST_F(FcipProfile, LongestAddressIsNotCut) {
    const char* longest = "2001:db8:1111:2222:3333:4444:5555:6666";
    profile().local_address = address(longest);
    EXPECT_EQ(property(build(profile()), "FcipEntityAddress"), std::string("string ") + longest);
}

TEST_F(FcipProfile, InstanceTracesTheId) {
    build(profile());
    EXPECT_EQ(trace, instance_entry + " wwn_str 3 \n" + instance_exit);
}

TEST_F(FcipProfile, PathTracesNothing) {
    path_of(profile());
    EXPECT_EQ(trace, "");
}

TEST_F(FcipProfile, InstanceHasTheSwitchAsHostAndThePathHasNone) {
    EXPECT_EQ(origin(build(profile())), "ZANTO_AskedFor root/cimv2 switch-a");
    EXPECT_EQ(origin(path_of(profile())), "ZANTO_AskedFor root/cimv2 -");
}

TEST_F(FcipProfile, ASwitchWithoutNameGivesTheInstanceAnEmptyHost) {
    the_switch().has_name = false;
    EXPECT_EQ(origin(build(profile())), "ZANTO_AskedFor root/cimv2 ");
}

TEST_F(FcipProfile, BothAreTheSameWhenTheBrokerReportsErrors) {
    const Rows all_properties = properties(build(profile()));
    const Rows all_keys = keys(path_of(profile()));
    const FrontBroker front(FrontBroker::makes::objects_that_report_errors);
    EXPECT_EQ(properties(build(profile())), all_properties);
    EXPECT_EQ(FrontBroker::errors_reported(), all_properties.size());
    EXPECT_EQ(keys(path_of(profile())), all_keys);
    EXPECT_EQ(FrontBroker::errors_reported(), all_properties.size() + all_keys.size());
}

TEST_F(FcipProfile, InstanceIsFilteredOnceWithAnEmptyListOfKeys) {
    const FrontBroker front;
    build(profile());
    EXPECT_EQ(FrontBroker::filter_keys(), std::vector<int>{0});
}

TEST_F(FcipProfile, TheRowIsTakenAsItIsAndOnlyTheSwitchNameAndTheAddressAreAskedFor) {
    build(profile());
    path_of(profile());
    EXPECT_EQ(switchsim::recorded_calls(), (std::vector<std::string>{"getCSName", "ip_addr_to_str"}));
}

TEST_F(FcipProfile, PropertyListFilters) {
    const char* wanted[] = {"Caption", "FcipEntityPHBSupport", nullptr};
    const Rows expected = {{"Caption", "string", "3"}, {"FcipEntityPHBSupport", "boolean", "false"}};
    EXPECT_EQ(properties(build(profile(), wanted)), expected);
}

TEST_F(FcipProfile, WithoutPathTheInstanceIsNullAndTheExitTraced) {
    scope.fail_object(1);
    EXPECT_EQ(build(profile()), nullptr);
    EXPECT_EQ(trace, instance_entry + instance_exit);
}

TEST_F(FcipProfile, WithAPathWithoutHandleTheInstanceIsNullAndTheExitTraced) {
    const HandlelessBroker broker(HandlelessBroker::Objects::paths);
    EXPECT_EQ(build(profile()), nullptr);
    EXPECT_EQ(trace, instance_entry + instance_exit);
}

TEST_F(FcipProfile, ANullInstanceIsReturnedWithoutTheExitTrace) {
    scope.fail_object(2);
    EXPECT_EQ(build(profile()), nullptr);
    EXPECT_EQ(trace, instance_entry);
}

TEST_F(FcipProfile, AnInstanceWithoutHandleIsReturnedAsItIsWithoutTheExitTrace) {
    const HandlelessBroker broker(HandlelessBroker::Objects::instances);
    EXPECT_EQ(build(profile()), &HandlelessBroker::instance);
    EXPECT_EQ(trace, instance_entry);
}

TEST_F(FcipProfile, WithoutPathThePathIsNull) {
    scope.fail_object(1);
    EXPECT_EQ(path_of(profile()), nullptr);
}

} // namespace

} // namespace test
