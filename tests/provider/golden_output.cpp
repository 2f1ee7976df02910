// What cmpihost prints of the built-in two-site switch, for every class, held byte for byte against tests/golden/: the
// same on every host, whatever its byte order and width.
//
// When a change is wanted, run this program with UPDATE_GOLDEN=1 in its environment and read the difference before you
// commit it.
#include "host/cli/command_line.h"
#include "tests/support/corpus.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

struct Output {
    int exit_code;
    std::string text; ///< standard output, then what went to standard error
};

std::string contents(std::FILE* file) {
    std::rewind(file);
    std::string text;
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
        text += static_cast<char>(c);
    std::fclose(file);
    return text;
}

Output cmpihost(const std::string& verb, const std::string& class_name) {
    std::FILE* out = std::tmpfile();
    std::FILE* err = std::tmpfile();
    const std::string library = FCIP_BINARY_DIR "/lib/libFCIPProvider.so";
    const int exit_code = cmpihost::run_command_line({"--provider", library, "-o", "text", verb, class_name}, out, err);
    const std::string text = contents(out);
    return {exit_code, text + contents(err)};
}

std::string golden_file(const std::string& name) {
    return FCIP_SOURCE_DIR "/tests/golden/" + name + ".txt";
}

std::string read(const std::string& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

class GoldenOutput : public ::testing::TestWithParam<const char*> {
  protected:
    void SetUp() override { unsetenv("SWITCHSIM_SCENARIO"); }
};

TEST_P(GoldenOutput, OfEnumerations) {
    for (const char* verb : {"ei", "ein"}) {
        const std::string name = std::string(verb) + "-" + GetParam();
        const Output output = cmpihost(verb, GetParam());
        EXPECT_EQ(output.exit_code, 0) << name;
        if (std::getenv("UPDATE_GOLDEN") != nullptr)
            std::ofstream(golden_file(name)) << output.text;
        EXPECT_EQ(output.text, read(golden_file(name))) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, GoldenOutput, ::testing::ValuesIn(test::served_classes),
                         [](const auto& of) { return std::string(of.param); });
INSTANTIATE_TEST_SUITE_P(Associations, GoldenOutput, ::testing::ValuesIn(test::association_names()),
                         [](const auto& of) { return std::string(of.param); });

} // namespace
