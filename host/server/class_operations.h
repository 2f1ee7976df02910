// The operations on classes and qualifiers, which the schema answers.
#pragma once

#include "host/cimxml/call.h"
#include "host/cimxml/write_value.h"
#include "host/server/status.h"

namespace cmpihost::server {

/// Whether this server answers the operation from the schema: GetClass, EnumerateClasses, EnumerateClassNames,
/// GetQualifier, EnumerateQualifiers. Their writing kin (CreateClass, SetQualifier ...) is not among them, and not
/// supported.
bool is_class_operation(std::string_view operation);

/// Appends what stands in IRETURNVALUE, and counts it. Classes come in the order of their declaration, and so after
/// their superclasses.
Status answer_class_operation(const cimxml::Call& call, const cimxml::ReplyPlace& place, std::string& values,
                              std::uint64_t& objects);

} // namespace cmpihost::server
