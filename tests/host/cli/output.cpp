// Answers as text, MOF and JSON.
#include "host/cli/output.h"
#include "tests/host/host_test.h"

#include <limits>

namespace cmpihost {
namespace {

const Object other{"Other", "ns", std::nullopt, {string_property("k", "v")}, {}};
const Object inner{"Inner", "", std::nullopt, {}, {string_property("Text", "a \"b\"")}};

Value reference_to(const Object& object) {
    return {std::make_shared<const Object>(object)};
}

struct OutputRow {
    Property property;
    const char* text;
    const char* mof;
};

std::vector<OutputRow> values() {
    const auto of = [](const char* type, Value value) { return Property{"P", type, std::move(value)}; };
    return {
        {of("string", {}), "NULL", "NULL"},
        {of("string", {std::string("plain")}), "\"plain\"", "\"plain\""},
        {of("string", {std::string("NULL")}), "\"NULL\"", "\"NULL\""},
        {of("string", {std::string("q\" b\\ t\t n\n r\r f\f b\b x\x01\x7f")}),
         R"("q\" b\\ t\t n\n r\r f\f b\b x\x0001\x007F")", R"("q\" b\\ t\t n\n r\r f\f b\b x\x0001\x007F")"},
        {of("boolean", {true}), "TRUE", "TRUE"},
        {of("boolean", {false}), "FALSE", "FALSE"},
        {of("uint64", {std::uint64_t{18446744073709551615u}}), "18446744073709551615", "18446744073709551615"},
        {of("sint64", {INT64_MIN}), "-9223372036854775808", "-9223372036854775808"},
        {of("real64", {2.5}), "2.5", "2.5"},
        {of("real64", {3.0}), "3.0", "3.0"},
        {of("real64", {1e300}), "1.0000000000000001e+300", "1.0000000000000001e+300"},
        {of("real64", {1e22}), "1.0e+22", "1.0e+22"},
        {of("real64", {std::numeric_limits<double>::infinity()}), "NULL", "NULL"},
        {of("char16", {std::uint64_t{'A'}}), "'A'", "'A'"},
        {of("char16", {std::uint64_t{'\''}}), "'\\x0027'", "'\\x0027'"},
        {of("char16", {std::uint64_t{0x20ac}}), "'\\x20AC'", "'\\x20AC'"},
        {of("datetime", {std::string("00000001000000.000000:000")}), "\"00000001000000.000000:000\"",
         "\"00000001000000.000000:000\""},
        {of("reference", reference_to(other)), R"(ns:Other.k="v")", R"("ns:Other.k=\"v\"")"},
        {of("instance", reference_to(inner)), R"(instance of Inner { Text = "a \"b\""; })",
         R"("instance of Inner { Text = \"a \\\"b\\\"\"; };")"},
        {of("uint8[]", {Value::Array{{std::uint64_t{1}}, {}, {std::uint64_t{3}}}}), "{1, NULL, 3}", "{1, NULL, 3}"},
        {of("string[]", {Value::Array{}}), "{}", "{}"},
        {of("char16[]", {Value::Array{{std::uint64_t{'A'}}}}), "{'A'}", "{'A'}"},
        {of("reference[]", {Value::Array{reference_to(other)}}), R"({ns:Other.k="v"})", R"({"ns:Other.k=\"v\""})"},
    };
}

TEST(OutputValues, AsTextAndAsMof) {
    for (const OutputRow& row : values()) {
        SCOPED_TRACE(row.mof);
        EXPECT_EQ(text_value(row.property), row.text);
        EXPECT_EQ(mof_value(row.property), row.mof);
    }
}

Answer answer_with(std::vector<Object> objects) {
    Answer answer;
    answer.objects = std::move(objects);
    return answer;
}

Object thing(const std::string& name, std::uint64_t number) {
    return {"Thing", "ns", std::nullopt, {string_property("Name", name), uint_property("Number", number)}, {}};
}

Request asking(Request::Operation operation) {
    Request request;
    request.operation = operation;
    request.path.class_name = "Thing";
    return request;
}

const Request names = asking(Request::Operation::enumerate_instance_names);
const Request instances = asking(Request::Operation::enumerate_instances);

