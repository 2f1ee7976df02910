#include "common/trace.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <string_view>

namespace fcip {

namespace {

/// A line put together by hand: lookups trace every row of a table, and printf would be most of what they cost.
class line {
  public:
    line& operator<<(std::string_view text) {
        const std::size_t copied = text.copy(text_.data() + size_, text_.size() - size_);
        size_ += copied;
        return *this;
    }

    line& operator<<(std::int32_t number) {
        const auto end = std::to_chars(text_.data() + size_, text_.data() + text_.size(), number).ptr;
        size_ = static_cast<std::size_t>(end - text_.data());
        return *this;
    }

    void print() const { std::fwrite(text_.data(), 1, size_, stdout); }

  private:
    std::array<char, 256> text_;
    std::size_t size_ = 0;
};

} // namespace

void trace_entering(const char* function) {
    (line() << "Entering " << function << "\n").print();
}

void trace_exiting(const char* function) {
    (line() << "Exiting " << function << "\n").print();
}

void trace_location(const char* function, int number) {
    (line() << " Function : " << function << " Line " << number << " \n").print();
}

void trace_number(const char* before, std::int32_t number, const char* after) {
    (line() << before << number << after).print();
}

} // namespace fcip
