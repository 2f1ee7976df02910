// The read operations of the instance MI.
#pragma once

#include "provider/common/broker.h"

namespace fcip {

/// Returns the object paths of all instances of the path's class. The status is always OK.
CMPIStatus FCIP_EnumInstanceNames(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                  const CMPIObjectPath* path);

/// Returns all instances of the path's class. The status is always OK.
CMPIStatus FCIP_EnumInstances(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                              const CMPIObjectPath* path, const char** properties);

/// Returns the instance that the path's key names, if there is one. The status is always OK; a path without the
/// class's key is answered with the message "invalid key name".
CMPIStatus FCIP_GetInstance(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                            const CMPIObjectPath* path, const char** properties);

} // namespace fcip
