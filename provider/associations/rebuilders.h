// Get-instance of association classes: an instance made again from the path that the client holds.
#pragma once

#include "provider/common/broker.h"

namespace fcip {

/// Returns the association instance that a path's two role keys stand for. Role names are compared without regard to
/// case, the last key of a name counts; neither the class nor the ends are looked up or checked.
/// @param properties ignored: the instance has all its properties
/// @return 0; -1 and no instance when a role is missing
using association_rebuilder = int(const CMPIObjectPath* path, const CMPIResult* result, const char** properties);

association_rebuilder get_ant_dep_instance;         ///< Antecedent and Dependent
association_rebuilder get_group_part_instance;      ///< GroupComponent and PartComponent; prints each key's name
association_rebuilder get_managed_stats_instance;   ///< ManagedElement and Stats
association_rebuilder get_managed_setting_instance; ///< ManagedElement and SettingData

} // namespace fcip
