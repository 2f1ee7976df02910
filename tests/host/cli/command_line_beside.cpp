// The simulated switch's own provider, which is loaded beside the default one.
#include "host/cli/loaded_provider.h"
#include "tests/host/cli/command_line_test.h"

namespace cmpihost {
namespace {

const std::string fcip_provider = FCIP_BINARY_DIR "/lib/libFCIPProvider.so";
const std::string ethernet_port = "ZANTO_EthernetPort.DeviceID=\"-2097086463\"";

class ProvidersBeside : public CommandLines {};

TEST_F(ProvidersBeside, AreAskedForTheirClasses) {
    for (const char* process : {"--timeout=600", "--no-fork"}) { // its own, or this one
        EXPECT_EQ(cmpihost_with({"--count", process, "ein", "ZANTO_FCPort"}).out, "15\n");
        EXPECT_EQ(cmpihost_with({"--count", process, "ei", "zanto_ethernetport"}).out, "5\n");
        EXPECT_EQ(cmpihost_with({"--count", process, "gi", ethernet_port}).out, "1\n");
        EXPECT_EQ(cmpihost_with({"--count", process, "ein", "ZANTO_FCIPProfile"}).out, "5\n");
    }
}

TEST_F(ProvidersBeside, AreNotAskedForAssociations) {
    EXPECT_EQ(cmpihost_with({"--count", "ain", "--ac", "ZANTO_EthernetPortProtocolEndpoint", ethernet_port}).out,
              "1\n");
}

TEST_F(ProvidersBeside, AreOverTheSameSwitch) {
    const Outcome outcome = cmpihost_with(
        {"--scenario", FCIP_SOURCE_DIR "/scenarios/single-tunnel.toml", "ein", "ZANTO_PhysicalComputerSystem"});
    EXPECT_NE(outcome.out.find("edge-sw1"), std::string::npos) << outcome.out << outcome.err;
}

TEST_F(ProvidersBeside, AreNotThereWithAProviderThatIsNamed) {
    for (const std::vector<std::string>& named :
         {std::vector<std::string>{"--provider", fcip_provider}, std::vector<std::string>{"--name", "FCIPProvider"}}) {
        std::vector<std::string> arguments{"--count", "ein", "ZANTO_FCPort"};
        arguments.insert(arguments.begin(), named.begin(), named.end());
        EXPECT_EQ(cmpihost_with(arguments).out, "0\n");
    }
}

TEST_F(ProvidersBeside, AreCountedWithTheOthers) {
    const std::string counts = cmpihost_with({"-o", "text", "count"}).out;
    for (const char* row : {"\nZANTO_PhysicalComputerSystem        1\n", "\nZANTO_LogicalComputerSystem         5\n",
                            "\nZANTO_EthernetPort                  5\n", "\nZANTO_FCPort                        15\n"})
        EXPECT_NE(counts.find(row), std::string::npos) << counts;
}

TEST_F(ProvidersBeside, AnswerAsTheSchemaHasIt) {
    for (const char* class_name :
         {"ZANTO_PhysicalComputerSystem", "ZANTO_LogicalComputerSystem", "ZANTO_EthernetPort", "ZANTO_FCPort"}) {
        const Outcome outcome = cmpihost_with({"--check", "ei", class_name});
        EXPECT_EQ(outcome.exit_code, 0);
        EXPECT_EQ(outcome.err, "");
    }
}

TEST_F(ProvidersBeside, WhoseRegistrationCannotBeReadAreTold) {
    Options options = read_command_line({"ein", "C"}).options.value();
    options.beside = "/no/such.reg";
    try {
        const LoadedProvider provider(options, {stdout, stderr});
        ADD_FAILURE() << "it was loaded";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "/no/such.reg: cannot be read, expected a file with text");
    }
}

} // namespace
} // namespace cmpihost
