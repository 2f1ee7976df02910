// switchdump --scenario: a scenario that answers as the switch does that was captured.
#include "host/cim/path_text.h"
#include "simulator/functions.h"
#include "simulator/scenario_writer.h"
#include "tests/support/corpus.h"
#include "tests/switchdump/capture_test.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

using switchsim::the_switch;

/// What a request came to: the answer, and the provider's trace.
struct Outcome {
    int rc = 0;
    std::vector<cmpihost::Object> objects;
    std::string trace;

    bool operator==(const Outcome&) const = default;
};

cmpihost::Request request_for(cmpihost::Request::Operation operation, const cmpihost::Object& path) {
    cmpihost::Request request;
    request.operation = operation;
    request.path = path;
    return request;
}

std::string name_of(const cmpihost::Request& request) {
    return "operation " + std::to_string(static_cast<int>(request.operation)) + " of " +
           cmpihost::path_text(request.path);
}

/// What the simulated switch serves of itself.
constexpr const char* own_classes[] = {"ZANTO_PhysicalComputerSystem", "ZANTO_LogicalComputerSystem",
                                       "ZANTO_EthernetPort", "ZANTO_FCPort"};

class Capture : public CaptureTest {
  protected:
    Capture()
        : library_(FCIP_BINARY_DIR "/lib/libFCIPProvider.so"),
          own_library_(FCIP_BINARY_DIR "/lib/libswitchsimProvider.so") {
        library_.create("FCIPProvider");
        own_library_.create("switchsimProvider");
    }

    static std::vector<Outcome> answers_of(const cmpihost::Library& library,
                                           const std::vector<cmpihost::Request>& requests) {
        testing::internal::CaptureStdout();
        std::vector<Outcome> outcomes;
        std::vector<off_t> ends;
        for (const auto& request : requests) {
            auto answer = cmpihost::run(library.provider(), request);
            outcomes.push_back({answer.rc, std::move(answer.objects), ""});
            std::fflush(stdout);
            ends.push_back(lseek(STDOUT_FILENO, 0, SEEK_CUR));
        }
        const std::string traces = testing::internal::GetCapturedStdout();
        std::size_t begin = 0;
        for (std::size_t i = 0; i < outcomes.size(); ++i) {
            const auto end = static_cast<std::size_t>(ends[i]);
            outcomes[i].trace = traces.substr(begin, end - begin);
            begin = end;
        }
        return outcomes;
    }

    std::vector<Outcome> answers(const std::vector<cmpihost::Request>& requests) const {
        return answers_of(library_, requests);
    }

    /// Of each of the switch's own classes the enumerations, and each object.
    std::vector<cmpihost::Request> requests_of_own_classes() const {
        using enum cmpihost::Request::Operation;
        std::vector<cmpihost::Request> requests;
        for (const char* class_name : own_classes) {
            const cmpihost::Object path{class_name, "root/cimv2", {}, {}, {}};
            requests.push_back(request_for(enumerate_instances, path));
            requests.push_back(request_for(enumerate_instance_names, path));
            const auto names = answers_of(own_library_, {requests.back()});
            for (const auto& object : names[0].objects)
                requests.push_back(request_for(get_instance, object));
        }
        return requests;
    }

    /// Captures the switch and loads what was captured: of its own classes, answers about those that are named differ.
    void expect_own_classes_alike_but(const std::set<std::string>& differing) {
        const auto requests = requests_of_own_classes();
        const auto before = answers_of(own_library_, requests);
        ASSERT_EQ(switchsim::load_text(captured(), "captured"), "");
        const auto after = answers_of(own_library_, requests);
        std::set<std::string> found;
        for (std::size_t i = 0; i < before.size(); ++i)
            if (before[i] != after[i])
                found.insert(requests[i].path.class_name);
        EXPECT_EQ(found, differing);
        EXPECT_GT(requests.size(), 2 * std::size(own_classes));
    }

