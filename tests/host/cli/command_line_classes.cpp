// cmpihost classes: which classes are listed, and in which form.
#include "tests/host/cli/command_line_test.h"
#include "tests/host/mof/schema_file.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace cmpihost {
namespace {

constexpr const char* table = "CLASS       KEYS           SUPERCLASS\n"
                              "Test_Base   Name           Test_Named\n"
                              "Test_Thing  Name, Number   -\n"
                              "Test_Pair   First, Second  -\n"
                              "Test_Loose  -              -\n";

class Classes : public CommandLines {
  protected:
    Outcome classes(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"classes", "--schema", things_});
        return cmpihost_with(arguments);
    }

    static void expect_refusal(const Outcome& outcome, const std::string& err) {
        EXPECT_EQ(outcome.exit_code, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, err);
    }

    SchemaFolder folder_;
    std::string things_ = folder_.file("things.mof", things_mof);
};

TEST_F(Classes, AreOneNameALineForAShell) {
    const Outcome outcome = classes({});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out, "Test_Base\nTest_Thing\nTest_Pair\nTest_Loose\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(Classes, AreATableOnRequest) {
    EXPECT_EQ(classes({"-o", "text"}).out, table);
}

TEST_F(Classes, AreATreeOnRequest) {
    EXPECT_EQ(classes({"--tree"}).out, "Test_Named (abstract)\n"
                                       "  Test_Base\n"
                                       "Test_Thing\n"
                                       "Test_Pair (association)\n"
                                       "Test_Loose\n");
}

TEST_F(Classes, AreMofWithTheirKeysOnRequest) {
    EXPECT_EQ(classes({"-o", "mof"}).out, "class Test_Base : Test_Named {\n"
                                          "    [Key] string Name;\n"
                                          "};\n"
                                          "\n"
                                          "class Test_Thing {\n"
                                          "    [Key] string Name;\n"
                                          "    [Key] uint32 Number;\n"
                                          "};\n"
                                          "\n"
                                          "[Association]\n"
                                          "class Test_Pair {\n"
                                          "    [Key] Test_Thing REF First;\n"
                                          "    [Key] Test_Thing REF Second;\n"
                                          "};\n"
                                          "\n"
                                          "class Test_Loose {\n"
                                          "};\n");
}

TEST_F(Classes, AreJsonOnRequest) {
    const std::string pair = folder_.file("pair.mof", "class Test_End : Test_Thing {\n};\n"
                                                      "[Association] class Test_Ends : Test_Pair {\n};\n");
    const Outcome outcome = classes({"-o", "json", "--schema", pair});
    EXPECT_NE(outcome.out.find("{\n  \"classes\": [\n    {\n      \"name\": \"Test_Base\",\n"
                               "      \"superclass\": \"Test_Named\",\n      \"association\": false,\n"),
              std::string::npos)
        << outcome.out;
    EXPECT_NE(outcome.out.find("      \"name\": \"Test_Loose\",\n      \"superclass\": null,\n"
                               "      \"association\": false,\n      \"keys\": []\n    },\n"),
              std::string::npos)
        << outcome.out;
    EXPECT_TRUE(outcome.out.ends_with(R"(    {
      "name": "Test_Ends",
      "superclass": "Test_Pair",
      "association": true,
      "keys": [
        {
          "name": "First",
          "type": "reference"
        },
        {
          "name": "Second",
          "type": "reference"
        }
      ]
    }
  ]
}
)")) << outcome.out;
}

/// What the program writes to a terminal.
std::string on_a_terminal(const std::vector<std::string>& arguments) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    std::array<char, 64> name{};
    const bool made =
        grantpt(terminal) == 0 && unlockpt(terminal) == 0 && ptsname_r(terminal, name.data(), name.size()) == 0;
    std::FILE* out = made ? std::fopen(name.data(), "w") : nullptr;
    if (out == nullptr) {
        ADD_FAILURE() << "this machine gives no terminal (/dev/pts): " << std::strerror(errno);
        return {};
    }
    termios modes{};
    tcgetattr(fileno(out), &modes);
    cfmakeraw(&modes);
    tcsetattr(fileno(out), TCSANOW, &modes);
    EXPECT_EQ(run_command_line(arguments, out, stderr), 0);
    std::fputs("the end", out);
    std::fflush(out);
    std::string text; // comes piece by piece
    std::array<char, 4096> piece{};
    while (!text.ends_with("the end")) {
        const ssize_t length = read(terminal, piece.data(), piece.size());
        if (length <= 0)
            break;
        text.append(piece.data(), static_cast<std::size_t>(length));
    }
    std::fclose(out);
    close(terminal);
    return text.substr(0, text.find("the end"));
}

TEST_F(Classes, AreATableOnATerminal) {
    setenv("TERM", "xterm", 1);
    setenv("NO_COLOR", "1", 1);
    EXPECT_EQ(on_a_terminal({"classes", "--schema", things_}), table);
    unsetenv("NO_COLOR");
    EXPECT_EQ(
        on_a_terminal({"classes", "--schema", things_}).find("\033[1mCLASS       KEYS           SUPERCLASS\033[0m\n"),
        0u);
}

TEST_F(Classes, HaveColourWhereItIsWanted) {
    const auto has_colour = [](const std::string& text) { return text.find('\033') != std::string::npos; };
    setenv("TERM", "dumb", 1);
    EXPECT_FALSE(has_colour(on_a_terminal({"classes", "--schema", things_})));
    EXPECT_TRUE(has_colour(on_a_terminal({"classes", "--schema", things_, "--color", "always"})));
    setenv("TERM", "xterm", 1);
    EXPECT_TRUE(has_colour(on_a_terminal({"classes", "--schema", things_, "--color", "auto"})));
    EXPECT_FALSE(has_colour(on_a_terminal({"classes", "--schema", things_, "--color", "never"})));
    EXPECT_TRUE(has_colour(classes({"-o", "text", "--color", "always"}).out));
}

TEST_F(Classes, OfTheStandardsExcerptAreLeftOut) {
    const std::string standard = folder_.file("dmtf.mof", "class CIM_Thing {\n    [Key] string Name;\n};\n");
    const std::string own = folder_.file("own.mof", "class Own_Thing : CIM_Thing {\n};\n");
    EXPECT_EQ(cmpihost_with({"classes", "--schema", standard, "--schema", own}).out, "Own_Thing\n");
}

TEST_F(Classes, ComeFromTheSchemaOfTheTreeUnlessOneIsGiven) {
    const Outcome outcome = cmpihost_with({"classes"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out.find("ZANTO_FCIPProtocolEndPoint\n"), 0u) << outcome.out;
    EXPECT_EQ(outcome.out.find("CIM_"), std::string::npos);
}

TEST_F(Classes, NeedASchemaThatCanBeRead) {
    expect_refusal(cmpihost_with({"classes", "--schema", "/no/such.mof"}),
                   "cmpihost: /no/such.mof: cannot be read: No such file or directory\n");
    const std::string broken = folder_.file("broken.mof", "class Test_Thing {\n    string;\n};\n");
    const Outcome outcome = cmpihost_with({"classes", "--schema", broken});
    EXPECT_EQ(outcome.err.find("cmpihost: " + broken + ":2:11: "), 0u) << outcome.err;
    EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1);
    expect_refusal(outcome, outcome.err);
}

TEST_F(Classes, LoadNoProvider) {
    EXPECT_EQ(classes({"--provider", "/no/such.so"}).exit_code, 0);
}

} // namespace
} // namespace cmpihost
