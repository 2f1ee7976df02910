// The program switchdump: what it prints, on which stream, and how it ends.
#include "switchdump/switchdump.h"

#include "simulator/switchsim.h"
#include "tests/support/read_faults.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

using switchsim::Fault;

class Switchdump : public testing::Test {
  protected:
    Switchdump() {
        unsetenv("SWITCHSIM_SCENARIO");
        switchsim::reset();
    }

    ~Switchdump() override {
        for (const std::string& complaint : switchsim::complaints())
            ADD_FAILURE() << complaint;
        EXPECT_FALSE(switchsim::lock_held());
        unsetenv("SWITCHSIM_SCENARIO");
    }

    int run(std::vector<const char*> arguments = {}) {
        arguments.insert(arguments.begin(), "switchdump");
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int result = switchdump::run(static_cast<int>(arguments.size()), arguments.data());
        out_ = testing::internal::GetCapturedStdout();
        err_ = testing::internal::GetCapturedStderr();
        return result;
    }

    /// What cannot be read is told, and the links are shown all the same.
    void expect_exit_1(const std::string& error, std::size_t links) {
        EXPECT_EQ(run(), 1);
        EXPECT_EQ(err_, error);
        EXPECT_EQ(occurrences(out_, "vrkFcipEntityId : "), links);
    }

    /// Whether standard error holds one line that begins with the program's name.
    bool one_error_line() const {
        return err_.starts_with("switchdump: ") && std::count(err_.begin(), err_.end(), '\n') == 1 &&
               err_.ends_with('\n');
    }

    static std::size_t occurrences(const std::string& text, const std::string& part) {
        std::size_t count = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
            ++count;
        return count;
    }

    static void add_profile(std::uint32_t entity_id) {
        switchsim::the_switch().profiles[entity_id].entity_id = entity_id;
    }

    static void add_link(std::uint32_t entity_id, std::uint32_t link_index, std::uint32_t if_index) {
        FcipLinkEntry& row = switchsim::the_switch().links[{entity_id, link_index}];
        row.entity_id = entity_id;
        row.link_index = link_index;
        row.link_if_index = if_index;
        switchsim::the_switch().ports[if_index].name = "fcip" + std::to_string(link_index + 1);
    }

    std::string out_;
    std::string err_;
};

TEST_F(Switchdump, PrintsEachProfileThenEachLinkBehindAnEmptyLine) {
    add_profile(1);
    add_profile(2);
    add_link(1, 0, 101);
    add_link(2, 5, 106);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(err_, "");
    const std::string heads[] = {"FCIP Profile 1\n",          "Tunnels Using this Profile: fcip1\n",
                                 "FCIP Profile 2\n",          "Tunnels Using this Profile: fcip6\n",
                                 "\n\nvrkFcipEntityId : 1\n", "vrkFcipLinkIfIndex (fcip if-index) : 101\n",
                                 "\n\nvrkFcipEntityId : 2\n", "vrkFcipLinkIfIndex (fcip if-index) : 106\n"};
    std::size_t at = 0;
    for (const std::string& head : heads) {
        at = out_.find(head, at);
        ASSERT_NE(at, std::string::npos) << head << " in " << out_;
    }
    EXPECT_EQ(occurrences(out_, "FCIP Profile "), 2u);
    EXPECT_EQ(occurrences(out_, "vrkFcipEntityId : "), 2u);
}

TEST_F(Switchdump, EmptySwitchPrintsNothing) {
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(out_ + err_, "");
}

TEST_F(Switchdump, ScenarioOptionNamesTheSwitch) {
    const std::string file = FCIP_SOURCE_DIR "/scenarios/two-site.toml";
    EXPECT_EQ(run({"--scenario", file.c_str()}), 0);
    EXPECT_EQ(err_, "");
    EXPECT_EQ(occurrences(out_, "FCIP Profile "), switchsim::the_switch().profiles.size());
    EXPECT_EQ(occurrences(out_, "vrkFcipEntityId : "), switchsim::the_switch().links.size());
    EXPECT_GE(switchsim::the_switch().links.size(), 8u);
}

TEST_F(Switchdump, EnvironmentsScenarioIsTakenUnlessTheOptionIsGiven) {
    setenv("SWITCHSIM_SCENARIO", FCIP_SOURCE_DIR "/scenarios/single-tunnel.toml", 1);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(occurrences(out_, "vrkFcipEntityId : "), 1u);
    setenv("SWITCHSIM_SCENARIO", "/no/such/file.toml", 1);
    EXPECT_EQ(run({"--scenario", FCIP_SOURCE_DIR "/scenarios/single-tunnel.toml"}), 0);
    EXPECT_EQ(err_, "");
}

