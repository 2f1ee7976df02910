#include "host/pages/other_side.h"

#include "host/graph/graph.h"
#include "host/server/inquiry.h"

#include <algorithm>

namespace cmpihost::pages {

namespace {

using mof::ClassDeclaration;
using mof::PropertyDeclaration;
using server::Namespace;

bool admits(const ClassDeclaration& association, const Namespace& space, const std::string& class_name) {
    return std::any_of(
        association.properties.begin(), association.properties.end(), [&](const PropertyDeclaration& end) {
            return end.type == "reference" && server::is_kind_of(space.schema, class_name, end.reference_class);
        });
}

/// The served associations that admit a class, each once.
std::vector<const ClassDeclaration*> associations_of(const Namespace& space, const std::string& class_name) {
    std::vector<const ClassDeclaration*> all;
    for (const server::ServedClass& each : space.classes)
        if (each.instances && each.associations && admits(*each.declaration, space, class_name) &&
            std::find(all.begin(), all.end(), each.declaration) == all.end())
            all.push_back(each.declaration);
    return all;
}

const Object* end_of(const Property& key) {
    const auto* end = std::get_if<Value::Reference>(&key.value.data);
    return end == nullptr ? nullptr : end->get();
}

/// The key of an association's instance that holds this object; null if none does.
const Property* own_key(const Object& name, const Object& path, const std::string& wanted) {
    for (const Property& key : name.keys)
        if (const Object* end = end_of(key);
            end != nullptr && same_name(end->class_name, path.class_name) && identity(*end) == wanted)
            return &key;
    return nullptr;
}

void add_others(std::vector<TiedObject>& tied, const std::string& association, const Object& name,
                const Property& own) {
    for (const Property& key : name.keys)
        if (const Object* end = end_of(key); end != nullptr && &key != &own)
            tied.push_back({association, *end, {own.name, key.name}});
}

} // namespace

std::vector<TiedObject> tied_by_names(TimedAsk& ask, const Namespace& space, const Object& path, std::size_t most) {
    std::vector<TiedObject> tied;
    const std::string wanted = identity(path);
    Request request;
    request.operation = Request::Operation::enumerate_instance_names;
    request.path.name_space = space.name;
    for (const ClassDeclaration* association : associations_of(space, path.class_name)) {
        request.path.class_name = association->name;
        for (const Object& name : ask(request).objects) {
            if (tied.size() >= most)
                return tied;
            if (const Property* own = own_key(name, path, wanted))
                add_others(tied, association->name, name, *own);
        }
    }
    return tied;
}

} // namespace cmpihost::pages
