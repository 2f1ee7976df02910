// switchdump --scenario: a scenario that answers as the switch does that was captured.
#include "simulator/scenario_writer.h"
#include "tests/support/corpus.h"
#include "tests/switchdump/capture_test.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using switchsim::the_switch;

/// What a request came to: the answer, and the provider's trace.
struct Outcome {
    std::string request;
    int rc = 0;
    std::vector<cmpihost::Object> objects;
    std::string trace;

    bool operator==(const Outcome&) const = default;
};

class Capture : public CaptureTest {
  protected:
    Capture() : library_(FCIP_BINARY_DIR "/lib/libFCIPProvider.so") { library_.create("FCIPProvider"); }

    Outcome ask(const cmpihost::Request& request, const std::string& name) const {
        testing::internal::CaptureStdout();
        auto answer = cmpihost::run(library_.provider(), request);
        return {name, answer.rc, std::move(answer.objects), testing::internal::GetCapturedStdout()};
    }

    /// Enumerations of every class and association; then of each object its instance, and every association operation.
    std::vector<Outcome> all_answers() const {
        using Operation = cmpihost::Request::Operation;
        std::vector<Outcome> outcomes;
        std::vector<cmpihost::Object> sources;
        std::vector<const char*> classes(std::begin(test::served_classes), std::end(test::served_classes));
        classes.insert(classes.end(), std::begin(test::association_classes), std::end(test::association_classes));
        for (const char* class_name : classes) {
            cmpihost::Request request;
            request.path.class_name = class_name;
            request.path.name_space = "root/cimv2";
            outcomes.push_back(ask(request, class_name));
            request.operation = Operation::enumerate_instance_names;
            outcomes.push_back(ask(request, class_name));
            for (const auto& path : outcomes.back().objects)
                sources.push_back(path);
        }
        for (const auto& source : sources) {
            for (const Operation operation :
                 {Operation::get_instance, Operation::associators, Operation::associator_names, Operation::references,
                  Operation::reference_names}) {
                cmpihost::Request request;
                request.operation = operation;
                request.path = source;
                outcomes.push_back(ask(request, source.class_name + std::to_string(static_cast<int>(operation))));
            }
        }
        return outcomes;
    }

    /// Captures the switch and loads what was captured: all answers are as before, and capturing again gives the same.
    void expect_alike() {
        const auto before = all_answers();
        const std::string scenario = captured();
        ASSERT_EQ(switchsim::load_text(scenario, "captured"), "") << scenario;
        const auto after = all_answers();
        ASSERT_EQ(before.size(), after.size());
        ASSERT_GT(before.size(), 70U);
        for (std::size_t i = 0; i < before.size(); ++i) {
            EXPECT_EQ(before[i].trace, after[i].trace) << before[i].request;
            EXPECT_TRUE(before[i] == after[i]) << before[i].request;
        }
        EXPECT_EQ(captured(), scenario);
    }

    cmpihost::Library library_;
};

TEST_F(Capture, OfTheTwoSiteSwitchAnswersAlike) {
    ASSERT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
    expect_alike();
}

TEST_F(Capture, OfAGeneratedSwitchAnswersAlike) {
    switchsim::generate(12);
    expect_alike();
}

TEST_F(Capture, OfASwitchWithEveryFieldChangedAnswersAlike) {
    ASSERT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
    change_every_field();
    expect_alike();
}

TEST_F(Capture, OfTheSmallestAndOfNoSwitchAnswersAlike) {
    ASSERT_EQ(switchsim::load(FCIP_SOURCE_DIR "/scenarios/single-tunnel.toml"), "");
    expect_alike();
    switchsim::generate(0);
    the_switch().has_name = false;
    expect_alike();
}

TEST_F(Capture, OfServicesThatDoNotAnswerAnswersAlike) {
    ASSERT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
    auto& contents = the_switch();
    contents.slots = {2};
    contents.ip_configuration.reset();
    contents.connections.clear();
    contents.link_errors.clear();
    contents.vsans.erase(contents.vsans.begin());
    contents.profiles.erase(std::prev(contents.profiles.end()));
    contents.ports.erase(contents.links.begin()->second.link_if_index);
    for (auto& [if_index, port] : contents.ports) {
        port.type_known = if_index % 3 != 0;
        port.counters.reset();
        port.subnet_mask.reset();
        port.prefix_length.reset();
        if (!port.tcp_statistics.empty())
            port.tcp_statistics.resize(1);
        port.eth_stats_mtu.reset();
    }
    expect_alike();
}

TEST_F(Capture, NamesWhatCannotBeRead) {
    ASSERT_EQ(switchsim::load(FCIP_SOURCE_DIR "/scenarios/single-tunnel.toml"), "");
    the_switch().slots.clear();
    the_switch().ip_configuration.reset();
    the_switch().connections.clear();
    const std::string scenario = captured();
    for (const char* line : {"\n# cannot be read: ip\n", "mac_statistics, ip_statistics, tcp_statistics\n",
                             "\n# cannot be read: connection\n", "\ncard_missing = true\n"})
        EXPECT_NE(scenario.find(line), std::string::npos) << line << scenario;
}

TEST_F(Capture, OfFailingPlatformCallsIsReadable) {
    for (const char* function : {"getCSName",
                                 "CSgetName",
                                 "system_cim_get_switch_wwn",
                                 "cim_sprintf_wwn",
                                 "fcip_get_entity_entry",
                                 "fcip_get_link_entry",
                                 "pm_cim_get_port_info",
                                 "if_index_get_type",
                                 "if_index_get_slot",
                                 "if_index_get_port",
                                 "sprintf_if_index",
                                 "netcfg_print_ifname",
                                 "vsan_cim_get_vsanEntry",
                                 "dm_cim_get_dmEntry",
                                 "mts_send",
                                 "mts_recv",
                                 "idxmap_node_by_if_index",
                                 "cmi_req_resp",
                                 "pm_cim_find_interface",
                                 "vsan_cim_get_vsan_key"}) {
        for (const auto fault : {switchsim::Fault::fail, switchsim::Fault::fail_leaving_record,
                                 switchsim::Fault::succeed_without_record}) {
            SCOPED_TRACE(function);
            switchsim::reset();
            ASSERT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
            switchsim::inject(function, fault);
            const std::string scenario = captured();
            switchsim::clear_faults();
            EXPECT_EQ(switchsim::load_text(scenario, "captured"), "") << scenario;
        }
    }
}

TEST_F(Capture, BytesThatAreNoCharactersBecomeQuestionMarks) {
    the_switch().name = "a\xFFz\xC3\xA9\xE0\x80\x80\x7F\n";
    ASSERT_EQ(switchsim::load_text(switchsim::write_scenario(the_switch()), "written"), "");
    EXPECT_EQ(the_switch().name, "a?z\xC3\xA9???\x7F\n");
}

} // namespace
