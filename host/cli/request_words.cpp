#include "host/cli/request_words.h"

#include "host/cim/names.h"
#include "host/cim/path_text.h"
#include "host/cli/options.h"
#include "host/cli/schema_files.h"

#include <algorithm>
#include <sstream>

namespace cmpihost {

namespace {

bool has_reference(const Object& object) {
    return std::any_of(object.keys.begin(), object.keys.end(),
                       [](const Property& key) { return std::holds_alternative<Value::Reference>(key.value.data); });
}

/// Gives the namespace of the request to references that have none.
Object in_name_space(Object object, const std::string& name_space) {
    if (object.name_space.empty())
        object.name_space = name_space;
    for (Property& key : object.keys)
        if (const auto* reference = std::get_if<Value::Reference>(&key.value.data))
            key.value.data = std::make_shared<const Object>(in_name_space(**reference, object.name_space));
    return object;
}

std::string query_for(const Object& path, const std::optional<std::vector<std::string>>& properties) {
    std::string columns;
    for (const std::string& property : properties.value_or(std::vector<std::string>()))
        columns += (columns.empty() ? "" : ", ") + property;
    return "SELECT " + (columns.empty() ? "*" : columns) + " FROM " + path.class_name;
}

/// The class behind FROM if the text is a query; empty if it is an object.
std::string queried_class(const std::string& text) {
    std::istringstream words(text);
    std::string word;
    if (!(words >> word) || !same_name(word, "SELECT"))
        return {};
    while (words >> word)
        if (same_name(word, "FROM"))
            return words >> word ? word : throw UsageError("'" + text + "': expected a class behind FROM");
    throw UsageError("'" + text + "': expected FROM and a class");
}

/// A value as a key of an object path has it; what is none there is a text.
Property named_value(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == 0 || equals == std::string::npos)
        throw UsageError("'" + text + "': expected NAME=VALUE");
    const std::string name = text.substr(0, equals);
    try {
        const Object object = parse_path("C." + text);
        if (object.keys.size() == 1)
            return object.keys.front();
    } catch (const PathError&) { // a text without quotes
    }
    return {name, "string", {text.substr(equals + 1)}};
}

/// What follows OBJECT, of the verbs that bring values.
void read_values(const std::vector<std::string>& words, Request& request) {
    auto next = words.begin();
    if (request.operation == Request::Operation::invoke_method) {
        if (next == words.end())
            throw UsageError("cm needs a METHOD after OBJECT");
        request.method = *next++;
    }
    if (request.operation == Request::Operation::set_property && words.size() != 1)
        throw UsageError("sp needs one NAME=VALUE after OBJECT");
    auto& values = request.operation == Request::Operation::invoke_method ? request.arguments : request.values;
    std::transform(next, words.end(), std::back_inserter(values), named_value);
    if (request.operation != Request::Operation::modify_instance || values.empty())
        return;
    request.properties.emplace(); // what is not named stays
    for (const Property& value : values)
        request.properties->push_back(value.name);
}

/// Names one a word, or several with commas between.
std::vector<std::string> names_in(const std::vector<std::string>& words) {
    std::vector<std::string> names;
    for (const std::string& word : words) {
        std::istringstream parts(word);
        for (std::string name; std::getline(parts, name, ',');)
            if (!name.empty())
                names.push_back(name);
    }
    return names;
}

Property asked_property(const std::vector<std::string>& words) {
    if (words.size() != 1)
        throw UsageError("gp needs one PROPERTY after OBJECT");
    return {words.front(), "null", {}};
}

bool brings_values(Request::Operation operation) {
    using enum Request::Operation;
    return operation == create_instance || operation == modify_instance || operation == invoke_method ||
           operation == set_property;
}

} // namespace

Object read_object(const std::string& word, const std::string& name_space, const Options& options) {
    Object object = parse_path(word);
    const std::optional<mof::Schema> schema = has_reference(object) ? schema_if_there(options) : std::nullopt;
    if (schema)
        object = parse_path(word, [&schema](const std::string& class_name, const std::string& key) {
            const mof::ClassDeclaration* declaration = schema->find(class_name);
            const mof::PropertyDeclaration* declared = declaration ? declaration->property(key) : nullptr;
            return declared == nullptr || declared->type == "reference";
        });
    return in_name_space(std::move(object), name_space);
}

void read_request(const std::string& object, const std::vector<std::string>& words, const Options& options,
                  Request& request) {
    const bool is_query = request.operation == Request::Operation::exec_query && !queried_class(object).empty();
    request.path = read_object(is_query ? queried_class(object) : object, options.name_space, options);
    if (is_query && !words.empty())
        throw UsageError("a PROPERTY does not go with a whole query");
    if (brings_values(request.operation))
        read_values(words, request);
    else if (request.operation == Request::Operation::get_property)
        request.values = {asked_property(words)};
    else if (!words.empty())
        request.properties = names_in(words);
    request.query = is_query ? object : query_for(request.path, request.properties);
}

} // namespace cmpihost