    /// Enumerations of every class and association; then of each object its instance, and every association operation.
    std::vector<cmpihost::Request> all_requests() const {
        using Operation = cmpihost::Request::Operation;
        std::vector<const char*> classes(std::begin(test::served_classes), std::end(test::served_classes));
        classes.insert(classes.end(), std::begin(test::association_classes), std::end(test::association_classes));
        std::vector<cmpihost::Request> requests;
        std::vector<cmpihost::Object> sources;
        for (const char* class_name : classes) {
            const cmpihost::Object path{class_name, "root/cimv2", {}, {}, {}};
            requests.push_back(request_for(Operation::enumerate_instances, path));
            requests.push_back(request_for(Operation::enumerate_instance_names, path));
            const auto names = answers({requests.back()});
            for (const auto& object : names[0].objects)
                sources.push_back(object);
        }
        for (const auto& source : sources)
            for (const Operation operation :
                 {Operation::get_instance, Operation::associators, Operation::associator_names, Operation::references,
                  Operation::reference_names})
                requests.push_back(request_for(operation, source));
        return requests;
    }

    /// Captures the switch and loads what was captured: all answers are as before, and capturing again gives the same.
    void expect_alike() {
        const auto requests = all_requests();
        const auto before = answers(requests);
        const std::string scenario = captured();
        ASSERT_EQ(switchsim::load_text(scenario, "captured"), "") << scenario;
        const auto after = answers(requests);
        ASSERT_GT(before.size(), 70U);
        for (std::size_t i = 0; i < before.size(); ++i) {
            EXPECT_EQ(before[i].trace, after[i].trace) << name_of(requests[i]);
            EXPECT_TRUE(before[i] == after[i]) << name_of(requests[i]);
        }
        EXPECT_EQ(captured(), scenario);
    }

    cmpihost::Library library_;
    cmpihost::Library own_library_; ///< of the simulated switch itself
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

TEST_F(Capture, OwnClassesDifferInTheNameOfAVsanWithoutADomain) {
    ASSERT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
    expect_own_classes_alike_but({"ZANTO_LogicalComputerSystem"});
    const auto& vsans = the_switch().vsans;
    EXPECT_EQ(vsans.at(99).name, "VSAN99");
    EXPECT_EQ(vsans.at(1).name, "200100005E112233");
}

TEST_F(Capture, OwnClassesOfASwitchWithEveryFieldChangedAreAlike) {
    ASSERT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
    change_every_field();
    expect_own_classes_alike_but({});
}

TEST_F(Capture, OwnClassesOfAGeneratedSwitchAreAlike) {
    switchsim::generate(12);
    expect_own_classes_alike_but({});
}

TEST_F(Capture, OwnClassesDifferInCardsThatHaveFibreChannelPortsAlone) {
    ASSERT_EQ(switchsim::load_text(R"(
        [switch]
        name = "sw"
        slots = [1, 4]
        [[vsan]]
        id = 1
        domain = "d"
        [[fibre_channel]]
        slot = 4
        port = 1
    )",
                                   "cards"),
              "");
    expect_own_classes_alike_but({"ZANTO_FCPort"});
}

