#include "host/pages/roles.h"

#include "host/graph/graph.h"
#include "host/server/inquiry.h"

namespace cmpihost::pages {

Roles::Roles(TimedAsk& ask, const server::Namespace& space, const Object& path, const std::string& association)
    : space_(space), path_(path), association_(space.schema.find(association)) {
    Request request;
    request.operation = Request::Operation::reference_names;
    request.path = path;
    request.path.name_space = space.name;
    request.assoc_class = association;
    references_ = ask(request).objects;
}

EndNames Roles::of(const Object& neighbour) const {
    const EndNames names = told(neighbour);
    return names.other.empty() ? declared(neighbour) : names;
}

EndNames Roles::told(const Object& neighbour) const {
    const std::string wanted = identity(neighbour);
    for (const Object& reference : references_) {
        EndNames names;
        for (const Property& key : reference.keys)
            if (const auto* end = std::get_if<Value::Reference>(&key.value.data); end != nullptr && *end != nullptr)
                (identity(**end) == wanted ? names.other : names.own) = key.name;
        if (!names.other.empty())
            return names;
    }
    return {};
}

EndNames Roles::declared(const Object& neighbour) const {
    if (association_ == nullptr)
        return {};
    const auto fits = [this](const mof::PropertyDeclaration& end, const Object& object) {
        return end.type == "reference" && server::is_kind_of(space_.schema, object.class_name, end.reference_class);
    };
    EndNames names;
    for (const mof::PropertyDeclaration& own : association_->properties)
        for (const mof::PropertyDeclaration& other : association_->properties) {
            if (&own == &other || !fits(own, path_) || !fits(other, neighbour))
                continue;
            if (!names.own.empty())
                return {}; // it could be either way round
            names = {own.name, other.name};
        }
    return names;
}

} // namespace cmpihost::pages
