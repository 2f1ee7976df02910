// In which order builders ask the platform, for those whose own tests do not say, and which address each asks it to
// write. The latter is heard by a function in front of the platform's (linked with --wrap=ip_addr_to_str).
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/classes/fcip/remote_fcip_port.h"
#include "provider/classes/net/ip_protocol_endpoint.h"
#include "provider/classes/net/ip_statistics.h"
#include "provider/classes/net/remote_ip_service_access_point.h"
#include "provider/classes/net/remote_tcp_port.h"
#include "provider/classes/net/tcp_protocol_endpoint.h"
#include "provider/classes/net/tcp_statistics.h"
#include "tests/provider/classes/net/net_test.h"

using namespace test;

namespace {

using Calls = std::vector<std::string>;

Calls addresses_written;

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

/// One after the other.
Calls operator+(Calls first, const Calls& then) {
    first.insert(first.end(), then.begin(), then.end());
    return first;
}

const Calls profile = {"fcip_get_entity_entry"};
const Calls link_anew = {"fcip_get_link_entry", "fcip_get_link_entry"}; // tunnel 3 is the second row
const Calls host = {"getCSName"};
const Calls system_name = {"pm_cim_get_port_info", "dm_cim_get_dmEntry", "vsan_cim_get_vsan_admindomain_key"};
const Calls local_address = {"ip_addr_to_str 10.1.1.1"};
const Calls peer_address = {"ip_addr_to_str 192.168.100.101"};
const Calls ip_interface = {"ipconf_get_intf_ip_address", "ipconf_get_if_inet_addrs", "pm_get_clear_eth_stats"};
const Calls connection = {"fcip_get_tcpconn_entry"};
const Calls both_wwns = {"cim_sprintf_wwn", "system_cim_get_switch_wwn", "cim_sprintf_wwn"};
const Calls ip_counters = {"if_index_get_slot",       "if_index_get_port", "hton_if_index",
                           "idxmap_node_by_if_index", "mts_send",          "mts_recv"};
const Calls tcp_counters = ip_counters + Calls{"mts_recv"}; // the reply and its continuation

template <typename Builder>
struct Case {
    const char* name;
    Builder* builder;
    Calls calls;
};

// clang-format off
const Case<fcip::link_instance_builder> instance_cases[] = {
    {"fcip_pe_build_instance", fcip::fcip_pe_build_instance,
     profile + host + system_name + local_address + peer_address + both_wwns},
    {"fcip_remote_pe_build_instance", fcip::fcip_remote_pe_build_instance,
     profile + host + system_name + peer_address + local_address},
    {"ip_pe_build_instance", fcip::ip_pe_build_instance, // writes the local address itself
     profile + host + system_name + peer_address + ip_interface},
    {"ip_remote_pe_build_instance", fcip::ip_remote_pe_build_instance,
     profile + host + system_name + peer_address + local_address},
    {"tcp_pe_build_instance", fcip::tcp_pe_build_instance,
     profile + host + system_name + local_address + connection},
    {"ip_statistics_build_instance", fcip::ip_statistics_build_instance,
     host + ip_counters + system_name},
    {"tcp_statistics_build_instance", fcip::tcp_statistics_build_instance,
     link_anew + profile + host + tcp_counters + system_name},
    {"tcp_statistical_data_build_instance", fcip::tcp_statistical_data_build_instance,
     host + link_anew + tcp_counters + system_name},
};

const Case<fcip::link_path_builder> path_cases[] = {
    {"fcip_pe_fill_reference", fcip::fcip_pe_fill_reference, // no host
     profile + system_name + peer_address + local_address},
    {"fcip_remote_pe_fill_reference", fcip::fcip_remote_pe_fill_reference, // no host
     profile + system_name + peer_address + local_address},
    {"ip_pe_fill_reference", fcip::ip_pe_fill_reference,
     profile + system_name + host + local_address + peer_address},
    {"ip_remote_pe_fill_reference", fcip::ip_remote_pe_fill_reference,
     profile + system_name + host + local_address + peer_address + system_name},
    {"tcp_pe_fill_reference", fcip::tcp_pe_fill_reference,
     profile + host + local_address + peer_address + system_name},
    {"tcp_remote_pe_fill_reference", fcip::tcp_remote_pe_fill_reference,
     profile + host + system_name + peer_address},
    {"remote_service_ap_fill_reference", fcip::remote_service_ap_fill_reference,
     profile + host + system_name + peer_address},
};
// clang-format on

std::string name_of(const auto& info) {
    return info.param.name;
}

class CallOrder : public NetTest {
  protected:
    /// With the addresses written, and without the queue's own accessors, which come with every exchange.
    template <typename F>
    Calls calls_in_order(F f) {
        addresses_written.clear();
        Calls calls = calls_of(f);
        auto address = addresses_written.begin();
        for (std::string& call : calls)
            if (call == "ip_addr_to_str")
                call += ' ' + *address++;
        std::erase_if(calls, [](const std::string& name) {
            return name.starts_with("mts_") && name != "mts_send" && name != "mts_recv";
        });
        return calls;
    }
};

class InstanceCallOrder : public CallOrder, public testing::WithParamInterface<Case<fcip::link_instance_builder>> {};
class PathCallOrder : public CallOrder, public testing::WithParamInterface<Case<fcip::link_path_builder>> {};

INSTANTIATE_TEST_SUITE_P(Builders, InstanceCallOrder, testing::ValuesIn(instance_cases),
                         name_of<testing::TestParamInfo<Case<fcip::link_instance_builder>>>);
INSTANTIATE_TEST_SUITE_P(Builders, PathCallOrder, testing::ValuesIn(path_cases),
                         name_of<testing::TestParamInfo<Case<fcip::link_path_builder>>>);

} // namespace

TEST_P(InstanceCallOrder, IsThatOfTheProperties) {
    EXPECT_EQ(calls_in_order([&] { build(GetParam().builder, tunnel_3); }), GetParam().calls);
}

TEST_P(PathCallOrder, IsThatOfTheKeys) {
    EXPECT_EQ(calls_in_order([&] { fill(GetParam().builder, tunnel_3); }), GetParam().calls);
}
