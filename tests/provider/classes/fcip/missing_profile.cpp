// The link-based builders of the FCIP family without the link's profile: null, and what they print.
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/classes/fcip/fcip_settings.h"
#include "provider/classes/fcip/ip_settings.h"
#include "provider/classes/fcip/remote_fcip_port.h"
#include "provider/classes/fcip/tcp_settings.h"
#include "tests/support/class_test.h"

namespace test {

namespace {

struct MissingProfileRow {
    std::string name;
    std::variant<fcip::link_instance_builder*, fcip::link_path_builder*> builder;
    std::string trace;
};

// clang-format off
const MissingProfileRow missing_profile_rows[] = {
    {"fcip_pe_build_instance", fcip::fcip_pe_build_instance, entering("fcip_pe_build_instance")},
    {"fcip_remote_pe_build_instance", fcip::fcip_remote_pe_build_instance, entering("fcip_remote_pe_build_instance")},
    {"fcip_settings_build_instance", fcip::fcip_settings_build_instance, entering("fcip_settings_build_instance")},
    {"ip_settings_build_instance", fcip::ip_settings_build_instance, entering("ip_settings_build_instance")},
    {"tcp_settings_build_instance", fcip::tcp_settings_build_instance,
     entering("tcp_settings_build_instance") + location("tcp_settings_build_instance", 862)},
    {"fcip_pe_fill_reference", fcip::fcip_pe_fill_reference, ""},
    {"fcip_remote_pe_fill_reference", fcip::fcip_remote_pe_fill_reference, ""},
    {"fcip_settings_fill_reference", fcip::fcip_settings_fill_reference, entering("fcip_settings_fill_reference")},
    {"ip_settings_fill_reference", fcip::ip_settings_fill_reference, entering("ip_settings_fill_reference")},
    {"tcp_settings_fill_reference", fcip::tcp_settings_fill_reference, entering("tcp_settings_fill_reference")},
};
// clang-format on

class MissingProfile : public ClassTest, public testing::WithParamInterface<MissingProfileRow> {
  protected:
    bool is_null() {
        return std::visit([&](auto* builder) { return build(builder) == nullptr; }, GetParam().builder);
    }
};

INSTANTIATE_TEST_SUITE_P(Fcip, MissingProfile, testing::ValuesIn(missing_profile_rows),
                         [](const auto& row) { return row.param.name; });

TEST_P(MissingProfile, IsNullForADeletedProfile) {
    the_switch().profiles.clear();
    EXPECT_TRUE(is_null());
    EXPECT_EQ(trace, GetParam().trace);
}

TEST_P(MissingProfile, IsNullForOneThatCannotBeRead) {
    for (const switchsim::Fault fault : read_faults) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_TRUE(is_null());
        EXPECT_EQ(trace, GetParam().trace);
        switchsim::clear_faults();
    }
}

} // namespace

} // namespace test
