// wbemcli over HTTPS, with a password.
#include "tests/host/end_to_end/server_process.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace cmpihost {
namespace {

class Credentials : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        std::filesystem::create_directories(folder);
        ASSERT_EQ(run_command({"openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=localhost",
                               "-addext", "subjectAltName=DNS:localhost", "-days", "2", "-keyout", folder + "/key.pem",
                               "-out", folder + "/certificate.pem"})
                      .exit_code,
                  0);
        std::filesystem::remove(folder + "/users");
        const CommandResult made = run_command(
            {"sh", "-c", "echo 'right password' | " CMPIHOST_PROGRAM " passwd " + folder + "/users operator"});
        ASSERT_EQ(made.exit_code, 0) << made.output;
        server = new ServerProcess(
            {"--tls", folder + "/certificate.pem", folder + "/key.pem", "--users", folder + "/users"});
    }
    static void TearDownTestSuite() { delete server; }
    void SetUp() override { ASSERT_TRUE(server != nullptr && server->is_up()); }

    static CommandResult names(const std::string& user, const std::string& scheme = "https") {
        return run_command({"wbemcli", "-nl", "-cacert", folder + "/certificate.pem", "ein",
                            scheme + "://" + user + server->host() + "/root/cimv2:ZANTO_FCIPProtocolEndPoint"});
    }

    static inline const std::string folder = FCIP_BINARY_DIR "/tests/credentials";
    static inline ServerProcess* server = nullptr;
};

TEST_F(Credentials, RightPasswordIsServed) {
    const CommandResult result = names("operator:right password@");
    EXPECT_NE(result.output.find(":ZANTO_FCIPProtocolEndPoint.Name=\"1_10.1.1.1_10.2.1.1\""), std::string::npos)
        << result.output;
}

TEST_F(Credentials, WrongPasswordAndUnknownUserAreRefusedAlike) {
    const std::string refusal = "*\n* wbemcli: Http Exception: Invalid username/password.\n*\n";
    EXPECT_EQ(names("operator:wrong@").output, refusal);
    EXPECT_EQ(names("nobody:right password@").output, refusal);
}

TEST_F(Credentials, PasswordIsAskedForWhereThereIsNone) {
    EXPECT_EQ(names("").output, "*\n* wbemcli: Http Exception: Username/password required.\n*\n");
}

TEST_F(Credentials, HttpOnThePortOfHttpsIsNotServed) {
    const CommandResult result = names("operator:right password@", "http");
    EXPECT_EQ(result.output.find("ZANTO_FCIPProtocolEndPoint.Name"), std::string::npos) << result.output;
}

} // namespace
} // namespace cmpihost
