#include "host/cli/streams.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

namespace cmpihost {

namespace {

/// Writes a text and flushes. False with errno set: it could not be written in full.
bool write_all(std::FILE* out, const std::string& text) {
    const bool written = std::fwrite(text.data(), 1, text.size(), out) == text.size();
    return std::fflush(out) == 0 && written;
}

} // namespace

bool is_terminal(std::FILE* out) {
    return isatty(fileno(out)) == 1;
}

bool wants_colour(std::FILE* out) {
    const char* no_colour = std::getenv("NO_COLOR");
    return is_terminal(out) && (no_colour == nullptr || *no_colour == '\0');
}

int print(const Streams& streams, const std::string& text) {
    if (write_all(streams.out, text))
        return exit_ok;
    std::fprintf(streams.err, "cmpihost: output could not be written: %s\n", std::strerror(errno));
    return exit_output;
}

int refuse(const Streams& streams, const std::string& what) {
    std::fprintf(streams.err, "cmpihost: %s\n", what.c_str());
    return exit_usage;
}

} // namespace cmpihost
