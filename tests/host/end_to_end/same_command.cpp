// The command that an object's page shows, run as somebody would who copies it.
#include "tests/host/end_to_end/raw_client.h"
#include "tests/host/end_to_end/server_process.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace cmpihost {
namespace {

namespace fs = std::filesystem;

class SameCommand : public testing::Test {
  protected:
    SameCommand() { fs::create_directories(folder); }
    ~SameCommand() override { fs::remove_all(folder); }

    /// What stands on a page between two texts, as a browser shows it.
    static std::string between(const std::string& page, const std::string& before, const std::string& after) {
        const std::size_t at = page.find(before);
        const std::size_t end = at == std::string::npos ? at : page.find(after, at + before.size());
        if (end == std::string::npos)
            return {};
        std::string text = page.substr(at + before.size(), end - at - before.size());
        for (const auto& [entity, character] :
             {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&#39;", "'"}, {"&amp;", "&"}})
            for (std::size_t found = text.find(entity); found != std::string::npos;
                 found = text.find(entity, found + 1))
                text.replace(found, std::string(entity).size(), character);
        return text;
    }

    /// The page of an object.
    static std::string page(const ServerProcess& server, const std::string& target) {
        const RawReply reply = exchange(server.port(), "GET /object/" + target +
                                                           " HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n");
        EXPECT_EQ(reply.status, 200) << reply.body;
        return reply.body;
    }

    static std::string command(const std::string& page) {
        return between(page, "aria-label=\"On the command line\">", "</pre>");
    }

    /// Runs it in a shell, in another folder.
    static std::string run_in_shell(const std::string& command) {
        const std::string programs = fs::path(CMPIHOST_PROGRAM).parent_path().string();
        const CommandResult result =
            run_command({"sh", "-c", "unset SWITCHSIM_SCENARIO; cd / && PATH=\"" + programs + ":$PATH\"\n" + command});
        EXPECT_EQ(result.exit_code, 0) << command << "\n" << result.output;
        return result.output;
    }

    /// A scenario whose name wants quotes.
    std::string scenario() const {
        std::string file = folder + "/it's a switch.toml";
        std::ofstream(file) << "[switch]\nname = \"other\"\n[generate]\ntunnels = 3\n";
        return file;
    }

    const std::string folder = testing::TempDir() + "same_command_" + std::to_string(getpid());
};

TEST_F(SameCommand, AsksTheServersScenario) {
    const ServerProcess server({"--scenario", scenario()});
    ASSERT_TRUE(server.is_up());
    const std::string shown = page(server, "ZANTO_FCIPProfile.InstanceID=%221%22");
    const std::string address = between(shown, "<td data-value=\"FcipEntityAddress\">", "</td>");
    EXPECT_FALSE(address.empty()) << shown;
    const std::string answer = run_in_shell(command(shown));
    EXPECT_NE(answer.find("\"" + address + "\""), std::string::npos) << answer;
    EXPECT_EQ(command(shown).find("--provider"), std::string::npos) << "it is the command line's own";
    const std::string beside = // of the simulated switch's own provider
        command(page(server, "ZANTO_LogicalComputerSystem.CreationClassName=%22ZANTO_LogicalComputerSystem%22,"
                             "Name=%22VSAN1%22"));
    EXPECT_NE(run_in_shell(beside).find("1 object"), std::string::npos) << beside;
}

TEST_F(SameCommand, AsksTheProviderThatAnswered) {
    const ServerProcess server({"--provider", FCIP_BINARY_DIR "/lib/libFCIPProvider.so", "--provider",
                                TEST_PROVIDERS "/host_good_provider.so", "--name", "FCIPProvider", "--name", "Good",
                                "--schema", FCIP_SOURCE_DIR "/tests/host/server/test_classes.mof", "--scenario",
                                scenario(), "-n", "root/test"});
    ASSERT_TRUE(server.is_up());
    const std::string shown = page(server, "Test_Thing.Name=%22thing%201%22,Number=1");
    const std::string answer = run_in_shell(command(shown));
    EXPECT_NE(answer.find("18446744073709551615"), std::string::npos) << answer;
    EXPECT_EQ(command(shown).find("--scenario"), std::string::npos) << "which this provider does not take";
}

TEST_F(SameCommand, ServersOwnObjectsHaveNone) {
    const ServerProcess server;
    ASSERT_TRUE(server.is_up());
    const std::string listed =
        exchange(server.port(), "GET /class/interop:CIM_Namespace HTTP/1.1\r\nHost: localhost\r\n"
                                "Connection: close\r\n\r\n")
            .body;
    const std::string shown = page(server, between(listed, "href=\"/object/", "\""));
    EXPECT_NE(shown.find("The same elsewhere"), std::string::npos);
    EXPECT_EQ(shown.find("On the command line"), std::string::npos) << shown;
}

} // namespace
} // namespace cmpihost
