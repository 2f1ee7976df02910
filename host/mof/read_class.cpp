#include "host/mof/read_class.h"

#include "host/mof/read_qualifiers.h"
#include "host/mof/read_values.h"
#include "host/mof/refusal.h"
#include "host/mof/typed_value.h"

namespace cmpihost::mof {

namespace {

/// What properties and methods begin with.
struct Feature {
    std::vector<Qualifier> qualifiers;
    Type type;
    Token name;
};

ParameterDeclaration read_parameter(Tokens& tokens, const Builder& builder, const std::string& method) {
    ParameterDeclaration parameter;
    parameter.qualifiers = read_qualifiers(tokens, builder);
    Type type = read_type(tokens, "a parameter of method " + method);
    parameter.type = std::move(type.name);
    parameter.reference_class = std::move(type.reference_class);
    parameter.name = tokens.expect(Token::Kind::name, "a parameter's name").text;
    if (const auto size = read_array_size(tokens, parameter.name)) {
        parameter.array_size = *size;
        parameter.type += "[]";
    }
    return parameter;
}

MethodDeclaration read_method(Tokens& tokens, const Builder& builder, Feature feature) {
    const std::string& name = feature.name.text;
    MethodDeclaration method{name, feature.type.name, {}, std::move(feature.qualifiers), {}, false, feature.name.place};
    if (method.type == "reference")
        throw Refusal(method.place, "method " + name + " returns a reference, expected another type");
    tokens.take();
    if (!tokens.next().is_mark(')')) {
        do {
            const Place place = tokens.next().place;
            ParameterDeclaration parameter = read_parameter(tokens, builder, name);
            for (const ParameterDeclaration& other : method.parameters)
                if (same_name(other.name, parameter.name))
                    throw Refusal(place, "parameter " + parameter.name + " of method " + name + " is there twice");
            method.parameters.push_back(std::move(parameter));
        } while (tokens.take_mark(','));
    }
    tokens.expect_mark(')', "at the end of method " + name);
    tokens.expect_mark(';', "at the end of method " + name);
    return method;
}

PropertyDeclaration read_property(Tokens& tokens, Feature feature) {
    PropertyDeclaration property;
    property.name = feature.name.text;
    property.place = feature.name.place;
    property.qualifiers = std::move(feature.qualifiers);
    property.type = std::move(feature.type.name);
    property.reference_class = std::move(feature.type.reference_class);
    if (const auto size = read_array_size(tokens, property.name)) {
        property.array_size = *size;
        property.type += "[]";
    }
    if (tokens.take_mark('=')) {
        const Place place = tokens.next().place;
        auto value = typed_value(property.type, read_value(tokens));
        if (!value)
            throw Refusal(place,
                          "default of property " + property.name + ", expected a value of type " + property.type);
        property.default_value = std::move(*value);
    }
    tokens.expect_mark(';', "at the end of property " + property.name);
    return property;
}

void read_feature(Tokens& tokens, const Builder& builder, ClassDeclaration& declaration) {
    Feature feature;
    feature.qualifiers = read_qualifiers(tokens, builder);
    feature.type = read_type(tokens, "a property or }");
    feature.name = tokens.expect(Token::Kind::name, "a property's name");
    if (tokens.next().is_mark('('))
        declaration.methods.push_back(read_method(tokens, builder, std::move(feature)));
    else
        declaration.properties.push_back(read_property(tokens, std::move(feature)));
}

} // namespace

ClassDeclaration read_class(Tokens& tokens, const Builder& builder) {
    ClassDeclaration declaration;
    declaration.qualifiers = read_qualifiers(tokens, builder);
    if (!tokens.take_word("class"))
        tokens.refuse("class");
    const Token name = tokens.expect(Token::Kind::name, "a class's name");
    declaration.name = name.text;
    declaration.place = name.place;
    if (tokens.take_mark(':'))
        declaration.superclass = tokens.expect(Token::Kind::name, "a superclass's name").text;
    tokens.expect_mark('{', "before the properties of class " + name.text);
    while (!tokens.take_mark('}'))
        read_feature(tokens, builder, declaration);
    tokens.expect_mark(';', "at the end of class " + name.text);
    return declaration;
}

} // namespace cmpihost::mof
