// Every reference in every answer about the two-site switch leads to an object, but for those that are meant not to.
#include "host/broker/held.h"
#include "host/cim/path_text.h"
#include "host/graph/graph.h"
#include "host/server/catalogue.h"
#include "simulator/switchsim.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace {

using namespace cmpihost;
using enum Request::Operation;

// ---------------------------------------------------------------------------------------------- the deliberate ones

/// Paths that lead nowhere: those of a class that have this text in them.
struct DeadEnd {
    const char* class_name;
    const char* text;
    unsigned paths;
};

constexpr DeadEnd dead_ends[] = {
    // Classes for which a get finds no key.
    {"ZANTO_EthernetPortProtocolEndpoint", "", 6},
    {"ZANTO_FCPortProtocolEndPoint", "", 10},
    {"ZANTO_IPEndPointStatisticalData", "", 18},
    {"ZANTO_IPEthernetEndpoint", "", 21},
    {"ZANTO_RemoteIPPort", "", 10},
    {"ZANTO_SwitchHostedFCIPAccessPoint", "", 10},
    {"ZANTO_SwitchHostedIPAccessPoint", "", 19},
    {"ZANTO_SwitchHostedTCPAccessPoint", "", 19},
    {"ZANTO_TCPEndPointStatisticalData", "", 25},
    {"ZANTO_TCPStatisticalData", "", 19},
    // A get looks for the roles that reference names have.
    {"ZANTO_FCIPPEBasedOn", ".Antecedent=", 10},
    // A get of a profile needs a tunnel of the same number.
    {"ZANTO_FCIPProfile", "InstanceID=\"200\"", 1},
    // A get of a LAN endpoint needs a tunnel over its port: not over the management port, nor over a port channel.
    {"ZANTO_LANEndPoint", "Name=\"-2046820352:02:00:5e:11:ff:00\"", 2},
    {"ZANTO_LANEndPoint", "Name=\"-2080374783:\"", 2},
    // A remote port's instance has the peer's number in its name, where its path has a 0.
    {"ZANTO_RemoteFCIPPort", "Name=\"1", 10},
    // Two enumerated associations put this class over an IP endpoint's keys.
    {"ZANTO_TCPSettings", "CreationClassName=\"ZANTO_IPProtocolEndPoint\"", 10},
    // A port channel counts as an Ethernet port in the names of the ports' statistics associations.
    {"ZANTO_EthernetPort", "DeviceID=\"-2080374783\"", 1},
    // Enumerated associations name a system that cannot be read so.
    {"ZANTO_LogicalComputerSystem", "Name=\"NULL\"", 1},
};

/// The row of a path; null if it is to lead somewhere.
const DeadEnd* dead_end_of(const Object& path) {
    const std::string text = path_text(path);
    for (const DeadEnd& row : dead_ends)
        if (same_name(row.class_name, path.class_name) && text.find(row.text) != std::string::npos)
            return &row;
    return nullptr;
}

// ---------------------------------------------------------------------------------------------- the walk

/// The providers as cmpihost serve loads them.
server::Settings both_providers() {
    const std::string schema = FCIP_SOURCE_DIR "/schema/";
    const std::string folder = FCIP_BINARY_DIR "/lib";
    server::Settings settings;
    settings.schema = {schema + "dmtf.mof", schema + "fcip.mof"};
    settings.registrations = {schema + "registration/sfcb.reg", folder + "/switchsimProvider.reg"};
    settings.provider_folder = folder;
    settings.scenario = FCIP_SOURCE_DIR "/scenarios/two-site.toml";
    return settings;
}

/// Asks everything, and notes each path that the answers hold.
class Walk {
  public:
    Walk() : catalogue_(both_providers()), space_(*catalogue_.find("root/cimv2")) {}

    void run();

    /// The paths that were found, by what tells them apart.
    const std::map<std::string, Object>& found() const { return found_; }
    unsigned answers() const { return answers_; }

    /// What a get answers, of all providers together.
    std::vector<Object> get(const Object& path) const;

  private:
    std::vector<Object> ask(const server::ServedClass& served, const Request& request) const;
    void note(Object object);
    void note_values(const std::vector<Property>& values);
    void ask_associations(const Object& source);

    server::Catalogue catalogue_;
    const server::Namespace& space_;
    std::map<std::string, Object> found_;
    unsigned answers_ = 0;
};

std::vector<Object> Walk::ask(const server::ServedClass& served, const Request& request) const {
    std::vector<Object> objects;
    (*served.ask)(request, [&objects](const HeldObject& object, bool) { objects.push_back(plain(object)); });
    return objects;
}

