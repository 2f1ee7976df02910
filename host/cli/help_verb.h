// The verb that tells about verbs.
#pragma once

#include "host/cli/streams.h"

#include <string>
#include <vector>

namespace cmpihost {

/// What `cmpihost help WORDS` prints: about the verb that is named, or about all. Empty if there is none of this name.
std::string help_text(const std::string& verb);

/// Prints it. Returns the exit code.
int help(const std::vector<std::string>& words, const Streams& streams);

} // namespace cmpihost
