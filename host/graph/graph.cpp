#include "host/graph/graph.h"

#include "host/cim/path_text.h"
#include "host/cim/value_text.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace cmpihost {

namespace {

using enum Request::Operation;

constexpr std::size_t most_to_ask = 1000; // objects; ties of more are looked up
constexpr const char* no_association = "CMPIHOST_NoSuchAssociation";

std::string lower_case(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), lower);
    return text;
}

/// Of a key's value; numbers and texts differ.
std::string identity(const Property& key) {
    if (const auto* reference = std::get_if<Value::Reference>(&key.value.data))
        return identity(**reference);
    const auto* text = std::get_if<std::string>(&key.value.data);
    return text ? '"' + *text : text_value(key);
}

/// Whether an instance has the class of a pattern and every key of it.
bool matches(const Object& instance, const Object& pattern) {
    Object same = instance;
    std::erase_if(same.keys, [&pattern](const Property& key) { return pattern.key(key.name) == nullptr; });
    return identity(same) == identity(pattern);
}

} // namespace

std::string identity(const Object& object) {
    std::vector<std::pair<std::string, std::string>> keys;
    keys.reserve(object.keys.size());
    for (const Property& key : object.keys)
        keys.emplace_back(lower_case(key.name), identity(key));
    std::sort(keys.begin(), keys.end());
    std::string text = lower_case(object.class_name);
    for (const auto& [name, value] : keys)
        text.append(1, '\0').append(name).append(1, '=').append(value);
    return text;
}

GraphWalk::GraphWalk(const mof::Schema& schema, Ask ask, std::string name_space, std::size_t limit)
    : schema_(schema), ask_(std::move(ask)), name_space_(std::move(name_space)), limit_(limit) {}

void GraphWalk::note_status(const Request& request, const Answer& answer) {
    notes_.null_results += answer.null_results;
    notes_.invalid_results += answer.invalid_results;
    if (answer.rc == CMPI_RC_OK || is_not_served(answer.rc))
        return;
    if (notes_.errors++ == 0)
        notes_.first_error = path_text(request.path) + (request.assoc_class ? " by " + *request.assoc_class : "") +
                             ": CIM error " + std::to_string(answer.rc) + " (" + std::string(rc_name(answer.rc)) + ")";
}

/// Asks for instance names (without an association), associator names or reference names.
std::vector<Object> GraphWalk::names(Request::Operation operation, const Object& path, const std::string& association) {
    Request request;
    request.operation = operation;
    request.path = path;
    if (request.path.name_space.empty())
        request.path.name_space = name_space_;
    if (!association.empty())
        request.assoc_class = association;
    Answer answer = ask_(request);
    if (association != no_association)
        note_status(request, answer);
    return std::move(answer.objects);
}

/// Where an object stands in the graph, after putting it there if it is new and there is room.
std::optional<std::size_t> GraphWalk::place_of(const Object& object) {
    const std::string id = identity(object);
    const auto known = places_.find(id);
    if (known != places_.end())
        return known->second;
    if (graph_.objects.size() == limit_) {
        notes_.limited = true;
        return std::nullopt;
    }
    places_.emplace(id, graph_.objects.size());
    graph_.objects.push_back(object);
    return graph_.objects.size() - 1;
}

void GraphWalk::start_everywhere() {
    for (const mof::ClassDeclaration& declaration : schema_.classes()) {
        if (declaration.association || declaration.abstract || notes_.limited)
            continue;
        Object path;
        path.class_name = declaration.name;
        for (const Object& instance : names(enumerate_instance_names, path, {}))
            place_of(instance);
    }
    leave_room();
}

/// Where there are more objects than can be shown, neighbours of the first ones tell more than the last ones.
void GraphWalk::leave_room() {
    if (!notes_.limited)
        return;
    graph_.objects.resize(std::max<std::size_t>(limit_ / 2, 1));
    std::erase_if(places_, [this](const auto& place) { return place.second >= graph_.objects.size(); });
}

void GraphWalk::start_at(const Object& object) {
    Object path = object;
    path.keys.clear();
    for (const Object& instance : names(enumerate_instance_names, path, {}))
        if (matches(instance, object))
            place_of(instance);
    leave_room();
    if (graph_.objects.empty() && !object.keys.empty())
        place_of(object);
}

