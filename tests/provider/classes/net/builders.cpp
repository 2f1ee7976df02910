// What the builders of the IP, TCP, LAN and Ethernet classes have in common, held against each of them.
#include "provider/access/ports.h"
#include "provider/classes/net/ethernet_port_statistics.h"
#include "provider/classes/net/ip_protocol_endpoint.h"
#include "provider/classes/net/ip_statistics.h"
#include "provider/classes/net/lan_endpoint.h"
#include "provider/classes/net/remote_ip_service_access_point.h"
#include "provider/classes/net/remote_tcp_port.h"
#include "provider/classes/net/statistics_path.h"
#include "provider/classes/net/tcp_protocol_endpoint.h"
#include "provider/classes/net/tcp_statistics.h"
#include "provider/common/results.h"
#include "tests/provider/classes/front_broker.h"
#include "tests/provider/classes/net/net_test.h"

using namespace test;
using switchsim::Fault;

namespace {

/// Builders by name, each called on the same link or port.
struct InstanceCase {
    std::string name;
    CMPIInstance* (*build)(const FcipLinkEntry& link, const PmPortInfo& port, const char** names);
    bool enters = true;     ///< prints Entering
    bool path_exits = true; ///< prints Exiting when the path cannot be made
    std::string second;     ///< the name of the second property that it sets
};

template <fcip::link_instance_builder* builder>
CMPIInstance* of_link(const FcipLinkEntry& link, const PmPortInfo&, const char** names) {
    return builder(asked_class, asked_name_space, &link, names);
}

CMPIInstance* of_ethernet_port(const FcipLinkEntry&, const PmPortInfo& port, const char** names) {
    return fcip::eth_statistics_build_instance(asked_class, asked_name_space, &port, names);
}

CMPIInstance* of_if_index(const FcipLinkEntry&, const PmPortInfo& port, const char** names) {
    return fcip::lan_endpoint_build_instance(asked_class, asked_name_space, fcip::port_if_index(port), names);
}

const InstanceCase instance_cases[] = {
    {"ip_pe_build_instance", of_link<fcip::ip_pe_build_instance>, true, true, "SystemName"},
    {"ip_remote_pe_build_instance", of_link<fcip::ip_remote_pe_build_instance>, true, true, "SystemName"},
    {"tcp_pe_build_instance", of_link<fcip::tcp_pe_build_instance>, true, true, "SystemName"},
    {"tcp_remote_pe_build_instance", of_link<fcip::tcp_remote_pe_build_instance>, true, true, "SystemName"},
    {"remote_service_ap_build_instance", of_link<fcip::remote_service_ap_build_instance>, true, true, "SystemName"},
    {"ip_statistics_build_instance", of_link<fcip::ip_statistics_build_instance>, true, true, "SystemName"},
    {"tcp_statistics_build_instance", of_link<fcip::tcp_statistics_build_instance>, true, true, "SystemName"},
    {"tcp_statistical_data_build_instance", of_link<fcip::tcp_statistical_data_build_instance>, true, true,
     "SystemName"},
    {"lan_endpoint_build_instance", of_if_index, false, false, "SystemName"},
    {"eth_statistics_build_instance", of_ethernet_port, true, true, "Caption"},
};

struct PathCase {
    std::string name;
    CMPIObjectPath* (*fill)(const FcipLinkEntry& link, const PmPortInfo& port);
    std::string trace_without_path;   ///< when the broker makes no path
    std::string trace_without_handle; ///< when the path that it makes has no handle
};

template <fcip::link_path_builder* builder>
CMPIObjectPath* of_link(const FcipLinkEntry& link, const PmPortInfo&) {
    return builder(asked_class, asked_name_space, &link);
}

CMPIObjectPath* of_ethernet_port(const FcipLinkEntry&, const PmPortInfo& port) {
    return fcip::eth_statistics_fill_reference(asked_class, asked_name_space, &port);
}

CMPIObjectPath* of_if_index(const FcipLinkEntry&, const PmPortInfo& port) {
    return fcip::lan_endpoint_fill_reference(asked_class, asked_name_space, fcip::port_if_index(port));
}

const PathCase path_cases[] = {
    {"ip_pe_fill_reference", of_link<fcip::ip_pe_fill_reference>,
     "Entering ip_pe_fill_reference\nExiting ip_pe_fill_reference\n",
     "Entering ip_pe_fill_reference\n16777216_10.1.1.1_10.1.1.2 \nExiting ip_pe_fill_reference\n"},
    {"ip_remote_pe_fill_reference", of_link<fcip::ip_remote_pe_fill_reference>,
     "Entering ip_remote_pe_fill_reference\n", "Entering ip_remote_pe_fill_reference\n"},
    {"tcp_pe_fill_reference", of_link<fcip::tcp_pe_fill_reference>, "Entering tcp_pe_fill_reference\n",
     "Entering tcp_pe_fill_reference\n"},
    {"tcp_remote_pe_fill_reference", of_link<fcip::tcp_remote_pe_fill_reference>, "", ""},
    {"remote_service_ap_fill_reference", of_link<fcip::remote_service_ap_fill_reference>, "", ""},
    {"stat_fill_reference", of_link<fcip::stat_fill_reference>,
     "Entering stat_fill_reference\nExiting stat_fill_reference\n",
     "Entering stat_fill_reference\nExiting stat_fill_reference\n"},
    {"lan_endpoint_fill_reference", of_if_index,
     "Entering lan_endpoint_fill_reference\nExiting lan_endpoint_fill_reference\n",
     "Entering lan_endpoint_fill_reference\nExiting lan_endpoint_fill_reference\n"},
    {"eth_statistics_fill_reference", of_ethernet_port,
     "Entering eth_statistics_fill_reference\nExiting eth_statistics_fill_reference\n",
     "Entering eth_statistics_fill_reference\nExiting eth_statistics_fill_reference\n"},
};

std::string name_of(const auto& info) {
    return info.param.name;
}

class NetBuilderTest : public NetTest {
  protected:
    void SetUp() override {
        NetTest::SetUp();
        row_ = link(tunnel_1);
        const fcip::platform_lock lock;
        port_ = *fcip::fetch_port(platform_exact, ethernet_1);
        switchsim::clear_counts();
    }

