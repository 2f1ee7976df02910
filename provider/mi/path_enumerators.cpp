#include "provider/mi/path_enumerators.h"

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
    {"ZANTO_FCIPProtocolEndPOint", fcip_pe},
    {"ZANTO_RemoteFCIPPort", fcip_remote_pe},
};

constexpr class_row<link_class> ip_classes[] = {
    {"ZANTO_IPProtocolEndPoint", ip_pe},        {"ZANTO_RemoteIPServiceAccessPoint", ip_remote_pe},
    {"ZANTO_RemoteTCPPort", remote_service_ap}, {"ZANTO_TCPProtocolEndPoint", tcp_pe},
    {"ZANTO_FCIPSettings", fcip_settings},      {"ZANTO_IPSettings", ip_settings},
    {"ZANTO_TCPSettings", ip_settings}, // made by the IP settings' builder; only the traces tell
};

constexpr class_row<link_class> statistics_classes[] = {
    {"ZANTO_IPEndPointStatistics", ip_statistics},
    {"ZANTO_TCPEndPointStatistics", tcp_statistics},
    {"ZANTO_TCPStatisticalData", tcp_statistical_data},
};

} // namespace

int get_all_fcip_pe_references(const char* class_name, const CMPIResult* result, const char* name_space) {
    trace_entering(__func__);
    const auto* row = row_for(fcip_classes, class_name);
    walk_links(mts_q, [&](const FcipLinkEntry& link) {
        if (row != nullptr)
            return_path(result, row->serves.fill(class_name, name_space, &link));
        return walk::go_on;
    });
    return 0;
}

int get_all_ip_pe_references(const char* class_name, const CMPIResult* result, const char* name_space) {
    const char* const self = __func__;
    trace_entering(self);
    const auto* row = row_for(ip_classes, class_name);
    const bool left_over = walk_links(mts_q, [&](const FcipLinkEntry& link) {
        trace_location(self, 755);
        // A class without builder gets a null path per row.
        return_path(result, row == nullptr ? nullptr : row->serves.fill(class_name, name_space, &link));
        return walk::go_on;
    });
    if (left_over)
        trace_location(self, 750);
    return 0;
}

int get_all_statistic_references(const char* class_name, const CMPIResult* result, const char* name_space) {
    const char* const self = __func__;
    trace_entering(self);
    const auto* row = row_for(statistics_classes, class_name);
    walk_links(mts_q, [&](const FcipLinkEntry& link) {
        trace_location(self, 699);
        // A class without builder gets a null path per row.
        return_path(result, row == nullptr ? nullptr : row->serves.fill(class_name, name_space, &link));
        return walk::go_on;
    });
    trace_exiting(self);
    return 0;
}

int get_all_fcip_profile_references(const char* class_name, const CMPIResult* result, const char* name_space) {
    trace_entering(__func__);
    walk_entities(mts_q, [&](const FcipEntityEntry& profile) {
        return_path(result, fcip_profile_fill_reference(class_name, name_space, &profile));
        return walk::go_on;
    });
    trace_exiting(__func__);
    return 0;
}

int get_all_eth_stat_references(const char* class_name, const CMPIResult* result, const char* name_space) {
    walk_ports([&](const PmPortInfo& port) {
        trace("if_index ", as_signed(port_if_index(port)), " \n");
        if (may_have_statistics(type_of(port_if_index(port))))
            return_path(result, eth_statistics_fill_reference(class_name, name_space, &port));
        return walk::go_on;
    });
    return 0;
}

int get_all_lan_endpoint_references(const char* class_name, const CMPIResult* result, const char* name_space) {
    walk_ports([&](const PmPortInfo& port) {
        trace("if_index ", as_signed(port_if_index(port)), " \n");
        if (!type_of(port_if_index(port)).is(interface_kind_ethernet))
            return walk::stop;
        return_path(result, lan_endpoint_fill_reference(class_name, name_space, port_if_index(port)));
        return walk::go_on;
    });
    return 0;
}

int get_all_eth_stat_data_references(const char* class_name, const CMPIResult* result, const char* name_space) {
    walk_ports([&](PmPortInfo& port) { // of any type: the instances' walk is stricter
        return_path(result, fcport_fill_reference_pm(name_space, class_name, &port, _broker));
        return walk::go_on;
    });
    return 0;
}

} // namespace fcip
