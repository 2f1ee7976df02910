// What wbemcli prints of the server, against what the provider answers in this process: every class and operation,
// value by value.
#include "host/broker/loader.h"
#include "host/mof/schema.h"
#include "host/server/registration.h"
#include "tests/host/end_to_end/server_process.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace cmpihost {
namespace {

using enum Request::Operation;

std::string file_text(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

const mof::Schema& schema() {
    static const auto read = [] {
        const std::vector<std::string> files{FCIP_SOURCE_DIR "/schema/dmtf.mof", FCIP_SOURCE_DIR "/schema/fcip.mof"};
        return std::get<mof::Schema>(mof::Schema::read(files));
    }();
    return read;
}

const std::vector<server::RegisteredClass>& served_classes() {
    static const auto read = [] {
        const std::string file = FCIP_SOURCE_DIR "/schema/registration/sfcb.reg";
        return server::read_registration(file, file_text(file));
    }();
    return read;
}

bool is_association(const server::RegisteredClass& each) {
    return std::find(each.types.begin(), each.types.end(), "association") != each.types.end();
}

// ------------------------------------------------------------------------------------------- as wbemcli prints objects

/// Writes objects as wbemcli does. A path is HOST/NAMESPACE:CLASS.KEYS; within references the colon is missing.
class WbemcliText {
  public:
    explicit WbemcliText(std::string host) : host_(std::move(host)) {}

    std::string path(const Object& object) const { return path(object, ":"); }

    /// The path and a line for each property.
    std::string instance(const Object& path_of, const Object& object) const {
        std::string text = path(path_of) + "\n";
        for (const Property& property : object.properties)
            text += "-" + property.name + "=" + value(property) + "\n";
        return text + "\n";
    }

  private:
    std::string path(const Object& object, const char* colon) const {
        std::string text = object.host.value_or("").empty() ? host_ : *object.host;
        text += "/" + object.name_space + colon + object.class_name + ".";
        const std::vector<Property> keys = keys_of(object);
        for (const Property& key : keys)
            text += (&key == &keys.front() ? "" : ",") + key.name + "=" + value(key);
        return keys.empty() ? text + "*KEYBINDING=\"MISSING*\"" : text;
    }

    /// Those that the class declares, in its order; where there are none, those of the path.
    static std::vector<Property> keys_of(const Object& object) {
        std::vector<Property> keys;
        for (const mof::PropertyDeclaration& declared : schema().find(object.class_name)->properties) {
            const Property* in_path = object.key(declared.name);
            const Property* key = in_path != nullptr ? in_path : object.property(declared.name);
            if (declared.key && key != nullptr)
                keys.push_back(*key);
        }
        return keys.empty() ? object.keys : keys;
    }

    std::string value(const Property& property) const {
        if (const auto* text = std::get_if<std::string>(&property.value.data))
            return property.type == "datetime" ? *text : "\"" + *text + "\"";
        if (const auto* truth = std::get_if<bool>(&property.value.data))
            return *truth ? "TRUE" : "FALSE";
        if (const auto* number = std::get_if<std::uint64_t>(&property.value.data))
            return std::to_string(*number);
        if (const auto* number = std::get_if<std::int64_t>(&property.value.data))
            return std::to_string(*number);
        if (const auto* reference = std::get_if<Value::Reference>(&property.value.data))
            return path(**reference, "");
        return "";
    }

    std::string host_;
};

// ----------------------------------------------------------------------------------------------------------- requests

/// The provider in this process and the server beside it, each with a switch of its own, both the built-in one.
class Wbemcli : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        library = new Library(FCIP_BINARY_DIR "/lib/libFCIPProvider.so");
        library->create("FCIPProvider");
        server = new ServerProcess();
    }
    static void TearDownTestSuite() {
        delete server;
        delete library;
    }
    void SetUp() override { ASSERT_TRUE(server->is_up()) << server->errors(); }

    /// What the provider answers. Its trace goes nowhere.
    static Answer ask(Request::Operation operation, const Object& path, const std::string& association = {}) {
        Request request;
        request.operation = operation;
        request.path = path;
        if (!association.empty())
            request.assoc_class = association;
        testing::internal::CaptureStdout();
        Answer answer = run(library->provider(), request);
        testing::internal::GetCapturedStdout();
        return answer;
    }

    /// The same of an association class and the served classes below it, joined without doubles.
    static Answer ask_all(Request::Operation operation, const Object& path, const std::string& class_name) {
        Answer all;
        for (const server::RegisteredClass& each : served_classes())
            if (schema().is_a(each.class_name, class_name)) {
                const bool associations = operation != enumerate_instances && operation != enumerate_instance_names;
                const Answer answer =
                    associations ? ask(operation, path, each.class_name) : ask(operation, class_path(each.class_name));
                all.rc = answer.rc;
                all.message = answer.message;
                for (const Object& object : answer.objects)
                    if (std::find(all.objects.begin(), all.objects.end(), object) == all.objects.end())
                        all.objects.push_back(object);
            }
        return all;
    }

    static Answer ask_all(Request::Operation operation, const std::string& class_name) {
        return ask_all(operation, {}, class_name);
    }

    /// Enumerations and gets tell no host: the client takes the one that it asked.
    static Answer on_this_host(Answer answer) {
        for (Object& object : answer.objects)
            object.host.reset();
        return answer;
    }

    static Object class_path(const std::string& class_name) { return {class_name, "root/cimv2", {}, {}, {}}; }

    std::string url(const std::string& class_name) const {
        return "http://" + server->host() + "/root/cimv2:" + class_name;
    }

    /// Of an object without references, as wbemcli takes it.
    std::string url_of(const Object& path) const {
        const std::string local = text.path(path);
        return "http://" + server->host() + local.substr(local.find('/'));
    }

