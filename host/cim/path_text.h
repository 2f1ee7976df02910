// Object paths as text: //host/namespace:Class.key="text",number=5,flag=TRUE,reference="Other.key=\"text\""
#pragma once

#include "host/cim/object.h"

#include <functional>
#include <stdexcept>

namespace cmpihost {

/// A text that is no object path. what() is one line that names the position (from 1) and what was expected there.
class PathError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The path of an object: its host if it has one, namespace if not empty, class and keys. In quotes, " and \ are
/// escaped by \. References are written as the quoted text of their path.
std::string path_text(const Object& object);

/// Whether a quoted text that is a path with keys may be a reference, as a key of this name in a path of this class.
using IsReference = std::function<bool(const std::string& class_name, const std::string& key)>;

/// Reads what path_text() writes: `Class`, `namespace:Class`, `//host/namespace:Class`, each with or without
/// `.key=value,...`; also `/namespace:Class`, and `http://` or `https://` in front of a host. Integers become uint64,
/// or sint64 when negative; numbers with a point or an exponent real64; TRUE and FALSE (in any case) boolean; a quoted
/// text that is itself a path with keys a reference, unless `is_reference` says no; other quoted texts string.
/// @throws PathError
Object parse_path(std::string_view text, const IsReference& is_reference = {});

} // namespace cmpihost
