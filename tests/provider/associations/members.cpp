// What all 62 members have in common: their frames, and what they make of keys that lead nowhere.
#include "tests/provider/associations/association_test.h"

#include <map>

namespace {

using namespace test;

class Members : public AssociationTest {
  protected:
    Outcome run_any(const Member& member, const char* key_value, const char* association_class) {
        return std::visit([&](auto* function) { return run(function, key_value, association_class); }, member.function);
    }

    static std::string entering(const Member& member) { return "Entering " + member.name + "\n"; }
    static std::string exiting(const Member& member) { return "Exiting " + member.name + "\n"; }
};

/// The line with the association class, "%s" in its place; empty for members without one.
std::string class_line(const Member& member) {
    const std::string& name = member.name;
    if (member.is_associator())
        return name.starts_with("get_ip_pe_") ? "Association Class %s \n" : "";
    if (name.starts_with("get_fcip_pe_"))
        return " ****** Result Class :%s  ********** \n";
    for (const char* plain : {"get_ip_pe_", "get_tcp_pe_", "get_lan_endpoint_", "get_eth_port_"})
        if (name.starts_with(plain))
            return "Result Class :%s \n";
    return "";
}

std::string with(std::string line, const std::string& association_class) {
    if (const auto at = line.find("%s"); at != std::string::npos)
        line.replace(at, 2, association_class);
    return line;
}

/// An association class that the member serves, for members whose lookups can fail.
std::map<std::string, const char*> served_by_token() {
    return {
        {"get_fcip_pe", "ZANTO_FCIPTCPEndpoint"},
        {"get_fcip_remote_pe", "ZANTO_SANFCIPEndpoint"},
        {"get_ip_pe", "ZANTO_TCPIPEndpoint"},
        {"get_ip_remote_pe", "ZANTO_SANIPEndpoint"},
        {"get_tcp_pe", "ZANTO_TCPEndPointStatisticalData"},
        {"get_tcp_remote_pe", "ZANTO_SANTCPEndpoint"},
        {"get_lan_endpoint", "ZANTO_IPEthernetEndpoint"},
    };
}

std::string stem(const std::string& name) {
    for (const char* ending : {"_associators", "_associator_names", "_references", "_reference_names"})
        if (name.ends_with(ending))
            return name.substr(0, name.size() - std::string(ending).size());
    return name;
}

TEST_F(Members, ThereAre62) {
    EXPECT_EQ(members().size(), 62u);
}

TEST_F(Members, WithoutAssociationClassAssociatorsReturnAtOnce) {
    for (const Member& member : members()) {
        if (!member.is_associator())
            continue;
        const auto outcome = run_any(member, "3", nullptr);
        EXPECT_EQ(outcome.status, 0) << member.name;
        EXPECT_TRUE(outcome.answer.objects.empty()) << member.name;
        EXPECT_EQ(outcome.answer.null_results, 0u);
        EXPECT_EQ(trace, entering(member) + with(class_line(member), "(null)"));
    }
    EXPECT_EQ(switchsim::total_calls(), 0u);
}

TEST_F(Members, WithoutAssociationClassReferencesMatchNothing) {
    for (const Member& member : members()) {
        if (member.is_associator())
            continue;
        const auto outcome = run_any(member, "3", nullptr);
        EXPECT_EQ(outcome.status, 0) << member.name;
        EXPECT_TRUE(outcome.answer.objects.empty()) << member.name;
        EXPECT_EQ(trace, entering(member) + with(class_line(member), "(null)") + exiting(member));
    }
    EXPECT_EQ(switchsim::total_calls(), 0u);
}

TEST_F(Members, AnUnknownAssociationClassIsAnsweredWithNothing) {
    for (const Member& member : members()) {
        if (member.name == "get_ip_pe_associator_names")
            continue; // answers the system to any name
        const auto outcome = run_any(member, "3", "ZANTO_NoSuchAssociation");
        EXPECT_EQ(outcome.status, 0) << member.name;
        EXPECT_TRUE(outcome.answer.objects.empty()) << member.name;
        EXPECT_EQ(trace, entering(member) + with(class_line(member), "ZANTO_NoSuchAssociation") + exiting(member));
    }
    EXPECT_EQ(switchsim::total_calls(), 0u);
}

TEST_F(Members, AKeyWithoutTokensIsAFailedLookup) {
    const auto served = served_by_token();
    unsigned checked = 0;
    for (const Member& member : members()) {
        const auto association = served.find(stem(member.name));
        if (association == served.end())
            continue;
        SCOPED_TRACE(member.name);
        const auto outcome = run_any(member, "_", association->second);
        EXPECT_TRUE(outcome.answer.objects.empty());
        EXPECT_EQ(outcome.answer.null_results, 0u);
        if (member.is_associator()) {
            EXPECT_EQ(outcome.status, 0);
            EXPECT_TRUE(trace.ends_with(exiting(member))) << trace;
        } else {
            EXPECT_EQ(outcome.status, stem(member.name) == "get_fcip_pe" ? 0 : -1);
            EXPECT_EQ(trace.find("Exiting "), std::string::npos) << trace;
        }
        ++checked;
    }
    EXPECT_EQ(checked, 28u);
}

TEST_F(Members, AnEthernetPortsKeyWithoutTokensFailsItsReferences) {
    unsigned checked = 0;
    for (const Member& member : members()) {
        if (stem(member.name) != "get_eth_port" || member.is_associator())
            continue;
        SCOPED_TRACE(member.name);
        const auto outcome = run_any(member, "_", "ZANTO_EthernetPortStatisticalData");
        EXPECT_TRUE(outcome.answer.objects.empty());
        EXPECT_EQ(outcome.status, -1);
        EXPECT_EQ(trace.find("Exiting "), std::string::npos) << trace;
        ++checked;
    }
    EXPECT_EQ(checked, 2u);
}

TEST_F(Members, AnEmptyLinkTableIsARowOfZeroesEvenToAShortKey) {
    the_switch().links.clear();
    const auto outcome = run(fcip::get_fcip_pe_associators, "_", "ZANTO_FCIPTCPEndpoint");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.answer.null_results, 1u);
    EXPECT_EQ(run(fcip::get_ip_pe_references, "_", "ZANTO_TCPIPEndpoint").status, -1); // its ends cannot be made
}

TEST_F(Members, AnEmptyKeyReadAsANumberIs0) {
    EXPECT_EQ(run(fcip::get_fcip_settings_associators, "", "ZANTO_FCIPElementSettingData").answer.null_results, 1u);
    EXPECT_EQ(run(fcip::get_fcip_settings_references, "", "ZANTO_FCIPElementSettingData").status, -1);
    EXPECT_EQ(run(fcip::get_profile_associators, "", "ZANTO_FCIPPEBasedOn").answer.null_results, 1u);
    EXPECT_TRUE(run(fcip::get_eth_port_associators, "", "ZANTO_EthernetPortStatisticalData").answer.objects.empty());
}

} // namespace
