// What is offered for a word that is not complete yet.
#include "host/cli/complete_verb.h"
#include "tests/host/cli/command_line_test.h"

namespace cmpihost {
namespace {

using Words = std::vector<std::string>;

struct CompletionRow {
    Words words;
    Words offered;
};

TEST(Completion, OffersWhatFits) {
    const std::vector<CompletionRow> rows{
        {{"g"}, {"gi", "gp", "graph"}},
        {{"serv"}, {"serve"}},
        {{"work"}, {}},
        {{"-o", "json", "pass"}, {"passwd"}},
        {{"help", "ai"}, {"ai", "ain"}},
        {{"help", "ai", ""}, {}},
        {{"--ver"}, {"--version"}},
        {{"ei", "--c"}, {"--check", "--color", "--count"}},
        {{"ain", "--a"}, {"--ac", "--arc", "--ar", "--arr"}},
        {{"ein", "--a"}, {}},
        {{"classes", "--t"}, {"--tree"}},
        {{"ei", "-o", ""}, {"text", "mof", "json", "paths"}},
        {{"graph", "-o", ""}, {"text", "dot", "json"}},
        {{"graph", "--format", "d"}, {"dot"}},
        {{"ei", "--color", "a"}, {"auto", "always"}},
        {{"ei", "--color=a"}, {"--color=auto", "--color=always"}},
        {{"ei", "--schema", ""}, {}},
        {{"ei", "ZANTO_FCIPPro"}, {"ZANTO_FCIPProtocolEndPoint", "ZANTO_FCIPProfile"}},
        {{"ei", "root/x:ZANTO_FCIPPro"}, {"root/x:ZANTO_FCIPProtocolEndPoint", "root/x:ZANTO_FCIPProfile"}},
        {{"graph", "ZANTO_FCIPPro"}, {"ZANTO_FCIPProtocolEndPoint", "ZANTO_FCIPProfile"}},
        {{"ei", "ZANTO_FCIPProfile", "ZANTO_"}, {}},
        {{"classes", "ZANTO_"}, {}},
        {{"ain", "--ac", "ZANTO_FCIPP"}, {"ZANTO_FCIPPEBasedOn"}},
        {{"ain", "--ac", "al"}, {"all"}},
        {{"ain", "--ac=ZANTO_FCIPP"}, {"--ac=ZANTO_FCIPPEBasedOn"}},
        {{"ain", "--arc", "ZANTO_FCIPProf"}, {"ZANTO_FCIPProfile"}},
        {{"ain", "--ar", ""}, {}},
    };
    for (const CompletionRow& row : rows)
        EXPECT_EQ(completions(row.words), row.offered) << testing::PrintToString(row.words);
}

TEST(Completion, OffersClassesOfTheSchemaThatIsNamed) {
    const std::string mof = FCIP_SOURCE_DIR "/examples/lamp.mof";
    EXPECT_EQ(completions({"--schema", mof, "ei", ""}), Words{"Example_Lamp"});
}

TEST_F(CommandLines, CompletionWithoutASchemaIsQuiet) {
    const Outcome outcome = cmpihost_with({"complete", "--schema", "/no/such.mof", "ei", ""});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out + outcome.err, "");
}

TEST_F(CommandLines, CompletionOfNothing) {
    EXPECT_EQ(cmpihost_with({"complete"}).out, "");
    EXPECT_EQ(cmpihost_with({"complete", "gr"}).out, "graph\n");
}

} // namespace
} // namespace cmpihost
