#include "provider/associations/binds_to.h"

#include "provider/access/fcip_tables.h"
#include "provider/access/systems.h"
#include "provider/associations/ends.h"
#include "provider/associations/shapes.h"
#include "provider/classes/link_classes.h"
#include "provider/common/class_row.h"
#include "provider/common/results.h"
#include "provider/common/trace.h"

namespace fcip {

namespace {

using namespace classes;
using enum platform_record;

/// What a rule does beside tying its ends.
enum class remark {
    nothing,
    first_end_only,     ///< the first end is made and dropped, nothing is returned
    skips_entity_65535, ///< links of that entity id get nothing
    instances_swap_ends ///< instances have the second end under the first role
};

/// What enumerating an association class makes of a link.
struct binds_to_rule {
    const char* class_name;              ///< the association class
    association_path_builder* fill;      ///< null = no paths
    association_instance_builder* build; ///< null = no instances
    platform_record record;              ///< fetched before either end is made
    association_end first;
    association_end second;
    remark also = remark::nothing;
    int location = 0; ///< number in the location trace of each link; 0 = it has none
};

constexpr association_end fcip_endpoint{"ZANTO_FCIPProtocolEndPoint", of<fcip_pe>};
constexpr association_end ip_endpoint{"ZANTO_IPProtocolEndPoint", of<ip_pe>};
constexpr association_end tcp_endpoint{"ZANTO_TCPProtocolEndPoint", of<tcp_pe>};
constexpr association_end host_system{logical_computer_system, of_system_by_name};

// clang-format off
// A rule is two lines: association class, builder of paths, builder of instances, record fetched
//     first end, second end
constexpr binds_to_rule rules[] = {
    {"ZANTO_SANFCIPEndpoint", realize_fill_reference, realize_build_instance, none,
        {"ZANTO_RemoteFCIPPort", of<fcip_remote_pe>}, fcip_endpoint},
    {"ZANTO_FCIPTCPEndpoint", realize_fill_reference, realize_build_instance, none,
        tcp_endpoint, fcip_endpoint},
    {"ZANTO_SANIPEndpoint", realize_fill_reference, realize_build_instance, none,
        {"ZANTO_RemoteIPPort", of<ip_remote_pe>}, fcip_endpoint}, // not the IP endpoint
    {"ZANTO_TCPIPEndpoint", realize_fill_reference, realize_build_instance, none,
        tcp_endpoint, ip_endpoint},
    {"ZANTO_SANTCPEndpoint", nullptr, nullptr, none,
        ip_endpoint, {}, remark::first_end_only},
    {"ZANTO_IPEthernetEndpoint", realize_fill_reference, realize_build_instance, none,
        {"ZANTO_LANEndPoint", of_lan_endpoint}, ip_endpoint, remark::skips_entity_65535, 6},
    // The system comes first for all three; in references only for the FCIP endpoint.
    {"ZANTO_SwitchHostedFCIPAccessPoint", realize_fill_reference, realize_build_instance, none,
        host_system, fcip_endpoint},
    {"ZANTO_SwitchHostedIPAccessPoint", realize_fill_reference, realize_build_instance, none,
        host_system, ip_endpoint},
    {"ZANTO_SwitchHostedTCPAccessPoint", realize_fill_reference, realize_build_instance, none,
        host_system, tcp_endpoint},
    {"ZANTO_FCIPElementSettingData", managed_setting_fill_reference, managed_setting_build_instance, none,
        {"ZANTO_FCIPSettings", of<fcip_settings>}, fcip_endpoint}, // the settings as the managed element
    {"ZANTO_TCPElementSettingData", managed_setting_fill_reference, managed_setting_build_instance, none,
        {"ZANTO_TCPSettings", of<ip_pe>}, tcp_endpoint}, // settings with an IP endpoint's keys
    {"ZANTO_IPElementSettingData", managed_setting_fill_reference, managed_setting_build_instance, none,
        {"ZANTO_TCPSettings", of<ip_pe>}, ip_endpoint}, // TCP settings, with an IP endpoint's keys
    {"ZANTO_FCIPPEBasedOn", realize_fill_reference, group_part_build_instance, profile,
        {"ZANTO_FCIPProfile", of_profile}, fcip_endpoint}, // each kind of enumeration has its roles
    // Tied to the FCIP endpoint, not to the TCP endpoint.
    {"ZANTO_TCPEndPointStatisticalData", managed_stats_fill_reference, managed_stats_build_instance, none,
        {"ZANTO_TCPEndPointStatistics", of<tcp_statistics>}, fcip_endpoint, remark::instances_swap_ends},
    {"ZANTO_IPEndPointStatisticalData", managed_stats_fill_reference, managed_stats_build_instance, none,
        {"ZANTO_IPEndPointStatistics", of<ip_statistics>}, ip_endpoint, remark::instances_swap_ends},
    // Paths only, the port with an IP endpoint's keys. No enumeration comes here: this class has walks of its own.
    {"ZANTO_EthernetPortStatisticalData", managed_stats_fill_reference, nullptr, none,
        {"ZANTO_EthernetPortStatistics", of<ip_statistics>}, {"ZANTO_EthernetPort", of<ip_pe>}},
};
// clang-format on

/// What one enumeration is about.
struct enumeration {
    const char* function; ///< its name, for traces
    wanted answer;
    const char* class_name;
    const CMPIResult* result;
    const char* name_space;
};

CMPIObjectPath* make(const association_end& end, const enumeration& asked, const traversal_source& source) {
    return end.of.fill(end.class_name, asked.name_space, source);
}

/// Ties the ends of a link. False when one of them cannot be made.
bool tie(const binds_to_rule& rule, const enumeration& asked, traversal_source& source) {
    if (!fetch_record(rule.record, source, asked.function, rule.location))
        return false;
    const bool swapped = rule.also == remark::instances_swap_ends && asked.answer == wanted::instances;
    CMPIObjectPath* first = make(swapped ? rule.second : rule.first, asked, source);
    if (!is_object(first))
        return false;
    CMPIObjectPath* second = make(swapped ? rule.first : rule.second, asked, source);
    if (!is_object(second))
        return false;
    if (asked.answer == wanted::paths)
        return_path(asked.result, rule.fill(asked.class_name, asked.name_space, first, second, _broker));
    else
        return_instance(asked.result, rule.build(asked.class_name, asked.name_space, first, second, _broker));
    return true;
}

/// Applies a rule to a link. False when an end cannot be made.
bool apply(const binds_to_rule& rule, const enumeration& asked, const FcipLinkEntry& link) {
    traversal_source source{.link = link, .if_index = link.ethernet_if_index};
    if (rule.also == remark::first_end_only)
        make(rule.first, asked, source);
    if (asked.answer == wanted::paths ? rule.fill == nullptr : rule.build == nullptr)
        return true;
    if (rule.also == remark::skips_entity_65535 && link.entity_id == 65535)
        return true;
    if (rule.location != 0)
        trace_location(asked.function, rule.location);
    return tie(rule, asked, source);
}

int enumerate(const enumeration& asked) {
    trace_entering(asked.function);
    const binds_to_rule* rule = row_for(rules, asked.class_name);
    bool whole = true;
    walk_links(mts_q, [&](const FcipLinkEntry& link) {
        whole = rule == nullptr || apply(*rule, asked, link);
        return whole ? walk::go_on : walk::stop;
    });
    if (!whole)
        return -1; // without "Exiting"
    trace_exiting(asked.function);
    return 0;
}

} // namespace

int get_all_binds_to_references(const char* class_name, const CMPIResult* result, const char* name_space) {
    return enumerate({__func__, wanted::paths, class_name, result, name_space});
}

int get_all_binds_to_instances(const char* class_name, const CMPIResult* result, const char* name_space,
                               const char** /*properties*/) {
    return enumerate({__func__, wanted::instances, class_name, result, name_space});
}

} // namespace fcip
