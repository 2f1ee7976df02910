// The factories, the MI tables, the refused operations and the entries that nobody calls.
#include "provider/mi/uncalled.h"

#include "tests/provider/mi/rebuilt_associations.h"

#include <algorithm>
#include <cstring>

namespace {

using namespace test;
using switchsim::Fault;

class EntryPoints : public RequestTest {
  protected:
    void expect_both_mis_answer() {
        EXPECT_EQ(enumerate_instances("ZANTO_FCIPProtocolEndPoint").objects.size(), 3u);
        const auto endpoint = path_of("ZANTO_FCIPProtocolEndPoint", {{"Name", "1_10.1.1.1_10.1.1.2"}});
        EXPECT_EQ(walk(Operation::associator_names, endpoint, "ZANTO_FCIPTCPEndpoint").objects.size(), 1u);
    }
};

constexpr const char* start_up_line = "get_using_cmi done init mts response q with error\n";

/// What both tables begin with.
template <typename Mi>
void expect_version_100(const Mi& mi, const char* name) {
    EXPECT_EQ(mi.hdl, nullptr);
    EXPECT_EQ(mi.ft->ftVersion, 100);
    EXPECT_EQ(mi.ft->miVersion, 100);
    EXPECT_STREQ(mi.ft->miName, name);
    EXPECT_NE(mi.ft->cleanup, nullptr);
}

TEST_F(EntryPoints, InstanceMiIsVersion100AndCompletelyFilled) {
    expect_version_100(*provider.instance_mi, "instanceFCIPProvider");
    const CMPIInstanceMIFT& table = *provider.instance_mi->ft;
    EXPECT_NE(table.enumerateInstanceNames, nullptr);
    EXPECT_NE(table.enumerateInstances, nullptr);
    EXPECT_NE(table.getInstance, nullptr);
    EXPECT_NE(table.createInstance, nullptr);
    EXPECT_NE(table.modifyInstance, nullptr);
    EXPECT_NE(table.deleteInstance, nullptr);
    EXPECT_NE(table.execQuery, nullptr);
}

TEST_F(EntryPoints, AssociationMiIsVersion100AndCompletelyFilled) {
    expect_version_100(*provider.association_mi, "associationFCIPProvider");
    const CMPIAssociationMIFT& table = *provider.association_mi->ft;
    EXPECT_NE(table.associators, nullptr);
    EXPECT_NE(table.associatorNames, nullptr);
    EXPECT_NE(table.references, nullptr);
    EXPECT_NE(table.referenceNames, nullptr);
}

TEST_F(EntryPoints, EachFactoryOpensTheQueueOnceAndKeepsTheBroker) {
    _broker = nullptr;
    captured([&] { FCIPProvider_Create_InstanceMI(cmpihost::broker(), nullptr); });
    EXPECT_EQ(_broker, cmpihost::broker());
    EXPECT_EQ(trace, "");
    EXPECT_EQ(switchsim::calls("init_mts"), 1u);

    const CMPIBroker another = *cmpihost::broker();
    captured([&] { FCIPProvider_Create_AssociationMI(&another, nullptr); });
    EXPECT_EQ(_broker, &another); // the last one wins
    EXPECT_EQ(switchsim::calls("init_mts"), 2u);
    EXPECT_EQ(switchsim::calls("mutex_lock"), 2u);
    _broker = cmpihost::broker();
}

TEST_F(EntryPoints, FailureToOpenTheQueueIsTracedAndBothMisStayUsable) {
    switchsim::inject("init_mts", Fault::fail, switchsim::every_call, -1);
    EXPECT_EQ(captured([&] { return FCIPProvider_Create_InstanceMI(cmpihost::broker(), nullptr); }),
              provider.instance_mi);
    EXPECT_EQ(trace, start_up_line);
    EXPECT_EQ(captured([&] { return FCIPProvider_Create_AssociationMI(cmpihost::broker(), nullptr); }),
              provider.association_mi);
    EXPECT_EQ(trace, start_up_line);
    switchsim::clear_faults();
    expect_both_mis_answer();
}

TEST_F(EntryPoints, OnlyANegativeAnswerIsAFailureToOpenTheQueue) {
    switchsim::inject("init_mts", Fault::fail, switchsim::every_call, 1);
    captured([&] {
        FCIPProvider_Create_InstanceMI(cmpihost::broker(), nullptr);
        FCIPProvider_Create_AssociationMI(cmpihost::broker(), nullptr);
    });
    EXPECT_EQ(switchsim::calls("init_mts"), 2u);
    EXPECT_EQ(trace, "");
    expect_both_mis_answer();
}

TEST_F(EntryPoints, CleanupAnswersOkAndLeavesTheQueueOpen) {
    mts_queue open = mts_q;
    const CMPIStatus instance_status =
        captured([&] { return provider.instance_mi->ft->cleanup(provider.instance_mi, scope.context(), 1); });
    EXPECT_EQ(instance_status.rc, CMPI_RC_OK);
    EXPECT_EQ(instance_status.msg, nullptr);
    const CMPIStatus association_status =
        provider.association_mi->ft->cleanup(provider.association_mi, scope.context(), 0);
    EXPECT_EQ(association_status.rc, CMPI_RC_OK);
    EXPECT_EQ(association_status.msg, nullptr);
    EXPECT_EQ(mts_q, open);
    EXPECT_EQ(trace, "");
    EXPECT_EQ(switchsim::calls("mutex_lock") + switchsim::total_calls(), 0u);
    EXPECT_EQ(enumerate_instances("ZANTO_FCIPProtocolEndPoint").objects.size(), 3u);
}

TEST_F(EntryPoints, ChangesAndQueriesAreRefusedOnAnyClass) {
    for (const char* class_name : {"ZANTO_FCIPProtocolEndPoint", "ZANTO_FCIPPEBasedOn", "ZANTO_NoSuchClass"}) {
        for (const Operation operation : {Operation::create_instance, Operation::modify_instance,
                                          Operation::delete_instance, Operation::exec_query}) {
            cmpihost::Request request;
            request.operation = operation;
            request.path = path_of(class_name, {{"Name", "1_10.1.1.1_10.1.1.2"}});
            request.query = "select * from x";
            const auto answer = ask(request);
            EXPECT_EQ(answer.rc, CMPI_RC_ERR_NOT_SUPPORTED);
            EXPECT_EQ(answer.message, std::nullopt);
            EXPECT_TRUE(answer.objects.empty());
            EXPECT_EQ(answer.null_results + answer.invalid_results, 0u);
            EXPECT_EQ(trace, "");
            EXPECT_EQ(switchsim::calls("mutex_lock"), 0u);
        }
    }
}

// ---------------------------------------------------------------------------------------------- print_errors

TEST_F(EntryPoints, PrintErrorsPrintsEachFieldAsItsLow32Bits) {
    std::vector<std::uint8_t> record(80, 0);
    for (std::uint32_t word = 0; word < 4; ++word) {
        const std::uint32_t value = word + 1; // host order
        std::memcpy(&record[std::size_t{4} * word], &value, sizeof value);
    }
    for (std::size_t counter = 0; counter < 8; ++counter) {
        record[16 + 8 * counter + 3] = 9; // in the high half, which does not show
        record[16 + 8 * counter + 7] = static_cast<std::uint8_t>(10 + counter);
    }
    captured([&] { fcip::print_errors(record.data()); });
    EXPECT_EQ(trace, " 1 \n 2 \n 3 \n 4 \n 10 \n 11 \n 12 \n 13 \n 14 \n 15 \n 16 \n 17 \n");
}

// ---------------------------------------------------------------------------------------------- get_fcip_instance

class UncalledDispatcher : public RequestTest {
  protected:
    /// Calls get_fcip_instance, which always answers -1, to an answer of its own.
    const cmpihost::Answer& dispatch(const char* class_name, const char* key_value,
                                     const CMPIObjectPath* path = nullptr, const char** properties = nullptr) {
        scope.answer() = {};
        EXPECT_EQ(call([&] {
                      return get_fcip_instance(class_name, key_value, scope.result(), properties, "root/cimv2", path);
                  }),
                  -1);
        return scope.answer();
    }

