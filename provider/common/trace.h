// Trace lines on standard output. The texts are part of the provider's behaviour.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fcip {

/// Trace lines in the making: lookups trace every row of a table, and a printf for each line, or just a write, would
/// be most of what they cost.
class trace_lines {
  public:
    trace_lines() {} // which leaves the text unset: it is not to be cleared for each line

    /// Texts longer than 16,384 characters are cut.
    trace_lines& text(std::string_view text) {
        if (text.size() > room())
            text = make_room(text);
        std::copy(text.begin(), text.end(), text_.data() + size_);
        size_ += text.size();
        return *this;
    }

    trace_lines& number(std::int32_t number);

    /// A number between two texts.
    trace_lines& number(std::string_view before, std::int32_t value, std::string_view after) {
        return text(before).number(value).text(after);
    }

    /// " Function : FUNCTION Line LINE ". The line is a fixed number that names the place, not a line of our source.
    trace_lines& location(std::string_view function, int line);

    /// "Entering FUNCTION" and "Exiting FUNCTION".
    trace_lines& entering(std::string_view function);
    trace_lines& exiting(std::string_view function);

    /// What was not printed yet.
    std::string_view view() const { return {text_.data(), size_}; }

    /// Prints what was not printed yet; happens by itself when there is no room for more.
    void print();

  private:
    std::size_t room() const { return text_.size() - size_; }

    /// Prints; @return as much of `text` as there is room for then
    std::string_view make_room(std::string_view text);

    std::array<char, 16384> text_;
    std::size_t size_ = 0;
};

/// One line of a trace_lines, printed at once.
void trace_entering(const char* function);
void trace_exiting(const char* function);
void trace_location(const char* function, int line);

} // namespace fcip
