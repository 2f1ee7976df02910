// Every answer of the provider against the MOF of its classes: property known, type equal, keys complete, references
// admitted; and every class answered.
#include "host/mof/check.h"
#include "host/mof/deviations.h"
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
        ask_for_hosted_access_point();
    }

    /// Answered for a LAN endpoint whose number is also a tunnel's interface index.
    void ask_for_hosted_access_point() {
        for (const Operation operation : {Operation::references, Operation::reference_names}) {
            Request request;
            request.operation = operation;
            request.path = test::path_of("ZANTO_LanEndPoint", {{"Name", "16777216:02:00:00:aa:00:01"}});
            request.assoc_class = "CIM_HostedAccessPoint";
            checked(request);
        }
    }

    std::map<std::string, std::string> findings; ///< with the first request that gave each
    std::set<std::string> classes;
};

const Deviations& known() {
    static const Deviations read = std::get<Deviations>(Deviations::read(schema_folder + "deviations.txt"));
    return read;
}

TEST_F(MofAnswers, AreAsDeclaredButForTheKnownDeviations) {
    ask_everything();
    for (const auto& [finding, request] : findings)
        EXPECT_TRUE(known().accepts(finding)) << finding << "\n  " << request;
}

TEST_F(MofAnswers, HaveTheDeviationsThatRequestsCanMeet) {
    ask_everything();
    std::set<std::string> expected;
    for (const std::string& finding : known().findings())
        if (finding.find("ElementSettingData.ManagedElement > ") != std::string::npos ||
            finding.starts_with("CIM_HostedAccessPoint."))
            expected.insert(finding);
    std::set<std::string> met;
    for (const auto& [finding, request] : findings)
        met.insert(finding);
    EXPECT_EQ(met, expected);
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
