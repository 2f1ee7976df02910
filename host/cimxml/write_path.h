// Paths as elements.
#pragma once

#include "host/cimxml/write_value.h"

namespace cmpihost::cimxml {

/// A NAMESPACEPATH.
void append_namespace_path(std::string& out, std::string_view host, std::string_view name_space);

/// A KEYBINDING; nothing for a value that cannot be a key.
void append_key(std::string& out, std::string_view name, const Property& key, const ReplyPlace& place);

/// An INSTANCENAME: the keys that the class declares, in its order, taken from the path's keys or else from the
/// properties; all keys of the path if it has none of these, or the class is not known. Keys that have no value are
/// left out, since an empty one would name another instance, or be invalid where it is a reference.
void append_instance_name(std::string& out, const Object& object, const ReplyPlace& place);

/// An INSTANCEPATH, with host and namespace.
void append_instance_path(std::string& out, const Object& object, const ReplyPlace& place);

/// An OBJECTPATH with the INSTANCEPATH.
void append_object_path(std::string& out, const Object& object, const ReplyPlace& place);

/// A VALUE.REFERENCE with the INSTANCEPATH.
void append_value_reference(std::string& out, const Object& object, const ReplyPlace& place);

/// A CLASSPATH, with host and namespace.
void append_class_path(std::string& out, std::string_view class_name, const ReplyPlace& place);

} // namespace cmpihost::cimxml
