#include "provider/classes/net/lan_endpoint.h"

#include "tests/provider/classes/net/net_test.h"

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

class LanEndpoint : public NetTest {
  protected:
    CMPIInstance* build_port(std::uint32_t if_index = ethernet_1) {
        return call(
            [&] { return fcip::lan_endpoint_build_instance(asked_class, asked_name_space, if_index, nullptr); });
    }
    CMPIObjectPath* fill_port(std::uint32_t if_index = ethernet_1) {
        return call([&] { return fcip::lan_endpoint_fill_reference(asked_class, asked_name_space, if_index); });
    }
};

const Rows port_properties = {
    {"SystemCreationClassName", "string", "ZANTO_PhysicalComputerSystem"},
    {"SystemName", "string", "20:00:00:00:5e:aa:00:01"},
    {"Name", "string", "-2097152000:02:00:00:aa:00:01"},
    {"CreationClassName", "string", "ZANTO_LANEndPoint"},
    {"NameFormat", "string", "Other"},
};

const Rows port_keys = {
    {"SystemName", "string", "200000005EAA0001"},
    {"SystemCreationClassName", "string", "ZANTO_PhysicalComputerSystem"},
    {"CreationClassName", "string", "ZANTO_LanEndPoint"},
    {"Name", "string", "-2097152000:02:00:00:aa:00:01"},
};

} // namespace

TEST_F(LanEndpoint, InstanceHasEveryPropertyInOrderAndTracesItsExitAlone) {
    EXPECT_EQ(rows_of(build_port()), port_properties);
    EXPECT_EQ(trace, "Exiting lan_endpoint_build_instance\n");
}

TEST_F(LanEndpoint, PathHasEveryKeyInOrder) {
    EXPECT_EQ(rows_of(fill_port()), port_keys);
    EXPECT_EQ(trace, "Entering lan_endpoint_fill_reference\nExiting lan_endpoint_fill_reference\n");
}

TEST_F(LanEndpoint, NameIsIndexColonAddressWithoutPadding) {
    the_switch().ports[83] = port();
    port(83).network_address = "02:00:00:aa:bb:cc";
    EXPECT_EQ(value_in(rows_of(build_port(83)), "Name"), "83:02:00:00:aa:bb:cc");
    EXPECT_EQ(value_in(rows_of(fill_port(83)), "Name"), "83:02:00:00:aa:bb:cc");
}

TEST_F(LanEndpoint, NameWithoutAddressEndsInTheColon) {
    port().network_address.clear();
    EXPECT_EQ(rows_of(build_port()), with(port_properties, "Name", "-2097152000:"));
    EXPECT_EQ(rows_of(fill_port()), with(port_keys, "Name", "-2097152000:"));
}

TEST_F(LanEndpoint, AddressQueryThatFailsLeavesTheAddressEmpty) {
    switchsim::inject("pm_cim_get_network_address", Fault::fail);
    EXPECT_EQ(rows_of(build_port()), with(port_properties, "Name", "-2097152000:"));
    EXPECT_EQ(rows_of(fill_port()), with(port_keys, "Name", "-2097152000:"));
}

TEST_F(LanEndpoint, AddressIsAskedForWithTheInterfacesType) {
    port().kind = switchsim::kind_port_channel;
    build_port();
    EXPECT_EQ(asked_type, 5);
    asked_type.reset();
    fill_port();
    EXPECT_EQ(asked_type, 5);
}

TEST_F(LanEndpoint, TypeThatCannotBeReadCountsAsEthernet) {
    port().kind = switchsim::kind_port_channel;
    port().type_known = false;
    asked_type.reset();
    EXPECT_EQ(rows_of(build_port()), port_properties);
    EXPECT_EQ(asked_type, 2);
    asked_type.reset();
    EXPECT_EQ(rows_of(fill_port()), port_keys);
    EXPECT_EQ(asked_type, 2);
}

TEST_F(LanEndpoint, InterfaceIndex0LeavesTheInstanceItsSystemClassOnly) {
    the_switch().ports[0] = port();
    EXPECT_EQ(rows_of(build_port(0)), (Rows{{"SystemCreationClassName", "string", "ZANTO_PhysicalComputerSystem"}}));
    EXPECT_EQ(trace, "Exiting lan_endpoint_build_instance\n");
    EXPECT_EQ(rows_of(fill_port(0)), with(port_keys, "Name", "0:02:00:00:aa:00:01"));
}

TEST_F(LanEndpoint, WwnThatCannotBeReadIsAllZero) {
    switchsim::inject("system_cim_get_switch_wwn", Fault::fail);
    EXPECT_EQ(rows_of(build_port()), with(port_properties, "SystemName", "00:00:00:00:00:00:00:00"));
}

TEST_F(LanEndpoint, SystemWithoutNameLeavesTheKeyEmpty) {
    switchsim::inject("CSgetName", Fault::fail);
    EXPECT_EQ(rows_of(fill_port()), with(port_keys, "SystemName", ""));
}

TEST_F(LanEndpoint, BothAreNullWithoutPort) {
    for (const Fault fault : no_row) {
        switchsim::inject("pm_cim_get_port_info", fault);
        EXPECT_EQ(build_port(), nullptr);
        EXPECT_EQ(trace, "");
        EXPECT_EQ(fill_port(), nullptr);
        EXPECT_EQ(trace, "Entering lan_endpoint_fill_reference\n");
        switchsim::clear_faults();
    }
    EXPECT_EQ(scope.objects_made(), 0U);
}

TEST_F(LanEndpoint, InstanceAsksThePlatformInTheOrderOfItsProperties) {
    EXPECT_EQ(calls_of([&] { build_port(); }),
              (std::vector<std::string>{"pm_cim_get_port_info", "if_index_get_type", "pm_cim_get_network_address",
                                        "getCSName", "system_cim_get_switch_wwn", "cim_sprintf_wwn"}));
}

TEST_F(LanEndpoint, PathAsksThePlatformInTheOrderOfItsKeys) {
    EXPECT_EQ(calls_of([&] { fill_port(); }),
              (std::vector<std::string>{"pm_cim_get_port_info", "if_index_get_type", "pm_cim_get_network_address",
                                        "getCSName", "CSgetName"}));
}
