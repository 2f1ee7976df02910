#include "host/cli/command_line.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// The program's own output. Standard output itself is left to providers, and leads nowhere until someone redirects it.
std::FILE* take_standard_output() {
    const int own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (own < 0 || nowhere < 0)
        return nullptr;
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
    return fdopen(own, "w");
}

} // namespace

int main(int count, char** values) {
    std::signal(SIGCHLD, SIG_DFL); // inherited as ignored, it would hide how a provider ended
    std::FILE* out = take_standard_output();
    if (out == nullptr) {
        std::fprintf(stderr, "cmpihost: there is no standard output: %s\n", std::strerror(errno));
        return 3;
    }
    const int exit_code = cmpihost::run_command_line({values + 1, values + count}, out, stderr);
    if (std::fclose(out) != 0 && exit_code != 3) {
        std::fprintf(stderr, "cmpihost: output could not be written: %s\n", std::strerror(errno));
        return 3;
    }
    return exit_code;
}
