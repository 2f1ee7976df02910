// The program and the control socket together: commands from outside while the switch runs.
#include "platform/services.h"
#include "simulator/files.h"
#include "simulator/switchsim.h"
#include "switchsim/control_client.h"
#include "tests/switchsim/program_test.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

using switchsim::the_switch;

class SwitchsimControl : public SwitchsimProgramTest {
  protected:
    static void SetUpTestSuite() {
        folder_ = testing::TempDir() + "switchsim-" + std::to_string(getpid());
        std::filesystem::create_directories(folder_);
        socket_ = folder_ + "/socket";
        setenv("SWITCHSIM_CONTROL", socket_.c_str(), 1);
        setenv("SWITCHSIM_CLOCK", "manual", 1);
        take_the_socket_from_another();
    }

    static void TearDownTestSuite() { std::filesystem::remove_all(folder_); }

    /// The other one still has it when this one wants it, and then ends without a word.
    static void take_the_socket_from_another() {
        const int other = listening_at(socket_);
        testing::internal::CaptureStderr();
        EXPECT_EQ(switchsim::load(FCIP_SOURCE_DIR "/scenarios/single-tunnel.toml"), "");
        complaint_ = testing::internal::GetCapturedStderr();
        close(other);
        const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(2);
        while (!switchsim_program::ask(socket_, {"show"}).good && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }

    static int listening_at(const std::string& file) {
        const sockaddr_un address = socket_address(file);
        const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
        EXPECT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(listener, 1), 0);
        return listener;
    }

    static sockaddr_un socket_address(const std::string& file) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        file.copy(address.sun_path, sizeof address.sun_path - 1);
        return address;
    }

    /// Sends a command, and reads nothing.
    static void send_command(int client, const std::string& word) {
        const sockaddr_un address = socket_address(socket_);
        ASSERT_EQ(connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ASSERT_EQ(send(client, word.c_str(), word.size() + 1, 0), static_cast<ssize_t>(word.size() + 1));
        shutdown(client, SHUT_WR);
    }

    void SetUp() override {
        switchsim::reset();
        ASSERT_EQ(switchsim::load(FCIP_SOURCE_DIR "/scenarios/single-tunnel.toml"), "");
    }

    void TearDown() override { EXPECT_EQ(switchsim::complaints(), std::vector<std::string>{}); }

    void expect_done(const std::vector<std::string>& arguments) {
        EXPECT_EQ(run(arguments), 0) << arguments[0];
        EXPECT_EQ(err_, "");
    }

    static std::uint32_t status() { return the_switch().links.begin()->second.status; }

    static std::string folder_;
    static std::string socket_;
    static std::string complaint_; ///< when another process had the socket
};

std::string SwitchsimControl::folder_;
std::string SwitchsimControl::socket_;
std::string SwitchsimControl::complaint_;

TEST_F(SwitchsimControl, SocketOfAnotherProcessIsTakenWhenThatEnds) {
    EXPECT_EQ(complaint_, "switchsim: " + socket_ + ": Address already in use\n");
    expect_done({"show"});
}

