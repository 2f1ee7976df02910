// Requests and answers as bytes and back.
#include "host/cli/wire.h"
#include "tests/host/host_test.h"

namespace cmpihost {
namespace {

Object full_object() {
    const Object end{"Other", "ns", std::nullopt, {string_property("k", "v")}, {}};
    const Value reference{std::make_shared<const Object>(end)};
    return {"C",
            "root/x",
            "host",
            {string_property("Name", std::string("a\0b", 3)), {"Ref", "reference", reference}},
            {uint_property("Big", 18446744073709551615u),
             {"Small", "sint64", {INT64_MIN}},
             {"Flag", "boolean", {true}},
             {"Real", "real64", {-2.5}},
             {"Gone", "string", {}},
             {"List", "reference[]", {Value::Array{{}, reference}}}}};
}

TEST(Wire, ObjectsComeBack) {
    WireWriter writer;
    writer.object(full_object());
    writer.object({});
    WireReader reader(writer.bytes());
    EXPECT_EQ(reader.object(), full_object());
    EXPECT_EQ(reader.object(), Object{});
}

TEST(Wire, RequestsComeBack) {
    Request request;
    request.operation = Request::Operation::invoke_method;
    request.path = full_object();
    request.assoc_class = "A";
    request.role = "";
    request.properties = {"P", ""};
    request.values = {string_property("V", "v")};
    request.query = "q";
    request.query_language = "l";
    request.method = "m";
    request.arguments = {uint_property("N", 5)};
    WireWriter writer;
    writer.request(request);
    const Request read = WireReader(writer.bytes()).request();
    EXPECT_EQ(read.operation, request.operation);
    EXPECT_EQ(read.path, request.path);
    EXPECT_EQ(read.assoc_class, "A");
    EXPECT_EQ(read.result_class, std::nullopt);
    EXPECT_EQ(read.role, "");
    EXPECT_EQ(read.result_role, std::nullopt);
    EXPECT_EQ(read.properties, request.properties);
    EXPECT_EQ(read.values, request.values);
    EXPECT_EQ(read.query + read.query_language + read.method, "qlm");
    EXPECT_EQ(read.arguments, request.arguments);
}

TEST(Wire, AnswersComeBackWithoutTheirObjects) {
    Answer answer;
    answer.rc = -4711;
    answer.message = "text";
    answer.objects = {full_object()};
    answer.returned = uint_property("", 7);
    answer.arguments = {string_property("A", "a")};
    answer.null_results = 1;
    answer.invalid_results = 2;
    answer.late_results = 3;
    answer.done = true;
    WireWriter writer;
    writer.answer(answer);
    const Answer read = WireReader(writer.bytes()).answer();
    EXPECT_EQ(read.rc, answer.rc);
    EXPECT_EQ(read.message, "text");
    EXPECT_TRUE(read.objects.empty());
    EXPECT_EQ(read.returned, answer.returned);
    EXPECT_EQ(read.arguments, answer.arguments);
    EXPECT_EQ(read.null_results, 1u);
    EXPECT_EQ(read.invalid_results, 2u);
    EXPECT_EQ(read.late_results, 3u);
    EXPECT_TRUE(read.done);
}

TEST(Wire, TooFewBytesAreRefused) {
    WireWriter writer;
    writer.object(full_object());
    for (std::size_t size = 0; size < writer.bytes().size(); ++size)
        EXPECT_THROW(WireReader(std::string_view(writer.bytes()).substr(0, size)).object(), std::runtime_error) << size;
}

} // namespace
} // namespace cmpihost