/// An instance's path is that of its keys; one of a class without keys has none.
void Walk::note(Object object) {
    ++answers_;
    note_values(object.keys);
    note_values(object.properties);
    const mof::ClassDeclaration* declaration = space_.schema.find(object.class_name);
    if (object.keys.empty() && declaration != nullptr)
        for (const mof::PropertyDeclaration& declared : declaration->properties)
            if (const Property* key = object.property(declared.name); declared.key && key != nullptr)
                object.keys.push_back(*key);
    if (object.keys.empty() && !object.properties.empty())
        return;
    object.properties.clear();
    found_.emplace(identity(object), std::move(object));
}

void Walk::note_values(const std::vector<Property>& values) {
    for (const Property& value : values)
        if (const auto* reference = std::get_if<Value::Reference>(&value.value.data))
            note(**reference);
}

void Walk::ask_associations(const Object& source) {
    for (const server::ServedClass& association : space_.classes)
        if (association.associations)
            for (const auto operation : {associators, associator_names, references, reference_names}) {
                Request request;
                request.operation = operation;
                request.path = source;
                request.assoc_class = association.declaration->name;
                for (const Object& object : ask(association, request))
                    note(object);
            }
}

void Walk::run() {
    for (const server::ServedClass& served : space_.classes)
        for (const auto operation : {enumerate_instances, enumerate_instance_names}) {
            Request request;
            request.operation = operation;
            request.path = {served.declaration->name, space_.name, {}, {}, {}};
            for (const Object& object : ask(served, request))
                note(object);
        }
    std::set<std::string> asked;
    for (std::size_t before = 0; before != found_.size();) {
        before = found_.size();
        for (const auto& [id, source] : std::map(found_))
            if (asked.insert(id).second)
                ask_associations(source);
    }
}

std::vector<Object> Walk::get(const Object& path) const {
    Request request;
    request.operation = get_instance;
    request.path = path;
    std::vector<Object> objects;
    for (const server::ServedClass& served : space_.classes)
        if (served.instances && same_name(served.declaration->name, path.class_name))
            for (Object& object : ask(served, request))
                objects.push_back(std::move(object));
    return objects;
}

class FollowedReferences : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        testing::internal::CaptureStdout(); // what the providers print
        walk = new Walk;
        walk->run();
        testing::internal::GetCapturedStdout();
    }
    static void TearDownTestSuite() { delete walk; }

    static std::vector<Object> get(const Object& path) {
        testing::internal::CaptureStdout();
        std::vector<Object> objects = walk->get(path);
        testing::internal::GetCapturedStdout();
        return objects;
    }

    static inline Walk* walk = nullptr;
};

TEST_F(FollowedReferences, AllButTheListedOnesLeadToAnObject) {
    std::map<const DeadEnd*, unsigned> dead;
    for (const auto& [id, path] : walk->found()) {
        const DeadEnd* row = dead_end_of(path);
        EXPECT_EQ(get(path).size(), row == nullptr ? 1U : 0U) << path_text(path);
        ++dead[row];
    }
    for (const DeadEnd& row : dead_ends)
        EXPECT_EQ(dead[&row], row.paths) << row.class_name << ' ' << row.text;
    EXPECT_EQ(dead[nullptr], 324U);
    EXPECT_GT(walk->answers(), 3000U);
}

TEST_F(FollowedReferences, OfTheSwitchsOwnClassesAnswerTheirOwnKeys) {
    std::map<std::string, unsigned> followed;
    for (const auto& [id, path] : walk->found()) {
        const bool of_the_switch = path.class_name == "ZANTO_PhysicalComputerSystem" ||
                                   path.class_name == "ZANTO_LogicalComputerSystem" ||
                                   path.class_name == "ZANTO_EthernetPort" || path.class_name == "ZANTO_FCPort";
        if (!of_the_switch || dead_end_of(path) != nullptr)
            continue;
        ++followed[path.class_name];
        const std::vector<Object> got = get(path);
        ASSERT_EQ(got.size(), 1U);
        EXPECT_EQ(got[0].keys, path.keys) << path_text(path);
        for (const Property& key : path.keys)
            EXPECT_EQ(key, *got[0].property(key.name)) << path_text(path);
    }
    EXPECT_EQ(followed, (std::map<std::string, unsigned>{{"ZANTO_PhysicalComputerSystem", 1},
                                                         {"ZANTO_LogicalComputerSystem", 5},
                                                         {"ZANTO_EthernetPort", 5},
                                                         {"ZANTO_FCPort", 15}}));
}

TEST_F(FollowedReferences, NobodyComplains) {
    EXPECT_EQ(switchsim::complaints(), std::vector<std::string>{});
    EXPECT_FALSE(switchsim::lock_held());
}

} // namespace
