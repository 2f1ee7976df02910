// MOF text to classes: what is read, what classes inherit, and the message of every refusal.
#include "host/mof/numbers.h"
#include "tests/host/mof/mof_text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>

namespace cmpihost::mof {
namespace {

std::string refusal(std::string_view text) {
    const auto result = Schema::read_text("t.mof", text);
    const Error* error = std::get_if<Error>(&result);
    return error ? error->text() : "(read)";
}

std::string text_of(const Value& value) {
    const auto* text = std::get_if<std::string>(&value.data);
    return text ? *text : "(no string)";
}

/// "KEY? TYPE NAME from ORIGIN" of every property.
std::vector<std::string> shown(const ClassDeclaration* declaration) {
    std::vector<std::string> lines;
    if (!declaration)
        return {"(no class)"};
    for (const PropertyDeclaration& property : declaration->properties)
        lines.push_back((property.key ? "key " : "") + property.type + ' ' + property.reference_class +
                        (property.reference_class.empty() ? "" : " ") + property.name + " from " + property.origin);
    return lines;
}

class Folder {
  public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "mof-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw std::runtime_error("no temporary folder");
        path_ = name;
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string write(const std::string& name, std::string_view text) const {
        const auto file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text;
        return file.string();
    }
    std::string path(const std::string& name) const { return (path_ / name).string(); }

  private:
    std::filesystem::path path_;
};

// ---------------------------------------------------------------------------------------------- what is read

TEST(MofReader, ReadsAPropertyOfEveryType) {
    const Schema schema =
        read_mof("class A { uint8 a; sint8 b; uint16 c; sint16 d; uint32 e; sint32 f; uint64 g; sint64 h; "
                 "real32 i; real64 j; string k; boolean l; datetime m; char16 n; };");
    EXPECT_EQ(shown(schema.find("A")),
              (Lines{"uint8 a from A", "sint8 b from A", "uint16 c from A", "sint16 d from A", "uint32 e from A",
                     "sint32 f from A", "uint64 g from A", "sint64 h from A", "real32 i from A", "real64 j from A",
                     "string k from A", "boolean l from A", "datetime m from A", "char16 n from A"}));
}

TEST(MofReader, ReadsArraysWithAndWithoutASize) {
    const Schema schema = read_mof("class A { uint8 a[]; string b[4]; };");
    EXPECT_EQ(shown(schema.find("A")), (Lines{"uint8[] a from A", "string[] b from A"}));
}

TEST(MofReader, TypesAndKeywordsAreReadInAnyCase) {
    const Schema schema = read_mof("[ASSOCIATION] CLASS A { [KEY] a ref x; [key] A Ref y; UInt16 z; };");
    EXPECT_EQ(shown(schema.find("a")),
              (Lines{"key reference a x from A", "key reference A y from A", "uint16 z from A"}));
}

TEST(MofReader, ReadsQualifiersOfEveryShape) {
    const Schema schema = read_mof("[Abstract, Version(\"2.4\"), MaxLen ( 0x10 ): ToSubclass DisableOverride, "
                                   "Values{\"a\" \"b\", \"c\"}, Terminal(false), None(NULL)] class A {};");
    const ClassDeclaration* a = schema.find("A");
    ASSERT_NE(a, nullptr);
    EXPECT_TRUE(a->abstract);
    ASSERT_EQ(a->qualifiers.size(), 6u);
    EXPECT_EQ(std::get<bool>(a->qualifiers[0].value.data), true);
    EXPECT_EQ(text_of(a->qualifiers[1].value), "2.4");
    EXPECT_EQ(std::get<std::uint64_t>(a->qualifiers[2].value.data), 16u);
    const auto& values = std::get<Value::Array>(a->qualifiers[3].value.data);
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(text_of(values[0]), "ab");
    EXPECT_EQ(text_of(values[1]), "c");
    EXPECT_EQ(std::get<bool>(a->qualifiers[4].value.data), false);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(a->qualifiers[5].value.data));
}

TEST(MofReader, AQualifierThatIsFalseIsOff) {
    const Schema schema = read_mof("[Abstract(FALSE)] class A { [Key(false)] string a; };");
    EXPECT_FALSE(schema.find("A")->abstract);
    EXPECT_EQ(shown(schema.find("A")), Lines{"string a from A"});
}

TEST(MofReader, ReadsDefaultValues) {
    const Schema schema =
        read_mof("class A { string a = \"x\"; uint16 b = 7; sint16 c = -7; boolean d = true; uint8 e[] = "
                 "{1, 2}; real32 f = 1.5; string g = NULL; uint8 h[] = {}; char16 i = 'z'; };");
    const auto value = [&](const char* name) { return schema.find("A")->property(name)->default_value; };
    EXPECT_EQ(text_of(value("a")), "x");
    EXPECT_EQ(std::get<std::uint64_t>(value("b").data), 7u);
    EXPECT_EQ(std::get<std::int64_t>(value("c").data), -7);
    EXPECT_EQ(std::get<bool>(value("d").data), true);
    EXPECT_EQ(std::get<Value::Array>(value("e").data).size(), 2u);
    EXPECT_EQ(std::get<double>(value("f").data), 1.5);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(value("g").data));
    EXPECT_TRUE(std::get<Value::Array>(value("h").data).empty());
    EXPECT_EQ(text_of(value("i")), "z");
}

