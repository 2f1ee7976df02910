// Bodies of CIM-XML requests: read or refused, and what was read can be answered.
#include "fuzz/invariant.h"
#include "host/cimxml/header_match.h"
#include "host/cimxml/request.h"
#include "host/cimxml/write_instance.h"
#include "host/cimxml/write_path.h"
#include "host/cimxml/write_reply.h"
#include "host/cimxml/xml_reader.h"

namespace {

using namespace cmpihost::cimxml;

const cmpihost::mof::Schema& schema() {
    static const auto read = cmpihost::mof::Schema::read_text(
        "fuzz.mof", "class F_Thing { [Key] string Name; [Key] uint8 Number; sint64 Level; };"
                    "[Association] class F_Link { [Key] F_Thing ref One; [Key] F_Thing ref Other; };");
    return std::get<cmpihost::mof::Schema>(read);
}

void append_answer(std::string& out, const Parameter& parameter, const ReplyPlace& place) {
    if (const auto* object = std::get_if<cmpihost::Object>(&parameter.value))
        append_object_with_path(out, *object, place);
    else if (const auto* name = std::get_if<ClassName>(&parameter.value))
        append_class_path(out, name->name, place);
}

void answer(const Call& call) {
    const ReplyPlace place{"host", call.envelope.name_space, schema()};
    std::string reply;
    if (call.envelope.target) {
        append_method_reply(reply, call.envelope, {}, call.method_parameters, place);
    } else {
        begin_reply(reply, call.envelope);
        for (const Parameter& parameter : call.parameters)
            append_answer(reply, parameter, place);
        end_reply(reply);
    }
    // More elements than a request may have can come of the namespaces of references.
    const auto read = read_xml(reply);
    const auto* fault = std::get_if<XmlFault>(&read);
    fuzz::require(fault == nullptr || *fault == XmlFault::invalid, "a reply is well-formed");
    headers_match(call.envelope.operation, call.envelope.name_space, call.envelope);
}

void check(const Refusal& refusal) {
    const bool http = refusal.http_status == 400 || refusal.http_status == 501;
    fuzz::require(http ? fuzz::is_one_line(refusal.cim_error) : refusal.http_status == 200,
                  "a refusal has a CIMError or a CIM error");
    if (http)
        return;
    fuzz::require(refusal.code == 4 || refusal.code == 7, "a request is refused as invalid or not supported");
    std::string reply;
    append_error_reply(reply, refusal.envelope, refusal.code, refusal.description);
    fuzz::require(std::holds_alternative<XmlElement>(read_xml(reply)), "an error reply is well-formed");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto read = read_request({reinterpret_cast<const char*>(data), size}, schema());
    if (const auto* call = std::get_if<Call>(&read))
        answer(*call);
    else
        check(std::get<Refusal>(read));
    return 0;
}
