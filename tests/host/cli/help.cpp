// Help about one verb.
#include "host/cli/help_verb.h"
#include "host/cli/verbs.h"
#include "tests/host/cli/command_line_test.h"

namespace cmpihost {
namespace {

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST_F(CommandLines, HelpOfEachVerbSaysHowItIsUsed) {
    for (const Verb& verb : all_verbs()) {
        const Outcome outcome = cmpihost_with({"help", std::string(verb.name)});
        EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
        const std::string words = std::string(verb.name) + (verb.words.empty() ? "" : " ") + std::string(verb.words);
        EXPECT_TRUE(has(outcome.out, "\nUsage: cmpihost " + words + " [OPTIONS]\n")) << outcome.out;
        EXPECT_TRUE(has(outcome.out, std::string(verb.help.substr(1)) + ".\n")) << outcome.out;
    }
}

TEST_F(CommandLines, HelpOfAVerbHasItsOptionsAlone) {
    struct Row {
        const char* verb;
        std::vector<const char*> has, has_not;
    };
    const std::vector<Row> rows{
        {"ain", {"--ac CLASS", "--arr ROLE", "--count", "-n NAMESPACE"}, {"--limit", "--tree", "--version", "VERB"}},
        {"ri", {"--arc CLASS", "--ar ROLE", "--provider FILE"}, {"--ac ", "--arr"}},
        {"ein", {"--timeout SECONDS", "--repeat NUMBER"}, {"--ac ", "--arc", "--ar ", "--arr", "--format"}},
        {"graph", {"--limit NUMBER", "--format", "--check"}, {"--count", "--repeat", "--ac "}},
        {"classes", {"--tree", "--schema FILE", "-o FORMAT"}, {"--provider", "--check", "--limit", "--trace"}},
    };
    for (const Row& row : rows) {
        const std::string text = help_text(row.verb);
        for (const char* option : row.has)
            EXPECT_TRUE(has(text, std::string("\n  ") + option)) << row.verb << ": " << option;
        for (const char* option : row.has_not)
            EXPECT_FALSE(has(text, std::string("\n  ") + option)) << row.verb << ": " << option;
    }
}

TEST_F(CommandLines, HelpWithoutAVerbIsTheWhole) {
    const std::string whole = cmpihost_with({"--help"}).out;
    EXPECT_EQ(cmpihost_with({"help"}).out, whole);
    EXPECT_EQ(cmpihost_with({"help", "help"}).out, whole);
    EXPECT_EQ(cmpihost_with({"help", "--help"}).out, whole);
    EXPECT_TRUE(has(whole, "\n  help "));
    EXPECT_FALSE(has(whole, "\n  complete"));
    EXPECT_FALSE(has(whole, "\n  worker"));
}

TEST_F(CommandLines, HelpOfNoVerbIsRefused) {
    for (const char* word : {"fly", "worker", "complete"}) {
        const Outcome outcome = cmpihost_with({"help", word});
        EXPECT_EQ(outcome.exit_code, 2);
        EXPECT_EQ(outcome.err, "cmpihost: help: unknown verb '" + std::string(word) + "'\n");
    }
    EXPECT_EQ(cmpihost_with({"help", "ei", "gi"}).err, "cmpihost: help: expected one VERB\n");
}

} // namespace
} // namespace cmpihost
