#include "provider/common/trace.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace fcip {

namespace {

template <typename Number>
std::array<char, 12> decimal(Number number) {
    std::array<char, 12> text{}; // "-2147483648" and its end
    std::to_chars(text.data(), text.data() + text.size() - 1, number);
    return text;
}

} // namespace

void trace_lines::piece(std::string_view text) {
    if (text.size() > text_.size() - size_) {
        print();
        if (text.size() > text_.size()) {
            std::fwrite(text.data(), 1, text.size(), stdout);
            return;
        }
    }
    std::copy(text.begin(), text.end(), text_.data() + size_);
    size_ += text.size();
}

void trace_lines::piece(std::int32_t number) {
    piece(decimal(number).data());
}

void trace_lines::piece(std::uint32_t number) {
    piece(decimal(number).data());
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
