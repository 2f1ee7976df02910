// The platform functions by name and number, so that counting a call costs an array access.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

// Every function of platform/services.h. The list is a macro so that number and name cannot get out of step.
#define SWITCHSIM_FUNCTIONS(X)                                                                                         \
    X(fcip_get_entity_entry)                                                                                           \
    X(fcip_get_link_entry)                                                                                             \
    X(fcip_get_tcpconn_entry)                                                                                          \
    X(fcip_snmp_get_link_errors)                                                                                       \
    X(fcip_send_recv_with_mts_q)                                                                                       \
    X(fcip_if_str)                                                                                                     \
    X(pm_cim_get_port_info)                                                                                            \
    X(pm_cmi_get_port_config)                                                                                          \
    X(pm_cim_find_interface)                                                                                           \
    X(pm_cim_get_network_address)                                                                                      \
    X(pm_get_clear_eth_stats)                                                                                          \
    X(pm_get_port_counters)                                                                                            \
    X(fcport_build_instance_pm)                                                                                        \
    X(fcport_fill_reference_pm)                                                                                        \
    X(association_class_build_instance_path)                                                                           \
    X(switch_build_instance_str)                                                                                       \
    X(switch_fill_reference)                                                                                           \
    X(switch_fill_reference_str)                                                                                       \
    X(vsan_cim_get_vsanEntry)                                                                                          \
    X(vsan_cim_get_vsan_key)                                                                                           \
    X(vsan_cim_get_vsan_admindomain_key)                                                                               \
    X(dm_cim_get_dmEntry)                                                                                              \
    X(getCSName)                                                                                                       \
    X(CSgetName)                                                                                                       \
    X(system_cim_get_switch_wwn)                                                                                       \
    X(cim_sprintf_wwn)                                                                                                 \
    X(if_index_get_slot)                                                                                               \
    X(if_index_get_port)                                                                                               \
    X(if_index_get_type)                                                                                               \
    X(hton_if_index)                                                                                                   \
    X(idxmap_node_by_if_index)                                                                                         \
    X(sprintf_if_index)                                                                                                \
    X(netcfg_print_ifname)                                                                                             \
    X(ipconf_get_intf_ip_address)                                                                                      \
    X(ipconf_get_if_inet_addrs)                                                                                        \
    X(cmi_req_resp)                                                                                                    \
    X(ip_addr_to_str)                                                                                                  \
    X(ip_addr_compare)                                                                                                 \
    X(init_mts)                                                                                                        \
    X(mts_send)                                                                                                        \
    X(mts_recv)                                                                                                        \
    X(mts_rr_token_get)                                                                                                \
    X(mts_payload_get)                                                                                                 \
    X(mts_payload_size)                                                                                                \
    X(mts_sap_get)                                                                                                     \
    X(mts_drop)                                                                                                        \
    X(mutex_lock)                                                                                                      \
    X(mutex_unlock)

namespace switchsim {

enum class Function : unsigned {
#define SWITCHSIM_NUMBER(name) name,
    SWITCHSIM_FUNCTIONS(SWITCHSIM_NUMBER)
#undef SWITCHSIM_NUMBER
};

inline constexpr auto function_names = std::to_array<std::string_view>({
#define SWITCHSIM_NAME(name) #name,
    SWITCHSIM_FUNCTIONS(SWITCHSIM_NAME)
#undef SWITCHSIM_NAME
});

inline constexpr std::size_t function_count = function_names.size();

constexpr std::size_t index_of(Function function) {
    return static_cast<std::size_t>(function);
}

constexpr std::string_view name_of(Function function) {
    return function_names[index_of(function)];
}

} // namespace switchsim
