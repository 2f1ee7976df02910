// Bodies of requests, answered by the server over the provider and the simulated switch.
#include "host/server/service.h"
#include "fuzz/invariant.h"
#include "host/cim/path_text.h"
#include "host/cimxml/request.h"
#include "host/cimxml/xml_reader.h"

#include <filesystem>

namespace {

using namespace cmpihost;

constexpr unsigned highest_code = 28; // of the standard

server::Settings settings() {
    server::Settings settings;
    settings.schema = {FCIP_SOURCE_DIR "/schema/dmtf.mof", FCIP_SOURCE_DIR "/schema/fcip.mof"};
    settings.registrations = {FCIP_SOURCE_DIR "/schema/registration/sfcb.reg"};
    settings.provider_folder = std::filesystem::path(FCIP_PROVIDER).parent_path().string();
    settings.interop_schema = FCIP_SOURCE_DIR "/schema/interop.mof";
    settings.scenario = FCIP_SOURCE_DIR "/scenarios/two-site.toml";
    return settings;
}

/// Holds what the server says against the order in which it may be said.
struct Watched : server::ReplySink {
    void subject(const server::Subject& /*subject*/) override {
        fuzz::require(!told && body.empty(), "the subject is told once, and first");
        told = true;
    }
    void append(std::string_view part) override {
        fuzz::require(told, "a reply has a subject");
        fuzz::require(!part.empty(), "a part of a reply is not empty");
        body += part;
    }
    void discard() override {
        fuzz::require(!body.empty(), "only what was appended is discarded");
        body.clear();
    }

    bool told = false;
    std::string body;
};

/// The headers that a client would send with the body, so that most bodies get past their comparison.
server::Question question_for(std::string body) {
    static const mof::Schema none;
    const auto read = cimxml::read_request(body, none);
    const auto* call = std::get_if<cimxml::Call>(&read);
    const auto& envelope = call != nullptr ? call->envelope : std::get<cimxml::Refusal>(read).envelope;
    std::string object = envelope.name_space;
    if (envelope.target) {
        const auto* name = std::get_if<cimxml::ClassName>(&*envelope.target);
        object = name != nullptr ? object + ':' + name->name : path_text(std::get<Object>(*envelope.target));
    }
    return {envelope.operation, object, "localhost", std::move(body)};
}

void check(const server::Outcome& outcome, const Watched& reply) {
    for (const std::string& note : outcome.notes)
        fuzz::require(fuzz::is_one_line(note), "a note is one line");
    if (outcome.http_status != 200) {
        fuzz::require(outcome.http_status == 400 || outcome.http_status == 501, "a refusal is 400 or 501");
        fuzz::require(reply.body.empty() && fuzz::is_one_line(outcome.cim_error), "a refusal has a CIMError alone");
        return;
    }
    fuzz::require(outcome.cim_status <= highest_code, "a CIM status is one of the standard's");
    fuzz::require(outcome.cim_status == 0 || outcome.objects == 0, "an error has no objects");
    const auto read = cimxml::read_xml(reply.body);
    const auto* fault = std::get_if<cimxml::XmlFault>(&read);
    // More elements than a request may have are no fault of a reply.
    fuzz::require(fault == nullptr || *fault == cimxml::XmlFault::invalid, "a reply is well-formed");
    const bool has_error = reply.body.find("<ERROR CODE=\"") != std::string::npos;
    fuzz::require(has_error == (outcome.cim_status != 0), "a reply tells its status");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::drop_trace();
    static server::Service service(settings());
    Watched reply;
    const server::Outcome outcome = service.answer(question_for({reinterpret_cast<const char*>(data), size}), reply);
    check(outcome, reply);
    return 0;
}
