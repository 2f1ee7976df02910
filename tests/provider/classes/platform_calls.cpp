// What each builder asks of the platform, in order, and what it answers when one of these reads comes to nothing. Which
// address a call writes is heard by a function in front of the platform's (linked with --wrap=ip_addr_to_str).
#include "provider/common/results.h"
#include "tests/provider/classes/builder_calls.h"

using namespace test;

namespace {

std::vector<std::string> addresses_written;

} // namespace

extern "C" {

char* __real_ip_addr_to_str(const ip_addr_value* address, char* buffer, int length);

char* __wrap_ip_addr_to_str(const ip_addr_value* address, char* buffer, int length) {
    char* text = __real_ip_addr_to_str(address, buffer, length);
    addresses_written.emplace_back(text);
    return text;
}

} // extern "C"

namespace {

/// A call, and the answer when it fails, when it fails leaving a record, and when it succeeds without one: an object
/// 'o', null 'n', or minus one '-'.
struct Call {
    std::string name;
    std::string answers = "ooo";

    bool operator==(const Call&) const = default;
};

using Calls = std::vector<Call>;

void PrintTo(const Call& call, std::ostream* out) {
    *out << call.name << ' ' << call.answers;
}

/// One after the other.
Calls operator+(Calls first, const Calls& then) {
    first.insert(first.end(), then.begin(), then.end());
    return first;
}

const Calls profile = {{"fcip_get_entity_entry", "nnn"}};
const Calls link_anew = {{"fcip_get_link_entry", "nnn"}, {"fcip_get_link_entry", "nnn"}}; // tunnel 3 is the second row
const Calls link_anew_or_minus_one = {{"fcip_get_link_entry", "---"}, {"fcip_get_link_entry", "---"}};
const Calls port = {{"pm_cim_get_port_info", "nnn"}};
const Calls host = {{"getCSName"}};
const Calls system_name = {{"pm_cim_get_port_info"}, {"dm_cim_get_dmEntry"}, {"vsan_cim_get_vsan_admindomain_key"}};
const Calls local_address = {{"ip_addr_to_str 10.1.1.1"}};
const Calls peer_address = {{"ip_addr_to_str 192.168.100.101"}};
const Calls ip_interface = {{"ipconf_get_intf_ip_address"}, {"ipconf_get_if_inet_addrs"}, {"pm_get_clear_eth_stats"}};
const Calls connection = {{"fcip_get_tcpconn_entry"}};
const Calls wwn = {{"cim_sprintf_wwn"}};
const Calls switch_wwn = Calls{{"system_cim_get_switch_wwn"}} + wwn;
const Calls slot_and_port = {{"if_index_get_slot"}, {"if_index_get_port"}, {"hton_if_index"}};
const Calls one_reply = slot_and_port + Calls{{"idxmap_node_by_if_index"}, {"mts_send"}, {"mts_recv"}};
const Calls reply_or_null =
    slot_and_port + Calls{{"idxmap_node_by_if_index", "nnn"}, {"mts_send", "nnn"}, {"mts_recv", "nnn"}};
const Calls two_replies = one_reply + Calls{{"mts_recv"}}; // the reply and its continuation
const Calls interface_name = {{"sprintf_if_index"}};
const Calls network_address = {{"if_index_get_type"}, {"pm_cim_get_network_address"}};

template <typename Builder>
struct BuilderCalls {
    const char* name;
    Builder* build;
    Calls calls;
};

// clang-format off
const BuilderCalls<InstanceBuilder> instance_calls[] = {
    {"fcip_pe_build_instance", of_link<fcip::fcip_pe_build_instance>,
     profile + host + system_name + local_address + peer_address + wwn + switch_wwn},
    {"fcip_remote_pe_build_instance", of_link<fcip::fcip_remote_pe_build_instance>,
     profile + host + system_name + peer_address + local_address},
    {"fcip_profile_build_instance", of_profile, // the row is taken as it is
     host + local_address},
    {"fcip_settings_build_instance", of_link<fcip::fcip_settings_build_instance>,
     profile + host + system_name + Calls{{"fcip_get_entity_entry"}}},
    {"ip_settings_build_instance", of_link<fcip::ip_settings_build_instance>,
     profile + host + interface_name + one_reply + Calls{{"cmi_req_resp", "nnn"}}},
    {"tcp_settings_build_instance", of_link<fcip::tcp_settings_build_instance>,
     host + link_anew_or_minus_one + profile + two_replies + system_name},
    {"ip_pe_build_instance", of_link<fcip::ip_pe_build_instance>, // writes the local address itself
     profile + host + system_name + peer_address + ip_interface},
    {"ip_remote_pe_build_instance", of_link<fcip::ip_remote_pe_build_instance>,
     profile + host + system_name + peer_address + local_address},
    {"tcp_pe_build_instance", of_link<fcip::tcp_pe_build_instance>,
     profile + host + system_name + local_address + connection},
    {"tcp_remote_pe_build_instance", of_link<fcip::tcp_remote_pe_build_instance>, // asks for no connection
     profile + host + system_name},
    {"remote_service_ap_build_instance", of_link<fcip::remote_service_ap_build_instance>,
     profile + host + system_name},
    {"ip_statistics_build_instance", of_link<fcip::ip_statistics_build_instance>,
     host + reply_or_null + system_name},
    {"tcp_statistics_build_instance", of_link<fcip::tcp_statistics_build_instance>,
     link_anew + profile + host + two_replies + system_name},
    {"tcp_statistical_data_build_instance", of_link<fcip::tcp_statistical_data_build_instance>, // needs no profile
     host + link_anew_or_minus_one + two_replies + system_name},
    {"lan_endpoint_build_instance", of_lan_endpoint,
     port + network_address + host + switch_wwn},
    {"eth_statistics_build_instance", of_ethernet_port, // asks the line card ahead of the name
     Calls{{"pm_get_port_counters", "nnn"}} + host + one_reply + interface_name},
};

const BuilderCalls<PathBuilder> path_calls[] = {
    {"fcip_pe_fill_reference", of_link<fcip::fcip_pe_fill_reference>, // no host
     profile + system_name + peer_address + local_address},
    {"fcip_remote_pe_fill_reference", of_link<fcip::fcip_remote_pe_fill_reference>, // no host
     profile + system_name + peer_address + local_address},
    {"fcip_profile_fill_reference", of_profile, {}},
    {"fcip_settings_fill_reference", of_link<fcip::fcip_settings_fill_reference>, profile + host},
    {"ip_settings_fill_reference", of_link<fcip::ip_settings_fill_reference>, profile + host},
    {"tcp_settings_fill_reference", of_link<fcip::tcp_settings_fill_reference>, profile + host},
    {"ip_pe_fill_reference", of_link<fcip::ip_pe_fill_reference>, // a path without keys where no row came
     Calls{{"fcip_get_entity_entry", "nno"}} + system_name + host + local_address + peer_address},
    {"ip_remote_pe_fill_reference", of_link<fcip::ip_remote_pe_fill_reference>,
     profile + system_name + host + local_address + peer_address + system_name},
    {"tcp_pe_fill_reference", of_link<fcip::tcp_pe_fill_reference>,
     profile + host + local_address + peer_address + system_name},
    {"tcp_remote_pe_fill_reference", of_link<fcip::tcp_remote_pe_fill_reference>,
     profile + host + system_name + peer_address},
    {"remote_service_ap_fill_reference", of_link<fcip::remote_service_ap_fill_reference>,
     profile + host + system_name + peer_address},
    {"stat_fill_reference", of_link<fcip::stat_fill_reference>,
     profile + Calls{{"fcip_get_link_entry", "nnn"}} + host},
    {"lan_endpoint_fill_reference", of_lan_endpoint,
     port + network_address + host + Calls{{"CSgetName"}}},
    {"eth_statistics_fill_reference", of_ethernet_port, host},
};
// clang-format on

class PlatformCalls : public ClassTest {
  protected:
    /// The calls that `make` makes, and what it answers when each of them fails. Without the queue's own accessors,
    /// which come with every exchange and cannot fail.
    template <typename Make>
    Calls found(Make make) {
        addresses_written.clear();
        const auto names = calls_of([&] { EXPECT_EQ(answer_of(make()), 'o'); });
        const auto addresses = addresses_written;
        auto address = addresses.begin();
        Calls calls;
        for (unsigned nth = 1; nth <= names.size(); ++nth) {
            const std::string& name = names[nth - 1];
            if (name.starts_with("mts_") && name != "mts_send" && name != "mts_recv")
                continue;
            calls.push_back({name == "ip_addr_to_str" ? name + " " + *address++ : name, answers_to(make, nth)});
        }
        return calls;
    }

