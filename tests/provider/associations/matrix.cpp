// Which source class answers which association, in all four operations, and with how many objects: the table of answers
// as a picture. What the objects are: the tests of associators and references.
#include "tests/provider/associations/answers.h"

#include <algorithm>
#include <cstdio>

#include <strings.h>

namespace {

using namespace test;

/// The names that clients may ask for: the association classes, and the names that only some member knows.
std::vector<std::string> asked_names() {
    const std::vector<const char*> known = association_names();
    std::vector<std::string> names(known.begin(), known.end());
    names.emplace_back("ZANTO_NoSuchAssociation");
    return names;
}

constexpr const char* letters = "ANRr"; // Associators, AssociatorNames, References, ReferenceNames

constexpr Operation operation_of(char letter) {
    switch (letter) {
    case 'A':
        return Operation::associators;
    case 'N':
        return Operation::associator_names;
    case 'R':
        return Operation::references;
    default:
        return Operation::reference_names;
    }
}

/// How many objects an operation gives, by its letter.
using Count = std::function<std::size_t(char operation, const Source& from, const std::string& asked)>;

/// "." for nothing, the operation's letter for one object, "2" for two.
std::string cells(const Source& from, const std::string& asked, const Count& count) {
    std::string text;
    for (const char* letter = letters; *letter != '\0'; ++letter) {
        const std::size_t objects = count(*letter, from, asked);
        text += objects == 0 ? '.' : objects == 1 ? *letter : static_cast<char>('0' + objects);
    }
    return text;
}

std::string picture(const Count& count) {
    std::string text = "\n";
    for (const std::string& asked : asked_names()) {
        std::string line = asked;
        line.resize(34, ' ');
        for (const Source& from : sources())
            line += " " + cells(from, asked, count);
        text += line + "\n";
    }
    return text;
}

class Matrix : public AssociationTest {
  protected:
    std::size_t answered(char operation, const Source& from, const std::string& asked) {
        const auto answer = walk(operation_of(operation), from.path(), asked);
        EXPECT_EQ(answer.rc, 0);
        EXPECT_EQ(answer.message, std::nullopt);
        EXPECT_EQ(answer.invalid_results, 0u);
        return answer.objects.size();
    }
};

// The table of answers as a picture. Columns: the FCIP endpoint and the remote FCIP port, the IP endpoint and the
// remote IP access point, the TCP endpoint and the remote TCP port, the LAN endpoint, FCIP, IP and TCP settings, the
// Ethernet port and its statistics, IP and TCP statistics, the profile. A cell: the letters above.
constexpr const char* expected = R"(
ZANTO_FCIPElementSettingData       ANRr .... .N.. .... .... .... .... ANRr .... .... .... .... .... .... ....
ZANTO_IPElementSettingData         .... .... A2Rr .... .... .... .... .... ANRr .... .... .... .... .... ....
ZANTO_TCPElementSettingData        .... .... .N.. .... A.Rr .... .... .... .... ANRr .... .... .... .... ....
ZANTO_FCIPTCPEndpoint              ANRr .... .N.. .... AN.. .... .... .... .... .... .... .... .... .... ....
ZANTO_TCPIPEndpoint                .... .... ANRr .... ANRr .... .... .... .... .... .... .... .... .... ....
ZANTO_SANFCIPEndpoint              ANRr ANR. .N.. .... .... .... .... .... .... .... .... .... .... .... ....
ZANTO_SANIPEndpoint                .... .... ANRr ANR. .... .... .... .... .... .... .... .... .... .... ....
ZANTO_SANTCPEndpoint               .... .... .N.. .... ANRr AN.. .... .... .... .... .... .... .... .... ....
ZANTO_FCPortProtocolEndPoint       ANRr .... .N.. .... .... .... .... .... .... .... .... .... .... .... ....
ZANTO_SwitchHostedFCIPAccessPoint  ANRr .... .N.. .... .... .... .... .... .... .... .... .... .... .... ....
ZANTO_SwitchHostedIPAccessPoint    .... .... ANRr .... .... .... .... .... .... .... .... .... .... .... ....
ZANTO_SwitchHostedTCPAccessPoint   .... .... .N.. .... ANRr .... .... .... .... .... .... .... .... .... ....
ZANTO_FCIPPEBasedOn                ANRr .... .N.. .... .... .... .... .... .... .... .... .... .... .... ANRr
ZANTO_IPEthernetEndpoint           .... .... ANRr .... .... .... ANRr .... .... .... .... .... .... .... ....
ZANTO_EthernetPortProtocolEndpoint .... .... .N.. .... .... .... ANRr .... .... .... ANRr .... .... .... ....
CIM_HostedAccessPoint              .... .... .N.. .... .... .... ANRr .... .... .... .... .... .... .... ....
ZANTO_IPEndPointStatisticalData    .... .... ANRr .... .... .... .... .... .... .... .... .... ANRr .... ....
ZANTO_TCPEndPointStatisticalData   .... .... .N.. .... ANRr .... .... .... .... .... .... .... .... ANRr ....
ZANTO_EthernetPortStatisticalData  .... .... .N.. .... .... .... .... .... .... .... A.Rr ANRr .... .... ....
ZANTO_FCIPTCPEnpoint               .... .... .N.. .... ..Rr .... .... .... .... .... .... .... .... .... ....
ZANTO_EthernetPortStatistics       .... .... .N.. .... .... .... .... .... .... .... .N.. .... .... .... ....
ZANTO_TCPEndPointStatistics        .... .... .N.. .... .... .... .... .... .... .... .... .... .... .... ....
ZANTO_NoSuchAssociation            .... .... .N.. .... .... .... .... .... .... .... .... .... .... .... ....
)";

