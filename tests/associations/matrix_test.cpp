// Which source class answers which association, in all four operations, and with how many objects: as a picture.
#include "association_test.h"

namespace {

using namespace test;

/// The names that clients may ask for: the association classes, and the names that only some member knows.
std::vector<std::string> asked_names() {
    std::vector<std::string> names = association_classes();
    names.insert(names.end(), {"ZANTO_FCIPTCPEnpoint", "ZANTO_EthernetPortStatistics", "ZANTO_TCPEndPointStatistics",
                               "ZANTO_NoSuchAssociation"});
    return names;
}

class Matrix : public AssociationTest {
  protected:
    /// "." for nothing, the letter for one object, "2" for two.
    char cell(Operation operation, char letter, const Source& from, const std::string& asked) {
        const auto answer = walk(operation, from.path(), asked);
        EXPECT_EQ(answer.rc, 0);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_EQ(answer.invalid_results, 0u);
        const std::size_t count = answer.objects.size();
        return count == 0 ? '.' : count == 1 ? letter : static_cast<char>('0' + count);
    }

    std::string cells(const Source& from, const std::string& asked) {
        return {cell(Operation::associators, 'A', from, asked), cell(Operation::associator_names, 'N', from, asked),
                cell(Operation::references, 'R', from, asked), cell(Operation::reference_names, 'r', from, asked)};
    }

    /// Enumerates the association class itself: instances and paths, "." for none.
    std::string enumerated(const std::string& asked) {
        const auto instances = enumerate_instances(asked).objects.size();
        const auto names = enumerate_names(asked).objects.size();
        return (instances == 0 ? "." : std::to_string(instances)) + (names == 0 ? "." : std::to_string(names));
    }

    std::string picture() {
        std::string text = "\n";
        for (const std::string& asked : asked_names()) {
            std::string line = asked;
            line.resize(35, ' ');
            for (const Source& from : sources())
                line += cells(from, asked) + " ";
            text += line + enumerated(asked) + "\n";
        }
        return text;
    }
};

// Columns: the FCIP endpoint and the remote FCIP port, the IP endpoint and the remote IP access point, the TCP endpoint
// and the remote TCP port, the LAN endpoint, FCIP, IP and TCP settings, the Ethernet port and its statistics, IP and
// TCP statistics, the profile; then the class's own enumeration. A cell: Associators, AssociatorNames, References,
// ReferenceNames; an enumeration: instances, paths (of four tunnels, two Ethernet ports, three ports of any type).
constexpr const char* expected = R"(
ZANTO_FCIPElementSettingData       ANRr .... .N.. .... .... .... .... ANRr .... .... .... .... .... .... .... 44
ZANTO_IPElementSettingData         .... .... A2Rr .... .... .... .... .... ANRr .... .... .... .... .... .... 44
ZANTO_TCPElementSettingData        .... .... .N.. .... A.Rr .... .... .... .... ANRr .... .... .... .... .... 44
ZANTO_FCIPTCPEndpoint              ANRr .... .N.. .... AN.. .... .... .... .... .... .... .... .... .... .... 44
ZANTO_TCPIPEndpoint                .... .... ANRr .... ANRr .... .... .... .... .... .... .... .... .... .... 44
ZANTO_SANFCIPEndpoint              ANRr ANR. .N.. .... .... .... .... .... .... .... .... .... .... .... .... 44
ZANTO_SANIPEndpoint                .... .... ANRr ANR. .... .... .... .... .... .... .... .... .... .... .... 44
ZANTO_SANTCPEndpoint               .... .... .N.. .... ANRr AN.. .... .... .... .... .... .... .... .... .... ..
ZANTO_FCPortProtocolEndPoint       ANRr .... .N.. .... .... .... .... .... .... .... .... .... .... .... .... ..
ZANTO_SwitchHostedFCIPAccessPoint  ANRr .... .N.. .... .... .... .... .... .... .... .... .... .... .... .... 44
ZANTO_SwitchHostedIPAccessPoint    .... .... ANRr .... .... .... .... .... .... .... .... .... .... .... .... 44
ZANTO_SwitchHostedTCPAccessPoint   .... .... .N.. .... ANRr .... .... .... .... .... .... .... .... .... .... 44
ZANTO_FCIPPEBasedOn                ANRr .... .N.. .... .... .... .... .... .... .... .... .... .... .... ANRr 44
ZANTO_IPEthernetEndpoint           .... .... ANRr .... .... .... ANRr .... .... .... .... .... .... .... .... 44
ZANTO_EthernetPortProtocolEndpoint .... .... .N.. .... .... .... ANRr .... .... .... ANRr .... .... .... .... ..
CIM_HostedAccessPoint              .... .... .N.. .... .... .... ANRr .... .... .... .... .... .... .... .... ..
ZANTO_IPEndPointStatisticalData    .... .... ANRr .... .... .... .... .... .... .... .... .... ANRr .... .... 44
ZANTO_TCPEndPointStatisticalData   .... .... .N.. .... ANRr .... .... .... .... .... .... .... .... ANRr .... 44
ZANTO_EthernetPortStatisticalData  .... .... .N.. .... .... .... .... .... .... .... A.Rr ANRr .... .... .... 23
ZANTO_FCIPTCPEnpoint               .... .... .N.. .... ..Rr .... .... .... .... .... .... .... .... .... .... ..
ZANTO_EthernetPortStatistics       .... .... .N.. .... .... .... .... .... .... .... .N.. .... .... .... .... 22
ZANTO_TCPEndPointStatistics        .... .... .N.. .... .... .... .... .... .... .... .... .... .... .... .... 44
ZANTO_NoSuchAssociation            .... .... .N.. .... .... .... .... .... .... .... .... .... .... .... .... ..
)";

TEST_F(Matrix, EverySourceAndEveryAssociationInEveryOperation) {
    EXPECT_EQ(picture(), expected);
}

TEST_F(Matrix, NamesAndInstancesOfReferencesAgreeForLocalSources) {
    for (const Source& from : sources())
        for (const std::string& asked : asked_names()) {
            if (std::string(from.class_name).starts_with("ZANTO_Remote"))
                continue;
            SCOPED_TRACE(std::string(from.class_name) + " " + asked);
            const auto instances = walk(Operation::references, from.path(), asked).objects;
            const auto names = walk(Operation::reference_names, from.path(), asked).objects;
            ASSERT_EQ(instances.size(), names.size());
            for (std::size_t i = 0; i < names.size(); ++i)
                EXPECT_EQ(text_of_object(instances[i]), text_of_object(names[i]));
        }
}

TEST_F(Matrix, AssociationsAreNoSources) {
    for (const std::string& association : association_classes())
        for (const Operation operation :
             {Operation::associators, Operation::associator_names, Operation::references, Operation::reference_names}) {
            const auto answer = walk(operation, path_of(association, {{"Antecedent", "x"}}), "ZANTO_FCIPTCPEndpoint");
            EXPECT_EQ(answer.rc, 0);
            EXPECT_TRUE(answer.objects.empty());
        }
}

} // namespace
