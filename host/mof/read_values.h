// Values and types of MOF.
#pragma once

#include "host/mof/tokens.h"

namespace cmpihost::mof {

/// A type's own spelling; empty if it is no type.
std::string_view simple_type(std::string_view name);

/// The type of a feature, before its name.
struct Type {
    std::string name;            ///< "uint16", "reference"
    std::string reference_class; ///< of a reference
};

/// @param expected what else might stand there, for the message
Type read_type(Tokens& tokens, const std::string& expected);

/// The size of an array, 0 for any, if [ is next.
std::optional<std::uint32_t> read_array_size(Tokens& tokens, const std::string& name);

/// A value or a list of values. An alias is its text.
Value read_value(Tokens& tokens);

/// A list of values; { is next.
Value read_list(Tokens& tokens);

} // namespace cmpihost::mof
