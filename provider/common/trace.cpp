#include "provider/common/trace.h"

#include <charconv>
#include <cstdio>

namespace fcip {

template <typename Number>
void trace_lines::decimal(Number number) {
    constexpr std::size_t longest = std::string_view("-2147483648").size();
    if (text_.size() - size_ < longest)
        print();
    char* const begin = text_.data() + size_;
    size_ += static_cast<std::size_t>(std::to_chars(begin, begin + longest, number).ptr - begin);
}

void trace_lines::piece(std::int32_t number) {
    decimal(number);
}

void trace_lines::piece(std::uint32_t number) {
    decimal(number);
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
