// switchsim check: all that is wrong with scenario files.
#include "tests/switchsim/program_test.h"

#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace {

class SwitchsimCheck : public SwitchsimProgramTest {
  protected:
    static void SetUpTestSuite() { std::filesystem::create_directories(folder); }
    static void TearDownTestSuite() { std::filesystem::remove_all(folder); }

    static std::string file(const std::string& name, const std::string& text) {
        std::ofstream(folder + name) << text;
        return folder + name;
    }

    static std::string shipped(const std::string& name) { return FCIP_SOURCE_DIR "/scenarios/" + name; }

    inline static const std::string folder = testing::TempDir() + "switchsim-check-" + std::to_string(getpid()) + "/";
};

TEST_F(SwitchsimCheck, GoodFilesAreExit0WithoutAWord) {
    EXPECT_EQ(run({"check", shipped("two-site.toml"), shipped("single-tunnel.toml")}), 0);
    EXPECT_EQ(out_ + err_, "");
}

TEST_F(SwitchsimCheck, EveryErrorOfEveryFileIsALineAndExit1) {
    const std::string one = file("one.toml", "[switch]\nname = 1\nslots = 2\n");
    const std::string other = file("other.toml", "[switch]\nnam = \"a\"\n");
    EXPECT_EQ(run({"check", one, shipped("two-site.toml"), "/nowhere/x.toml", other}), 1);
    EXPECT_EQ(err_, one + ":2:8: switch.name: expected a text\n" + one +
                        ":3:9: switch.slots: expected an array of different integers from 0 to 255\n" +
                        "/nowhere/x.toml: cannot read: No such file or directory\n" + other +
                        ":2:1: switch.nam: unknown key nam; did you mean name?\n" + other +
                        ":2:1: switch.name: expected a text, but the key is missing\n");
    EXPECT_EQ(out_, "");
}

TEST_F(SwitchsimCheck, WrongUsageIsExit2AndHelpIsExit0) {
    for (const std::vector<std::string>& wrong :
         std::vector<std::vector<std::string>>{{}, {"check"}, {"chek", "file"}, {"--help", "check"}}) {
        EXPECT_EQ(run(wrong), 2);
        EXPECT_TRUE(err_.starts_with("Usage: switchsim check FILE...\n")) << err_;
        EXPECT_EQ(out_, "");
    }
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_TRUE(out_.starts_with("Usage: switchsim check FILE...\n")) << out_;
}

} // namespace
