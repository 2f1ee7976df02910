// Associators of settings, statistics of endpoints, and profiles.
#include "provider/associations/associators.h"

#include "provider/associations/far_ends.h"

namespace fcip {

namespace {

using enum key_use;
namespace to = far_ends;

// clang-format off
// A row is a line: location, association class, key, class of the far end, far end

constexpr associator_row fcip_settings_rows[] = {
    {1, "ZANTO_FCIPElementSettingData", if_index_only, "ZANTO_FCIPProtocolEndPoint", to::fcip_pe},
};
constexpr associator_source from_fcip_settings{fcip_settings_rows};

constexpr associator_row ip_setting_rows[] = {
    {1, "ZANTO_IPElementSettingData", if_index_only, "ZANTO_IPProtocolEndPoint", to::ip_pe},
};
constexpr associator_source from_ip_setting{ip_setting_rows};

constexpr associator_row tcp_setting_rows[] = {
    {1, "ZANTO_TCPElementSettingData", if_index_only, "ZANTO_TCPProtocolEndPoint", to::tcp_pe},
};
constexpr associator_source from_tcp_setting{tcp_setting_rows};

constexpr associator_row ip_stat_rows[] = {
    {1, "ZANTO_IPEndPointStatisticalData", if_index_only, "ZANTO_IPProtocolEndPoint", to::ip_pe},
};
constexpr associator_source from_ip_stat{ip_stat_rows};

constexpr associator_row tcp_stat_rows[] = {
    {1, "ZANTO_TCPEndPointStatisticalData", if_index_only, "ZANTO_TCPProtocolEndPoint", to::tcp_pe},
};
constexpr associator_source from_tcp_stat{tcp_stat_rows};

// Answers to the name of a statistics class, not of an association, and that name only.
constexpr associator_row tcp_statical_data_rows[] = {
    {1, "ZANTO_TCPEndPointStatistics", entity, "ZANTO_TCPProtocolEndPoint", to::tcp_pe},
};
constexpr associator_row tcp_statical_data_names[] = {
    {1, "ZANTO_TCPEndPointStatistics", entity, "ZANTO_TCPProtocolEndPoint", to::tcp_pe_not_returned},
};
constexpr associator_source from_tcp_statical_data{tcp_statical_data_rows, tcp_statical_data_names};

constexpr associator_row profile_rows[] = {
    {1, "ZANTO_FCIPPEBasedOn", entity, "ZANTO_FCIPProtocolEndPoint", to::fcip_pe},
};
constexpr associator_source from_profile{profile_rows};

// clang-format on

} // namespace

int get_fcip_settings_associators(const char* key_value, const char* association_class, const char*, const char*,
                                  const char*, const char** properties, const CMPIResult* result,
                                  const char* name_space) {
    return return_associators(from_fcip_settings,
                              {__func__, key_value, association_class, result, name_space, properties});
}

int get_fcip_settings_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                       const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_fcip_settings, {__func__, key_value, association_class, result, name_space});
}

int get_ip_setting_associators(const char* key_value, const char* association_class, const char*, const char*,
                               const char*, const char** properties, const CMPIResult* result, const char* name_space) {
    return return_associators(from_ip_setting,
                              {__func__, key_value, association_class, result, name_space, properties});
}

int get_ip_setting_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                    const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_ip_setting, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_setting_associators(const char* key_value, const char* association_class, const char*, const char*,
                                const char*, const char** properties, const CMPIResult* result,
                                const char* name_space) {
    return return_associators(from_tcp_setting,
                              {__func__, key_value, association_class, result, name_space, properties});
}

int get_tcp_setting_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                     const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_tcp_setting, {__func__, key_value, association_class, result, name_space});
}

int get_ip_stat_associators(const char* key_value, const char* association_class, const char*, const char*, const char*,
                            const char** properties, const CMPIResult* result, const char* name_space) {
    return return_associators(from_ip_stat, {__func__, key_value, association_class, result, name_space, properties});
}

int get_ip_stat_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                 const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_ip_stat, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_stat_associators(const char* key_value, const char* association_class, const char*, const char*,
                             const char*, const char** properties, const CMPIResult* result, const char* name_space) {
    return return_associators(from_tcp_stat, {__func__, key_value, association_class, result, name_space, properties});
}

int get_tcp_stat_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                  const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_tcp_stat, {__func__, key_value, association_class, result, name_space});
}

int get_tcp_statical_data_associators(const char* key_value, const char* association_class, const char*, const char*,
                                      const char*, const char** properties, const CMPIResult* result,
                                      const char* name_space) {
    return return_associators(from_tcp_statical_data,
                              {__func__, key_value, association_class, result, name_space, properties});
}

int get_tcp_statical_data_associator_names(const char* key_value, const char* association_class, const char*,
                                           const char*, const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_tcp_statical_data,
                                   {__func__, key_value, association_class, result, name_space});
}

int get_profile_associators(const char* key_value, const char* association_class, const char*, const char*, const char*,
                            const char** properties, const CMPIResult* result, const char* name_space) {
    return return_associators(from_profile, {__func__, key_value, association_class, result, name_space, properties});
}

int get_profile_associator_names(const char* key_value, const char* association_class, const char*, const char*,
                                 const char*, const CMPIResult* result, const char* name_space) {
    return return_associator_names(from_profile, {__func__, key_value, association_class, result, name_space});
}

} // namespace fcip
