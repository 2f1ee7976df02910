#include "host/cim/value_text.h"

#include "host/cim/path_text.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace cmpihost {

namespace {

constexpr bool is_control(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

std::string hexadecimal(unsigned code) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "\\x%04X", code);
    return text.data();
}

std::string escaped(char c) {
    switch (c) {
    case '\b':
        return "\\b";
    case '\t':
        return "\\t";
    case '\n':
        return "\\n";
    case '\f':
        return "\\f";
    case '\r':
        return "\\r";
    default:
        return hexadecimal(static_cast<unsigned char>(c));
    }
}

std::string quote(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            out += '\\';
        out += is_control(c) ? escaped(c) : std::string(1, c);
    }
    return out + "\"";
}

std::string real(double number) {
    if (!std::isfinite(number))
        return "NULL"; // MOF has no such literal
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%.17g", number);
    std::string digits = text.data();
    const std::size_t exponent = std::min(digits.find('e'), digits.size());
    if (digits.find('.') == std::string::npos)
        digits.insert(exponent, ".0");
    return digits;
}

std::string char16(std::uint64_t code) {
    const bool plain = code >= 0x20 && code < 0x7f && code != '\'' && code != '\\';
    return "'" + (plain ? std::string(1, static_cast<char>(code)) : hexadecimal(static_cast<unsigned>(code))) + "'";
}

struct ValueWriter {
    std::string_view type; ///< of the value, or of an array's elements
    bool mof;              ///< false: for people

    std::string operator()(std::monostate) const { return "NULL"; }
    std::string operator()(bool value) const { return value ? "TRUE" : "FALSE"; }
    std::string operator()(std::uint64_t value) const {
        return type.starts_with("char16") ? char16(value) : std::to_string(value);
    }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const { return real(value); }
    std::string operator()(const std::string& value) const { return quote(value); }
    std::string operator()(const Value::Reference& value) const {
        if (type.starts_with("instance"))
            return embedded(*value);
        return mof ? quote(path_text(*value)) : printable(path_text(*value));
    }
    std::string operator()(const Value::Array& values) const {
        std::string out = "{";
        for (const Value& value : values)
            out += (out.size() == 1 ? "" : ", ") + std::visit(*this, value.data);
        return out + "}";
    }

    /// An embedded instance: in MOF a string that holds the instance's own MOF.
    std::string embedded(const Object& object) const {
        std::string out = "instance of " + object.class_name + " {";
        for (const Property& property : object.properties)
            out += " " + property.name + " = " + (mof ? mof_value(property) : text_value(property)) + ";";
        return mof ? quote(out + " };") : out + " }";
    }
};

} // namespace

std::string printable(std::string_view text) {
    std::string out;
    for (const char c : text)
        out += is_control(c) ? escaped(c) : std::string(1, c);
    return out;
}

std::string text_value(const Property& property) {
    return std::visit(ValueWriter{property.type, false}, property.value.data);
}

std::string mof_value(const Property& property) {
    return std::visit(ValueWriter{property.type, true}, property.value.data);
}

} // namespace cmpihost
