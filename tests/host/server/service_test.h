// A service over the test provider, and requests to it.
#pragma once

#include "host/cli/redirect.h"
#include "host/server/service.h"
#include "tests/host/cimxml/request_text.h"

#include <filesystem>
#include <fstream>

namespace cmpihost::server {

/// A reply as the listener gets it.
struct Heard : ReplySink {
    void subject(const Subject& told) override {
        EXPECT_TRUE(parts.empty());
        subjects.push_back(told);
    }
    void append(std::string_view part) override {
        body += part;
        parts.push_back(part.size());
    }
    void discard() override {
        body.clear();
        ++discards;
    }

    /// What stands between the tags of an element; the whole body if it is not there.
    std::string within(const std::string& tag) const {
        const std::size_t begin = body.find("<" + tag + ">");
        const std::size_t end = body.rfind("</" + tag + ">");
        return begin == std::string::npos ? body : body.substr(begin + tag.size() + 2, end - begin - tag.size() - 2);
    }

    std::size_t count(const std::string& text) const {
        std::size_t found = 0;
        for (std::size_t at = body.find(text); at != std::string::npos; at = body.find(text, at + 1))
            ++found;
        return found;
    }

    std::vector<Subject> subjects;
    std::string body;
    std::vector<std::size_t> parts;
    unsigned discards = 0;
    Outcome outcome{};
};

inline Heard ask_body(Service& service, const std::string& method, const std::string& object, const std::string& body) {
    const StandardOutputElsewhere quiet("", stderr);
    Heard heard;
    heard.outcome = service.answer({method, object, "host", body}, heard);
    return heard;
}

inline Heard ask(Service& service, const std::string& operation, const std::string& parameters = {}) {
    return ask_body(service, operation, "root/cimv2", cimxml::intrinsic(operation, parameters));
}

/// "ok N" with the number of objects, "CODE DESCRIPTION", or "http STATUS CIMERROR".
inline std::string ending(const Heard& heard) {
    const Outcome& outcome = heard.outcome;
    if (outcome.http_status != 200)
        return "http " + std::to_string(outcome.http_status) + " " + outcome.cim_error + heard.body;
    if (outcome.cim_status == 0)
        return "ok " + std::to_string(outcome.objects);
    const std::string code = std::to_string(outcome.cim_status);
    const std::string begin = "<ERROR CODE=\"" + code + "\" DESCRIPTION=\"";
    const std::size_t at = heard.body.find(begin);
    if (at == std::string::npos)
        return "no error " + code + " in " + heard.body;
    const std::size_t text = at + begin.size();
    return code + " " + heard.body.substr(text, heard.body.find('"', text) - text);
}

inline std::string of_class(const std::string& name) {
    return cimxml::class_parameter("ClassName", name);
}

inline std::string text_parameter(const std::string& name, const std::string& value) {
    return cimxml::parameter(name, "<VALUE>" + value + "</VALUE>");
}

inline std::string instance_parameter(const std::string& name, const std::string& class_name, const std::string& keys) {
    return cimxml::parameter(name, "<INSTANCENAME CLASSNAME=\"" + class_name + "\">" + keys + "</INSTANCENAME>");
}

inline std::string properties_parameter(const std::vector<std::string>& names) {
    std::string values;
    for (const std::string& name : names)
        values += "<VALUE>" + name + "</VALUE>";
    return cimxml::parameter("PropertyList", "<VALUE.ARRAY>" + values + "</VALUE.ARRAY>");
}

inline std::string thing_keys() {
    return cimxml::key("Name", "", "thing 1") + cimxml::key("Number", " VALUETYPE=\"numeric\"", "1");
}

/// With the classes of test_classes.mof.
class ServiceTest : public testing::Test {
  protected:
    ServiceTest() {
        settings.schema = {FCIP_SOURCE_DIR "/tests/host/server/test_classes.mof"};
        settings.provider_folder = folder;
        std::filesystem::create_directories(folder);
        const std::string library = folder + "/libgood_provider.so";
        std::filesystem::remove(library);
        std::filesystem::create_symlink(TEST_PROVIDERS "/host_good_provider.so", library);
    }

    /// The classes that the test provider serves, unless the test names its own registration.
    void use_registration(const std::string& text) {
        const std::string file = folder + "/test.reg";
        std::ofstream(file) << text;
        settings.registrations = {file};
    }

    static std::string stanza(const std::string& name, const std::string& types, const std::string& provider = "Good") {
        return "[" + name + "]\n   provider: " + provider + "\n   location: good_provider\n   type: " + types +
               "\n   namespace: root/cimv2\n#\n";
    }

    static std::string all_classes() {
        std::string text;
        for (const char* name : {"Test_Thing", "Test_Echo", "Test_Results", "Test_Broken", "Test_Swapped", "Test_Codes",
                                 "Test_Note", "Test_Refused"})
            text += stanza(name, "instance method");
        for (const char* name : {"Test_Pair", "Test_Pair2"})
            text += stanza(name, "instance association");
        return text;
    }

    Service& service() {
        if (settings.registrations.empty() && settings.providers.empty())
            use_registration(all_classes());
        if (!made)
            made = std::make_unique<Service>(settings);
        return *made;
    }

    Heard ask(const std::string& operation, const std::string& parameters = {}) {
        return server::ask(service(), operation, parameters);
    }
    Heard enumerate(const std::string& class_name, const std::string& parameters = {}) {
        return ask("EnumerateInstances", of_class(class_name) + parameters);
    }
    /// From the thing, or from another instance.
    Heard walk(const std::string& operation, const std::string& parameters = {},
               const std::string& class_name = "Test_Thing") {
        return ask(operation, instance_parameter("ObjectName", class_name, thing_keys()) + parameters);
    }

    const std::string folder = FCIP_BINARY_DIR "/tests/service";
    Settings settings;
    std::unique_ptr<Service> made;
};

} // namespace cmpihost::server
