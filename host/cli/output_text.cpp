#include "host/cli/output.h"

#include "host/cim/names.h"
#include "host/cim/path_text.h"
#include "host/cli/table.h"

#include <algorithm>

namespace cmpihost {

namespace {

std::string counted(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " object\n" : " objects\n");
}

// ------------------------------------------------------------------------------------------------------- paths

/// A key in a table: texts without quotes, an absent key as "-".
std::string cell_of(const Object& object, const std::string& name) {
    const Property* key = object.key(name);
    if (key == nullptr)
        return "-";
    const auto* text = std::get_if<std::string>(&key->value.data);
    return text == nullptr || text->empty() ? text_value(*key) : printable(*text);
}

/// All key names, in the order in which they first come.
std::vector<std::string> key_names(const std::vector<Object>& objects) {
    std::vector<std::string> names;
    for (const Object& object : objects)
        for (const Property& key : object.keys)
            if (std::none_of(names.begin(), names.end(),
                             [&key](const std::string& name) { return same_name(name, key.name); }))
                names.push_back(key.name);
    return names;
}

bool has_reference_key(const Object& object) {
    return std::any_of(object.keys.begin(), object.keys.end(),
                       [](const Property& key) { return std::holds_alternative<Value::Reference>(key.value.data); });
}

/// One row per path. The class is a column of its own where it is not simply the requested one.
std::string table_of(const std::vector<Object>& objects, const std::string& requested_class, bool colour) {
    const std::vector<std::string> names = key_names(objects);
    const bool classes = std::any_of(objects.begin(), objects.end(), [&requested_class](const Object& object) {
        return !same_name(object.class_name, requested_class);
    });
    std::vector<Row> rows;
    Row header = names;
    if (classes || names.empty())
        header.insert(header.begin(), "CLASS");
    rows.push_back(header);
    for (const Object& object : objects) {
        Row row;
        if (classes || names.empty())
            row.push_back(object.class_name);
        for (const std::string& name : names)
            row.push_back(cell_of(object, name));
        rows.push_back(std::move(row));
    }
    return table_text(rows, colour);
}

std::string text_of_paths(const std::vector<Object>& objects, const std::string& requested_class, bool colour) {
    if (objects.empty() || !std::any_of(objects.begin(), objects.end(), has_reference_key))
        return objects.empty() ? std::string() : table_of(objects, requested_class, colour) + "\n";
    std::string text;
    for (const Object& object : objects)
        text += printable(path_text(object)) + "\n";
    return text + "\n";
}

// --------------------------------------------------------------------------------------------------- instances

std::string text_of_instance(const Object& object, bool colour) {
    std::vector<Row> rows;
    for (const Property& property : object.properties)
        rows.push_back({"  " + property.name, property.type, text_value(property)});
    std::string text = styled(printable(path_text(object)), cyan, colour) + "\n";
    for (const std::string& line : aligned(rows))
        text += line + "\n";
    return text + "\n";
}

// ----------------------------------------------------------------------------------------------------- methods

std::string text_of_method(const Answer& answer) {
    std::vector<Row> rows;
    if (answer.returned)
        rows.push_back({"ReturnValue", answer.returned->type, text_value(*answer.returned)});
    for (const Property& argument : answer.arguments)
        rows.push_back({argument.name, argument.type, text_value(argument)});
    std::string text;
    for (const std::string& line : aligned(rows))
        text += line + "\n";
    return text;
}

} // namespace

bool gives_paths(Request::Operation operation) {
    return operation == Request::Operation::enumerate_instance_names ||
           operation == Request::Operation::associator_names || operation == Request::Operation::reference_names ||
           operation == Request::Operation::create_instance;
}

std::string text_of(const Answer& answer, const Request& request, bool colour) {
    if (request.operation == Request::Operation::invoke_method)
        return text_of_method(answer);
    std::string text;
    if (gives_paths(request.operation))
        text = text_of_paths(answer.objects, request.path.class_name, colour);
    else
        for (const Object& object : answer.objects)
            text += text_of_instance(object, colour);
    return text + counted(answer.objects.size());
}

} // namespace cmpihost