bool GraphWalk::is_confirmed(std::size_t source, const std::string& association, const Object& target) {
    for (const Object& reference : names(reference_names, graph_.objects[source], association))
        for (const Property& key : reference.keys)
            if (const auto* end = std::get_if<Value::Reference>(&key.value.data);
                end != nullptr && identity(**end) == identity(target))
                return true;
    return false;
}

void GraphWalk::add_edge(std::size_t source, const std::string& association, const Object& target) {
    const auto end = place_of(target);
    if (!end)
        return;
    const auto [known, is_new] =
        edges_.emplace(std::tuple(association, std::min(source, *end), std::max(source, *end)), graph_.edges.size());
    if (is_new)
        graph_.edges.push_back({association, source, *end, false});
    else if (GraphEdge& edge = graph_.edges[known->second]; edge.from != source)
        edge.both = true;
}

void GraphWalk::visit(std::size_t source) {
    if (!notes_.enumerated && graph_.objects.size() > most_to_ask)
        read_ties();
    notes_.enumerated ? look_up(source) : ask(source);
}

std::size_t GraphWalk::end_of(const Object& object) {
    const auto [known, is_new] = end_places_.emplace(identity(object), ends_.size());
    if (is_new)
        ends_.push_back({object, {}});
    return known->second;
}

void GraphWalk::read_ties() {
    notes_.enumerated = true;
    for (const mof::ClassDeclaration& declaration : schema_.classes()) {
        if (!declaration.association || declaration.abstract)
            continue;
        Object path;
        path.class_name = declaration.name;
        for (const Object& tie : names(enumerate_instance_names, path, {})) {
            std::vector<std::size_t> ends;
            for (const Property& key : tie.keys)
                if (const auto* end = std::get_if<Value::Reference>(&key.value.data))
                    ends.push_back(end_of(**end));
            if (ends.size() != 2)
                continue;
            ends_[ends[0]].ties.emplace_back(&declaration.name, ends[1]);
            ends_[ends[1]].ties.emplace_back(&declaration.name, ends[0]);
        }
    }
}

void GraphWalk::look_up(std::size_t source) {
    const auto found = end_places_.find(identity(graph_.objects[source]));
    if (found == end_places_.end())
        return;
    for (const auto& [association, other] : ends_[found->second].ties)
        add_edge(source, *association, ends_[other].object);
}

void GraphWalk::ask(std::size_t source) {
    const Object path = graph_.objects[source]; // a copy: objects may move when new ones are found
    std::set<std::string> always;
    for (const Object& answer : names(associator_names, path, no_association))
        always.insert(identity(answer));
    for (const mof::ClassDeclaration& declaration : schema_.classes()) {
        if (!declaration.association || declaration.abstract)
            continue;
        for (const Object& target : names(associator_names, path, declaration.name)) {
            if (always.contains(identity(target)) && !is_confirmed(source, declaration.name, target))
                ++notes_.left_out;
            else
                add_edge(source, declaration.name, target);
        }
    }
}

/// A provider that answers to the superclass of an association as well gives the same tie under both names; the
/// subclass tells more.
void GraphWalk::drop_inherited() {
    std::map<std::pair<std::size_t, std::size_t>, std::set<std::string>> ties;
    for (const GraphEdge& edge : graph_.edges)
        ties[std::minmax(edge.from, edge.to)].insert(edge.association);
    std::erase_if(graph_.edges, [&](const GraphEdge& edge) {
        const auto& names = ties[std::minmax(edge.from, edge.to)];
        return std::any_of(names.begin(), names.end(), [&](const std::string& name) {
            return name != edge.association && schema_.is_a(name, edge.association);
        });
    });
}

void GraphWalk::run_once() {
    const std::size_t starts = graph_.objects.size();
    for (std::size_t i = 0; i < starts; ++i)
        visit(i);
    drop_inherited();
}

void GraphWalk::run() {
    for (std::size_t i = 0; i < graph_.objects.size(); ++i)
        visit(i);
    drop_inherited();
}

} // namespace cmpihost
