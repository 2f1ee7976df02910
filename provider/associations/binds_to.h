// Enumeration of an association class: one association per link. The ends and their roles are not always those of
// References.
#pragma once

#include "provider/common/broker.h"

namespace fcip {

/// Returns an association path for every link, in the order of the link table. A class without a rule gets nothing.
/// @param class_name the class as it was requested; the name of every path
/// @return 0; -1 after the first link one of whose ends cannot be made: that link and those behind it get nothing
int get_all_binds_to_references(const char* class_name, const CMPIResult* result, const char* name_space);

/// Returns an association instance for every link; otherwise as above. @param properties ignored
int get_all_binds_to_instances(const char* class_name, const CMPIResult* result, const char* name_space,
                               const char** properties);

} // namespace fcip
