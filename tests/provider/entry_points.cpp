// The factories, the MI tables, the refused operations and the entries that nobody calls.
#include "provider/uncalled.h"

#include "support/requests.h"

#include <cstring>

namespace {

using namespace test;
using switchsim::Fault;

class EntryPoints : public RequestTest {};

constexpr const char* start_up_line = "get_using_cmi done init mts response q with error\n";

TEST_F(EntryPoints, InstanceMiIsVersion100AndCompletelyFilled) {
    const CMPIInstanceMIFT& table = *provider.instance_mi->ft;
    EXPECT_EQ(provider.instance_mi->hdl, nullptr);
    EXPECT_EQ(table.ftVersion, 100);
    EXPECT_EQ(table.miVersion, 100);
    EXPECT_STREQ(table.miName, "instanceFCIPProvider");
    EXPECT_NE(table.cleanup, nullptr);
    EXPECT_NE(table.enumerateInstanceNames, nullptr);
    EXPECT_NE(table.enumerateInstances, nullptr);
    EXPECT_NE(table.getInstance, nullptr);
    EXPECT_NE(table.createInstance, nullptr);
    EXPECT_NE(table.modifyInstance, nullptr);
    EXPECT_NE(table.deleteInstance, nullptr);
    EXPECT_NE(table.execQuery, nullptr);
}

TEST_F(EntryPoints, AssociationMiIsVersion100AndCompletelyFilled) {
    const CMPIAssociationMIFT& table = *provider.association_mi->ft;
    EXPECT_EQ(provider.association_mi->hdl, nullptr);
    EXPECT_EQ(table.ftVersion, 100);
    EXPECT_EQ(table.miVersion, 100);
    EXPECT_STREQ(table.miName, "associationFCIPProvider");
    EXPECT_NE(table.cleanup, nullptr);
    EXPECT_NE(table.associators, nullptr);
    EXPECT_NE(table.associatorNames, nullptr);
    EXPECT_NE(table.references, nullptr);
    EXPECT_NE(table.referenceNames, nullptr);
}

TEST_F(EntryPoints, EachFactoryOpensTheQueueOnceUnderTheLockAndKeepsTheBroker) {
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
    EXPECT_EQ(std::strlen(start_up_line), 50u);
    switchsim::inject("init_mts", Fault::fail, switchsim::every_call, -1);
    EXPECT_EQ(captured([&] { return FCIPProvider_Create_InstanceMI(cmpihost::broker(), nullptr); }),
              provider.instance_mi);
    EXPECT_EQ(trace, start_up_line);
    EXPECT_EQ(captured([&] { return FCIPProvider_Create_AssociationMI(cmpihost::broker(), nullptr); }),
              provider.association_mi);
    EXPECT_EQ(trace, start_up_line);
    switchsim::clear_faults();
    EXPECT_EQ(enumerate_instances("ZANTO_FCIPProtocolEndPoint").objects.size(), 3u);
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

struct dispatcher_row {
    const char* class_name;
    const char* key_value;
    const char* built_class; ///< null: nothing is returned
    const char* property;
    const char* expected;
};

constexpr dispatcher_row dispatcher_rows[] = {
    {"ZANTO_FCIPProtocolEndPoint", "3_x", "ZANTO_FCIPProtocolEndPoint", "TunnelID", "3"},
    {"ZANTO_TCPProtocolEndPoint", "3_x", "ZANTO_FCIPProtocolEndPoint", "TunnelID", "3"},
    {"ZANTO_RemoteFCIPPort", "0_10.1.1.2", "ZANTO_RemoteFCIPPort", "LocalIPAddress", "10.1.1.2"},
    {"ZANTO_IPProtocolEndPoint", "16777216_x", "ZANTO_IPProtocolEndPoint", "Name", "16777216_10.1.1.1_10.1.1.2"},
    {"ZANTO_FCIPRemoteServiceAccessPoint", "0_10.1.1.2", "ZANTO_FCIPRemoteServiceAccessPoint", "AccessInfo",
     "10.1.1.2"},
    {"ZANTO_RemoteTCPort", "0_10.1.1.2", "ZANTO_RemoteTCPort", "CreationClassName", "ZANTO_RemoteIPServiceAccessPoint"},
    {"ZANTO_FCIPSettings", "16777216", "ZANTO_FCIPSettings", "InstanceID", "16777216"},
    {"ZANTO_IPSettings", "16777216", "ZANTO_IPSettings", "InstanceID", "16777216"},
    {"ZANTO_TCPSettings", "16777216", "ZANTO_TCPSettings", "InstanceID", "16777216"},
    {"ZANTO_IPEndPointStatistics", "16777216", "ZANTO_IPEndPointStatistics", "InstanceID", "16777216"},
    {"ZANTO_TCPEndPointStatistics", "16777216", "ZANTO_TCPStatisticalData", "InstanceID", "1"},
    {"ZANTO_EthernetPortStatistics", "-2096889856:x", "ZANTO_EthernetPortStatistics", "InstanceID", "-2096889856"},
    {"ZANTO_FCIPProfile", "7", "ZANTO_FCIPProfile", "InstanceID", "7"},
    {"ZANTO_LANEndPoint", "7", "ZANTO_LANEndPoint", "Name", "-2096889856:02:00:00:aa:00:02"},
    {"ZANTO_FCPortProtocolEndPoint", "1", nullptr, nullptr, nullptr},
    {"ZANTO_RemoteIPServiceAccessPoint", "0_10.1.1.2", nullptr, nullptr, nullptr}, // answers the misspelt name only
    {"ZANTO_RemoteTCPPort", "0_16777216", nullptr, nullptr, nullptr},              // likewise
    {"ZANTO_NoSuchClass", "1", nullptr, nullptr, nullptr},
};

TEST_F(EntryPoints, UncalledDispatcherAnswersByItsOwnTableAndAlwaysMinusOne) {
    for (const auto& row : dispatcher_rows) {
        SCOPED_TRACE(row.class_name);
        scope.answer() = {};
        EXPECT_EQ(call([&] {
                      return get_fcip_instance(row.class_name, row.key_value, scope.result(), nullptr, "root/cimv2",
                                               nullptr);
                  }),
                  -1);
        EXPECT_TRUE(trace.starts_with("Entering get_fcip_instance\n"));
        EXPECT_TRUE(trace.ends_with("Exiting get_fcip_instance\n"));
        ASSERT_EQ(scope.answer().objects.size(), row.built_class == nullptr ? 0u : 1u);
        if (row.built_class == nullptr)
            continue;
        EXPECT_EQ(scope.answer().objects[0].class_name, row.built_class);
        EXPECT_EQ(values(scope.answer(), row.property), std::vector<std::string>{row.expected});
    }
}

TEST_F(EntryPoints, UncalledDispatcherReturnsNothingAfterAFailedLookup) {
    EXPECT_EQ(call([&] {
                  return get_fcip_instance("ZANTO_FCIPProtocolEndPoint", "", scope.result(), nullptr, "root/cimv2",
                                           nullptr);
              }),
              -1);
    EXPECT_TRUE(scope.answer().objects.empty());
    EXPECT_EQ(scope.answer().null_results, 0u);
}

} // namespace
