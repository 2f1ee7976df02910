#include "provider/common/trace.h"

#include <charconv>
#include <cstdio>

namespace fcip {

std::string_view trace_lines::make_room(std::string_view text) {
    print();
    return text.substr(0, room());
}

trace_lines& trace_lines::number(std::int32_t number) {
    constexpr std::size_t longest = std::string_view("-2147483648").size();
    if (longest > room())
        print();
    char* begin = text_.data() + size_;
    size_ += static_cast<std::size_t>(std::to_chars(begin, begin + longest, number).ptr - begin);
    return *this;
}

trace_lines& trace_lines::location(std::string_view function, int line) {
    return text(" Function : ").text(function).number(" Line ", line, " \n");
}

trace_lines& trace_lines::entering(std::string_view function) {
    return text("Entering ").text(function).text("\n");
}

trace_lines& trace_lines::exiting(std::string_view function) {
    return text("Exiting ").text(function).text("\n");
}

void trace_lines::print() {
    std::fwrite(text_.data(), 1, size_, stdout);
    size_ = 0;
}

void trace_entering(const char* function) {
    trace_lines().entering(function).print();
}

void trace_exiting(const char* function) {
    trace_lines().exiting(function).print();
}

void trace_location(const char* function, int line) {
    trace_lines().location(function, line).print();
}

} // namespace fcip
