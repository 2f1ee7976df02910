// The fixture of the tests of the served classes: calls a builder on a row of the small switch, and reads what it made.
#pragma once

#include "provider/classes/builders.h"
#include "tests/support/provider_test.h"

#include <string>
#include <vector>

namespace test {

/// The namespace that the tests ask for; builders hand it on unchecked.
inline constexpr const char* name_space = "root/cimv2";

inline std::string entering(const std::string& function) {
    return "Entering " + function + "\n";
}

inline std::string exiting(const std::string& function) {
    return "Exiting " + function + "\n";
}

inline std::string location(const std::string& function, int line) {
    return " Function : " + function + " Line " + std::to_string(line) + " \n";
}

/// What value_in() and value_of() answer where there is no such property or key.
inline constexpr const char* not_set = "(not set)";

/// The value in the row of a name.
inline std::string value_in(const Rows& rows, const std::string& name) {
    for (const Row& row : rows)
        if (row[0] == name)
            return row[2];
    return not_set;
}

/// Rows with one value replaced.
inline Rows with(Rows rows, const std::string& name, const std::string& value) {
    for (Row& row : rows)
        if (row[0] == name)
            row[2] = value;
    return rows;
}

/// Rows without the ones of a name.
inline Rows without(Rows rows, const std::string& name) {
    std::erase_if(rows, [&](const Row& row) { return row[0] == name; });
    return rows;
}

class ClassTest : public ProviderTest {
  protected:
    void TearDown() override {
        EXPECT_EQ(switchsim::undropped_messages(), 0u);
        ProviderTest::TearDown();
    }

    // Rows of the small switch, which tests may change.
    static FcipLinkEntry& link(switchsim::LinkKey key = tunnel_1) { return the_switch().links.at(key); }
    static FcipEntityEntry& profile(std::uint32_t id = 3) { return the_switch().profiles.at(id); }
    static switchsim::Port& port(std::uint32_t if_index = ethernet_1) { return the_switch().ports.at(if_index); }

    /// What a builder makes of a row, which need not stand in the table.
    CMPIInstance* build(fcip::link_instance_builder* builder, const FcipLinkEntry& row = link(),
                        const char** properties = nullptr) {
        return call([&] { return builder(made_up_class, name_space, &row, properties); });
    }
    CMPIObjectPath* build(fcip::link_path_builder* builder, const FcipLinkEntry& row = link()) {
        return call([&] { return builder(made_up_class, name_space, &row); });
    }

    /// The rows of what a builder made; none if it made nothing.
    Rows rows_of(const CMPIInstance* instance) { return cmpihost::is_live(instance) ? properties(instance) : Rows{}; }
    Rows rows_of(const CMPIObjectPath* path) { return cmpihost::is_live(path) ? keys(path) : Rows{}; }

    /// The same of what `make` makes, which leaves no object in the test's scope and no count of its calls.
    template <typename Make>
    Rows made_by(Make make) {
        const cmpihost::CallScope own;
        Rows made = rows_of(make());
        EXPECT_FALSE(made.empty());
        switchsim::clear_counts();
        return made;
    }

    /// The value of a property or a key of what a builder made.
    template <typename T>
    std::string value_of(const T* object, const std::string& name) {
        return value_in(rows_of(object), name);
    }

    /// Class name, namespace and host of an instance or path: "ZANTO_AskedFor root/cimv2 switch-a"; "-" = no host.
    template <typename T>
    static std::string origin(const T* object) {
        const cmpihost::Object described = cmpihost::describe(object);
        return described.class_name + " " + described.name_space + " " + described.host.value_or("-");
    }

    /// The platform calls that `f` makes, in order.
    template <typename F>
    std::vector<std::string> calls_of(F f) {
        switchsim::clear_counts();
        switchsim::record_calls(true);
        f();
        switchsim::record_calls(false);
        return switchsim::recorded_calls();
    }
};

} // namespace test
