// What every builder of the served classes does: the contract of the two kinds of function that each class has.
#pragma once

#include "platform/records.h"
#include "provider/common/broker.h"

namespace fcip {

/// Builds the instance that a link row stands for, with all its properties, the request's property list applied.
///
/// Class name and namespace are the request's and go into the instance's path unchecked, so one builder serves several
/// spellings; the property CreationClassName does not depend on them unless a builder says so. The row is the caller's;
/// what else is needed is read from the platform, and released again.
/// @param properties the request's property list; null = all
/// @return the instance, the broker's; null when something that the class cannot do without cannot be had
using link_instance_builder = CMPIInstance*(const char* class_name, const char* name_space, const FcipLinkEntry* link,
                                            const char** properties);

/// Makes the object path, that is the keys, of what a link row stands for. Arguments and result as above.
using link_path_builder = CMPIObjectPath*(const char* class_name, const char* name_space, const FcipLinkEntry* link);

/// The two builders of a class.
struct link_class {
    link_instance_builder* build;
    link_path_builder* fill;
};

} // namespace fcip
