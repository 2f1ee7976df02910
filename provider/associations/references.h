// References and ReferenceNames: the association of one class that a source object takes part in.
#pragma once

#include "provider/common/broker.h"

namespace fcip {

/// Returns the instance of one of the source object's associations: none or one.
///
/// A well-formed key that names no object is answered from a row of zeroes.
/// @param key_value the source object's key
/// @param association_class the request's result class, compared without regard to case; may be null
/// @param role,properties ignored
/// @return 0; -1 when a lookup fails or an end cannot be made (get_fcip_pe_references: 0 after a failed lookup), and
/// nothing is returned then
using references_member = int(const char* key_value, const char* association_class, const char* role,
                              const char** properties, const CMPIResult* result, const char* name_space);

/// Returns the association's object path; otherwise as references_member.
using reference_names_member = int(const char* key_value, const char* association_class, const char* role,
                                   const CMPIResult* result, const char* name_space);

references_member get_fcip_pe_references;
references_member get_fcip_remote_pe_references;
references_member get_ip_pe_references;
references_member get_ip_remote_pe_references;
references_member get_tcp_pe_references;
references_member get_tcp_remote_pe_references;
references_member get_fcip_settings_references;
references_member get_ip_settings_references;
references_member get_tcp_settings_references;
references_member get_profile_references;
references_member get_lan_endpoint_references;
references_member get_ip_stat_references;
references_member get_tcp_stat_references;
references_member get_eth_port_references;
references_member get_eth_stat_references;

reference_names_member get_fcip_pe_reference_names;
reference_names_member get_fcip_remote_pe_reference_names; ///< nothing calls it
reference_names_member get_ip_pe_reference_names;
reference_names_member get_ip_remote_pe_reference_names; ///< nothing calls it
reference_names_member get_tcp_pe_reference_names;
reference_names_member get_tcp_remote_pe_reference_names; ///< nothing calls it
reference_names_member get_fcip_settings_reference_names;
reference_names_member get_ip_settings_reference_names;
reference_names_member get_tcp_settings_reference_names;
reference_names_member get_profile_reference_names;
reference_names_member get_lan_endpoint_reference_names;
reference_names_member get_ip_stat_reference_names;
reference_names_member get_tcp_stat_reference_names;
reference_names_member get_eth_port_reference_names;
reference_names_member get_eth_stat_reference_names;

} // namespace fcip