TEST_F(Capture, OwnClassesLackVsansWithoutInterfaces) {
    switchsim::generate(2);
    the_switch().vsans[4000] = {"alone", "domain"};
    expect_own_classes_alike_but({"ZANTO_LogicalComputerSystem"});
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

/// How many answers about the two-site switch are other ones while a platform function fails, and of what was captured
/// meanwhile.
struct Difference {
    std::string_view function;
    unsigned answers;
};

constexpr Difference known_differences[] = {
    // A port without a row has no names, slot, addresses or statistics either.
    {"pm_cim_get_port_info", 56},
    // No line card of a scenario answers for a port whose slot is not known.
    {"if_index_get_slot", 36},
    // Scenarios have one name for these two and for the services that make objects.
    {"getCSName", 84},
    {"CSgetName", 5},
    // These make the objects of other providers, and tell nothing of the switch.
    {"fcport_build_instance_pm", 1},
    {"fcport_fill_reference_pm", 1},
    {"association_class_build_instance_path", 76},
    {"switch_fill_reference_str", 6},
};

class FailingCalls : public Capture {
  protected:
    FailingCalls() { load_two_site(); }

    static void load_two_site() {
        switchsim::reset();
        EXPECT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
    }

    /// The functions that answering the requests and capturing call, but for the lock and for opening the queue.
    std::vector<std::string_view> functions(const std::vector<cmpihost::Request>& requests) const {
        switchsim::clear_counts();
        answers(requests);
        captured();
        std::vector<std::string_view> called;
        for (const std::string_view function : switchsim::function_names)
            if (switchsim::calls(function) > 0 && !function.starts_with("mutex_") && function != "init_mts")
                called.push_back(function);
        return called;
    }

    /// Captures the two-site switch while a function misbehaves.
    static std::string captured_with(std::string_view function, switchsim::Fault fault) {
        load_two_site();
        switchsim::inject(function, fault);
        const std::string scenario = captured();
        switchsim::clear_faults();
        return scenario;
    }
};

TEST_F(FailingCalls, AnswerAlikeWhenCapturedButForTheListedOnes) {
    const auto requests = all_requests();
    std::map<std::string_view, unsigned> known;
    for (const Difference& row : known_differences)
        known[row.function] = row.answers;
    const auto called = functions(requests);
    ASSERT_GT(called.size(), 35U);
    for (const std::string_view function : called) {
        load_two_site();
        switchsim::inject(function, switchsim::Fault::fail);
        const auto before = answers(requests);
        ASSERT_EQ(switchsim::load_text(captured_with(function, switchsim::Fault::fail), "captured"), "") << function;
        const auto after = answers(requests);
        unsigned differences = 0;
        for (std::size_t i = 0; i < requests.size(); ++i)
            differences += before[i] == after[i] ? 0U : 1U;
        EXPECT_EQ(differences, known[function]) << function;
    }
}

TEST_F(FailingCalls, GiveTheSameScenarioFromTheirScenario) {
    using enum switchsim::Fault;
    for (const std::string_view function : functions({})) {
        for (const auto fault : {fail, fail_leaving_record, succeed_without_record}) {
            SCOPED_TRACE(function);
            const std::string scenario = captured_with(function, fault);
            ASSERT_EQ(switchsim::load_text(scenario, "captured"), "") << scenario;
            EXPECT_EQ(captured(), scenario);
        }
    }
}

TEST_F(FailingCalls, AreNoted) {
    const std::pair<const char*, const char*> notes[] = {
        {"system_cim_get_switch_wwn", "# cannot be read: wwn\n\n[switch]\n"},
        {"fcip_get_entity_entry", "# cannot be read: profiles\n\n[switch]\n"},
        {"fcip_get_link_entry", "# cannot be read: tunnels\n\n[switch]\n"},
        {"pm_cim_get_port_info", "# cannot be read: ports\n\n[switch]\n"},
        {"vsan_cim_get_vsanEntry", "# cannot be read: name of vsan 1, "},
        {"pm_cim_get_network_address", "\n# cannot be read: network_address"},
        {"cmi_req_resp", "\n# cannot be read: ip\n"},
    };
    for (const auto& [function, note] : notes) {
        const std::string scenario = captured_with(function, switchsim::Fault::fail);
        EXPECT_NE(scenario.find(note), std::string::npos) << function;
    }
    load_two_site();
    EXPECT_TRUE(captured().starts_with("[switch]\n"));
}

TEST_F(Capture, NotesMissingCountersOfFibreChannelPorts) {
    ASSERT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
    for (auto& [if_index, port] : the_switch().ports)
        port.counters.emplace();
    EXPECT_EQ(captured().find("\n# cannot be read: counters\n"), std::string::npos);
    for (auto& [if_index, port] : the_switch().ports)
        if (port.kind == switchsim::kind_fibre_channel)
            port.counters.reset();
    EXPECT_NE(captured().find("\n# cannot be read: counters\n"), std::string::npos);
}

TEST_F(Capture, BytesThatAreNoCharactersBecomeQuestionMarks) {
    the_switch().name = "a\xFFz\xC3\xA9\xE0\x80\x80\x7F\n";
    ASSERT_EQ(switchsim::load_text(switchsim::write_scenario(the_switch()), "written"), "");
    EXPECT_EQ(the_switch().name, "a?z\xC3\xA9???\x7F\n");
}

} // namespace
