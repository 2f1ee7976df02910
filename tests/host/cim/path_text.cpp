// Object paths as text, both ways.
#include "host/cim/path_text.h"
#include "tests/host/host_test.h"

#include <array>

namespace cmpihost {
namespace {

Object path(const std::string& class_name, std::vector<Property> keys = {}) {
    return {class_name, "", std::nullopt, std::move(keys), {}};
}

Property reference(const std::string& name, const Object& object) {
    return {name, "reference", {std::make_shared<const Object>(object)}};
}

struct PathRow {
    const char* text;
    Object object;
};

/// Texts that are written exactly as they are read.
std::vector<PathRow> round_trips() {
    return {
        {"Class", path("Class")},
        {"_Class_1", path("_Class_1")},
        {"root/cimv2:Class", {"Class", "root/cimv2", std::nullopt, {}, {}}},
        {"//host/root/cimv2:Class", {"Class", "root/cimv2", "host", {}, {}}},
        {"//[::1]:5989/ns:Class", {"Class", "ns", "[::1]:5989", {}, {}}},
        {"//host/Class", {"Class", "", "host", {}, {}}},
        {R"(//host/ns:Class.k="v",n=5)",
         {"Class", "ns", "host", {string_property("k", "v"), uint_property("n", 5)}, {}}},
        {R"(Class.k="")", path("Class", {string_property("k", "")})},
        {R"(Class.k="a\"b\\c")", path("Class", {string_property("k", "a\"b\\c")})},
        {R"(Class.k="a,b=c.d:e/f'g")", path("Class", {string_property("k", "a,b=c.d:e/f'g")})},
        {"Class.k=\"\xc3\xa4\"", path("Class", {string_property("k", "\xc3\xa4")})},
        {"Class.n=0", path("Class", {uint_property("n", 0)})},
        {"Class.n=18446744073709551615", path("Class", {uint_property("n", 18446744073709551615u)})},
        {"Class.n=-1", path("Class", {{"n", "sint64", {std::int64_t{-1}}}})},
        {"Class.n=-9223372036854775808", path("Class", {{"n", "sint64", {INT64_MIN}}})},
        {"Class.r=2.5", path("Class", {{"r", "real64", {2.5}}})},
        {"Class.r=-3.0", path("Class", {{"r", "real64", {-3.0}}})},
        {"Class.r=1e+300", path("Class", {{"r", "real64", {1e300}}})},
        {"Class.t=TRUE,f=FALSE", path("Class", {{"t", "boolean", {true}}, {"f", "boolean", {false}}})},
        {R"(Class.r="Other.k=\"v\"")", path("Class", {reference("r", path("Other", {string_property("k", "v")}))})},
        {R"(Class.r="Other.k=5")", path("Class", {reference("r", path("Other", {uint_property("k", 5)}))})},
        {R"(A.r="B.r=\"C.k=\\\"v\\\"\"")",
         path("A", {reference("r", path("B", {reference("r", path("C", {string_property("k", "v")}))}))})},
    };
}

TEST(PathText, ReadsTheSpellingsOfOtherTools) {
    const Object here{"Class", "root/cimv2", std::nullopt, {}, {}};
    const Object there{"Class", "root/cimv2", "host:5989", {string_property("k", "v")}, {}};
    EXPECT_EQ(parse_path("/root/cimv2:Class"), here);
    EXPECT_EQ(parse_path("/Class"), path("Class"));
    EXPECT_EQ(parse_path(R"(http://host:5989/root/cimv2:Class.k="v")"), there);
    EXPECT_EQ(parse_path(R"(https://host:5989/root/cimv2:Class.k="v")"), there);
}

TEST(PathText, AReferenceCanBeDenied) {
    const auto only_r = [](const std::string& class_name, const std::string& key) {
        return class_name != "A" || key == "r";
    };
    const Object other = path("x", {uint_property("y", 1)});
    EXPECT_EQ(parse_path(R"(A.s="x.y=1",r="x.y=1")", only_r),
              path("A", {string_property("s", "x.y=1"), reference("r", other)}));
    EXPECT_EQ(parse_path(R"(A.r="A.s=\"x.y=1\"")", only_r),
              path("A", {reference("r", path("A", {string_property("s", "x.y=1")}))}));
}

TEST(PathText, ReadsAndWrites) {
    for (const PathRow& row : round_trips()) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(parse_path(row.text), row.object);
        EXPECT_EQ(path_text(row.object), row.text);
    }
}

