// The limits among the options of `cmpihost serve`.
#pragma once

#include "host/cli/serve_options.h"

namespace CLI {
class App;
}

namespace cmpihost {

/// Adds an option for each limit, with its default in the help text.
void describe_limits(CLI::App& app, ServeOptions& options);

} // namespace cmpihost
