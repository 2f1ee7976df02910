// Values as CIM-XML writes them in text.
#pragma once

#include "host/cim/object.h"

namespace cmpihost::cimxml {

/// Whether this is the name of a CIM type that text can hold: "uint8", "string", "datetime" ...; no array, no
/// reference.
bool is_text_type(std::string_view type);

/// The value of a text of this type. Nothing if the text is none such: a number out of its range, a boolean that is
/// none. Integers may be hexadecimal (0x1F). Blanks around numbers and booleans are read over. A char16 is its code.
std::optional<Value> parse_typed(std::string_view type, std::string_view text);

/// A number of no known type: uint64 if it fits, else sint64, else real64. The type is empty if it is no number.
Property parse_number_of_any_type(std::string_view text);

/// Appends the text of a value of this type, not escaped. A value that text cannot hold (NULL, an array, a reference)
/// gives none.
void append_typed(std::string& out, std::string_view type, const Value& value);

} // namespace cmpihost::cimxml
