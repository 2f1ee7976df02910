// Methods of classes: parameters, types, and what subclasses have of them; and values as their types have them.
#include "host/mof/typed_value.h"
#include "tests/host/mof/mof_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace cmpihost::mof {
namespace {

/// "TYPE NAME(TYPE [CLASS] PARAMETER[SIZE], ...) from ORIGIN" of every method.
Lines shown_methods(const ClassDeclaration* declaration) {
    Lines lines;
    if (declaration == nullptr)
        return {"(no class)"};
    for (const MethodDeclaration& method : declaration->methods) {
        std::string line = method.type + ' ' + method.name + '(';
        for (const ParameterDeclaration& parameter : method.parameters)
            line += (line.ends_with('(') ? "" : ", ") + parameter.type + ' ' + parameter.reference_class +
                    (parameter.reference_class.empty() ? "" : " ") + parameter.name +
                    (parameter.array_size == 0 ? "" : " of " + std::to_string(parameter.array_size));
        lines.push_back(line + ") from " + method.origin);
    }
    return lines;
}

TEST(MofMethods, HaveParametersOfEveryShape) {
    const Schema schema = read_mof("class A { string before; uint32 Start([IN] string a, [OUT] A REF b[], uint8 c[3], "
                                   "Later REF d); boolean Stop(); string after; };");
    EXPECT_EQ(shown_methods(schema.find("A")),
              (Lines{"uint32 Start(string a, reference[] A b, uint8[] c of 3, reference Later d) from A",
                     "boolean Stop() from A"}));
    EXPECT_EQ(schema.find("A")->properties.size(), 2U);
    ASSERT_NE(schema.find("A")->method("sTART"), nullptr);
    EXPECT_EQ(schema.find("A")->method("before"), nullptr);
    EXPECT_TRUE(is_on(schema.find("A")->method("Start")->parameters[1].qualifiers, "out"));
}

TEST(MofMethods, AreInheritedAndOverriddenInTheirPlace) {
    const Schema schema = read_mof("class A { uint8 one(); uint8 two(string a); };\n"
                                   "class B : A { uint8 three(); [Override(\"ONE\")] uint8 One(string b); };\n"
                                   "class C : B {};");
    EXPECT_EQ(shown_methods(schema.find("C")),
              (Lines{"uint8 One(string b) from A", "uint8 two(string a) from A", "uint8 three() from B"}));
    EXPECT_EQ(shown_methods(schema.find("A")), (Lines{"uint8 one() from A", "uint8 two(string a) from A"}));
}

TEST(MofProperties, KnowTheSizeOfTheirArray) {
    const Schema schema = read_mof("class A { string a[4]; string b[]; string c; }; class B : A {};");
    EXPECT_EQ(schema.find("B")->property("a")->array_size, 4U);
    EXPECT_EQ(schema.find("B")->property("b")->array_size, 0U);
    EXPECT_EQ(schema.find("B")->property("c")->array_size, 0U);
}

// ---------------------------------------------------------------------------------------------- values of a type

template <class T>
bool fits(std::string_view type, T value) {
    return typed_value(type, Value{value}).has_value();
}

TEST(MofTypedValues, IntegersAreInRangeOfTheirType) {
    struct Range {
        const char* type;
        std::int64_t lowest;
        std::uint64_t highest;
    };
    constexpr Range ranges[] = {{"uint8", 0, 255},
                                {"sint8", -128, 127},
                                {"uint16", 0, 65535},
                                {"sint16", -32768, 32767},
                                {"uint32", 0, 4294967295},
                                {"sint32", -2147483648LL, 2147483647},
                                {"uint64", 0, std::numeric_limits<std::uint64_t>::max()},
                                {"sint64", std::numeric_limits<std::int64_t>::min(), 9223372036854775807}};
    for (const Range& range : ranges) {
        SCOPED_TRACE(range.type);
        EXPECT_TRUE(fits(range.type, range.highest));
        EXPECT_TRUE(fits(range.type, range.lowest));
        if (range.highest != std::numeric_limits<std::uint64_t>::max()) {
            EXPECT_FALSE(fits(range.type, range.highest + 1));
        }
        if (range.lowest != std::numeric_limits<std::int64_t>::min()) {
            EXPECT_FALSE(fits(range.type, range.lowest - 1));
        }
        EXPECT_FALSE(fits(range.type, 1.0));
        EXPECT_FALSE(fits(range.type, true));
        EXPECT_FALSE(fits(range.type, std::string("1")));
    }
}

TEST(MofTypedValues, SignFollowsTheType) {
    EXPECT_EQ(typed_value("sint8", {std::uint64_t{5}}), Value{std::int64_t{5}});
    EXPECT_EQ(typed_value("uint8", {std::int64_t{0}}), Value{std::uint64_t{0}});
    EXPECT_EQ(typed_value("real32", {std::uint64_t{5}}), Value{5.0});
    EXPECT_EQ(typed_value("real64", {std::int64_t{-5}}), Value{-5.0});
}

TEST(MofTypedValues, OthersAreTextsOrTruths) {
    for (const char* type : {"string", "datetime", "char16", "reference"}) {
        EXPECT_TRUE(fits(type, std::string("x"))) << type;
        EXPECT_FALSE(fits(type, std::uint64_t{1})) << type;
    }
    EXPECT_TRUE(fits("boolean", false));
    EXPECT_FALSE(fits("boolean", std::string("false")));
    EXPECT_FALSE(fits("string", true));
}

TEST(MofTypedValues, ArraysHoldElementsOfTheType) {
    EXPECT_EQ(typed_value("sint8[]", {Value::Array{{std::uint64_t{5}}, {}}}),
              (Value{Value::Array{{std::int64_t{5}}, {}}}));
    EXPECT_FALSE(fits("uint8[]", Value::Array{{std::uint64_t{5}}, {std::uint64_t{256}}}));
    EXPECT_FALSE(fits("uint8[]", std::uint64_t{5}));
    EXPECT_FALSE(fits("uint8", Value::Array{{std::uint64_t{5}}}));
}

TEST(MofTypedValues, NullIsOfEveryType) {
    for (const char* type : {"uint8", "sint64", "real32", "string", "boolean", "string[]", "reference"})
        EXPECT_EQ(typed_value(type, {}), Value{}) << type;
}

} // namespace
} // namespace cmpihost::mof
