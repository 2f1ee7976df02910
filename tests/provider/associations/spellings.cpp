// How the classes of endpoints and statistics are spelled in what association operations answer.
#include "tests/provider/associations/association_test.h"

namespace {

using namespace test;

/// What a source is asked along an association, and the spelling of the class that it answers: by associators and
/// their names, and in the references.
struct Spelling {
    const char* source;
    const char* association;
    const char* role; ///< in which the references name it
    const char* by_associators;
    const char* in_references;
};

// clang-format off
const Spelling spellings[] = {
    {"ZANTO_TCPProtocolEndPoint", "ZANTO_TCPIPEndpoint", "Antecedent",
     "ZANTO_IPProtocolEndPoint", "ZANTO_IPProtocolEndpoint"},
    {"ZANTO_FCIPProtocolEndPoint", "ZANTO_FCIPTCPEndpoint", "Dependent",
     "ZANTO_TCPProtocolEndPoint", "ZANTO_TCPProtocolEndpoint"},
    {"ZANTO_RemoteFCIPPort", "ZANTO_SANFCIPEndpoint", "Antecedent",
     "ZANTO_FCIPProtocolEndPoint", "ZANTO_FCIPProtocolEndpoint"},
    {"ZANTO_FCIPProfile", "ZANTO_FCIPPEBasedOn", "PartComponent",
     "ZANTO_FCIPProtocolEndPoint", "ZANTO_FCIPProtocolEndpoint"},
    {"ZANTO_IPProtocolEndPoint", "ZANTO_IPEndPointStatisticalData", "ManagedElement",
     "ZANTO_IPEndPointStatistics", "ZANTO_IPEndpointStatistics"},
    {"ZANTO_TCPEndPointStatistics", "ZANTO_TCPEndPointStatisticalData", "ManagedElement",
     "ZANTO_TCPProtocolEndPoint", "ZANTO_TCPProtocolEndpoint"},
    {"ZANTO_FCIPSettings", "ZANTO_FCIPElementSettingData", "ManagedElement",
     "ZANTO_FCIPProtocolEndPoint", "ZANTO_FCIPProtocolEndPoint"},
    {"ZANTO_IPSettings", "ZANTO_IPElementSettingData", "ManagedElement",
     "ZANTO_IPProtocolEndPoint", "ZANTO_IPProtocolEndPoint"},
    {"ZANTO_TCPSettings", "ZANTO_TCPElementSettingData", "ManagedElement",
     "ZANTO_TCPProtocolEndPoint", "ZANTO_TCPProtocolEndPoint"},
    {"ZANTO_IPEndPointStatistics", "ZANTO_IPEndPointStatisticalData", "ManagedElement",
     "ZANTO_IPProtocolEndPoint", "ZANTO_IPProtocolEndPoint"},
    {"ZANTO_LanEndPoint", "ZANTO_IPEthernetEndpoint", "Antecedent",
     "ZANTO_IPProtocolEndPoint", "ZANTO_IPProtocolEndPoint"},
    {"ZANTO_EthernetPort", "ZANTO_EthernetPortProtocolEndpoint", "Dependent",
     "ZANTO_LANEndPoint", "ZANTO_LANEndpoint"},
};
// clang-format on

class Spellings : public AssociationTest {
  protected:
    /// The class of the one object that an operation answers.
    std::string class_of_answer(Operation operation, const Spelling& row) {
        const auto answer = walk(operation, source(row.source).path(), row.association);
        return answer.objects.size() == 1 ? answer.objects[0].class_name : "(not one object)";
    }

    /// The class of the path in a reference's role.
    std::string class_of_end(Operation operation, const Spelling& row) {
        const auto answer = walk(operation, source(row.source).path(), row.association);
        if (answer.objects.size() != 1)
            return "(not one association)";
        const auto& object = answer.objects[0];
        const auto* end = operation == Operation::references ? object.property(row.role) : object.key(row.role);
        return end == nullptr ? "(none)" : std::get<cmpihost::Value::Reference>(end->value.data)->class_name;
    }
};

TEST_F(Spellings, OfAssociatorsEndInEndPoint) {
    for (const Spelling& row : spellings) {
        SCOPED_TRACE(std::string(row.source) + " " + row.association);
        EXPECT_EQ(class_of_answer(Operation::associators, row), row.by_associators);
        EXPECT_EQ(class_of_answer(Operation::associator_names, row), row.by_associators);
    }
}

TEST_F(Spellings, InReferencesAreEndpointOrEndPointBySource) {
    for (const Spelling& row : spellings) {
        SCOPED_TRACE(std::string(row.source) + " " + row.association);
        EXPECT_EQ(class_of_end(Operation::references, row), row.in_references);
    }
}

TEST_F(Spellings, InReferenceNamesAreThoseOfReferences) {
    for (const Spelling& row : spellings) {
        if (std::string(row.source).starts_with("ZANTO_Remote"))
            continue; // asked of the local endpoints
        SCOPED_TRACE(std::string(row.source) + " " + row.association);
        EXPECT_EQ(class_of_end(Operation::reference_names, row), row.in_references);
    }
}

} // namespace
