// What the link-based builders of the FCIP family have in common, and where they fail.
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/classes/fcip/fcip_settings.h"
#include "provider/classes/fcip/ip_settings.h"
#include "provider/classes/fcip/remote_fcip_port.h"
#include "provider/classes/fcip/tcp_settings.h"
#include "tests/provider/classes/fcip/fcip_class_test.h"
#include "tests/provider/classes/front_broker.h"

namespace test {

namespace {

using switchsim::Fault;

struct InstanceCase {
    const char* name;
    fcip::link_instance_builder* builder;
    const char* class_of_creation; ///< property CreationClassName; null = the class has none
    const char* first_property;
    std::string trace_without_profile;
};

const InstanceCase instance_cases[] = {
    {"fcip_pe_build_instance", fcip::fcip_pe_build_instance, "ZANTO_FCIPProtocolEndPoint", "SystemCreationClassName",
     entering("fcip_pe_build_instance")},
    {"fcip_remote_pe_build_instance", fcip::fcip_remote_pe_build_instance, "ZANTO_RemoteFCIPPort",
     "SystemCreationClassName", entering("fcip_remote_pe_build_instance")},
    {"fcip_settings_build_instance", fcip::fcip_settings_build_instance, "ZANTO_FCIPSettings",
     "SystemCreationClassName", entering("fcip_settings_build_instance")},
    {"ip_settings_build_instance", fcip::ip_settings_build_instance, nullptr, "Caption",
     entering("ip_settings_build_instance")},
    {"tcp_settings_build_instance", fcip::tcp_settings_build_instance, nullptr, "SystemCreationClassName",
     entering("tcp_settings_build_instance") + location("tcp_settings_build_instance", 862)},
};

class LinkInstanceBuilder : public FcipClassTest, public ::testing::WithParamInterface<InstanceCase> {};

TEST_P(LinkInstanceBuilder, MakesTheRequestedClassInTheNamespaceOfTheSwitch) {
    const CMPIInstance* instance = build(GetParam().builder, tunnel(), nullptr, "Zanto_OtherSpelling");
    EXPECT_EQ(origin(instance), "Zanto_OtherSpelling root/cimv2 switch-a");
    const char* expected = GetParam().class_of_creation;
    EXPECT_EQ(property(instance, "CreationClassName"), expected ? std::string("string ") + expected : "absent");
}

TEST_P(LinkInstanceBuilder, ReturnsTheWantedPropertiesOnly) {
    const char* wanted[] = {GetParam().first_property, nullptr};
    const Rows filtered = properties(build(GetParam().builder, tunnel(), wanted));
    ASSERT_EQ(filtered.size(), 1u);
    EXPECT_EQ(filtered[0][0], GetParam().first_property);
}

TEST_P(LinkInstanceBuilder, ASwitchWithoutNameGivesAnEmptyHost) {
    the_switch().has_name = false;
    EXPECT_EQ(origin(build(GetParam().builder, tunnel())), "ZANTO_AskedFor root/cimv2 ");
}

TEST_P(LinkInstanceBuilder, WithoutProfileIsNull) {
    the_switch().profiles.clear();
    EXPECT_EQ(build(GetParam().builder, tunnel()), nullptr);
    EXPECT_EQ(trace, GetParam().trace_without_profile);
}

TEST_P(LinkInstanceBuilder, WithAnUnreadableProfileIsNull) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_EQ(build(GetParam().builder, tunnel()), nullptr);
        EXPECT_EQ(trace, GetParam().trace_without_profile);
        switchsim::clear_faults();
    }
}

TEST_P(LinkInstanceBuilder, WithoutPathIsNull) {
    scope.fail_object(1);
    EXPECT_EQ(build(GetParam().builder, tunnel()), nullptr);
    EXPECT_EQ(trace, entering(GetParam().name));
    EXPECT_EQ(switchsim::calls("getCSName"), 0u);
}

TEST_P(LinkInstanceBuilder, WithAPathWithoutHandleIsNull) {
    const HandlelessBroker broker(HandlelessBroker::Objects::paths);
    EXPECT_EQ(build(GetParam().builder, tunnel()), nullptr);
    EXPECT_EQ(trace, entering(GetParam().name));
}

TEST_P(LinkInstanceBuilder, ReturnsANullInstanceAsItIs) {
    scope.fail_object(2);
    EXPECT_EQ(build(GetParam().builder, tunnel()), nullptr);
    EXPECT_EQ(trace, entering(GetParam().name));
    EXPECT_EQ(switchsim::calls("getCSName"), 1u);
}

