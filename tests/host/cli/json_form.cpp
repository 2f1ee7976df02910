// docs/cmpihost.md describes the JSON that cmpihost prints: every member that it prints is told there, and nothing
// else.
#include "tests/host/cli/command_line_test.h"
#include "tests/host/mof/schema_file.h"

#include <nlohmann/json.hpp>

#include <regex>
#include <set>

namespace cmpihost {
namespace {

using Json = nlohmann::ordered_json;

std::set<std::string> members_of(const Json& json) {
    std::set<std::string> names;
    for (const auto& [name, value] : json.items())
        names.insert(name);
    return names;
}

/// The names in the first column of the tables under the heading JSON.
std::set<std::string> told_members() {
    std::ifstream file(FCIP_SOURCE_DIR "/docs/cmpihost.md");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    const std::string part = text.substr(text.find("\n## JSON\n"));
    const std::regex row("\n\\| `(\\w+)` \\|");
    std::set<std::string> names;
    for (std::sregex_iterator at(part.begin(), part.end(), row), end; at != end; ++at)
        names.insert((*at)[1]);
    return names;
}

TEST_F(CommandLines, TheJsonOfAnswersIsAsDescribed) {
    const Json method = Json::parse(ask({"-o", "json", "cm", "Test_Thing", "Add", "A=2", "B=40"}).out);
    const Json pair = Json::parse(ask({"-o", "json", "ei", "Test_Pair"}).out);
    std::set<std::string> members = members_of(method);
    members.merge(members_of(pair.at("objects").at(0)));
    EXPECT_EQ(members, told_members());
    const std::set<std::string> property{"name", "type", "value"};
    EXPECT_EQ(members_of(pair.at("objects").at(0).at("keys").at(0)), property);
    EXPECT_EQ(members_of(method.at("arguments").at(0)), property);
    EXPECT_EQ(members_of(method.at("returned")), (std::set<std::string>{"type", "value"}));
    EXPECT_EQ(members_of(method.at("status")), (std::set<std::string>{"rc", "message"}));
    const Json& reference = pair.at("objects").at(0).at("keys").at(0).at("value");
    EXPECT_EQ(members_of(reference), members_of(pair.at("objects").at(0)));
}

} // namespace
} // namespace cmpihost
