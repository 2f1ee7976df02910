// Associators of the protocol endpoints and of their remote peers.
#include "provider/associations/associators.h"

#include "provider/associations/far_ends.h"

namespace fcip {

namespace {

using enum key_use;
namespace to = far_ends;

// clang-format off
// A row is a line: location, association class, key, class of the far end, far end

constexpr associator_row fcip_pe_rows[] = {
    {1, "ZANTO_FCIPElementSettingData",      tunnel, "ZANTO_FCIPSettings",        to::fcip_settings},
    {2, "ZANTO_FCIPTCPEndpoint",             tunnel, "ZANTO_TCPProtocolEndPoint", to::tcp_pe},
    {3, "ZANTO_SANFCIPEndpoint",             tunnel, "ZANTO_RemoteFCIPPort",      to::fcip_remote_pe},
    {4, "ZANTO_FCPortProtocolEndPoint",      tunnel, "ZANTO_FCPort",              to::fc_port},
    {5, "ZANTO_FCIPPEBasedOn",               tunnel, "ZANTO_FCIPProfile",         to::profile},
    {6, "ZANTO_SwitchHostedFCIPAccessPoint", tunnel, own_class,                   to::logical_system},
};
constexpr associator_source from_fcip_pe{fcip_pe_rows};

constexpr associator_row ip_pe_rows[] = {
    {1, "ZANTO_IPElementSettingData",      if_index, "ZANTO_IPSettings",                 to::ip_settings},
    {2, "ZANTO_IPEndPointStatisticalData", if_index, "ZANTO_IPEndPointStatistics",       to::ip_statistics},
    {3, "ZANTO_TCPIPEndpoint",             if_index, "ZANTO_TCPProtocolEndPoint",        to::tcp_pe},
    {4, "ZANTO_IPEthernetEndpoint",        if_index, "ZANTO_EthernetPort",               to::ethernet_port_of_link},
    {5, "ZANTO_SwitchHostedIPAccessPoint", if_index, own_class,                          to::logical_system},
    {6, "ZANTO_SANIpEndPoint",             if_index, "ZANTO_RemoteIPServiceAccessPoint", to::ip_remote_pe},
};
// Names answer two paths to 1, to 2 only if the link errors can be read, the FCIP endpoint instead of the system to 5,
// and the system to whatever is not served.
constexpr associator_row ip_pe_names[] = {
    {1, "ZANTO_IPElementSettingData",      left_to_end, "ZANTO_IPSettings",                 to::ip_settings_and_system},
    {2, "ZANTO_IPEndPointStatisticalData", if_index,    "ZANTO_IPEndPointStatistics",       to::statistics_if_counted},
    {5, "ZANTO_SwitchHostedIPAccessPoint", if_index,    "ZANTO_FCIPProtocolEndPoint",       to::fcip_pe},
    {6, "ZANTO_SANIPEndPoint",             if_index,    "ZANTO_RemoteIPServiceAccessPoint", to::ip_remote_pe},
    {7, any_other,                         if_index,    own_class,                          to::logical_system},
};
constexpr associator_source from_ip_pe{ip_pe_rows, ip_pe_names, true};

// The statistics alone read the key up to its "_", the others all of it; references have it the other way round.
constexpr associator_row tcp_pe_rows[] = {
    {1, "ZANTO_TCPEndPointStatisticalData", if_index,      "ZANTO_TCPStatisticalData",   to::tcp_statistics},
    {2, "ZANTO_FCIPTCPEndpoint",            if_index_only, "ZANTO_FCIPProtocolEndPoint", to::fcip_pe},
    {3, "ZANTO_TCPIPEndpoint",              if_index_only, "ZANTO_IPProtocolEndPoint",   to::ip_pe},
    {4, "ZANTO_SwitchHostedTCPAccessPoint", if_index_only, own_class,                    to::logical_system},
    {5, "ZANTO_SANTCPEndpoint",             if_index_only, "ZANTO_RemoteTCPPort",        to::tcp_remote_pe},
    {6, "ZANTO_TCPElementSettingData",      if_index_only, "ZANTO_TCPSettings",          to::tcp_settings_read_again},
};
// Names answer the endpoint's statistics to 1, another class than the instance has, and only if the link errors can be
// read; the physical switch instead of the logical system to 4; and nothing to 6.
constexpr associator_row tcp_pe_names[] = {
    {1, "ZANTO_TCPEndPointStatisticalData", if_index,      "ZANTO_TCPEndPointStatistics",  to::statistics_if_counted},
    {4, "ZANTO_SwitchHostedTCPAccessPoint", if_index_only, "ZANTO_PhysicalComputerSystem", to::physical_system},
    {6, not_served,                         if_index_only, own_class,                      nullptr},
};
constexpr associator_source from_tcp_pe{tcp_pe_rows, tcp_pe_names};

constexpr associator_row fcip_remote_pe_rows[] = {
    {1, "ZANTO_SANFCIPEndpoint", peer_address, "ZANTO_FCIPProtocolEndPoint", to::fcip_pe},
};
constexpr associator_source from_fcip_remote_pe{fcip_remote_pe_rows};

constexpr associator_row ip_remote_pe_rows[] = {
    {1, "ZANTO_SANIPEndpoint", peer_address, "ZANTO_IPProtocolEndPoint", to::ip_pe},
};
constexpr associator_source from_ip_remote_pe{ip_remote_pe_rows};

constexpr associator_row tcp_remote_pe_rows[] = {
    {1, "ZANTO_SANTCPEndpoint", peer_if_index, "ZANTO_TCPProtocolEndPoint", to::tcp_pe},
};
constexpr associator_source from_tcp_remote_pe{tcp_remote_pe_rows};

// clang-format on

} // namespace

int get_fcip_pe_associators(const char* key_value, const char* association_class, const char*, const char*, const char*,
                            const char** properties, const CMPIResult* result, const char* name_space) {
    return return_associators(from_fcip_pe, {__func__, key_value, association_class, result, name_space, properties});
}

int get_fcip_pe_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                 const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_fcip_pe, {__func__, key_value, association_class, result, name_space});
}

