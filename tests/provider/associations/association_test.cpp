#include "tests/provider/associations/association_test.h"

namespace test {

namespace {

// How keys begin. Tunnels 1, 3 and 8 are in VSAN 1, tunnel 7 is in VSAN 20.
const std::string in_vsan_1 = R"(SystemName="200100005EAA0001",SystemCreationClassName="ZANTO_LogicalComputerSystem",)";
const std::string in_vsan_20 =
    R"(SystemName="201400005EAA0001",SystemCreationClassName="ZANTO_LogicalComputerSystem",)";
const std::string port_on_switch =
    R"(SystemCreationClassName="ZANTO_PhysicalComputerSystem",SystemName="200000005EAA0001",)";
const std::string lan_on_switch =
    R"(SystemName="200000005EAA0001",SystemCreationClassName="ZANTO_PhysicalComputerSystem",)"
    R"(CreationClassName="ZANTO_LanEndPoint",)";

FcipLinkEntry link_of_tunnel_8() {
    FcipLinkEntry link = switchsim::the_switch().links.at(tunnel_7);
    link.link_index = tunnel_8.second;
    link.link_if_index = ethernet_2;
    link.ethernet_if_index = ethernet_1;
    link.remote_address = address("2001:db8::9");
    return link;
}

// clang-format off
#define MEMBER(name) {#name, fcip::name}
const std::vector<Member> associators = {
    MEMBER(get_fcip_pe_associators),
    MEMBER(get_fcip_remote_pe_associators),
    MEMBER(get_ip_pe_associators),
    MEMBER(get_ip_remote_pe_associators),
    MEMBER(get_tcp_pe_associators),
    MEMBER(get_tcp_remote_pe_associators),
    MEMBER(get_lan_endpoint_associators),
    MEMBER(get_fcip_settings_associators),
    MEMBER(get_ip_setting_associators),
    MEMBER(get_tcp_setting_associators),
    MEMBER(get_eth_port_associators),
    MEMBER(get_eth_stat_associators),
    MEMBER(get_ip_stat_associators),
    MEMBER(get_tcp_stat_associators),
    MEMBER(get_tcp_statical_data_associators),
    MEMBER(get_profile_associators),
};

const std::vector<Member> associator_names = {
    MEMBER(get_fcip_pe_associator_names),
    MEMBER(get_fcip_remote_pe_associator_names),
    MEMBER(get_ip_pe_associator_names),
    MEMBER(get_ip_remote_pe_associator_names),
    MEMBER(get_tcp_pe_associator_names),
    MEMBER(get_tcp_remote_pe_associator_names),
    MEMBER(get_lan_endpoint_associator_names),
    MEMBER(get_fcip_settings_associator_names),
    MEMBER(get_ip_setting_associator_names),
    MEMBER(get_tcp_setting_associator_names),
    MEMBER(get_eth_port_associator_names),
    MEMBER(get_eth_stat_associator_names),
    MEMBER(get_ip_stat_associator_names),
    MEMBER(get_tcp_stat_associator_names),
    MEMBER(get_tcp_statical_data_associator_names),
    MEMBER(get_profile_associator_names),
};

const std::vector<Member> references = {
    MEMBER(get_fcip_pe_references),
    MEMBER(get_fcip_remote_pe_references),
    MEMBER(get_ip_pe_references),
    MEMBER(get_ip_remote_pe_references),
    MEMBER(get_tcp_pe_references),
    MEMBER(get_tcp_remote_pe_references),
    MEMBER(get_fcip_settings_references),
    MEMBER(get_ip_settings_references),
    MEMBER(get_tcp_settings_references),
    MEMBER(get_profile_references),
    MEMBER(get_lan_endpoint_references),
    MEMBER(get_ip_stat_references),
    MEMBER(get_tcp_stat_references),
    MEMBER(get_eth_port_references),
    MEMBER(get_eth_stat_references),
};

const std::vector<Member> reference_names = {
    MEMBER(get_fcip_pe_reference_names),
    MEMBER(get_fcip_remote_pe_reference_names),
    MEMBER(get_ip_pe_reference_names),
    MEMBER(get_ip_remote_pe_reference_names),
    MEMBER(get_tcp_pe_reference_names),
    MEMBER(get_tcp_remote_pe_reference_names),
    MEMBER(get_fcip_settings_reference_names),
    MEMBER(get_ip_settings_reference_names),
    MEMBER(get_tcp_settings_reference_names),
    MEMBER(get_profile_reference_names),
    MEMBER(get_lan_endpoint_reference_names),
    MEMBER(get_ip_stat_reference_names),
    MEMBER(get_tcp_stat_reference_names),
    MEMBER(get_eth_port_reference_names),
    MEMBER(get_eth_stat_reference_names),
};
#undef MEMBER
// clang-format on

} // namespace

const Thing fcip_endpoint_1{in_vsan_1 + R"(CreationClassName="ZANTO_FCIPProtocolEndPoint",Name="1_10.1.1.1_10.1.1.2")"};
const Thing fcip_endpoint_3{in_vsan_1 +
                            R"(CreationClassName="ZANTO_FCIPProtocolEndPoint",Name="3_10.1.1.1_192.168.100.101")"};
const Thing fcip_endpoint_8{in_vsan_1 +
                            R"(CreationClassName="ZANTO_FCIPProtocolEndPoint",Name="8_2001:db8::1_2001:db8::9")"};
const Thing ip_endpoint_1{in_vsan_1 +
                          R"(CreationClassName="ZANTO_IPProtocolEndPoint",Name="16777216_10.1.1.1_10.1.1.2")"};
const Thing ip_endpoint_3{in_vsan_1 +
                          R"(CreationClassName="ZANTO_IPProtocolEndPoint",Name="16777218_10.1.1.1_192.168.100.101")"};
const Thing ip_endpoint_7{in_vsan_20 +
                          R"(CreationClassName="ZANTO_IPProtocolEndPoint",Name="16777222_2001:db8::1_2001:db8::2")"};
const Thing tcp_endpoint_3{in_vsan_1 + R"(CreationClassName="ZANTO_TCPProtocolEndPoint",Name="16777218")"};
const Thing remote_fcip_port_3{in_vsan_1 +
                               R"(CreationClassName="ZANTO_RemoteFCIPPort",Name="0_192.168.100.101_10.1.1.1")"};
const Thing remote_ip_port_3{
    in_vsan_1 + R"(CreationClassName="ZANTO_RemoteIPServiceAccessPoint",Name="0_192.168.100.101_10.1.1.1")"};
const Thing remote_tcp_port_3{R"(SystemName="200100005EAA0001",Name="0_16777218",)"
                              R"(SystemCreationClassName="ZANTO_LogicalComputerSystem",)"
                              R"(CreationClassName="ZANTO_RemoteTCPPort")"};
const Thing instance_of_tunnel_3{R"(InstanceID="16777218")"};
const Thing profile_3{R"(InstanceID="3")"};
const Thing lan_endpoint_1{lan_on_switch + R"(Name="-2097152000:02:00:00:aa:00:01")"};
const Thing lan_endpoint_2{lan_on_switch + R"(Name="-2096889856:02:00:00:aa:00:02")"};
const Thing statistics_of_ethernet_1{R"(InstanceID="-2097152000")"};
const Thing statistics_of_ethernet_2{R"(InstanceID="-2096889856")"};
const Thing ethernet_port_1{port_on_switch + R"(CreationClassName="ZANTO_EthernetPort",DeviceID="-2097152000")"};
const Thing ethernet_port_2{port_on_switch + R"(CreationClassName="ZANTO_EthernetPort",DeviceID="-2096889856")"};
const Thing fc_port_of_tunnel_3{port_on_switch + R"(CreationClassName="ZANTO_FCPort",DeviceID="16777218")"};
const Thing vsan_1{R"(CreationClassName="ZANTO_LogicalComputerSystem",Name="VSAN0001")"};
const Thing physical_switch{R"(CreationClassName="ZANTO_PhysicalComputerSystem",Name="200000005EAA0001")"};

const std::vector<Source>& sources() {
    static const std::vector<Source> all = {
        {"ZANTO_FCIPProtocolEndPoint", "Name", "3_10.1.1.1_192.168.100.101"},
        {"ZANTO_RemoteFCIPPort", "Name", "0_192.168.100.101_10.1.1.1"},
        {"ZANTO_IPProtocolEndPoint", "Name", "16777218_10.1.1.1_192.168.100.101"},
        {"ZANTO_RemoteIPServiceAccessPoint", "Name", "0_192.168.100.101_10.1.1.1"},
        {"ZANTO_TCPProtocolEndPoint", "Name", "16777218"},
        {"ZANTO_RemoteTCPPort", "Name", "0_16777218"},
        {"ZANTO_LanEndPoint", "Name", "-2096889856:02:00:00:aa:00:02"},
        {"ZANTO_FCIPSettings", "InstanceID", "16777218"},
        {"ZANTO_IPSettings", "InstanceID", "16777218"},
        {"ZANTO_TCPSettings", "InstanceID", "16777218"},
        {"ZANTO_EthernetPort", "DeviceID", "-2096889856"},
        {"ZANTO_EthernetPortStatistics", "InstanceID", "-2096889856"},
        {"ZANTO_IPEndPointStatistics", "InstanceID", "16777218"},
        {"ZANTO_TCPEndPointStatistics", "InstanceID", "16777218"},
        {"ZANTO_FCIPProfile", "InstanceID", "3"},
    };
    return all;
}

const Source& source(const std::string& class_name) {
    for (const Source& candidate : sources())
        if (candidate.class_name == class_name)
            return candidate;
    throw std::out_of_range(class_name);
}

void AssociationTest::SetUp() {
    RequestTest::SetUp();
    the_switch().links[tunnel_8] = link_of_tunnel_8();
}

Outcome AssociationTest::outcome_of(const std::function<int()>& f) {
    scope.answer() = {};
    const int status = call(f);
    return {status, scope.answer()};
}

Outcome AssociationTest::run(fcip::associators_member* member, const char* key_value, const char* association_class) {
    return outcome_of([&] {
        return member(key_value, association_class, nullptr, nullptr, nullptr, nullptr, scope.result(), "root/cimv2");
    });
}

Outcome AssociationTest::run(fcip::associator_names_member* member, const char* key_value,
                             const char* association_class) {
    return outcome_of(
        [&] { return member(key_value, association_class, nullptr, nullptr, nullptr, scope.result(), "root/cimv2"); });
}

Outcome AssociationTest::run(fcip::references_member* member, const char* key_value, const char* association_class) {
    return outcome_of(
        [&] { return member(key_value, association_class, nullptr, nullptr, scope.result(), "root/cimv2"); });
}

Outcome AssociationTest::run(fcip::reference_names_member* member, const char* key_value,
                             const char* association_class) {
    return outcome_of([&] { return member(key_value, association_class, nullptr, scope.result(), "root/cimv2"); });
}

const std::vector<Member>& members() {
    static const std::vector<Member> all = [] {
        std::vector<Member> joined;
        for (const auto& family : {associators, associator_names, references, reference_names})
            joined.insert(joined.end(), family.begin(), family.end());
        return joined;
    }();
    return all;
}

bool reads_key(const std::string& trace, const std::string& before, const char* key) {
    const bool looks_up = trace.find("Entering get_fcip_link_entry_from\n") != std::string::npos;
    return trace.starts_with(before + key) && looks_up == std::string(key).starts_with("Entering get_fcip_link");
}

std::string text_of_object(const cmpihost::Object& object) {
    std::string text = object.class_name;
    for (const auto& list : {object.keys, object.properties})
        for (const auto& row : rows(list))
            text += "\n  " + row[0] + " " + row[1] + " " + row[2];
    return text;
}

} // namespace test
