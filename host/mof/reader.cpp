#include "host/mof/reader.h"

#include "host/mof/numbers.h"
#include "host/mof/refusal.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace cmpihost::mof {

namespace {

constexpr std::array<std::string_view, 13> simple_types = {"uint8",  "sint8",   "uint16",  "sint16", "uint32",
                                                           "sint32", "uint64",  "sint64",  "real32", "real64",
                                                           "string", "boolean", "datetime"};

/// A type's own spelling; empty if it is no type.
std::string_view simple_type(std::string_view name) {
    if (same_name(name, "char16"))
        return "char16";
    const auto* type = std::find_if(simple_types.begin(), simple_types.end(),
                                    [&](std::string_view known) { return same_name(known, name); });
    return type == simple_types.end() ? std::string_view() : *type;
}

class Reader {
  public:
    Reader(const std::string& name, std::string_view text, Builder& builder)
        : lexer_(name, text), builder_(builder), token_(lexer_.next()) {}

    void read();

  private:
    Token take();
    bool take_mark(char mark);
    Token expect(Token::Kind kind, const char* expected);
    void expect_mark(char mark, const std::string& where);
    [[noreturn]] void refuse(const std::string& expected) const;

    void read_pragma();
    void read_qualifier_declaration();
    void read_class(std::vector<NamedValue> qualifiers);
    PropertyDeclaration read_feature();
    void read_type(PropertyDeclaration& feature);
    void read_rest_of_property(PropertyDeclaration& feature);
    void read_instance();

    std::vector<NamedValue> read_qualifiers();
    NamedValue read_qualifier();
    void skip_parameters(const Token& method);
    Value read_value();
    Value read_single_value();
    Value read_array();
    Value read_strings();

