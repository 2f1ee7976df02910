// What a shell offers when it is asked to complete a command line (packaging/cmpihost.bash).
#pragma once

#include "host/cli/streams.h"

#include <string>
#include <vector>

namespace cmpihost {

/// The words that may stand in the place of the last of these, each as a whole: verbs, options, their values, and
/// classes of the schema. None where a shell offers names of files.
std::vector<std::string> completions(const std::vector<std::string>& words);

/// Prints them, one a line. Returns the exit code.
int complete(const std::vector<std::string>& words, const Streams& streams);

} // namespace cmpihost
