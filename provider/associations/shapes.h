// The shapes of associations: which two roles tie the ends, and what an association of the shape is made of.
#pragma once

#include "provider/common/broker.h"

namespace fcip {

/// A pair of roles. Both are references and keys.
struct association_shape {
    const char* first_role;
    const char* second_role;
    bool is_setting = false; ///< also has IsDefault and IsCurrent, uint16, always 1
};

inline constexpr association_shape realize{"Antecedent", "Dependent"};
inline constexpr association_shape group_part{"GroupComponent", "PartComponent"};
inline constexpr association_shape managed_stats{"ManagedElement", "Stats"};
inline constexpr association_shape managed_setting{"ManagedElement", "SettingData", true};
inline constexpr association_shape system_software{"System", "InstalledSoftware"}; ///< no association class has it

/// Makes an association's path from the paths of its ends. A setting's path has IsDefault and IsCurrent as keys.
/// @param first,second the ends under the first and second role; neither is changed
/// @return null when the path cannot be made, or when an end is missing (null, -1 or without handle): then with a line
/// that tells which, "swop : NULL" for the first and "peop : NULL" for the second
CMPIObjectPath* fill_association_reference(const association_shape& shape, const char* class_name,
                                           const char* name_space, CMPIObjectPath* first, CMPIObjectPath* second,
                                           const CMPIBroker* broker);

/// Makes an association's instance from the paths of its ends. Arguments and result as above.
CMPIInstance* build_association_instance(const association_shape& shape, const char* class_name, const char* name_space,
                                         CMPIObjectPath* first, CMPIObjectPath* second, const CMPIBroker* broker);

/// Path builders of one shape each.
using association_path_builder = CMPIObjectPath*(const char* class_name, const char* name_space, CMPIObjectPath* first,
                                                 CMPIObjectPath* second, const CMPIBroker* broker);
association_path_builder realize_fill_reference;
association_path_builder group_part_fill_reference;
association_path_builder managed_stats_fill_reference;
association_path_builder managed_setting_fill_reference;

/// Instance builders of one shape each.
using association_instance_builder = CMPIInstance*(const char* class_name, const char* name_space,
                                                   CMPIObjectPath* first, CMPIObjectPath* second,
                                                   const CMPIBroker* broker);
association_instance_builder realize_build_instance;
association_instance_builder group_part_build_instance;
association_instance_builder managed_stats_build_instance;
association_instance_builder managed_setting_build_instance;
association_instance_builder hba_si_build_instance; ///< systems and their software; nothing calls it

} // namespace fcip