TEST_F(SwitchsimControl, SocketIsItsOwnersAlone) {
    struct stat status {};
    ASSERT_EQ(stat(socket_.c_str(), &status), 0);
    EXPECT_TRUE(S_ISSOCK(status.st_mode));
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(SwitchsimControl, SetChangesARowAndShowShowsIt) {
    expect_done({"set", "tunnel", "1", "status", "down"});
    EXPECT_EQ(status(), 2U);
    expect_done({"set", "tunnel", "1/1", "remote_address", "2001:db8::5"});
    EXPECT_EQ(the_switch().links.begin()->second.remote_address.family, ip_family_ipv6);
    expect_done({"show"});
    EXPECT_NE(out_.find("\ntunnel 1/1 status 2\n"), std::string::npos) << out_;
}

TEST_F(SwitchsimControl, BadCommandsAreOneLineAndExit1) {
    const std::string before = switchsim::command({"save"}).text;
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{"set"},
                                               {"set", "tunnel", "9", "status", "1"},
                                               {"set", "tunnel", "1", "colour", "1"},
                                               {"set", "tunnel", "1", "status", "-1"},
                                               {"add", "/nowhere"},
                                               {"add", folder_},
                                               {"add", "/no\nwhere"},
                                               {"fault", "get\nCSName"},
                                               {"fault", "\x1b[31m"},
                                               {"remove", "tunnel"},
                                               {"show", "all"},
                                               {"fault", "nothing"},
                                               {"delay", "getCSName", "x"},
                                               {"step", "-1"},
                                               {"clear", "it"},
                                               {"save", "/nowhere/file"},
                                               {"remove", "card", "9"},
                                               {"add", "card", "1"}}) {
        EXPECT_EQ(run(words), 1) << words[0];
        EXPECT_TRUE(err_.starts_with("switchsim: ")) << err_;
        EXPECT_EQ(std::count(err_.begin(), err_.end(), '\n'), 1) << err_;
        EXPECT_EQ(err_.find('\x1b'), std::string::npos);
        EXPECT_EQ(out_, "");
    }
    EXPECT_EQ(switchsim::command({"save"}).text, before);
}

TEST_F(SwitchsimControl, AddReadsAFileAndSaveWritesOne) {
    const std::string rows = folder_ + "/rows.toml";
    std::ofstream(rows) << "[[tunnel]]\nprofile = 1\nindex = 6\nremote_address = \"10.0.0.7\"\n";
    expect_done({"add", rows});
    EXPECT_EQ(the_switch().links.size(), 2U);
    const std::string saved = folder_ + "/saved.toml";
    expect_done({"save", saved});
    ASSERT_EQ(switchsim::load(saved), "");
    EXPECT_EQ(the_switch().links.size(), 2U);
    EXPECT_EQ(the_switch().links.count({1, 6}), 1U);
}

std::string content(const std::string& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

TEST_F(SwitchsimControl, AnswerThatBreaksOffIsNoneAndSavesNothing) {
    const std::string saved = folder_ + "/kept.toml";
    std::ofstream(saved) << "as it was";
    const std::string other_socket = folder_ + "/other";
    const int other = listening_at(other_socket);
    std::thread server([other] {
        const int client = accept(other, nullptr, nullptr);
        char command[64];
        while (read(client, command, sizeof command) > 0) {
        }
        EXPECT_EQ(send(client, "0half", 5, 0), 5);
        close(client);
    });
    setenv("SWITCHSIM_CONTROL", other_socket.c_str(), 1);
    EXPECT_EQ(run({"save", saved}), 1);
    setenv("SWITCHSIM_CONTROL", socket_.c_str(), 1);
    server.join();
    close(other);
    EXPECT_EQ(err_, "switchsim: " + other_socket + ": the switch's answer broke off after 5 bytes\n");
    EXPECT_EQ(content(saved), "as it was");
}

TEST_F(SwitchsimControl, SaveThatFailsLeavesTheFileAsItWas) {
    const std::string saved = folder_ + "/full/saved.toml";
    std::filesystem::create_directories(folder_ + "/full");
    std::ofstream(saved) << "as it was";
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
    const rlimit little{512, usual.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &little), 0);
    const auto reply = switchsim::replace_file(saved, std::string(1024, 'x'));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &usual), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(reply, "File too large");
    EXPECT_EQ(content(saved), "as it was");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ + "/full"), {}), 1) << "nothing is left beside";
}

