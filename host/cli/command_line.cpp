#include "host/cli/command_line.h"

#include "host/cli/loaded_provider.h"
#include "host/cli/programs.h"
#include "host/cli/verbs.h"

#include <csignal>
#include <stdexcept>

namespace cmpihost {

namespace {

/// Runs a verb. What stops it is told in one line.
int run_verb(const Options& options, const Streams& streams) {
    try {
        return options.verb->handler(options, streams);
    } catch (const ProviderFailed& failure) {
        std::fprintf(streams.err, "cmpihost: %s\n", failure.what());
        return exit_provider;
    } catch (const std::runtime_error& error) {
        return refuse(streams, error.what());
    }
}

} // namespace

int run_command_line(const std::vector<std::string>& arguments, std::FILE* out, std::FILE* err) {
    if (const Program* program = arguments.empty() ? nullptr : find_program(arguments.front())) {
        if (program->has_peers)
            std::signal(SIGPIPE, SIG_IGN);
        return program->run({arguments.begin() + 1, arguments.end()}, {out, err});
    }
    const CommandLine line = read_command_line(arguments);
    if (line.options)
        return run_verb(*line.options, {out, err});
    std::fputs(line.error.c_str(), err);
    const int printed = print({out, err}, line.output);
    return printed == exit_ok ? line.exit_code : printed;
}

} // namespace cmpihost
