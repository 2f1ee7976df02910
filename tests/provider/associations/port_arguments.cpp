// Class name and namespace of a port: which comes first differs from caller to caller. The platform accepts both and
// takes the second text as the class name where either could be one, which shows the order.
#include "tests/provider/associations/association_test.h"

namespace {

using namespace test;

constexpr const char* class_like_namespace = "ZANTO_Namespace";

class PortArguments : public AssociationTest {
  protected:
    enum class order { class_first, namespace_first };

    /// The order in which the class text reached the platform, by the class of the one object that went out.
    static order order_of(const std::string& class_name) {
        EXPECT_TRUE(class_name == class_like_namespace || class_name.starts_with("ZANTO_EthernetPort") ||
                    class_name == "ZANTO_FCPort")
            << class_name;
        return class_name == class_like_namespace ? order::class_first : order::namespace_first;
    }

    order of_associators(fcip::associators_member* member, const char* key_value, const char* asked) {
        const auto outcome = outcome_of([&] {
            return member(key_value, asked, nullptr, nullptr, nullptr, nullptr, scope.result(), class_like_namespace);
        });
        return order_of(outcome.answer.objects.at(0).class_name);
    }

    order of_names(fcip::associator_names_member* member, const char* key_value, const char* asked) {
        const auto outcome = outcome_of(
            [&] { return member(key_value, asked, nullptr, nullptr, nullptr, scope.result(), class_like_namespace); });
        return order_of(outcome.answer.objects.at(0).class_name);
    }

    /// Of the first end of an association, by both operations.
    order of_references(fcip::references_member* member, fcip::reference_names_member* names, const char* key_value,
                        const char* asked) {
        const auto first_end = [](const cmpihost::Property& role) {
            return std::get<cmpihost::Value::Reference>(role.value.data)->class_name;
        };
        const auto instance = outcome_of(
            [&] { return member(key_value, asked, nullptr, nullptr, scope.result(), class_like_namespace); });
        const auto path =
            outcome_of([&] { return names(key_value, asked, nullptr, scope.result(), class_like_namespace); });
        const auto name = first_end(instance.answer.objects.at(0).properties.at(0));
        EXPECT_EQ(first_end(path.answer.objects.at(0).keys.at(0)), name);
        return order_of(name);
    }
};

TEST_F(PortArguments, AssociatorsGiveTheClassFirst) {
    EXPECT_EQ(of_associators(fcip::get_fcip_pe_associators, "3_x", "ZANTO_FCPortProtocolEndPoint"), order::class_first);
    EXPECT_EQ(of_associators(fcip::get_ip_pe_associators, "16777218", "ZANTO_IPEthernetEndpoint"), order::class_first);
    EXPECT_EQ(of_associators(fcip::get_lan_endpoint_associators, "-2096889856", "ZANTO_EthernetPortProtocolEndpoint"),
              order::class_first);
    EXPECT_EQ(of_associators(fcip::get_eth_stat_associators, "-2096889856", "ZANTO_EthernetPortStatisticalData"),
              order::class_first);
}

TEST_F(PortArguments, NamesOfAPortsStatisticsGiveTheNamespaceFirst) {
    EXPECT_EQ(of_names(fcip::get_eth_stat_associator_names, "-2096889856", "ZANTO_EthernetPortStatisticalData"),
              order::namespace_first);
}

TEST_F(PortArguments, OtherNamesGiveTheClassFirstButForTheWalkOverPorts) {
    EXPECT_EQ(of_names(fcip::get_fcip_pe_associator_names, "3_x", "ZANTO_FCPortProtocolEndPoint"), order::class_first);
    EXPECT_EQ(of_names(fcip::get_ip_pe_associator_names, "16777218", "ZANTO_IPEthernetEndpoint"), order::class_first);
    EXPECT_EQ(of_names(fcip::get_lan_endpoint_associator_names, "-2096889856", "ZANTO_EthernetPortProtocolEndpoint"),
              order::namespace_first);
}

TEST_F(PortArguments, FibreChannelPortReferencesGiveTheNamespaceFirst) {
    EXPECT_EQ(of_references(fcip::get_fcip_pe_references, fcip::get_fcip_pe_reference_names, "3_x",
                            "ZANTO_FCPortProtocolEndPoint"),
              order::namespace_first);
}

TEST_F(PortArguments, OtherReferencesGiveTheClassFirst) {
    EXPECT_EQ(of_references(fcip::get_ip_pe_references, fcip::get_ip_pe_reference_names, "16777218",
                            "ZANTO_IPEthernetEndpoint"),
              order::class_first);
    EXPECT_EQ(of_references(fcip::get_lan_endpoint_references, fcip::get_lan_endpoint_reference_names, "-2096889856",
                            "ZANTO_EthernetPortProtocolEndpoint"),
              order::class_first);
    for (const char* asked : {"ZANTO_EthernetPortProtocolEndpoint", "ZANTO_EthernetPortStatisticalData"})
        EXPECT_EQ(
            of_references(fcip::get_eth_port_references, fcip::get_eth_port_reference_names, "-2096889856", asked),
            order::class_first);
    EXPECT_EQ(of_references(fcip::get_eth_stat_references, fcip::get_eth_stat_reference_names, "-2096889856",
                            "ZANTO_EthernetPortStatisticalData"),
              order::class_first);
}

} // namespace