TEST(MofReader, ResolvesEscapesInStrings) {
    const Schema schema = read_mof(R"(class A { string a = "\b\t\n\f\r\"\'\\ \x41; \xe9; \x20ac;"; };)");
    EXPECT_EQ(text_of(schema.find("A")->property("a")->default_value), "\b\t\n\f\r\"'\\ A; \xc3\xa9; \xe2\x82\xac;");
}

TEST(MofReader, SkipsCommentsAndPragmas) {
    const Schema schema = read_mof("// one\n/* two\n * class Z {}; **/\n#pragma namespace (\"root/x\")\n"
                                   "#pragma locale(\"en_US\")\n"
                                   "class A { string c; };");
    EXPECT_EQ(shown(schema.find("A")), Lines{"string c from A"});
    EXPECT_EQ(schema.classes().size(), 1u);
}

TEST(MofReader, ReadsInstances) {
    const Schema schema =
        read_mof("instance of A as $x { Name = \"n\"; [Q] Types = {2, 3}; Other = $x; None = NULL; };\n"
                 "instance of B {};");
    ASSERT_EQ(schema.instances().size(), 2u);
    const InstanceDeclaration& a = schema.instances()[0];
    EXPECT_EQ(a.class_name, "A");
    EXPECT_EQ(a.alias, "$x");
    EXPECT_EQ(text_of(*a.value("NAME")), "n");
    EXPECT_EQ(std::get<Value::Array>(a.value("Types")->data).size(), 2u);
    EXPECT_EQ(text_of(*a.value("Other")), "$x");
    EXPECT_TRUE(std::holds_alternative<std::monostate>(a.value("None")->data));
    EXPECT_EQ(a.value("Else"), nullptr);
    EXPECT_EQ(schema.instances()[1].class_name, "B");
    EXPECT_EQ(schema.instances()[1].alias, "");
}

TEST(MofReader, AnEmptyTextHasNoClasses) {
    EXPECT_TRUE(read_mof("").classes().empty());
    EXPECT_TRUE(read_mof(" \n\t// no more").classes().empty());
}

