// Every answer of the provider against the MOF of its classes: property known, type equal, keys complete, references
// admitted; and every class answered.
#include "host/mof/check.h"
#include "tests/host/mof/mof_files.h"
#include "tests/support/corpus.h"

#include <map>

namespace cmpihost::mof {
namespace {

using test::Operation;

bool answers_instances(Operation operation) {
    return operation == Operation::enumerate_instances || operation == Operation::get_instance ||
           operation == Operation::associators || operation == Operation::references;
}

class MofAnswers : public test::RequestTest {
  protected:
    /// Asks, holds the answer against the MOF, and notes what was seen.
    Answer checked(const Request& request) {
        const bool instances = answers_instances(request.operation);
        Answer answer = ask(request);
        for (const Object& object : answer.objects) {
            if (const ClassDeclaration* declaration = provider_schema().find(object.class_name))
                classes.insert(declaration->name);
            for (const std::string& finding : check(provider_schema(), object, instances ? Kind::instance : Kind::path))
                findings.emplace(finding, test::name_of(request));
        }
        return answer;
    }

    /// Everything that clients can ask of the small switch, and every association that it names.
    void ask_everything() {
        for (const Request& request : test::all_requests()) {
            const Answer answer = checked(request);
            if (request.operation != Operation::reference_names)
                continue;
            for (const Object& path : answer.objects) {
                Request get;
                get.operation = Operation::get_instance;
                get.path = path;
                checked(get);
            }
        }
        ask_for_indexes_of_links();
    }

    /// A LAN endpoint and an Ethernet port whose numbers are also a tunnel's interface index answer more.
    void ask_for_indexes_of_links() {
        for (const Object& source : {test::path_of("ZANTO_LanEndPoint", {{"Name", "16777216:02:00:00:aa:00:01"}}),
                                     test::path_of("ZANTO_EthernetPort", {{"DeviceID", "16777216"}})})
            for (const Operation operation : {Operation::associators, Operation::associator_names,
                                              Operation::references, Operation::reference_names})
                for (const char* association : test::association_names()) {
                    Request request;
                    request.operation = operation;
                    request.path = source;
                    request.assoc_class = association;
                    checked(request);
                }
    }

    std::map<std::string, std::string> findings; ///< with the first request that gave each
    std::set<std::string> classes;
};

TEST_F(MofAnswers, AreAsDeclaredButForTheKnownDeviations) {
    ask_everything();
    for (const auto& [finding, request] : findings)
        EXPECT_TRUE(known_deviations().accepts(finding)) << finding << "\n  " << request;
}

TEST_F(MofAnswers, HaveTheDeviationsThatRequestsCanMeet) {
    ask_everything();
    std::set<std::string> expected;
    for (const std::string& finding : known_deviations().findings())
        if (finding.find("ElementSettingData.") != std::string::npos || finding.starts_with("ZANTO_FCIPPEBasedOn.") ||
            finding.starts_with("CIM_HostedAccessPoint.") || finding.ends_with(": required value is missing"))
            expected.insert(finding);
    std::set<std::string> met;
    for (const auto& [finding, request] : findings)
        met.insert(finding);
    EXPECT_EQ(met, expected);
}

/// Whether a finding tells of a reference that its class declares as a key, and an object lacks.
bool is_missing_reference(const std::string& finding) {
    constexpr std::string_view what = ": key is missing";
    if (!finding.ends_with(what))
        return false;
    const auto last = finding.rfind(" > "); // of the paths behind references
    const auto begin = last == std::string::npos ? 0 : last + 3;
    const auto point = finding.find('.', begin);
    const std::string name = finding.substr(point + 1, finding.size() - what.size() - point - 1);
    return provider_schema().find(finding.substr(begin, point - begin))->property(name)->type == "reference";
}

// A server may add the declared keys that a path lacks; an empty reference would be no valid CIM-XML.
TEST_F(MofAnswers, LackNoReferenceThatIsAKey) {
    ask_everything();
    for (const auto& [finding, request] : findings)
        EXPECT_FALSE(is_missing_reference(finding)) << finding << "\n  " << request;
    for (const std::string& finding : known_deviations().findings())
        EXPECT_FALSE(is_missing_reference(finding)) << finding;
    EXPECT_TRUE(is_missing_reference("ZANTO_SANFCIPEndpoint.Antecedent: key is missing"));
    EXPECT_FALSE(is_missing_reference("CIM_HostedAccessPoint.Dependent > ZANTO_LANEndPoint.Name: key is missing"));
}

TEST_F(MofAnswers, HaveEveryClass) {
    ask_everything();
    std::set<std::string> expected = {"CIM_HostedAccessPoint"};
    for (const ClassDeclaration& declaration : provider_schema().classes())
        if (is_ours(declaration))
            expected.insert(declaration.name);
    expected.erase("ZANTO_RemoteIPPort"); // stands in references only
    EXPECT_EQ(classes, expected);
}

} // namespace
} // namespace cmpihost::mof
