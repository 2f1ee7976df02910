// References of settings, statistics of endpoints, and profiles.
#include "provider/associations/references.h"

#include "provider/associations/reference_ends.h"

namespace fcip {

namespace {

using enum key_use;
using enum platform_record;

// clang-format off
// A row is three lines: location, association class, key, record fetched, shape,
//     name of the association,
//     first end, second end

constexpr reference_row fcip_settings_rows[] = {
    {1, "ZANTO_FCIPElementSettingData", if_index_only, none, managed_setting,
        "ZANTO_FCIPElementSettingData",
        {"ZANTO_FCIPProtocolEndPoint", ends::fcip_pe}, {"ZANTO_FCIPSettings", ends::fcip_settings}},
};
constexpr reference_table from_fcip_settings{fcip_settings_rows};

constexpr reference_row ip_settings_rows[] = {
    {1, "ZANTO_IPElementSettingData", if_index_only, none, managed_setting,
        "ZANTO_IPElementSettingData",
        {"ZANTO_IPProtocolEndPoint", ends::ip_pe}, {"ZANTO_IPSettings", ends::ip_settings}},
};
constexpr reference_table from_ip_settings{ip_settings_rows};

constexpr reference_row tcp_settings_rows[] = {
    {1, "ZANTO_TCPElementSettingData", if_index_only, none, managed_setting,
        as_passed,
        {"ZANTO_TCPProtocolEndPoint", ends::tcp_pe}, {"ZANTO_TCPSettings", ends::tcp_settings}},
};
constexpr reference_table from_tcp_settings{tcp_settings_rows};

constexpr reference_row ip_stat_rows[] = {
    {1, "ZANTO_IPEndpointStatisticalData", if_index_only, none, managed_stats,
        "ZANTO_IPEndpointStatisticalData",
        {"ZANTO_IPProtocolEndPoint", ends::ip_pe}, {"ZANTO_IPEndpointStatistics", ends::statistics}},
};
constexpr reference_table from_ip_stat{ip_stat_rows};

constexpr reference_row tcp_stat_rows[] = {
    {1, "ZANTO_TCPEndpointStatisticalData", if_index_only, none, managed_stats,
        "ZANTO_TCPEndpointStatisticalData",
        {"ZANTO_TCPProtocolEndpoint", ends::tcp_pe}, {"ZANTO_TCPEndpointStatistics", ends::statistics}},
};
constexpr reference_table from_tcp_stat{tcp_stat_rows};

constexpr reference_row profile_rows[] = {
    {1, "ZANTO_FCIPPEBasedOn", entity, profile, group_part,
        "ZANTO_FCIPPEBasedOn",
        {"ZANTO_FCIPProfile", ends::profile}, {"ZANTO_FCIPProtocolEndpoint", ends::fcip_pe}},
};
constexpr reference_table from_profile{profile_rows};

// clang-format on

} // namespace

int get_fcip_settings_references(const char* key_value, const char* association_class, const char*, const char**,
                                 const CMPIResult* result, const char* name_space) {
    return return_references(from_fcip_settings, {__func__, key_value, association_class, result, name_space});
}

int get_fcip_settings_reference_names(const char* key_value, const char* association_class, const char*,
                                      const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_fcip_settings, {__func__, key_value, association_class, result, name_space});
}

int get_ip_settings_references(const char* key_value, const char* association_class, const char*, const char**,
                               const CMPIResult* result, const char* name_space) {
    return return_references(from_ip_settings, {__func__, key_value, association_class, result, name_space});
}

int get_ip_settings_reference_names(const char* key_value, const char* association_class, const char*,
                                    const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_ip_settings, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_settings_references(const char* key_value, const char* association_class, const char*, const char**,
                                const CMPIResult* result, const char* name_space) {
    return return_references(from_tcp_settings, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_settings_reference_names(const char* key_value, const char* association_class, const char*,
                                     const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_tcp_settings, {__func__, key_value, association_class, result, name_space});
}

int get_ip_stat_references(const char* key_value, const char* association_class, const char*, const char**,
                           const CMPIResult* result, const char* name_space) {
    return return_references(from_ip_stat, {__func__, key_value, association_class, result, name_space});
}

int get_ip_stat_reference_names(const char* key_value, const char* association_class, const char*,
                                const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_ip_stat, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_stat_references(const char* key_value, const char* association_class, const char*, const char**,
                            const CMPIResult* result, const char* name_space) {
    return return_references(from_tcp_stat, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_stat_reference_names(const char* key_value, const char* association_class, const char*,
                                 const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_tcp_stat, {__func__, key_value, association_class, result, name_space});
}

int get_profile_references(const char* key_value, const char* association_class, const char*, const char**,
                           const CMPIResult* result, const char* name_space) {
    return return_references(from_profile, {__func__, key_value, association_class, result, name_space});
}

int get_profile_reference_names(const char* key_value, const char* association_class, const char*,
                                const CMPIResult* result, const char* name_space) {
    return return_reference_names(from_profile, {__func__, key_value, association_class, result, name_space});
}

} // namespace fcip
