#include "host/cli/redirect.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

namespace cmpihost {

namespace {

int open_target(const std::string& target, std::FILE* err) {
    if (target == "-") {
        std::fflush(err);
        return dup(fileno(err));
    }
    const char* file = target.empty() ? "/dev/null" : target.c_str();
    return open(file, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
}

} // namespace

StandardOutputElsewhere::StandardOutputElsewhere(const std::string& target, std::FILE* err) : saved_(-1), err_(err) {
    const int opened = open_target(target, err);
    if (opened < 0)
        throw std::runtime_error("trace file " + target + ": cannot be opened: " + std::strerror(errno));
    std::fflush(stdout);
    saved_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    dup2(opened, STDOUT_FILENO);
    close(opened);
}

StandardOutputElsewhere::~StandardOutputElsewhere() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::fputs("note: the trace is incomplete: it could not be written\n", err_);
        std::clearerr(stdout);
    }
    if (saved_ < 0) { // there was no standard output
        close(STDOUT_FILENO);
        return;
    }
    dup2(saved_, STDOUT_FILENO);
    close(saved_);
}

} // namespace cmpihost