  private:
    template <typename Make>
    std::string answers_to(Make make, unsigned nth) {
        std::string answers;
        for (const switchsim::Fault fault : read_faults) {
            switchsim::inject_at(nth, fault);
            answers += answer_of(make());
            switchsim::clear_faults();
        }
        return answers;
    }

    template <typename T>
    static char answer_of(const T* object) {
        return object == nullptr ? 'n' : object == fcip::minus_one<T>() ? '-' : cmpihost::is_live(object) ? 'o' : '?';
    }
};

class CallsForInstances : public PlatformCalls, public testing::WithParamInterface<BuilderCalls<InstanceBuilder>> {};
class CallsForPaths : public PlatformCalls, public testing::WithParamInterface<BuilderCalls<PathBuilder>> {};

INSTANTIATE_TEST_SUITE_P(Builders, CallsForInstances, testing::ValuesIn(instance_calls),
                         [](const auto& row) { return row.param.name; });
INSTANTIATE_TEST_SUITE_P(Builders, CallsForPaths, testing::ValuesIn(path_calls),
                         [](const auto& row) { return row.param.name; });

TEST_P(CallsForInstances, OrderAndAnswersToFaults) {
    const auto make = [&] { return call([&] { return GetParam().build(made_up_class, nullptr); }); };
    EXPECT_EQ(found(make), GetParam().calls);
}

TEST_P(CallsForPaths, OrderAndAnswersToFaults) {
    const auto make = [&] { return call([&] { return GetParam().build(made_up_class); }); };
    EXPECT_EQ(found(make), GetParam().calls);
}

} // namespace