    CMPIInstance* build(const InstanceCase& one, const char** names = nullptr) {
        return call([&] { return one.build(row_, port_, names); });
    }
    CMPIObjectPath* fill(const PathCase& one) {
        return call([&] { return one.fill(row_, port_); });
    }

    /// Makes the 1st, 2nd, ... platform call of `make` fail in each way. Whatever comes of it must be an object of
    /// this scope, null or -1, and the builder answers as before afterwards; the sanitizers see to the rest.
    template <typename Make>
    void sweep(Make make) {
        switchsim::clear_counts();
        const Rows undisturbed = rows_of(make());
        const unsigned calls = switchsim::total_calls();
        ASSERT_GT(calls, 0U);
        ASSERT_FALSE(undisturbed.empty());
        for (const Fault fault : {Fault::fail, Fault::fail_leaving_record, Fault::succeed_without_record,
                                  Fault::short_reply, Fault::wrong_status, Fault::no_reply}) {
            for (unsigned nth = 1; nth <= calls; ++nth) {
                SCOPED_TRACE(testing::Message() << "fault " << static_cast<int>(fault) << " at call " << nth);
                switchsim::inject_at(nth, fault, 7);
                const auto* object = make();
                switchsim::clear_faults();
                EXPECT_TRUE(!fcip::is_object(object) || cmpihost::is_live(object));
                EXPECT_EQ(switchsim::undropped_messages(), 0U);
            }
        }
        EXPECT_EQ(rows_of(make()), undisturbed);
    }

  private:
    FcipLinkEntry row_{};
    PmPortInfo port_{};
};

class NetInstances : public NetBuilderTest, public testing::WithParamInterface<InstanceCase> {
  protected:
    static std::string entering() { return GetParam().enters ? "Entering " + GetParam().name + "\n" : ""; }
    static std::string path_exiting() { return GetParam().path_exits ? "Exiting " + GetParam().name + "\n" : ""; }
};
INSTANTIATE_TEST_SUITE_P(Net, NetInstances, testing::ValuesIn(instance_cases),
                         name_of<testing::TestParamInfo<InstanceCase>>);

class NetPaths : public NetBuilderTest, public testing::WithParamInterface<PathCase> {};
INSTANTIATE_TEST_SUITE_P(Net, NetPaths, testing::ValuesIn(path_cases), name_of<testing::TestParamInfo<PathCase>>);

} // namespace

TEST_P(NetInstances, HandOnClassNamespaceAndTheSwitchAsHost) {
    const CMPIInstance* instance = build(GetParam());
    ASSERT_TRUE(cmpihost::is_live(instance));
    const cmpihost::Object object = cmpihost::describe(instance);
    EXPECT_EQ(object.class_name, asked_class);
    EXPECT_EQ(object.name_space, asked_name_space);
    EXPECT_EQ(object.host, "switch-a");
}

TEST_P(NetInstances, AnswerForASwitchWithoutName) {
    the_switch().has_name = false;
    const CMPIInstance* instance = build(GetParam());
    ASSERT_TRUE(cmpihost::is_live(instance));
    EXPECT_EQ(cmpihost::describe(instance).host, "");
}

