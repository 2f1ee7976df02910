// FCIP_GetInstance: every row of its table, the key-not-found answer, and what each failure leads to.
#include "tests/provider/mi/rebuilt_associations.h"

namespace {

using namespace test;
using switchsim::Fault;

const std::string entering = "Entering FCIP_GetInstance\n";
const std::string exiting = "Exiting FCIP_GetInstance\n";

std::string found(const std::string& name, const std::string& value) {
    return "\tfound key " + name + " : " + value + "\n";
}

class GetInstance : public RequestTest {
  protected:
    void expect_nothing(const cmpihost::Answer& answer) {
        EXPECT_TRUE(answer.objects.empty());
        EXPECT_EQ(answer.null_results + answer.invalid_results, 0u);
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, std::nullopt);
    }

    /// A request that printed nothing but the frame's lines and, between them, what its lookup printed.
    void expect_trace(const std::string& key_name, const std::string& key_value, const std::string& lookup = "") {
        EXPECT_EQ(trace, entering + found(key_name, key_value) + lookup + exiting);
    }

    bool printed(const std::string& text) const { return trace.find(text) != std::string::npos; }
};

struct served_row {
    const char* class_name;
    const char* key_name;
    const char* key_value;
    const char* builder;     ///< whose trace shows
    const char* built_class; ///< class of the instance
    const char* property;    ///< one that tells which row it was built from
    const char* expected;
};

constexpr served_row served_rows[] = {
    {"ZANTO_FCIPProtocolEndPoint", "Name", "3_x_y", "fcip_pe_build_instance", "ZANTO_FCIPProtocolEndPoint", "TunnelID",
     "3"},
    {"ZANTO_RemoteFCIPPort", "Name", "0_192.168.100.101", "fcip_remote_pe_build_instance", "ZANTO_RemoteFCIPPort",
     "LocalIPAddress", "192.168.100.101"},
    {"ZANTO_IPProtocolEndPoint", "Name", "16777218_x", "ip_pe_build_instance", "ZANTO_IPProtocolEndPoint", "Name",
     "16777218_10.1.1.1_192.168.100.101"},
    {"ZANTO_RemoteIPServiceAccessPoint", "Name", "0_192.168.100.101", "ip_remote_pe_build_instance",
     "ZANTO_RemoteIPServiceAccessPoint", "Name", "0_192.168.100.101_10.1.1.1"},
    {"ZANTO_RemoteTCPPort", "Name", "0_16777218", "tcp_remote_pe_build_instance", "ZANTO_RemoteTCPPort", "Name",
     "0_16777218"},
    {"ZANTO_TCPProtocolEndPoint", "Name", "16777218", "tcp_pe_build_instance", "ZANTO_TCPProtocolEndPoint", "Name",
     "16777218"},
    {"ZANTO_FCIPSettings", "InstanceID", "16777218", "fcip_settings_build_instance", "ZANTO_FCIPSettings", "InstanceID",
     "16777218"},
    {"ZANTO_IPSettings", "InstanceID", "16777218", "ip_settings_build_instance", "ZANTO_IPSettings", "InstanceID",
     "16777218"},
    {"ZANTO_TCPSettings", "InstanceID", "16777218", "tcp_settings_build_instance", "ZANTO_TCPSettings", "InstanceID",
     "16777218"},
    {"ZANTO_IPEndPointStatistics", "InstanceID", "16777218", "ip_statistics_build_instance",
     "ZANTO_IPEndPointStatistics", "InstanceID", "16777218"},
    {"ZANTO_TCPEndPointStatistics", "InstanceID", "16777218", "tcp_statistical_data_build_instance",
     "ZANTO_TCPStatisticalData", "InstanceID", "3"},
    {"ZANTO_EthernetPortStatistics", "InstanceID", "-2096889856", "eth_statistics_build_instance",
     "ZANTO_EthernetPortStatistics", "InstanceID", "-2096889856"},
    {"ZANTO_FCIPProfile", "InstanceID", "3", "fcip_profile_build_instance", "ZANTO_FCIPProfile", "InstanceID", "3"},
    {"ZANTO_LANEndPoint", "Name", "-2096889856:02:00:00:aa:00:02", "ip_pe_build_instance", "ZANTO_LANEndPoint", "Name",
     "16777222_2001:db8::1_2001:db8::2"},
};

