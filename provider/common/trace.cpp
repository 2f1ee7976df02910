#include "provider/common/trace.h"

#include <charconv>
#include <cstdio>

namespace fcip {

void trace_lines::put(std::int32_t number) {
    char* const begin = text_.data() + size_;
    size_ += static_cast<std::size_t>(std::to_chars(begin, begin + longest(number), number).ptr - begin);
}

void trace_lines::put(std::uint32_t number) {
    char* const begin = text_.data() + size_;
    size_ += static_cast<std::size_t>(std::to_chars(begin, begin + longest(number), number).ptr - begin);
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
