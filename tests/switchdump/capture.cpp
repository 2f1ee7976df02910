// switchdump --scenario: a scenario that answers as the switch does that was captured.
#include "host/broker/loader.h"
#include "simulator/scenario_fields.h"
#include "simulator/scenario_writer.h"
#include "simulator/statistics_layout.h"
#include "simulator/switchsim.h"
#include "switchdump/switchdump.h"
#include "tests/support/corpus.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <set>
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

class Capture : public testing::Test {
  protected:
    Capture() : library_(FCIP_BINARY_DIR "/lib/libFCIPProvider.so") {
        unsetenv("SWITCHSIM_SCENARIO");
        switchsim::reset();
        library_.create("FCIPProvider");
    }

    ~Capture() override {
        for (const std::string& complaint : switchsim::complaints())
            ADD_FAILURE() << complaint;
        EXPECT_EQ(switchsim::undropped_messages(), 0U);
    }

    static std::string captured(std::vector<const char*> arguments = {"switchdump", "--scenario"}) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(switchdump::run(static_cast<int>(arguments.size()), arguments.data()), 0);
        return testing::internal::GetCapturedStdout();
    }

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

/// A number that no other call gives.
std::uint32_t other_number() {
    static std::uint32_t last = 1000;
    return last += 7;
}

template <class Row, std::size_t size>
void change_words(const switchsim::WordField<Row> (&fields)[size], Row& row) {
    for (const auto& field : fields)
        row.*field.word = other_number();
}

void change_counters(std::span<const switchsim::CounterField> fields, std::uint8_t* record) {
    for (const auto& field : fields)
        field.put(record, (std::uint64_t{0xF000} << 48 | std::uint64_t{other_number()} << 32) + other_number());
}

void change_port(switchsim::Port& port) {
    port.name = "n " + std::to_string(other_number()) + " \"\\\t\u00fc";
    port.kernel_name = "k" + std::to_string(other_number());
    port.mtu = other_number();
    port.config_word = other_number();
    port.fc_interface = !port.fc_interface;
    change_counters(switchsim::port_counter_fields, port.counters.emplace().bytes);
    if (port.kind != switchsim::kind_ethernet)
        return;
    port.network_address = port.slot == 1 ? "AA:bb:cc:dd:ee:0f" : "no MAC";
    port.subnet_mask = {1, 2, 3, 4};
    port.prefix_length = 77;
    port.eth_stats_mtu = other_number();
    port.mac_statistics.resize(switchsim::mac_statistics_size);
    port.ip_statistics.resize(switchsim::ip_statistics_size);
    port.tcp_statistics.assign(1, switchsim::Payload(switchsim::tcp_statistics_size));
    for (std::uint16_t left = 3; left-- > 0;) {
        port.tcp_statistics.emplace_back(switchsim::tcp_continuation_size);
        switchsim::put_big(port.tcp_statistics.back().data(), switchsim::tcp_more_offset, left);
    }
    change_counters(switchsim::mac_statistics_fields, port.mac_statistics.data());
    change_counters(switchsim::ip_statistics_fields, port.ip_statistics.data());
    change_counters(switchsim::tcp_statistics_fields, port.tcp_statistics[0].data());
}

/// The two-site switch with another value in every field that scenarios have.
void change_every_field() {
    auto& contents = the_switch();
    contents.name = "name";
    contents.system_name = "system";
    contents.wwn = {1, 2, 3, 4, 5, 6, 7, 8};
    contents.wwn_texts[contents.wwn] = "text of the WWN";
    contents.ip_configuration = {other_number(), 200};
    for (auto& [id, vsan] : contents.vsans)
        vsan = {"system " + std::to_string(id), "domain " + std::to_string(id)};
    contents.connections.clear();
    for (auto& [id, profile] : contents.profiles) {
        change_words(switchsim::profile_words, profile);
        profile.address_if_index = other_number();
    }
    for (auto& [key, link] : contents.links) {
        change_words(switchsim::link_words, link);
        link.remote_entity_id = other_number();
        change_counters(switchsim::link_error_fields, contents.link_errors[key].bytes);
        const auto profile = contents.profiles.find(link.entity_id);
        const std::uint32_t port = profile == contents.profiles.end() ? 0 : profile->second.listen_port;
        auto& connection = contents.connections[{link.entity_id, link.link_index, static_cast<std::uint16_t>(port),
                                                 static_cast<std::uint16_t>(link.remote_tcp_port)}];
        change_words(switchsim::connection_words, connection);
        connection.purpose = 3;
    }
    for (auto& [if_index, port] : contents.ports)
        change_port(port);
}

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

