// The walks behind enumerate-instances: one platform table each, row by row, one instance per row.
#pragma once

#include "provider/common/broker.h"

namespace fcip {

/// Returns an instance for every row of a platform table that the class has one for.
///
/// A failed platform call ends the walk; what was returned by then stays returned.
/// @param class_name the class as it was requested
/// @return 0 whatever happens
using instance_enumerator = int(const char* class_name, const CMPIResult* result, const char** properties,
                                const char* name_space);

/// FCIP protocol endpoints and remote FCIP ports; a class that is neither gets nothing.
instance_enumerator get_all_fcip_pe_instances;

/// The IP and TCP classes of a tunnel and its settings; a class that is none of them gets a null instance per tunnel.
instance_enumerator get_all_ip_pe_instances;

/// The statistics of tunnels; a class that is none of them gets a null instance per tunnel.
instance_enumerator get_all_statistics;

/// Profiles, whatever the class.
instance_enumerator get_all_fcip_profiles;

/// Ethernet ports' statistics; ports of other types are skipped.
instance_enumerator get_all_eth_stat_instances;

/// LAN endpoints, up to the first port that is not an Ethernet port.
instance_enumerator get_all_lan_endpoint_instances;

/// The platform's objects that tie a port to its statistics, up to the first port that is not an Ethernet port.
instance_enumerator get_all_eth_stat_data_instances;

} // namespace fcip
