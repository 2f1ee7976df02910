// The operations of the association MI.
#pragma once

#include "provider/common/broker.h"

namespace fcip {

/// Returns the partner of the source object under one association class. The status is always OK; a source path
/// without the class's key is answered with the message "invalid key name".
CMPIStatus FCIP_Associators(CMPIAssociationMI* mi, const CMPIContext* context, const CMPIResult* result,
                            const CMPIObjectPath* path, const char* association_class, const char* result_class,
                            const char* role, const char* result_role, const char** properties);

/// Returns the partner's object path; otherwise as FCIP_Associators.
CMPIStatus FCIP_AssociatorNames(CMPIAssociationMI* mi, const CMPIContext* context, const CMPIResult* result,
                                const CMPIObjectPath* path, const char* association_class, const char* result_class,
                                const char* role, const char* result_role);

/// Returns the association of one class that the source object takes part in; status as above.
/// @param result_class the association class
CMPIStatus FCIP_References(CMPIAssociationMI* mi, const CMPIContext* context, const CMPIResult* result,
                           const CMPIObjectPath* path, const char* result_class, const char* role,
                           const char** properties);

/// Returns the association's object path; otherwise as FCIP_References.
CMPIStatus FCIP_ReferenceNames(CMPIAssociationMI* mi, const CMPIContext* context, const CMPIResult* result,
                               const CMPIObjectPath* path, const char* result_class, const char* role);

} // namespace fcip
