// A provider's answer with its objects, where they are wanted together.
#pragma once

#include "host/server/catalogue.h"

namespace cmpihost::server {

/// Whether a result is wanted: an instance, or else a path.
using Wanted = std::function<bool(bool is_instance)>;

/// Asks, and gives the answer with the results that are wanted as its objects. What goes wrong when they are copied is
/// thrown when the provider has returned.
Answer whole_answer(const Ask& ask, const Request& request, const Wanted& wanted);

} // namespace cmpihost::server
