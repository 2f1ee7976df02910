// The registration files for CIM servers: every served class is there once, as what it is, and no other.
#include "provider/mi/association_routes.h"
#include "provider/mi/class_catalogue.h"
#include "provider/mi/enumeration_routes.h"
#include "tests/host/mof/mof_files.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>

namespace cmpihost::mof {
namespace {

/// The classes that the provider answers for, and whether each is an association.
const std::map<std::string, bool> served = {
    {"ZANTO_FCIPProtocolEndPoint", false},
    {"ZANTO_RemoteFCIPPort", false},
    {"ZANTO_FCIPProfile", false},
    {"ZANTO_FCIPSettings", false},
    {"ZANTO_IPSettings", false},
    {"ZANTO_TCPSettings", false},
    {"ZANTO_IPProtocolEndPoint", false},
    {"ZANTO_RemoteIPServiceAccessPoint", false},
    {"ZANTO_RemoteIPPort", false},
    {"ZANTO_TCPProtocolEndPoint", false},
    {"ZANTO_RemoteTCPPort", false},
    {"ZANTO_TCPEndPointStatistics", false},
    {"ZANTO_TCPStatisticalData", false},
    {"ZANTO_IPEndPointStatistics", false},
    {"ZANTO_LANEndPoint", false},
    {"ZANTO_EthernetPortStatistics", false},
    {"ZANTO_FCIPElementSettingData", true},
    {"ZANTO_IPElementSettingData", true},
    {"ZANTO_TCPElementSettingData", true},
    {"ZANTO_FCIPTCPEndpoint", true},
    {"ZANTO_TCPIPEndpoint", true},
    {"ZANTO_SANFCIPEndpoint", true},
    {"ZANTO_SANIPEndpoint", true},
    {"ZANTO_SANTCPEndpoint", true},
    {"ZANTO_FCPortProtocolEndPoint", true},
    {"ZANTO_SwitchHostedFCIPAccessPoint", true},
    {"ZANTO_SwitchHostedIPAccessPoint", true},
    {"ZANTO_SwitchHostedTCPAccessPoint", true},
    {"ZANTO_FCIPPEBasedOn", true},
    {"ZANTO_IPEthernetEndpoint", true},
    {"ZANTO_EthernetPortProtocolEndpoint", true},
    {"CIM_HostedAccessPoint", true},
    {"ZANTO_IPEndPointStatisticalData", true},
    {"ZANTO_TCPEndPointStatisticalData", true},
    {"ZANTO_EthernetPortStatisticalData", true},
};

/// Classes that the provider refers to and the switch serves.
const std::set<std::string> of_the_switch = {"ZANTO_EthernetPort", "ZANTO_FCPort", "ZANTO_LogicalComputerSystem",
                                             "ZANTO_PhysicalComputerSystem"};

/// A value as text: "x", 2, {2, 3}, NULL.
std::string shown(const Value* value) {
    if (!value)
        return "(absent)";
    if (const auto* text = std::get_if<std::string>(&value->data))
        return '"' + *text + '"';
    if (const auto* number = std::get_if<std::uint64_t>(&value->data))
        return std::to_string(*number);
    if (const auto* array = std::get_if<Value::Array>(&value->data)) {
        std::string text;
        for (const Value& element : *array)
            text += (text.empty() ? "" : ", ") + shown(&element);
        return '{' + text + '}';
    }
    return std::holds_alternative<std::monostate>(value->data) ? "NULL" : "(other)";
}

// ---------------------------------------------------------------------------------------------- the served classes

TEST(Registration, EveryDeclaredClassIsServedOrTheSwitchs) {
    const Schema& schema = provider_schema();
    for (const ClassDeclaration& declaration : schema.classes()) {
        if (!is_ours(declaration))
            continue;
        EXPECT_NE(served.contains(declaration.name), of_the_switch.contains(declaration.name)) << declaration.name;
    }
    for (const auto& [name, association] : served) {
        ASSERT_NE(schema.find(name), nullptr) << name;
        EXPECT_EQ(schema.find(name)->association, association) << name;
    }
}

/// The spelling of a class that stands in `served`; the name itself if it does not.
std::string served_spelling(const std::string& name) {
    for (const auto& [served_name, association] : served)
        if (same_name(served_name, name))
            return served_name;
    return name;
}

/// The classes that the provider's tables test requests for.
std::set<std::string> routed_classes() {
    std::set<std::string> names;
    const auto add = [&](const auto& rows) {
        for (const auto& row : rows)
            names.insert(served_spelling(row.class_name));
    };
    add(fcip::class_keys());
    add(fcip::path_routes());
    add(fcip::instance_routes());
    add(fcip::associators_routes());
    add(fcip::associator_names_routes());
    add(fcip::references_routes());
    add(fcip::reference_names_routes());
    return names;
}

TEST(Registration, ServesWhatTheProvidersTablesRoute) {
    const auto routed = routed_classes();
    EXPECT_FALSE(routed.empty());
    for (const std::string& name : routed)
        EXPECT_NE(served.contains(name), of_the_switch.contains(name)) << name;
}

TEST(Registration, ServesNoInstanceClassWithoutARoute) {
    const auto routed = routed_classes();
    for (const auto& [name, association] : served)
        EXPECT_TRUE(association || routed.contains(name)) << name;
}

// ---------------------------------------------------------------------------------------------- OpenPegasus

class OpenPegasus : public testing::Test {
  protected:
    std::vector<const InstanceDeclaration*> of(const std::string& class_name) const {
        std::vector<const InstanceDeclaration*> found;
        for (const InstanceDeclaration& instance : file.instances())
            if (instance.class_name == class_name)
                found.push_back(&instance);
        return found;
    }

