// cmpihost --check: answers held against the schema.
#include "tests/host/cli/command_line_test.h"
#include "tests/host/mof/schema_file.h"

namespace cmpihost {
namespace {

constexpr const char* number_is_missing = "check: Test_Thing.Number: key is missing (3 objects)\n";

class Check : public CommandLines {
  protected:
    Outcome check(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"--check", "--schema", things_});
        return ask(std::move(arguments));
    }

    SchemaFolder folder_;
    std::string things_ = folder_.file("things.mof", things_mof);
};

void expect_check(const Outcome& outcome, int exit_code, const std::string& err) {
    EXPECT_EQ(outcome.exit_code, exit_code);
    EXPECT_EQ(outcome.err, err);
}

TEST_F(Check, SaysNothingOfAnswersThatAreAsDeclared) {
    const Outcome outcome = check({"ein", "Test_Thing"});
    expect_check(outcome, 0, "");
    EXPECT_EQ(outcome.out, ask({"ein", "Test_Thing"}).out);
    expect_check(check({"ein", "Test_Pair"}), 0, "");
}

TEST_F(Check, TellsEachFindingOnceWithItsNumberOfObjects) {
    const Outcome outcome = check({"ei", "Test_Thing"});
    expect_check(outcome, 4, number_is_missing);
    EXPECT_EQ(outcome.out, ask({"ei", "Test_Thing"}).out);
    expect_check(check({"gi", "Test_Thing"}), 4, "check: Test_Thing.Number: key is missing (1 object)\n");
}

TEST_F(Check, TakesAnswersToAPropertyListAsPartial) {
    expect_check(check({"ei", "Test_Thing", "Flag"}), 0, "");
    expect_check(check({"ei", "Test_Thing", ""}), 0, "");
}

TEST_F(Check, TakesNamesAsPaths) {
    expect_check(check({"rin", "X", "--arc", "A", "--ar", "R"}), 4,
                 "check: Test_Pair.ARC: is not declared (1 object)\n"
                 "check: Test_Pair.AR: is not declared (1 object)\n");
    expect_check(check({"ci", "Test_Thing.Name=\"n\""}), 4, "check: Test_Thing.Number: key is missing (1 object)\n");
}

TEST_F(Check, TellsFindingsOfAllObjectsInTheirOrder) {
    expect_check(check({"ain", "X"}), 4, "check: Test_Filters: class is not declared (1 object)\n");
    expect_check(check({"gi", "Test_Echo"}), 4, "check: Test_Echo: class is not declared (1 object)\n");
}

TEST_F(Check, LeavesTheExitStatusOfACimError) {
    expect_check(check({"ei", "No_Such"}), 1,
                 "note: class No_Such is not in the schema\nCIM error 5 (INVALID_CLASS): no class No_Such\n");
}

TEST_F(Check, HonoursTheDeviationsBesideTheSchema) {
    folder_.file("deviations.txt", "# wanted\nTest_Thing.Number: key is missing\n");
    expect_check(check({"ei", "Test_Thing"}), 0, "");
    expect_check(check({"gi", "Test_Echo"}), 4, "check: Test_Echo: class is not declared (1 object)\n");
}

TEST_F(Check, HonoursAFileOfDeviationsInTheirPlace) {
    folder_.file("deviations.txt", "Test_Thing.Number: key is missing\n");
    const std::string own = folder_.file("own.txt", "Test_Echo: class is not declared\n");
    expect_check(check({"--deviations", own, "gi", "Test_Echo"}), 0, "");
    expect_check(check({"--deviations", own, "ei", "Test_Thing"}), 4, number_is_missing);
}

TEST_F(Check, UsesTheSchemaOfTheTreeUnlessOneIsGiven) {
    expect_check(ask({"--check", "gi", "Test_Echo"}), 4, "check: Test_Echo: class is not declared (1 object)\n");
}

TEST_F(Check, NeedsFilesThatCanBeRead) {
    const auto expect_refusal = [](const Outcome& outcome, const std::string& err) {
        expect_check(outcome, 2, err);
        EXPECT_EQ(outcome.out, "");
    };
    expect_refusal(ask({"--check", "--schema", "/no/such.mof", "ei", "Test_Thing"}),
                   "cmpihost: /no/such.mof: cannot be read: No such file or directory\n");
    expect_refusal(check({"--deviations", "/no/such.txt", "ei", "Test_Thing"}),
                   "cmpihost: /no/such.txt: cannot be read: No such file or directory\n");
    const std::string broken = folder_.file("deviations.txt", "nonsense\n");
    expect_refusal(check({"ei", "Test_Thing"}),
                   "cmpihost: " + broken +
                       ":1:1: nonsense, expected CLASS: WHAT, CLASS.NAME: WHAT, or # and a comment\n");
}

} // namespace
} // namespace cmpihost
