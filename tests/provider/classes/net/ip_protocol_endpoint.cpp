#include "provider/classes/net/ip_protocol_endpoint.h"

#include "tests/support/class_test.h"
#include "tests/support/front_broker.h"

using namespace test;
using switchsim::Fault;

namespace {

using fcip::ip_pe_build_instance;
using fcip::ip_pe_fill_reference;

class IpProtocolEndpoint : public ClassTest {
  protected:
    void SetUp() override {
        ClassTest::SetUp();
        tunnel_1_properties = made_by([&] { return build(ip_pe_build_instance); });
        tunnel_1_keys = made_by([&] { return build(ip_pe_fill_reference); });
    }

    Rows tunnel_1_properties; ///< as long as nothing is changed
    Rows tunnel_1_keys;
};

/// Both address properties hold the four letters, not a null value.
void expect_no_address(const CMPIInstance* instance, const char* name) {
    const cmpihost::Object object = cmpihost::describe(instance);
    const cmpihost::Property* property = object.property(name);
    ASSERT_NE(property, nullptr);
    EXPECT_EQ(property->value, cmpihost::Value{std::string("NULL")}) << name;
}

TEST_F(IpProtocolEndpoint, InstanceTracesItsSteps) {
    build(ip_pe_build_instance);
    EXPECT_EQ(trace, "Entering ip_pe_build_instance\n"
                     "\ntol :type :IPv4 \n "
                     " Function : ip_pe_build_instance Line 497 \n"
                     "Exiting ip_pe_build_instance\n");
}

TEST_F(IpProtocolEndpoint, PathTracesItsName) {
    build(ip_pe_fill_reference);
    EXPECT_EQ(trace, "Entering ip_pe_fill_reference\n"
                     "16777216_10.1.1.1_10.1.1.2 \n"
                     "Exiting ip_pe_fill_reference\n");
}

TEST_F(IpProtocolEndpoint, Ipv6ProfileHasTheTextNullAsIpv4Address) {
    const CMPIInstance* instance = build(ip_pe_build_instance, link(tunnel_7));
    const Rows rows = rows_of(instance);
    expect_no_address(instance, "IPv4Address");
    EXPECT_EQ(value_in(rows, "IPv6Address"), "2001:db8::1");
    EXPECT_EQ(value_in(rows, "Name"), "16777222_2001:db8::1_2001:db8::2");
    EXPECT_EQ(value_in(rows, "AddressOrigin"), "3");
    EXPECT_EQ(value_in(rows, "ProtocolIFType"), "4096");
    EXPECT_EQ(trace, "Entering ip_pe_build_instance\n"
                     "\ntol :type :IPv6 \n "
                     " Function : ip_pe_build_instance Line 497 \n"
                     "Exiting ip_pe_build_instance\n");
    EXPECT_EQ(value_of(build(ip_pe_fill_reference, link(tunnel_7)), "Name"), "16777222_2001:db8::1_2001:db8::2");
}

TEST_F(IpProtocolEndpoint, NullAddressStandsInTheNameOnly) {
    profile().local_address = {};
    const Rows expected =
        with(without(without(tunnel_1_properties, "IPv4Address"), "IPv6Address"), "Name", "16777216_null_10.1.1.2");
    EXPECT_EQ(rows_of(build(ip_pe_build_instance)), expected);
    EXPECT_EQ(trace.find("tol :type"), std::string::npos);
    EXPECT_EQ(value_of(build(ip_pe_fill_reference), "Name"), "16777216_null_10.1.1.2");
}

TEST_F(IpProtocolEndpoint, UnwritableAddressIsTheTextNullAndEmptyInTheName) {
    for (const std::uint32_t family : {0U, 3U, 0xFFFFFFFFU}) { // family 0 with bytes is not the null address
        SCOPED_TRACE(family);
        profile().local_address.family = family;
        const CMPIInstance* instance = build(ip_pe_build_instance);
        const Rows expected = with(with(tunnel_1_properties, "IPv4Address", "NULL"), "Name", "16777216__10.1.1.2");
        EXPECT_EQ(rows_of(instance), expected);
        expect_no_address(instance, "IPv4Address");
        expect_no_address(instance, "IPv6Address");
        EXPECT_EQ(trace.find("tol :type"), std::string::npos);
    }
}

TEST_F(IpProtocolEndpoint, Ipv4ProfileHasTheTextNullAsIpv6Address) {
    expect_no_address(build(ip_pe_build_instance), "IPv6Address");
}

TEST_F(IpProtocolEndpoint, NameIsCutAfter58Characters) {
    profile().local_address = address("2001:db8:1111:2222:3333:4444:5555:6666");
    link().remote_address = address("2001:db8:7777:8888:9999:aaaa:bbbb:cccc");
    const std::string cut = "16777216_2001:db8:1111:2222:3333:4444:5555:6666_2001:db8:7";
    ASSERT_EQ(cut.size(), 58U);
    EXPECT_EQ(value_of(build(ip_pe_build_instance), "Name"), cut);
    EXPECT_EQ(value_of(build(ip_pe_fill_reference), "Name"), cut);
}

TEST_F(IpProtocolEndpoint, InterfaceIndexOfAllOnesPrintsAsMinusOne) {
    link().link_if_index = 0xFFFFFFFF;
    EXPECT_EQ(value_of(build(ip_pe_build_instance), "Name"), "-1_10.1.1.1_10.1.1.2");
    EXPECT_EQ(value_of(build(ip_pe_fill_reference), "Name"), "-1_10.1.1.1_10.1.1.2");
}

TEST_F(IpProtocolEndpoint, PathMtuDiscoveryIsOnForTheValue1Only) {
    for (const auto& [flag, value] : {std::pair{0U, "false"}, {1U, "true"}, {2U, "false"}, {257U, "false"}}) {
        profile().pmtu_discovery = flag;
        EXPECT_EQ(value_of(build(ip_pe_build_instance), "PathMTUDiscovery"), value) << flag;
    }
}

TEST_F(IpProtocolEndpoint, SubnetMaskIsReadInNetworkOrder) {
    port().subnet_mask = {255, 254, 3, 1};
    EXPECT_EQ(value_of(build(ip_pe_build_instance), "SubnetMask"), "255.254.3.1");
}

TEST_F(IpProtocolEndpoint, SubnetMaskThatCannotBeReadIsLeftOut) {
    for (const Fault fault : read_faults) {
        switchsim::inject("ipconf_get_intf_ip_address", fault);
        EXPECT_EQ(rows_of(build(ip_pe_build_instance)), without(tunnel_1_properties, "SubnetMask"));
        switchsim::clear_faults();
    }
}

TEST_F(IpProtocolEndpoint, PrefixLengthThatCannotBeReadIsLeftOut) {
    for (const Fault fault : read_faults) {
        switchsim::inject("ipconf_get_if_inet_addrs", fault);
        EXPECT_EQ(rows_of(build(ip_pe_build_instance)), without(tunnel_1_properties, "PrefixLength"));
        switchsim::clear_faults();
    }
}

TEST_F(IpProtocolEndpoint, MtuIsSetOnceWhenItCanBeRead) {
    const FrontBroker front;
    build(ip_pe_build_instance);
    EXPECT_EQ(FrontBroker::set(), tunnel_1_properties);
}

TEST_F(IpProtocolEndpoint, MtuThatCannotBeReadIsSetTwice) {
    Rows expected = with(tunnel_1_properties, "MaxTransmissionUnit", "1500");
    expected.insert(expected.begin() + 9, {"MaxTransmissionUnit", "uint32", "1500"});
    ASSERT_EQ(expected[10][0], "AddressOrigin");
    switchsim::inject("pm_get_clear_eth_stats", Fault::fail);
    const FrontBroker front;
    build(ip_pe_build_instance);
    EXPECT_EQ(FrontBroker::set(), expected);
}

TEST_F(IpProtocolEndpoint, MtuOfAFailedQueryIsWhatTheQueryLeftInTheBuffer) {
    switchsim::inject("pm_get_clear_eth_stats", Fault::fail_leaving_record);
    EXPECT_EQ(value_of(build(ip_pe_build_instance), "MaxTransmissionUnit"), "0");
}

TEST_F(IpProtocolEndpoint, EthernetQueriesAskForTheEthernetInterface) {
    link().ethernet_if_index = 99; // no such port
    const Rows expected =
        with(without(without(tunnel_1_properties, "SubnetMask"), "PrefixLength"), "MaxTransmissionUnit", "1500");
    Rows found = rows_of(build(ip_pe_build_instance));
    EXPECT_EQ(found[7], (Row{"MaxTransmissionUnit", "uint32", "1500"})); // first set ahead of AddressOrigin
    EXPECT_EQ(without(found, "MaxTransmissionUnit"), without(expected, "MaxTransmissionUnit"));
}

TEST_F(IpProtocolEndpoint, UnknownPortIsAnEmptySystemNameAndUnknownInThePath) {
    the_switch().ports.erase(fcip_1);
    EXPECT_EQ(rows_of(build(ip_pe_build_instance)), with(tunnel_1_properties, "SystemName", ""));
    EXPECT_EQ(trace.substr(0, trace.find("\ntol")), "Entering ip_pe_build_instance\nerror : pm_cim_get_port_info ");
    EXPECT_EQ(rows_of(build(ip_pe_fill_reference)), with(tunnel_1_keys, "SystemName", "Unknown"));
    EXPECT_EQ(trace, "Entering ip_pe_fill_reference\n"
                     "error : pm_cim_get_port_info "
                     "16777216_10.1.1.1_10.1.1.2 \n"
                     "Exiting ip_pe_fill_reference\n");
}

TEST_F(IpProtocolEndpoint, UnknownDomainIsTheTextNullAndUnknownInThePath) {
    the_switch().vsans.at(1).domain.reset();
    EXPECT_EQ(rows_of(build(ip_pe_build_instance)), with(tunnel_1_properties, "SystemName", "NULL"));
    EXPECT_EQ(rows_of(build(ip_pe_fill_reference)), with(tunnel_1_keys, "SystemName", "Unknown"));
}

TEST_F(IpProtocolEndpoint, InstanceIsNullWithoutProfile) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_EQ(build(ip_pe_build_instance), nullptr);
        EXPECT_EQ(trace, "Entering ip_pe_build_instance\n");
        switchsim::clear_faults();
    }
    EXPECT_EQ(scope.objects_made(), 0U);
}

