// Wrong usage, help and version.
#include "host/cli/verbs.h"
#include "tests/host/cli/command_line_test.h"

#include <array>

namespace cmpihost {
namespace {

struct UsageRow {
    std::vector<std::string> arguments;
    const char* error;
};

TEST_F(CommandLines, WrongUsageIsToldInOneLine) {
    const std::vector<UsageRow> rows{
        {{}, "a VERB is needed"},
        {{"ei"}, "ei needs an OBJECT"},
        {{"ei", ""}, "ei needs an OBJECT"},
        {{"cm", "C"}, "cm needs a METHOD after OBJECT"},
        {{"cm", "C", "M", "a"}, "'a': expected NAME=VALUE"},
        {{"ci", "C", "=1"}, "'=1': expected NAME=VALUE"},
        {{"fly", "C"}, "unknown verb 'fly'"},
        {{"EI", "C"}, "unknown verb 'EI'"},
        {{"--fly", "ei", "C"}, "The following argument was not expected: --fly"},
        {{"-o", "xml", "ei", "C"}, "-o: xml not in {text,mof,json,paths,dot}"},
        {{"ei", "C", "--provider"}, "--provider: 1 required FILE missing"},
        {{"ei", "1C"}, "object path, position 1: expected a class name"},
        {{"ei", "C.k=v"},
         "object path, position 5: expected a quoted text, a number of at most 64 bits, TRUE or FALSE"},
        {{"ei", "C", "--ac", "A"}, "--ac does not go with ei"},
        {{"gi", "C", "--arc", "A"}, "--arc does not go with gi"},
        {{"ein", "C", "--ar", "A"}, "--ar does not go with ein"},
        {{"xq", "C", "--arr", "A"}, "--arr does not go with xq"},
        {{"ri", "C", "--ac", "A"}, "--ac does not go with ri"},
        {{"rin", "C", "--arr", "A"}, "--arr does not go with rin"},
        {{"graph", "1C"}, "object path, position 1: expected a class name"},
        {{"graph", "C", "P"}, "a PROPERTY does not go with graph"},
        {{"graph", "-o", "mof"}, "-o mof does not go with graph"},
        {{"graph", "--ac", "A"}, "--ac does not go with graph"},
        {{"graph", "--format", "svg"}, "--format: svg not in {text,dot}"},
        {{"graph", "--limit", "0"}, "--limit: 0 is no number of objects, expected 1 or more"},
        {{"graph", "--limit", "many"}, "Could not convert: --limit = many"},
        {{"ein", "C", "--format", "dot"}, "--format does not go with ein"},
        {{"classes", "--limit", "1"}, "--limit does not go with classes"},
        {{"classes", "C"}, "an OBJECT does not go with classes"},
        {{"classes", "--check"}, "--check does not go with classes"},
        {{"classes", "--ac", "A"}, "--ac does not go with classes"},
        {{"classes", "--deviations", "f"}, "--deviations goes with --check only"},
        {{"graph", "--limit", "-3"}, "--limit: -3 is no number of objects, expected 1 or more"},
        {{"graph", "--limit", "2.5"}, "--limit: 2.5 is no number of objects, expected 1 or more"},
        {{"graph", "--limit", "1e20"}, "--limit: 1e+20 is no number of objects, expected 1 or more"},
        {{"ei", "C", "--max-objects", "0"}, "--max-objects: 0 is no number of objects, expected 1 or more"},
        {{"ei", "C", "--repeat", "0"}, "--repeat: 0 is no number of times, expected 1 or more"},
        {{"ei", "C", "--timeout", "0"}, "--timeout: expected a number of seconds above 0, at most a million"},
        {{"ei", "C", "--timeout", "nan"}, "--timeout: expected a number of seconds above 0, at most a million"},
        {{"ei", "C", "--timeout", "1", "--no-fork"}, "--timeout and --max-objects do not go with --no-fork"},
        {{"ei", "C", "--count", "-o", "json"}, "-o json does not go with a count"},
        {{"ei", "C", "--tree"}, "--tree does not go with ei"},
        {{"ei", "C", "-o", "dot"}, "-o dot does not go with ei"},
        {{"classes", "-o", "paths"}, "-o paths does not go with classes"},
        {{"classes", "--count"}, "--count does not go with classes"},
        {{"graph", "--repeat", "2"}, "--repeat does not go with graph"},
        {{"ei", "C", "--color", "blue"}, "--color: blue not in {auto,always,never}"},
        {{"xq", "SELECT x"}, "'SELECT x': expected FROM and a class"},
        {{"xq", "SELECT x FROM C", "x"}, "a PROPERTY does not go with a whole query"},
        {{"ei", "C", "--deviations", "f"}, "--deviations goes with --check only"},
        {{"gp", "C"}, "gp needs one PROPERTY after OBJECT"},
        {{"gp", "C", "P", "Q"}, "gp needs one PROPERTY after OBJECT"},
        {{"sp", "C"}, "sp needs one NAME=VALUE after OBJECT"},
        {{"sp", "C", "P=1", "Q=1"}, "sp needs one NAME=VALUE after OBJECT"},
        {{"sp", "C", "P"}, "'P': expected NAME=VALUE"},
    };
    for (const UsageRow& row : rows) {
        SCOPED_TRACE(row.error);
        const Outcome outcome = cmpihost_with(row.arguments);
        EXPECT_EQ(outcome.exit_code, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "cmpihost: " + std::string(row.error) + "\nTry cmpihost --help.\n");
    }
}

TEST_F(CommandLines, HelpNamesEveryVerbAndOption) {
    const Outcome outcome = cmpihost_with({"--help"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.err, "");
    for (const Verb& verb : all_verbs())
        EXPECT_NE(outcome.out.find("\n  " + std::string(verb.name) + " "), std::string::npos) << verb.name;
    for (const char* option : {"--provider FILE",
                               "--name FACTORY_PREFIX",
                               "--scenario FILE",
                               "-n NAMESPACE",
                               "-o FORMAT",
                               "--trace FILE",
                               "--schema FILE",
                               "--check",
                               "--deviations FILE",
                               "--timeout SECONDS",
                               "--max-objects NUMBER",
                               "--no-fork",
                               "--count",
                               "--repeat NUMBER",
                               "--color WHEN",
                               "--tree",
                               "--limit NUMBER",
                               "--ac CLASS",
                               "--arc CLASS",
                               "--ar ROLE",
                               "--arr ROLE",
                               "--version"})
        EXPECT_NE(outcome.out.find("\n  " + std::string(option)), std::string::npos) << option;
}

TEST_F(CommandLines, Version) {
    const Outcome outcome = cmpihost_with({"--version"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out, "cmpihost 1.0.0\n");
}

TEST(Options, HaveDefaults) {
    const CommandLine line = read_command_line({"ei", "C"});
    ASSERT_TRUE(line.options.has_value());
    EXPECT_TRUE(line.options->provider.ends_with("libFCIPProvider.so")) << line.options->provider;
    EXPECT_EQ(line.options->name, "FCIPProvider");
    EXPECT_TRUE(line.options->beside.ends_with("/switchsimProvider.reg")) << line.options->beside;
    EXPECT_EQ(line.options->trace, "");
    EXPECT_EQ(line.options->format, Format::text);
    EXPECT_EQ(line.options->request.path.name_space, "root/cimv2");
    EXPECT_FALSE(line.options->request.properties.has_value());
}

TEST(Options, ThatNameAProviderLoadNoneBesideIt) {
    for (const char* option : {"--provider", "--name"}) {
        const CommandLine line = read_command_line({option, "FCIPProvider", "ei", "C"});
        ASSERT_TRUE(line.options.has_value());
        EXPECT_EQ(line.options->beside, "") << option;
    }
}

TEST(Options, StandAnywhere) {
    const CommandLine line = read_command_line({"ei", "-o", "json", "C", "P", "--trace", "-", "-n", "ns"});
    ASSERT_TRUE(line.options.has_value());
    EXPECT_EQ(line.options->format, Format::json);
    EXPECT_EQ(line.options->trace, "-");
    EXPECT_EQ(line.options->request.path.name_space, "ns");
    EXPECT_EQ(line.options->request.properties, std::vector<std::string>{"P"});
}

TEST(Options, FollowTheLastOne) {
    const CommandLine line = read_command_line({"-o", "json", "-n", "a", "ei", "C", "-o", "mof", "-n", "b"});
    ASSERT_TRUE(line.options.has_value()) << line.error;
    EXPECT_EQ(line.options->format, Format::mof);
    EXPECT_EQ(line.options->request.path.name_space, "b");
}

TEST(Verbs, AreFoundByName) {
    for (const Verb& verb : all_verbs())
        EXPECT_EQ(find_verb(verb.name), &verb) << verb.name;
    EXPECT_EQ(find_verb(""), nullptr);
    EXPECT_EQ(find_verb("e"), nullptr);
}

} // namespace
} // namespace cmpihost
