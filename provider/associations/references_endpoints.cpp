// References of the protocol endpoints and of their remote peers.
#include "provider/associations/references.h"

#include "provider/associations/reference_ends.h"

namespace fcip {

namespace {

using enum key_use;
using enum platform_record;

// The ends that the tables name often, in the spelling of their rows.
constexpr reference_end fcip_endpoint{"ZANTO_FCIPProtocolEndpoint", ends::fcip_pe};
constexpr reference_end ip_endpoint{"ZANTO_IPProtocolEndpoint", ends::ip_pe};
constexpr reference_end tcp_endpoint{"ZANTO_TCPProtocolEndpoint", ends::tcp_pe};
constexpr reference_end tcp_end_point{"ZANTO_TCPProtocolEndPoint", ends::tcp_pe};
constexpr reference_end logical_system{nullptr, ends::logical_system};

// clang-format off
// A row is two lines: location, association class, key, record fetched, shape,
//     name of the association, first end, second end

constexpr reference_row fcip_pe_rows[] = {
    {1, "ZANTO_FCIPElementSettingData", tunnel, none, managed_setting,
        "ZANTO_FCIPElementSettingData", fcip_endpoint, {"ZANTO_FCIPSettings", ends::fcip_settings}},
    {2, "ZANTO_FCIPTCPEndpoint", tunnel, none, realize,
        "ZANTO_FCIPTCPEndpoint", fcip_endpoint, tcp_endpoint},
    {3, "ZANTO_SANFCIPEndpoint", tunnel, none, realize,
        "ZANTO_SANFCIPEndpoint", fcip_endpoint, {"ZANTO_RemoteFCIPPort", ends::fcip_remote_pe}},
    // The port's builder is given the namespace ahead of the class, here alone.
    {4, "ZANTO_FCPortProtocolEndPoint", tunnel, fc_port, realize,
        "ZANTO_FCPortProtocolEndPoint", {"ZANTO_FCPort", ends::port_namespace_first}, fcip_endpoint},
    {5, "ZANTO_FCIPPEBasedOn", tunnel, profile, group_part,
        "ZANTO_FCIPPEBasedOn", {"ZANTO_FCIPProfile", ends::profile}, fcip_endpoint},
    {6, "ZANTO_SwitchHostedFCIPAccessPoint", tunnel, none, realize,
        "ZANTO_SwitchHostedFCIPAccessPoint", logical_system, fcip_endpoint}, // the IP and TCP endpoints have the system second
};
constexpr reference_table from_fcip_pe{fcip_pe_rows, class_line::starred, 0};

constexpr reference_row ip_pe_rows[] = {
    {1, "ZANTO_IPElementSettingData", if_index, none, managed_setting,
        "ZANTO_IPElementSettingData", ip_endpoint, {"ZANTO_IPSettings", ends::ip_settings}},
    {2, "ZANTO_IPEndPointStatisticalData", if_index, none, managed_stats,
        as_passed, {"ZANTO_IPEndpointStatistics", ends::statistics}, ip_endpoint}, // the statistics put it first
    {3, "ZANTO_TCPIPEndpoint", if_index, none, realize,
        as_passed, ip_endpoint, tcp_endpoint},
    {4, "ZANTO_IPEthernetEndpoint", if_index, port_of_link, realize,
        as_passed, {"ZANTO_EthernetPort", ends::port}, ip_endpoint}, // a LAN endpoint ties other ends
    {5, "ZANTO_SwitchHostedIPAccessPoint", if_index, none, realize,
        as_passed, ip_endpoint, logical_system},
    {6, "ZANTO_SANIpEndPoint", if_index, none, realize,
        as_passed, ip_endpoint, {"ZANTO_RemoteIPServiceAccessPoint", ends::ip_remote_pe}},
};
constexpr reference_table from_ip_pe{ip_pe_rows, class_line::plain};

constexpr reference_row tcp_pe_rows[] = {
    {1, "ZANTO_TCPEndPointStatisticalData", if_index, none, managed_stats,
        "ZANTO_TCPEndPointStatisticalData", tcp_end_point, {"ZANTO_TCPEndPointStatistics", ends::statistics}},
    // Answers the misspelt name only; clients depend on it. The association bears the right one.
    {2, "ZANTO_FCIPTCPEnpoint", if_index, none, realize,
        "ZANTO_FCIPTCPEndpoint", fcip_endpoint, tcp_end_point},
    {3, "ZANTO_TCPIPEndpoint", if_index, none, realize,
        as_passed, ip_endpoint, tcp_end_point},
    {4, "ZANTO_SwitchHostedTCPAccessPoint", if_index, none, realize,
        as_passed, tcp_endpoint, logical_system},
    {5, "ZANTO_SANTCPEndpoint", if_index, none, realize,
        as_passed, tcp_endpoint, {"ZANTO_RemoteTCPPort", ends::tcp_remote_pe}},
    // All of the key, unlike the rows above, which read it up to its "_".
    {6, "ZANTO_TCPElementSettingData", if_index_only, none, managed_setting,
        as_passed, tcp_endpoint, {"ZANTO_TCPSettings", ends::tcp_settings}},
};
constexpr reference_table from_tcp_pe{tcp_pe_rows, class_line::plain};

constexpr reference_row fcip_remote_pe_rows[] = {
    {1, "ZANTO_SANFCIPEndpoint", peer_address, none, realize,
        as_passed, fcip_endpoint, {"ZANTO_RemoteFCIPPort", ends::fcip_remote_pe}},
};
constexpr reference_table from_fcip_remote_pe{fcip_remote_pe_rows};

constexpr reference_row ip_remote_pe_rows[] = {
    {1, "ZANTO_SANIPEndPoint", peer_address, none, realize,
        as_passed, ip_endpoint, {"ZANTO_RemoteIPServiceAccessPoint", ends::ip_remote_pe}},
};
constexpr reference_table from_ip_remote_pe{ip_remote_pe_rows};

constexpr reference_row tcp_remote_pe_rows[] = {
    {1, "ZANTO_SANTCPEndpoint", if_index, none, realize,
        as_passed, tcp_endpoint, {"ZANTO_RemoteTCPPort", ends::tcp_remote_pe}}, // no link: keys begin with 0
};
constexpr reference_table from_tcp_remote_pe{tcp_remote_pe_rows};

// clang-format on

} // namespace

int get_fcip_pe_references(const char* key_value, const char* association_class, const char*, const char**,
                           const CMPIResult* result, const char* name_space) {
    return return_references(from_fcip_pe, {__func__, key_value, association_class, result, name_space});
}

int get_fcip_pe_reference_names(const char* key_value, const char* association_class, const char*,
                                const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_fcip_pe, {__func__, key_value, association_class, result, name_space});
}