TEST_F(IpProtocolEndpoint, PathIsNullWithoutProfile) {
    for (const Fault fault : {Fault::fail, Fault::fail_leaving_record}) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_EQ(build(ip_pe_fill_reference), nullptr);
        EXPECT_EQ(trace, "Entering ip_pe_fill_reference\nError \n");
        switchsim::clear_faults();
    }
    EXPECT_EQ(scope.objects_made(), 0U);
}

TEST_F(IpProtocolEndpoint, PathHasNoKeysWhenTheProfileIsReadWithoutARow) {
    switchsim::inject("fcip_get_entity_entry", Fault::succeed_without_record);
    const CMPIObjectPath* path = build(ip_pe_fill_reference);
    ASSERT_TRUE(cmpihost::is_live(path));
    EXPECT_EQ(keys(path), Rows{});
    EXPECT_NE(cmpihost::describe(path).host, "switch-a");
    EXPECT_EQ(trace, "Entering ip_pe_fill_reference\nExiting ip_pe_fill_reference\n");
}

TEST_F(IpProtocolEndpoint, PathOfNoLinkIsNull) {
    EXPECT_EQ(call([] { return ip_pe_fill_reference(made_up_class, name_space, nullptr); }), nullptr);
    EXPECT_EQ(trace, "Entering ip_pe_fill_reference\n");
}

} // namespace
