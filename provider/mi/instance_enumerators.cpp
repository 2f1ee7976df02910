#include "provider/mi/instance_enumerators.h"

#include "provider/access/fcip_tables.h"
#include "provider/access/ports.h"
#include "provider/classes/fcip/fcip_profile.h"
#include "provider/classes/link_classes.h"
#include "provider/classes/net/ethernet_port_statistics.h"
#include "provider/classes/net/lan_endpoint.h"
#include "provider/common/class_row.h"
#include "provider/common/results.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"

namespace fcip {

namespace {

using namespace classes;

constexpr class_row<link_class> fcip_classes[] = {
    {"ZANTO_FCIPProtocolEndPoint", fcip_pe},
    {"ZANTO_RemoteFCIPPort", fcip_remote_pe},
};

constexpr class_row<link_class> ip_classes[] = {
    {"ZANTO_IPProtocolEndPoint", ip_pe},        {"ZANTO_RemoteIPServiceAccessPoint", ip_remote_pe},
    {"ZANTO_RemoteTCPPort", remote_service_ap}, // the name says otherwise; the pair is right
    {"ZANTO_TCPProtocolEndPoint", tcp_pe},      {"ZANTO_FCIPSettings", fcip_settings},
    {"ZANTO_IPSettings", ip_settings},          {"ZANTO_TCPSettings", tcp_settings},
};

constexpr class_row<link_class> statistics_classes[] = {
    {"ZANTO_IPEndPointStatistics", ip_statistics},
    {"ZANTO_TCPEndPointStatistics", tcp_statistics},
    {"ZANTO_TCPStatisticalData", tcp_statistical_data},
};

} // namespace

int get_all_fcip_pe_instances(const char* class_name, const CMPIResult* result, const char** properties,
                              const char* name_space) {
    trace_entering(__func__);
    const auto* row = row_for(fcip_classes, class_name);
    walk_links(mts_q, [&](const FcipLinkEntry& link) {
        if (row != nullptr)
            return_instance(result, row->serves.build(class_name, name_space, &link, properties));
        return walk::go_on;
    });
    return 0;
}

int get_all_ip_pe_instances(const char* class_name, const CMPIResult* result, const char** properties,
                            const char* name_space) {
    const char* const self = __func__;
    trace_entering(self);
    const auto* row = row_for(ip_classes, class_name);
    const bool left_over = walk_links(mts_q, [&](const FcipLinkEntry& link) {
        trace_location(self, 1856);
        // A class without builder gets a null instance per row.
        return_instance(result,
                        row == nullptr ? nullptr : row->serves.build(class_name, name_space, &link, properties));
        return walk::go_on;
    });
    if (left_over)
        trace_location(self, 1851);
    return 0;
}

int get_all_statistics(const char* class_name, const CMPIResult* result, const char** properties,
                       const char* name_space) {
    const char* const self = __func__;
    trace_entering(self);
    const auto* row = row_for(statistics_classes, class_name);
    const bool left_over = walk_links(mts_q, [&](const FcipLinkEntry& link) {
        // A class without builder gets a null instance per row.
        return_instance(result,
                        row == nullptr ? nullptr : row->serves.build(class_name, name_space, &link, properties));
        trace_location(self, 1817);
        return walk::go_on;
    });
    trace_location(self, 1785);
    if (left_over)
        trace_location(self, 1789);
    trace_location(self, 1791);
    trace_exiting(self);
    return 0;
}

int get_all_fcip_profiles(const char* class_name, const CMPIResult* result, const char** properties,
                          const char* name_space) {
    const char* const self = __func__;
    trace_entering(self);
    trace_location(self, 2029); // before each read of the table
    const bool left_over = walk_entities(mts_q, [&](const FcipEntityEntry& profile) {
        trace_location(self, 2044);
        return_instance(result, fcip_profile_build_instance(class_name, name_space, &profile, properties));
        trace_location(self, 2029);
        return walk::go_on;
    });
    trace_location(self, 2035);
    if (left_over)
        trace_location(self, 2038);
    trace_exiting(self);
    return 0;
}

int get_all_eth_stat_instances(const char* class_name, const CMPIResult* result, const char** properties,
                               const char* name_space) {
    walk_ports([&](const PmPortInfo& port) {
        trace("if_index ", as_signed(port_if_index(port)), " \n");
        if (may_have_statistics(type_of(port_if_index(port))))
            return_instance(result, eth_statistics_build_instance(class_name, name_space, &port, properties));
        return walk::go_on; // other ports are skipped; the walks below end there
    });
    return 0;
}

int get_all_lan_endpoint_instances(const char* class_name, const CMPIResult* result, const char** properties,
                                   const char* name_space) {
    walk_ports([&](const PmPortInfo& port) {
        trace("if_index ", as_signed(port_if_index(port)), " \n");
        if (!type_of(port_if_index(port)).is(interface_kind_ethernet))
            return walk::stop;
        return_instance(result, lan_endpoint_build_instance(class_name, name_space, port_if_index(port), properties));
        return walk::go_on;
    });
    return 0;
}

int get_all_eth_stat_data_instances(const char* class_name, const CMPIResult* result, const char** properties,
                                    const char* name_space) {
    trace("\n Entering get_all_eth_stat_data_instances \n ");
    walk_ports([&](PmPortInfo& port) {
        trace("tol:if_index ", as_signed(port_if_index(port)), " \n");
        const interface_type type = type_of(port_if_index(port));
        if (!type.is(interface_kind_ethernet)) {
            trace("\ntol : not a ethernet port\n ");
            trace("\ntol : if_type :", type.kind);
            return walk::stop;
        }
        trace(" Call to fcport_build_instance_pm ");
        return_instance(result, fcport_build_instance_pm(name_space, class_name, &port, properties, _broker));
        return walk::go_on;
    });
    return 0;
}

} // namespace fcip