TEST_P(LinkInstanceBuilder, ReturnsAnInstanceWithoutHandleAsItIs) {
    const HandlelessBroker broker(HandlelessBroker::Objects::instances);
    EXPECT_EQ(build(GetParam().builder, tunnel()), &HandlelessBroker::instance);
    EXPECT_EQ(trace, entering(GetParam().name));
}

TEST_P(LinkInstanceBuilder, GivesTheSameWhenTheBrokerReportsErrors) {
    const Rows undisturbed = properties(build(GetParam().builder, tunnel()));
    const FrontBroker front(FrontBroker::makes::objects_that_report_errors);
    EXPECT_EQ(properties(build(GetParam().builder, tunnel())), undisturbed);
    EXPECT_EQ(FrontBroker::errors_reported(), undisturbed.size());
}

TEST_P(LinkInstanceBuilder, FiltersOnceWithAnEmptyListOfKeys) {
    const FrontBroker front;
    build(GetParam().builder, tunnel());
    EXPECT_EQ(FrontBroker::filter_keys(), std::vector<int>{0});
}

TEST_P(LinkInstanceBuilder, AFaultInAnyPlatformCallIsGoneWithTheNextRequest) {
    const Rows healthy = properties(build(GetParam().builder, tunnel()));
    const auto calls = static_cast<unsigned>(switchsim::recorded_calls().size());
    ASSERT_GE(calls, 6u);
    for (const Fault fault : read_faults) {
        for (unsigned nth = 1; nth <= calls; ++nth) {
            SCOPED_TRACE("fault " + std::to_string(static_cast<int>(fault)) + " in call " + std::to_string(nth));
            switchsim::inject_at(nth, fault);
            build(GetParam().builder, tunnel());
            switchsim::clear_faults();
            EXPECT_EQ(switchsim::undropped_messages(), 0u);
            EXPECT_EQ(properties(build(GetParam().builder, tunnel())), healthy);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Fcip, LinkInstanceBuilder, ::testing::ValuesIn(instance_cases),
                         [](const auto& one) { return one.param.name; });

struct SettingsPathCase {
    const char* name;
    fcip::link_path_builder* builder;
    fcip::link_instance_builder* instance_builder;
    int line;
};

const SettingsPathCase settings_path_cases[] = {
    {"fcip_settings_fill_reference", fcip::fcip_settings_fill_reference, fcip::fcip_settings_build_instance, 636},
    {"ip_settings_fill_reference", fcip::ip_settings_fill_reference, fcip::ip_settings_build_instance, 562},
    {"tcp_settings_fill_reference", fcip::tcp_settings_fill_reference, fcip::tcp_settings_build_instance, 601},
};

class SettingsPathBuilder : public FcipClassTest, public ::testing::WithParamInterface<SettingsPathCase> {};

TEST_P(SettingsPathBuilder, IfIndex16777216IsTheOnlyKeyAndTheInstanceId) {
    ASSERT_EQ(tunnel().link_if_index, 16777216u);
    const Rows expected = {{"InstanceID", "string", "16777216"}};
    EXPECT_EQ(keys(build(GetParam().builder, tunnel())), expected);
    EXPECT_EQ(property(build(GetParam().instance_builder, tunnel()), "InstanceID"), "string 16777216");
}

TEST_P(SettingsPathBuilder, HasTheInstanceIdOfTheInstance) {
    ASSERT_EQ(the_switch().links.size(), 3u);
    for (const auto& [_, row] : the_switch().links)
        EXPECT_EQ(key(build(GetParam().builder, row), "InstanceID"),
                  property(build(GetParam().instance_builder, row), "InstanceID"));
}

TEST_P(SettingsPathBuilder, PrintsTheInterfaceIndexSigned) {
    tunnel().link_if_index = ethernet_1;
    EXPECT_EQ(key(build(GetParam().builder, tunnel()), "InstanceID"), "string -2097152000");
}

TEST_P(SettingsPathBuilder, MakesTheRequestedClassInTheNamespaceOfTheSwitch) {
    EXPECT_EQ(origin(build(GetParam().builder, tunnel(), "Zanto_OtherSpelling")),
              "Zanto_OtherSpelling root/cimv2 switch-a");
}

TEST_P(SettingsPathBuilder, ASwitchWithoutNameGivesAnEmptyHost) {
    the_switch().has_name = false;
    EXPECT_EQ(origin(build(GetParam().builder, tunnel())), "ZANTO_AskedFor root/cimv2 ");
}

TEST_P(SettingsPathBuilder, GivesTheSameWhenTheBrokerReportsErrors) {
    const Rows undisturbed = keys(build(GetParam().builder, tunnel()));
    const FrontBroker front(FrontBroker::makes::objects_that_report_errors);
    EXPECT_EQ(keys(build(GetParam().builder, tunnel())), undisturbed);
    EXPECT_EQ(FrontBroker::errors_reported(), undisturbed.size());
}

TEST_P(SettingsPathBuilder, TracesItsLine) {
    build(GetParam().builder, tunnel());
    EXPECT_EQ(trace, entering(GetParam().name) + location(GetParam().name, GetParam().line) + exiting(GetParam().name));
}

TEST_P(SettingsPathBuilder, AsksForTheProfileAndTheSwitchName) {
    build(GetParam().builder, tunnel());
    EXPECT_EQ(switchsim::recorded_calls(), (std::vector<std::string>{"fcip_get_entity_entry", "getCSName"}));
}

TEST_P(SettingsPathBuilder, WithAnUnreadableProfileIsNull) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_EQ(build(GetParam().builder, tunnel()), nullptr);
        EXPECT_EQ(trace, entering(GetParam().name));
        switchsim::clear_faults();
    }
}

