// What pages ask of those who serve a class.
#include "host/pages/objects.h"

#include "host/broker/held.h"

#include <gtest/gtest.h>

namespace cmpihost::pages {
namespace {

/// An association that two providers serve, whose answers are the test's.
class AskedObjects : public testing::Test {
  protected:
    static mof::Schema read_schema() {
        auto read = mof::Schema::read_text("test.mof", "class Test_End { [Key] string Name; };\n"
                                                       "[Association] class Test_Tie { [Key] Test_End REF One; "
                                                       "[Key] Test_End REF Other; };\n");
        EXPECT_TRUE(std::holds_alternative<mof::Schema>(read));
        return std::get<mof::Schema>(std::move(read));
    }

    /// With a neighbour, if it is well.
    static server::Ask answering(const int& rc) {
        return [&rc](const Request&, const Sink& sink) {
            Store store;
            Answer answer;
            answer.rc = rc;
            if (rc == CMPI_RC_OK)
                sink(hold(store, {"Test_End", "", {}, {{"Name", "string", {std::string("other")}}}, {}}), false);
            return answer;
        };
    }

    AskedObjects() {
        for (const server::Ask* each : {&first, &second}) {
            space.classes.emplace_back(schema, *schema.find("Test_Tie"), *each);
            space.classes.back().associations = true;
        }
    }

    /// The status and the number of neighbours.
    std::pair<int, std::size_t> neighbours(int first_answers, int second_answers) {
        first_rc = first_answers;
        second_rc = second_answers;
        Request request;
        request.operation = Request::Operation::associator_names;
        request.path = {"Test_End", "", {}, {{"Name", "string", {std::string("one")}}}, {}};
        request.assoc_class = "Test_Tie";
        const Answer answer = ask(space, request);
        return {answer.rc, answer.objects.size()};
    }

    int first_rc = CMPI_RC_OK;
    int second_rc = CMPI_RC_OK;
    server::Ask first = answering(first_rc);
    server::Ask second = answering(second_rc);
    mof::Schema schema = read_schema();
    server::Namespace space{"root/test", schema, {}};
};

TEST_F(AskedObjects, OneWhoDoesNotKnowTheObjectIsNoFailure) {
    using Told = std::pair<int, std::size_t>;
    for (const int unknown : {CMPI_RC_ERR_NOT_FOUND, CMPI_RC_ERR_NOT_SUPPORTED, CMPI_RC_ERR_INVALID_CLASS}) {
        EXPECT_EQ(neighbours(CMPI_RC_OK, unknown), Told(CMPI_RC_OK, 1));
        EXPECT_EQ(neighbours(unknown, CMPI_RC_OK), Told(CMPI_RC_OK, 1));
        EXPECT_EQ(neighbours(unknown, CMPI_RC_ERR_FAILED), Told(CMPI_RC_ERR_FAILED, 0));
    }
    EXPECT_EQ(neighbours(CMPI_RC_ERR_NOT_FOUND, CMPI_RC_ERR_NOT_SUPPORTED), Told(CMPI_RC_ERR_NOT_FOUND, 0));
    EXPECT_EQ(neighbours(CMPI_RC_OK, CMPI_RC_ERR_FAILED), Told(CMPI_RC_ERR_FAILED, 1)) << "some may be missing";
}

TEST_F(AskedObjects, WhatNoSchemaDeclaresIsNotFound) {
    server::Status status;
    EXPECT_FALSE(get(space, {"Test_Other", "", {}, {{"Name", "string", {std::string("one")}}}, {}}, status));
    EXPECT_EQ(status.code, server::CimCode::not_found);
}

} // namespace
} // namespace cmpihost::pages
