#include "host/cimxml/typed_text.h"

#include "host/cim/integer_type.h"
#include "host/cim/names.h"
#include "host/cim/whole_number.h"
#include "host/cimxml/characters.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace cmpihost::cimxml {

namespace {

struct Integer {
    bool negative = false;
    std::uint64_t magnitude = 0;
};

std::optional<Integer> parse_integer(std::string_view text) {
    Integer integer{text.starts_with('-')};
    if (integer.negative || text.starts_with('+'))
        text.remove_prefix(1);
    const bool hexadecimal = text.size() > 2 && text[0] == '0' && lower(text[1]) == 'x';
    const auto magnitude =
        hexadecimal ? whole_number<std::uint64_t>(text.substr(2), 16) : whole_number<std::uint64_t>(text, 10);
    if (!magnitude)
        return std::nullopt;
    integer.magnitude = *magnitude;
    return integer;
}

/// An integer of 8 to 64 bits.
std::optional<Value> parse_integer_of(bool with_sign, unsigned bits, std::string_view text) {
    const auto integer = parse_integer(text);
    if (!integer)
        return std::nullopt;
    const std::uint64_t highest = std::numeric_limits<std::uint64_t>::max() >> (64 - bits + (with_sign ? 1 : 0));
    if (!with_sign) {
        const bool fits = !integer->negative && integer->magnitude <= highest;
        return fits ? std::optional(Value{integer->magnitude}) : std::nullopt;
    }
    if (integer->magnitude > highest + (integer->negative ? 1 : 0))
        return std::nullopt;
    return Value{static_cast<std::int64_t>(integer->negative ? 0 - integer->magnitude : integer->magnitude)};
}

std::optional<Value> parse_real(std::string_view text) {
    text.remove_prefix(text.starts_with('+') ? 1 : 0);
    const auto number = whole_number<double>(text);
    return number ? std::optional(Value{*number}) : std::nullopt;
}

std::optional<Value> parse_boolean(std::string_view text) {
    const bool truth = same_name(text, "true");
    return truth || same_name(text, "false") ? std::optional(Value{truth}) : std::nullopt;
}

/// One character of the first plane, in UTF-8.
std::optional<Value> parse_char16(std::string_view text) {
    const std::size_t length = text.empty() ? 0 : xml_character_length(text, 0);
    if (length != text.size() || length == 0 || length > 3)
        return std::nullopt;
    const auto byte = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    std::uint64_t code = length == 1 ? byte(0) : byte(0) & (0x7fU >> length);
    for (std::size_t i = 1; i < length; ++i)
        code = code << 6 | (byte(i) & 0x3fU);
    return Value{code};
}

/// Shortest digits that read back as the same number, with the point that CIM-XML wants in a real.
void append_real(std::string& out, double number) {
    if (!std::isfinite(number)) {
        out += std::isnan(number) ? "NaN" : number < 0 ? "-INF" : "INF";
        return;
    }
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    const std::string_view digits(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const std::size_t exponent = std::min(digits.find('e'), digits.size());
    out += digits.substr(0, exponent);
    if (digits.find('.') == std::string_view::npos)
        out += ".0";
    out += digits.substr(exponent);
}

template <class Number>
void append_integer(std::string& out, Number number) {
    std::array<char, 24> digits{};
    out.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

/// A character that is none by itself (half of a pair) becomes the replacement character.
void append_char16(std::string& out, std::uint64_t code) {
    const bool whole = code <= 0xffff && is_xml_character(static_cast<std::uint32_t>(code));
    append_utf8(out, whole ? static_cast<std::uint32_t>(code) : 0xfffd);
}

struct TextWriter {
    std::string& out;
    std::string_view type;

    void operator()(bool value) const { out += value ? "TRUE" : "FALSE"; }
    void operator()(std::uint64_t value) const {
        if (type == "char16")
            append_char16(out, value);
        else
            append_integer(out, value);
    }
    void operator()(std::int64_t value) const { append_integer(out, value); }
    void operator()(double value) const { append_real(out, value); }
    void operator()(const std::string& value) const { out += value; }
    template <class Other>
    void operator()(const Other& /*value*/) const {}
};

} // namespace

bool is_text_type(std::string_view type) {
    static constexpr std::array<std::string_view, 6> others{"string", "boolean", "datetime",
                                                            "char16", "real32",  "real64"};
    return integer_type(type) != nullptr || std::find(others.begin(), others.end(), type) != others.end();
}

std::optional<Value> parse_typed(std::string_view type, std::string_view text) {
    if (type == "string" || type == "datetime")
        return Value{std::string(text)};
    if (type == "char16")
        return parse_char16(text);
    if (type == "boolean")
        return parse_boolean(trimmed(text));
    if (type == "real32" || type == "real64")
        return parse_real(trimmed(text));
    const IntegerType* integer = integer_type(type);
    return integer == nullptr ? std::nullopt : parse_integer_of(integer->with_sign, integer->bits, trimmed(text));
}

Property parse_number_of_any_type(std::string_view text) {
    for (const char* type : {"uint64", "sint64", "real64"})
        if (auto value = parse_typed(type, text))
            return {"", type, std::move(*value)};
    return {};
}

void append_typed(std::string& out, std::string_view type, const Value& value) {
    std::visit(TextWriter{out, type}, value.data);
}

} // namespace cmpihost::cimxml