int get_ip_pe_associators(const char* key_value, const char* association_class, const char*, const char*, const char*,
                          const char** properties, const CMPIResult* result, const char* name_space) {
    return return_associators(from_ip_pe, {__func__, key_value, association_class, result, name_space, properties});
}

int get_ip_pe_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                               const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_ip_pe, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_pe_associators(const char* key_value, const char* association_class, const char*, const char*, const char*,
                           const char** properties, const CMPIResult* result, const char* name_space) {
    return return_associators(from_tcp_pe, {__func__, key_value, association_class, result, name_space, properties});
}

int get_tcp_pe_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_tcp_pe, {__func__, key_value, association_class, result, name_space});
}

int get_fcip_remote_pe_associators(const char* key_value, const char* association_class, const char*, const char*,
                                   const char*, const char** properties, const CMPIResult* result,
                                   const char* name_space) {
    return return_associators(from_fcip_remote_pe,
                              {__func__, key_value, association_class, result, name_space, properties});
}

int get_fcip_remote_pe_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                        const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_fcip_remote_pe, {__func__, key_value, association_class, result, name_space});
}

int get_ip_remote_pe_associators(const char* key_value, const char* association_class, const char*, const char*,
                                 const char*, const char** properties, const CMPIResult* result,
                                 const char* name_space) {
    return return_associators(from_ip_remote_pe,
                              {__func__, key_value, association_class, result, name_space, properties});
}

int get_ip_remote_pe_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                      const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_ip_remote_pe, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_remote_pe_associators(const char* key_value, const char* association_class, const char*, const char*,
                                  const char*, const char** properties, const CMPIResult* result,
                                  const char* name_space) {
    return return_associators(from_tcp_remote_pe,
                              {__func__, key_value, association_class, result, name_space, properties});
}

int get_tcp_remote_pe_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                       const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_tcp_remote_pe, {__func__, key_value, association_class, result, name_space});
}

} // namespace fcip
