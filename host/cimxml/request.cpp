#include "host/cimxml/request.h"

#include "host/cim/names.h"
#include "host/cimxml/operations.h"
#include "host/cimxml/read_values.h"
#include "host/cimxml/structure.h"
#include "host/cimxml/typed_text.h"

#include <algorithm>

namespace cmpihost::cimxml {

namespace {

/// 2.0, 2.17: digits behind the major version and a point.
bool is_version(const std::string& text, char major) {
    return text.size() > 2 && text[0] == major && text[1] == '.' &&
           text.find_first_not_of("0123456789", 2) == std::string::npos;
}

/// A version that is there must be one of ours, whatever else is wrong with the request.
void check_version(const XmlElement& element, std::string_view attribute, char major, const char* cim_error) {
    const std::string* version = element.attribute(attribute);
    if (version != nullptr && !is_version(*version, major))
        throw Refusal{.http_status = 501, .cim_error = cim_error};
}

/// Versions and multiple requests come first: their CIMError tells more than that the rest is not understood.
void check_head(const XmlElement& root) {
    if (!root.is("CIM") || root.children.size() != 1 || !root.children.front().is("MESSAGE"))
        throw request_not_valid();
    const XmlElement& message = root.children.front();
    check_version(root, "CIMVERSION", '2', "unsupported-cim-version");
    check_version(root, "DTDVERSION", '2', "unsupported-dtd-version");
    check_version(message, "PROTOCOLVERSION", '1', "unsupported-protocol-version");
    const auto multiple = [](const XmlElement& child) { return child.is("MULTIREQ") || child.is("MULTIEXPREQ"); };
    if (std::any_of(message.children.begin(), message.children.end(), multiple))
        throw Refusal{.http_status = 501, .cim_error = "multiple-requests-unsupported"};
}

template <class T>
T typed(std::string_view type, const XmlElement& value) {
    const auto read = parse_typed(type, value.text);
    if (!read)
        throw request_not_valid();
    return std::get<T>(read->data);
}

Argument read_texts(const XmlElement& array) {
    std::vector<std::string> texts;
    for (const XmlElement& element : array.children) {
        if (!element.is("VALUE"))
            throw request_not_valid();
        texts.push_back(element.text);
    }
    return texts;
}

Argument as_argument(Target target) {
    if (auto* name = std::get_if<ClassName>(&target))
        return std::move(*name);
    return std::get<Object>(std::move(target));
}

/// A class's or an instance's name, as such or within a VALUE.REFERENCE.
Argument read_name(const XmlElement& content, const mof::Schema& schema) {
    if (content.is("VALUE.REFERENCE"))
        return as_argument(read_reference(content, schema));
    if (content.is("CLASSNAME"))
        return ClassName{*content.attribute("NAME")};
    if (content.is("INSTANCENAME"))
        return read_instance_path(content, schema);
    throw request_not_valid();
}

template <class T>
Argument read_name_of(const XmlElement& content, const mof::Schema& schema) {
    Argument name = read_name(content, schema);
    if (!std::holds_alternative<T>(name))
        throw request_not_valid();
    return name;
}

Argument read_named_instance(const XmlElement& element, const mof::Schema& schema) {
    Object instance = read_instance(element.children.back(), schema);
    instance.keys = read_instance_path(element.children.front(), schema).keys;
    return instance;
}

void expect(const XmlElement& content, std::string_view a, std::string_view b = {}) {
    if (!content.is(a) && !content.is(b))
        throw request_not_valid();
}

Argument read_value(const XmlElement& content, const mof::Schema& schema) {
    if (content.is("VALUE"))
        return content.text;
    if (content.is("VALUE.REFERENCE"))
        return as_argument(read_reference(content, schema));
    expect(content, "VALUE.ARRAY");
    return read_texts(content);
}

Argument read_structured(ParameterKind kind, const XmlElement& content, const mof::Schema& schema) {
    switch (kind) {
    case ParameterKind::class_name:
        return read_name_of<ClassName>(content, schema);
    case ParameterKind::instance_name:
        return read_name_of<Object>(content, schema);
    case ParameterKind::object_name:
        return read_name(content, schema);
    case ParameterKind::instance:
        expect(content, "INSTANCE");
        return read_instance(content, schema);
    case ParameterKind::named_instance:
        expect(content, "VALUE.NAMEDINSTANCE");
        return read_named_instance(content, schema);
    case ParameterKind::declaration:
        expect(content, "CLASS", "QUALIFIER.DECLARATION");
        return Declaration{*content.attribute("NAME")};
    default:
        return read_value(content, schema);
    }
}

Argument read_argument(ParameterKind kind, const XmlElement& content, const mof::Schema& schema) {
    switch (kind) {
    case ParameterKind::boolean:
        expect(content, "VALUE");
        return typed<bool>("boolean", content);
    case ParameterKind::number:
        expect(content, "VALUE");
        return static_cast<std::uint32_t>(typed<std::uint64_t>("uint32", content));
    case ParameterKind::text:
        expect(content, "VALUE");
        return content.text;
    case ParameterKind::property_list:
        expect(content, "VALUE.ARRAY");
        return read_texts(content);
    default:
        return read_structured(kind, content, schema);
    }
}

/// Refuses a parameter whose name was there before.
void note_name(NameMap<bool>& seen, const std::string& name) {
    if (!seen.emplace(name, true).second)
        throw invalid_parameter("parameter " + name + " is there twice, expected once");
}

void read_intrinsic(const XmlElement& element, const mof::Schema& schema, Call& call) {
    const OperationRow* operation = find_operation(call.envelope.operation);
    if (operation == nullptr)
        throw Refusal{.code = static_cast<unsigned>(CimStatus::not_supported),
                      .description = "there is no operation " + call.envelope.operation};
    NameMap<bool> seen;
    for (const XmlElement& child : element.children) {
        if (!child.is("IPARAMVALUE"))
            continue;
        const std::string& name = *child.attribute("NAME");
        note_name(seen, name);
        const ParameterRow* row = find_parameter(*operation, name);
        if (row == nullptr)
            throw invalid_parameter(std::string(operation->name) + " has no parameter " + name);
        if (!child.children.empty())
            call.parameters.push_back(
                {std::string(row->name), read_argument(row->kind, child.children.front(), schema)});
    }
    const auto given = [&](std::string_view name) {
        return std::any_of(call.parameters.begin(), call.parameters.end(),
                           [name](const Parameter& parameter) { return parameter.name == name; });
    };
    const std::string_view missing = missing_parameter(*operation, given);
    if (!missing.empty())
        throw invalid_parameter(std::string(operation->name) + ", expected parameter " + std::string(missing));
}

void read_target(const XmlElement& path, const mof::Schema& schema, Envelope& envelope) {
    envelope.name_space = read_namespace(path.children.front());
    const XmlElement& name = path.children.back();
    const bool is_class = path.is("LOCALCLASSPATH");
    envelope.target = ClassName{*name.attribute(is_class ? "NAME" : "CLASSNAME")};
    if (is_class)
        return;
    try {
        envelope.target = read_instance_path(path, schema);
    } catch (Refusal& refusal) {
        refusal.of_target = true;
        throw;
    }
}

void read_extrinsic(const XmlElement& element, const mof::Schema& schema, Call& call) {
    NameMap<bool> seen;
    for (const XmlElement& child : element.children) {
        if (!child.is("PARAMVALUE"))
            continue;
        note_name(seen, *child.attribute("NAME"));
        call.method_parameters.push_back(read_method_parameter(child, schema));
    }
}

/// Fills the call as it goes, so that its envelope is known where a Refusal is thrown.
void read_message(const XmlElement& message, const mof::Schema& schema, Call& call) {
    const XmlElement& method = message.children.front().children.front();
    call.envelope.message_id = *message.attribute("ID");
    call.envelope.protocol_version = *message.attribute("PROTOCOLVERSION");
    call.envelope.operation = *method.attribute("NAME");
    if (method.is("IMETHODCALL")) {
        call.envelope.name_space = read_namespace(method.children.front());
        read_intrinsic(method, schema, call);
    } else {
        read_target(method.children.front(), schema, call.envelope);
        read_extrinsic(method, schema, call);
    }
}

} // namespace

std::variant<Call, Refusal> read_request(std::string_view body, const mof::Schema& schema) {
    const auto xml = read_xml(body);
    if (const auto* fault = std::get_if<XmlFault>(&xml))
        return Refusal{.http_status = 400,
                       .cim_error = *fault == XmlFault::invalid ? "request-not-valid" : "request-not-well-formed"};
    Call call;
    try {
        const auto& root = std::get<XmlElement>(xml);
        check_head(root);
        if (!is_valid_structure(root))
            throw request_not_valid();
        read_message(root.children.front(), schema, call);
        return call;
    } catch (Refusal& refusal) {
        refusal.envelope = std::move(call.envelope);
        return std::move(refusal);
    }
}

} // namespace cmpihost::cimxml
