// Every platform function in one table, each called the right way over the small switch, so that what holds for all
// of them (counting, lock, faults) is tested on all of them.
#pragma once

#include "tests/simulator/simulator_test.h"

#include <optional>

/// What a call answered.
struct Outcome {
    int result = 0;                                    ///< of functions that return a pointer: 0 if it is set, else -1
    std::optional<std::vector<std::uint8_t>> record{}; ///< the heap record's bytes, if there was one
};

/// How a function takes faults.
enum class Takes {
    nothing,          ///< it cannot fail
    faults,           ///< it fails with the code
    faults_as_null,   ///< it returns null instead
    faults_on_record, ///< and has a heap record besides
};

struct PlatformCall {
    const char* name;
    Takes takes;
    std::size_t record_size; ///< of the heap record; 0 = none
    Outcome (*call)();
};

/// Copies a record's bytes, all `size` of them, and frees it.
inline std::optional<std::vector<std::uint8_t>> bytes_of(void* record, std::size_t size) {
    const Owned<void> owned(record);
    if (!record)
        return std::nullopt;
    const auto* bytes = static_cast<const std::uint8_t*>(record);
    return std::vector<std::uint8_t>(bytes, bytes + size);
}

// What the calls write to, between them.
inline char text_buffer[256];
inline std::uint8_t entry[4096];
inline std::uint8_t byte;
inline mts_msg message;

inline std::vector<PlatformCall> fcip_service_calls() {
    static const std::uint32_t link_key[2] = {1, 0};
    return {
        {"fcip_get_entity_entry", Takes::faults_on_record, sizeof(FcipEntityEntry),
         [] {
             FcipEntityEntry* row = nullptr;
             const int result = fcip_get_entity_entry(mts_q, platform_exact, 1, &row, 5);
             return Outcome{result, bytes_of(row, sizeof *row)};
         }},
        {"fcip_get_link_entry", Takes::faults_on_record, sizeof(FcipLinkEntry),
         [] {
             FcipLinkEntry* row = nullptr;
             const int result = fcip_get_link_entry(mts_q, platform_exact, link_key, &row, 30, 1);
             return Outcome{result, bytes_of(row, sizeof *row)};
         }},
        {"fcip_get_tcpconn_entry", Takes::faults_on_record, sizeof(FcipTcpConnEntry),
         [] {
             const FcipTcpConnKey key{1, 0, 3225, 3225};
             FcipTcpConnEntry* row = nullptr;
             const int result = fcip_get_tcpconn_entry(mts_q, platform_exact, &key, &row, 15);
             return Outcome{result, bytes_of(row, sizeof *row)};
         }},
        {"fcip_snmp_get_link_errors", Takes::faults_on_record, sizeof(FcipLinkErrors),
         [] {
             FcipLinkErrors* record = nullptr;
             const int result = fcip_snmp_get_link_errors(mts_q, platform_exact, link_key, &record, 10);
             return Outcome{result, bytes_of(record, sizeof *record)};
         }},
        {"fcip_send_recv_with_mts_q", Takes::faults_on_record, 8,
         [] {
             const mts_addr destination{0xFE000000, 60};
             const std::uint32_t id = 1;
             void* reply = nullptr;
             std::uint32_t length = 0;
             const int result =
                 fcip_send_recv_with_mts_q(8946, &destination, &id, sizeof id, mts_q, &reply, &length, text_buffer);
             return Outcome{result, bytes_of(reply, length)};
         }},
        {"fcip_if_str", Takes::nothing, 0,
         [] { return Outcome{fcip_if_str(gigabit, text_buffer) == text_buffer ? 0 : -1}; }},
    };
}

inline std::vector<PlatformCall> port_manager_calls() {
    static const std::uint32_t port_key[2] = {gigabit, gigabit};
    return {
        {"pm_cim_get_port_info", Takes::faults_on_record, sizeof(PmPortInfo),
         [] {
             PmPortInfo* record = nullptr;
             const int result = pm_cim_get_port_info(&record, platform_exact, gigabit, mts_q);
             return Outcome{result, bytes_of(record, sizeof *record)};
         }},
        {"pm_cmi_get_port_config", Takes::faults_on_record, sizeof(PmPortConfig),
         [] {
             std::uint32_t aux = 0;
             PmPortConfig* record = nullptr;
             const int result = pm_cmi_get_port_config(mts_q, 1, 1, port_key, &aux, &record, 4);
             return Outcome{result, bytes_of(record, sizeof *record)};
         }},
        {"pm_cim_find_interface", Takes::faults_as_null, 0,
         [] {
             const Owned<PmPortInfo> record(pm_cim_find_interface(platform_exact, fcip1, mts_q));
             return Outcome{record ? 0 : -1};
         }},
        {"pm_cim_get_network_address", Takes::faults, 0,
         [] {
             PmPortInfo port{};
             std::memcpy(port.bytes, &gigabit, sizeof gigabit);
             return Outcome{pm_cim_get_network_address(text_buffer, &port, 2)};
         }},
        {"pm_get_clear_eth_stats", Takes::faults, 0,
         [] { return Outcome{pm_get_clear_eth_stats(mts_q, gigabit, gigabit, 1, entry)}; }},
        {"pm_get_port_counters", Takes::faults_on_record, sizeof(PmPortCounters),
         [] {
             PmPortCounters* record = nullptr;
             const int result = pm_get_port_counters(mts_q, gigabit, 0, 6, &record);
             return Outcome{result, bytes_of(record, sizeof *record)};
         }},
    };
}

