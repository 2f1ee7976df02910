// Instances as elements.
#pragma once

#include "host/cimxml/write_value.h"

namespace cmpihost::cimxml {

/// An INSTANCE with its properties in their order. A property of no type has the one that the class declares. A NULL
/// property has both tags and no content.
void append_instance(std::string& out, const Object& object, const ReplyPlace& place);

/// A VALUE.NAMEDINSTANCE: INSTANCENAME, INSTANCE.
void append_named_instance(std::string& out, const Object& object, const ReplyPlace& place);

/// A VALUE.INSTANCEWITHPATH: INSTANCEPATH, INSTANCE.
void append_instance_with_path(std::string& out, const Object& object, const ReplyPlace& place);

/// A VALUE.OBJECTWITHPATH: INSTANCEPATH, INSTANCE.
void append_object_with_path(std::string& out, const Object& object, const ReplyPlace& place);

} // namespace cmpihost::cimxml