TEST_F(Switchdump, ScenarioThatCannotBeReadIsOneLineAndExit1) {
    EXPECT_EQ(run({"--scenario", "/no/such/file.toml"}), 1);
    EXPECT_TRUE(one_error_line()) << err_;
    EXPECT_NE(err_.find("/no/such/file.toml"), std::string::npos) << err_;
    EXPECT_EQ(out_, "");
    setenv("SWITCHSIM_SCENARIO", "/no/such/file.toml", 1);
    EXPECT_EQ(run(), 1);
    EXPECT_TRUE(one_error_line()) << err_;
}

TEST_F(Switchdump, HelpIsExit0OnStandardOutput) {
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_TRUE(out_.starts_with("Shows the FCIP profiles and links of a switch")) << out_;
    EXPECT_NE(out_.find("--scenario FILE"), std::string::npos) << out_;
    EXPECT_NE(out_.find("--salt TEXT"), std::string::npos) << out_;
    EXPECT_EQ(err_, "");
}

TEST_F(Switchdump, WrongUsageIsOneLineAndExit2) {
    const std::vector<std::vector<const char*>> wrong = {{"--no-such-option"},
                                                         {"extra"},
                                                         {"--scenario", "a", "b"},
                                                         {"--anonymous"},
                                                         {"--scenario", "a", "--anonymous"},
                                                         {"--scenario", "--salt", "a"},
                                                         {"--salt", "a"}};
    for (const auto& arguments : wrong) {
        EXPECT_EQ(run(arguments), 2) << arguments.front();
        EXPECT_TRUE(one_error_line()) << err_;
        EXPECT_EQ(out_, "");
    }
}

TEST_F(Switchdump, QueueThatCannotBeOpenedIsExit1) {
    switchsim::inject("init_mts", Fault::fail);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(err_, "switchdump: the switch's response queue cannot be opened\n");
}

TEST_F(Switchdump, MissingInterfaceListIsExit1AndLinksAreShown) {
    add_profile(1);
    add_link(1, 0, 101);
    switchsim::inject("fcip_send_recv_with_mts_q", Fault::no_reply);
    expect_exit_1("switchdump: a profile's interface list cannot be read\n", 1);
}

TEST_F(Switchdump, LinkWithoutAVsanIsExit1AndTheOthersAreShown) {
    add_link(1, 0, 101);
    add_link(1, 1, 102);
    switchsim::inject("pm_cmi_get_port_config", Fault::fail, 1);
    expect_exit_1("switchdump: the VSAN of the interface above cannot be read\n", 2);
}

TEST_F(Switchdump, LinkReadThatBringsNoneEndsTheLinks) {
    add_link(1, 0, 101);
    add_link(1, 1, 102);
    for (const Fault fault : test::read_faults) {
        switchsim::inject("fcip_get_link_entry", fault, 2);
        EXPECT_EQ(run(), 0);
        EXPECT_EQ(occurrences(out_, "vrkFcipEntityId : "), 1u);
        switchsim::clear_faults();
        switchsim::clear_counts();
    }
}

/// Runs the program with a full disk as its standard output. @return the exit code
int run_on_a_full_disk(const std::vector<const char*>& arguments, std::string& error) {
    std::fflush(stdout);
    const int saved = dup(STDOUT_FILENO);
    const int full = open("/dev/full", O_WRONLY);
    dup2(full, STDOUT_FILENO);
    testing::internal::CaptureStderr();
    const int result = switchdump::run(static_cast<int>(arguments.size()), arguments.data());
    error = testing::internal::GetCapturedStderr();
    std::clearerr(stdout);
    dup2(saved, STDOUT_FILENO);
    close(full);
    close(saved);
    return result;
}

TEST_F(Switchdump, AFullDiskIsAnError) {
    add_profile(1);
    EXPECT_EQ(run_on_a_full_disk({"switchdump"}, err_), 1);
    EXPECT_EQ(err_, "switchdump: the output could not be written\n");
}

TEST_F(Switchdump, AFullDiskUnderACaptureIsAnError) {
    const std::string error = "switchdump: the scenario cannot be written: No space left on device\n";
    for (const unsigned tunnels : {0U, 300U}) { // what the stream's buffer holds, and more
        switchsim::generate(tunnels);
        EXPECT_EQ(run_on_a_full_disk({"switchdump", "--scenario"}, err_), 1) << tunnels;
        EXPECT_EQ(err_, error) << tunnels;
    }
}

} // namespace