TEST_P(NetInstances, GiveOnlyThePropertiesThatTheRequestLists) {
    const Rows all = rows_of(build(GetParam()));
    ASSERT_GT(all.size(), 3U);
    const Row& last = all.back();
    const char* names[] = {last[0].c_str(), "systemname", "CAPTION", "NoSuchProperty", nullptr};
    const Rows listed = rows_of(build(GetParam(), names));
    ASSERT_EQ(listed.size(), 2U);
    EXPECT_EQ(listed[0][0], GetParam().second);
    EXPECT_EQ(listed[1], last);
}

TEST_P(NetInstances, GiveNoPropertyForAnEmptyList) {
    const char* names[] = {nullptr};
    const CMPIInstance* instance = build(GetParam(), names);
    ASSERT_TRUE(cmpihost::is_live(instance));
    EXPECT_EQ(properties(instance), Rows{});
}

TEST_P(NetInstances, AreNullWhenThePathCannotBeMade) {
    scope.fail_object(1);
    EXPECT_EQ(build(GetParam()), nullptr);
    EXPECT_EQ(trace, entering() + path_exiting());
}

TEST_P(NetInstances, AreNullWhenThePathHasNoHandle) {
    const FrontBroker front(FrontBroker::makes::paths_without_handle);
    EXPECT_EQ(build(GetParam()), nullptr);
    EXPECT_EQ(trace, entering() + path_exiting());
}

TEST_P(NetInstances, AreNullWhenTheInstanceCannotBeMade) {
    scope.fail_object(2);
    EXPECT_EQ(build(GetParam()), nullptr);
    EXPECT_EQ(trace, entering());
}

TEST_P(NetInstances, ComeBackAsTheyAreWhenTheyHaveNoHandle) {
    const FrontBroker front(FrontBroker::makes::instances_without_handle);
    EXPECT_EQ(build(GetParam()), FrontBroker::instance_without_handle());
    EXPECT_EQ(trace, entering());
}

TEST_P(NetInstances, AreTheSameWhenTheBrokerReportsErrors) {
    const Rows undisturbed = rows_of(build(GetParam()));
    const FrontBroker front(FrontBroker::makes::objects_that_report_errors);
    EXPECT_EQ(rows_of(build(GetParam())), undisturbed);
    EXPECT_EQ(FrontBroker::errors_reported(), FrontBroker::set().size());
    EXPECT_GE(FrontBroker::errors_reported(), undisturbed.size());
}

TEST_P(NetInstances, AreFilteredOnceWithAnEmptyListOfKeys) {
    const FrontBroker front;
    build(GetParam());
    EXPECT_EQ(FrontBroker::filter_keys(), std::vector<int>{0});
}

TEST_P(NetInstances, SurviveEveryFaultOfEveryPlatformCall) {
    sweep([&] { return build(GetParam()); });
}

TEST_P(NetPaths, HandOnClassNamespaceAndTheSwitchAsHost) {
    const CMPIObjectPath* path = fill(GetParam());
    ASSERT_TRUE(cmpihost::is_live(path));
    const cmpihost::Object object = cmpihost::describe(path);
    EXPECT_EQ(object.class_name, asked_class);
    EXPECT_EQ(object.name_space, asked_name_space);
    EXPECT_EQ(object.host, "switch-a");
}

TEST_P(NetPaths, AnswerForASwitchWithoutName) {
    the_switch().has_name = false;
    const CMPIObjectPath* path = fill(GetParam());
    ASSERT_TRUE(cmpihost::is_live(path));
    EXPECT_EQ(cmpihost::describe(path).host, "");
}

TEST_P(NetPaths, AreNullWhenTheyCannotBeMade) {
    scope.fail_object(1);
    EXPECT_EQ(fill(GetParam()), nullptr);
    EXPECT_EQ(trace, GetParam().trace_without_path);
}

TEST_P(NetPaths, ComeBackAsTheyAreWhenTheyHaveNoHandle) {
    const FrontBroker front(FrontBroker::makes::paths_without_handle);
    EXPECT_EQ(fill(GetParam()), FrontBroker::path_without_handle());
    EXPECT_EQ(trace, GetParam().trace_without_handle);
}

TEST_P(NetPaths, AreTheSameWhenTheBrokerReportsErrors) {
    const Rows undisturbed = rows_of(fill(GetParam()));
    const FrontBroker front(FrontBroker::makes::objects_that_report_errors);
    EXPECT_EQ(rows_of(fill(GetParam())), undisturbed);
    EXPECT_EQ(FrontBroker::errors_reported(), undisturbed.size());
}

TEST_P(NetPaths, SurviveEveryFaultOfEveryPlatformCall) {
    sweep([&] { return fill(GetParam()); });
}
