// Every pointer that a platform function needs: without it the call fails, and the complaint names what was missing.
// (Those of the functions that need a broker stand in cim_utility.cpp.)
#include "tests/simulator/simulator_test.h"

namespace {

struct NullArgument {
    const char* complaint;
    int (*call)(); ///< of functions that return a pointer: -1 where it is null
};

// What the calls are given beside the null.
char output[256];
std::uint8_t some_bytes[4096];
const std::uint32_t link_key[2] = {1, 0};
const std::uint32_t port_key[2] = {gigabit, gigabit};
const mts_addr destination{0xFE000000, 60};
const mts_addr line_card{switchsim::node_of_slot(1), 943};
const mts_recv_options options{{1, 0, 5, 0, 0, 0, 0, 0}};
const FcipTcpConnKey connection_key{1, 0, 3225, 3225};
PmPortInfo some_port{};
std::uint32_t out_word;
mts_msg some_message;
void* out;

template <typename Record>
Record** typed_out() {
    static Record* record;
    return &record;
}

const NullArgument null_arguments[] = {
    {"fcip_get_entity_entry: the out pointer is null",
     [] { return fcip_get_entity_entry(mts_q, platform_exact, 1, nullptr, 5); }},
    {"fcip_get_link_entry: the key is null",
     [] { return fcip_get_link_entry(mts_q, platform_exact, nullptr, typed_out<FcipLinkEntry>(), 30, 1); }},
    {"fcip_get_link_entry: the out pointer is null",
     [] { return fcip_get_link_entry(mts_q, platform_exact, link_key, nullptr, 30, 1); }},
    {"fcip_get_tcpconn_entry: the key is null",
     [] { return fcip_get_tcpconn_entry(mts_q, platform_exact, nullptr, typed_out<FcipTcpConnEntry>(), 15); }},
    {"fcip_get_tcpconn_entry: the out pointer is null",
     [] { return fcip_get_tcpconn_entry(mts_q, platform_exact, &connection_key, nullptr, 15); }},
    {"fcip_snmp_get_link_errors: the key is null",
     [] { return fcip_snmp_get_link_errors(mts_q, platform_exact, nullptr, typed_out<FcipLinkErrors>(), 10); }},
    {"fcip_snmp_get_link_errors: the out pointer is null",
     [] { return fcip_snmp_get_link_errors(mts_q, platform_exact, link_key, nullptr, 10); }},
    {"fcip_send_recv_with_mts_q: the destination is null",
     [] { return fcip_send_recv_with_mts_q(8946, nullptr, link_key, 4, mts_q, &out, &out_word, some_bytes); }},
    {"fcip_send_recv_with_mts_q: the payload is null",
     [] { return fcip_send_recv_with_mts_q(8946, &destination, nullptr, 4, mts_q, &out, &out_word, some_bytes); }},
    {"fcip_send_recv_with_mts_q: the out pointer is null",
     [] { return fcip_send_recv_with_mts_q(8946, &destination, link_key, 4, mts_q, nullptr, &out_word, some_bytes); }},
    {"fcip_send_recv_with_mts_q: the reply length is null",
     [] { return fcip_send_recv_with_mts_q(8946, &destination, link_key, 4, mts_q, &out, nullptr, some_bytes); }},
    {"fcip_send_recv_with_mts_q: the scratch area is null",
     [] { return fcip_send_recv_with_mts_q(8946, &destination, link_key, 4, mts_q, &out, &out_word, nullptr); }},
    {"fcip_if_str: the buffer is null", [] { return fcip_if_str(gigabit, nullptr) == nullptr ? -1 : 0; }},

    {"pm_cim_get_port_info: the out pointer is null",
     [] { return pm_cim_get_port_info(nullptr, platform_exact, gigabit, mts_q); }},
    {"pm_cmi_get_port_config: the key is null",
     [] { return pm_cmi_get_port_config(mts_q, 1, 1, nullptr, &out_word, typed_out<PmPortConfig>(), 4); }},
    {"pm_cmi_get_port_config: the auxiliary word is null",
     [] { return pm_cmi_get_port_config(mts_q, 1, 1, port_key, nullptr, typed_out<PmPortConfig>(), 4); }},
    {"pm_cmi_get_port_config: the out pointer is null",
     [] { return pm_cmi_get_port_config(mts_q, 1, 1, port_key, &out_word, nullptr, 4); }},
    {"pm_cim_get_network_address: the buffer is null",
     [] { return pm_cim_get_network_address(nullptr, &some_port, 2); }},
    {"pm_cim_get_network_address: the port is null", [] { return pm_cim_get_network_address(output, nullptr, 2); }},
    {"pm_get_clear_eth_stats: the counter buffer is null",
     [] { return pm_get_clear_eth_stats(mts_q, gigabit, gigabit, 1, nullptr); }},
    {"pm_get_port_counters: the out pointer is null",
     [] { return pm_get_port_counters(mts_q, gigabit, 0, 6, nullptr); }},

    {"vsan_cim_get_vsanEntry: the VSAN entry is null",
     [] { return vsan_cim_get_vsanEntry(mts_q, platform_exact, nullptr); }},
    {"vsan_cim_get_vsan_key: the key is null", [] { return vsan_cim_get_vsan_key(nullptr, some_bytes, some_bytes); }},
    {"vsan_cim_get_vsan_key: the VSAN entry is null",
     [] { return vsan_cim_get_vsan_key(output, nullptr, some_bytes); }},
    {"vsan_cim_get_vsan_key: the domain entry is null",
     [] { return vsan_cim_get_vsan_key(output, some_bytes, nullptr); }},
    {"vsan_cim_get_vsan_admindomain_key: the key is null",
     [] { return vsan_cim_get_vsan_admindomain_key(nullptr, some_bytes); }},
    {"vsan_cim_get_vsan_admindomain_key: the domain entry is null",
     [] { return vsan_cim_get_vsan_admindomain_key(output, nullptr); }},
    {"dm_cim_get_dmEntry: the domain entry is null", [] { return dm_cim_get_dmEntry(mts_q, 1, 1, nullptr); }},

    {"system_cim_get_switch_wwn: the WWN is null", [] { return system_cim_get_switch_wwn(mts_q, nullptr); }},
    {"cim_sprintf_wwn: the text is null", [] { return cim_sprintf_wwn(nullptr, some_bytes); }},
    {"cim_sprintf_wwn: the WWN is null", [] { return cim_sprintf_wwn(output, nullptr); }},

    {"if_index_get_slot: the result is null", [] { return if_index_get_slot(gigabit, nullptr); }},
    {"if_index_get_port: the result is null", [] { return if_index_get_port(gigabit, nullptr); }},
    {"if_index_get_type: the result is null", [] { return if_index_get_type(gigabit, nullptr); }},
    {"idxmap_node_by_if_index: the record is null", [] { return idxmap_node_by_if_index(gigabit, nullptr); }},
    {"sprintf_if_index: the buffer is null", [] { return sprintf_if_index(nullptr, gigabit); }},
    {"netcfg_print_ifname: the buffer is null", [] { return netcfg_print_ifname(nullptr, gigabit); }},

    {"ipconf_get_intf_ip_address: the out pointer is null",
     [] { return ipconf_get_intf_ip_address(mts_q, gigabit, nullptr); }},
    {"ipconf_get_if_inet_addrs: the out pointer is null",
     [] { return ipconf_get_if_inet_addrs(mts_q, gigabit, nullptr); }},
    {"cmi_req_resp: the out pointer is null",
     [] { return cmi_req_resp(873, 1, 0, nullptr, &out_word, 0, 0, 35, mts_q, 5); }},
    {"cmi_req_resp: the reply length is null",
     [] { return cmi_req_resp(873, 1, 0, &out, nullptr, 0, 0, 35, mts_q, 5); }},
    {"ip_addr_to_str: the address is null", // which it has no code for: the buffer stays as it is
     [] {
         std::strcpy(output, "untouched");
         return ip_addr_to_str(nullptr, output, 64) == output && std::strcmp(output, "untouched") == 0 ? -1 : 0;
     }},
    {"ip_addr_to_str: the buffer is null",
     [] { return ip_addr_to_str(&inet_addr_null, nullptr, 64) == nullptr ? -1 : 0; }},
    {"ip_addr_compare: the first address is null",
     [] { return ip_addr_compare(nullptr, &inet_addr_null) == 0 ? 0 : -1; }},
    {"ip_addr_compare: the second address is null",
     [] { return ip_addr_compare(&inet_addr_null, nullptr) == 0 ? 0 : -1; }},

    {"init_mts: the queue is null", [] { return init_mts(nullptr); }},
    {"mts_send: the destination is null",
     [] { return mts_send(mts_q, nullptr, 1917, some_bytes, 32, &some_message, 0, 0); }},
    {"mts_send: the payload is null",
     [] { return mts_send(mts_q, &line_card, 1917, nullptr, 32, &some_message, 0, 0); }},
    {"mts_send: the message is null", [] { return mts_send(mts_q, &line_card, 1917, some_bytes, 32, nullptr, 0, 0); }},
    {"mts_recv: the message is null", [] { return mts_recv(mts_q, nullptr, &options, 5); }},
    {"mts_recv: the options is null", [] { return mts_recv(mts_q, &some_message, nullptr, 5); }},
};

class NullArguments : public SimulatorTest {};

} // namespace

TEST_F(NullArguments, EachIsNamedAndFailsTheCall) {
    for (const NullArgument& each : null_arguments) {
        EXPECT_EQ(each.call(), -1) << each.complaint;
        EXPECT_EQ(take_complaint(), each.complaint);
    }
}
