#include "host/mof/read_qualifiers.h"

#include "host/mof/read_values.h"
#include "host/mof/refusal.h"
#include "host/mof/typed_value.h"

#include <algorithm>

namespace cmpihost::mof {

namespace {

void read_flavor(Tokens& tokens, Flavors& flavors) {
    if (tokens.next().kind != Token::Kind::name || !set_flavor(flavors, tokens.next().text))
        tokens.refuse("a flavor (EnableOverride, DisableOverride, ToSubclass, Restricted or Translatable)");
    tokens.take();
}

Qualifier read_qualifier(Tokens& tokens, const Builder& builder) {
    const Token name = tokens.expect(Token::Kind::name, "a qualifier's name");
    std::optional<Value> value;
    if (tokens.next().is_mark('{')) {
        value = read_list(tokens);
    } else if (tokens.take_mark('(')) {
        value = read_value(tokens);
        tokens.expect_mark(')', "behind the value of qualifier " + name.text);
    }
    Qualifier qualifier = builder.qualifier(name.text, std::move(value), name.place);
    if (tokens.take_mark(':')) {
        do
            read_flavor(tokens, qualifier.flavors);
        while (tokens.next().kind == Token::Kind::name);
    }
    return qualifier;
}

void read_scope(Tokens& tokens, Scopes& scopes) {
    const auto* found = std::find_if(scope_names.begin(), scope_names.end(),
                                     [&](std::string_view name) { return tokens.next().is_word(name); });
    if (found != scope_names.end())
        scopes.set(static_cast<std::size_t>(found - scope_names.begin()));
    else if (tokens.next().is_word("any"))
        scopes.set();
    else
        tokens.refuse("a scope (class, association, indication, property, reference, method, parameter or any)");
    tokens.take();
}

/// What stands in parentheses behind Scope or Flavor.
template <class Read>
void read_words(Tokens& tokens, const std::string& of, Read read) {
    tokens.take();
    tokens.expect_mark('(', "behind " + of);
    do
        read();
    while (tokens.take_mark(','));
    tokens.expect_mark(')', "or , behind a " + of);
}

void read_type_and_default(Tokens& tokens, QualifierDeclaration& declaration) {
    const Token type = tokens.expect(Token::Kind::name, "a type");
    declaration.type = simple_type(type.text);
    if (declaration.type.empty())
        throw Refusal(type.place, type.text + ", expected the type of qualifier " + declaration.name);
    if (const auto size = read_array_size(tokens, declaration.name)) {
        declaration.array_size = *size;
        declaration.type += "[]";
    }
    if (!tokens.take_mark('='))
        return;
    const Place place = tokens.next().place;
    auto value = typed_value(declaration.type, read_value(tokens));
    if (!value)
        throw Refusal(place,
                      "default of qualifier " + declaration.name + ", expected a value of type " + declaration.type);
    declaration.default_value = std::move(*value);
}

} // namespace

std::vector<Qualifier> read_qualifiers(Tokens& tokens, const Builder& builder) {
    std::vector<Qualifier> qualifiers;
    if (!tokens.take_mark('['))
        return qualifiers;
    do {
        const Place place = tokens.next().place;
        qualifiers.push_back(read_qualifier(tokens, builder));
        if (find_qualifier(qualifiers, qualifiers.back().name) != &qualifiers.back())
            throw Refusal(place, "qualifier " + qualifiers.back().name + " is there twice");
    } while (tokens.take_mark(','));
    tokens.expect_mark(']', "or , behind a qualifier");
    return qualifiers;
}

QualifierDeclaration read_qualifier_declaration(Tokens& tokens) {
    const Token name = tokens.expect(Token::Kind::name, "a qualifier's name");
    QualifierDeclaration declaration;
    declaration.name = name.text;
    declaration.place = name.place;
    tokens.expect_mark(':', "behind qualifier " + name.text);
    read_type_and_default(tokens, declaration);
    while (tokens.take_mark(',')) {
        if (tokens.next().is_word("scope"))
            read_words(tokens, "scope", [&] { read_scope(tokens, declaration.scopes); });
        else if (tokens.next().is_word("flavor"))
            read_words(tokens, "flavor", [&] { read_flavor(tokens, declaration.flavors); });
        else
            tokens.refuse("Scope or Flavor of qualifier " + name.text);
    }
    tokens.expect_mark(';', "at the end of qualifier " + name.text);
    if (declaration.scopes.none())
        declaration.scopes.set();
    return declaration;
}

} // namespace cmpihost::mof
