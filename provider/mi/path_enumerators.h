// The walks behind enumerate-instance-names: one platform table each, row by row, one object path per row.
#pragma once

#include "provider/common/broker.h"

namespace fcip {

/// Returns an object path for every row of a platform table that the class has one for.
///
/// A failed platform call ends the walk; what was returned by then stays returned.
/// @param class_name the class as it was requested
/// @return 0 whatever happens
using path_enumerator = int(const char* class_name, const CMPIResult* result, const char* name_space);

/// FCIP protocol endpoints and remote FCIP ports; a class that is neither gets nothing.
path_enumerator get_all_fcip_pe_references;

/// The IP and TCP classes of a tunnel and its settings; a class that is none of them gets a null path per tunnel.
path_enumerator get_all_ip_pe_references;

/// The statistics of tunnels; a class that is none of them gets a null path per tunnel.
path_enumerator get_all_statistic_references;

/// Profiles, whatever the class.
path_enumerator get_all_fcip_profile_references;

/// Ethernet ports' statistics; ports of other types are skipped.
path_enumerator get_all_eth_stat_references;

/// LAN endpoints, up to the first port that is not an Ethernet port.
path_enumerator get_all_lan_endpoint_references;

/// The platform's paths that tie a port to its statistics, one per port of any type.
path_enumerator get_all_eth_stat_data_references;

} // namespace fcip
