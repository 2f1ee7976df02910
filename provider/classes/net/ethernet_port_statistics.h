// ZANTO_EthernetPortStatistics: an Ethernet port's frame and error counters.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Builds a port's instance; otherwise as link_instance_builder. Only the interface index of the record is read.
/// @return null when the port's counters cannot be read
CMPIInstance* eth_statistics_build_instance(const char* class_name, const char* name_space, const PmPortInfo* port,
                                            const char** properties);

/// Makes a port's path; asks no service.
CMPIObjectPath* eth_statistics_fill_reference(const char* class_name, const char* name_space, const PmPortInfo* port);

} // namespace fcip