// ---------------------------------------------------------------------------------------------- anonymous

TEST_F(Capture, AnonymousHoldsNothingOfTheOldNames) {
    ASSERT_EQ(switchsim::load_text(switchsim::built_in_scenario(), "two-site"), "");
    std::set<std::string> old = {the_switch().name, the_switch().system_name, switchsim::plain_text(the_switch().wwn)};
    for (const auto& [id, vsan] : the_switch().vsans)
        old.insert(vsan.domain.value_or(""));
    for (const auto& [if_index, port] : the_switch().ports)
        old.insert(port.network_address);
    for (const auto& [key, link] : the_switch().links) {
        switchsim::Wwn wwn;
        std::copy(std::begin(link.remote_wwn), std::end(link.remote_wwn), wwn.begin());
        old.insert(wwn == switchsim::Wwn{} ? "" : switchsim::plain_text(wwn));
    }
    for (const auto& [wwn, text] : the_switch().wwn_texts)
        old.insert(text);
    old.erase("");
    ASSERT_GT(old.size(), 10U);
    const std::string scenario = captured({"switchdump", "--anonymous", "--scenario"});
    for (const std::string& text : old)
        EXPECT_EQ(scenario.find("\"" + text + "\""), std::string::npos) << text;
    EXPECT_EQ(switchsim::load_text(scenario, "anonymous"), "");
}

TEST_F(Capture, AnonymousKeepsWhatIsEqualEqual) {
    switchsim::generate(2);
    auto& links = the_switch().links;
    auto& profile = the_switch().profiles.begin()->second;
    links.begin()->second.remote_address = profile.local_address;
    std::prev(links.end())->second.remote_address = {};
    the_switch().system_name = the_switch().name;
    ASSERT_EQ(switchsim::load_text(captured({"switchdump", "--scenario", "--anonymous"}), "anonymous"), "");
    const auto& local = the_switch().profiles.begin()->second.local_address;
    EXPECT_EQ(std::memcmp(&local, &the_switch().links.begin()->second.remote_address, sizeof local), 0);
    EXPECT_EQ(local.address[0], 192);
    EXPECT_EQ(the_switch().links.rbegin()->second.remote_address.family, ip_family_none);
    EXPECT_EQ(the_switch().name, "name-1");
    EXPECT_EQ(the_switch().ports.begin()->second.name, "fcip1");
}

TEST_F(Capture, AnonymousHasDifferentAddressesForThousands) {
    switchsim::generate(3000);
    ASSERT_EQ(switchsim::load_text(captured({"switchdump", "--scenario", "--anonymous"}), "anonymous"), "");
    std::set<std::vector<std::uint8_t>> addresses;
    std::set<std::vector<std::uint8_t>> wwns;
    for (const auto& [key, link] : the_switch().links) {
        const auto* address = link.remote_address.address;
        addresses.insert({address, address + 16});
        wwns.insert({link.remote_wwn, link.remote_wwn + 8});
        const bool in_a_range = (address[0] == 192 && address[1] == 0 && address[2] == 2) ||
                                (address[0] == 198 && address[1] == 51 && address[2] == 100) ||
                                (address[0] == 203 && address[1] == 0 && address[2] == 113) ||
                                (address[0] == 198 && (address[1] & 0xFE) == 18) ||
                                (address[0] == 0x20 && address[1] == 0x01 && address[2] == 0x0D && address[3] == 0xB8);
        EXPECT_TRUE(in_a_range) << int{address[0]} << "." << int{address[1]};
    }
    EXPECT_EQ(addresses.size(), 3000U);
    EXPECT_EQ(wwns.size(), 3000U);
}

} // namespace
