// Values as elements. Writers append to the caller's buffer and make no tree.
#pragma once

#include "host/mof/schema.h"

namespace cmpihost::cimxml {

/// Where the objects of a reply stand, and what their classes declare.
struct ReplyPlace {
    std::string_view host;       ///< for paths without a host
    std::string_view name_space; ///< for paths without a namespace
    const mof::Schema& schema;   ///< orders keys; classes that it lacks are written as they are
};

/// ` NAME="VALUE"`, escaped.
void append_attribute(std::string& out, std::string_view name, std::string_view value);

/// A type without the [] of an array.
std::string_view element_type(std::string_view type);

/// VALUE, VALUE.ARRAY, VALUE.REFERENCE or VALUE.REFARRAY; nothing for NULL. An embedded instance is a VALUE that holds
/// its XML. NULL elements of an array become empty texts, or are left out where an empty text is no value: VALUE.NULL
/// is not understood everywhere.
void append_value(std::string& out, std::string_view type, const Value& value, const ReplyPlace& place);

} // namespace cmpihost::cimxml