/// All that is shown of an answer.
std::string shown(const std::unique_ptr<AnswerText>& text, const Answer& answer) {
    std::string all = text->begin();
    for (const Object& object : answer.objects)
        all += text->object(object);
    return all + text->end(answer, {});
}

std::string text_of(const Answer& answer, const Request& request, bool colour) {
    return shown(text_answer(request, colour, nullptr), answer);
}

std::string mof_of(const Answer& answer, bool paths) {
    return shown(mof_answer(paths), answer);
}

std::string json_of(const Answer& answer) {
    return shown(json_answer(), answer);
}

// ----------------------------------------------------------------------------------------------------------- text

TEST(TextOutput, PathsAreATable) {
    EXPECT_EQ(text_of(answer_with({thing("first", 1), thing("the second", 22222)}), names, false),
              "Name        Number\n"
              "first       1\n"
              "the second  22222\n"
              "\n"
              "2 objects\n");
}

TEST(TextOutput, WidthsCountCharactersNotBytes) {
    EXPECT_EQ(text_of(answer_with({thing("\xc3\xa4\xc3\xb6", 1), thing("abcde", 2)}), names, false),
              "Name   Number\n"
              "\xc3\xa4\xc3\xb6     1\n"
              "abcde  2\n"
              "\n"
              "2 objects\n");
}

TEST(TextOutput, AClassColumnShowsWhereClassesAreNotTheOneAskedFor) {
    Object sub = thing("b", 2);
    sub.class_name = "SubThing";
    sub.keys.push_back(string_property("Extra", ""));
    EXPECT_EQ(text_of(answer_with({thing("a", 1), sub}), names, false), "CLASS     Name  Number  Extra\n"
                                                                        "Thing     a     1       -\n"
                                                                        "SubThing  b     2       \"\"\n"
                                                                        "\n"
                                                                        "2 objects\n");
}

TEST(TextOutput, PathsWithoutKeysShowTheirClass) {
    EXPECT_EQ(text_of(answer_with({{"Thing", "ns", std::nullopt, {}, {}}}), names, false),
              "CLASS\nThing\n\n1 object\n");
}

TEST(TextOutput, PathsWithReferencesAreLines) {
    Object pair{"Pair", "ns", "host", {{"Ref", "reference", reference_to(other)}}, {}};
    EXPECT_EQ(text_of(answer_with({pair}), names, false), "//host/ns:Pair.Ref=\"ns:Other.k=\\\"v\\\"\"\n\n1 object\n");
}

TEST(TextOutput, InstancesAreListsOfTheirProperties) {
    Object first = thing("a", 1);
    first.properties = {
        string_property("Name", "a"), uint_property("LongerName", 5, "uint16"), {"Gone", "datetime", {}}};
    const Object bare{"Thing", "ns", std::nullopt, {}, {}};
    EXPECT_EQ(text_of(answer_with({first, bare}), instances, false), "ns:Thing.Name=\"a\",Number=1\n"
                                                                     "  Name        string    \"a\"\n"
                                                                     "  LongerName  uint16    5\n"
                                                                     "  Gone        datetime  NULL\n"
                                                                     "\n"
                                                                     "ns:Thing\n"
                                                                     "\n"
                                                                     "2 objects\n");
}

TEST(TextOutput, NothingIsCountedToo) {
    EXPECT_EQ(text_of(answer_with({}), names, false), "0 objects\n");
    EXPECT_EQ(text_of(answer_with({}), instances, false), "0 objects\n");
}

TEST(TextOutput, ControlCharactersDoNotReachTheTerminal) {
    EXPECT_EQ(text_of(answer_with({thing("a\033[2Jb\n", 1)}), names, false), "Name           Number\n"
                                                                             "a\\x001B[2Jb\\n  1\n"
                                                                             "\n"
                                                                             "1 object\n");
    EXPECT_EQ(printable("tab\tend"), "tab\\tend");
}

TEST(TextOutput, ColourMarksTheHeadings) {
    EXPECT_EQ(text_of(answer_with({thing("a", 1)}), names, true), "\033[1mName  Number\033[0m\na     1\n\n1 object\n");
    EXPECT_EQ(text_of(answer_with({{"Thing", "ns", std::nullopt, {}, {}}}), instances, true),
              "\033[1;36mns:Thing\033[0m\n\n1 object\n");
}

