// The switch's own objects in CIM: ports and computer systems. This is the one place that makes their keys, for the
// platform's CIM utility service and for the switch's own provider.
#pragma once

#include "simulator/switchsim.h"

#include <cmpift.h>

namespace switchsim {

inline constexpr const char* physical_system_class = "ZANTO_PhysicalComputerSystem";
inline constexpr const char* logical_system_class = "ZANTO_LogicalComputerSystem";
inline constexpr const char* ethernet_port_class = "ZANTO_EthernetPort";
inline constexpr const char* fc_port_class = "ZANTO_FCPort";

/// A class in a namespace of a broker, which makes the objects.
struct CimClass {
    const char* name;
    const char* name_space;
    const CMPIBroker* broker;
};

// The objects that are made are the broker's. Null: it has no memory.

/// A path without keys that bears the switch's name as its host.
CMPIObjectPath* new_path(const CimClass& of);

/// The Name of the switch as a whole; empty if it has none.
SWITCHSIM_API const char* physical_system_name();

/// A port's DeviceID: its interface index, signed. Short enough to need no memory.
SWITCHSIM_API std::string device_id(std::uint32_t if_index);

SWITCHSIM_API CMPIObjectPath* port_path(const CimClass& of, std::uint32_t if_index);

/// The keys alone if there is no such port.
/// @param properties those that are wanted beside the keys; null: all
SWITCHSIM_API CMPIInstance* port_instance(const CimClass& of, std::uint32_t if_index, const char** properties);

SWITCHSIM_API CMPIObjectPath* system_path(const CimClass& of, const char* name);
SWITCHSIM_API CMPIInstance* system_instance(const CimClass& of, const char* name, const char** properties);

} // namespace switchsim
