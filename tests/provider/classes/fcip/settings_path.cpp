// The path builders of the three settings classes.
#include "provider/classes/fcip/fcip_settings.h"
#include "provider/classes/fcip/ip_settings.h"
#include "provider/classes/fcip/tcp_settings.h"
#include "tests/support/class_test.h"

namespace test {

namespace {

struct SettingsRow {
    std::string name;
    fcip::link_path_builder* path;
    fcip::link_instance_builder* instance;
    int line;
};

const SettingsRow settings_rows[] = {
    {"fcip_settings_fill_reference", fcip::fcip_settings_fill_reference, fcip::fcip_settings_build_instance, 636},
    {"ip_settings_fill_reference", fcip::ip_settings_fill_reference, fcip::ip_settings_build_instance, 562},
    {"tcp_settings_fill_reference", fcip::tcp_settings_fill_reference, fcip::tcp_settings_build_instance, 601},
};

class SettingsPath : public ClassTest, public testing::WithParamInterface<SettingsRow> {};

INSTANTIATE_TEST_SUITE_P(Fcip, SettingsPath, testing::ValuesIn(settings_rows),
                         [](const auto& row) { return row.param.name; });

TEST_P(SettingsPath, OnlyKeyIsTheInstanceIdOfTheInstance) {
    ASSERT_EQ(the_switch().links.size(), 3u);
    for (const auto& [_, row] : the_switch().links) {
        const Rows expected = {{"InstanceID", "string", std::to_string(row.link_if_index)}};
        EXPECT_EQ(rows_of(build(GetParam().path, row)), expected);
        EXPECT_EQ(value_of(build(GetParam().instance, row), "InstanceID"), expected[0][2]);
    }
}

TEST_P(SettingsPath, InterfaceIndexIsSigned) {
    link().link_if_index = ethernet_1;
    EXPECT_EQ(value_of(build(GetParam().path), "InstanceID"), "-2097152000");
    EXPECT_EQ(value_of(build(GetParam().instance), "InstanceID"), "-2097152000");
}

TEST_P(SettingsPath, TracesItsLine) {
    build(GetParam().path);
    EXPECT_EQ(trace, entering(GetParam().name) + location(GetParam().name, GetParam().line) + exiting(GetParam().name));
}

} // namespace

} // namespace test
