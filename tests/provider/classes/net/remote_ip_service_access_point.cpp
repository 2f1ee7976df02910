#include "provider/classes/net/remote_ip_service_access_point.h"

#include "tests/support/class_test.h"

using namespace test;
using switchsim::Fault;

namespace {

using fcip::ip_remote_pe_build_instance;
using fcip::ip_remote_pe_fill_reference;

class RemoteIpServiceAccessPoint : public ClassTest {
  protected:
    void SetUp() override {
        ClassTest::SetUp();
        tunnel_1_properties = made_by([&] { return build(ip_remote_pe_build_instance); });
        tunnel_1_keys = made_by([&] { return build(ip_remote_pe_fill_reference); });
    }

    Rows tunnel_1_properties; ///< as long as nothing is changed
    Rows tunnel_1_keys;
};

TEST_F(RemoteIpServiceAccessPoint, InstanceTracesItsSteps) {
    build(ip_remote_pe_build_instance);
    EXPECT_EQ(trace, "Entering ip_remote_pe_build_instance\n"
                     " Function : ip_remote_pe_build_instance Line 579 \n"
                     "Exiting ip_remote_pe_build_instance\n");
}

TEST_F(RemoteIpServiceAccessPoint, PathDoesNotTraceItsExit) {
    build(ip_remote_pe_fill_reference);
    EXPECT_EQ(trace, "Entering ip_remote_pe_fill_reference\n");
}

TEST_F(RemoteIpServiceAccessPoint, KeepsItsCreationClassNameWhateverClassIsAsked) {
    whole_objects_expected = false; // no request builds instances of the other class
    for (const char* name : {"ZANTO_RemoteIPPort", "ZANTO_RemoteTCPort"}) {
        const CMPIInstance* instance =
            call([&] { return ip_remote_pe_build_instance(name, name_space, &link(), nullptr); });
        const CMPIObjectPath* path = call([&] { return ip_remote_pe_fill_reference(name, name_space, &link()); });
        EXPECT_EQ(cmpihost::describe(instance).class_name, name);
        EXPECT_EQ(cmpihost::describe(path).class_name, name);
        EXPECT_EQ(rows_of(instance), tunnel_1_properties);
        EXPECT_EQ(rows_of(path), tunnel_1_keys);
    }
}

TEST_F(RemoteIpServiceAccessPoint, Ipv6AddressIsReportedAsIpv4Address) {
    const Rows rows = rows_of(build(ip_remote_pe_build_instance, link(tunnel_7)));
    EXPECT_EQ(value_in(rows, "IPv4Address"), "2001:db8::2");
    EXPECT_EQ(value_in(rows, "AccessInfo"), "2001:db8::2");
    EXPECT_EQ(value_in(rows, "IPv6Address"), not_set);
    EXPECT_EQ(value_in(rows, "Name"), "0_2001:db8::2_2001:db8::1");
    EXPECT_EQ(value_of(build(ip_remote_pe_fill_reference, link(tunnel_7)), "Name"), "0_2001:db8::2_2001:db8::1");
}

TEST_F(RemoteIpServiceAccessPoint, NameIsCutAfter58Characters) {
    profile().local_address = address("2001:db8:1111:2222:3333:4444:5555:6666");
    link().remote_address = address("2001:db8:7777:8888:9999:aaaa:bbbb:cccc");
    const std::string cut = "0_2001:db8:7777:8888:9999:aaaa:bbbb:cccc_2001:db8:1111:222";
    ASSERT_EQ(cut.size(), 58U);
    EXPECT_EQ(value_of(build(ip_remote_pe_build_instance), "Name"), cut);
    EXPECT_EQ(value_of(build(ip_remote_pe_fill_reference), "Name"), cut);
    EXPECT_EQ(value_of(build(ip_remote_pe_build_instance), "AccessInfo"), "2001:db8:7777:8888:9999:aaaa:bbbb:cccc");
}

TEST_F(RemoteIpServiceAccessPoint, UnknownPortIsAnEmptySystemNameAndUnknownInThePath) {
    the_switch().ports.erase(fcip_1);
    EXPECT_EQ(rows_of(build(ip_remote_pe_build_instance)), with(tunnel_1_properties, "SystemName", ""));
    EXPECT_EQ(rows_of(build(ip_remote_pe_fill_reference)), with(tunnel_1_keys, "SystemName", "Unknown"));
}

TEST_F(RemoteIpServiceAccessPoint, UnknownDomainIsTheTextNullAndUnknownInThePath) {
    the_switch().vsans.at(1).domain.reset();
    EXPECT_EQ(rows_of(build(ip_remote_pe_build_instance)), with(tunnel_1_properties, "SystemName", "NULL"));
    EXPECT_EQ(rows_of(build(ip_remote_pe_fill_reference)), with(tunnel_1_keys, "SystemName", "Unknown"));
}

TEST_F(RemoteIpServiceAccessPoint, PathAsksForTheSystemNameTwice) {
    the_switch().ports.erase(fcip_1);
    build(ip_remote_pe_fill_reference);
    EXPECT_EQ(trace, "Entering ip_remote_pe_fill_reference\n"
                     "error : pm_cim_get_port_info error : pm_cim_get_port_info ");
    the_switch().vsans.at(1).domain.reset();
    build(ip_remote_pe_fill_reference, link(tunnel_3));
    EXPECT_EQ(trace, "Entering ip_remote_pe_fill_reference\n"
                     "error : dm_cim_get_dmEntry error : dm_cim_get_dmEntry ");
}

TEST_F(RemoteIpServiceAccessPoint, SecondQuestionForTheSystemNameDoesNotSpoilTheName) {
    switchsim::inject("pm_cim_get_port_info", Fault::fail, 2);
    EXPECT_EQ(rows_of(build(ip_remote_pe_fill_reference)), tunnel_1_keys);
    EXPECT_EQ(trace, "Entering ip_remote_pe_fill_reference\nerror : pm_cim_get_port_info ");
}

TEST_F(RemoteIpServiceAccessPoint, BothAreNullWithoutProfile) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_EQ(build(ip_remote_pe_build_instance), nullptr);
        EXPECT_EQ(trace, "Entering ip_remote_pe_build_instance\n");
        EXPECT_EQ(build(ip_remote_pe_fill_reference), nullptr);
        EXPECT_EQ(trace, "Entering ip_remote_pe_fill_reference\n");
        switchsim::clear_faults();
    }
    EXPECT_EQ(scope.objects_made(), 0U);
}

} // namespace
