#include "host/views/views.h"

#include <toml++/toml.h>

#include <algorithm>
#include <set>
#include <stdexcept>

namespace cmpihost::views {

namespace {

/// Reads a file's tables, and says where one is wrong.
class Reader {
  public:
    Reader(const std::string& file, const mof::Schema& schema) : file_(file), schema_(schema) {}

    Views read(const toml::table& document) const {
        Views views;
        for (const auto& [key, value] : document) {
            if (key == "acronyms")
                views.acronyms = texts(value);
            else if (key == "class" && value.is_table())
                for (const auto& [name, view] : *value.as_table()) {
                    if (const mof::ClassDeclaration* declaration = schema_.find(name.str()))
                        views.classes.push_back(class_view(*declaration, view));
                }
            else
                fail(value, "expected acronyms or [class.NAME], not " + std::string(key.str()));
        }
        return views;
    }

    [[noreturn]] void fail(const toml::source_region& place, const std::string& what) const {
        throw std::runtime_error(file_ + ":" + std::to_string(place.begin.line) + ": " + what);
    }

  private:
    [[noreturn]] void fail(const toml::node& node, const std::string& what) const { fail(node.source(), what); }

    std::string text(const toml::node& node) const {
        if (const auto* value = node.as_string())
            return value->get();
        fail(node, "expected a text");
    }

    std::vector<std::string> texts(const toml::node& node) const {
        if (!node.is_array())
            fail(node, "expected a list of texts");
        std::vector<std::string> list;
        for (const toml::node& each : *node.as_array())
            list.push_back(text(each));
        return list;
    }

    std::string property(const toml::node& node, const mof::ClassDeclaration& declaration,
                         std::string_view name) const {
        const mof::PropertyDeclaration* declared = declaration.property(name);
        if (declared == nullptr)
            fail(node, declaration.name + " has no property " + std::string(name));
        return declared->name;
    }

    std::vector<std::string> properties(const toml::node& node, const mof::ClassDeclaration& declaration) const {
        std::vector<std::string> names = texts(node);
        for (std::string& name : names)
            name = property(node, declaration, name);
        return names;
    }

    void read_states(ClassView& view, const toml::node& node, const mof::ClassDeclaration& declaration) const {
        if (!node.is_table())
            fail(node, "expected a table of properties");
        for (const auto& [name, values] : *node.as_table()) {
            if (!values.is_table())
                fail(values, "expected a table of values and their names");
            auto& states = view.states[property(values, declaration, name.str())];
            std::set<std::string> named;
            for (const auto& [value, state] : *values.as_table()) {
                if (!named.insert(text(state)).second)
                    fail(state, "a state's name is there twice: " + text(state));
                states.emplace(value.str(), text(state));
            }
        }
    }

    ClassView class_view(const mof::ClassDeclaration& declaration, const toml::node& node) const {
        if (!node.is_table())
            fail(node, "expected a table");
        ClassView view{declaration.name};
        for (const auto& [key, value] : *node.as_table()) {
            if (key == "columns")
                view.columns = properties(value, declaration);
            else if (key == "curves")
                view.curves = properties(value, declaration);
            else if (key == "metrics" && value.is_boolean())
                view.metrics = value.as_boolean()->get();
            else if (key == "slow" && value.is_boolean())
                view.slow = value.as_boolean()->get();
            else if (key == "note")
                view.note = text(value);
            else if (key == "states")
                read_states(view, value, declaration);
            else
                fail(value, "expected columns, curves, metrics, slow, note or states, not " + std::string(key.str()));
        }
        return view;
    }

    const std::string& file_;
    const mof::Schema& schema_;
};

/// Adds what a view lacks and that of a superclass has.
void inherit(ClassView& view, const ClassView& super) {
    if (view.columns.empty())
        view.columns = super.columns;
    if (view.curves.empty())
        view.curves = super.curves;
    view.slow = view.slow || super.slow;
    if (view.note.empty())
        view.note = super.note;
    view.states.insert(super.states.begin(), super.states.end()); // not those of a property that has its own
}

} // namespace

const ClassView* Views::find(std::string_view class_name) const {
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [class_name](const ClassView& view) { return same_name(view.name, class_name); });
    return found == classes.end() ? nullptr : &*found;
}

ClassView Views::of(const mof::ClassDeclaration& declaration, const mof::Schema& schema) const {
    const ClassView* own = find(declaration.name);
    ClassView view = own == nullptr ? ClassView{declaration.name} : *own;
    for (const auto* super = schema.find(declaration.superclass); super != nullptr;
         super = schema.find(super->superclass))
        if (const ClassView* said = find(super->name))
            inherit(view, *said);
    return view;
}

Views read_views(const std::string& file, const mof::Schema& schema) {
    const Reader reader(file, schema);
    try {
        return reader.read(toml::parse_file(file));
    } catch (const toml::parse_error& error) {
        reader.fail(error.source(), std::string(error.description()));
    }
}

} // namespace cmpihost::views
