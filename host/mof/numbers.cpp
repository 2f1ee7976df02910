#include "host/mof/numbers.h"

#include "host/cim/names.h"
#include "host/cim/whole_number.h"

namespace cmpihost::mof {

namespace {

/// An integer without its sign.
std::optional<std::uint64_t> parse_magnitude(std::string_view digits) {
    if (digits.size() > 2 && digits[0] == '0' && lower(digits[1]) == 'x')
        return whole_number<std::uint64_t>(digits.substr(2), 16);
    if (digits.size() > 1 && lower(digits.back()) == 'b')
        return whole_number<std::uint64_t>(digits.substr(0, digits.size() - 1), 2);
    if (digits.size() > 1 && digits[0] == '0')
        return whole_number<std::uint64_t>(digits.substr(1), 8);
    return whole_number<std::uint64_t>(digits, 10);
}

bool is_real(std::string_view digits) {
    const bool hexadecimal = digits.size() > 1 && lower(digits[1]) == 'x';
    return digits.find('.') != std::string_view::npos ||
           (!hexadecimal && digits.find_first_of("eE") != std::string_view::npos);
}

} // namespace

std::optional<Value> parse_number(std::string_view text) {
    const bool negative = text.starts_with('-');
    const std::string_view digits = text.substr(negative || text.starts_with('+') ? 1 : 0);
    if (is_real(digits)) {
        const auto number = whole_number<double>(digits);
        return number ? std::optional(Value{negative ? -*number : *number}) : std::nullopt;
    }
    const auto magnitude = parse_magnitude(digits);
    if (!magnitude)
        return std::nullopt;
    if (!negative)
        return Value{*magnitude};
    constexpr std::uint64_t lowest = std::uint64_t{1} << 63;
    if (*magnitude > lowest)
        return std::nullopt;
    return Value{static_cast<std::int64_t>(0 - *magnitude)};
}

} // namespace cmpihost::mof
