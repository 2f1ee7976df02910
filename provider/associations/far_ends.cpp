#include "provider/associations/far_ends.h"

#include "provider/access/ports.h"
#include "provider/access/systems.h"
#include "provider/classes/fcip/fcip_profile.h"
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/classes/fcip/fcip_settings.h"
#include "provider/classes/fcip/ip_settings.h"
#include "provider/classes/fcip/remote_fcip_port.h"
#include "provider/classes/fcip/tcp_settings.h"
#include "provider/classes/net/ethernet_port_statistics.h"
#include "provider/classes/net/ip_protocol_endpoint.h"
#include "provider/classes/net/ip_statistics.h"
#include "provider/classes/net/lan_endpoint.h"
#include "provider/classes/net/remote_ip_service_access_point.h"
#include "provider/classes/net/remote_tcp_port.h"
#include "provider/classes/net/statistics_path.h"
#include "provider/classes/net/tcp_protocol_endpoint.h"
#include "provider/classes/net/tcp_statistics.h"
#include "provider/common/results.h"
#include "provider/common/trace.h"

namespace fcip::far_ends {

namespace {

/// Returns what a link row stands for: its instance or its path, as the request wants it.
void return_made(const associator_request& request, const char* class_name, const FcipLinkEntry& link,
                 link_instance_builder* build, link_path_builder* fill) {
    if (request.wants_paths)
        return_path(request.result, fill(class_name, request.name_space, &link));
    else
        return_instance(request.result, build(class_name, request.name_space, &link, request.properties));
}

/// Returns a port as the platform builds it.
void return_port(const associator_request& request, const char* class_name, PmPortInfo* port) {
    if (request.wants_paths)
        return_path(request.result, fcport_fill_reference_pm(class_name, request.name_space, port, _broker));
    else
        return_instance(request.result,
                        fcport_build_instance_pm(class_name, request.name_space, port, request.properties, _broker));
}

/// Reads the link's error counters and lets go of them. A failed read that left a record is traced.
bool link_errors_can_be_read(const associator_request& request, const associator_row& row, const FcipLinkEntry& link) {
    const fetched<FcipLinkErrors> errors = fetch_link_errors(link);
    if (errors.status != 0 && errors.row != nullptr)
        trace_location(request.member, row.location);
    return static_cast<bool>(errors);
}

} // namespace

void fcip_pe(const associator_request& request, const associator_row& row, const traversal_source& source) {
    return_made(request, row.class_name, source.link, fcip_pe_build_instance, fcip_pe_fill_reference);
}

void ip_pe(const associator_request& request, const associator_row& row, const traversal_source& source) {
    return_made(request, row.class_name, source.link, ip_pe_build_instance, ip_pe_fill_reference);
}

void tcp_pe(const associator_request& request, const associator_row& row, const traversal_source& source) {
    return_made(request, row.class_name, source.link, tcp_pe_build_instance, tcp_pe_fill_reference);
}

void fcip_remote_pe(const associator_request& request, const associator_row& row, const traversal_source& source) {
    return_made(request, row.class_name, source.link, fcip_remote_pe_build_instance, fcip_remote_pe_fill_reference);
}

void ip_remote_pe(const associator_request& request, const associator_row& row, const traversal_source& source) {
    return_made(request, row.class_name, source.link, ip_remote_pe_build_instance, ip_remote_pe_fill_reference);
}

void tcp_remote_pe(const associator_request& request, const associator_row& row, const traversal_source& source) {
    return_made(request, row.class_name, source.link, tcp_remote_pe_build_instance, tcp_remote_pe_fill_reference);
}

void fcip_settings(const associator_request& request, const associator_row& row, const traversal_source& source) {
    return_made(request, row.class_name, source.link, fcip_settings_build_instance, fcip_settings_fill_reference);
}

void ip_settings(const associator_request& request, const associator_row& row, const traversal_source& source) {
    return_made(request, row.class_name, source.link, ip_settings_build_instance, ip_settings_fill_reference);
}

void tcp_settings_read_again(const associator_request& request, const associator_row& row,
                             const traversal_source& source) {
    if (const auto link = fetch_link(mts_q, platform_exact, key_of(source.link)))
        return_made(request, row.class_name, *link.row, tcp_settings_build_instance, tcp_settings_fill_reference);
}

void fc_port(const associator_request& request, const associator_row& row, const traversal_source& source) {
    const platform_ptr<PmPortInfo> port(pm_cim_find_interface(platform_exact, source.link.link_if_index, mts_q));
    if (port != nullptr)
        return_port(request, row.class_name, port.get());
}

void profile(const associator_request& request, const associator_row& row, const traversal_source& source) {
    FcipEntityEntry entity{};
    if (get_profile_from_link_entry(&source.link, &entity) != 0)
        return;
    if (request.wants_paths)
        return_path(request.result, fcip_profile_fill_reference(row.class_name, request.name_space, &entity));
    else
        return_instance(request.result,
                        fcip_profile_build_instance(row.class_name, request.name_space, &entity, request.properties));
}

void logical_system(const associator_request& request, const associator_row& /*row*/, const traversal_source& source) {
    const std::uint32_t if_index = source.link.link_if_index;
    if (request.wants_paths)
        return_path(request.result, get_logical_computer_keys(if_index, request.name_space, _broker));
    else
        return_instance(request.result,
                        get_logical_computer_instance(if_index, request.name_space, request.properties, _broker));
}

void ip_statistics(const associator_request& request, const associator_row& row, const traversal_source& source) {
    link_errors_can_be_read(request, row, source.link);
    return_made(request, row.class_name, source.link, ip_statistics_build_instance, stat_fill_reference);
}

void tcp_statistics(const associator_request& request, const associator_row& row, const traversal_source& source) {
    link_errors_can_be_read(request, row, source.link);
    return_made(request, row.class_name, source.link, tcp_statistical_data_build_instance, stat_fill_reference);
}

void ethernet_port_of_link(const associator_request& request, const associator_row& row,
                           const traversal_source& source) {
    PmPortInfo* record = nullptr;
    pm_cim_get_port_info(&record, platform_exact, source.link.ethernet_if_index, mts_q); // whatever it answers
    const platform_ptr<PmPortInfo> port(record);
    return_port(request, row.class_name, port.get());
}

void walked_port(const associator_request& request, const associator_row& row, const traversal_source& source) {
    get_etherport_from_if_index(source.if_index, request.wants_paths ? 0 : 1, row.class_name, request.result,
                                request.name_space, request.properties, _broker);
}

void lan_endpoint(const associator_request& request, const associator_row& row, const traversal_source& source) {
    if (request.wants_paths)
        return_path(request.result, lan_endpoint_fill_reference(row.class_name, request.name_space, source.if_index));
    else
        return_instance(request.result, lan_endpoint_build_instance(row.class_name, request.name_space, source.if_index,
                                                                    request.properties));
}

void ethernet_statistics(const associator_request& request, const associator_row& row, const traversal_source& source) {
    const platform_ptr<PmPortInfo> port = fetch_port(platform_exact, source.if_index);
    if (port == nullptr)
        return;
    if (request.wants_paths)
        return_path(request.result, eth_statistics_fill_reference(row.class_name, request.name_space, port.get()));
    else
        return_instance(request.result, eth_statistics_build_instance(row.class_name, request.name_space, port.get(),
                                                                      request.properties));
}

void ethernet_port_of_statistics(const associator_request& request, const associator_row& row,
                                 const traversal_source& source) {
    if (const auto port = fetch_port(platform_exact, source.if_index))
        return_port(request, row.class_name, port.get());
}

void ip_settings_and_system(const associator_request& request, const associator_row& row,
                            const traversal_source& /*source*/) {
    traversal_source once;
    if (find_source(key_use::if_index, request.key_value, once) == 0)
        ip_settings(request, row, once);
    traversal_source again;
    if (find_source(key_use::if_index, request.key_value, again) == 0)
        logical_system(request, row, again);
}

void statistics_if_counted(const associator_request& request, const associator_row& row,
                           const traversal_source& source) {
    if (link_errors_can_be_read(request, row, source.link))
        return_path(request.result, stat_fill_reference(row.class_name, request.name_space, &source.link));
}

void physical_system(const associator_request& request, const associator_row& row, const traversal_source& /*source*/) {
    return_path(request.result, switch_fill_reference(row.class_name, request.name_space, _broker));
}

void ethernet_port_namespace_first(const associator_request& request, const associator_row& row,
                                   const traversal_source& source) {
    if (const auto port = fetch_port(platform_exact, source.if_index))
        return_path(request.result, fcport_fill_reference_pm(request.name_space, row.class_name, port.get(), _broker));
}

void tcp_pe_not_returned(const associator_request& request, const associator_row& row, const traversal_source& source) {
    tcp_pe_fill_reference(row.class_name, request.name_space, &source.link);
}

} // namespace fcip::far_ends
