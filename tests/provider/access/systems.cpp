// Which system an object belongs to: VSAN system names, logical computer systems, the switch's name and WWN.
#include "provider/access/systems.h"
#include "provider/common/results.h"
#include "tests/provider/access/access_test.h"

#include <cstring>

namespace fcip {
namespace {

using switchsim::Fault;
using test::Rows;

constexpr std::uint32_t fcip_if_index = 5;

class Systems : public AccessTest {
  protected:
    void SetUp() override {
        AccessTest::SetUp();
        the_switch().name = "switch-a";
        the_switch().wwn = {0x20, 0, 0, 0x00, 0x5e, 0xaa, 0, 1};
        the_switch().ports[fcip_if_index].vsan_id = 20;
        the_switch().vsans[20] = {"VSAN0020", "201400005EAA0001"};
        std::memset(buffer_, 'x', sizeof buffer_);
    }

    int get_wwn(std::uint32_t index = fcip_if_index) {
        return call([&] { return get_vsan_wwn(index, buffer_); });
    }

    CMPIObjectPath* new_path_object() { return new_path("root/cimv2", test::made_up_class); }

    char buffer_[100];
};

// ---------------------------------------------------------------------------------------------- VSAN system names

TEST_F(Systems, VsanSystemNameIsTheAdministrativeDomainKey) {
    EXPECT_EQ(get_wwn(), 0);
    EXPECT_STREQ(buffer_, "201400005EAA0001");
    EXPECT_EQ(buffer_[20], 'x') << "twenty bytes are written";
    EXPECT_EQ(trace, "");
}

TEST_F(Systems, KeyOf20CharactersIsCopiedWithoutATerminator) {
    the_switch().vsans[20].domain = "12345678901234567890";
    EXPECT_EQ(get_wwn(), 0);
    EXPECT_EQ(std::string(buffer_, 21), "12345678901234567890x");
    std::memset(buffer_, 0, sizeof buffer_);
    get_wwn();
    EXPECT_STREQ(buffer_, "12345678901234567890") << "a cleared buffer yields the 20 characters";
}

TEST_F(Systems, LongerKeyIsCutTo20Characters) {
    the_switch().vsans[20].domain = "123456789012345678901234567890";
    EXPECT_EQ(get_wwn(), 0);
    EXPECT_EQ(std::string(buffer_, 21), "12345678901234567890x");
}

TEST_F(Systems, UnreadablePortGivesMinusOneAndLeavesTheBuffer) {
    for (const auto fault : {Fault::fail, Fault::fail_leaving_record}) {
        switchsim::clear_faults();
        switchsim::inject("pm_cim_get_port_info", fault);
        EXPECT_EQ(get_wwn(), -1);
        EXPECT_EQ(trace, "error : pm_cim_get_port_info ");
        EXPECT_EQ(buffer_[0], 'x');
    }
}

TEST_F(Systems, NullPortRecordGivesMinusOneAndPrintsNothing) {
    switchsim::inject("pm_cim_get_port_info", Fault::succeed_without_record);
    EXPECT_EQ(get_wwn(), -1);
    EXPECT_EQ(trace, "");
    EXPECT_EQ(buffer_[0], 'x');
}

TEST_F(Systems, UnreadableDomainGivesMinusOneAndNullInTheBuffer) {
    the_switch().vsans[20].domain = std::nullopt;
    EXPECT_EQ(get_wwn(), -1);
    EXPECT_EQ(trace, "error : dm_cim_get_dmEntry ");
    EXPECT_STREQ(buffer_, "NULL");
    EXPECT_EQ(buffer_[5], 'x');
}

TEST_F(Systems, DomainKeyThatCannotBeHadLeavesAnEmptyName) {
    switchsim::inject("vsan_cim_get_vsan_admindomain_key", Fault::fail);
    EXPECT_EQ(get_wwn(), 0) << "the key's status is not examined";
    EXPECT_STREQ(buffer_, "");
}

TEST_F(Systems, SystemNameTextIsWhateverIsLeft) {
    const auto text = [&](std::uint32_t index) {
        return std::string(call([&] { return vsan_system_name(index); }).data());
    };
    EXPECT_EQ(text(fcip_if_index), "201400005EAA0001");
    EXPECT_EQ(text(99), "");
    the_switch().vsans[20].domain = std::nullopt;
    EXPECT_EQ(text(fcip_if_index), "NULL");
}

TEST_F(Systems, SystemNameKeyTakesTheFallbackForAMissingName) {
    const auto key = [&](std::uint32_t index) {
        CMPIObjectPath* path = new_path_object();
        call([&] { add_system_name_key(path, index, "Unknown"); });
        return keys(path);
    };
    EXPECT_EQ(key(fcip_if_index), (Rows{{"SystemName", "string", "201400005EAA0001"}}));
    EXPECT_EQ(key(99), (Rows{{"SystemName", "string", "Unknown"}}));
    the_switch().vsans[20].domain = std::nullopt;
    EXPECT_EQ(key(fcip_if_index), (Rows{{"SystemName", "string", "Unknown"}}));
}

// ---------------------------------------------------------------------------------------------- logical systems

/// The instance and the path are made alike; each test looks at both.
class LogicalSystems : public Systems {
  protected:
    CMPIInstance* instance(std::uint32_t index = fcip_if_index, const char** properties = nullptr) {
        return call([&] { return get_logical_computer_instance(index, "root/cimv2", properties, cmpihost::broker()); });
    }

