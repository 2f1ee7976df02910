// The verbs that a provider answers.
#pragma once

#include "host/cli/verbs.h"

namespace cmpihost {

/// Loads the provider, runs the request, prints the answer. Returns the exit code.
int answer_request(const Options& options, const Streams& streams);

} // namespace cmpihost
