// Instances as elements.
#pragma once

#include "host/cimxml/write_value.h"

namespace cmpihost::cimxml {

/// A property's element. `declaration` is of the class it stands in, null if that is not known. A property of type
/// reference[] gives none: properties cannot be such.
void append_property(std::string& out, const Property& property, const mof::ClassDeclaration* declaration,
                     const ReplyPlace& place);

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
