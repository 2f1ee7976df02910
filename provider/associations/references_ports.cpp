// References of LAN endpoints, Ethernet ports and Ethernet port statistics.
#include "provider/associations/references.h"

#include "provider/associations/reference_ends.h"

namespace fcip {

namespace {

using enum key_use;
using enum platform_record;

constexpr reference_end ethernet_port{"ZANTO_EthernetPort", ends::port};
constexpr reference_end lan_endpoint{"ZANTO_LANEndpoint", ends::lan_endpoint};
constexpr reference_end statistics{"ZANTO_EthernetPortStatistics", ends::ethernet_statistics};

// clang-format off
// A row is two lines: location, association class, key, record fetched, shape,
//     name of the association, first end, second end

constexpr reference_row lan_endpoint_rows[] = {
    {1, "ZANTO_IPEthernetEndpoint", ethernet_if_index, none, realize,
        as_passed, {"ZANTO_IPProtocolEndPoint", ends::ip_pe}, lan_endpoint},
    {2, "ZANTO_EthernetPortProtocolEndpoint", ethernet_token, port_of_if_index, realize,
        as_passed, ethernet_port, lan_endpoint},
    // Takes the number that the LAN endpoint's key begins with for a link's index.
    {3, "CIM_HostedAccessPoint", if_index_only, none, realize,
        "CIM_HostedAccessPoint", {"ZANTO_FCIPProtocolEndPoint", ends::fcip_pe}, lan_endpoint},
};
constexpr reference_table from_lan_endpoint{lan_endpoint_rows, class_line::plain};

// The port's key is read as a link's index: the port of the answer is the one that carries that link.
constexpr reference_row eth_port_rows[] = {
    // Bears another association's name; clients depend on it.
    {1, "ZANTO_EthernetPortProtocolEndpoint", if_index, port_of_link, realize,
        "ZANTO_IPElementSettingData", ethernet_port, lan_endpoint},
    {2, "ZANTO_EthernetPortStatisticalData", if_index, port_of_link, managed_stats,
        "ZANTO_EthernetPortStatisticalData", ethernet_port, statistics},
};
constexpr reference_table from_eth_port{eth_port_rows, class_line::plain};

constexpr reference_row eth_stat_rows[] = {
    {1, "ZANTO_EthernetPortStatisticalData", number, port_of_if_index, managed_stats,
        "ZANTO_EthernetPortStatisticalData", ethernet_port, statistics},
};
constexpr reference_table from_eth_stat{eth_stat_rows};

// clang-format on

} // namespace

int get_lan_endpoint_references(const char* key_value, const char* association_class, const char*, const char**,
                                const CMPIResult* result, const char* name_space) {
    return return_references(from_lan_endpoint, {__func__, key_value, association_class, result, name_space});
}

int get_lan_endpoint_reference_names(const char* key_value, const char* association_class, const char*,
                                     const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_lan_endpoint, {__func__, key_value, association_class, result, name_space});
}

int get_eth_port_references(const char* key_value, const char* association_class, const char*, const char**,
                            const CMPIResult* result, const char* name_space) {
    return return_references(from_eth_port, {__func__, key_value, association_class, result, name_space});
}

int get_eth_port_reference_names(const char* key_value, const char* association_class, const char*,
                                 const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_eth_port, {__func__, key_value, association_class, result, name_space});
}

int get_eth_stat_references(const char* key_value, const char* association_class, const char*, const char**,
                            const CMPIResult* result, const char* name_space) {
    return return_references(from_eth_stat, {__func__, key_value, association_class, result, name_space});
}

int get_eth_stat_reference_names(const char* key_value, const char* association_class, const char*,
                                 const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_eth_stat, {__func__, key_value, association_class, result, name_space});
}

} // namespace fcip
