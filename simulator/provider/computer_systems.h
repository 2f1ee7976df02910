// ZANTO_PhysicalComputerSystem, the switch as a whole, and ZANTO_LogicalComputerSystem, a VSAN of it.
#pragma once

#include "simulator/provider/look.h"

#include <string>
#include <vector>

namespace switchsim {

// Members of SwitchClass. The id of a system is its Name.

CMPIObjectPath* system_path_of(const CimClass& of, const std::string& id);

std::vector<std::string> physical_system_ids(const Switch& contents);
bool is_physical_system(const Switch& contents, const std::string& id);
CMPIInstance* physical_system(Look& look, const CimClass& of, const std::string& id, const char** properties);

/// A VSAN is enumerated by its own name, and is known by that of its administrative domain as well: references have
/// either.
std::vector<std::string> logical_system_ids(const Switch& contents);
bool is_logical_system(const Switch& contents, const std::string& id);
CMPIInstance* logical_system(Look& look, const CimClass& of, const std::string& id, const char** properties);

} // namespace switchsim
