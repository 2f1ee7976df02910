#include "host/cli/command_line.h"

#include "host/cli/programs.h"
#include "host/cli/verbs.h"

#include <csignal>

namespace cmpihost {

int run_command_line(const std::vector<std::string>& arguments, std::FILE* out, std::FILE* err) {
    if (const Program* program = arguments.empty() ? nullptr : find_program(arguments.front())) {
        if (program->has_peers)
            std::signal(SIGPIPE, SIG_IGN);
        return program->run({arguments.begin() + 1, arguments.end()}, {out, err});
    }
    const CommandLine line = read_command_line(arguments);
    if (line.options)
        return line.options->verb->handler(*line.options, {out, err});
    std::fputs(line.error.c_str(), err);
    const int printed = print({out, err}, line.output);
    return printed == exit_ok ? line.exit_code : printed;
}

} // namespace cmpihost
