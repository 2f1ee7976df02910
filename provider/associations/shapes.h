// The shapes of associations: which two roles tie the ends, and what an association of the shape is made of.
#pragma once

#include "provider/common/broker.h"

namespace fcip {

/// A path builder of one shape: makes an association's path from the paths of its ends. A setting's path has IsDefault
/// and IsCurrent as keys.
/// @param first,second the ends under the first and second role; neither is changed
/// @return null when the path cannot be made, or when an end is missing (null, -1 or without handle): then with a line
/// that tells which, "swop : NULL" for the first and "peop : NULL" for the second
using association_path_builder = CMPIObjectPath*(const char* class_name, const char* name_space, CMPIObjectPath* first,
                                                 CMPIObjectPath* second, const CMPIBroker* broker);
association_path_builder realize_fill_reference;
association_path_builder group_part_fill_reference;
association_path_builder managed_stats_fill_reference;
association_path_builder managed_setting_fill_reference;

/// An instance builder of one shape. Arguments and result as above.
using association_instance_builder = CMPIInstance*(const char* class_name, const char* name_space,
                                                   CMPIObjectPath* first, CMPIObjectPath* second,
                                                   const CMPIBroker* broker);
association_instance_builder realize_build_instance;
association_instance_builder group_part_build_instance;
association_instance_builder managed_stats_build_instance;
association_instance_builder managed_setting_build_instance;
association_instance_builder hba_si_build_instance; ///< systems and their software; nothing calls it

/// A shape as the tables name it: its two builders.
struct association_shape {
    association_instance_builder* build;
    association_path_builder* fill;
};

inline constexpr association_shape realize{realize_build_instance, realize_fill_reference};
inline constexpr association_shape group_part{group_part_build_instance, group_part_fill_reference};
inline constexpr association_shape managed_stats{managed_stats_build_instance, managed_stats_fill_reference};
inline constexpr association_shape managed_setting{managed_setting_build_instance, managed_setting_fill_reference};

/// The two roles of a shape, both references and keys.
struct association_roles {
    const char* first;
    const char* second;
    bool are_of_setting = false; ///< also has IsDefault and IsCurrent, uint16, always 1
};

inline constexpr association_roles realize_roles{"Antecedent", "Dependent"};
inline constexpr association_roles group_part_roles{"GroupComponent", "PartComponent"};
inline constexpr association_roles managed_stats_roles{"ManagedElement", "Stats"};
inline constexpr association_roles managed_setting_roles{"ManagedElement", "SettingData", true};
inline constexpr association_roles system_software_roles{"System", "InstalledSoftware"}; ///< no association has them

} // namespace fcip
