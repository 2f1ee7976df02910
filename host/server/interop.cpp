#include "host/server/interop.h"

#include "host/server/interop_instances.h"

#include <algorithm>

namespace cmpihost::server {

namespace {

bool is_same_path(const Object& path, const Object& other);

bool is_same_value(const Value& value, const Value& other) {
    const auto* path = std::get_if<Value::Reference>(&value.data);
    const auto* other_path = std::get_if<Value::Reference>(&other.data);
    if (path == nullptr || other_path == nullptr || *path == nullptr || *other_path == nullptr)
        return value == other;
    return is_same_path(**path, **other_path);
}

/// Whether two paths name the same object of this server, by whatever host and whichever interop namespace.
bool is_same_path(const Object& path, const Object& other) {
    return same_name(path.class_name, other.class_name) && path.keys.size() == other.keys.size() &&
           std::all_of(path.keys.begin(), path.keys.end(), [&](const Property& key) {
               const Property* same = other.key(key.name);
               return same != nullptr && is_same_value(key.value, same->value);
           });
}

/// Values as a client gets them, with a namespace in their paths.
std::vector<Property> placed(std::vector<Property> values, const std::string& name_space) {
    for (Property& value : values)
        if (const auto* target = std::get_if<Value::Reference>(&value.value.data)) {
            Object path = **target;
            path.name_space = name_space;
            path.keys = placed(std::move(path.keys), name_space);
            value.value = {std::make_shared<const Object>(std::move(path))};
        }
    return values;
}

bool is_wanted(const Request& request, const Property& property) {
    return !request.properties || std::any_of(request.properties->begin(), request.properties->end(),
                                              [&](const std::string& name) { return same_name(name, property.name); });
}

/// The path, and the properties that were asked for if instances were.
Object result(const Object& instance, const Request& request) {
    const std::string& name_space = request.path.name_space;
    Object object{instance.class_name, name_space, std::nullopt, placed(instance.keys, name_space), {}};
    const Request::Operation operation = request.operation;
    if (operation == Request::Operation::enumerate_instance_names ||
        operation == Request::Operation::associator_names || operation == Request::Operation::reference_names)
        return object;
    std::copy_if(instance.properties.begin(), instance.properties.end(), std::back_inserter(object.properties),
                 [&](const Property& property) { return is_wanted(request, property); });
    object.properties = placed(std::move(object.properties), name_space);
    return object;
}

Answer answer_with(const std::vector<const Object*>& instances, const Request& request) {
    Answer answer;
    for (const Object* instance : instances)
        answer.objects.push_back(result(*instance, request));
    answer.done = true;
    return answer;
}

Answer failure(int rc, std::string message) {
    Answer answer;
    answer.rc = rc;
    answer.message = std::move(message);
    return answer;
}

bool is_role(const Property& property, const std::optional<std::string>& role) {
    return property.type == "reference" && (!role || same_name(property.name, *role));
}

const Object& target_of(const Property& reference) {
    return *std::get<Value::Reference>(reference.value.data);
}

void add_once(std::vector<const Object*>& found, const Object* object) {
    if (object != nullptr && std::find(found.begin(), found.end(), object) == found.end())
        found.push_back(object);
}

} // namespace

Interop::Interop(const mof::Schema& schema, const std::vector<std::string>& namespaces, const std::string& system_name)
    : schema_(schema), instances_(interop_instances(schema, namespaces, system_name)) {}

const Object* Interop::find(const Object& path) const {
    const auto found = std::find_if(instances_.begin(), instances_.end(),
                                    [&](const Object& instance) { return is_same_path(instance, path); });
    return found == instances_.end() ? nullptr : &*found;
}

bool Interop::is_a(std::string_view class_name, const std::optional<std::string>& filter) const {
    return !filter || schema_.is_a(class_name, *filter);
}

Answer Interop::enumerate(const Request& request) const {
    std::vector<const Object*> found;
    for (const Object& instance : instances_)
        if (same_name(instance.class_name, request.path.class_name))
            found.push_back(&instance);
    return answer_with(found, request);
}

Answer Interop::get(const Request& request) const {
    const Object* found = find(request.path);
    if (found == nullptr)
        return failure(CMPI_RC_ERR_NOT_FOUND, "there is no such instance of " + request.path.class_name);
    return answer_with({found}, request);
}

/// Calls take(association, reference) for each reference to the request's object that the filters admit.
template <class Take>
void Interop::each_tie(const Request& request, Take take) const {
    for (const Object& association : instances_) {
        if (!is_a(association.class_name, request.assoc_class))
            continue;
        for (const Property& reference : association.properties)
            if (is_role(reference, request.role) && is_same_path(target_of(reference), request.path))
                take(association, reference);
    }
}

Answer Interop::associators(const Request& request) const {
    std::vector<const Object*> found;
    each_tie(request, [&](const Object& association, const Property& source) {
        for (const Property& reference : association.properties)
            if (&reference != &source && is_role(reference, request.result_role) &&
                is_a(target_of(reference).class_name, request.result_class))
                add_once(found, find(target_of(reference)));
    });
    return answer_with(found, request);
}

Answer Interop::references(const Request& request) const {
    std::vector<const Object*> found;
    each_tie(request, [&](const Object& association, const Property&) { add_once(found, &association); });
    return answer_with(found, request);
}

Answer Interop::answer(const Request& request) const {
    if (schema_.find(request.path.class_name) == nullptr)
        return failure(CMPI_RC_ERR_INVALID_CLASS, "class " + request.path.class_name + " is not declared");
    switch (request.operation) {
    case Request::Operation::enumerate_instances:
    case Request::Operation::enumerate_instance_names:
        return enumerate(request);
    case Request::Operation::get_instance:
        return get(request);
    case Request::Operation::associators:
    case Request::Operation::associator_names:
        return associators(request);
    case Request::Operation::references:
    case Request::Operation::reference_names:
        return references(request);
    default:
        return failure(CMPI_RC_ERR_NOT_SUPPORTED, "the interop namespace is read-only");
    }
}

} // namespace cmpihost::server