TEST(PathText, ReferencesKeepHostAndNamespace) {
    const Object object = parse_path(R"(C.r="//h/n:D.k=\"v\"")");
    EXPECT_EQ(*std::get<Value::Reference>(object.keys[0].value.data),
              (Object{"D", "n", "h", {string_property("k", "v")}, {}}));
}

TEST(PathText, QuotedTextsThatAreNoPathWithKeysAreStrings) {
    for (const char* content : {"Other", "root/cimv2:Other", "1_10.1.1.1_10.2.1.1", "Other.k", "Other.k=", "Other.k=v",
                                "Other.k='v'", "a=b", ".k=5", "Other.k=5,", "Other.k=5;", " Other.k=5", "10.0.0.1=5"}) {
        SCOPED_TRACE(content);
        EXPECT_EQ(parse_path("C.k=\"" + std::string(content) + "\"").keys[0], string_property("k", content));
    }
}

TEST(PathText, TruthIsReadInAnyCase) {
    EXPECT_EQ(parse_path("C.a=true,b=False").keys,
              (std::vector<Property>{{"a", "boolean", {true}}, {"b", "boolean", {false}}}));
}

TEST(PathText, WritesWhatIsNeverRead) {
    EXPECT_EQ(path_text(path("C", {{"k", "string", {}}})), "C.k=NULL");
    EXPECT_EQ(path_text(path("C", {{"k", "uint8[]", {Value::Array{{std::uint64_t{1}}, {std::uint64_t{2}}}}}})),
              "C.k={1, 2}");
    EXPECT_EQ(path_text(path("C", {{"k", "uint8[]", {Value::Array{}}}})), "C.k={}");
    EXPECT_EQ(path_text({"C", "", "", {}, {}}), "C") << "an empty host";
}

struct Malformed {
    const char* text;
    const char* message; ///< behind "object path, position "
};

constexpr std::array malformed{
    Malformed{"", "1: expected a class name"},
    Malformed{"1Class", "1: expected a class name"},
    Malformed{"Cl-ass", "3: expected '.' and a key, or the end"},
    Malformed{"Class ", "6: expected '.' and a key, or the end"},
    Malformed{":Class", "1: expected a namespace and ':'"},
    Malformed{"ns:", "4: expected a class name"},
    Malformed{"//host", "3: expected a host name and '/'"},
    Malformed{"///ns:Class", "3: expected a host name and '/'"},
    Malformed{"//host/", "8: expected a class name"},
    Malformed{"//host/:Class", "8: expected a namespace and ':'"},
    Malformed{"Class.", "7: expected a key name"},
    Malformed{"Class.=5", "7: expected a key name"},
    Malformed{"Class.k", "8: expected '=' and the key's value"},
    Malformed{"Class.k=", "9: expected a quoted text, a number of at most 64 bits, TRUE or FALSE"},
    Malformed{"Class.k=v", "9: expected a quoted text, a number of at most 64 bits, TRUE or FALSE"},
    Malformed{"Class.k=5x", "9: expected a quoted text, a number of at most 64 bits, TRUE or FALSE"},
    Malformed{"Class.k=inf", "9: expected a quoted text, a number of at most 64 bits, TRUE or FALSE"},
    Malformed{"Class.k=18446744073709551616", "9: expected a quoted text, a number of at most 64 bits, TRUE or FALSE"},
    Malformed{"Class.k=-9223372036854775809", "9: expected a quoted text, a number of at most 64 bits, TRUE or FALSE"},
    Malformed{"Class.k=1e999", "9: expected a quoted text, a number of at most 64 bits, TRUE or FALSE"},
    Malformed{"Class.k=5,", "11: expected a key name"},
    Malformed{"Class.k=5,k=6", "11: expected a key other than 'k', which was given before"},
    Malformed{"Class.k=5,K=6", "11: expected a key other than 'K', which was given before"},
    Malformed{R"(Class.k="v)", "11: expected '\"' to end the value that begins at position 9"},
    Malformed{R"(Class.k="v\)", "12: expected '\"' or '\\' after the backslash"},
    Malformed{R"(Class.k="v\n")", "12: expected '\"' or '\\' after the backslash"},
    Malformed{R"(Class.k="v"x)", "12: expected ',' and another key, or the end"},
};

TEST(PathText, ErrorsTellPositionAndExpectation) {
    for (const Malformed& row : malformed) {
        SCOPED_TRACE(row.text);
        try {
            parse_path(row.text);
            ADD_FAILURE() << "no error";
        } catch (const PathError& error) {
            EXPECT_EQ(error.what(), "object path, position " + std::string(row.message));
        }
    }
}

TEST(PathText, LongTextsAreReadInOneGo) {
    const std::string content(1'000'000, '"');
    const Object object = path("C", {string_property("k", content)});
    EXPECT_EQ(parse_path(path_text(object)), object);
}

} // namespace
} // namespace cmpihost
