#include "host/cli/streams.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <unistd.h>

namespace cmpihost {

namespace {

constexpr auto longest_wait = std::chrono::milliseconds(50); // of written text for those who read it

} // namespace

bool is_terminal(std::FILE* out) {
    return isatty(fileno(out)) == 1;
}

bool wants_colour(Colour colour, std::FILE* out) {
    const auto is_set = [](const char* text) { return text != nullptr && *text != '\0'; };
    const char* terminal = std::getenv("TERM");
    const bool dumb = !is_set(terminal) || std::string_view(terminal) == "dumb";
    const bool by_itself = is_terminal(out) && !dumb && !is_set(std::getenv("NO_COLOR"));
    return colour == Colour::always || (colour == Colour::automatic && by_itself);
}

void Printer::add(const std::string& text) {
    if (error_ != 0 || text.empty())
        return;
    const auto now = std::chrono::steady_clock::now();
    const bool written = std::fwrite(text.data(), 1, text.size(), streams_.out) == text.size();
    const bool due = now - flushed_ >= longest_wait;
    if (!written || (due && std::fflush(streams_.out) != 0))
        error_ = errno;
    if (due)
        flushed_ = now;
}

int Printer::end() {
    if (error_ == 0 && std::fflush(streams_.out) != 0)
        error_ = errno;
    if (error_ == 0)
        return exit_ok;
    std::fprintf(streams_.err, "cmpihost: output could not be written: %s\n", std::strerror(error_));
    return exit_output;
}

int print(const Streams& streams, const std::string& text) {
    Printer printer(streams);
    printer.add(text);
    return printer.end();
}

int refuse(const Streams& streams, const std::string& what) {
    std::fprintf(streams.err, "cmpihost: %s\n", what.c_str());
    return exit_usage;
}

} // namespace cmpihost
