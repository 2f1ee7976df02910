#include "host/mof/lexer.h"

#include "host/mof/refusal.h"

namespace cmpihost::mof {

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

bool is_name_start(char c) {
    return (lower(c) >= 'a' && lower(c) <= 'z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool is_name_part(char c) {
    return is_name_start(c) || is_digit(c);
}

/// The value of a hexadecimal digit; -1 of any other character.
int hex_value(char c) {
    if (is_digit(c))
        return c - '0';
    return lower(c) >= 'a' && lower(c) <= 'f' ? lower(c) - 'a' + 10 : -1;
}

/// Code points up to U+FFFF; escapes reach no further.
void append_utf8(std::string& text, unsigned code) {
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xc0 | code >> 6);
        text += static_cast<char>(0x80 | (code & 0x3f));
    } else {
        text += static_cast<char>(0xe0 | code >> 12);
        text += static_cast<char>(0x80 | (code >> 6 & 0x3f));
        text += static_cast<char>(0x80 | (code & 0x3f));
    }
}

/// A character as messages show it; what a terminal might act on is shown in hexadecimal.
std::string shown_character(char c) {
    if (c >= ' ' && c <= '~')
        return std::string("'") + c + "'";
    constexpr const char* digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    return std::string("byte 0x") + digits[byte >> 4] + digits[byte & 15];
}

} // namespace

std::string Token::shown() const {
    switch (kind) {
    case Kind::end:
        return "end of file";
    case Kind::string:
        return "a string";
    case Kind::character:
        return "a character";
    default:
        return text;
    }
}

char Lexer::take() {
    const char c = text_[at_++];
    if (c == '\n') {
        ++line_;
        column_ = 1;
    } else {
        ++column_;
    }
    return c;
}

void Lexer::skip_block_comment() {
    const Place start = place();
    take();
    take();
    while (!at_end()) {
        if (take() == '*' && peek() == '/') {
            take();
            return;
        }
    }
    throw Refusal(start, "comment without end, expected */");
}

void Lexer::skip_blanks_and_comments() {
    while (!at_end()) {
        const char c = peek();
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f')
            take();
        else if (c == '/' && peek(1) == '*')
            skip_block_comment();
        else if (c == '/' && peek(1) == '/')
            while (!at_end() && peek() != '\n')
                take();
        else
            return;
    }
}

std::string Lexer::take_name() {
    std::string name;
    while (is_name_part(peek()))
        name += take();
    return name;
}

/// Digits, letters (of 0x1F, 101b, 1e5), points, and signs at the head or behind an exponent's e.
std::string Lexer::take_number() {
    std::string number(1, take());
    while (is_name_part(peek()) || peek() == '.' || ((peek() == '+' || peek() == '-') && lower(number.back()) == 'e'))
        number += take();
    return number;
}

/// The character of \x and one to four hexadecimal digits; `start` is where the escape began.
std::string Lexer::take_code(const Place& start) {
    unsigned code = 0;
    int digits = 0;
    for (; digits < 4 && hex_value(peek()) >= 0; ++digits)
        code = code * 16 + static_cast<unsigned>(hex_value(take()));
    if (digits == 0 || code == 0)
        throw Refusal(start, "escape \\x, expected one to four hexadecimal digits other than 0");
    std::string text;
    append_utf8(text, code);
    return text;
}

std::string Lexer::take_escape() {
    const Place start = place();
    take();
    const char c = at_end() ? '\0' : take();
    switch (c) {
    case 'b':
        return "\b";
    case 't':
        return "\t";
    case 'n':
        return "\n";
    case 'f':
        return "\f";
    case 'r':
        return "\r";
    case '"':
    case '\'':
    case '\\':
        return {c};
    case 'x':
    case 'X':
        return take_code(start);
    default:
        throw Refusal(start,
                      "unknown escape, expected \\b \\t \\n \\f \\r \\\" \\' \\\\ or \\x and hexadecimal digits");
    }
}

std::string Lexer::take_quoted(char quote) {
    const Place start = place();
    take();
    std::string text;
    while (!at_end() && peek() != '\n') {
        if (peek() == quote) {
            take();
            return text;
        }
        if (peek() == '\\')
            text += take_escape();
        else
            text += take();
    }
    throw Refusal(start, std::string(quote == '"' ? "string" : "character") + " without end, expected " + quote +
                             " on the same line");
}

Token Lexer::next() {
    skip_blanks_and_comments();
    Token token{Token::Kind::end, {}, place()};
    const char c = peek();
    if (at_end())
        return token;
    if (is_name_start(c)) {
        token.kind = Token::Kind::name;
        token.text = take_name();
    } else if (is_digit(c) || ((c == '+' || c == '-' || c == '.') && (is_digit(peek(1)) || peek(1) == '.'))) {
        token.kind = Token::Kind::number;
        token.text = take_number();
    } else if (c == '"' || c == '\'') {
        token.kind = c == '"' ? Token::Kind::string : Token::Kind::character;
        token.text = take_quoted(c);
    } else if (c == '#' || c == '$') {
        token.kind = c == '#' ? Token::Kind::pragma : Token::Kind::alias;
        token.text = take();
        token.text += take_name();
    } else if (std::string_view("{}[]():;,=").find(c) != std::string_view::npos) {
        token.kind = Token::Kind::mark;
        token.text = take();
    } else {
        throw Refusal(token.place, shown_character(c) + ", expected a name, a value or one of {}[]():;,=");
    }
    return token;
}

} // namespace cmpihost::mof