    const Schema file = read_schema({schema_folder + "registration/openpegasus.mof"});
};

TEST_F(OpenPegasus, HasOneModule) {
    const auto modules = of("PG_ProviderModule");
    ASSERT_EQ(modules.size(), 1u);
    EXPECT_EQ(shown(modules[0]->value("Name")), "\"FCIPProviderModule\"");
    EXPECT_EQ(shown(modules[0]->value("Location")), "\"FCIPProvider\"");
    EXPECT_EQ(shown(modules[0]->value("InterfaceType")), "\"CMPI\"");
    EXPECT_EQ(shown(modules[0]->value("InterfaceVersion")), "\"2.0.0\"");
    EXPECT_EQ(shown(modules[0]->value("UserContext")), "5");
    EXPECT_EQ(shown(modules[0]->value("Version")), "\"1.0.0\"");
    EXPECT_EQ(shown(modules[0]->value("Vendor")), "\"ZANTO\"");
}

TEST_F(OpenPegasus, HasOneProviderNamedAsItsFactoriesBegin) {
    const auto providers = of("PG_Provider");
    ASSERT_EQ(providers.size(), 1u);
    EXPECT_EQ(shown(providers[0]->value("ProviderModuleName")), "\"FCIPProviderModule\"");
    EXPECT_EQ(shown(providers[0]->value("Name")), "\"FCIPProvider\"");
}

TEST_F(OpenPegasus, HasOneCapabilityPerServedClassAndNoOther) {
    std::set<std::string> classes;
    std::set<std::string> ids;
    for (const InstanceDeclaration* capability : of("PG_ProviderCapabilities")) {
        const std::string name = std::get<std::string>(capability->value("ClassName")->data);
        SCOPED_TRACE(name);
        ASSERT_TRUE(served.contains(name));
        EXPECT_TRUE(classes.insert(name).second);
        EXPECT_TRUE(ids.insert(shown(capability->value("CapabilityID"))).second);
        EXPECT_EQ(shown(capability->value("ProviderType")), served.at(name) ? "{2, 3}" : "{2}");
        EXPECT_EQ(shown(capability->value("ProviderModuleName")), "\"FCIPProviderModule\"");
        EXPECT_EQ(shown(capability->value("ProviderName")), "\"FCIPProvider\"");
        EXPECT_EQ(shown(capability->value("Namespaces")), "{\"root/cimv2\"}");
        EXPECT_EQ(shown(capability->value("SupportedProperties")), "NULL");
        EXPECT_EQ(shown(capability->value("SupportedMethods")), "NULL");
    }
    EXPECT_EQ(classes.size(), served.size());
    EXPECT_EQ(file.instances().size(), served.size() + 2);
}

// ---------------------------------------------------------------------------------------------- sfcb

struct Stanza {
    std::string class_name;
    std::map<std::string, std::string> entries;
    unsigned number_of_entries = 0;
};

std::string without_blanks_around(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The stanzas of a .reg file; a line that is no part of one ends the test.
std::vector<Stanza> read_stanzas(const std::string& path) {
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error(path + " cannot be read");
    std::vector<Stanza> stanzas;
    for (std::string line; std::getline(file, line);) {
        const auto colon = line.find(':');
        if (line.starts_with('[') && line.ends_with(']')) {
            stanzas.push_back({line.substr(1, line.size() - 2), {}, 0});
        } else if (line.starts_with("   ") && colon != std::string::npos && line[colon - 1] != ' ' &&
                   !stanzas.empty()) {
            stanzas.back().entries[without_blanks_around(line.substr(0, colon))] =
                without_blanks_around(line.substr(colon + 1));
            ++stanzas.back().number_of_entries;
        } else if (line != "#") {
            throw std::runtime_error("no part of a stanza: " + line);
        }
    }
    return stanzas;
}

TEST(Sfcb, HasOneStanzaPerServedClassAndNoOther) {
    std::set<std::string> classes;
    for (const Stanza& stanza : read_stanzas(schema_folder + "registration/sfcb.reg")) {
        SCOPED_TRACE(stanza.class_name);
        ASSERT_TRUE(served.contains(stanza.class_name));
        EXPECT_TRUE(classes.insert(stanza.class_name).second);
        const std::map<std::string, std::string> expected = {
            {"provider", "FCIPProvider"},
            {"location", "FCIPProvider"},
            {"type", served.at(stanza.class_name) ? "instance association" : "instance"},
            {"namespace", "root/cimv2"}};
        EXPECT_EQ(stanza.entries, expected);
        EXPECT_EQ(stanza.number_of_entries, 4u);
    }
    EXPECT_EQ(classes.size(), served.size());
}

} // namespace
} // namespace cmpihost::mof
