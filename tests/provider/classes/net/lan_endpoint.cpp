#include "provider/classes/net/lan_endpoint.h"

#include "tests/support/class_test.h"

#include <dlfcn.h>

#include <optional>

using namespace test;
using switchsim::Fault;

namespace {

/// The type with which the platform was last asked for a network address.
std::optional<int> asked_type;

} // namespace

/// Stands in front of the simulator's function of this name and keeps the type, which that one does not look at.
extern "C" int pm_cim_get_network_address(char* buffer, const PmPortInfo* port, int type) {
    static const auto next =
        reinterpret_cast<decltype(&pm_cim_get_network_address)>(dlsym(RTLD_NEXT, "pm_cim_get_network_address"));
    asked_type = type;
    return next(buffer, port, type);
}

namespace {

class LanEndpoint : public ClassTest {
  protected:
    void SetUp() override {
        ClassTest::SetUp();
        port_properties = made_by([&] { return build_port(); });
        port_keys = made_by([&] { return path_of_port(); });
    }

    CMPIInstance* build_port(std::uint32_t if_index = ethernet_1) {
        return call([&] { return fcip::lan_endpoint_build_instance(made_up_class, name_space, if_index, nullptr); });
    }
    CMPIObjectPath* path_of_port(std::uint32_t if_index = ethernet_1) {
        return call([&] { return fcip::lan_endpoint_fill_reference(made_up_class, name_space, if_index); });
    }

    Rows port_properties; ///< of the first Ethernet port, as long as nothing is changed
    Rows port_keys;
};

TEST_F(LanEndpoint, InstanceTracesItsExitAlone) {
    build_port();
    EXPECT_EQ(trace, "Exiting lan_endpoint_build_instance\n");
}

TEST_F(LanEndpoint, PathTracesEntryAndExit) {
    path_of_port();
    EXPECT_EQ(trace, "Entering lan_endpoint_fill_reference\nExiting lan_endpoint_fill_reference\n");
}

TEST_F(LanEndpoint, InstanceAndPathSpellClassAndSystemDifferently) {
    EXPECT_EQ(value_in(port_properties, "CreationClassName"), "ZANTO_LANEndPoint");
    EXPECT_EQ(value_in(port_keys, "CreationClassName"), "ZANTO_LanEndPoint");
    EXPECT_EQ(value_in(port_properties, "SystemName"), "20:00:00:00:5e:aa:00:01");
    EXPECT_EQ(value_in(port_keys, "SystemName"), "200000005EAA0001");
}

TEST_F(LanEndpoint, NameIsIndexColonAddressWithoutPadding) {
    the_switch().ports[83] = port();
    port(83).network_address = "02:00:00:aa:bb:cc";
    EXPECT_EQ(value_of(build_port(83), "Name"), "83:02:00:00:aa:bb:cc");
    EXPECT_EQ(value_of(path_of_port(83), "Name"), "83:02:00:00:aa:bb:cc");
}

TEST_F(LanEndpoint, NameWithoutAddressEndsInTheColon) {
    port().network_address.clear();
    EXPECT_EQ(rows_of(build_port()), with(port_properties, "Name", "-2097152000:"));
    EXPECT_EQ(rows_of(path_of_port()), with(port_keys, "Name", "-2097152000:"));
}

TEST_F(LanEndpoint, AddressQueryThatFailsLeavesTheAddressEmpty) {
    switchsim::inject("pm_cim_get_network_address", Fault::fail);
    EXPECT_EQ(rows_of(build_port()), with(port_properties, "Name", "-2097152000:"));
    EXPECT_EQ(rows_of(path_of_port()), with(port_keys, "Name", "-2097152000:"));
}

TEST_F(LanEndpoint, AddressIsAskedForWithTheInterfacesType) {
    port().kind = switchsim::kind_port_channel;
    build_port();
    EXPECT_EQ(asked_type, 5);
    asked_type.reset();
    path_of_port();
    EXPECT_EQ(asked_type, 5);
}

TEST_F(LanEndpoint, TypeThatCannotBeReadCountsAsEthernet) {
    port().kind = switchsim::kind_port_channel;
    port().type_known = false;
    asked_type.reset();
    EXPECT_EQ(rows_of(build_port()), port_properties);
    EXPECT_EQ(asked_type, 2);
    asked_type.reset();
    EXPECT_EQ(rows_of(path_of_port()), port_keys);
    EXPECT_EQ(asked_type, 2);
}

TEST_F(LanEndpoint, InterfaceIndex0LeavesTheInstanceItsSystemClassOnly) {
    the_switch().ports[0] = port();
    EXPECT_EQ(rows_of(build_port(0)), (Rows{{"SystemCreationClassName", "string", "ZANTO_PhysicalComputerSystem"}}));
    EXPECT_EQ(trace, "Exiting lan_endpoint_build_instance\n");
    EXPECT_EQ(rows_of(path_of_port(0)), with(port_keys, "Name", "0:02:00:00:aa:00:01"));
}

TEST_F(LanEndpoint, WwnThatCannotBeReadIsAllZero) {
    switchsim::inject("system_cim_get_switch_wwn", Fault::fail);
    EXPECT_EQ(rows_of(build_port()), with(port_properties, "SystemName", "00:00:00:00:00:00:00:00"));
}

TEST_F(LanEndpoint, SystemWithoutNameLeavesTheKeyEmpty) {
    switchsim::inject("CSgetName", Fault::fail);
    EXPECT_EQ(rows_of(path_of_port()), with(port_keys, "SystemName", ""));
}

TEST_F(LanEndpoint, BothAreNullWithoutPort) {
    for (const Fault fault : read_faults) {
        switchsim::inject("pm_cim_get_port_info", fault);
        EXPECT_EQ(build_port(), nullptr);
        EXPECT_EQ(trace, "");
        EXPECT_EQ(path_of_port(), nullptr);
        EXPECT_EQ(trace, "Entering lan_endpoint_fill_reference\n");
        switchsim::clear_faults();
    }
    EXPECT_EQ(scope.objects_made(), 0U);
}

} // namespace
