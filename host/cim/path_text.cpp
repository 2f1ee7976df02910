#include "host/cim/path_text.h"

#include "host/cim/names.h"
#include "host/cim/whole_number.h"

#include <array>
#include <charconv>
#include <cmath>

namespace cmpihost {

namespace {

// ------------------------------------------------------------------------------------------------------ writing

std::string quoted(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            out += '\\';
        out += c;
    }
    return out += '"';
}

/// The shortest text that reads back as the same number, and as no integer.
std::string real_text(double number) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    std::string text(digits.data(), end);
    if (std::isfinite(number) && text.find_first_of(".e") == std::string::npos)
        text += ".0";
    return text;
}

struct KeyWriter {
    std::string operator()(std::monostate) const { return "NULL"; }
    std::string operator()(bool value) const { return value ? "TRUE" : "FALSE"; }
    std::string operator()(std::uint64_t value) const { return std::to_string(value); }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const { return real_text(value); }
    std::string operator()(const std::string& value) const { return quoted(value); }
    std::string operator()(const Value::Reference& value) const { return quoted(path_text(*value)); }
    std::string operator()(const Value::Array& values) const {
        std::string out;
        for (const Value& value : values)
            out += (out.empty() ? "{" : ", ") + std::visit(*this, value.data);
        return out.empty() ? "{}" : out + "}";
    }
};

// ------------------------------------------------------------------------------------------------------ reading

bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

class PathReader {
  public:
    PathReader(std::string_view text, const IsReference& is_reference) : text_(text), is_reference_(is_reference) {}

    Object read() {
        Object object;
        if (const std::size_t host = host_position(); host != 0) {
            at_ = host;
            object.host = up_to('/', "a host name and '/'");
        } else {
            take('/');
        }
        const auto colon = text_.find_first_of(":.=\"", at_);
        if (colon != std::string_view::npos && text_[colon] == ':')
            object.name_space = up_to(':', "a namespace and ':'");
        object.class_name = identifier("a class name");
        if (at_ == text_.size())
            return object;
        expect('.', "'.' and a key, or the end");
        do
            object.keys.push_back(key(object));
        while (take(','));
        if (at_ < text_.size())
            fail(at_, "',' and another key, or the end");
        return object;
    }

  private:
    [[noreturn]] void fail(std::size_t position, const std::string& expected) const {
        throw PathError("object path, position " + std::to_string(position + 1) + ": expected " + expected);
    }

    bool take(char c) {
        const bool there = at_ < text_.size() && text_[at_] == c;
        at_ += there ? 1 : 0;
        return there;
    }

    void expect(char c, const char* expected) {
        if (!take(c))
            fail(at_, expected);
    }

    std::string up_to(char end, const char* expected) {
        const std::size_t start = at_;
        const std::size_t stop = text_.find(end, start);
        if (stop == std::string_view::npos || stop == start)
            fail(start, expected);
        at_ = stop + 1;
        return std::string(text_.substr(start, stop - start));
    }

    std::string identifier(const char* expected) {
        const std::size_t start = at_;
        while (at_ < text_.size() && (is_letter(text_[at_]) || (at_ > start && is_digit(text_[at_]))))
            ++at_;
        if (at_ == start)
            fail(start, expected);
        return std::string(text_.substr(start, at_ - start));
    }

    /// Where a host begins; 0 if there is none.
    std::size_t host_position() const {
        for (const std::string_view before : {"//", "http://", "https://"})
            if (text_.starts_with(before))
                return before.size();
        return 0;
    }

    Property key(const Object& object) {
        const std::size_t start = at_;
        Property key;
        key.name = identifier("a key name");
        if (object.key(key.name) != nullptr)
            fail(start, "a key other than '" + key.name + "', which was given before");
        expect('=', "'=' and the key's value");
        if (at_ < text_.size() && text_[at_] == '"')
            read_quoted(key, !is_reference_ || is_reference_(object.class_name, key.name));
        else
            read_word(key);
        return key;
    }

    void read_quoted(Property& key, bool may_be_reference) {
        const std::size_t start = at_++;
        std::string content;
        while (!take('"')) {
            if (take('\\') && (at_ == text_.size() || (text_[at_] != '"' && text_[at_] != '\\')))
                fail(at_, "'\"' or '\\' after the backslash");
            if (at_ == text_.size())
                fail(at_, "'\"' to end the value that begins at position " + std::to_string(start + 1));
            content += text_[at_++];
        }
        key.type = "string";
        if (auto reference = may_be_reference ? as_reference(content) : nullptr) {
            key.type = "reference";
            key.value.data = std::move(reference);
        } else {
            key.value.data = std::move(content);
        }
    }

    Value::Reference as_reference(const std::string& content) const {
        if (content.find('=') == std::string::npos)
            return nullptr;
        try {
            Object path = parse_path(content, is_reference_);
            return path.keys.empty() ? nullptr : std::make_shared<const Object>(std::move(path));
        } catch (const PathError&) {
            return nullptr;
        }
    }

    void read_word(Property& key) {
        const std::size_t start = at_;
        at_ = std::min(text_.find(',', start), text_.size());
        const std::string_view word = text_.substr(start, at_ - start);
        if (same_name(word, "TRUE") || same_name(word, "FALSE")) {
            key.type = "boolean";
            key.value.data = same_name(word, "TRUE");
        } else if (!read_number<std::uint64_t>(word, "uint64", key) &&
                   !read_number<std::int64_t>(word, "sint64", key) &&
                   !(is_real(word) && read_number<double>(word, "real64", key))) {
            fail(start, "a quoted text, a number of at most 64 bits, TRUE or FALSE");
        }
    }

    /// Digits with a point or an exponent; leaves out "inf", "nan" and integers that are too large.
    static bool is_real(std::string_view word) {
        return word.find_first_of(".eE") != std::string_view::npos &&
               word.find_first_not_of("0123456789.eE+-") == std::string_view::npos;
    }

    template <class Number>
    static bool read_number(std::string_view word, const char* type, Property& key) {
        const auto number = whole_number<Number>(word);
        if (!number)
            return false;
        key.type = type;
        key.value.data = *number;
        return true;
    }

    std::string_view text_;
    const IsReference& is_reference_;
    std::size_t at_ = 0;
};

} // namespace

std::string path_text(const Object& object) {
    std::string text;
    if (object.host && !object.host->empty())
        text += "//" + *object.host + "/";
    if (!object.name_space.empty())
        text += object.name_space + ":";
    text += object.class_name;
    char separator = '.';
    for (const Property& key : object.keys) {
        text += separator + key.name + "=" + std::visit(KeyWriter(), key.value.data);
        separator = ',';
    }
    return text;
}

Object parse_path(std::string_view text, const IsReference& is_reference) {
    return PathReader(text, is_reference).read();
}

} // namespace cmpihost
