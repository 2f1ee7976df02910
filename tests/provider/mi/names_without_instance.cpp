// Names that the provider answers and takes back no more: a get of them looks for another pair of references.
#include "tests/support/request_test.h"

namespace {

using namespace test;

class NamesWithoutInstance : public RequestTest {};

TEST_F(NamesWithoutInstance, EnumeratedNamesOfProfileAssociations) {
    const auto names = enumerate_names("ZANTO_FCIPPEBasedOn");
    ASSERT_EQ(names.objects.size(), 3u); // one per tunnel
    for (const auto& name : names.objects) {
        EXPECT_NE(name.key("Antecedent"), nullptr);
        const auto got = get(name);
        EXPECT_EQ(got.objects.size() + got.null_results, 0u);
        EXPECT_EQ(got.rc, CMPI_RC_OK);
    }
}

TEST_F(NamesWithoutInstance, ReferenceNamesOfProfileAssociationsHaveOne) {
    const auto source = path_of("ZANTO_FCIPProfile", {{"InstanceID", "3"}});
    const auto names = walk(Operation::reference_names, source, "ZANTO_FCIPPEBasedOn");
    ASSERT_EQ(names.objects.size(), 1u);
    EXPECT_EQ(get(names.objects[0]).objects.size(), 1u);
}

TEST_F(NamesWithoutInstance, SettingNamesOfAnEthernetPort) {
    // A port answers where its number is a tunnel's interface index as well.
    const auto source = path_of("ZANTO_EthernetPort", {{"DeviceID", "16777216"}});
    the_switch().ports[fcip_1] = the_switch().ports.at(ethernet_1);
    const auto names = walk(Operation::reference_names, source, "ZANTO_EthernetPortProtocolEndpoint");
    ASSERT_EQ(names.objects.size(), 1u);
    EXPECT_EQ(names.objects[0].class_name, "ZANTO_IPElementSettingData");
    const auto got = get(names.objects[0]);
    EXPECT_EQ(got.objects.size() + got.null_results, 0u);
    EXPECT_EQ(got.rc, CMPI_RC_OK);
}

} // namespace
