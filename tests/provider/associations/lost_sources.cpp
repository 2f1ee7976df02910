// What each of the 62 members answers to a source that is not there, or whose surroundings are not: one table.
#include "tests/provider/associations/association_test.h"

#include <algorithm>
#include <map>
#include <set>

namespace {

using namespace test;

/// The key of an object of the source class, a key that names no link, and one without tokens.
struct Keys {
    const char* good;
    const char* lost;
    const char* empty;
};

const std::map<std::string, Keys>& keys_of_members() {
    static const std::map<std::string, Keys> keys = {
        {"get_fcip_pe", {"3_10.1.1.1_192.168.100.101", "99_x_y", "_"}},
        {"get_fcip_remote_pe", {"0_192.168.100.101_10.1.1.1", "0_10.9.9.9_10.1.1.1", "_"}},
        {"get_ip_pe", {"16777218_10.1.1.1_192.168.100.101", "99_x_y", "_"}},
        {"get_ip_remote_pe", {"0_192.168.100.101_10.1.1.1", "0_10.9.9.9_10.1.1.1", "_"}},
        {"get_tcp_pe", {"16777218", "99", "_"}},
        {"get_tcp_remote_pe", {"0_16777218", "0_99", "_"}},
        {"get_lan_endpoint", {"-2096889856:02:00:00:aa:00:02", "99:x", ":_"}},
        {"get_eth_port", {"-2096889856", "99", "_"}},
        {"get_eth_stat", {"-2096889856", ":-2096889856", "_"}}, // the whole text is the number
        {"get_fcip_settings", {"16777218", "99", ""}},
        {"get_ip_setting", {"16777218", "99", ""}},
        {"get_ip_settings", {"16777218", "99", ""}},
        {"get_tcp_setting", {"16777218", "99", ""}},
        {"get_tcp_settings", {"16777218", "99", ""}},
        {"get_ip_stat", {"16777218", "99", ""}},
        {"get_tcp_stat", {"16777218", "99", ""}},
        {"get_tcp_statical_data", {"3", "99", ""}},
        {"get_profile", {"3", "99", ""}},
    };
    return keys;
}

constexpr const char* families[] = {"_associators", "_associator_names", "_references", "_reference_names"};

struct Branch {
    const char* source; ///< the members' name without its ending
    const char* asked;
};

const std::vector<Branch> branches = {
    {"get_fcip_pe", "ZANTO_FCIPElementSettingData"},
    {"get_fcip_pe", "ZANTO_FCIPTCPEndpoint"},
    {"get_fcip_pe", "ZANTO_SANFCIPEndpoint"},
    {"get_fcip_pe", "ZANTO_FCPortProtocolEndPoint"},
    {"get_fcip_pe", "ZANTO_FCIPPEBasedOn"},
    {"get_fcip_pe", "ZANTO_SwitchHostedFCIPAccessPoint"},
    {"get_ip_pe", "ZANTO_IPElementSettingData"},
    {"get_ip_pe", "ZANTO_IPEndPointStatisticalData"},
    {"get_ip_pe", "ZANTO_TCPIPEndpoint"},
    {"get_ip_pe", "ZANTO_IPEthernetEndpoint"},
    {"get_ip_pe", "ZANTO_SwitchHostedIPAccessPoint"},
    {"get_ip_pe", "ZANTO_SANIPEndpoint"},
    {"get_ip_pe", "ZANTO_NoSuchAssociation"},
    {"get_tcp_pe", "ZANTO_TCPEndPointStatisticalData"},
    {"get_tcp_pe", "ZANTO_FCIPTCPEndpoint"},
    {"get_tcp_pe", "ZANTO_FCIPTCPEnpoint"},
    {"get_tcp_pe", "ZANTO_TCPIPEndpoint"},
    {"get_tcp_pe", "ZANTO_SwitchHostedTCPAccessPoint"},
    {"get_tcp_pe", "ZANTO_SANTCPEndpoint"},
    {"get_tcp_pe", "ZANTO_TCPElementSettingData"},
    {"get_fcip_remote_pe", "ZANTO_SANFCIPEndpoint"},
    {"get_ip_remote_pe", "ZANTO_SANIPEndpoint"},
    {"get_tcp_remote_pe", "ZANTO_SANTCPEndpoint"},
    {"get_lan_endpoint", "ZANTO_IPEthernetEndpoint"},
    {"get_lan_endpoint", "ZANTO_EthernetPortProtocolEndpoint"},
    {"get_lan_endpoint", "CIM_HostedAccessPoint"},
    {"get_eth_port", "ZANTO_EthernetPortProtocolEndpoint"},
    {"get_eth_port", "ZANTO_EthernetPortStatisticalData"},
    {"get_eth_port", "ZANTO_EthernetPortStatistics"},
    {"get_eth_stat", "ZANTO_EthernetPortStatisticalData"},
    {"get_fcip_settings", "ZANTO_FCIPElementSettingData"},
    {"get_ip_setting", "ZANTO_IPElementSettingData"},
    {"get_ip_settings", "ZANTO_IPElementSettingData"},
    {"get_tcp_setting", "ZANTO_TCPElementSettingData"},
    {"get_tcp_settings", "ZANTO_TCPElementSettingData"},
    {"get_ip_stat", "ZANTO_IPEndpointStatisticalData"},
    {"get_tcp_stat", "ZANTO_TCPEndpointStatisticalData"},
    {"get_tcp_statical_data", "ZANTO_TCPEndPointStatistics"},
    {"get_profile", "ZANTO_FCIPPEBasedOn"},
};

/// A situation: which key is asked for, and what is taken from the switch.
struct Situation {
    const char* Keys::*key;
    void (*prepare)(switchsim::Switch& sw);
};

const Situation situations[] = {
    {&Keys::good, [](switchsim::Switch&) {}},
    {&Keys::lost, [](switchsim::Switch&) {}},
    {&Keys::empty, [](switchsim::Switch&) {}},
    {&Keys::good, [](switchsim::Switch& sw) { sw.profiles.clear(); }},
    {&Keys::good, [](switchsim::Switch& sw) { sw.vsans.clear(); }},
    {&Keys::good, [](switchsim::Switch& sw) { sw.ports.clear(); }},
};

/// What a member came to, as a letter of the table below.
char letter(const Outcome& outcome) {
    const auto& answer = outcome.answer;
    const std::string out = std::string(answer.objects.size(), '1') + std::string(answer.null_results, '0') +
                            std::string(answer.invalid_results, 'x');
    if (outcome.status == -1)
        return out.empty() ? '-' : '?';
    const std::map<std::string, char> letters = {{"", '.'},  {"1", '1'},  {"11", '2'}, {"0", '0'},
                                                 {"x", 'x'}, {"10", 'w'}, {"0x", 'y'}, {"1x", 'z'}};
    return outcome.status == 0 && letters.contains(out) ? letters.at(out) : '?';
}

class LostSources : public AssociationTest {
  protected:
    /// The letters of a branch's four members; a blank where the source has none of that name.
    std::string answered(const Branch& branch, const Situation& situation) {
        use_small_switch();
        AssociationTest::SetUp();
        situation.prepare(the_switch());
        std::string letters;
        for (const char* family : families) {
            const std::string name = branch.source + std::string(family);
            const auto member = std::ranges::find(members(), name, &Member::name);
            if (member == members().end()) {
                letters += ' ';
                continue;
            }
            called.insert(name);
            const char* key_value = keys_of_members().at(branch.source).*situation.key;
            letters += letter(
                std::visit([&](auto* function) { return run(function, key_value, branch.asked); }, member->function));
        }
        return letters;
    }

