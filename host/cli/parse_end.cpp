#include "host/cli/parse_end.h"

#include "host/cli/streams.h"

#include <CLI/CLI.hpp>

#include <sstream>

namespace cmpihost {

ParseEnd usage_end(const std::string& program, const std::string& what) {
    return {exit_usage, {}, program + ": " + what + "\nTry " + program + " --help.\n"};
}

ParseEnd parse_end(const CLI::App& app, const CLI::Error& error, const std::string& program) {
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success))
        return usage_end(program, error.what());
    std::ostringstream output;
    std::ostringstream unused;
    app.exit(error, output, unused);
    return {exit_ok, output.str(), {}};
}

} // namespace cmpihost
