#include "host/pages/objects.h"

#include "host/cim/path_text.h"
#include "host/cim/value_text.h"
#include "host/mof/value_texts.h"
#include "host/pages/target.h"
#include "host/server/asking.h"
#include "host/server/whole_answer.h"

#include <algorithm>
#include <unordered_set>

namespace cmpihost::pages {

namespace {

using server::Namespace;
using server::ServedClass;

/// The answer with its objects, but those of the other kind than was asked for.
Answer answer_of(const server::Ask& ask, const Request& request) {
    return server::whole_answer(
        ask, request, [paths = gives_paths(request.operation)](bool is_instance) { return is_instance != paths; });
}

/// What several say, of which one status is told.
class Verdict {
  public:
    void add(const server::Status& status) {
        if (!status_ || weight(status) > weight(*status_))
            status_ = status;
    }

    /// Nothing, if nobody was asked.
    const std::optional<server::Status>& status() const { return status_; }

  private:
    /// That somebody does not support a class, or does not know an object, tells nothing, where another one does.
    static int weight(const server::Status& status) {
        if (server::is_unsupported(status))
            return 0;
        if (status.code == server::CimCode::not_found)
            return 1;
        return status.code == server::CimCode::ok ? 2 : 3;
    }

    std::optional<server::Status> status_{};
};

/// A reference without what its neighbourhood tells: the host, which may be spelt like a part of a path, and the
/// namespace.
Value::Reference without_place(const Object& object, const Namespace& space) {
    auto local = std::make_shared<Object>(object);
    local->host.reset();
    if (same_name(local->name_space, space.name))
        local->name_space.clear();
    return local;
}

} // namespace

Objects enumerate(const Namespace& space, const mof::ClassDeclaration& declaration, bool names) {
    Objects all;
    Verdict verdict;
    std::unordered_set<std::string> seen;
    const auto classes = server::served_below(space, &declaration, &ServedClass::instances);
    for (const ServedClass* each : classes) {
        Request request;
        request.operation =
            names ? Request::Operation::enumerate_instance_names : Request::Operation::enumerate_instances;
        request.path.class_name = each->declaration->name;
        request.path.name_space = space.name;
        Answer answer = answer_of(*each->ask, request);
        verdict.add(server::status_of(answer));
        for (Object& object : answer.objects)
            if (classes.size() == 1 || seen.insert(identity(path_of(space, object))).second)
                all.objects.push_back(std::move(object));
    }
    all.status = verdict.status().value_or(server::Status{});
    return all;
}

std::optional<Object> get(const Namespace& space, const Object& path, server::Status& status, const server::Ask** who) {
    const server::Status none{server::CimCode::not_found, "there is no such instance"};
    if (space.schema.find(path.class_name) == nullptr) { // a provider may name what no schema declares
        status = none;
        return std::nullopt;
    }
    const server::Inquiry inquiry = server::get_inquiry(path, nullptr, space);
    Request request = inquiry.request;
    Verdict verdict;
    for (const ServedClass* each : inquiry.classes) {
        request.path.class_name = each->declaration->name;
        Answer answer = answer_of(*each->ask, request);
        if (answer.rc == 0 && !answer.objects.empty()) {
            if (who != nullptr)
                *who = each->ask;
            return std::move(answer.objects.front());
        }
        if (each->declaration == inquiry.named)
            verdict.add(answer.rc == 0 ? none : server::status_of(answer));
    }
    status = verdict.status().value_or(none);
    return std::nullopt;
}

Answer ask(const Namespace& space, const Request& request) {
    const bool traversal = is_traversal(request.operation);
    const std::string& name = traversal && request.assoc_class ? *request.assoc_class : request.path.class_name;
    const bool declared = space.schema.find(name) != nullptr;
    Answer joined;
    Verdict verdict;
    std::vector<const server::Ask*> asked;
    for (const ServedClass& each : space.classes) {
        const bool serves = traversal ? each.associations : each.instances;
        if (!serves || (declared && !same_name(each.declaration->name, name)) ||
            std::find(asked.begin(), asked.end(), each.ask) != asked.end())
            continue;
        asked.push_back(each.ask);
        Answer answer = answer_of(*each.ask, request);
        std::move(answer.objects.begin(), answer.objects.end(), std::back_inserter(joined.objects));
        verdict.add(server::status_of(answer));
    }
    const server::Status status = verdict.status().value_or(server::Status{server::CimCode::not_supported});
    joined.rc = static_cast<int>(status.code);
    return joined;
}

Object path_of(const Namespace& space, const Object& instance) {
    Object path = instance;
    path.properties.clear();
    path.host.reset();
    path.name_space.clear();
    const mof::ClassDeclaration* declaration = space.schema.find(instance.class_name);
    if (!path.keys.empty() || declaration == nullptr)
        return path;
    for (const mof::PropertyDeclaration& declared : declaration->properties)
        if (const Property* key = declared.key ? instance.property(declared.name) : nullptr)
            path.keys.push_back(*key);
    return path;
}

std::string class_link(const Namespace& space, const Namespace& main, const std::string& class_name) {
    return "/class/" + encoded_path((&space == &main ? "" : space.name + ":") + class_name);
}

std::string object_link(const Namespace& space, const Namespace& main, const Object& path) {
    Object named = path_of(space, path);
    for (Property& key : named.keys)
        if (const auto* end = std::get_if<Value::Reference>(&key.value.data); end != nullptr && *end != nullptr)
            key.value.data = without_place(**end, space);
    if (&space != &main)
        named.name_space = space.name;
    return "/object/" + encoded_path(path_text(named));
}

bool is_number(const Property& property) {
    return property.value.data.index() >= 2 && property.value.data.index() <= 4;
}

std::string value_text(const mof::PropertyDeclaration* declared, const Property& property) {
    const auto* plain_text = std::get_if<std::string>(&property.value.data);
    std::string text = plain_text != nullptr ? *plain_text : text_value(property);
    const std::string mapped = declared == nullptr ? std::string() : mapped_text(*declared, property.value);
    return mapped.empty() ? text : text + " (" + mapped + ")";
}

bool is_refreshed(const mof::PropertyDeclaration* declared, const Property& property) {
    return property.type != "reference" && (declared == nullptr || declared->type != "reference");
}

std::string qualifier_text(std::span<const mof::Qualifier> qualifiers, std::string_view name) {
    const mof::Qualifier* qualifier = mof::find_qualifier(qualifiers, name);
    const auto* text = qualifier == nullptr ? nullptr : std::get_if<std::string>(&qualifier->value.data);
    return text == nullptr ? std::string() : *text;
}

std::string unit_of(const mof::PropertyDeclaration* declared) {
    const std::string unit = declared == nullptr ? std::string() : qualifier_text(declared->qualifiers, "PUnit");
    return unit == "count" ? std::string() : unit;
}

} // namespace cmpihost::pages