    std::string picture() {
        std::string text = "\n";
        for (const Branch& branch : branches) {
            std::string line = branch.source;
            line.resize(22, ' ');
            line += branch.asked;
            line.resize(57, ' ');
            for (const Situation& situation : situations)
                line += " " + answered(branch, situation);
            text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
        }
        return text;
    }

    std::set<std::string> called;
};

// Columns: nothing is missing; the key names no link, so that the branch goes on with a row of zeroes; the key has no
// token; the switch has no profiles; no VSANs; no ports. Each: associators, associator names, references,
// reference names. A dot is nothing, a dash nothing and -1; 1 and 2 are objects, 0 is a null that was handed on, x a -1
// handed on as a pointer, w a null and an object, y a null and a -1, z an object and a -1.
//
// Rows of zeroes answer an object in two places: the TCP statistics read the link again by its index 0, and the
// physical switch needs no link.
constexpr const char* lost_sources_table = R"(
get_fcip_pe           ZANTO_FCIPElementSettingData        1111 00-- .... 00-- 1111 1111
get_fcip_pe           ZANTO_FCIPTCPEndpoint               1111 00-- .... 00-- 1111 1111
get_fcip_pe           ZANTO_SANFCIPEndpoint               1111 00-- .... 00-- 1111 1111
get_fcip_pe           ZANTO_FCPortProtocolEndPoint        1111 ..-- .... 11-- 1111 ..--
get_fcip_pe           ZANTO_FCIPPEBasedOn                 1111 ..-- .... ..-- 1111 1111
get_fcip_pe           ZANTO_SwitchHostedFCIPAccessPoint   1111 xx-- .... 11-- xx-- xx--
get_ip_pe             ZANTO_IPElementSettingData          1211 0y-- ..-- 0w-- 1z11 1z11
get_ip_pe             ZANTO_IPEndPointStatisticalData     1111 0.-- ..-- 10-- 1111 0111
get_ip_pe             ZANTO_TCPIPEndpoint                 1111 00-- ..-- 00-- 1111 1111
get_ip_pe             ZANTO_IPEthernetEndpoint            1111 00-- ..-- 11-- 1111 00--
get_ip_pe             ZANTO_SwitchHostedIPAccessPoint     1111 x0-- ..-- 10-- x1-- x1--
get_ip_pe             ZANTO_SANIPEndpoint                 1111 00-- ..-- 00-- 1111 1111
get_ip_pe             ZANTO_NoSuchAssociation             .1.. .x.. .... .1.. .x.. .x..
get_tcp_pe            ZANTO_TCPEndPointStatisticalData    1111 1.-- ..-- 10-- 1111 1111
get_tcp_pe            ZANTO_FCIPTCPEndpoint               11.. 00.. 00.. 00.. 11.. 11..
get_tcp_pe            ZANTO_FCIPTCPEnpoint                ..11 ..-- ..-- ..-- ..11 ..11
get_tcp_pe            ZANTO_TCPIPEndpoint                 1111 00-- 00-- 00-- 1111 1111
get_tcp_pe            ZANTO_SwitchHostedTCPAccessPoint    1111 x1-- x1-- 11-- x1-- x1--
get_tcp_pe            ZANTO_SANTCPEndpoint                1111 00-- 00-- 00-- 1111 1111
get_tcp_pe            ZANTO_TCPElementSettingData         1.11 ..-- ..-- 0.-- 1.11 1.11
get_fcip_remote_pe    ZANTO_SANFCIPEndpoint               1111 00-- ..-- 00-- 1111 1111
get_ip_remote_pe      ZANTO_SANIPEndpoint                 1111 00-- ..-- 00-- 1111 1111
get_tcp_remote_pe     ZANTO_SANTCPEndpoint                11-- 00-- ..-- 00-- 11-- 11--
get_lan_endpoint      ZANTO_IPEthernetEndpoint            1111 00-- ..-- 00-- 1111 11--
get_lan_endpoint      ZANTO_EthernetPortProtocolEndpoint  1111 ..-- ..-- 1111 1111 ..--
get_lan_endpoint      CIM_HostedAccessPoint               1111 00-- 00-- 00-- 1111 11--
get_eth_port          ZANTO_EthernetPortProtocolEndpoint  1111 00-- 00-- 1111 1111 00--
get_eth_port          ZANTO_EthernetPortStatisticalData   1.11 ..-- ..-- 1.11 1.11 ..--
get_eth_port          ZANTO_EthernetPortStatistics        .1.. .... .... .1.. .1.. ....
get_eth_stat          ZANTO_EthernetPortStatisticalData   1111 ..-- ..-- 1111 1111 ..--
get_fcip_settings     ZANTO_FCIPElementSettingData        1111 00-- 00-- 00-- 1111 1111
get_ip_setting        ZANTO_IPElementSettingData          11   00   00   00   11   11
get_ip_settings       ZANTO_IPElementSettingData            11   --   --   --   11   11
get_tcp_setting       ZANTO_TCPElementSettingData         11   00   00   00   11   11
get_tcp_settings      ZANTO_TCPElementSettingData           11   --   --   --   11   11
get_ip_stat           ZANTO_IPEndpointStatisticalData     1111 00-- 00-- 00-- 1111 1111
get_tcp_stat          ZANTO_TCPEndpointStatisticalData    1111 00-- 00-- 00-- 1111 1111
get_tcp_statical_data ZANTO_TCPEndPointStatistics         1.   0.   0.   0.   1.   1.
get_profile           ZANTO_FCIPPEBasedOn                 1111 00-- 00-- 00-- 1111 1111
)";

TEST_F(LostSources, AreAnsweredByEachBranchOfEachMemberAsTheTableSays) {
    EXPECT_EQ(picture(), lost_sources_table);
    EXPECT_EQ(called.size(), members().size());
}

} // namespace
