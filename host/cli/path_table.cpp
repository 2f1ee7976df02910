#include "host/cli/path_table.h"

#include "host/cim/names.h"
#include "host/cim/path_text.h"
#include "host/cli/output.h"

#include <algorithm>

namespace cmpihost {

namespace {

constexpr std::size_t paths_to_wait_for = 1000;

/// A key in a table: texts without quotes, an absent key as "-".
std::string cell_of(const Object& object, const std::string& name) {
    const Property* key = object.key(name);
    if (key == nullptr)
        return "-";
    const auto* text = std::get_if<std::string>(&key->value.data);
    return text == nullptr || text->empty() ? text_value(*key) : printable(*text);
}

bool contains_name(const std::vector<std::string>& names, const std::string& wanted) {
    return std::any_of(names.begin(), names.end(),
                       [&wanted](const std::string& name) { return same_name(name, wanted); });
}

/// All key names, in the order in which they first come.
std::vector<std::string> key_names(const std::vector<Object>& objects) {
    std::vector<std::string> names;
    for (const Object& object : objects)
        for (const Property& key : object.keys)
            if (!contains_name(names, key.name))
                names.push_back(key.name);
    return names;
}

bool has_reference_key(const Object& object) {
    return std::any_of(object.keys.begin(), object.keys.end(),
                       [](const Property& key) { return std::holds_alternative<Value::Reference>(key.value.data); });
}

std::string line_of(const Object& path) {
    return printable(path_text(path)) + "\n";
}

} // namespace

std::string PathTable::add(const Object& path) {
    if (lines_)
        return line_of(path);
    if (widths_)
        return row_or_line(path);
    waiting_.push_back(path);
    if (has_reference_key(path))
        return begin_lines();
    return waiting_.size() < paths_to_wait_for ? std::string() : begin_table();
}

std::string PathTable::rest() {
    return waiting_.empty() ? std::string() : begin_table();
}

std::string PathTable::begin_lines() {
    lines_ = true;
    std::string text;
    for (const Object& path : waiting_)
        text += line_of(path);
    waiting_.clear();
    return text;
}

/// The class is a column of its own where it is not simply the requested one.
std::string PathTable::begin_table() {
    names_ = key_names(waiting_);
    class_column_ = names_.empty() || std::any_of(waiting_.begin(), waiting_.end(), [this](const Object& path) {
                        return !same_name(path.class_name, requested_class_);
                    });
    std::vector<Row> rows{names_};
    if (class_column_)
        rows.front().insert(rows.front().begin(), "CLASS");
    for (const Object& path : waiting_)
        rows.push_back(row_of(path));
    waiting_.clear();
    widths_ = widths_of(rows);
    return table_text(rows, colour_);
}

Row PathTable::row_of(const Object& path) const {
    Row row;
    if (class_column_)
        row.push_back(path.class_name);
    for (const std::string& name : names_)
        row.push_back(cell_of(path, name));
    return row;
}

std::string PathTable::row_or_line(const Object& path) const {
    const bool fits = !has_reference_key(path) && (class_column_ || same_name(path.class_name, requested_class_)) &&
                      std::all_of(path.keys.begin(), path.keys.end(),
                                  [this](const Property& key) { return contains_name(names_, key.name); });
    return fits ? aligned_row(row_of(path), *widths_) + "\n" : line_of(path);
}

} // namespace cmpihost