TEST(TextOutput, WhichOperationsGivePaths) {
    using enum Request::Operation;
    for (const auto operation : {enumerate_instance_names, associator_names, reference_names, create_instance})
        EXPECT_TRUE(gives_paths(operation));
    for (const auto operation :
         {enumerate_instances, get_instance, associators, references, modify_instance, delete_instance, exec_query})
        EXPECT_FALSE(gives_paths(operation));
}

// ------------------------------------------------------------------------------------------------------------ MOF

TEST(MofOutput, InstancesAreDeclarationsUnderTheirPath) {
    Object first = thing("a\nb", 1);
    first.properties = {string_property("Name", "a\nb"), {"List", "uint8[]", {Value::Array{{std::uint64_t{1}}}}}};
    const Object bare{"Thing", "ns", std::nullopt, {}, {}};
    EXPECT_EQ(mof_of(answer_with({first, bare}), false), "// ns:Thing.Name=\"a\\nb\",Number=1\n"
                                                         "instance of Thing {\n"
                                                         "    Name = \"a\\nb\";\n"
                                                         "    List = {1};\n"
                                                         "};\n"
                                                         "\n"
                                                         "// ns:Thing\n"
                                                         "instance of Thing {\n"
                                                         "};\n");
}

TEST(MofOutput, PathsAreComments) {
    EXPECT_EQ(mof_of(answer_with({thing("a", 1), thing("b", 2)}), true), "// ns:Thing.Name=\"a\",Number=1\n"
                                                                         "// ns:Thing.Name=\"b\",Number=2\n");
    EXPECT_EQ(mof_of(answer_with({}), true), "");
}

// ----------------------------------------------------------------------------------------------------------- JSON

TEST(JsonOutput, AnEmptyAnswer) {
    EXPECT_EQ(json_of({}), R"({
  "objects": [],
  "status": {
    "rc": 0,
    "message": null
  },
  "nullResults": 0,
  "invalidResults": 0
}
)");
}

TEST(JsonOutput, AFullAnswer) {
    Answer answer = answer_with({{"Thing",
                                  "ns",
                                  "host",
                                  {string_property("Name", "a\"\n")},
                                  {uint_property("Big", 18446744073709551615u),
                                   {"Small", "sint64", {INT64_MIN}},
                                   {"Flag", "boolean", {true}},
                                   {"Real", "real64", {2.5}},
                                   {"Gone", "string", {}},
                                   {"List", "uint8[]", {Value::Array{{std::uint64_t{1}}, {}}}},
                                   {"Ref", "reference", reference_to(other)}}}});
    answer.rc = 7;
    answer.message = "no";
    answer.null_results = 2;
    answer.invalid_results = 3;
    EXPECT_EQ(json_of(answer), R"({
  "objects": [
    {
      "class": "Thing",
      "namespace": "ns",
      "host": "host",
      "keys": [
        {
          "name": "Name",
          "type": "string",
          "value": "a\"\n"
        }
      ],
      "properties": [
        {
          "name": "Big",
          "type": "uint64",
          "value": 18446744073709551615
        },
        {
          "name": "Small",
          "type": "sint64",
          "value": -9223372036854775808
        },
        {
          "name": "Flag",
          "type": "boolean",
          "value": true
        },
        {
          "name": "Real",
          "type": "real64",
          "value": 2.5
        },
        {
          "name": "Gone",
          "type": "string",
          "value": null
        },
        {
          "name": "List",
          "type": "uint8[]",
          "value": [
            1,
            null
          ]
        },
        {
          "name": "Ref",
          "type": "reference",
          "value": {
            "class": "Other",
            "namespace": "ns",
            "host": null,
            "keys": [
              {
                "name": "k",
                "type": "string",
                "value": "v"
              }
            ],
            "properties": []
          }
        }
      ]
    }
  ],
  "status": {
    "rc": 7,
    "message": "no"
  },
  "nullResults": 2,
  "invalidResults": 3
}
)");
}

TEST(JsonOutput, BytesThatAreNoUtf8AreReplaced) {
    Answer answer;
    answer.message = "a\xff"
                     "b";
    EXPECT_NE(json_of(answer).find("\"a\xef\xbf\xbd"
                                   "b\""),
              std::string::npos);
}

} // namespace
} // namespace cmpihost