TEST_F(GetInstance, EveryRowThatAKeyCanReach) {
    for (const served_row& row : served_rows) {
        SCOPED_TRACE(row.class_name);
        const auto answer = get(path_of(row.class_name, {{row.key_name, row.key_value}}));
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, std::nullopt);
        ASSERT_EQ(answer.objects.size(), 1u);
        EXPECT_EQ(answer.objects[0].class_name, row.built_class);
        EXPECT_EQ(answer.objects[0].name_space, "root/cimv2");
        EXPECT_EQ(values(answer, row.property), std::vector<std::string>{row.expected});
        EXPECT_TRUE(printed(std::string("Entering ") + row.builder + "\n"));
        EXPECT_TRUE(trace.starts_with(entering + found(row.key_name, row.key_value)));
        EXPECT_TRUE(trace.ends_with(exiting));
    }
}

TEST_F(GetInstance, PeersAreLookedUpByASecondTokenBehindAZero) {
    for (const char* class_name : {"ZANTO_RemoteFCIPPort", "ZANTO_RemoteIPServiceAccessPoint", "ZANTO_RemoteTCPPort"}) {
        SCOPED_TRACE(class_name);
        expect_nothing(get(path_of(class_name, {{"Name", "0"}})));                      // too short
        EXPECT_EQ(get(path_of(class_name, {{"Name", "1_16777218"}})).null_results, 1u); // names no row
    }
}

TEST_F(GetInstance, ClassNameIsFixedForStatisticalDataAndProfiles) {
    const auto class_of = [&](const char* class_name, const char* key, const char* value) {
        return get(path_of(class_name, {{key, value}})).objects.at(0).class_name;
    };
    EXPECT_EQ(class_of("zanto_FCIPprotocolENDPOINT", "NAME", "1_"), "zanto_FCIPprotocolENDPOINT");
    EXPECT_EQ(class_of("zanto_lanENDPOINT", "name", "-2097152000"), "zanto_lanENDPOINT");
    EXPECT_EQ(class_of("zanto_tcpendpointstatistics", "InstanceID", "16777216"), "ZANTO_TCPStatisticalData");
    EXPECT_EQ(class_of("zanto_fcipprofile", "InstanceID", "3"), "ZANTO_FCIPProfile");
}

TEST_F(GetInstance, PropertyListReachesTheBuilder) {
    const auto answer = get(path_of("ZANTO_FCIPProtocolEndPoint", {{"Name", "1_"}}), {{"LocalIPAddress"}});
    ASSERT_EQ(answer.objects.size(), 1u);
    EXPECT_EQ(rows(answer.objects[0].properties), (Rows{{"LocalIPAddress", "string", "10.1.1.1"}}));
}

// ---------------------------------------------------------------------------------------------- keys

TEST_F(GetInstance, PathWithoutItsKeyIsAnsweredWithAMessageAndNoLock) {
    for (const auto& path :
         {path_of("ZANTO_FCIPProtocolEndPoint"), path_of("ZANTO_FCIPProtocolEndPoint", {{"SystemName", "x"}}),
          path_of("ZANTO_NoSuchClass", {{"Name", "1"}}), path_of("ZANTO_TCPStatisticalData", {{"InstanceID", "1"}}),
          path_of("ZANTO_RemoteIPPort", {{"Name", "0_10.1.1.2"}}),
          path_of("ZANTO_IPEthernetEndpoint", {{"Antecedent", "x"}})}) {
        SCOPED_TRACE(path_text(path));
        const auto answer = get(path);
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, "invalid key name");
        EXPECT_TRUE(answer.objects.empty());
        EXPECT_EQ(trace, entering + "getInstance can't find key\n");
        EXPECT_EQ(switchsim::calls("mutex_lock"), 0u);
    }
}

TEST_F(GetInstance, KeyThatIsNoStringGoesOnAsAnEmptyOneWhichIsTooShort) {
    cmpihost::Object path = path_of("ZANTO_FCIPProtocolEndPoint");
    path.keys.push_back({"Name", "uint32", {std::uint64_t{1}}});
    expect_nothing(get(path));
    EXPECT_TRUE(trace.starts_with(entering + "Entering get_fcip_link_entry_from\n"));
    EXPECT_TRUE(trace.ends_with(exiting));
}

