// What the tests of the FCIP class family share: the small switch's rows, a broker that breaks, and the trace lines of
// their helpers.
#pragma once

#include "provider/classes/builders.h"
#include "tests/support/provider_test.h"

#include <string>
#include <vector>

namespace test {

inline constexpr const char* name_space = "root/cimv2";

/// A broker whose new objects are without handle, in place of the usual one while it lives.
class HandlelessBroker {
  public:
    enum class Objects { paths, instances };

    explicit HandlelessBroker(Objects objects) : usual_(_broker), functions_(*_broker->eft), broker_(*_broker) {
        if (objects == Objects::paths)
            functions_.newObjectPath = [](const CMPIBroker*, const char*, const char*, CMPIStatus*) { return &path; };
        else
            functions_.newInstance = [](const CMPIBroker*, const CMPIObjectPath*, CMPIStatus*) { return &instance; };
        broker_.eft = &functions_;
        _broker = &broker_;
    }
    ~HandlelessBroker() { _broker = usual_; }
    HandlelessBroker(const HandlelessBroker&) = delete;
    HandlelessBroker& operator=(const HandlelessBroker&) = delete;

    static inline CMPIObjectPath path{nullptr, nullptr};
    static inline CMPIInstance instance{nullptr, nullptr};

  private:
    const CMPIBroker* usual_;
    CMPIBrokerEncFT functions_;
    CMPIBroker broker_;
};

/// Every way in which a read of a platform row comes to nothing.
inline constexpr switchsim::Fault read_faults[] = {switchsim::Fault::fail, switchsim::Fault::fail_leaving_record,
                                                   switchsim::Fault::succeed_without_record};

inline std::string entering(const std::string& function) {
    return "Entering " + function + "\n";
}

inline std::string exiting(const std::string& function) {
    return "Exiting " + function + "\n";
}

inline std::string location(const std::string& function, int line) {
    return " Function : " + function + " Line " + std::to_string(line) + " \n";
}

class FcipClassTest : public ProviderTest {
  protected:
    void SetUp() override {
        ProviderTest::SetUp();
        switchsim::record_calls(true);
    }
    void TearDown() override {
        switchsim::record_calls(false);
        EXPECT_EQ(switchsim::undropped_messages(), 0u);
        ProviderTest::TearDown();
    }

    /// Tunnel 1, whose row tests may change before they hand it to a builder.
    FcipLinkEntry& tunnel() { return the_switch().links.at(tunnel_1); }

    CMPIInstance* build(fcip::link_instance_builder* builder, const FcipLinkEntry& row,
                        const char** properties = nullptr, const char* class_name = test::made_up_class) {
        return call([&] { return builder(class_name, name_space, &row, properties); });
    }

    CMPIObjectPath* build(fcip::link_path_builder* builder, const FcipLinkEntry& row,
                          const char* class_name = test::made_up_class) {
        return call([&] { return builder(class_name, name_space, &row); });
    }

    /// The value of one property, with its type: "uint32 90"; "absent" without such a property.
    static std::string property(const CMPIInstance* instance, const char* name) {
        const cmpihost::Object object = cmpihost::describe(instance);
        const cmpihost::Property* found = object.property(name);
        return found == nullptr ? "absent" : found->type + " " + text_of(found->value);
    }

    /// The value of one key, likewise.
    static std::string key(const CMPIObjectPath* path, const char* name) {
        const cmpihost::Object object = cmpihost::describe(path);
        const cmpihost::Property* found = object.key(name);
        return found == nullptr ? "absent" : found->type + " " + text_of(found->value);
    }

    /// Class name, namespace and host of an instance or path: "ZANTO_AskedFor root/cimv2 switch-a"; "-" = no host.
    template <typename T>
    static std::string origin(const T* object) {
        const cmpihost::Object described = cmpihost::describe(object);
        return described.class_name + " " + described.name_space + " " + described.host.value_or("-");
    }
};

} // namespace test
