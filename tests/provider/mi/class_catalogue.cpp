// check_key_name and the key scan.
#include "provider/mi/class_catalogue.h"
#include "provider/mi/key_scan.h"

#include "tests/support/provider_test.h"

#include <algorithm>

namespace {

using namespace test;
using fcip::check_key_name;

struct accepted_key {
    const char* class_name;
    const char* key_name;
};

constexpr accepted_key instance_classes[] = {
    {"ZANTO_FCIPProtocolEndPoint", "Name"},
    {"ZANTO_EthernetPort", "DeviceID"},
    {"ZANTO_EthernetPortStatistics", "InstanceID"},
    {"ZANTO_IPProtocolEndPoint", "Name"},
    {"ZANTO_TCPProtocolEndPoint", "Name"},
    {"ZANTO_LanEndPoint", "Name"},
    {"ZANTO_FCIPSettings", "InstanceID"},
    {"ZANTO_IPSettings", "InstanceID"},
    {"ZANTO_TCPSettings", "InstanceID"},
    {"ZANTO_TCPEndPointStatistics", "InstanceID"},
    {"ZANTO_IPEndPointStatistics", "InstanceID"},
    {"ZANTO_RemoteFCIPPort", "Name"},
    {"ZANTO_RemoteIPServiceAccessPoint", "Name"},
    {"ZANTO_RemoteTCPPort", "Name"},
    {"ZANTO_FCIPProfile", "InstanceID"},
};

constexpr const char* association_classes[] = {
    "ZANTO_FCIPPEBasedOn",          "ZANTO_SANIPEndpoint",
    "ZANTO_SANTCPEndpoint",         "ZANTO_SANFCIPEndpoint",
    "ZANTO_FCIPTCPEndpoint",        "ZANTO_TCPIPEndpoint",
    "ZANTO_FCIPElementSettingData", "ZANTO_TCPElementSettingData",
    "ZANTO_IPElementSettingData",   "ZANTO_EthernetPortStatisticalData",
};

constexpr const char* classes_without_key[] = {
    "ZANTO_TCPStatisticalData",
    "ZANTO_RemoteIPPort",
    "ZANTO_IPEndPointStatisticalData",
    "ZANTO_TCPEndPointStatisticalData",
    "ZANTO_SwitchHostedFCIPAccessPoint",
    "ZANTO_SwitchHostedIPAccessPoint",
    "ZANTO_SwitchHostedTCPAccessPoint",
    "ZANTO_IPEthernetEndpoint",
    "ZANTO_EthernetPortProtocolEndpoint",
    "ZANTO_FCPortProtocolEndPoint",
    "ZANTO_LogicalComputerSystem",
    "ZANTO_NoSuchClass",
    "",
};

std::string upper(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

TEST(CheckKeyName, EveryInstanceClassHasItsOneKeyInAnyCase) {
    for (const auto& [class_name, key_name] : instance_classes) {
        SCOPED_TRACE(class_name);
        EXPECT_EQ(check_key_name(class_name, key_name), 1);
        EXPECT_EQ(check_key_name(upper(class_name).c_str(), upper(key_name).c_str()), 1);
        for (const char* other : {"Name", "InstanceID", "DeviceID", "SystemName", ""})
            EXPECT_EQ(check_key_name(class_name, other), std::string(other) == key_name ? 1 : 0) << other;
    }
}

TEST(CheckKeyName, EveryAssociationClassTakesAnyKey) {
    for (const char* class_name : association_classes) {
        SCOPED_TRACE(class_name);
        EXPECT_EQ(check_key_name(class_name, "Antecedent"), 1);
        EXPECT_EQ(check_key_name(upper(class_name).c_str(), "whatever"), 1);
        EXPECT_EQ(check_key_name(class_name, ""), 1);
    }
}

TEST(CheckKeyName, OtherClassesHaveNone) {
    for (const char* class_name : classes_without_key)
        for (const char* key_name : {"Name", "InstanceID", "DeviceID", "Antecedent"})
            EXPECT_EQ(check_key_name(class_name, key_name), 0) << class_name << " " << key_name;
}

TEST(CheckKeyName, ProfileIsFoundByInstanceIdOnly) {
    EXPECT_EQ(check_key_name("ZANTO_FCIPProfile", "Name"), 0);
    EXPECT_EQ(check_key_name("ZANTO_FCIPProfile", "instanceid"), 1);
}

TEST(CheckKeyName, TableHasTheClassesInTestOrder) {
    std::vector<std::string> order;
    for (const auto& row : fcip::class_keys())
        order.emplace_back(row.class_name);
    std::vector<std::string> expected;
    for (const auto& row : instance_classes)
        expected.emplace_back(row.class_name);
    expected.insert(expected.end(), std::begin(association_classes), std::end(association_classes));
    EXPECT_EQ(order, expected);
}

class KeyScan : public ProviderTest {
  protected:
    fcip::found_key scan(const std::string& class_name, std::vector<cmpihost::Property> keys) {
        cmpihost::Object path{class_name, "root/cimv2", std::nullopt, std::move(keys), {}};
        const CMPIObjectPath* cmpi_path = cmpihost::new_path(path);
        return captured([&] { return fcip::scan_keys(class_name.c_str(), cmpi_path, "\n"); });
    }
};

TEST_F(KeyScan, StopsAtTheKeyOfTheClass) {
    const auto key = scan("ZANTO_FCIPProfile", {{"Name", "string", {std::string("5")}},
                                                {"INSTANCEID", "string", {std::string("7")}},
                                                {"InstanceID2", "string", {std::string("8")}}});
    EXPECT_TRUE(key.found);
    EXPECT_STREQ(key.value.data(), "7");
    EXPECT_EQ(trace, "\tfound key INSTANCEID : 7\n");
}

TEST_F(KeyScan, AnAssociationsFirstKeyWillDoWhateverItIsCalled) {
    const auto key =
        scan("ZANTO_SANIPEndpoint", {{"x", "string", {std::string("one")}}, {"y", "string", {std::string("two")}}});
    EXPECT_TRUE(key.found);
    EXPECT_STREQ(key.value.data(), "one");
}

TEST_F(KeyScan, KeyOfAnotherTypeIsFoundWithoutValue) {
    const auto key = scan("ZANTO_FCIPProtocolEndPoint", {{"Name", "uint32", {std::uint64_t{7}}}});
    EXPECT_TRUE(key.found);
    EXPECT_STREQ(key.value.data(), "");
    EXPECT_EQ(trace, "");
}

TEST_F(KeyScan, PathWithoutTheKeyHasNone) {
    EXPECT_FALSE(scan("ZANTO_FCIPProtocolEndPoint", {}).found);
    EXPECT_FALSE(scan("ZANTO_FCIPProtocolEndPoint", {{"SystemName", "string", {std::string("x")}}}).found);
    EXPECT_FALSE(scan("ZANTO_TCPStatisticalData", {{"InstanceID", "string", {std::string("1")}}}).found);
}

TEST_F(KeyScan, ValueAndNameAreCutTo253Characters) {
    const auto key = scan("ZANTO_SANIPEndpoint", {{std::string(300, 'k'), "string", {std::string(300, 'v')}}});
    EXPECT_EQ(std::string(key.value.data()), std::string(253, 'v'));
    EXPECT_EQ(trace, "\tfound key " + std::string(253, 'k') + " : " + std::string(253, 'v') + "\n");
}

} // namespace