    void expect_nothing(const cmpihost::Answer& answer) {
        EXPECT_TRUE(answer.objects.empty());
        EXPECT_EQ(answer.null_results + answer.invalid_results, 0u);
    }
};

/// What get_fcip_link_entry_from prints: its lines for each row that it looks at, then what it found.
std::string lookup(const std::vector<std::string>& rows, bool found = true) {
    std::string text = "Entering get_fcip_link_entry_from\n";
    for (const auto& row : rows)
        text += row;
    return text + (found ? "Entry Found" : "") + "Exiting get_fcip_link_entry_from\n";
}

std::string at(int line) {
    return " Function : get_fcip_link_entry_from Line " + std::to_string(line) + " \n";
}

// Tunnel 3, the second row, as each mode finds it.
const std::string by_tunnel = lookup({"tunnel id : 3 \n", "tunnel id : 3 \n"});
const std::string by_if_index = lookup({at(76) + "if_index : 16777218 \n", at(76) + "if_index : 16777218 \n"});
const std::string by_if_index_only = lookup({"if_index : 16777218 \n", "if_index : 16777218 \n"});
const std::string by_peer_address = lookup({at(151) + "if_index : 0 \n" + at(170) + "ipstr: 10.1.1.2 \n",
                                            at(151) + "if_index : 0 \n" + at(170) + "ipstr: 192.168.100.101 \n"});

// The first row, found by its profile. And tunnel 7 by its Ethernet port.
const std::string by_entity = lookup({""});
const std::string ethernet_line = at(113) + "if_index : -2096889856 \n ret_entry->vrkFcipLinkExtEthIfIndex ";
const std::string by_ethernet_if_index =
    lookup({ethernet_line + "-2097152000 \n", ethernet_line + "-2097152000 \n", ethernet_line + "-2096889856 \n"});

struct dispatcher_row {
    const char* class_name;
    const char* key_value;
    std::string trace; ///< behind Entering: the lookup's, then how the builder's begins
    const char* built_class;
    const char* property;
    const char* expected;
};

const dispatcher_row dispatcher_rows[] = {
    {"ZANTO_FCIPProtocolEndPoint", "3_x", by_tunnel + "Entering fcip_pe_build_instance\n", "ZANTO_FCIPProtocolEndPoint",
     "TunnelID", "3"},
    {"ZANTO_TCPProtocolEndPoint", "3_x", by_tunnel + "Entering fcip_pe_build_instance\n", "ZANTO_FCIPProtocolEndPoint",
     "TunnelID", "3"},
    {"ZANTO_RemoteFCIPPort", "0_192.168.100.101", by_peer_address + "Entering fcip_remote_pe_build_instance\n",
     "ZANTO_RemoteFCIPPort", "LocalIPAddress", "192.168.100.101"},
    {"ZANTO_IPProtocolEndPoint", "16777218_x", by_if_index + "Entering ip_pe_build_instance\n",
     "ZANTO_IPProtocolEndPoint", "Name", "16777218_10.1.1.1_192.168.100.101"},
    {"ZANTO_FCIPRemoteServiceAccessPoint", "0_192.168.100.101",
     by_peer_address + "Entering ip_remote_pe_build_instance\n", "ZANTO_FCIPRemoteServiceAccessPoint", "AccessInfo",
     "192.168.100.101"},
    {"ZANTO_RemoteTCPort", "0_192.168.100.101", by_peer_address + "Entering ip_remote_pe_build_instance\n",
     "ZANTO_RemoteTCPort", "AccessInfo", "192.168.100.101"},
    {"ZANTO_FCIPSettings", "16777218", by_if_index_only + "Entering fcip_settings_build_instance\n",
     "ZANTO_FCIPSettings", "InstanceID", "16777218"},
    {"ZANTO_IPSettings", "16777218", by_if_index_only + "Entering ip_settings_build_instance\n", "ZANTO_IPSettings",
     "InstanceID", "16777218"},
    {"ZANTO_TCPSettings", "16777218", by_if_index_only + "Entering tcp_settings_build_instance\n", "ZANTO_TCPSettings",
     "InstanceID", "16777218"},
    {"ZANTO_IPEndPointStatistics", "16777218", by_if_index_only + "Entering ip_statistics_build_instance\n",
     "ZANTO_IPEndPointStatistics", "InstanceID", "16777218"},
    {"ZANTO_TCPEndPointStatistics", "16777218", by_if_index_only + "Entering tcp_statistical_data_build_instance\n",
     "ZANTO_TCPStatisticalData", "InstanceID", "3"},
    {"ZANTO_EthernetPortStatistics", "-2096889856:x", by_ethernet_if_index + "Entering eth_statistics_build_instance\n",
     "ZANTO_EthernetPortStatistics", "InstanceID", "-2096889856"},
    {"ZANTO_FCIPProfile", "3",
     by_entity + "get_profile_from_link_entry : Error\nEntering fcip_profile_build_instance\n", "ZANTO_FCIPProfile",
     "InstanceID", "3"},
    {"ZANTO_LANEndPoint", "3_x", by_tunnel + "Exiting lan_endpoint_build_instance\n", "ZANTO_LANEndPoint", "Name",
     "-2097152000:02:00:00:aa:00:01"},
};

TEST_F(UncalledDispatcher, AnswersByItsOwnTableAndAlwaysMinusOne) {
    for (const auto& row : dispatcher_rows) {
        SCOPED_TRACE(row.class_name);
        const auto& answer = dispatch(row.class_name, row.key_value);
        const std::string expected = "Entering get_fcip_instance\n" + row.trace;
        EXPECT_EQ(trace.substr(0, expected.size()), expected);
        EXPECT_TRUE(trace.ends_with("Exiting get_fcip_instance\n"));
        ASSERT_EQ(answer.objects.size(), 1u);
        EXPECT_EQ(answer.objects[0].class_name, row.built_class);
        EXPECT_EQ(values(answer, row.property), std::vector<std::string>{row.expected});
        EXPECT_EQ(switchsim::calls("mutex_lock"), 1u) << "the test's own";
        switchsim::clear_counts();
    }
}

TEST_F(UncalledDispatcher, ReturnsNothingForOtherClasses) {
    // The two last ones are served by FCIP_GetInstance: here only their misspelt names are.
    for (const char* class_name : {"ZANTO_FCPortProtocolEndPoint", "ZANTO_NoSuchClass", "ZANTO_TCPStatisticalData",
                                   "ZANTO_RemoteIPServiceAccessPoint", "ZANTO_RemoteTCPPort"}) {
        SCOPED_TRACE(class_name);
        expect_nothing(dispatch(class_name, "0_10.1.1.2"));
        EXPECT_EQ(trace, "Entering get_fcip_instance\nExiting get_fcip_instance\n");
    }
}

TEST_F(UncalledDispatcher, ReturnsNothingAfterAFailedLookup) {
    struct row {
        const char* class_name;
        std::string trace; ///< the lookup's, behind Entering
    };
    for (const auto& [class_name, printed] :
         {row{"ZANTO_FCIPProtocolEndPoint", ""}, row{"ZANTO_TCPProtocolEndPoint", ""},
          row{"ZANTO_RemoteFCIPPort", at(151)}, row{"ZANTO_IPProtocolEndPoint", at(76)},
          row{"ZANTO_FCIPRemoteServiceAccessPoint", at(151)}, row{"ZANTO_RemoteTCPort", at(151)},
          row{"ZANTO_EthernetPortStatistics", at(113)}, row{"ZANTO_LANEndPoint", ""}}) {
        SCOPED_TRACE(class_name);
        expect_nothing(dispatch(class_name, "_"));
        EXPECT_EQ(trace, "Entering get_fcip_instance\nEntering get_fcip_link_entry_from\n" + printed +
                             "Exiting get_fcip_instance\n");
    }
}

TEST_F(UncalledDispatcher, ReturnsNothingForAPortThatCannotBeRead) {
    for (const Fault fault : read_faults) {
        switchsim::inject("pm_cim_get_port_info", fault, 1);
        expect_nothing(dispatch("ZANTO_EthernetPortStatistics", "-2096889856"));
        EXPECT_EQ(trace, "Entering get_fcip_instance\n" + by_ethernet_if_index + "Exiting get_fcip_instance\n");
    }
}

TEST_F(UncalledDispatcher, ReturnsNothingForAProfileThatCannotBeRead) {
    the_switch().profiles.erase(3);
    expect_nothing(dispatch("ZANTO_FCIPProfile", "3")); // which tunnel 1 still names
    EXPECT_EQ(trace, "Entering get_fcip_instance\n" + by_entity + "Exiting get_fcip_instance\n");
    expect_nothing(dispatch("ZANTO_FCIPProfile", "5")); // which no tunnel names
    EXPECT_EQ(trace, "Entering get_fcip_instance\n" + lookup({}, false) + "Exiting get_fcip_instance\n");
}

TEST_F(UncalledDispatcher, TracesALinkErrorsRecordUnderItsOwnName) {
    const std::string start = "Entering get_fcip_instance\n" + by_if_index_only;
    const std::string location = " Function : get_fcip_instance Line 418 \n";
    const std::string builder = "Entering tcp_statistical_data_build_instance\n";

    switchsim::inject("fcip_snmp_get_link_errors", Fault::fail_leaving_record, 1);
    EXPECT_EQ(dispatch("ZANTO_TCPEndPointStatistics", "16777218").objects.size(), 1u);
    EXPECT_TRUE(trace.starts_with(start + location + builder)) << trace;
    for (const Fault fault : {Fault::fail, Fault::succeed_without_record}) {
        switchsim::inject("fcip_snmp_get_link_errors", fault, 1);
        EXPECT_EQ(dispatch("ZANTO_TCPEndPointStatistics", "16777218").objects.size(), 1u);
        EXPECT_TRUE(trace.starts_with(start + builder)) << trace;
    }
}

/// What get_fcip_instance rebuilds besides.
constexpr RebuiltAssociation rebuilt_by_dispatcher_alone[] = {
    {"ZANTO_IPEthernetEndpoint", "Antecedent", "Dependent"},
    {"ZANTO_EthernetPortProtocolEndpoint", "Antecedent", "Dependent"},
    {"ZANTO_SwitchHostedFCIPAccessPoint", "Antecedent", "Dependent"},
    {"ZANTO_SwitchHostedIPAccessPoint", "Antecedent", "Dependent"},
    {"ZANTO_SwitchHostedTCPAccessPoint", "Antecedent", "Dependent"},
    {"ZANTO_IPEndPointStatisticalData", "ManagedElement", "Stats"},
};

TEST_F(UncalledDispatcher, HandsAssociationsToTheRebuilders) {
    const auto hands_on = [&](const RebuiltAssociation& row) {
        SCOPED_TRACE(row.class_name);
        const bool prints_keys = std::string(row.role1) == "GroupComponent";
        auto path = row.path();
        expect_rebuilt(dispatch(row.class_name, "", cmpihost::new_path(path)), row);
        EXPECT_EQ(trace, std::string("Entering get_fcip_instance\n") +
                             (prints_keys ? "Key GroupComponent \nKey PartComponent \n" : "") +
                             "Exiting get_fcip_instance\n");

        path.keys.pop_back();
        expect_nothing(dispatch(row.class_name, "", cmpihost::new_path(path)));
    };
    std::ranges::for_each(rebuilt_associations, hands_on);
    std::ranges::for_each(rebuilt_by_dispatcher_alone, hands_on);
}

TEST_F(UncalledDispatcher, HandsThePropertyListToTheBuilders) {
    for (const auto& row : dispatcher_rows) {
        SCOPED_TRACE(row.class_name);
        const char* properties[] = {row.property, nullptr};
        const auto& answer = dispatch(row.class_name, row.key_value, nullptr, properties);
        ASSERT_EQ(answer.objects.size(), 1u);
        ASSERT_EQ(answer.objects[0].properties.size(), 1u);
        EXPECT_EQ(values(answer, row.property), std::vector<std::string>{row.expected});
    }
}

} // namespace
