// The fixture of the IP, TCP, LAN and Ethernet classes' tests: calls a builder on a row of the small switch.
#pragma once

#include "provider/classes/builders.h"
#include "tests/support/provider_test.h"

namespace test {

/// What the tests ask for; builders hand both on unchecked.
inline constexpr const char* asked_class = test::made_up_class;
inline constexpr const char* asked_name_space = "root/cimv2";

/// All the ways in which a platform read brings no row.
inline constexpr switchsim::Fault no_row[] = {switchsim::Fault::fail, switchsim::Fault::fail_leaving_record,
                                              switchsim::Fault::succeed_without_record};

class NetTest : public ProviderTest {
  protected:
    void TearDown() override {
        EXPECT_EQ(switchsim::undropped_messages(), 0U);
        ProviderTest::TearDown();
    }

    static FcipLinkEntry& link(switchsim::LinkKey key = tunnel_1) { return the_switch().links.at(key); }
    static FcipEntityEntry& profile(std::uint32_t id = 3) { return the_switch().profiles.at(id); }
    static switchsim::Port& port(std::uint32_t if_index = ethernet_1) { return the_switch().ports.at(if_index); }

    CMPIInstance* build(fcip::link_instance_builder* builder, switchsim::LinkKey key = tunnel_1,
                        const char** names = nullptr) {
        return build_from(builder, link(key), names);
    }

    /// The same from a row that need not stand in the table.
    CMPIInstance* build_from(fcip::link_instance_builder* builder, const FcipLinkEntry& row,
                             const char** names = nullptr) {
        return call([&] { return builder(asked_class, asked_name_space, &row, names); });
    }

    CMPIObjectPath* fill(fcip::link_path_builder* builder, switchsim::LinkKey key = tunnel_1) {
        return fill_from(builder, link(key));
    }

    CMPIObjectPath* fill_from(fcip::link_path_builder* builder, const FcipLinkEntry& row) {
        return call([&] { return builder(asked_class, asked_name_space, &row); });
    }

    /// The rows of what a builder made; none if it made nothing.
    Rows rows_of(const CMPIInstance* instance) { return cmpihost::is_live(instance) ? properties(instance) : Rows{}; }
    Rows rows_of(const CMPIObjectPath* path) { return cmpihost::is_live(path) ? keys(path) : Rows{}; }

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

/// The value of a property or key; "(not set)" when there is none.
inline std::string value_in(const Rows& rows, const std::string& name) {
    for (const Row& row : rows)
        if (row[0] == name)
            return row[2];
    return "(not set)";
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

} // namespace test
