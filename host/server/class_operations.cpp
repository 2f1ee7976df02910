#include "host/server/class_operations.h"

#include "host/cimxml/write_class.h"
#include "host/cimxml/write_qualifier.h"

#include <algorithm>
#include <array>

namespace cmpihost::server {

namespace {

/// What an operation reads, and where its answer goes.
struct Work {
    const cimxml::Call& call;
    const cimxml::ReplyPlace& place;
    std::string& values;
    std::uint64_t& objects;
};

bool flag(const Work& work, std::string_view name, bool absent) {
    const bool* value = cimxml::argument<bool>(work.call, name);
    return value == nullptr ? absent : *value;
}

/// The class that the request names; empty for none.
std::string_view class_name(const Work& work) {
    const auto* named = cimxml::argument<cimxml::ClassName>(work.call, "ClassName");
    return named == nullptr ? std::string_view() : std::string_view(named->name);
}

cimxml::ClassOptions class_options(const Work& work) {
    return {.local_only = flag(work, "LocalOnly", true),
            .qualifiers = flag(work, "IncludeQualifiers", true),
            .class_origin = flag(work, "IncludeClassOrigin", false),
            .property_list = cimxml::argument<std::vector<std::string>>(work.call, "PropertyList")};
}

Status not_declared(CimCode code, std::string_view what, std::string_view name) {
    return {code, std::string(what) + " " + std::string(name) + " is not declared"};
}

Status get_class(const Work& work) {
    const mof::ClassDeclaration* declaration = work.place.schema.find(class_name(work));
    if (declaration == nullptr)
        return not_declared(CimCode::not_found, "class", class_name(work));
    cimxml::append_class(work.values, *declaration, class_options(work), work.place);
    ++work.objects;
    return {};
}

/// Calls `append` for each class under the one that is named, or for each of all: the next level, or every one.
template <class Append>
Status each_subclass(const Work& work, Append append) {
    const mof::Schema& schema = work.place.schema;
    const std::string_view top = class_name(work);
    if (!top.empty() && schema.find(top) == nullptr)
        return not_declared(CimCode::invalid_class, "class", top);
    const bool deep = flag(work, "DeepInheritance", false);
    for (const mof::ClassDeclaration& each : schema.classes()) {
        const bool below = top.empty() || schema.is_a(each.superclass, top);
        if (deep ? below : same_name(each.superclass, top)) {
            append(each);
            ++work.objects;
        }
    }
    return {};
}

Status enumerate_classes(const Work& work) {
    const cimxml::ClassOptions options = class_options(work);
    return each_subclass(
        work, [&](const mof::ClassDeclaration& each) { cimxml::append_class(work.values, each, options, work.place); });
}

Status enumerate_class_names(const Work& work) {
    return each_subclass(work,
                         [&](const mof::ClassDeclaration& each) { cimxml::append_class_name(work.values, each.name); });
}

Status get_qualifier(const Work& work) {
    const auto* name = cimxml::argument<std::string>(work.call, "QualifierName");
    const auto* declaration = name == nullptr ? nullptr : work.place.schema.qualifier(*name);
    if (declaration == nullptr)
        return not_declared(CimCode::not_found, "qualifier", name == nullptr ? "" : *name);
    cimxml::append_qualifier_declaration(work.values, *declaration, work.place);
    ++work.objects;
    return {};
}

Status enumerate_qualifiers(const Work& work) {
    for (const mof::QualifierDeclaration& each : work.place.schema.qualifiers())
        cimxml::append_qualifier_declaration(work.values, each, work.place);
    work.objects += work.place.schema.qualifiers().size();
    return {};
}

struct Row {
    std::string_view operation;
    Status (*answer)(const Work& work);
};

constexpr std::array class_rows{
    Row{"GetClass", get_class},
    Row{"EnumerateClasses", enumerate_classes},
    Row{"EnumerateClassNames", enumerate_class_names},
    Row{"GetQualifier", get_qualifier},
    Row{"EnumerateQualifiers", enumerate_qualifiers},
};

const Row* find_row(std::string_view operation) {
    const auto* row = std::find_if(class_rows.begin(), class_rows.end(),
                                   [operation](const Row& each) { return same_name(each.operation, operation); });
    return row == class_rows.end() ? nullptr : row;
}

} // namespace

bool is_class_operation(std::string_view operation) {
    return find_row(operation) != nullptr;
}

Status answer_class_operation(const cimxml::Call& call, const cimxml::ReplyPlace& place, std::string& values,
                              std::uint64_t& objects) {
    const Row* row = find_row(call.envelope.operation);
    if (row == nullptr)
        return {CimCode::not_supported, call.envelope.operation + " is not supported"};
    return row->answer({call, place, values, objects});
}

} // namespace cmpihost::server