TEST_F(SwitchsimControl, SaveKeepsWhoMayReadAndFollowsLinks) {
    const std::string saved = folder_ + "/private.toml";
    const std::string link = folder_ + "/link.toml";
    std::ofstream(saved) << "as it was";
    ASSERT_EQ(chmod(saved.c_str(), S_IRUSR | S_IWUSR), 0);
    std::filesystem::create_symlink(saved, link);
    expect_done({"save", link});
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(content(saved), switchsim::command({"save"}).text);
    EXPECT_EQ(std::filesystem::status(saved).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    expect_done({"save", "/dev/null"});
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(SwitchsimControl, FaultsAndDelaysUntilTheyAreCleared) {
    expect_done({"fault", "getCSName", "every", "fail"});
    expect_done({"delay", "getCSName", "30"});
    mutex_lock();
    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ(getCSName(), nullptr);
    EXPECT_GE(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(30));
    mutex_unlock();
    expect_done({"show"});
    EXPECT_NE(out_.find("fault getCSName every fail\ndelay getCSName 30\n"), std::string::npos) << out_;
    expect_done({"clear"});
    mutex_lock();
    EXPECT_STREQ(getCSName(), "edge-sw1");
    mutex_unlock();
}

TEST_F(SwitchsimControl, ClockThatStandsStillIsStepped) {
    const std::string file = folder_ + "/event.toml";
    std::ofstream(file) << "[switch]\nname = \"a\"\n[[event]]\nat = 0.03\ndo = \"remove card 1\"\n";
    ASSERT_EQ(switchsim::load(file), "");
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    expect_done({"show"});
    EXPECT_NE(out_.find("\nclock 0.000 s\ncard 1\nevent at 0.030 s: remove card 1\n"), std::string::npos) << out_;
    expect_done({"step", "0.029"});
    EXPECT_EQ(the_switch().slots.size(), 1U);
    expect_done({"step", "0.001"});
    EXPECT_EQ(the_switch().slots.size(), 0U);
}

TEST_F(SwitchsimControl, WaitsUntilTheRequestAtHandIsOver) {
    mutex_lock();
    std::atomic<bool> done = false;
    std::thread client([&] {
        EXPECT_TRUE(switchsim_program::ask(socket_, {"set", "tunnel", "1", "status", "3"}).good);
        done = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_FALSE(done);
    EXPECT_EQ(status(), 1U);
    mutex_unlock();
    client.join();
    EXPECT_EQ(status(), 3U);
}

TEST_F(SwitchsimControl, ClientThatTakesNoAnswerHoldsNobodyUp) {
    const std::string file = folder_ + "/large.toml";
    std::ofstream(file) << "[switch]\nname = \"a\"\n[generate]\ntunnels = 1000\nprofiles = 10\n"
                           "ethernet_ports = 8\nvsans = 4\n";
    ASSERT_EQ(switchsim::load(file), "");
    ASSERT_GT(switchsim::command({"save"}).text.size(), 500'000U) << "more than the socket takes";
    const int silent = socket(AF_UNIX, SOCK_STREAM, 0);
    send_command(silent, "save");
    expect_done({"show"});
    close(silent);
}

std::chrono::nanoseconds processor_time() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

TEST_F(SwitchsimControl, WaitsWithoutWorkWhileThereIsNoDescriptor) {
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &usual), 0);
    const int client = socket(AF_UNIX, SOCK_STREAM, 0);
    const rlimit none{static_cast<rlim_t>(client) + 1, usual.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    send_command(client, "show");
    const auto began = std::chrono::steady_clock::now();
    const auto used = processor_time();
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    EXPECT_LT(2 * (processor_time() - used), std::chrono::steady_clock::now() - began);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &usual), 0);
    char answer = 0;
    EXPECT_EQ(read(client, &answer, 1), 1);
    EXPECT_EQ(answer, '0');
    close(client);
}

TEST_F(SwitchsimControl, NoSocketIsOneLineAndExit1) {
    setenv("SWITCHSIM_CONTROL", "/nowhere/socket", 1);
    EXPECT_EQ(run({"show"}), 1);
    EXPECT_EQ(err_, "switchsim: /nowhere/socket: No such file or directory\n");
    unsetenv("SWITCHSIM_CONTROL");
    EXPECT_EQ(run({"show"}), 1);
    EXPECT_EQ(err_, "switchsim: SWITCHSIM_CONTROL names no control socket\n");
    setenv("SWITCHSIM_CONTROL", socket_.c_str(), 1);
}

} // namespace
