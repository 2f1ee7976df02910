#include "host/mof/typed_value.h"

#include "host/cim/integer_type.h"

#include <limits>

namespace cmpihost::mof {

namespace {

std::optional<Value> as_unsigned(const IntegerType& type, const Value& value) {
    const std::uint64_t highest = std::numeric_limits<std::uint64_t>::max() >> (64 - type.bits);
    const auto* number = std::get_if<std::uint64_t>(&value.data);
    const auto* negative = std::get_if<std::int64_t>(&value.data); // -0
    if (negative != nullptr && *negative == 0)
        return Value{std::uint64_t{0}};
    return number != nullptr && *number <= highest ? std::optional(value) : std::nullopt;
}

std::optional<Value> as_signed(const IntegerType& type, const Value& value) {
    const std::int64_t highest = std::numeric_limits<std::int64_t>::max() >> (64 - type.bits);
    if (const auto* number = std::get_if<std::uint64_t>(&value.data))
        return *number <= static_cast<std::uint64_t>(highest) ? std::optional(Value{static_cast<std::int64_t>(*number)})
                                                              : std::nullopt;
    const auto* number = std::get_if<std::int64_t>(&value.data);
    return number != nullptr && *number >= -highest - 1 && *number <= highest ? std::optional(value) : std::nullopt;
}

std::optional<Value> as_real(const Value& value) {
    if (const auto* number = std::get_if<std::uint64_t>(&value.data))
        return Value{static_cast<double>(*number)};
    if (const auto* number = std::get_if<std::int64_t>(&value.data))
        return Value{static_cast<double>(*number)};
    return std::holds_alternative<double>(value.data) ? std::optional(value) : std::nullopt;
}

std::optional<Value> single_value(std::string_view type, const Value& value) {
    if (std::holds_alternative<std::monostate>(value.data))
        return value;
    if (const IntegerType* integer = integer_type(type))
        return integer->with_sign ? as_signed(*integer, value) : as_unsigned(*integer, value);
    if (type == "real32" || type == "real64")
        return as_real(value);
    const bool fits =
        type == "boolean" ? std::holds_alternative<bool>(value.data) : std::holds_alternative<std::string>(value.data);
    return fits ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<Value> typed_value(std::string_view type, Value value) {
    if (!type.ends_with("[]") || std::holds_alternative<std::monostate>(value.data))
        return single_value(type, value);
    auto* values = std::get_if<Value::Array>(&value.data);
    if (values == nullptr)
        return std::nullopt;
    type.remove_suffix(2);
    for (Value& each : *values) {
        auto typed = single_value(type, each);
        if (!typed)
            return std::nullopt;
        each = std::move(*typed);
    }
    return value;
}

} // namespace cmpihost::mof