inline std::vector<PlatformCall> vsan_and_identity_calls() {
    return {
        {"vsan_cim_get_vsanEntry", Takes::faults, 0,
         [] {
             const std::uint32_t id = 1;
             std::memcpy(entry, &id, sizeof id);
             return Outcome{vsan_cim_get_vsanEntry(mts_q, platform_exact, entry)};
         }},
        {"vsan_cim_get_vsan_key", Takes::faults, 0,
         [] { return Outcome{vsan_cim_get_vsan_key(text_buffer, entry, entry)}; }},
        {"dm_cim_get_dmEntry", Takes::faults, 0, [] { return Outcome{dm_cim_get_dmEntry(mts_q, 1, 1, entry)}; }},
        {"vsan_cim_get_vsan_admindomain_key", Takes::faults, 0,
         [] { return Outcome{vsan_cim_get_vsan_admindomain_key(text_buffer, entry)}; }},
        {"getCSName", Takes::faults_as_null, 0, [] { return Outcome{getCSName() ? 0 : -1}; }},
        {"CSgetName", Takes::faults_as_null, 0, [] { return Outcome{CSgetName(mts_q) ? 0 : -1}; }},
        {"system_cim_get_switch_wwn", Takes::faults, 0,
         [] { return Outcome{system_cim_get_switch_wwn(mts_q, entry)}; }},
        {"cim_sprintf_wwn", Takes::faults, 0, [] { return Outcome{cim_sprintf_wwn(text_buffer, entry)}; }},
    };
}

inline std::vector<PlatformCall> interface_calls() {
    return {
        {"if_index_get_slot", Takes::faults, 0, [] { return Outcome{if_index_get_slot(gigabit, &byte)}; }},
        {"if_index_get_port", Takes::faults, 0, [] { return Outcome{if_index_get_port(gigabit, &byte)}; }},
        {"if_index_get_type", Takes::faults, 0, [] { return Outcome{if_index_get_type(gigabit, entry)}; }},
        {"hton_if_index", Takes::nothing, 0, [] { return Outcome{hton_if_index(0) == 0 ? 0 : -1}; }},
        {"idxmap_node_by_if_index", Takes::faults, 0, [] { return Outcome{idxmap_node_by_if_index(gigabit, entry)}; }},
        {"sprintf_if_index", Takes::faults, 0, [] { return Outcome{sprintf_if_index(text_buffer, gigabit)}; }},
        {"netcfg_print_ifname", Takes::faults, 0, [] { return Outcome{netcfg_print_ifname(text_buffer, gigabit)}; }},
        {"ipconf_get_intf_ip_address", Takes::faults_on_record, 8,
         [] {
             void* record = nullptr;
             const int result = ipconf_get_intf_ip_address(mts_q, gigabit, &record);
             return Outcome{result, bytes_of(record, 8)};
         }},
        {"ipconf_get_if_inet_addrs", Takes::faults_on_record, 36,
         [] {
             void* record = nullptr;
             const int result = ipconf_get_if_inet_addrs(mts_q, gigabit, &record);
             return Outcome{result, bytes_of(record, 36)};
         }},
        {"cmi_req_resp", Takes::faults_on_record, 8,
         [] {
             void* reply = nullptr;
             std::uint32_t length = 8;
             const int result = cmi_req_resp(873, 1, 0, &reply, &length, 0, 0, 35, mts_q, 5);
             return Outcome{result, bytes_of(reply, length)};
         }},
        {"ip_addr_to_str", Takes::nothing, 0,
         [] {
             return Outcome{ip_addr_to_str(&inet_addr_null, text_buffer, sizeof text_buffer) == text_buffer ? 0 : -1};
         }},
        {"ip_addr_compare", Takes::nothing, 0,
         [] { return Outcome{ip_addr_compare(&inet_addr_null, &inet_addr_null)}; }},
    };
}

inline std::vector<PlatformCall> ipc_calls() {
    return {
        {"init_mts", Takes::faults, 0, [] { return Outcome{init_mts(&mts_q)}; }},
        {"mts_send", Takes::faults, 0,
         [] {
             const mts_addr destination{switchsim::node_of_slot(1), 943};
             std::uint8_t request[32] = {0, 0, 0, 0, 0xFF, 0xFF};
             const std::uint8_t if_index[4] = {0x83, 0x01, 0x00, 0x01};
             std::memcpy(request + 24, if_index, sizeof if_index);
             message = {};
             return Outcome{mts_send(mts_q, &destination, 1917, request, sizeof request, &message, 0, 0)};
         }},
        {"mts_rr_token_get", Takes::nothing, 0, [] { return Outcome{mts_rr_token_get(&message) != 0 ? 0 : -1}; }},
        {"mts_payload_get", Takes::nothing, 0, [] { return Outcome{mts_payload_get(&message) ? 0 : -1}; }},
        {"mts_payload_size", Takes::nothing, 0, [] { return Outcome{mts_payload_size(&message) == 32 ? 0 : -1}; }},
        {"mts_drop", Takes::nothing, 0,
         [] {
             mts_drop(mts_q, &message);
             return Outcome{};
         }},
        {"mts_recv", Takes::faults, 0,
         [] {
             const mts_recv_options options{{1, 0, 5, 0, 0, 0, 0, 0}};
             mts_msg received{};
             const int result = mts_recv(mts_q, &received, &options, 5);
             mts_drop(mts_q, &received);
             return Outcome{result};
         }},
        {"mts_sap_get", Takes::nothing, 0, [] { return Outcome{mts_sap_get(mts_q) != 0 ? 0 : -1}; }},
    };
}

/// All functions but those that need a broker and the lock functions.
inline std::vector<PlatformCall> platform_calls() {
    std::vector<PlatformCall> all;
    for (auto* const some :
         {fcip_service_calls, port_manager_calls, vsan_and_identity_calls, interface_calls, ipc_calls}) {
        for (const PlatformCall& one : some())
            all.push_back(one);
    }
    return all;
}