TEST_F(Matrix, IsThatOfTheTableOfAnswers) {
    const std::string table = picture([](char operation, const Source& from, const std::string& asked) {
        return expected_answers(operation, from.class_name, asked);
    });
    EXPECT_EQ(table, expected);
}

TEST_F(Matrix, EverySourceAndEveryAssociationInEveryOperation) {
    const std::string seen = picture([this](char operation, const Source& from, const std::string& asked) {
        return answered(operation, from, asked);
    });
    EXPECT_EQ(seen, expected);
    std::fputs(seen.c_str(), stdout);
}

TEST_F(Matrix, HasEveryRowOfTheTable) {
    for (const AnswerRow& row : answers()) {
        const bool is_asked = std::ranges::any_of(
            asked_names(), [&row](const std::string& name) { return strcasecmp(name.c_str(), row.asked) == 0; });
        EXPECT_TRUE(is_asked || row.asked == std::string(any_name)) << row.asked;
        const bool is_source = std::ranges::any_of(
            sources(), [&row](const Source& from) { return strcasecmp(from.class_name, row.source) == 0; });
        EXPECT_TRUE(is_source || row.operations == std::string(direct)) << row.source;
    }
}

// Four tunnels, two Ethernet ports and a third port of another type.
TEST_F(Matrix, EnumerationsOfTheAssociations) {
    struct Row {
        const char* association;
        std::size_t instances;
        std::size_t paths;
    };
    const Row rows[] = {
        {"ZANTO_FCIPElementSettingData", 4, 4},
        {"ZANTO_IPElementSettingData", 4, 4},
        {"ZANTO_TCPElementSettingData", 4, 4},
        {"ZANTO_FCIPTCPEndpoint", 4, 4},
        {"ZANTO_TCPIPEndpoint", 4, 4},
        {"ZANTO_SANFCIPEndpoint", 4, 4},
        {"ZANTO_SANIPEndpoint", 4, 4},
        {"ZANTO_SANTCPEndpoint", 0, 0},
        {"ZANTO_FCPortProtocolEndPoint", 0, 0},
        {"ZANTO_SwitchHostedFCIPAccessPoint", 4, 4},
        {"ZANTO_SwitchHostedIPAccessPoint", 4, 4},
        {"ZANTO_SwitchHostedTCPAccessPoint", 4, 4},
        {"ZANTO_FCIPPEBasedOn", 4, 4},
        {"ZANTO_IPEthernetEndpoint", 4, 4},
        {"ZANTO_EthernetPortProtocolEndpoint", 0, 0},
        {"CIM_HostedAccessPoint", 0, 0},
        {"ZANTO_IPEndPointStatisticalData", 4, 4},
        {"ZANTO_TCPEndPointStatisticalData", 4, 4},
        {"ZANTO_EthernetPortStatisticalData", 2, 3},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.association);
        const std::size_t instances = enumerate_instances(row.association).objects.size();
        const std::size_t paths = enumerate_names(row.association).objects.size();
        EXPECT_EQ(instances, row.instances);
        EXPECT_EQ(paths, row.paths);
        std::printf("%-34s %zu %zu\n", row.association, instances, paths);
    }
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
    for (const char* association : association_classes)
        for (const Operation operation :
             {Operation::associators, Operation::associator_names, Operation::references, Operation::reference_names}) {
            const auto answer = walk(operation, path_of(association, {{"Antecedent", "x"}}), "ZANTO_FCIPTCPEndpoint");
            EXPECT_EQ(answer.rc, 0);
            EXPECT_TRUE(answer.objects.empty());
        }
}

} // namespace
