#include "provider/common/trace.h"

#include <charconv>
#include <cstdio>

namespace fcip {

namespace {

/// A number in decimal, in storage of the caller's.
template <typename Number>
std::string_view decimal(Number number, std::array<char, 11>& text) { // "-2147483648"
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), static_cast<std::size_t>(end - text.data())};
}

} // namespace

void trace_lines::piece(std::int32_t number) {
    std::array<char, 11> text;
    piece(decimal(number, text));
}

void trace_lines::piece(std::uint32_t number) {
    std::array<char, 11> text;
    piece(decimal(number, text));
}

void trace_lines::long_piece(std::string_view text) {
    print();
    if (text.size() > text_.size())
        std::fwrite(text.data(), 1, text.size(), stdout);
    else
        piece(text);
}

void trace_lines::print() {
    std::fwrite(text_.data(), 1, size_, stdout);
    size_ = 0;
}

void trace_entering(const char* function) {
    trace("Entering ", function, "\n");
}

void trace_exiting(const char* function) {
    trace("Exiting ", function, "\n");
}

void trace_location(const char* function, int line) {
    trace_lines lines;
    lines.location(function, line);
    lines.print();
}

} // namespace fcip
