#include "host/server/inquiry.h"

#include "host/server/status.h"

#include <algorithm>
#include <array>

namespace cmpihost::server {

namespace {

constexpr std::array inquiry_rows{
    InquiryRow{"AssociatorNames", Request::Operation::associator_names, Form::object_path, false},
    InquiryRow{"Associators", Request::Operation::associators, Form::object_with_path, false},
    InquiryRow{"EnumerateInstanceNames", Request::Operation::enumerate_instance_names, Form::instance_name, false},
    InquiryRow{"EnumerateInstances", Request::Operation::enumerate_instances, Form::named_instance, false},
    InquiryRow{"GetInstance", Request::Operation::get_instance, Form::instance, false},
    InquiryRow{"OpenAssociatorInstancePaths", Request::Operation::associator_names, Form::instance_path, true},
    InquiryRow{"OpenAssociatorInstances", Request::Operation::associators, Form::instance_with_path, true},
    InquiryRow{"OpenEnumerateInstancePaths", Request::Operation::enumerate_instance_names, Form::instance_path, true},
    InquiryRow{"OpenEnumerateInstances", Request::Operation::enumerate_instances, Form::instance_with_path, true},
    InquiryRow{"OpenReferenceInstancePaths", Request::Operation::reference_names, Form::instance_path, true},
    InquiryRow{"OpenReferenceInstances", Request::Operation::references, Form::instance_with_path, true},
    InquiryRow{"ReferenceNames", Request::Operation::reference_names, Form::object_path, false},
    InquiryRow{"References", Request::Operation::references, Form::object_with_path, false},
};

bool is_enumeration(Request::Operation operation) {
    return operation == Request::Operation::enumerate_instances ||
           operation == Request::Operation::enumerate_instance_names;
}

bool is_associators(Request::Operation operation) {
    return operation == Request::Operation::associators || operation == Request::Operation::associator_names;
}

void add_keys(std::vector<std::string>& names, const mof::ClassDeclaration& declaration) {
    for (const mof::PropertyDeclaration& property : declaration.properties)
        if (property.key && std::none_of(names.begin(), names.end(), [&property](const std::string& name) {
                return same_name(name, property.name);
            }))
            names.push_back(property.name);
}

/// The client's property list, and the keys of every class whose objects may come, so that paths can be made.
std::optional<std::vector<std::string>> wanted_properties(const Inquiry& inquiry, const Namespace& space) {
    if (inquiry.selection.properties == nullptr)
        return std::nullopt;
    std::vector<std::string> names = *inquiry.selection.properties;
    if (!is_associators(inquiry.request.operation)) {
        for (const ServedClass* each : inquiry.classes)
            add_keys(names, *each->declaration);
        return names;
    }
    for (const ServedClass& each : space.classes)
        if (!inquiry.result_class || is_kind_of(space.schema, each.declaration->name, *inquiry.result_class))
            add_keys(names, *each.declaration);
    return names;
}

std::optional<std::string> text_argument(const cimxml::Call& call, std::string_view name) {
    const auto* text = cimxml::argument<std::string>(call, name);
    return text == nullptr ? std::nullopt : std::optional(*text);
}

/// A class that narrows down an association request; null if the client names none.
const mof::ClassDeclaration* filter_class(const cimxml::Call& call, const Namespace& space, std::string_view name) {
    const auto* given = cimxml::argument<cimxml::ClassName>(call, name);
    return given == nullptr ? nullptr : &declared_class(space, given->name, CimCode::invalid_parameter);
}

void fill_enumeration(Inquiry& inquiry, const cimxml::Call& call, const Namespace& space) {
    const auto& name = cimxml::argument<cimxml::ClassName>(call, "ClassName")->name;
    inquiry.named = &declared_class(space, name, CimCode::invalid_class);
    inquiry.classes = served_below(space, inquiry.named, &ServedClass::instances);
    const auto* deep = cimxml::argument<bool>(call, "DeepInheritance");
    if (deep != nullptr && !*deep)
        inquiry.selection.shallow = inquiry.named;
}

void fill_association(Inquiry& inquiry, const cimxml::Call& call, const Namespace& space) {
    const auto* source = cimxml::argument<Object>(call, "ObjectName");
    if (source == nullptr)
        source = cimxml::argument<Object>(call, "InstanceName");
    if (source == nullptr)
        throw Status{CimCode::not_supported, "associations of classes are not known, expected an instance"};
    inquiry.request.path = *source;
    inquiry.request.path.class_name = declared_class(space, source->class_name, CimCode::invalid_parameter).name;
    const bool associators = is_associators(inquiry.request.operation);
    const mof::ClassDeclaration* result = filter_class(call, space, "ResultClass");
    inquiry.named = associators ? filter_class(call, space, "AssocClass") : result;
    inquiry.classes = served_below(space, inquiry.named, &ServedClass::associations);
    if (result != nullptr)
        inquiry.result_class = result->name;
    if (associators)
        inquiry.request.result_class = inquiry.result_class;
    inquiry.request.role = text_argument(call, "Role");
    inquiry.request.result_role = text_argument(call, "ResultRole");
}

} // namespace

const InquiryRow* find_inquiry(std::string_view operation) {
    const auto* found = std::find_if(inquiry_rows.begin(), inquiry_rows.end(),
                                     [operation](const InquiryRow& row) { return same_name(row.name, operation); });
    return found == inquiry_rows.end() ? nullptr : found;
}

std::vector<const ServedClass*> served_below(const Namespace& space, const mof::ClassDeclaration* ancestor,
                                             bool ServedClass::*served) {
    std::vector<const ServedClass*> classes;
    for (const ServedClass& each : space.classes)
        if (each.*served && (ancestor == nullptr || each.is_a(*ancestor)))
            classes.push_back(&each);
    std::stable_partition(classes.begin(), classes.end(),
                          [ancestor](const ServedClass* each) { return each->declaration == ancestor; });
    return classes;
}

bool is_kind_of(const mof::Schema& schema, std::string_view name, std::string_view ancestor) {
    return same_name(name, ancestor) || schema.is_a(name, ancestor);
}

const mof::ClassDeclaration& declared_class(const Namespace& space, std::string_view name, CimCode code) {
    if (const mof::ClassDeclaration* declaration = space.schema.find(name))
        return *declaration;
    throw Status{code, "there is no class " + std::string(name) + " in namespace " + space.name};
}

Inquiry make_inquiry(const cimxml::Call& call, const InquiryRow& row, const Namespace& space) {
    const auto* properties = cimxml::argument<std::vector<std::string>>(call, "PropertyList");
    if (row.operation == Request::Operation::get_instance)
        return get_inquiry(*cimxml::argument<Object>(call, "InstanceName"), properties, space);
    Inquiry inquiry;
    inquiry.request.operation = row.operation;
    inquiry.form = row.form;
    inquiry.selection.properties = properties;
    if (is_enumeration(row.operation))
        fill_enumeration(inquiry, call, space);
    else
        fill_association(inquiry, call, space);
    inquiry.request.path.name_space = space.name;
    inquiry.request.properties = wanted_properties(inquiry, space);
    return inquiry;
}

Inquiry get_inquiry(const Object& path, const std::vector<std::string>* properties, const Namespace& space) {
    Inquiry inquiry;
    inquiry.request.operation = Request::Operation::get_instance;
    inquiry.request.path = path;
    inquiry.request.path.name_space = space.name;
    inquiry.single = true;
    inquiry.selection.properties = properties;
    inquiry.named = &declared_class(space, path.class_name, CimCode::invalid_class);
    inquiry.classes = served_below(space, inquiry.named, &ServedClass::instances);
    inquiry.request.properties = wanted_properties(inquiry, space);
    return inquiry;
}

} // namespace cmpihost::server
