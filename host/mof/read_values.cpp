#include "host/mof/read_values.h"

#include "host/mof/numbers.h"
#include "host/mof/refusal.h"

#include <algorithm>
#include <array>
#include <limits>

namespace cmpihost::mof {

namespace {

constexpr std::array<std::string_view, 14> simple_types = {"uint8",  "sint8",   "uint16",   "sint16", "uint32",
                                                           "sint32", "uint64",  "sint64",   "real32", "real64",
                                                           "string", "boolean", "datetime", "char16"};

Value read_strings(Tokens& tokens) {
    std::string text;
    while (tokens.next().kind == Token::Kind::string)
        text += tokens.take().text;
    return {text};
}

Value read_number(Tokens& tokens) {
    auto number = parse_number(tokens.next().text);
    if (!number)
        tokens.refuse("a number of at most 64 bits");
    tokens.take();
    return std::move(*number);
}

Value read_single_value(Tokens& tokens) {
    const Token& next = tokens.next();
    if (next.kind == Token::Kind::string)
        return read_strings(tokens);
    if (next.kind == Token::Kind::number)
        return read_number(tokens);
    if (next.kind == Token::Kind::character || next.kind == Token::Kind::alias)
        return {tokens.take().text};
    if (next.is_word("true") || next.is_word("false"))
        return {tokens.take().is_word("true")};
    if (!tokens.take_word("null"))
        tokens.refuse("a value (a string, a number, TRUE, FALSE or NULL)");
    return {};
}

} // namespace

std::string_view simple_type(std::string_view name) {
    const auto* type = std::find_if(simple_types.begin(), simple_types.end(),
                                    [&](std::string_view known) { return same_name(known, name); });
    return type == simple_types.end() ? std::string_view() : *type;
}

Type read_type(Tokens& tokens, const std::string& expected) {
    const Token word = tokens.expect(Token::Kind::name, expected);
    if (tokens.take_word("ref"))
        return {"reference", word.text};
    const std::string_view type = simple_type(word.text);
    if (type.empty())
        throw Refusal(word.place, word.text + ", expected a type (string, boolean, datetime, char16, uint8 to uint64, "
                                              "sint8 to sint64, real32, real64) or a class and REF");
    return {std::string(type), {}};
}

std::optional<std::uint32_t> read_array_size(Tokens& tokens, const std::string& name) {
    if (!tokens.take_mark('['))
        return std::nullopt;
    std::uint32_t size = 0;
    if (tokens.next().kind == Token::Kind::number) {
        const auto number = parse_number(tokens.next().text);
        const auto* whole = number ? std::get_if<std::uint64_t>(&number->data) : nullptr;
        if (whole == nullptr || *whole == 0 || *whole > std::numeric_limits<std::uint32_t>::max())
            tokens.refuse("a number of elements behind " + name);
        size = static_cast<std::uint32_t>(*whole);
        tokens.take();
    }
    tokens.expect_mark(']', "behind " + name);
    return size;
}

Value read_list(Tokens& tokens) {
    Value::Array values;
    tokens.take();
    if (tokens.take_mark('}'))
        return {values};
    do
        values.push_back(read_single_value(tokens));
    while (tokens.take_mark(','));
    tokens.expect_mark('}', "or , in a list of values");
    return {values};
}

Value read_value(Tokens& tokens) {
    return tokens.next().is_mark('{') ? read_list(tokens) : read_single_value(tokens);
}

} // namespace cmpihost::mof