    CMPIObjectPath* path(std::uint32_t index = fcip_if_index) {
        return call([&] { return get_logical_computer_keys(index, "root/cimv2", cmpihost::broker()); });
    }

    /// Calls both and expects -1 from both, and what they print behind "Entering".
    void expect_minus_one(const std::string& text, std::uint32_t index = fcip_if_index) {
        EXPECT_EQ(instance(index), minus_one<CMPIInstance>());
        EXPECT_EQ(trace, "Entering get_logical_computer_instance\n" + text);
        EXPECT_EQ(path(index), minus_one<CMPIObjectPath>());
        EXPECT_EQ(trace, "Entering get_logical_computer_keys\n" + text);
    }

    /// The platform's system of VSAN 20, with its name as `name`.
    static void expect_vsan_20(const cmpihost::Object& object, const cmpihost::Property* name) {
        EXPECT_EQ(object.class_name, "ZANTO_LogicalComputerSystem");
        EXPECT_EQ(object.name_space, "root/cimv2");
        ASSERT_NE(name, nullptr);
        EXPECT_EQ(test::text_of(name->value), "VSAN0020");
    }
};

TEST_F(LogicalSystems, InstanceIsThePlatformsForTheVsansKey) {
    const auto object = cmpihost::describe(instance());
    expect_vsan_20(object, object.property("Name"));
    EXPECT_EQ(trace, "Entering get_logical_computer_instance\nvsan_index 20 \n");
}

TEST_F(LogicalSystems, PropertyListIsPassedThrough) {
    const char* wanted[] = {"NameFormat", nullptr};
    const auto object = cmpihost::describe(instance(fcip_if_index, wanted));
    EXPECT_NE(object.property("NameFormat"), nullptr);
    EXPECT_EQ(object.property("ElementName"), nullptr);
}

TEST_F(LogicalSystems, PathIsThePlatformsForTheVsansKey) {
    const auto object = cmpihost::describe(path());
    expect_vsan_20(object, object.key("Name"));
    EXPECT_EQ(trace, "Entering get_logical_computer_keys\nvsan_index 20 \n");
}

TEST_F(LogicalSystems, VsanThatCannotBeReadIsMinusOne) {
    switchsim::inject("vsan_cim_get_vsanEntry", Fault::fail);
    expect_minus_one("vsan_index 20 \n");
}

TEST_F(LogicalSystems, DomainThatCannotBeReadIsMinusOne) {
    the_switch().vsans[20].domain = std::nullopt;
    expect_minus_one("vsan_index 20 \n");
}

TEST_F(LogicalSystems, PortThatCannotBeReadIsTakenForVsan0) {
    expect_minus_one("error : pm_cim_get_port_info vsan_index 0 \n", 99);
    the_switch().vsans[0] = {"VSAN0000", "domain"};
    EXPECT_EQ(test::text_of(cmpihost::describe(path(99)).key("Name")->value), "VSAN0000");
}

TEST_F(LogicalSystems, KeyThatCannotBeHadIsATraceOnly) {
    switchsim::inject("vsan_cim_get_vsan_key", Fault::fail);
    EXPECT_EQ(test::text_of(cmpihost::describe(instance()).property("Name")->value), "");
    EXPECT_EQ(trace, "Entering get_logical_computer_instance\nvsan_index 20 \nerror during get vsan id");
    EXPECT_EQ(test::text_of(cmpihost::describe(path()).key("Name")->value), "");
    EXPECT_EQ(trace, "Entering get_logical_computer_keys\nvsan_index 20 \nerror during get vsan id");
}

TEST_F(LogicalSystems, WhatThePlatformDoesNotBuildIsNull) {
    switchsim::inject("switch_build_instance_str", Fault::fail);
    switchsim::inject("switch_fill_reference_str", Fault::fail);
    EXPECT_EQ(instance(), nullptr);
    EXPECT_EQ(path(), nullptr);
}

// ---------------------------------------------------------------------------------------------- the switch

TEST_F(Systems, HostIsTheSwitchsName) {
    CMPIObjectPath* path = new_path_object();
    call([&] { set_switch_host(path); });
    EXPECT_EQ(cmpihost::describe(path).host, "switch-a");
}

TEST_F(Systems, NamelessSwitchGivesAnEmptyHost) {
    the_switch().has_name = false;
    CMPIObjectPath* path = new_path_object();
    call([&] { set_switch_host(path); });
    EXPECT_EQ(cmpihost::describe(path).host.value_or(""), "");
}

TEST_F(Systems, NewSwitchInstanceHasTheSwitchAsHost) {
    const auto object = cmpihost::describe(call([] { return new_switch_instance(test::made_up_class, "root/cimv2"); }));
    EXPECT_EQ(object.class_name, test::made_up_class);
    EXPECT_EQ(object.name_space, "root/cimv2");
    EXPECT_EQ(object.host, "switch-a");
    EXPECT_EQ(trace, "");
}

TEST_F(Systems, SwitchInstanceWithoutAPathIsNullWithTheGivenTrace) {
    scope.fail_object(1);
    EXPECT_EQ(call([] { return new_switch_instance(test::made_up_class, "root/cimv2", "some_builder"); }), nullptr);
    EXPECT_EQ(trace, "Exiting some_builder\n");
    scope.fail_object(1);
    EXPECT_EQ(call([] { return new_switch_instance(test::made_up_class, "root/cimv2"); }), nullptr);
    EXPECT_EQ(trace, "");
}

TEST_F(Systems, SwitchInstanceThatIsNotMadeIsNullWithoutATrace) {
    scope.fail_object(2);
    EXPECT_EQ(call([] { return new_switch_instance(test::made_up_class, "root/cimv2", "some_builder"); }), nullptr);
    EXPECT_EQ(trace, "");
}

TEST_F(Systems, WwnTextIsThePlatforms) {
    const std::uint8_t wwn[8] = {0x20, 0x14, 0, 0x00, 0x5e, 0xff, 0, 9};
    EXPECT_STREQ(call([&] { return wwn_text(wwn); }).data(), "20:14:00:00:5e:ff:00:09");
}

TEST_F(Systems, SwitchWwnThatCannotBeReadIsAllZero) {
    EXPECT_STREQ(call([] { return switch_wwn_text(); }).data(), "20:00:00:00:5e:aa:00:01");
    switchsim::inject("system_cim_get_switch_wwn", Fault::fail);
    EXPECT_STREQ(call([] { return switch_wwn_text(); }).data(), "00:00:00:00:00:00:00:00");
    EXPECT_EQ(trace, "");
}

} // namespace
} // namespace fcip
