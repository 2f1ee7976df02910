#include "host/cimxml/write_reply.h"

#include "host/cimxml/characters.h"

namespace cmpihost::cimxml {

namespace {

void begin_response(std::string& out, const Envelope& envelope) {
    out += "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE";
    append_attribute(out, "ID", envelope.message_id);
    append_attribute(out, "PROTOCOLVERSION", envelope.protocol_version);
    out += envelope.target ? "><SIMPLERSP><METHODRESPONSE" : "><SIMPLERSP><IMETHODRESPONSE";
    append_attribute(out, "NAME", envelope.operation);
    out += '>';
}

void end_response(std::string& out, bool method = false) {
    out += method ? "</METHODRESPONSE>" : "</IMETHODRESPONSE>";
    out += "</SIMPLERSP></MESSAGE></CIM>\n";
}

/// The type of an element, and whether an embedded instance hides in it.
void append_parameter_type(std::string& out, std::string_view type) {
    const std::string_view element = element_type(type);
    append_attribute(out, "PARAMTYPE", element == "instance" ? "string" : element);
    if (element == "instance")
        append_attribute(out, "EmbeddedObject", "instance");
}

} // namespace

void begin_reply(std::string& out, const Envelope& envelope) {
    begin_response(out, envelope);
    out += "<IRETURNVALUE>";
}

void end_reply(std::string& out) {
    out += "</IRETURNVALUE>";
    end_response(out);
}

void end_reply(std::string& out, std::string_view enumeration_context, bool end_of_sequence) {
    out += "</IRETURNVALUE><PARAMVALUE NAME=\"EnumerationContext\" PARAMTYPE=\"string\"><VALUE>";
    append_escaped(out, enumeration_context);
    out += "</VALUE></PARAMVALUE><PARAMVALUE NAME=\"EndOfSequence\" PARAMTYPE=\"boolean\"><VALUE>";
    out += end_of_sequence ? "TRUE" : "FALSE";
    out += "</VALUE></PARAMVALUE>";
    end_response(out);
}

void append_empty_reply(std::string& out, const Envelope& envelope) {
    begin_response(out, envelope);
    end_response(out);
}

void append_error_reply(std::string& out, const Envelope& envelope, unsigned code, std::string_view description) {
    begin_response(out, envelope);
    out += "<ERROR";
    append_attribute(out, "CODE", std::to_string(code));
    append_attribute(out, "DESCRIPTION", description);
    out += "></ERROR>";
    end_response(out, envelope.target.has_value());
}

void append_method_reply(std::string& out, const Envelope& envelope, const Property& returned,
                         const std::vector<Property>& parameters, const ReplyPlace& place) {
    begin_response(out, envelope);
    if (!std::holds_alternative<std::monostate>(returned.value.data)) {
        out += "<RETURNVALUE";
        append_parameter_type(out, returned.type);
        out += '>';
        append_value(out, returned.type, returned.value, place);
        out += "</RETURNVALUE>";
    }
    for (const Property& parameter : parameters) {
        out += "<PARAMVALUE";
        append_attribute(out, "NAME", parameter.name);
        append_parameter_type(out, parameter.type);
        out += '>';
        append_value(out, parameter.type, parameter.value, place);
        out += "</PARAMVALUE>";
    }
    end_response(out, true);
}

} // namespace cmpihost::cimxml
