// Associators and AssociatorNames: from a source object to its partner under one association class.
#pragma once

#include "provider/common/broker.h"

namespace fcip {

/// Returns the instance at the far end of one of the source object's associations: none or one.
///
/// Nothing is returned, and nothing reported, without an association class, for one that the source class does not
/// serve, and when the platform lacks something on the way. A well-formed key that names no object is answered from a
/// row of zeroes.
/// @param key_value the source object's key
/// @param association_class compared without regard to case; may be null
/// @param result_class,role,result_role ignored
/// @param properties handed on to the far end's builder; null = all
/// @return 0 whatever happens
using associators_member = int(const char* key_value, const char* association_class, const char* result_class,
                               const char* role, const char* result_role, const char** properties,
                               const CMPIResult* result, const char* name_space);

/// Returns the far end's object path; otherwise as associators_member.
using associator_names_member = int(const char* key_value, const char* association_class, const char* result_class,
                                    const char* role, const char* result_role, const CMPIResult* result,
                                    const char* name_space);

associators_member get_fcip_pe_associators;
associators_member get_fcip_remote_pe_associators;
associators_member get_ip_pe_associators;
associators_member get_ip_remote_pe_associators;
associators_member get_tcp_pe_associators;
associators_member get_tcp_remote_pe_associators;
associators_member get_lan_endpoint_associators;
associators_member get_fcip_settings_associators;
associators_member get_ip_setting_associators;
associators_member get_tcp_setting_associators;
associators_member get_eth_port_associators;
associators_member get_eth_stat_associators;
associators_member get_ip_stat_associators;
associators_member get_tcp_stat_associators;
associators_member get_tcp_statical_data_associators;
associators_member get_profile_associators;

associator_names_member get_fcip_pe_associator_names;
associator_names_member get_fcip_remote_pe_associator_names;
associator_names_member get_ip_pe_associator_names;
associator_names_member get_ip_remote_pe_associator_names;
associator_names_member get_tcp_pe_associator_names;
associator_names_member get_tcp_remote_pe_associator_names;
associator_names_member get_lan_endpoint_associator_names;
associator_names_member get_fcip_settings_associator_names;
associator_names_member get_ip_setting_associator_names;
associator_names_member get_tcp_setting_associator_names;
associator_names_member get_eth_port_associator_names;
associator_names_member get_eth_stat_associator_names;
associator_names_member get_ip_stat_associator_names;
associator_names_member get_tcp_stat_associator_names;
associator_names_member get_tcp_statical_data_associator_names; ///< nothing calls it
associator_names_member get_profile_associator_names;

} // namespace fcip
