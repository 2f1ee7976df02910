#include "provider/associations/binds_to.h"

#include "provider/access/fcip_tables.h"
#include "provider/access/systems.h"
#include "provider/associations/shapes.h"
#include "provider/classes/fcip/fcip_profile.h"
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/classes/fcip/fcip_settings.h"
#include "provider/classes/fcip/remote_fcip_port.h"
#include "provider/classes/net/ip_protocol_endpoint.h"
#include "provider/classes/net/lan_endpoint.h"
#include "provider/classes/net/remote_ip_service_access_point.h"
#include "provider/classes/net/statistics_path.h"
#include "provider/classes/net/tcp_protocol_endpoint.h"
#include "provider/common/results.h"
#include "provider/common/trace.h"

#include <optional>
#include <utility>

#include <strings.h>

namespace fcip {

namespace {

/// An end of a link's association.
struct link_end {
    const char* class_name;
    link_path_builder* fill;
};

using shape = std::optional<association_shape>;
constexpr shape nothing = std::nullopt;

/// What a rule does beside tying its ends.
enum class remark {
    none,
    first_end_only,     ///< the first end is made and dropped, nothing is returned
    links_with_entity,  ///< links of entity id 65535 are skipped, the others traced
    instances_swap_ends ///< instances have the second end under the first role
};

/// What enumerating an association class makes of a link.
struct binds_to_rule {
    const char* association_class;
    shape of_paths;
    shape of_instances;
    link_end first;
    link_end second;
    remark also = remark::none;
};

CMPIObjectPath* profile_path(const char* class_name, const char* name_space, const FcipLinkEntry* link) {
    FcipEntityEntry profile{};
    if (get_profile_from_link_entry(link, &profile) != 0)
        return nullptr;
    return fcip_profile_fill_reference(class_name, name_space, &profile);
}

CMPIObjectPath* lan_endpoint_path(const char* class_name, const char* name_space, const FcipLinkEntry* link) {
    return lan_endpoint_fill_reference(class_name, name_space, link->ethernet_if_index);
}

/// The system is named by whatever text the VSAN's name query leaves.
CMPIObjectPath* system_path(const char* class_name, const char* name_space, const FcipLinkEntry* link) {
    return switch_fill_reference_str(class_name, name_space, vsan_system_name(link->link_if_index).data(), _broker);
}

constexpr link_end fcip_endpoint{"ZANTO_FCIPProtocolEndPoint", fcip_pe_fill_reference};
constexpr link_end ip_endpoint{"ZANTO_IPProtocolEndPoint", ip_pe_fill_reference};
constexpr link_end tcp_endpoint{"ZANTO_TCPProtocolEndPoint", tcp_pe_fill_reference};
constexpr link_end host_system{logical_computer_system, system_path};
constexpr link_end no_end{nullptr, nullptr};

constexpr std::uint32_t skipped_entity = 65535;
constexpr int ethernet_location = 6; ///< the rule's place in the table

// clang-format off
// A rule is two lines: association class, shape of paths, shape of instances
//     first end, second end
constexpr binds_to_rule rules[] = {
    {"ZANTO_SANFCIPEndpoint", realize, realize,
        {"ZANTO_RemoteFCIPPort", fcip_remote_pe_fill_reference}, fcip_endpoint},
    {"ZANTO_FCIPTCPEndpoint", realize, realize,
        tcp_endpoint, fcip_endpoint},
    {"ZANTO_SANIPEndpoint", realize, realize,
        {"ZANTO_RemoteIPPort", ip_remote_pe_fill_reference}, fcip_endpoint}, // not the IP endpoint
    {"ZANTO_TCPIPEndpoint", realize, realize,
        tcp_endpoint, ip_endpoint},
    {"ZANTO_SANTCPEndpoint", nothing, nothing,
        ip_endpoint, no_end, remark::first_end_only},
    {"ZANTO_IPEthernetEndpoint", realize, realize,
        {"ZANTO_LANEndPoint", lan_endpoint_path}, ip_endpoint, remark::links_with_entity},
    // The system comes first for all three; in references only for the FCIP endpoint.
    {"ZANTO_SwitchHostedFCIPAccessPoint", realize, realize,
        host_system, fcip_endpoint},
    {"ZANTO_SwitchHostedIPAccessPoint", realize, realize,
        host_system, ip_endpoint},
    {"ZANTO_SwitchHostedTCPAccessPoint", realize, realize,
        host_system, tcp_endpoint},
    {"ZANTO_FCIPElementSettingData", managed_setting, managed_setting,
        {"ZANTO_FCIPSettings", fcip_settings_fill_reference}, fcip_endpoint}, // the settings as the managed element
    {"ZANTO_TCPElementSettingData", managed_setting, managed_setting,
        {"ZANTO_TCPSettings", ip_pe_fill_reference}, tcp_endpoint}, // settings with an IP endpoint's keys
    {"ZANTO_IPElementSettingData", managed_setting, managed_setting,
        {"ZANTO_TCPSettings", ip_pe_fill_reference}, ip_endpoint}, // TCP settings, with an IP endpoint's keys
    {"ZANTO_FCIPPEBasedOn", realize, group_part,
        {"ZANTO_FCIPProfile", profile_path}, fcip_endpoint}, // each kind of enumeration has its roles
    // Tied to the FCIP endpoint, not to the TCP endpoint.
    {"ZANTO_TCPEndPointStatisticalData", managed_stats, managed_stats,
        {"ZANTO_TCPEndPointStatistics", stat_fill_reference}, fcip_endpoint, remark::instances_swap_ends},
    {"ZANTO_IPEndPointStatisticalData", managed_stats, managed_stats,
        {"ZANTO_IPEndPointStatistics", stat_fill_reference}, ip_endpoint, remark::instances_swap_ends},
    // Paths only, the port with an IP endpoint's keys. No enumeration comes here: this class has walks of its own.
    {"ZANTO_EthernetPortStatisticalData", managed_stats, nothing,
        {"ZANTO_EthernetPortStatistics", stat_fill_reference}, {"ZANTO_EthernetPort", ip_pe_fill_reference}},
};
// clang-format on

const binds_to_rule* rule_of(const char* class_name) {
    for (const binds_to_rule& rule : rules)
        if (strcasecmp(rule.association_class, class_name) == 0)
            return &rule;
    return nullptr;
}

/// What one enumeration is about.
struct enumeration {
    const char* function; ///< its name, for traces
    const char* class_name;
    const CMPIResult* result;
    const char* name_space;
    bool wants_paths;
};

CMPIObjectPath* make(const link_end& end, const enumeration& wanted, const FcipLinkEntry& link) {
    return end.fill(end.class_name, wanted.name_space, &link);
}

/// Applies a rule to a link. False when an end cannot be made.
bool tie(const binds_to_rule& rule, const enumeration& wanted, const FcipLinkEntry& link) {
    if (rule.also == remark::first_end_only)
        make(rule.first, wanted, link);
    const shape& form = wanted.wants_paths ? rule.of_paths : rule.of_instances;
    if (!form)
        return true;
    if (rule.also == remark::links_with_entity) {
        if (link.entity_id == skipped_entity)
            return true;
        trace_location(wanted.function, ethernet_location);
    }
    link_end ends[] = {rule.first, rule.second};
    if (rule.also == remark::instances_swap_ends && !wanted.wants_paths)
        std::swap(ends[0], ends[1]);
    CMPIObjectPath* first = make(ends[0], wanted, link);
    if (!is_object(first))
        return false;
    CMPIObjectPath* second = make(ends[1], wanted, link);
    if (!is_object(second))
        return false;
    if (wanted.wants_paths)
        return_path(wanted.result,
                    fill_association_reference(*form, wanted.class_name, wanted.name_space, first, second, _broker));
    else
        return_instance(wanted.result, build_association_instance(*form, wanted.class_name, wanted.name_space, first,
                                                                  second, _broker));
    return true;
}

int enumerate(const enumeration& wanted) {
    trace_entering(wanted.function);
    const binds_to_rule* rule = rule_of(wanted.class_name);
    bool whole = true;
    walk_links(mts_q, [&](const FcipLinkEntry& link) {
        whole = rule == nullptr || tie(*rule, wanted, link);
        return whole ? walk::go_on : walk::stop;
    });
    if (!whole)
        return -1; // without "Exiting"
    trace_exiting(wanted.function);
    return 0;
}

} // namespace

int get_all_binds_to_references(const char* class_name, const CMPIResult* result, const char* name_space) {
    return enumerate({__func__, class_name, result, name_space, true});
}

int get_all_binds_to_instances(const char* class_name, const CMPIResult* result, const char* name_space,
                               const char** /*properties*/) {
    return enumerate({__func__, class_name, result, name_space, false});
}

} // namespace fcip