int get_ip_pe_references(const char* key_value, const char* association_class, const char*, const char**,
                         const CMPIResult* result, const char* name_space) {
    return return_references(from_ip_pe, {__func__, key_value, association_class, result, name_space});
}

int get_ip_pe_reference_names(const char* key_value, const char* association_class, const char*,
                              const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_ip_pe, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_pe_references(const char* key_value, const char* association_class, const char*, const char**,
                          const CMPIResult* result, const char* name_space) {
    return return_references(from_tcp_pe, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_pe_reference_names(const char* key_value, const char* association_class, const char*,
                               const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_tcp_pe, {__func__, key_value, association_class, result, name_space});
}

int get_fcip_remote_pe_references(const char* key_value, const char* association_class, const char*, const char**,
                                  const CMPIResult* result, const char* name_space) {
    return return_references(from_fcip_remote_pe, {__func__, key_value, association_class, result, name_space});
}

int get_fcip_remote_pe_reference_names(const char* key_value, const char* association_class, const char*,
                                       const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_fcip_remote_pe, {__func__, key_value, association_class, result, name_space});
}

int get_ip_remote_pe_references(const char* key_value, const char* association_class, const char*, const char**,
                                const CMPIResult* result, const char* name_space) {
    return return_references(from_ip_remote_pe, {__func__, key_value, association_class, result, name_space});
}

int get_ip_remote_pe_reference_names(const char* key_value, const char* association_class, const char*,
                                     const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_ip_remote_pe, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_remote_pe_references(const char* key_value, const char* association_class, const char*, const char**,
                                 const CMPIResult* result, const char* name_space) {
    return return_references(from_tcp_remote_pe, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_remote_pe_reference_names(const char* key_value, const char* association_class, const char*,
                                      const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_tcp_remote_pe, {__func__, key_value, association_class, result, name_space});
}

} // namespace fcip
