// The bytes of a CIM-XML request to a call.
#pragma once

#include "host/cimxml/call.h"
#include "host/mof/schema.h"

namespace cmpihost::cimxml {

/// Reads the body of a request. `schema` gives keys their types. Never throws for what the bytes hold.
std::variant<Call, Refusal> read_request(std::string_view body, const mof::Schema& schema);

} // namespace cmpihost::cimxml
