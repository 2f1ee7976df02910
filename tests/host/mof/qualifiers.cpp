// Qualifiers: what is declared of them, how they reach subclasses, and what they say of embedded objects.
#include "tests/host/mof/mof_files.h"
#include "tests/host/mof/mof_text.h"

#include <gtest/gtest.h>

namespace cmpihost::mof {
namespace {

std::string shown_value(const Value& value) {
    if (const bool* truth = std::get_if<bool>(&value.data))
        return *truth ? "true" : "false";
    if (const auto* number = std::get_if<std::uint64_t>(&value.data))
        return std::to_string(*number);
    if (const auto* number = std::get_if<std::int64_t>(&value.data))
        return "signed " + std::to_string(*number);
    if (const auto* text = std::get_if<std::string>(&value.data))
        return *text;
    return std::holds_alternative<std::monostate>(value.data) ? "NULL" : "other";
}

/// "NAME TYPE VALUE", and "propagated" or what differs from the flavors that the standard presumes.
Lines shown_qualifiers(const std::vector<Qualifier>& qualifiers) {
    Lines lines;
    for (const Qualifier& qualifier : qualifiers)
        lines.push_back(
            qualifier.name + ' ' + qualifier.type + ' ' + shown_value(qualifier.value) +
            (qualifier.flavors.overridable ? "" : " fixed") + (qualifier.flavors.to_subclass ? "" : " restricted") +
            (qualifier.flavors.translatable ? " translatable" : "") + (qualifier.propagated ? " propagated" : ""));
    return lines;
}

// ---------------------------------------------------------------------------------------------- declarations

TEST(MofQualifiers, DeclarationHasTypeDefaultScopesAndFlavors) {
    const Schema schema = read_mof("Qualifier Q : sint32[4] = {-1, 2}, Scope(class, method), "
                                   "Flavor(DisableOverride, Restricted, Translatable, ToInstance);\n"
                                   "Qualifier Any : string;");
    const QualifierDeclaration* q = schema.qualifier("q");
    ASSERT_NE(q, nullptr);
    EXPECT_EQ(q->type, "sint32[]");
    EXPECT_EQ(q->array_size, 4U);
    EXPECT_EQ(q->default_value, (Value{Value::Array{{std::int64_t{-1}}, {std::int64_t{2}}}}));
    EXPECT_EQ(q->scopes.to_string(), "0100001");
    EXPECT_EQ(q->flavors, (Flavors{false, false, true, true}));
    EXPECT_TRUE(schema.qualifier("Any")->scopes.all());
    EXPECT_EQ(schema.qualifier("Any")->flavors, Flavors());
    EXPECT_EQ(schema.qualifier("None"), nullptr);
}

TEST(MofQualifiers, EveryScopeHasItsWord) {
    for (std::size_t i = 0; i < scope_names.size(); ++i) {
        const Schema schema = read_mof("Qualifier Q : boolean, Scope(" + std::string(scope_names[i]) + ");");
        EXPECT_EQ(schema.qualifier("Q")->scopes, Scopes(1U << i)) << scope_names[i];
    }
}

TEST(MofQualifiers, AFileMayDeclareWhatTheProgramKnows) {
    const Schema schema = read_mof("Qualifier KEY : boolean = true, Scope(any);");
    EXPECT_EQ(schema.qualifiers().size(), known_qualifiers().size());
    EXPECT_EQ(schema.qualifier("Key")->name, "KEY");
    EXPECT_EQ(schema.qualifier("Key")->default_value, Value{true});
    EXPECT_EQ(schema.qualifier("Key")->place.text(), "t.mof:1:11");
}

TEST(MofQualifiers, KnownOnesAreAsTheStandardHasThem) {
    for (const QualifierDeclaration& known : known_qualifiers()) {
        SCOPED_TRACE(known.name);
        const QualifierDeclaration* declared = provider_schema().qualifier(known.name);
        ASSERT_NE(declared, nullptr);
        EXPECT_EQ(declared->name, known.name);
        EXPECT_EQ(declared->type, known.type);
        EXPECT_EQ(declared->default_value, known.default_value);
        EXPECT_EQ(declared->scopes, known.scopes);
        EXPECT_EQ(declared->flavors, known.flavors);
        EXPECT_NE(declared->place.line, 0U);
    }
    EXPECT_EQ(known_qualifiers().size(), 7U);
}

TEST(MofQualifiers, EveryOneInOurSchemaIsDeclaredInAFile) {
    unsigned seen = 0;
    const auto look = [&](const std::vector<Qualifier>& qualifiers) {
        for (const Qualifier& qualifier : qualifiers) {
            const QualifierDeclaration* declared = provider_schema().qualifier(qualifier.name);
            ASSERT_NE(declared, nullptr) << qualifier.name;
            EXPECT_EQ(qualifier.name, declared->name);
            ++seen;
        }
    };
    for (const ClassDeclaration& declaration : provider_schema().classes()) {
        look(declaration.qualifiers);
        for (const PropertyDeclaration& property : declaration.properties)
            look(property.qualifiers);
    }
    EXPECT_GT(seen, 500U);
}

// ---------------------------------------------------------------------------------------------- uses

TEST(MofQualifiers, HaveTypeAndFlavorsOfTheirDeclaration) {
    const Schema schema = read_mof("Qualifier Low : sint64, Scope(any), Flavor(Translatable);\n"
                                   "Qualifier Words : string[], Scope(any);\n"
                                   "[low(5), Words, Abstract] class A {};");
    EXPECT_EQ(shown_qualifiers(schema.find("A")->qualifiers),
              (Lines{"low sint64 signed 5 translatable", "Words string[] NULL", "Abstract boolean true restricted"}));
}

TEST(MofQualifiers, FlavorsAtTheUseWin) {
    const Schema schema = read_mof("Qualifier Q : boolean, Scope(any), Flavor(DisableOverride, Restricted);\n"
                                   "[Q : EnableOverride ToSubclass Translatable] class A {}; class B : A {};");
    EXPECT_EQ(shown_qualifiers(schema.find("A")->qualifiers), Lines{"Q boolean true translatable"});
    EXPECT_EQ(shown_qualifiers(schema.find("B")->qualifiers), Lines{"Q boolean true translatable propagated"});
}

TEST(MofQualifiers, UndeclaredOnesHaveTheTypeOfTheirValue) {
    const Schema schema = read_mof("[A, B(1), C(-1), D(4294967296), E(-2147483649), F(1.5), G(\"x\"), H(NULL), I{1, 2},"
                                   " J{1, \"x\"}, K{}] class X {};");
    EXPECT_EQ(shown_qualifiers(schema.find("X")->qualifiers),
              (Lines{"A boolean true", "B uint32 1", "C sint32 signed -1", "D uint64 4294967296",
                     "E sint64 signed -2147483649", "F real64 other", "G string x", "H string NULL", "I uint32[] other",
                     "J string[] other", "K string[] other"}));
}

// ---------------------------------------------------------------------------------------------- subclasses

constexpr const char* flavored = "Qualifier Free : uint32, Scope(any);\n"
                                 "Qualifier Fixed : uint32, Scope(any), Flavor(DisableOverride);\n"
                                 "Qualifier Here : uint32, Scope(any), Flavor(Restricted);\n"
                                 "[Free(1), Fixed(2), Here(3)] class Top {\n"
                                 "    [Free(4), Fixed(5), Here(6)] string p;\n"
                                 "    [Free(7), Here(8)] uint8 m([Free(9), Here(10)] string a);\n"
                                 "};\n";

TEST(MofQualifiers, SpreadToSubclassesUnlessRestricted) {
    const Schema schema = read_mof(std::string(flavored) + "class Middle : Top {}; class Bottom : Middle {};");
    for (const char* name : {"Middle", "Bottom"}) {
        const ClassDeclaration& declaration = *schema.find(name);
        EXPECT_EQ(shown_qualifiers(declaration.qualifiers),
                  (Lines{"Free uint32 1 propagated", "Fixed uint32 2 fixed propagated"}));
        EXPECT_EQ(shown_qualifiers(declaration.property("p")->qualifiers),
                  (Lines{"Free uint32 4 propagated", "Fixed uint32 5 fixed propagated"}));
        EXPECT_EQ(shown_qualifiers(declaration.method("m")->qualifiers), Lines{"Free uint32 7 propagated"});
        EXPECT_EQ(shown_qualifiers(declaration.method("m")->parameters[0].qualifiers),
                  Lines{"Free uint32 9 propagated"});
    }
}

TEST(MofQualifiers, WhatASubclassSaysAnewStandsFirst) {
    const Schema schema = read_mof(std::string(flavored) + "[Here(0), Fixed(2), Free(0)] class Sub : Top {\n"
                                                           "    [Override(\"p\"), Free(0)] string P;\n"
                                                           "    [Override(\"m\")] uint8 m([Free(0)] string A);\n};\n"
                                                           "class Bottom : Sub {};");
    const ClassDeclaration& sub = *schema.find("Sub");
    EXPECT_EQ(shown_qualifiers(sub.qualifiers),
              (Lines{"Here uint32 0 restricted", "Fixed uint32 2 fixed", "Free uint32 0"}));
    EXPECT_EQ(shown_qualifiers(sub.property("p")->qualifiers),
              (Lines{"Override string p restricted", "Free uint32 0", "Fixed uint32 5 fixed propagated"}));
    EXPECT_EQ(shown_qualifiers(sub.method("m")->qualifiers),
              (Lines{"Override string m restricted", "Free uint32 7 propagated"}));
    EXPECT_EQ(shown_qualifiers(sub.method("m")->parameters[0].qualifiers), Lines{"Free uint32 0"});
    EXPECT_EQ(shown_qualifiers(schema.find("Bottom")->property("p")->qualifiers),
              (Lines{"Free uint32 0 propagated", "Fixed uint32 5 fixed propagated"}));
}

TEST(MofQualifiers, KeyOfAnOverriddenPropertyIsTold) {
    const Schema schema = read_mof("class X { [Key] string k; }; class Y : X { [Override(\"k\")] string k; };");
    EXPECT_EQ(shown_qualifiers(schema.find("Y")->property("k")->qualifiers),
              (Lines{"Override string k restricted", "Key boolean true fixed propagated"}));
}

TEST(MofQualifiers, OverriddenPropertiesAreNotPropagated) {
    const Schema schema = read_mof("class X { string a; string b; uint8 m(); uint8 n(); };"
                                   "class Y : X { [Override(\"a\")] string a; [Override(\"m\")] uint8 m(); };");
    const ClassDeclaration& y = *schema.find("Y");
    EXPECT_FALSE(y.property("a")->propagated);
    EXPECT_TRUE(y.property("b")->propagated);
    EXPECT_FALSE(y.method("m")->propagated);
    EXPECT_TRUE(y.method("n")->propagated);
    EXPECT_EQ(y.property("a")->origin, "X");
    EXPECT_EQ(y.method("m")->origin, "X");
    EXPECT_FALSE(schema.find("X")->property("b")->propagated);
}

// ---------------------------------------------------------------------------------------------- embedded objects

TEST(MofQualifiers, EmbeddedObjectsAreStringsThatAreSaidToBe) {
    const Schema schema =
        read_mof("class A { [EmbeddedObject] string a; [EmbeddedInstance(\"A\")] string b[]; string c;"
                 " [EmbeddedObject(false)] string d; [EmbeddedInstance(NULL)] string e; };"
                 "class B : A { [Override(\"a\")] string a; };");
    const auto embedded = [&](const char* name) { return schema.find("B")->property(name)->embedded; };
    EXPECT_EQ(embedded("a"), Embedded::object);
    EXPECT_EQ(embedded("b"), Embedded::instance);
    EXPECT_EQ(embedded("c"), Embedded::no);
    EXPECT_EQ(embedded("d"), Embedded::no);
    EXPECT_EQ(embedded("e"), Embedded::no);
}

} // namespace
} // namespace cmpihost::mof
