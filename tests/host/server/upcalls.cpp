// What providers ask the broker for while they answer.
#include "host/server/service.h"
#include "host/server/upcall_answers.h"
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
        settings.providers = {without_methods};
    }

    /// How often each of them is asked when the broker is asked for a method.
    std::vector<std::uint64_t> calls_for_method(const std::vector<ProviderFile>& providers) {
        settings.providers = providers;
        const StandardOutputElsewhere quiet("", stderr);
        const Catalogue catalogue(settings);
        const UpcallAnswers answers(catalogue);
        const CallScope scope;
        CMPIStatus status{CMPI_RC_ERR_FAILED, nullptr};
        broker()->bft->invokeMethod(broker(), scope.context(), new_path({"Fault_Up", "root/cimv2", {}, {}, {}}),
                                    "Quiet", nullptr, nullptr, &status);
        EXPECT_EQ(status.rc, CMPI_RC_OK);
        std::vector<std::uint64_t> calls;
        for (const ProviderFigures& each : catalogue.providers())
            calls.push_back(each.calls);
        return calls;
    }

    const ProviderFile without_methods{TEST_PROVIDERS "/host_fault_provider.so", "Any"};
    const ProviderFile with_methods{TEST_PROVIDERS "/host_good_provider.so", "Good"};
};

TEST_F(UpcallTest, AreAnsweredByServedClasses) {
    const Heard heard = ask("EnumerateInstances", of_class("Fault_Up"));
    EXPECT_EQ(ending(heard), "ok 1"); // which it is only if a class that nobody serves was invalid
    EXPECT_EQ(heard.count("<PROPERTY NAME=\"Name\" TYPE=\"string\"><VALUE>first</VALUE>"), 1u);
    EXPECT_EQ(heard.count("<PROPERTY NAME=\"Got\" TYPE=\"uint16\"><VALUE>2</VALUE>"), 1u);
    EXPECT_EQ(heard.count("<PROPERTY NAME=\"Property\" TYPE=\"uint16\"><VALUE>2</VALUE>"), 1u);
}

TEST_F(UpcallTest, ChangesAreMadeOnce) {
    EXPECT_EQ(calls_for_method({with_methods, without_methods}), (std::vector<std::uint64_t>{1, 0}));
    EXPECT_EQ(calls_for_method({without_methods, with_methods}), (std::vector<std::uint64_t>{1, 1}));
}

TEST_F(UpcallTest, EndOfAnotherServiceLeavesThemAnswered) {
    auto other = std::make_unique<Service>(settings);
    service();
    other.reset();
    EXPECT_EQ(ending(ask("EnumerateInstances", of_class("Fault_Up"))), "ok 1");
}

} // namespace
} // namespace cmpihost::server
