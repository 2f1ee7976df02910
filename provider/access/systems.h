// Which system an object belongs to: VSAN system names, the VSANs' logical computer systems, the switch itself.
#pragma once

#include "platform/services.h"
#include "provider/common/text.h"
#include "provider/common/values.h"

namespace fcip {

/// Creation class of the systems that host the link-based objects.
inline constexpr const char* logical_computer_system = "ZANTO_LogicalComputerSystem";

/// Creation class of the system that hosts the LAN endpoints.
inline constexpr const char* physical_computer_system = "ZANTO_PhysicalComputerSystem";

/// The text of a VSAN system name, with room as its users give it.
using system_name_text = std::array<char, 100>;

/// Writes the VSAN system name of an interface: the VSAN's administrative-domain key, at most 20 characters, without a
/// terminator of its own after the 20th; so `buffer` (at least 21 bytes) comes cleared.
/// @return 0; -1 when the port cannot be read (buffer untouched) or its domain cannot ("NULL" in the buffer)
int get_vsan_wwn(std::uint32_t if_index, char* buffer);

/// The text that get_vsan_wwn leaves for an interface, whatever it answers: empty, "NULL" or the name.
system_name_text vsan_system_name(std::uint32_t if_index);

/// Adds the key SystemName: the VSAN system name of the interface, or `fallback` where it cannot be had.
void add_system_name_key(CMPIObjectPath* path, std::uint32_t if_index, const char* fallback);

/// The instance of the logical computer system of an interface's VSAN, made by the platform.
/// @return -1 as a pointer when the VSAN or its domain cannot be read
CMPIInstance* get_logical_computer_instance(std::uint32_t if_index, const char* name_space, const char** properties,
                                            const CMPIBroker* broker);

/// The object path of the same system. @return -1 as a pointer when the VSAN or its domain cannot be read
CMPIObjectPath* get_logical_computer_keys(std::uint32_t if_index, const char* name_space, const CMPIBroker* broker);

/// Sets the path's host name to the switch's name.
void set_switch_host(CMPIObjectPath* path);

/// A new instance of the class whose path carries the switch's name as host.
/// @param exit_trace function name to print "Exiting" with when the path cannot be made; null = no trace
/// @return null when the path cannot be made; otherwise what the broker gave, which may be null or without handle:
/// builders then return it as it is
CMPIInstance* new_switch_instance(const char* class_name, const char* name_space, const char* exit_trace = nullptr);

/// A WWN as the platform writes it.
platform_text wwn_text(const std::uint8_t wwn[8]);

/// The switch's own WWN as text; a WWN that cannot be read counts as all zero.
platform_text switch_wwn_text();

} // namespace fcip
