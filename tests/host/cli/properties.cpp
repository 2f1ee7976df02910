// Single properties, by the provider's property interface.
#include "tests/host/cli/command_line_test.h"

namespace cmpihost {
namespace {

const std::string note = "note: class Test_Store is not in the schema\n";

class Properties : public CommandLines {
  protected:
    static Outcome ask_store(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(),
                         {"--provider", TEST_PROVIDERS "/host_property_provider.so", "--name", "Store"});
        return cmpihost_with(arguments);
    }
};

TEST_F(Properties, GetPrintsTheValueWithItsType) {
    const Outcome outcome = ask_store({"gp", "Test_Store", "Size"});
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "ReturnValue  uint32  7\n");
}

TEST_F(Properties, GetInJson) {
    const Outcome outcome = ask_store({"-o", "json", "gp", "Test_Store", "Size"});
    EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
    EXPECT_NE(outcome.out.find("\"type\": \"uint32\""), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("\"value\": 7"), std::string::npos) << outcome.out;
}

TEST_F(Properties, SetHandsOverTheValueWithItsType) {
    EXPECT_EQ(ask_store({"sp", "Test_Store", "Size=8"}).exit_code, 0);
    const Outcome text = ask_store({"sp", "Test_Store", "Size=big"});
    EXPECT_EQ(text.exit_code, 1);
    EXPECT_EQ(text.err, note + "CIM error 13 (TYPE_MISMATCH)\n");
    const Outcome large = ask_store({"sp", "Test_Store", "Size=4294967296"});
    EXPECT_EQ(large.err, note + "CIM error 13 (TYPE_MISMATCH)\n") << "the value itself arrives";
}

TEST_F(Properties, TheNameArrives) {
    for (const std::vector<std::string>& words : {std::vector<std::string>{"gp", "Test_Store", "Colour"},
                                                  std::vector<std::string>{"sp", "Test_Store", "Colour=1"}}) {
        const Outcome outcome = ask_store(words);
        EXPECT_EQ(outcome.exit_code, 1);
        EXPECT_EQ(outcome.err, note + "CIM error 12 (NO_SUCH_PROPERTY): Colour\n");
    }
}

TEST_F(Properties, AProviderWithoutTheInterface) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"gp", "Test_Thing", "Name"}, std::vector<std::string>{"sp", "Test_Thing", "Name=1"}})
        EXPECT_EQ(ask(words).err, "note: class Test_Thing is not in the schema\nCIM error 7 (NOT_SUPPORTED)\n");
}

} // namespace
} // namespace cmpihost
