// Gets of associations, whose instances are put together again from the keys of the path.
#pragma once

#include "tests/support/request_test.h"

namespace test {

struct RebuiltAssociation {
    const char* class_name;
    const char* role1;
    const char* role2;

    /// Its path with two made-up ends.
    cmpihost::Object path() const {
        const auto end = std::make_shared<const cmpihost::Object>(path_of("ZANTO_X", {{"Name", "1"}}));
        auto path = path_of(class_name);
        path.keys = {{role1, "reference", {end}}, {role2, "reference", {end}}};
        return path;
    }
};

/// Those that FCIP_GetInstance and get_fcip_instance both serve.
inline constexpr RebuiltAssociation rebuilt_associations[] = {
    {"ZANTO_SANFCIPEndpoint", "Antecedent", "Dependent"},
    {"ZANTO_SANIPEndpoint", "Antecedent", "Dependent"},
    {"ZANTO_FCIPTCPEndpoint", "Antecedent", "Dependent"},
    {"ZANTO_TCPIPEndpoint", "Antecedent", "Dependent"},
    {"ZANTO_SANTCPEndpoint", "Antecedent", "Dependent"},
    {"ZANTO_FCIPPEBasedOn", "GroupComponent", "PartComponent"},
    {"ZANTO_FCIPElementSettingData", "ManagedElement", "SettingData"},
    {"ZANTO_TCPElementSettingData", "ManagedElement", "SettingData"},
    {"ZANTO_IPElementSettingData", "ManagedElement", "SettingData"},
    {"ZANTO_EthernetPortStatisticalData", "ManagedElement", "Stats"},
};

/// The answer is the association's instance alone.
inline void expect_rebuilt(const cmpihost::Answer& answer, const RebuiltAssociation& row) {
    ASSERT_EQ(answer.objects.size(), 1u);
    EXPECT_EQ(answer.objects[0].class_name, row.class_name);
    EXPECT_NE(answer.objects[0].property(row.role1), nullptr);
    EXPECT_NE(answer.objects[0].property(row.role2), nullptr);
}

} // namespace test
