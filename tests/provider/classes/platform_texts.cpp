// Texts that the platform writes without being told a length: up to 255 characters are taken, and cut where the class
// has less room. The functions of this file answer in place of the simulator's, with a text of the length at hand.
#include "provider/access/ports.h"
#include "provider/access/systems.h"
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/classes/fcip/ip_settings.h"
#include "provider/classes/net/ethernet_port_statistics.h"
#include "provider/classes/net/lan_endpoint.h"
#include "tests/support/class_test.h"

#include <cstring>

using namespace test;

namespace {

std::string platform_text; ///< what every function below writes

int write(char* buffer) {
    std::memcpy(buffer, platform_text.c_str(), platform_text.size() + 1);
    return 0;
}

} // namespace

extern "C" {

int sprintf_if_index(char* text, std::uint32_t) {
    return write(text);
}

int pm_cim_get_network_address(char* buffer, const PmPortInfo*, int) {
    return write(buffer);
}

int cim_sprintf_wwn(char* text, const std::uint8_t*) {
    return write(text);
}

int vsan_cim_get_vsan_key(char* key, const void*, const void*) {
    return write(key);
}

int vsan_cim_get_vsan_admindomain_key(char* key, const void*) {
    return write(key);
}

} // extern "C"

namespace {

/// Runs with texts of each length. No two neighbouring characters are alike, so that a cut shows where it is.
class PlatformTexts : public ClassTest, public testing::WithParamInterface<std::size_t> {
  protected:
    void SetUp() override {
        ClassTest::SetUp();
        platform_text.clear();
        for (std::size_t position = 0; position < GetParam(); ++position)
            platform_text += static_cast<char>('a' + position % 26);
    }

    static std::string cut(std::size_t most) { return platform_text.substr(0, most); }
};

INSTANTIATE_TEST_SUITE_P(Lengths, PlatformTexts, testing::Values(0, 1, 20, 21, 31, 32, 40, 200, 255),
                         testing::PrintToStringParamName());

} // namespace

TEST_P(PlatformTexts, NetworkAddressIsCutTo31CharactersInLanEndpoints) {
    const std::string name = "-2097152000:" + cut(31);
    const auto instance =
        rows_of(call([] { return fcip::lan_endpoint_build_instance(made_up_class, name_space, ethernet_1, nullptr); }));
    EXPECT_EQ(value_in(instance, "Name"), name);
    const auto path =
        rows_of(call([] { return fcip::lan_endpoint_fill_reference(made_up_class, name_space, ethernet_1); }));
    EXPECT_EQ(value_in(path, "Name"), name);
}

TEST_P(PlatformTexts, EthernetStatisticsCutTheInterfaceNameTo31) {
    const auto instance = rows_of(call([] {
        const auto record = fcip::fetch_port(platform_exact, ethernet_1);
        return fcip::eth_statistics_build_instance(made_up_class, name_space, record.get(), nullptr);
    }));
    for (const char* property : {"Caption", "ElementName", "Description"})
        EXPECT_EQ(value_in(instance, property), cut(31)) << property;
}

TEST_P(PlatformTexts, InterfaceNameIsWholeInIpSettings) {
    const auto instance = rows_of(build(fcip::ip_settings_build_instance));
    EXPECT_EQ(value_in(instance, "Caption"), platform_text);
    EXPECT_EQ(value_in(instance, "Description"), platform_text);
}

TEST_P(PlatformTexts, WwnsAreWhole) {
    const auto endpoint = rows_of(build(fcip::fcip_pe_build_instance));
    EXPECT_EQ(value_in(endpoint, "RemoteWWN"), platform_text);
    EXPECT_EQ(value_in(endpoint, "LocalWWN"), platform_text);
    const auto port =
        rows_of(call([] { return fcip::lan_endpoint_build_instance(made_up_class, name_space, ethernet_1, nullptr); }));
    EXPECT_EQ(value_in(port, "SystemName"), platform_text);
}

TEST_P(PlatformTexts, VsanSystemNameIsCutTo20Characters) {
    EXPECT_EQ(value_in(rows_of(build(fcip::fcip_pe_build_instance)), "SystemName"), cut(20));
    EXPECT_EQ(value_in(rows_of(build(fcip::fcip_pe_fill_reference)), "SystemName"), cut(20));
}

TEST_P(PlatformTexts, VsanKeyNamesItsLogicalComputerSystemWhole) {
    const auto* path = call([] { return fcip::get_logical_computer_keys(fcip_1, name_space, cmpihost::broker()); });
    EXPECT_EQ(value_in(rows_of(path), "Name"), platform_text);
}