TEST_F(GetInstance, KeyWithoutItsTokensGetsNothing) {
    for (const served_row& row : served_rows) {
        if (std::string(row.class_name) == "ZANTO_EthernetPortStatistics")
            continue; // reads any text as a number
        SCOPED_TRACE(row.class_name);
        expect_nothing(get(path_of(row.class_name, {{row.key_name, ""}})));
        expect_nothing(get(path_of(row.class_name, {{row.key_name, "___"}})));
    }
}

TEST_F(GetInstance, KeyThatNamesNoRowReachesTheBuilderWithAnEmptyRow) {
    // Entity id 0 has no profile, so the builders that read it find nothing to build.
    for (const char* class_name : {"ZANTO_FCIPProtocolEndPoint", "ZANTO_IPProtocolEndPoint",
                                   "ZANTO_TCPProtocolEndPoint", "ZANTO_FCIPSettings", "ZANTO_IPSettings"}) {
        SCOPED_TRACE(class_name);
        const char* key = std::string(class_name).ends_with("Settings") ? "InstanceID" : "Name";
        EXPECT_EQ(get(path_of(class_name, {{key, "99_x"}})).null_results, 1u);
    }
    // The builders that fetch the link again by its index 0 answer with the first link of index 0.
    EXPECT_EQ(values(get(path_of("ZANTO_TCPSettings", {{"InstanceID", "99"}})), "InstanceID"),
              std::vector<std::string>{"16777216"});
    EXPECT_EQ(values(get(path_of("ZANTO_TCPEndPointStatistics", {{"InstanceID", "99"}})), "InstanceID"),
              std::vector<std::string>{"1"});
}

TEST_F(GetInstance, EmptyLinkTableNeverLooksAtTheKey) {
    the_switch().links.clear();
    EXPECT_EQ(get(path_of("ZANTO_FCIPProtocolEndPoint", {{"Name", ""}})).null_results, 1u);
}

// ---------------------------------------------------------------------------------------------- rows of their own

TEST_F(GetInstance, FailedLinkErrorsQueryThatLeftARecordIsTraced) {
    const auto path = path_of("ZANTO_TCPEndPointStatistics", {{"InstanceID", "16777216"}});
    const std::string location = " Function : FCIP_GetInstance Line 418 \n";

    EXPECT_EQ(get(path).objects.size(), 1u);
    EXPECT_FALSE(printed(location));
    EXPECT_EQ(switchsim::calls("fcip_snmp_get_link_errors"), 1u);

    switchsim::inject("fcip_snmp_get_link_errors", Fault::fail);
    EXPECT_EQ(get(path).objects.size(), 1u);
    EXPECT_FALSE(printed(location));

    switchsim::clear_faults();
    switchsim::inject("fcip_snmp_get_link_errors", Fault::fail_leaving_record);
    EXPECT_EQ(get(path).objects.size(), 1u);
    EXPECT_TRUE(printed(location + "Entering tcp_statistical_data_build_instance\n"));
}

TEST_F(GetInstance, TcpStatisticsOfAVanishedLinkAreMinusOne) {
    // The lookup reads three rows before it finds tunnel 7; the builder's own walk then fails at once.
    switchsim::inject("fcip_get_link_entry", Fault::fail, 4);
    const auto answer = get(path_of("ZANTO_TCPEndPointStatistics", {{"InstanceID", "16777222"}}));
    EXPECT_EQ(answer.invalid_results, 1u);
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
}

TEST_F(GetInstance, EthernetStatisticsReadTheKeyAsANumber) {
    const auto get_port = [&](const char* key) {
        return get(path_of("ZANTO_EthernetPortStatistics", {{"InstanceID", key}}));
    };
    EXPECT_EQ(values(get_port("-2097152000 and more"), "InstanceID"), std::vector<std::string>{"-2097152000"});
    expect_nothing(get_port("no number")); // port 0
    the_switch().ports[0] = the_switch().ports.at(ethernet_1);
    EXPECT_EQ(values(get_port("no number"), "InstanceID"), std::vector<std::string>{"0"});
    EXPECT_EQ(values(get_port(""), "InstanceID"), std::vector<std::string>{"0"});
}

