// Associators of LAN endpoints, Ethernet ports and Ethernet port statistics.
#include "provider/associations/associators.h"

#include "provider/associations/far_ends.h"

namespace fcip {

namespace {

using enum key_use;
namespace to = far_ends;

// clang-format off
// A row is a line: location, association class, key, class of the far end, far end

constexpr associator_row lan_endpoint_rows[] = {
    {1, "ZANTO_IPEthernetEndpoint",           ethernet_if_index, "ZANTO_IPProtocolEndPoint",   to::ip_pe},
    {2, "ZANTO_EthernetPortProtocolEndpoint", ethernet_token,    "ZANTO_EthernetPort",         to::walked_port},
    // Takes the number that the LAN endpoint's key begins with for a link's index.
    {3, "CIM_HostedAccessPoint",              if_index_only,     "ZANTO_FCIPProtocolEndPoint", to::fcip_pe},
};
constexpr associator_source from_lan_endpoint{lan_endpoint_rows};

constexpr associator_row eth_port_rows[] = {
    {1, "ZANTO_EthernetPortProtocolEndpoint", number, "ZANTO_LANEndPoint",            to::lan_endpoint},
    {2, "ZANTO_EthernetPortStatisticalData",  number, "ZANTO_EthernetPortStatistics", to::ethernet_statistics},
};
// Names answer to the statistics' own class instead of the association's.
constexpr associator_row eth_port_names[] = {
    {2, "ZANTO_EthernetPortStatistics", number, "ZANTO_EthernetPortStatistics", to::ethernet_statistics},
};
constexpr associator_source from_eth_port{eth_port_rows, eth_port_names};

constexpr associator_row eth_stat_rows[] = {
    {1, "ZANTO_EthernetPortStatisticalData", number, "ZANTO_EthernetPort", to::ethernet_port_of_statistics},
};
// Names give the port's builder the namespace ahead of the class, the others the class ahead of it.
constexpr associator_row eth_stat_names[] = {
    {1, "ZANTO_EthernetPortStatisticalData", number, "ZANTO_EthernetPort", to::ethernet_port_namespace_first},
};
constexpr associator_source from_eth_stat{eth_stat_rows, eth_stat_names};

// clang-format on

} // namespace

int get_lan_endpoint_associators(const char* key_value, const char* association_class, const char*, const char*,
                                 const char*, const char** properties, const CMPIResult* result,
                                 const char* name_space) {
    return return_associators(from_lan_endpoint,
                              {__func__, key_value, association_class, result, name_space, properties});
}

int get_lan_endpoint_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                      const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_lan_endpoint, {__func__, key_value, association_class, result, name_space});
}

int get_eth_port_associators(const char* key_value, const char* association_class, const char*, const char*,
                             const char*, const char** properties, const CMPIResult* result, const char* name_space) {
    return return_associators(from_eth_port, {__func__, key_value, association_class, result, name_space, properties});
}

int get_eth_port_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                  const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_eth_port, {__func__, key_value, association_class, result, name_space});
}

int get_eth_stat_associators(const char* key_value, const char* association_class, const char*, const char*,
                             const char*, const char** properties, const CMPIResult* result, const char* name_space) {
    return return_associators(from_eth_stat, {__func__, key_value, association_class, result, name_space, properties});
}

int get_eth_stat_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                  const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_eth_stat, {__func__, key_value, association_class, result, name_space});
}

} // namespace fcip
