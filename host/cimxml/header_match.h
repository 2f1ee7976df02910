// The CIM headers of an HTTP request against its body.
#pragma once

#include "host/cimxml/call.h"

namespace cmpihost::cimxml {

/// A header's text with %XX replaced. Nothing if a % stands before anything else.
std::optional<std::string> percent_decoded(std::string_view text);

/// Whether the values of the headers CIMMethod and CIMObject, percent-encoded or not, name what the body asks for:
/// without regard to case, keys in any order and with or without quotes.
bool headers_match(std::string_view cim_method, std::string_view cim_object, const Envelope& envelope);

} // namespace cmpihost::cimxml
