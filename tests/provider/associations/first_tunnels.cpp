// Objects that several tunnels share: whatever they are asked, they answer for the first of these tunnels alone.
#include "tests/provider/associations/association_test.h"

namespace {

using namespace test;

class FirstTunnels : public AssociationTest {
  protected:
    /// What the paths, or the references of a role, name.
    std::vector<std::string> ends(Operation operation, const cmpihost::Object& source, const char* association,
                                  const char* role) {
        const auto answer = walk(operation, source, association);
        if (operation == Operation::associator_names)
            return paths(answer);
        if (operation == Operation::references)
            return values(answer, role);
        std::vector<std::string> texts;
        for (const auto& object : answer.objects)
            texts.push_back(text_of(object.key(role)->value));
        return texts;
    }
};

constexpr Operation operations_with_paths[] = {Operation::associator_names, Operation::references,
                                               Operation::reference_names};

TEST_F(FirstTunnels, AProfileAnswersForItsFirstTunnelAlone) {
    const auto profile = path_of("ZANTO_FCIPProfile", {{"InstanceID", "3"}}); // of tunnels 1 and 3
    ASSERT_EQ(tunnel(tunnel_3)->entity_id, 3u);
    EXPECT_EQ(values(walk(Operation::associators, profile, "ZANTO_FCIPPEBasedOn"), "TunnelID"),
              std::vector<std::string>{"1"});
    for (const Operation operation : operations_with_paths) {
        const char* spelled = operation == Operation::associator_names ? "ZANTO_FCIPProtocolEndPoint" // as it is asked
                                                                       : "ZANTO_FCIPProtocolEndpoint";
        EXPECT_EQ(ends(operation, profile, "ZANTO_FCIPPEBasedOn", "PartComponent"),
                  std::vector{fcip_endpoint_1(spelled)});
    }
}

TEST_F(FirstTunnels, ALanEndpointAnswersForItsFirstTunnelAlone) {
    const auto lan = path_of("ZANTO_LanEndPoint", {{"Name", "-2097152000:02:00:00:aa:00:01"}}); // of tunnels 1, 3 and 8
    ASSERT_EQ(tunnel(tunnel_3)->ethernet_if_index, tunnel(tunnel_1)->ethernet_if_index);
    EXPECT_EQ(values(walk(Operation::associators, lan, "ZANTO_IPEthernetEndpoint"), "Name"),
              std::vector<std::string>{"16777216_10.1.1.1_10.1.1.2"});
    for (const Operation operation : operations_with_paths)
        EXPECT_EQ(ends(operation, lan, "ZANTO_IPEthernetEndpoint", "Antecedent"),
                  std::vector{ip_endpoint_1("ZANTO_IPProtocolEndPoint")});
}

} // namespace
