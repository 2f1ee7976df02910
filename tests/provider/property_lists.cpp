// The request's property list reaches the builder of every class, and its one name is all that comes back.
#include "tests/support/request_test.h"

namespace {

using namespace test;

class PropertyLists : public RequestTest {
  protected:
    /// Holds an answer to a request for one property against the answer with all of them.
    static void expect_that_one(const cmpihost::Answer& filtered, const cmpihost::Answer& whole,
                                const std::string& property) {
        ASSERT_FALSE(whole.objects.empty());
        ASSERT_EQ(filtered.objects.size(), whole.objects.size());
        for (std::size_t index = 0; index < whole.objects.size(); ++index) {
            EXPECT_GE(whole.objects[index].properties.size(), 2u);
            const auto* expected = whole.objects[index].property(property);
            ASSERT_NE(expected, nullptr);
            EXPECT_EQ(rows(filtered.objects[index].properties), rows({*expected}));
        }
    }
};

struct asked {
    const char* class_name;
    const char* property;
};

TEST_F(PropertyLists, EnumerationsOfEveryClass) {
    for (const auto& [class_name, property] : {
             asked{"ZANTO_FCIPProtocolEndPoint", "TunnelID"},
             asked{"ZANTO_RemoteFCIPPort", "LocalIPAddress"},
             asked{"ZANTO_FCIPProfile", "InstanceID"},
             asked{"ZANTO_FCIPSettings", "InstanceID"},
             asked{"ZANTO_IPSettings", "InstanceID"},
             asked{"ZANTO_TCPSettings", "InstanceID"},
             asked{"ZANTO_IPProtocolEndPoint", "Name"},
             asked{"ZANTO_RemoteIPServiceAccessPoint", "AccessInfo"},
             asked{"ZANTO_TCPProtocolEndPoint", "Name"},
             asked{"ZANTO_RemoteTCPPort", "Name"},
             asked{"ZANTO_TCPEndPointStatistics", "InstanceID"},
             asked{"ZANTO_IPEndPointStatistics", "InstanceID"},
             asked{"ZANTO_TCPStatisticalData", "InstanceID"},
             asked{"ZANTO_LANEndPoint", "Name"},
             asked{"ZANTO_EthernetPortStatistics", "InstanceID"},
         }) {
        SCOPED_TRACE(class_name);
        expect_that_one(enumerate_instances(class_name, {{property}}), enumerate_instances(class_name), property);
    }
}

struct asked_object {
    const char* class_name;
    const char* key_name;
    const char* key_value;
    const char* property;
};

TEST_F(PropertyLists, GetsOfEveryClass) {
    for (const auto& [class_name, key_name, key_value, property] : {
             asked_object{"ZANTO_FCIPProtocolEndPoint", "Name", "3_", "TunnelID"},
             asked_object{"ZANTO_RemoteFCIPPort", "Name", "0_10.1.1.2", "LocalIPAddress"},
             asked_object{"ZANTO_IPProtocolEndPoint", "Name", "16777218", "Name"},
             asked_object{"ZANTO_RemoteIPServiceAccessPoint", "Name", "0_10.1.1.2", "AccessInfo"},
             asked_object{"ZANTO_RemoteTCPPort", "Name", "0_16777218", "Name"},
             asked_object{"ZANTO_TCPProtocolEndPoint", "Name", "16777218", "Name"},
             asked_object{"ZANTO_FCIPSettings", "InstanceID", "16777218", "InstanceID"},
             asked_object{"ZANTO_IPSettings", "InstanceID", "16777218", "InstanceID"},
             asked_object{"ZANTO_TCPSettings", "InstanceID", "16777218", "InstanceID"},
             asked_object{"ZANTO_IPEndPointStatistics", "InstanceID", "16777218", "InstanceID"},
             asked_object{"ZANTO_TCPEndPointStatistics", "InstanceID", "16777218", "InstanceID"},
             asked_object{"ZANTO_EthernetPortStatistics", "InstanceID", "-2097152000", "InstanceID"},
             asked_object{"ZANTO_FCIPProfile", "InstanceID", "3", "InstanceID"},
             asked_object{"ZANTO_LANEndPoint", "Name", "-2097152000", "Name"},
         }) {
        SCOPED_TRACE(class_name);
        const auto path = path_of(class_name, {{key_name, key_value}});
        expect_that_one(get(path, {{property}}), get(path), property);
    }
}

TEST_F(PropertyLists, EthernetStatisticsWithoutAReplyComeWithAllTheyHave) {
    the_switch().ports.at(ethernet_1).mac_statistics.clear();
    const auto path = path_of("ZANTO_EthernetPortStatistics", {{"InstanceID", "-2097152000"}});
    const auto whole = get(path);
    ASSERT_EQ(whole.objects.size(), 1u);
    EXPECT_GE(whole.objects[0].properties.size(), 2u);
    EXPECT_EQ(get(path, {{"InstanceID"}}).objects, whole.objects);
}

TEST_F(PropertyLists, AssociationsThatAreHandedBackComeWithAllTheyHave) {
    whole_objects_expected = false; // the ends are made up
    const auto end = std::make_shared<const cmpihost::Object>(path_of("ZANTO_X", {{"Name", "1"}}));
    auto path = path_of("ZANTO_TCPIPEndpoint");
    path.keys = {{"Antecedent", "reference", {end}}, {"Dependent", "reference", {end}}};
    const auto answer = get(path, {{"Antecedent"}});
    ASSERT_EQ(answer.objects.size(), 1u);
    EXPECT_EQ(answer.objects[0].properties.size(), 2u);
}

} // namespace