TEST_F(GetInstance, EthernetStatisticsOfAnUnreadablePortGetNothing) {
    for (const Fault fault : read_faults) {
        switchsim::inject("pm_cim_get_port_info", fault, 1);
        expect_nothing(get(path_of("ZANTO_EthernetPortStatistics", {{"InstanceID", "-2097152000"}})));
        expect_trace("InstanceID", "-2097152000");
    }
}

TEST_F(GetInstance, ProfileNeedsATunnelOfItsNumberAndItsOwnRow) {
    const auto get_profile = [&](const char* key) { return get(path_of("ZANTO_FCIPProfile", {{"InstanceID", key}})); };
    EXPECT_EQ(get_profile("3").objects.size(), 1u); // tunnel 3 and profile 3
    EXPECT_EQ(get_profile("7").objects.size(), 1u); // tunnel 7 and profile 7
    const std::string lookup_entering = "Entering get_fcip_link_entry_from\n";
    const std::string lookup_exiting = "Exiting get_fcip_link_entry_from\n";
    expect_nothing(get_profile("1")); // tunnel 1, but no profile 1
    expect_trace("InstanceID", "1", lookup_entering + "tunnel id : 1 \nEntry Found" + lookup_exiting);
    the_switch().links.erase(tunnel_3);
    expect_nothing(get_profile("3")); // profile 3, but no tunnel 3
    expect_trace("InstanceID", "3", lookup_entering + "tunnel id : 3 \ntunnel id : 3 \n" + lookup_exiting);
    expect_nothing(get_profile("7x")); // tunnel 7, but no profile of this text
    expect_trace("InstanceID", "7x", lookup_entering + "tunnel id : 7 \ntunnel id : 7 \nEntry Found" + lookup_exiting);
    expect_nothing(get_profile("07"));
    expect_nothing(get_profile("_")); // too short
    expect_trace("InstanceID", "_", lookup_entering);
}

TEST_F(GetInstance, ProfileIsAnsweredForATunnelThatUsesNone) {
    const auto ids = [this] { return values(get(path_of("ZANTO_FCIPProfile", {{"InstanceID", "7"}})), "InstanceID"); };
    auto link = the_switch().links.extract(tunnel_7);
    EXPECT_TRUE(ids().empty()); // no tunnel has the profile's number
    link.key() = {0, link.mapped().link_index};
    link.mapped().entity_id = 0;
    the_switch().links.insert(std::move(link));
    EXPECT_EQ(ids(), std::vector<std::string>{"7"});
}

TEST_F(GetInstance, LanEndpointIsBuiltByTheIpEndpointsBuilder) {
    const auto answer = get(path_of("ZANTO_LANEndPoint", {{"Name", "-2097152000:02:00:00:aa:00:01"}}));
    ASSERT_EQ(answer.objects.size(), 1u);
    EXPECT_EQ(values(answer, "CreationClassName"), std::vector<std::string>{"ZANTO_IPProtocolEndPoint"});
}

TEST_F(GetInstance, EthernetPortPassesTheKeyCheckAndGetsNothing) {
    expect_nothing(get(path_of("ZANTO_EthernetPort", {{"DeviceID", "-2097152000"}})));
    EXPECT_EQ(trace, entering + found("DeviceID", "-2097152000") + exiting);
}

// ---------------------------------------------------------------------------------------------- associations

TEST_F(GetInstance, AssociationsAreHandedWholeToTheRebuilders) {
    whole_objects_expected = false; // the ends are made up: nobody looks at them
    for (const RebuiltAssociation& row : rebuilt_associations) {
        SCOPED_TRACE(row.class_name);
        expect_rebuilt(get(row.path()), row);
    }
}

TEST_F(GetInstance, ReturnDoneIsNeverCalled) {
    const auto answer = get(path_of("ZANTO_FCIPProtocolEndPoint", {{"Name", "1_"}}));
    EXPECT_EQ(answer.objects.size(), 1u);
    EXPECT_FALSE(answer.done);
    EXPECT_FALSE(get(path_of("ZANTO_FCIPProtocolEndPoint")).done);
}

TEST_F(GetInstance, LockIsHeldForTheDispatchOnly) {
    get(path_of("ZANTO_FCIPProtocolEndPoint", {{"Name", "1_"}}));
    EXPECT_EQ(switchsim::calls("mutex_lock"), 1u);
    EXPECT_EQ(switchsim::calls("mutex_unlock"), 1u);
}

} // namespace
