// The schema that a command works with.
#pragma once

#include "host/cli/options.h"
#include "host/mof/deviations.h"

namespace cmpihost {

/// The folder of the schema where this program is installed, or else in the tree that it was built in; empty if it is
/// in neither place.
std::string default_schema_folder();

/// dmtf.mof and fcip.mof of that folder.
/// @throws std::runtime_error whose what() is one line: it is in neither place
std::vector<std::string> default_schema_files();

/// Reads the files that the options name, or else dmtf.mof and fcip.mof of the default folder.
/// @throws std::runtime_error whose what() is one line
mof::Schema load_schema(const Options& options);

/// As load_schema(); nothing if the options name no file and there is none.
/// @throws std::runtime_error whose what() is one line
std::optional<mof::Schema> schema_if_there(const Options& options);

/// Reads the file that the options name, or else deviations.txt beside the last schema file. Without one there are
/// none.
/// @throws std::runtime_error whose what() is one line
mof::Deviations load_deviations(const Options& options);

} // namespace cmpihost