    static std::string error_text(int code, const std::optional<std::string>& message = {}) {
        const std::string name(rc_name(code));
        return "*\n* wbemcli: Cim: (" + std::to_string(code) + ") CIM_ERR_" + name + ": " + message.value_or(name) +
               "\n*\n";
    }

    std::string as_text(const Answer& answer, bool instances) const {
        if (answer.rc != 0)
            return error_text(answer.rc, answer.message);
        std::string all;
        for (const Object& object : answer.objects)
            all += instances ? text.instance(object, object) : text.path(object) + "\n";
        return all;
    }

    static inline Library* library = nullptr;
    static inline ServerProcess* server = nullptr;
    WbemcliText text{server->host()};
};

TEST_F(Wbemcli, EnumerateInstanceNamesOfEveryClass) {
    for (const server::RegisteredClass& each : served_classes()) {
        SCOPED_TRACE(each.class_name);
        const Answer answer = on_this_host(ask_all(enumerate_instance_names, each.class_name));
        EXPECT_EQ(run_command({"wbemcli", "-nl", "ein", url(each.class_name)}).output, as_text(answer, false));
    }
}

TEST_F(Wbemcli, EnumerateInstancesOfEveryClass) {
    for (const server::RegisteredClass& each : served_classes()) {
        SCOPED_TRACE(each.class_name);
        const Answer answer = on_this_host(ask_all(enumerate_instances, each.class_name));
        EXPECT_EQ(run_command({"wbemcli", "-nl", "ei", url(each.class_name)}).output, as_text(answer, true));
    }
}

TEST_F(Wbemcli, GetInstanceOfEveryName) {
    for (const server::RegisteredClass& each : served_classes()) {
        if (is_association(each))
            continue; // wbemcli takes no references in a path
        SCOPED_TRACE(each.class_name);
        for (const Object& path : ask(enumerate_instance_names, class_path(each.class_name)).objects) {
            const Answer answer = ask(get_instance, path);
            Object asked = path;
            asked.host.reset(); // wbemcli shows the path that it was given
            const std::string expected = answer.objects.empty() ? error_text(6, "there is no such instance")
                                                                : text.instance(asked, answer.objects.front());
            EXPECT_EQ(run_command({"wbemcli", "-nl", "gi", url_of(path)}).output, expected);
        }
    }
}

/// An association operation: wbemcli's word and option, the provider's operation, what it gives.
struct AssociationRow {
    const char* word;
    const char* option;
    Request::Operation operation;
    bool instances;
};

constexpr AssociationRow association_rows[] = {
    {"ai", "-ac", associators, true},
    {"ain", "-ac", associator_names, false},
    {"ri", "-arc", references, true},
    {"rin", "-arc", reference_names, false},
};

TEST_F(Wbemcli, AssociationsOfTheFirstObjectOfEveryClass) {
    for (const server::RegisteredClass& each : served_classes()) {
        const std::vector<Object> names = ask(enumerate_instance_names, class_path(each.class_name)).objects;
        if (is_association(each) || names.empty())
            continue;
        for (const server::RegisteredClass& association : served_classes())
            for (const AssociationRow& row : association_rows)
                if (is_association(association)) {
                    SCOPED_TRACE(each.class_name + " " + row.word + " " + association.class_name);
                    const Answer answer = ask_all(row.operation, names.front(), association.class_name);
                    EXPECT_EQ(run_command({"wbemcli", "-nl", row.word, row.option, association.class_name,
                                           url_of(names.front())})
                                  .output,
                              as_text(answer, row.instances));
                }
    }
}

// ------------------------------------------------------------------------------------------- the switch's own provider

/// The lines of an output.
std::vector<std::string> lines_of(const std::string& output) {
    std::istringstream stream(output);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

TEST_F(Wbemcli, BeginsAtTheComputerSystemsAndGetsEach) {
    const auto systems = lines_of(run_command({"wbemcli", "-nl", "ein", url("CIM_ComputerSystem")}).output);
    ASSERT_EQ(systems.size(), 6U);
    EXPECT_NE(systems[0].find("ZANTO_PhysicalComputerSystem.Name=\"dc-east-sw1.example.net\""), std::string::npos);
    for (const std::string& system : systems) {
        const auto got = lines_of(run_command({"wbemcli", "-nl", "gi", "http://" + system}).output);
        ASSERT_GT(got.size(), 5U) << system;
        EXPECT_EQ(got[0].substr(0, got[0].find('.')), system.substr(0, system.find('.')));
        EXPECT_NE(std::find(got.begin(), got.end(), "-EnabledState=2"), got.end()) << system;
    }
}

TEST_F(Wbemcli, PortsAreServedUnderTheirSuperclass) {
    EXPECT_EQ(lines_of(run_command({"wbemcli", "-nl", "ein", url("CIM_NetworkPort")}).output).size(), 20U);
}

TEST_F(Wbemcli, AProviderThatIsNamedIsServedAlone) {
    const ServerProcess alone({"--provider", FCIP_BINARY_DIR "/lib/libFCIPProvider.so"});
    ASSERT_TRUE(alone.is_up()) << alone.errors();
    const auto names = [&alone](const char* class_name) {
        return run_command({"wbemcli", "-nl", "ein", "http://" + alone.host() + "/root/cimv2:" + class_name}).output;
    };
    EXPECT_EQ(names("CIM_ComputerSystem"), "");
    EXPECT_EQ(names("CIM_NetworkPort"), "");
    EXPECT_EQ(lines_of(names("ZANTO_FCIPProfile")).size(), 5U);
}

} // namespace
} // namespace cmpihost
