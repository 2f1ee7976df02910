#include "host/mof/reader.h"

#include "host/mof/read_class.h"
#include "host/mof/read_qualifiers.h"
#include "host/mof/read_values.h"
#include "host/mof/refusal.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace cmpihost::mof {

namespace {

InstanceDeclaration read_instance(Tokens& tokens, const Builder& builder) {
    if (!tokens.take_word("of"))
        tokens.refuse("of");
    InstanceDeclaration instance;
    const Token name = tokens.expect(Token::Kind::name, "a class's name");
    instance.class_name = name.text;
    instance.place = name.place;
    if (tokens.take_word("as"))
        instance.alias = tokens.expect(Token::Kind::alias, "an alias ($...)").text;
    tokens.expect_mark('{', "before the values of an instance of " + name.text);
    while (!tokens.take_mark('}')) {
        read_qualifiers(tokens, builder); // instances have none any more
        NamedValue property{tokens.expect(Token::Kind::name, "a property's name or }").text, {}};
        tokens.expect_mark('=', "behind " + property.name);
        property.value = read_value(tokens);
        tokens.expect_mark(';', "behind the value of " + property.name);
        instance.properties.push_back(std::move(property));
    }
    tokens.expect_mark(';', "at the end of an instance of " + name.text);
    return instance;
}

void read_pragma(Tokens& tokens, Builder& builder) {
    const Token pragma = tokens.take();
    if (!same_name(pragma.text, "#pragma"))
        throw Refusal(pragma.place, pragma.text + ", expected #pragma");
    const Token name = tokens.expect(Token::Kind::name, "a pragma's name");
    tokens.expect_mark('(', "behind pragma " + name.text);
    const Token argument = tokens.expect(Token::Kind::string, "a string");
    tokens.expect_mark(')', "behind the string");
    if (!same_name(name.text, "include"))
        return; // the others tell a server where to put what it compiles
    const auto included = std::filesystem::path(pragma.place.file).parent_path() / argument.text;
    try {
        read_file(included.string(), builder);
    } catch (const Refusal& refusal) {
        if (refusal.error().place.line != 0)
            throw;
        throw Refusal(argument.place, "include of " + refusal.error().text());
    }
}

void read_declaration(Tokens& tokens, Builder& builder) {
    if (tokens.next().kind == Token::Kind::pragma)
        read_pragma(tokens, builder);
    else if (tokens.take_word("qualifier"))
        builder.add(read_qualifier_declaration(tokens));
    else if (tokens.take_word("instance"))
        builder.add(read_instance(tokens, builder));
    else if (tokens.next().is_mark('[') || tokens.next().is_word("class"))
        builder.add(read_class(tokens, builder));
    else
        tokens.refuse("#pragma, a class, an instance or a qualifier");
}

} // namespace

void read_text(const std::string& name, std::string_view text, Builder& builder) {
    Tokens tokens(name, text);
    while (tokens.next().kind != Token::Kind::end)
        read_declaration(tokens, builder);
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
