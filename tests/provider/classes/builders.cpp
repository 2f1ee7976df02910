// What the builders of all classes have in common: class, namespace and host, the property list, and what comes of a
// broker that makes no object, an object without handle, or errors.
#include "tests/provider/classes/builder_calls.h"
#include "tests/support/front_broker.h"

#include <cctype>

using namespace test;

namespace {

struct InstanceRow {
    std::string name;
    InstanceBuilder* build;
    bool enters = true;      ///< prints Entering
    bool path_exits = false; ///< prints Exiting when the path cannot be made
};

// clang-format off
const InstanceRow instance_rows[] = {
    {"fcip_pe_build_instance", of_link<fcip::fcip_pe_build_instance>},
    {"fcip_remote_pe_build_instance", of_link<fcip::fcip_remote_pe_build_instance>},
    {"fcip_profile_build_instance", of_profile, true, true},
    {"fcip_settings_build_instance", of_link<fcip::fcip_settings_build_instance>},
    {"ip_settings_build_instance", of_link<fcip::ip_settings_build_instance>},
    {"tcp_settings_build_instance", of_link<fcip::tcp_settings_build_instance>},
    {"ip_pe_build_instance", of_link<fcip::ip_pe_build_instance>, true, true},
    {"ip_remote_pe_build_instance", of_link<fcip::ip_remote_pe_build_instance>, true, true},
    {"tcp_pe_build_instance", of_link<fcip::tcp_pe_build_instance>, true, true},
    {"tcp_remote_pe_build_instance", of_link<fcip::tcp_remote_pe_build_instance>, true, true},
    {"remote_service_ap_build_instance", of_link<fcip::remote_service_ap_build_instance>, true, true},
    {"ip_statistics_build_instance", of_link<fcip::ip_statistics_build_instance>, true, true},
    {"tcp_statistics_build_instance", of_link<fcip::tcp_statistics_build_instance>, true, true},
    {"tcp_statistical_data_build_instance", of_link<fcip::tcp_statistical_data_build_instance>, true, true},
    {"lan_endpoint_build_instance", of_lan_endpoint, false, false},
    {"eth_statistics_build_instance", of_ethernet_port, true, true},
};

struct PathRow {
    std::string name;
    PathBuilder* build;
    const char* host = "switch-a";  ///< "-" = none is set
    std::string trace_without_path; ///< when the broker makes no path
    std::string trace_without_handle;
    bool keeps_without_handle = true; ///< a path without handle comes back as it is; otherwise null
};

const PathRow path_rows[] = {
    {"fcip_pe_fill_reference", of_link<fcip::fcip_pe_fill_reference>, "-", "", ""},
    {"fcip_remote_pe_fill_reference", of_link<fcip::fcip_remote_pe_fill_reference>, "-", "", ""},
    {"fcip_profile_fill_reference", of_profile, "-", "", ""},
    {"fcip_settings_fill_reference", of_link<fcip::fcip_settings_fill_reference>, "switch-a",
     entering("fcip_settings_fill_reference"), entering("fcip_settings_fill_reference"), false},
    {"ip_settings_fill_reference", of_link<fcip::ip_settings_fill_reference>, "switch-a",
     entering("ip_settings_fill_reference"), entering("ip_settings_fill_reference"), false},
    {"tcp_settings_fill_reference", of_link<fcip::tcp_settings_fill_reference>, "switch-a",
     entering("tcp_settings_fill_reference"), entering("tcp_settings_fill_reference"), false},
    {"ip_pe_fill_reference", of_link<fcip::ip_pe_fill_reference>, "switch-a",
     entering("ip_pe_fill_reference") + exiting("ip_pe_fill_reference"),
     entering("ip_pe_fill_reference") + "16777218_10.1.1.1_192.168.100.101 \n" + exiting("ip_pe_fill_reference")},
    {"ip_remote_pe_fill_reference", of_link<fcip::ip_remote_pe_fill_reference>, "switch-a",
     entering("ip_remote_pe_fill_reference"), entering("ip_remote_pe_fill_reference")},
    {"tcp_pe_fill_reference", of_link<fcip::tcp_pe_fill_reference>, "switch-a",
     entering("tcp_pe_fill_reference"), entering("tcp_pe_fill_reference")},
    {"tcp_remote_pe_fill_reference", of_link<fcip::tcp_remote_pe_fill_reference>, "switch-a", "", ""},
    {"remote_service_ap_fill_reference", of_link<fcip::remote_service_ap_fill_reference>, "switch-a", "", ""},
    {"stat_fill_reference", of_link<fcip::stat_fill_reference>, "switch-a",
     entering("stat_fill_reference") + exiting("stat_fill_reference"),
     entering("stat_fill_reference") + exiting("stat_fill_reference")},
    {"lan_endpoint_fill_reference", of_lan_endpoint, "switch-a",
     entering("lan_endpoint_fill_reference") + exiting("lan_endpoint_fill_reference"),
     entering("lan_endpoint_fill_reference") + exiting("lan_endpoint_fill_reference")},
    {"eth_statistics_fill_reference", of_ethernet_port, "switch-a",
     entering("eth_statistics_fill_reference") + exiting("eth_statistics_fill_reference"),
     entering("eth_statistics_fill_reference") + exiting("eth_statistics_fill_reference")},
};
// clang-format on

/// Rows that need not fit the schema.
template <typename T>
Rows unchecked(const T* object) {
    const cmpihost::Object described = cmpihost::describe(object);
    return rows(described.keys.empty() ? described.properties : described.keys);
}

std::string upper(std::string text) {
    for (char& letter : text)
        letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    return text;
}

class InstanceBuilders : public ClassTest, public testing::WithParamInterface<InstanceRow> {
  protected:
    CMPIInstance* make(const char** properties = nullptr, const char* class_name = made_up_class) {
        return call([&] { return GetParam().build(class_name, properties); });
    }
    static std::string enters() { return GetParam().enters ? entering(GetParam().name) : ""; }
    static std::string path_exits() { return GetParam().path_exits ? exiting(GetParam().name) : ""; }
};

class PathBuilders : public ClassTest, public testing::WithParamInterface<PathRow> {
  protected:
    CMPIObjectPath* make(const char* class_name = made_up_class) {
        return call([&] { return GetParam().build(class_name); });
    }
};

INSTANTIATE_TEST_SUITE_P(All, InstanceBuilders, testing::ValuesIn(instance_rows),
                         [](const auto& row) { return row.param.name; });
INSTANTIATE_TEST_SUITE_P(All, PathBuilders, testing::ValuesIn(path_rows),
                         [](const auto& row) { return row.param.name; });

TEST_P(InstanceBuilders, HandOnClassNamespaceAndTheSwitchAsHost) {
    EXPECT_EQ(origin(make()), "ZANTO_AskedFor root/cimv2 switch-a");
}

TEST_P(InstanceBuilders, SetTheSamePropertiesWhateverClassIsAsked) {
    EXPECT_EQ(unchecked(make(nullptr, "Zanto_OtherSpelling")), unchecked(make()));
}

TEST_P(InstanceBuilders, SwitchWithoutNameIsAnEmptyHost) {
    the_switch().has_name = false;
    EXPECT_EQ(origin(make()), "ZANTO_AskedFor root/cimv2 ");
}

TEST_P(InstanceBuilders, PropertyListInAnyCaseIsAllThatComesBack) {
    const Rows all = rows_of(make());
    ASSERT_GE(all.size(), 3u);
    const std::string second = upper(all[1][0]);
    const char* listed[] = {all.back()[0].c_str(), second.c_str(), "NoSuchProperty", nullptr};
    EXPECT_EQ(rows_of(make(listed)), (Rows{all[1], all.back()}));
}

TEST_P(InstanceBuilders, EmptyPropertyListLeavesNone) {
    const char* listed[] = {nullptr};
    const CMPIInstance* instance = make(listed);
    ASSERT_TRUE(cmpihost::is_live(instance));
    EXPECT_EQ(rows_of(instance), Rows{});
}

TEST_P(InstanceBuilders, PropertyFilterIsSetOnceWithoutKeys) {
    const FrontBroker front;
    make();
    EXPECT_EQ(FrontBroker::filter_keys(), std::vector<int>{0});
}

TEST_P(InstanceBuilders, NullWithoutPath) {
    scope.fail_object(1);
    EXPECT_EQ(make(), nullptr);
    EXPECT_EQ(trace, enters() + path_exits());
    EXPECT_EQ(switchsim::calls("getCSName"), 0u);
}

TEST_P(InstanceBuilders, NullForAPathWithoutHandle) {
    const FrontBroker front(FrontBroker::makes::paths_without_handle);
    EXPECT_EQ(make(), nullptr);
    EXPECT_EQ(trace, enters() + path_exits());
}

TEST_P(InstanceBuilders, NullInstanceComesBackUntraced) {
    scope.fail_object(2);
    EXPECT_EQ(make(), nullptr);
    EXPECT_EQ(trace, enters());
    EXPECT_EQ(switchsim::calls("getCSName"), 1u);
}

TEST_P(InstanceBuilders, InstanceWithoutHandleComesBackUntraced) {
    const FrontBroker front(FrontBroker::makes::instances_without_handle);
    EXPECT_EQ(make(), FrontBroker::instance_without_handle());
    EXPECT_EQ(trace, enters());
}

TEST_P(InstanceBuilders, BrokersErrorsChangeNothing) {
    const Rows undisturbed = rows_of(make());
    const FrontBroker front(FrontBroker::makes::objects_that_report_errors);
    EXPECT_EQ(rows_of(make()), undisturbed);
    EXPECT_EQ(FrontBroker::errors_reported(), FrontBroker::set().size());
    EXPECT_GE(FrontBroker::errors_reported(), undisturbed.size());
}

TEST_P(PathBuilders, HandOnClassAndNamespaceSomeWithTheSwitchAsHost) {
    EXPECT_EQ(origin(make()), std::string("ZANTO_AskedFor root/cimv2 ") + GetParam().host);
}

TEST_P(PathBuilders, SwitchWithoutNameIsAnEmptyHostWhereOneIsSet) {
    the_switch().has_name = false;
    const bool has_host = std::string(GetParam().host) != "-";
    EXPECT_EQ(origin(make()), std::string("ZANTO_AskedFor root/cimv2 ") + (has_host ? "" : "-"));
}

TEST_P(PathBuilders, NullWithoutPath) {
    scope.fail_object(1);
    EXPECT_EQ(make(), nullptr);
    EXPECT_EQ(trace, GetParam().trace_without_path);
}

TEST_P(PathBuilders, PathWithoutHandleComesBackFromSome) {
    const FrontBroker front(FrontBroker::makes::paths_without_handle);
    EXPECT_EQ(make(), GetParam().keeps_without_handle ? FrontBroker::path_without_handle() : nullptr);
    EXPECT_EQ(trace, GetParam().trace_without_handle);
}

TEST_P(PathBuilders, BrokersErrorsChangeNothing) {
    const Rows undisturbed = rows_of(make());
    ASSERT_FALSE(undisturbed.empty());
    const FrontBroker front(FrontBroker::makes::objects_that_report_errors);
    EXPECT_EQ(rows_of(make()), undisturbed);
    EXPECT_EQ(FrontBroker::errors_reported(), undisturbed.size());
}

} // namespace