TEST_P(SettingsPathBuilder, WithoutPathIsNull) {
    scope.fail_object(1);
    EXPECT_EQ(build(GetParam().builder, tunnel()), nullptr);
    EXPECT_EQ(trace, entering(GetParam().name));
}

TEST_P(SettingsPathBuilder, WithAPathWithoutHandleIsNull) {
    const HandlelessBroker broker(HandlelessBroker::Objects::paths);
    EXPECT_EQ(build(GetParam().builder, tunnel()), nullptr);
    EXPECT_EQ(trace, entering(GetParam().name));
}

INSTANTIATE_TEST_SUITE_P(Fcip, SettingsPathBuilder, ::testing::ValuesIn(settings_path_cases),
                         [](const auto& one) { return one.param.name; });

struct TunnelPathCase {
    const char* name;
    fcip::link_path_builder* builder;
};

const TunnelPathCase tunnel_path_cases[] = {
    {"fcip_pe_fill_reference", fcip::fcip_pe_fill_reference},
    {"fcip_remote_pe_fill_reference", fcip::fcip_remote_pe_fill_reference},
};

class TunnelPathBuilder : public FcipClassTest, public ::testing::WithParamInterface<TunnelPathCase> {};

TEST_P(TunnelPathBuilder, WithAnUnreadableProfileIsNull) {
    for (const Fault fault : read_faults) {
        switchsim::inject("fcip_get_entity_entry", fault);
        EXPECT_EQ(build(GetParam().builder, tunnel()), nullptr);
        EXPECT_EQ(trace, "");
        switchsim::clear_faults();
    }
}

TEST_P(TunnelPathBuilder, WithoutPathIsNull) {
    scope.fail_object(1);
    EXPECT_EQ(build(GetParam().builder, tunnel()), nullptr);
    EXPECT_EQ(switchsim::calls("pm_cim_get_port_info"), 0u);
}

TEST_P(TunnelPathBuilder, ReturnsAPathWithoutHandleAsItIs) {
    const FrontBroker front(FrontBroker::makes::paths_without_handle);
    EXPECT_EQ(build(GetParam().builder, tunnel()), FrontBroker::path_without_handle());
    EXPECT_EQ(trace, "");
}

TEST_P(TunnelPathBuilder, GivesTheSameWhenTheBrokerReportsErrors) {
    const Rows undisturbed = keys(build(GetParam().builder, tunnel()));
    const FrontBroker front(FrontBroker::makes::objects_that_report_errors);
    EXPECT_EQ(keys(build(GetParam().builder, tunnel())), undisturbed);
    EXPECT_EQ(FrontBroker::errors_reported(), undisturbed.size());
}

INSTANTIATE_TEST_SUITE_P(Fcip, TunnelPathBuilder, ::testing::ValuesIn(tunnel_path_cases),
                         [](const auto& one) { return one.param.name; });

} // namespace

} // namespace test