    Lexer lexer_;
    Builder& builder_;
    Token token_; // the next one
};

// ---------------------------------------------------------------------------------------------- tokens

Token Reader::take() {
    Token taken = std::move(token_);
    token_ = lexer_.next();
    return taken;
}

bool Reader::take_mark(char mark) {
    if (!token_.is_mark(mark))
        return false;
    take();
    return true;
}

void Reader::refuse(const std::string& expected) const {
    throw Refusal(token_.place, token_.shown() + ", expected " + expected);
}

Token Reader::expect(Token::Kind kind, const char* expected) {
    if (token_.kind != kind)
        refuse(expected);
    return take();
}

void Reader::expect_mark(char mark, const std::string& where) {
    if (!take_mark(mark))
        refuse(std::string(1, mark) + " " + where);
}

// ---------------------------------------------------------------------------------------------- values

Value Reader::read_strings() {
    std::string text;
    while (token_.kind == Token::Kind::string)
        text += take().text;
    return {text};
}

Value Reader::read_single_value() {
    if (token_.kind == Token::Kind::string)
        return read_strings();
    if (token_.kind == Token::Kind::number) {
        auto number = parse_number(token_.text);
        if (!number)
            refuse("a number of at most 64 bits");
        take();
        return std::move(*number);
    }
    if (token_.kind == Token::Kind::character || token_.kind == Token::Kind::alias)
        return {take().text};
    if (token_.is_word("true") || token_.is_word("false"))
        return {take().is_word("true")};
    if (!token_.is_word("null"))
        refuse("a value (a string, a number, TRUE, FALSE or NULL)");
    take();
    return {};
}

Value Reader::read_array() {
    Value::Array values;
    take();
    if (take_mark('}'))
        return {values};
    do
        values.push_back(read_single_value());
    while (take_mark(','));
    expect_mark('}', "or , in a list of values");
    return {values};
}

Value Reader::read_value() {
    return token_.is_mark('{') ? read_array() : read_single_value();
}

// ---------------------------------------------------------------------------------------------- qualifiers

NamedValue Reader::read_qualifier() {
    NamedValue qualifier{expect(Token::Kind::name, "a qualifier's name").text, {true}};
    if (token_.is_mark('{')) {
        qualifier.value = read_array();
    } else if (take_mark('(')) {
        qualifier.value = read_value();
        expect_mark(')', "behind the value of qualifier " + qualifier.name);
    }
    if (take_mark(':'))
        while (token_.kind == Token::Kind::name)
            take(); // flavors
    return qualifier;
}

std::vector<NamedValue> Reader::read_qualifiers() {
    std::vector<NamedValue> qualifiers;
    if (!take_mark('['))
        return qualifiers;
    do
        qualifiers.push_back(read_qualifier());
    while (take_mark(','));
    expect_mark(']', "or , behind a qualifier");
    return qualifiers;
}

void Reader::read_qualifier_declaration() {
    take();
    const Token name = expect(Token::Kind::name, "a qualifier's name");
    while (token_.kind != Token::Kind::end && !token_.is_mark(';'))
        take();
    expect_mark(';', "at the end of qualifier " + name.text);
}

// ---------------------------------------------------------------------------------------------- classes

void Reader::skip_parameters(const Token& method) {
    unsigned depth = 0;
    do {
        depth += token_.is_mark('(') ? 1U : 0U;
        depth -= token_.is_mark(')') ? 1U : 0U;
        if (token_.kind == Token::Kind::end)
            refuse(") at the end of method " + method.text);
        take();
    } while (depth != 0);
}

void Reader::read_type(PropertyDeclaration& feature) {
    const Token type = expect(Token::Kind::name, "a property or }");
    feature.type = simple_type(type.text);
    if (token_.is_word("ref")) {
        take();
        feature.type = "reference";
        feature.reference_class = type.text;
    } else if (feature.type.empty()) {
        throw Refusal(type.place, type.text + ", expected a type (string, boolean, datetime, char16, uint8 to uint64, "
                                              "sint8 to sint64, real32, real64) or a class and REF");
    }
}

/// What stands behind a property's name.
void Reader::read_rest_of_property(PropertyDeclaration& feature) {
    if (take_mark('[')) {
        if (token_.kind == Token::Kind::number)
            take();
        expect_mark(']', "behind " + feature.name);
        feature.type += "[]";
    }
    if (take_mark('='))
        feature.default_value = read_value();
    expect_mark(';', "at the end of property " + feature.name);
}

/// A property, a reference, or a method; of a method the name is left empty.
PropertyDeclaration Reader::read_feature() {
    PropertyDeclaration feature;
    feature.qualifiers = read_qualifiers();
    read_type(feature);
    const Token name = expect(Token::Kind::name, "a property's name");
    feature.place = name.place;
    if (token_.is_mark('(')) {
        skip_parameters(name);
        expect_mark(';', "at the end of method " + name.text);
        return feature;
    }
    feature.name = name.text;
    read_rest_of_property(feature);
    return feature;
}

void Reader::read_class(std::vector<NamedValue> qualifiers) {
    if (!token_.is_word("class"))
        refuse("class");
    take();
    const Token name = expect(Token::Kind::name, "a class's name");
    ClassDeclaration declaration;
    declaration.name = name.text;
    declaration.place = name.place;
    declaration.qualifiers = std::move(qualifiers);
    if (take_mark(':'))
        declaration.superclass = expect(Token::Kind::name, "a superclass's name").text;
    expect_mark('{', "before the properties of class " + name.text);
    while (!take_mark('}')) {
        PropertyDeclaration feature = read_feature();
        if (!feature.name.empty())
            declaration.properties.push_back(std::move(feature));
    }
    expect_mark(';', "at the end of class " + name.text);
    builder_.add(std::move(declaration));
}

// ---------------------------------------------------------------------------------------------- the rest

void Reader::read_instance() {
    take();
    if (!token_.is_word("of"))
        refuse("of");
    take();
    InstanceDeclaration instance;
    const Token name = expect(Token::Kind::name, "a class's name");
    instance.class_name = name.text;
    instance.place = name.place;
    if (token_.is_word("as")) {
        take();
        expect(Token::Kind::alias, "an alias ($...)");
    }
    expect_mark('{', "before the values of an instance of " + name.text);
    while (!take_mark('}')) {
        read_qualifiers();
        NamedValue property{expect(Token::Kind::name, "a property's name or }").text, {}};
        expect_mark('=', "behind " + property.name);
        property.value = read_value();
        expect_mark(';', "behind the value of " + property.name);
        instance.properties.push_back(std::move(property));
    }
    expect_mark(';', "at the end of an instance of " + name.text);
    builder_.add(std::move(instance));
}

void Reader::read_pragma() {
    const Token pragma = take();
    if (!same_name(pragma.text, "#pragma"))
        throw Refusal(pragma.place, pragma.text + ", expected #pragma");
    const Token name = expect(Token::Kind::name, "a pragma's name");
    expect_mark('(', "behind pragma " + name.text);
    const Token argument = expect(Token::Kind::string, "a string");
    expect_mark(')', "behind the string");
    if (!same_name(name.text, "include"))
        return; // the others tell a server where to put what it compiles
    const auto included = std::filesystem::path(pragma.place.file).parent_path() / argument.text;
    try {
        read_file(included.string(), builder_);
    } catch (const Refusal& refusal) {
        if (refusal.error().place.line != 0)
            throw;
        throw Refusal(argument.place, "include of " + refusal.error().text());
    }
}

void Reader::read() {
    while (token_.kind != Token::Kind::end) {
        if (token_.kind == Token::Kind::pragma)
            read_pragma();
        else if (token_.is_word("qualifier"))
            read_qualifier_declaration();
        else if (token_.is_word("instance"))
            read_instance();
        else if (token_.is_mark('[') || token_.is_word("class"))
            read_class(read_qualifiers());
        else
            refuse("#pragma, a class, an instance or a qualifier");
    }
}

} // namespace

void read_text(const std::string& name, std::string_view text, Builder& builder) {
    Reader(name, text, builder).read();
}

void read_file(const std::string& path, Builder& builder) {
    std::error_code error;
    const auto canonical = std::filesystem::canonical(path, error);
    if (error)
        throw Refusal({path}, "cannot be read: " + error.message());
    if (!builder.is_new_file(canonical.string()))
        return;
    std::ifstream file(canonical, std::ios::binary);
    std::ostringstream text;
    if (!file || !(text << file.rdbuf()))
        throw Refusal({path}, "cannot be read, expected a file with text");
    read_text(path, text.str(), builder);
}

} // namespace cmpihost::mof
