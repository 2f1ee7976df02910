// What providers ask the broker for while they answer.
#include "host/server/service.h"
#include "tests/host/server/service_test.h"

namespace cmpihost::server {
namespace {

class UpcallTest : public ServiceTest {
  protected:
    UpcallTest() {
        const std::string file = folder + "/upcalls.mof";
        std::ofstream(file) << "class Fault_Up { [Key] string Name; uint16 Got; uint16 Property; };\n"
                               "class Fault_Keyless { [Key] string Name; uint16 Mapped; };\n";
        settings.schema = {file};
        settings.providers = {{TEST_PROVIDERS "/host_fault_provider.so", "Any"}};
    }
};

TEST_F(UpcallTest, AreAnsweredByServedClasses) {
    const Heard heard = ask("EnumerateInstances", of_class("Fault_Up"));
    EXPECT_EQ(ending(heard), "ok 1"); // which it is only if a class that nobody serves was invalid
    EXPECT_EQ(heard.count("<PROPERTY NAME=\"Name\" TYPE=\"string\"><VALUE>first</VALUE>"), 1u);
    EXPECT_EQ(heard.count("<PROPERTY NAME=\"Got\" TYPE=\"uint16\"><VALUE>2</VALUE>"), 1u);
    EXPECT_EQ(heard.count("<PROPERTY NAME=\"Property\" TYPE=\"uint16\"><VALUE>2</VALUE>"), 1u);
}

TEST_F(UpcallTest, EndOfAnotherServiceLeavesThemAnswered) {
    auto other = std::make_unique<Service>(settings);
    service();
    other.reset();
    EXPECT_EQ(ending(ask("EnumerateInstances", of_class("Fault_Up"))), "ok 1");
}

} // namespace
} // namespace cmpihost::server