TEST(MofNumbers, AreReadInEveryNotation) {
    const auto whole = [](const char* text) {
        const auto value = parse_number(text);
        const auto* number = value ? std::get_if<std::uint64_t>(&value->data) : nullptr;
        return number ? std::optional(*number) : std::nullopt;
    };
    const auto negative = [](const char* text) {
        const auto value = parse_number(text);
        const auto* number = value ? std::get_if<std::int64_t>(&value->data) : nullptr;
        return number ? std::optional(*number) : std::nullopt;
    };
    const auto real = [](const char* text) {
        const auto value = parse_number(text);
        const auto* number = value ? std::get_if<double>(&value->data) : nullptr;
        return number ? std::optional(*number) : std::nullopt;
    };
    EXPECT_EQ(whole("0"), 0u);
    EXPECT_EQ(whole("+17"), 17u);
    EXPECT_EQ(whole("021"), 17u);
    EXPECT_EQ(whole("0x11"), 17u);
    EXPECT_EQ(whole("0X1e"), 30u);
    EXPECT_EQ(whole("0x1b"), 27u);
    EXPECT_EQ(whole("10001b"), 17u);
    EXPECT_EQ(whole("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(negative("-17"), -17);
    EXPECT_EQ(negative("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(real("1.5"), 1.5);
    EXPECT_EQ(real("-.5e1"), -5.0);
    EXPECT_EQ(real("2e+3"), 2000.0);
    for (const char* bad :
         {"18446744073709551616", "-9223372036854775809", "12x", "102b", "0x", "1x2", "b", "08", "1.2.3", "+", ""})
        EXPECT_FALSE(parse_number(bad)) << bad;
}

// ---------------------------------------------------------------------------------------------- inheritance

constexpr const char* family = "[Abstract] class Top { [Key] string Id; string Note; };\n"
                               "class Middle : Top { uint32 Count; [Override(\"Note\")] string Note; };\n"
                               "class Bottom : middle { boolean Flag; };\n";

TEST(MofInheritance, PutsInheritedPropertiesBeforeTheSubclassesOwn) {
    const Schema schema = read_mof(family);
    EXPECT_EQ(shown(schema.find("Bottom")), (Lines{"key string Id from Top", "string Note from Top",
                                                   "uint32 Count from Middle", "boolean Flag from Bottom"}));
    EXPECT_EQ(schema.find("Bottom")->superclass, "middle");
}

TEST(MofInheritance, PropertiesAreFoundInAnyCase) {
    const Schema schema = read_mof(family);
    ASSERT_NE(schema.find("BOTTOM")->property("cOUNT"), nullptr);
    EXPECT_EQ(schema.find("BOTTOM")->property("cOUNT")->name, "Count");
    EXPECT_EQ(schema.find("Bottom")->property("Counts"), nullptr);
    EXPECT_EQ(schema.find("Top")->property("Count"), nullptr);
    EXPECT_EQ(schema.find("Nobody"), nullptr);
}

TEST(MofInheritance, IsAFollowsTheSuperclasses) {
    const Schema schema = read_mof(family);
    EXPECT_TRUE(schema.is_a("bottom", "TOP"));
    EXPECT_TRUE(schema.is_a("Top", "Top"));
    EXPECT_FALSE(schema.is_a("Top", "Bottom"));
    EXPECT_FALSE(schema.is_a("Nobody", "Nobody"));
    EXPECT_FALSE(schema.is_a("Top", ""));
}

TEST(MofInheritance, KeyAndAssociationAreInheritedAbstractIsNot) {
    const Schema schema = read_mof("class X { [Key] string k; }; class Y : X { [Override(\"k\")] string k; };\n"
                                   "[Association, Abstract] class A { [Key] X REF a; [Key] X REF b; };\n"
                                   "class B : A { [Override(\"a\")] Y REF a; };");
    EXPECT_TRUE(schema.find("B")->association);
    EXPECT_FALSE(schema.find("B")->abstract);
    EXPECT_EQ(shown(schema.find("B")), (Lines{"key reference Y a from A", "key reference X b from A"}));
    EXPECT_EQ(shown(schema.find("Y")), Lines{"key string k from X"});
}

TEST(MofInheritance, ASubclassOfAClassWithoutKeysMayMakeOne) {
    const Schema schema = read_mof("class X { string k; }; class Y : X { [Key, Override(\"k\")] string k; };");
    EXPECT_EQ(shown(schema.find("Y")), Lines{"key string k from X"});
    EXPECT_EQ(shown(schema.find("X")), Lines{"string k from X"});
}

TEST(MofInheritance, AReferenceMayAdmitAClassThatComesLater) {
    const Schema schema = read_mof("[Association] class A { [Key] X REF a; [Key] X REF b; }; class X {};");
    EXPECT_EQ(schema.find("A")->property("a")->reference_class, "X");
}

// ---------------------------------------------------------------------------------------------- refusals

struct Refused {
    const char* name;
    const char* text;
    const char* message;
};

void PrintTo(const Refused& row, std::ostream* stream) {
    *stream << row.name;
}

class MofRefusalTexts : public testing::TestWithParam<Refused> {};

TEST_P(MofRefusalTexts, SaysWhereWhatAndWhatWasExpected) {
    EXPECT_EQ(refusal(GetParam().text), GetParam().message);
}

const Refused refused[] = {
    {"UnknownCharacter", "class A {\n  %", "t.mof:2:3: '%', expected a name, a value or one of {}[]():;,="},
    {"ControlCharacter", "\x1b", "t.mof:1:1: byte 0x1b, expected a name, a value or one of {}[]():;,="},
    {"OpenComment", "class A {};\n /* no end *", "t.mof:2:2: comment without end, expected */"},
    {"OpenString", "[Description(\"abc\n\")] class A {};",
     "t.mof:1:14: string without end, expected \" on the same line"},
    {"OpenCharacter", "class A { char16 a = 'x", "t.mof:1:22: character without end, expected ' on the same line"},
    {"UnknownEscape", "[D(\"a\\q\")] class A {};",
     "t.mof:1:6: unknown escape, expected \\b \\t \\n \\f \\r \\\" \\' \\\\ or \\x and hexadecimal digits"},
    {"EmptyHexadecimalEscape", "[D(\"\\xg\")] class A {};",
     "t.mof:1:5: escape \\x, expected one to four hexadecimal digits other than 0"},
    {"NulEscape", "[D(\"\\x0000\")] class A {};",
     "t.mof:1:5: escape \\x, expected one to four hexadecimal digits other than 0"},
    {"StrayWord", "clas A {};", "t.mof:1:1: clas, expected #pragma, a class, an instance or a qualifier"},
    {"StrayString", "\"x\"", "t.mof:1:1: a string, expected #pragma, a class, an instance or a qualifier"},
    {"UnknownDirective", "#include (\"a\")", "t.mof:1:1: #include, expected #pragma"},
    {"PragmaWithoutName", "#pragma (\"a\")", "t.mof:1:9: (, expected a pragma's name"},
    {"PragmaWithoutParenthesis", "#pragma include \"a\"", "t.mof:1:17: a string, expected ( behind pragma include"},
    {"PragmaWithoutString", "#pragma include (a)", "t.mof:1:18: a, expected a string"},
    {"OpenPragma", "#pragma include (\"a\"", "t.mof:1:21: end of file, expected ) behind the string"},
    {"MissingInclude", "\n#pragma include (\"/no/such.mof\")",
     "t.mof:2:18: include of /no/such.mof: cannot be read: No such file or directory"},
    {"QualifierWithoutName", "[] class A {};", "t.mof:1:2: ], expected a qualifier's name"},
    {"OpenQualifierValue", "[Q(1 2)] class A {};", "t.mof:1:6: 2, expected ) behind the value of qualifier Q"},
    {"OpenQualifierList", "[Q class A {};", "t.mof:1:4: class, expected ] or , behind a qualifier"},
    {"QualifierValueIsAName", "[Q(x)] class A {};",
     "t.mof:1:4: x, expected a value (a string, a number, TRUE, FALSE or NULL)"},
    {"OpenList", "[Q{1, 2] class A {};", "t.mof:1:8: ], expected } or , in a list of values"},
    {"NestedList", "[Q{{1}}] class A {};", "t.mof:1:4: {, expected a value (a string, a number, TRUE, FALSE or NULL)"},
    {"HugeNumber", "[Q(99999999999999999999)] class A {};",
     "t.mof:1:4: 99999999999999999999, expected a number of at most 64 bits"},
    {"QualifierDeclarationWithoutName", "Qualifier : boolean;", "t.mof:1:11: :, expected a qualifier's name"},
    {"OpenQualifierDeclaration", "Qualifier Q : boolean",
     "t.mof:1:22: end of file, expected ; at the end of qualifier Q"},
    {"QualifierDeclarationWithoutType", "Qualifier Q : A;", "t.mof:1:15: A, expected the type of qualifier Q"},
    {"QualifierDeclarationOfAnotherDefault", "Qualifier Q : uint8 = -1;",
     "t.mof:1:23: default of qualifier Q, expected a value of type uint8"},
    {"QualifierDeclarationWithAnotherWord", "Qualifier Q : boolean, Range(any);",
     "t.mof:1:24: Range, expected Scope or Flavor of qualifier Q"},
    {"QualifierDeclarationOfUnknownScope", "Qualifier Q : boolean, Scope(schema);",
     "t.mof:1:30: schema, expected a scope (class, association, indication, property, reference, method, parameter or "
     "any)"},
    {"QualifierDeclarationOfUnknownFlavor", "Qualifier Q : boolean, Flavor(Vanilla);",
     "t.mof:1:31: Vanilla, expected a flavor (EnableOverride, DisableOverride, ToSubclass, Restricted or "
     "Translatable)"},
    {"QualifierDeclaredTwice", "Qualifier Q : boolean;\nQualifier q : boolean;",
     "t.mof:2:11: qualifier q is declared twice, first at t.mof:1:11"},
    {"QualifierTwice", "[Q, q] class A {};", "t.mof:1:5: qualifier q is there twice"},
    {"QualifierOfUnknownFlavor", "[Q : Vanilla] class A {};",
     "t.mof:1:6: Vanilla, expected a flavor (EnableOverride, DisableOverride, ToSubclass, Restricted or "
     "Translatable)"},
    {"QualifierOfAnotherType", "Qualifier Q : uint32;\n[Q(\"1\")] class A {};",
     "t.mof:2:2: qualifier Q, expected a value of type uint32"},
    {"QualifierBeyondItsScope", "class A { [Key] uint8 a(); };",
     "t.mof:1:23: qualifier Key at method a of A, expected at property, reference"},
    {"ParametersQualifierBeyondItsScope", "class A { uint8 a([Key] string b); };",
     "t.mof:1:17: qualifier Key at parameter b of method a of A, expected at property, reference"},
    {"ClassQualifierBeyondItsScope", "[Key] class A {};",
     "t.mof:1:13: qualifier Key at class A, expected at property, reference"},
    {"QualifierThatMayNotBeOverridden",
     "class A { [Key] string a; }; class B : A { [Key(false), Override(\"a\")] string a; };",
     "t.mof:1:79: qualifier Key at property a of B, expected the value that it has in the superclass "
     "(DisableOverride)"},
    {"QualifiersWithoutClass", "[Q] string a;", "t.mof:1:5: string, expected class"},
    {"ClassWithoutName", "class {};", "t.mof:1:7: {, expected a class's name"},
    {"ClassWithoutSuperclass", "class A : {};", "t.mof:1:11: {, expected a superclass's name"},
    {"ClassWithAlias", "class A as $a {};", "t.mof:1:9: as, expected { before the properties of class A"},
    {"OpenClass", "class A { string a;\n", "t.mof:2:1: end of file, expected a property or }"},
    {"ClassWithoutSemicolon", "class A {}", "t.mof:1:11: end of file, expected ; at the end of class A"},
    {"UnknownType", "class A { integer a; };",
     "t.mof:1:11: integer, expected a type (string, boolean, datetime, char16, uint8 to uint64, sint8 to sint64, "
     "real32, real64) or a class and REF"},
    {"PropertyWithoutName", "class A { string; };", "t.mof:1:17: ;, expected a property's name"},
    {"PropertyWithoutSemicolon", "class A { string a string b; };",
     "t.mof:1:20: string, expected ; at the end of property a"},
    {"OpenArray", "class A { string a[; };", "t.mof:1:20: ;, expected ] behind a"},
    {"ArrayOfNoElements", "class A { string a[0]; };", "t.mof:1:20: 0, expected a number of elements behind a"},
    {"DefaultOfAnotherType", "class A { uint8 a = 256; };",
     "t.mof:1:21: default of property a, expected a value of type uint8"},
    {"DefaultWithoutValue", "class A { string a = ; };",
     "t.mof:1:22: ;, expected a value (a string, a number, TRUE, FALSE or NULL)"},
    {"OpenMethod", "class A { uint32 a(string b; };", "t.mof:1:28: ;, expected ) at the end of method a"},
    {"MethodWithoutLastParameter", "class A { uint32 a(string b, ); };",
     "t.mof:1:30: ), expected a parameter of method a"},
    {"ParameterWithoutName", "class A { uint32 a(string); };", "t.mof:1:26: ), expected a parameter's name"},
    {"ParameterTwice", "class A { uint32 a(string b, uint8 B); };",
     "t.mof:1:30: parameter B of method a is there twice"},
    {"MethodThatReturnsAReference", "class A { A REF a(); };",
     "t.mof:1:17: method a returns a reference, expected another type"},
    {"MethodTwice", "class A { uint8 a(); uint8 A(string b); };", "t.mof:1:28: method A of A is declared twice"},
    {"MethodWithoutOverride", "class A { uint8 a(); }; class B : A { uint8 a(); };",
     "t.mof:1:45: method a of B is inherited from A, expected qualifier Override"},
    {"MethodOfAnotherType", "class A { uint8 a(); }; class B : A { [Override(\"a\")] uint16 a(); };",
     "t.mof:1:62: method a of B is uint16, expected uint8 as in A"},
    {"MethodWithoutSemicolon", "class A { uint32 a() };", "t.mof:1:22: }, expected ; at the end of method a"},
    {"InstanceWithoutOf", "instance A {};", "t.mof:1:10: A, expected of"},
    {"InstanceWithoutClass", "instance of {};", "t.mof:1:13: {, expected a class's name"},
    {"InstanceWithWrongAlias", "instance of A as b {};", "t.mof:1:18: b, expected an alias ($...)"},
    {"InstanceWithoutBrace", "instance of A;", "t.mof:1:14: ;, expected { before the values of an instance of A"},
    {"InstanceWithoutPropertyName", "instance of A { = 1; };", "t.mof:1:17: =, expected a property's name or }"},
    {"InstanceWithoutEqualsSign", "instance of A { a 1; };", "t.mof:1:19: 1, expected = behind a"},
    {"InstanceValueWithoutSemicolon", "instance of A { a = 1 };", "t.mof:1:23: }, expected ; behind the value of a"},
    {"InstanceWithoutSemicolon", "instance of A {}",
     "t.mof:1:17: end of file, expected ; at the end of an instance of A"},
    {"ClassTwice", "class A {};\nclass a {};", "t.mof:2:7: class a is declared twice, first at t.mof:1:7"},
    {"UnknownSuperclass", "class A : B {}; class B {};",
     "t.mof:1:7: superclass B of A is not declared, expected its declaration before"},
    {"ItsOwnSuperclass", "class A : A {};",
     "t.mof:1:7: superclass A of A is not declared, expected its declaration before"},
    {"PropertyTwice", "class A { string a; uint8 A; };", "t.mof:1:27: property A of A is declared twice"},
    {"OtherTypeThanInherited", "class A { string a; }; class B : A {\n [Override(\"a\")] uint16 a; };",
     "t.mof:2:25: property a of B is uint16, expected string as in A"},
    {"ArrayInPlaceOfInherited", "class A { string a; }; class B : A {}; class C : B { [Override(\"a\")] string a[]; };",
     "t.mof:1:77: property a of C is string[], expected string as in A"},
    {"InheritedWithoutOverride", "class A { string a; }; class B : A { string a; };",
     "t.mof:1:45: property a of B is inherited from A, expected qualifier Override"},
    {"WiderReference",
     "class X {}; class Y : X {}; [Association] class A { Y REF a; Y REF b; };\n"
     "class B : A { [Override(\"a\")] X REF a; };",
     "t.mof:2:37: reference a of B admits X, expected Y or a subclass of it"},
    {"KeyBesideInheritedOnes", "class A { [Key] string a; }; class B : A { [Key] string b; };",
     "t.mof:1:57: property b of B is a key, expected no key beside those of A"},
    {"InheritedPropertyMadeAKeyBesideOthers",
     "class A { [Key] string a; string b; }; class B : A { [Key, Override(\"b\")] string b; };",
     "t.mof:1:82: property b of B is a key, expected no key beside those of A"},
    {"ReferenceOutsideAssociation", "class A { A REF a; };",
     "t.mof:1:17: reference a of A, expected qualifier Association at the class"},
    {"AssociationWithOneReference", "[Association] class A { A REF a; };",
     "t.mof:1:21: association A, expected two references or more"},
    {"ReferenceToUnknownClass", "[Association] class A { A REF a; Z REF b; };",
     "t.mof:1:40: reference b of A admits Z, which is not declared"},
};

TEST(MofRefusal, ANulByteEndsNothing) {
    using namespace std::string_view_literals;
    EXPECT_EQ(refusal("class A {};\0class"sv), "t.mof:1:12: byte 0x00, expected a name, a value or one of {}[]():;,=");
}

TEST(MofRefusal, EveryTextThatStopsShortIsRefusedAtItsEnd) {
    constexpr std::string_view whole = "/* c */ #pragma locale (\"en\")\n[A(\"\\x41\"), B{1, -0x2}: Restricted]\n"
                                       "class A { [K] uint8 a[3] = {1, 2}; uint8 m([IN] string s); };\n"
                                       "instance of A as $b { a = {TRUE, NULL, 'c', 1.5e+3}; }; "
                                       "Qualifier Q : string[] = {\"a\"}, Scope(any), Flavor(Restricted)";
    unsigned refusals = 0;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const std::string text = refusal(whole.substr(0, size));
        if (text == "(read)")
            continue;
        ++refusals;
        EXPECT_TRUE(text.starts_with("t.mof:") && text.find(", expected ") != std::string::npos) << text;
    }
    EXPECT_GT(refusals, 160u);
}

INSTANTIATE_TEST_SUITE_P(Texts, MofRefusalTexts, testing::ValuesIn(refused),
                         [](const testing::TestParamInfo<Refused>& row) { return row.param.name; });

// ---------------------------------------------------------------------------------------------- files

std::string read_files(const std::vector<std::string>& files) {
    const auto result = Schema::read(files);
    if (const Error* error = std::get_if<Error>(&result))
        return error->text();
    std::string names;
    for (const ClassDeclaration& declaration : std::get<Schema>(result).classes())
        names += declaration.name + ' ';
    return names;
}

TEST(MofFiles, AreReadInOrder) {
    const Folder folder;
    const auto top = folder.write("top.mof", "class Top {};");
    const auto bottom = folder.write("bottom.mof", "class Bottom : Top {};");
    EXPECT_EQ(read_files({top, bottom}), "Top Bottom ");
    EXPECT_EQ(read_files({bottom, top}),
              bottom + ":1:7: superclass Top of Bottom is not declared, expected its declaration before");
}

TEST(MofFiles, IncludeOthersFromTheirOwnFolder) {
    const Folder folder;
    const auto main = folder.write("main.mof", "#pragma include (\"sub/a.mof\")\nclass C : B {};");
    folder.write("sub/a.mof", "#pragma include (\"b.mof\")\nclass A {};");
    folder.write("sub/b.mof", "class B {};");
    EXPECT_EQ(read_files({main}), "B A C ");
}

TEST(MofFiles, AreReadOnceHoweverOftenTheyAreIncluded) {
    const Folder folder;
    const auto a = folder.write("a.mof", "#pragma include (\"b.mof\")\n#pragma include (\"./b.mof\")\nclass A {};");
    const auto b = folder.write("b.mof", "#pragma include (\"a.mof\")\nclass B {};");
    EXPECT_EQ(read_files({a, b, a}), "B A ");
}

TEST(MofFiles, AFaultInAnIncludedFileNamesThatFile) {
    const Folder folder;
    const auto main = folder.write("main.mof", "#pragma include (\"a.mof\")");
    folder.write("a.mof", "\n  class;");
    EXPECT_EQ(read_files({main}), folder.path("a.mof") + ":2:8: ;, expected a class's name");
}

TEST(MofFiles, AMissingFileIsNamed) {
    EXPECT_EQ(read_files({"/no/such.mof"}), "/no/such.mof: cannot be read: No such file or directory");
}

TEST(MofFiles, AFolderIsNoFile) {
    const Folder folder;
    EXPECT_EQ(read_files({folder.path("")}), folder.path("") + ": cannot be read, expected a file with text");
}

} // namespace
} // namespace cmpihost::mof
