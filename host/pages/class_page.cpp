// The objects of a class as a table.
#include "host/cim/value_text.h"
#include "host/pages/html.h"
#include "host/pages/objects.h"
#include "host/pages/site_parts.h"
#include "host/pages/timed_ask.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

namespace cmpihost::pages {

namespace {

using mof::ClassDeclaration;
using server::Namespace;

constexpr std::size_t rows_on_page = 200;
constexpr std::size_t most_to_enumerate = 1000; // of more, names are enumerated, and what is shown is got one by one
constexpr std::size_t most_columns = 10;        // that are shown without being asked for

/// What the address asks for.
struct Wish {
    std::string sort;
    bool descending = false;
    std::string filter;
    bool all = false;
    std::size_t page = 1;

    std::string url(const std::string& base) const;
};

Wish wish_of(const Target& target) {
    Wish wish{target.value("sort"), target.value("order") == "down", target.value("filter"),
              target.value("columns") == "all"};
    const std::string text = target.value("page");
    std::from_chars(text.data(), text.data() + text.size(), wish.page);
    wish.page = std::clamp<std::size_t>(wish.page, 1, 1'000'000);
    return wish;
}

std::string Wish::url(const std::string& base) const {
    std::string query;
    const auto add = [&query](std::string_view name, const std::string& value) {
        query.append(query.empty() ? "?" : "&").append(name).append("=").append(encoded(value));
    };
    if (!sort.empty())
        add("sort", sort);
    if (descending)
        add("order", "down");
    if (!filter.empty())
        add("filter", filter);
    if (all)
        add("columns", "all");
    if (page > 1)
        add("page", std::to_string(page));
    return base + query;
}

/// Values as they are sorted: numbers before texts, absent ones last.
struct SortKey {
    int kind = 2;
    double number = 0;
    std::string text{};

    bool operator<(const SortKey& other) const {
        return std::tie(kind, number, text) < std::tie(other.kind, other.number, other.text);
    }
};

const Property* value_of(const Object& object, const std::string& name) {
    const Property* property = object.property(name);
    return property != nullptr ? property : object.key(name);
}

SortKey sort_key(const Object& object, const std::string& name) {
    const Property* property = value_of(object, name);
    if (property == nullptr)
        return {};
    if (const auto* natural = std::get_if<std::uint64_t>(&property->value.data))
        return {0, static_cast<double>(*natural)};
    if (const auto* integer = std::get_if<std::int64_t>(&property->value.data))
        return {0, static_cast<double>(*integer)};
    if (const auto* real = std::get_if<double>(&property->value.data))
        return std::isnan(*real) ? SortKey{} : SortKey{0, *real}; // what is no number has no place among them
    return {1, 0, value_text(nullptr, *property)};
}

void sort(std::vector<Object>& objects, const Wish& wish) {
    std::vector<std::pair<SortKey, std::size_t>> order;
    for (std::size_t index = 0; index < objects.size(); ++index)
        order.emplace_back(sort_key(objects[index], wish.sort), index);
    std::stable_sort(order.begin(), order.end(), [&wish](const auto& a, const auto& b) {
        return wish.descending ? b.first < a.first : a.first < b.first;
    });
    std::vector<Object> sorted;
    sorted.reserve(objects.size());
    for (const auto& [key, index] : order)
        sorted.push_back(std::move(objects[index]));
    objects = std::move(sorted);
}

std::string lower_case(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), lower);
    return text;
}

/// Whether a value holds the text, as the table shows it.
bool contains(const Object& object, const ClassDeclaration& declaration, const std::string& wanted) {
    for (const auto* list : {&object.keys, &object.properties})
        for (const Property& property : *list)
            if (lower_case(value_text(declaration.property(property.name), property)).find(wanted) != std::string::npos)
                return true;
    return false;
}

/// What of a class is shown.
struct Shown {
    std::vector<Object> objects; ///< of this page
    std::size_t found = 0;       ///< that the filter lets through
    std::size_t total = 0;
    std::size_t not_got = 0; ///< of these objects
    bool names_only = false; ///< were enumerated, since there are so many; those of this page were got one by one
    bool slow = false;       ///< sorted and filtered by keys alone, since the class takes long to enumerate, too
    bool late = false;       ///< there was no time to get all of them
    server::Status status{};
};

void cut_page(std::vector<Object>& objects, std::size_t number) {
    const std::size_t begin = std::min((number - 1) * rows_on_page, objects.size());
    const std::size_t end = std::min(begin + rows_on_page, objects.size());
    objects = std::vector<Object>(std::make_move_iterator(objects.begin() + static_cast<std::ptrdiff_t>(begin)),
                                  std::make_move_iterator(objects.begin() + static_cast<std::ptrdiff_t>(end)));
}

/// Gets each object in full, but for those that cannot be got, or not in time.
void complete(const Namespace& space, Shown& shown, std::chrono::milliseconds time) {
    const auto until = std::chrono::steady_clock::now() + time;
    for (Object& object : shown.objects) {
        shown.late = std::chrono::steady_clock::now() >= until;
        if (shown.late)
            return;
        server::Status ignored;
        if (auto whole = get(space, path_of(space, object), ignored)) {
            whole->keys = std::move(object.keys); // by which it was got
            object = std::move(*whole);
        } else {
            ++shown.not_got;
        }
    }
}

/// Whether enumerating a class takes long, as far as is known: a provider cannot be stopped once it is asked.
bool is_slow(const Visit& visit, const Namespace& space, const ClassDeclaration& declaration) {
    const auto below = server::served_below(space, &declaration, &server::ServedClass::instances);
    return visit.memory.is_slow(space, declaration) ||
           std::any_of(below.begin(), below.end(), [&](const server::ServedClass* each) {
               return visit.views.of(*each->declaration, space.schema).slow ||
                      visit.memory.is_slow(space, *each->declaration);
           });
}

Objects enumerate_timed(const Visit& visit, const Namespace& space, const ClassDeclaration& declaration) {
    const auto began = std::chrono::steady_clock::now();
    Objects all = enumerate(space, declaration, false);
    if (std::chrono::steady_clock::now() - began > visit.settings.enumerating)
        visit.memory.note_slow(space, declaration);
    return all;
}

Shown shown_of(const Visit& visit, const Namespace& space, const ClassDeclaration& declaration, const Wish& wish) {
    Objects all = enumerate(space, declaration, true);
    Shown shown;
    const bool many = all.objects.size() > most_to_enumerate;
    shown.slow = many && is_slow(visit, space, declaration);
    shown.names_only = shown.slow || (many && wish.sort.empty() && wish.filter.empty());
    if (!shown.names_only)
        all = enumerate_timed(visit, space, declaration);
    shown.total = all.objects.size();
    shown.status = std::move(all.status);
    if (!wish.filter.empty())
        std::erase_if(all.objects, [&declaration, wanted = lower_case(wish.filter)](const Object& object) {
            return !contains(object, declaration, wanted);
        });
    shown.found = all.objects.size();
    if (!wish.sort.empty())
        sort(all.objects, wish);
    cut_page(all.objects, wish.page);
    shown.objects = std::move(all.objects);
    if (shown.names_only)
        complete(space, shown, within_request(visit.settings, visit.settings.walking));
    return shown;
}

/// A property's values in all objects that are shown.
struct Column {
    std::string name;
    const mof::PropertyDeclaration* declared = nullptr;
    bool sorts = true; ///< the table can be sorted by it
    bool differs = false;
    std::string same{}; ///< the value, if it is the same in all
};

/// Keys first, declared or not, then other properties in the order of the first object that has them.
std::vector<Column> all_columns(const Shown& shown, const ClassDeclaration& declaration) {
    std::vector<Column> columns;
    NameMap<bool> known;
    const auto add = [&](const std::string& name) {
        if (known.emplace(name, true).second)
            columns.push_back({name, declaration.property(name)});
    };
    for (const mof::PropertyDeclaration& declared : declaration.properties)
        if (declared.key)
            add(declared.name);
    for (const auto part : {&Object::keys, &Object::properties})
        for (const Object& object : shown.objects)
            for (const Property& property : object.*part)
                add(property.name);
    for (Column& column : columns) {
        std::set<std::string> values;
        for (const Object& object : shown.objects) {
            const Property* property = value_of(object, column.name);
            values.insert(property == nullptr ? std::string() : value_text(column.declared, *property));
        }
        column.sorts = !shown.slow || std::any_of(shown.objects.begin(), shown.objects.end(),
                                                  [&](const Object& each) { return each.key(column.name) != nullptr; });
        column.differs = values.size() > 1 || shown.objects.size() == 1; // of one, everything is worth a look
        column.same = values.empty() ? std::string() : *values.begin();
    }
    return columns;
}

/// The columns that the view names, keys that differ, then others that differ.
std::vector<Column> chosen_columns(const std::vector<Column>& all, const views::ClassView& view, bool every) {
    if (every)
        return all;
    std::vector<Column> chosen;
    const auto add = [&chosen](const Column& column) {
        const bool known = std::any_of(chosen.begin(), chosen.end(),
                                       [&column](const Column& each) { return each.name == column.name; });
        if (!known)
            chosen.push_back(column);
    };
    for (const std::string& name : view.columns)
        for (const Column& column : all)
            if (same_name(column.name, name))
                add(column);
    for (const Column& column : all)
        if (column.differs && chosen.size() < most_columns)
            add(column);
    if (chosen.empty()) // each row has a link
        chosen.push_back(all.empty() ? Column{"Object", nullptr, false} : all.front());
    return chosen;
}

std::string head_cell(const Column& column, const Wish& wish, const std::string& base) {
    Wish next = wish;
    next.page = 1;
    next.sort = column.name;
    const bool sorted = column.sorts && same_name(wish.sort, column.name);
    next.descending = sorted && !wish.descending;
    const std::string unit = unit_of(column.declared);
    return "<th scope=\"col\"" +
           (sorted ? std::string(" aria-sort=\"") + (wish.descending ? "descending" : "ascending") + "\"" : "") + ">" +
           (column.sorts ? link(next.url(base), column.name) : escaped(column.name)) +
           (unit.empty() ? std::string() : " <span class=\"unit\">" + escaped(unit) + "</span>") + "</th>";
}

std::string object_row(const Object& object, const std::vector<Column>& columns, const std::string& url) {
    std::string html = "<tr>";
    for (const Column& column : columns) {
        const Property* property = value_of(object, column.name);
        const std::string text = property == nullptr ? std::string() : value_text(column.declared, *property);
        if (&column == &columns.front())
            html += "<th scope=\"row\">" + link(url, text.empty() ? "(nothing)" : text) + "</th>";
        else if (property != nullptr && is_number(*property))
            html += "<td class=\"number\">" + escaped(text) + "</td>";
        else
            html += "<td>" + escaped(text) + "</td>";
    }
    return html + "</tr>\n";
}

std::string table(const Visit& visit, const Namespace& space, const Shown& shown, const std::vector<Column>& columns,
                  const Wish& wish, const std::string& base) {
    std::string html = "<table>\n<thead><tr>";
    for (const Column& column : columns)
        html += head_cell(column, wish, base);
    html += "</tr></thead>\n<tbody>\n";
    for (const Object& object : shown.objects)
        html += object_row(object, columns, object_link(space, visit.main, object));
    return scrolled("Objects", html + "</tbody>\n</table>\n");
}

std::string filter_form(const Wish& wish, const std::string& base) {
    const auto hidden = [](const std::string& name, const std::string& value) {
        return value.empty() ? std::string()
                             : "<input type=\"hidden\" name=\"" + name + "\" value=\"" + escaped(value) + "\">";
    };
    return "<form action=\"" + escaped(base) +
           "\" role=\"search\"><label for=\"filter\">Objects that contain</label> " +
           "<input id=\"filter\" name=\"filter\" value=\"" + escaped(wish.filter) + "\">" + hidden("sort", wish.sort) +
           hidden("order", wish.descending ? "down" : "") + hidden("columns", wish.all ? "all" : "") +
           " <button>Show</button></form>\n";
}

std::string pager(const Shown& shown, const Wish& wish, const std::string& base) {
    const std::size_t begin = (wish.page - 1) * rows_on_page;
    std::string html = "<p>";
    if (shown.objects.empty())
        html += "No object";
    else
        html += grouped(begin + 1) + " to " + grouped(begin + shown.objects.size());
    html += " of " + counted(shown.found, "object");
    if (shown.found != shown.total)
        html +=
            " that " + std::string(shown.found == 1 ? "contains" : "contain") + " the text, of " + grouped(shown.total);
    html += ".";
    if (shown.slow)
        html += " There are so many, and the class takes so long to enumerate, that they are sorted and searched by "
                "their keys alone.";
    html += "</p>\n";
    const auto step = [&](std::size_t page, const char* text) {
        Wish other = wish;
        other.page = page;
        return link(other.url(base), text);
    };
    if (shown.found > rows_on_page)
        html += "<nav aria-label=\"Pages of the table\">" + (wish.page > 1 ? step(wish.page - 1, "Before") : "") + " " +
                (begin + rows_on_page < shown.found ? step(wish.page + 1, "After") : "") + "</nav>\n";
    return html;
}

/// What is the same in all objects, and the way to the rest of the columns.
std::string rest(const std::vector<Column>& all, const std::vector<Column>& chosen, const Shown& shown,
                 const Wish& wish, const std::string& base) {
    Wish other = wish;
    other.all = !wish.all;
    std::string html = "<p>" + link(other.url(base), wish.all ? "Show what differs" : "Show all properties") + "</p>\n";
    std::string same;
    for (const Column& column : all)
        if (!column.differs && chosen.size() < all.size() && shown.objects.size() > 1)
            same += "<dt>" + escaped(column.name) + "</dt><dd>" + escaped(column.same) + "</dd>\n";
    if (!same.empty())
        html += "<details><summary>The same in all of these</summary>\n<dl>\n" + same + "</dl>\n</details>\n";
    return html;
}

std::string notes_of(const Shown& shown, const views::ClassView& view) {
    std::string html;
    if (!view.note.empty())
        html += "<p>" + escaped(view.note) + "</p>\n";
    if (shown.status.code != server::CimCode::ok)
        html += "<p class=\"fault\">The provider answered with error " +
                std::to_string(static_cast<unsigned>(shown.status.code)) + ": " + escaped(shown.status.description) +
                "</p>\n";
    if (shown.not_got > 0)
        html += "<p>" + counted(shown.not_got, "object") +
                " of this page cannot be got by the names that the provider gives, which are all that is shown.</p>\n";
    if (shown.late)
        html += "<p>Some are shown by their keys alone, since getting them takes long.</p>\n";
    return html;
}

} // namespace

Page class_page(const Visit& visit) {
    const std::size_t colon = visit.rest.rfind(':');
    const bool named = colon != std::string::npos;
    const Namespace* space = namespace_of(visit, named ? visit.rest.substr(0, colon) : std::string());
    const std::string name = named ? visit.rest.substr(colon + 1) : visit.rest;
    const ClassDeclaration* declaration = space == nullptr ? nullptr : space->schema.find(name);
    if (declaration == nullptr)
        return error_page(404, "No such class", "There is no class " + visit.rest + ".");
    const Wish wish = wish_of(visit.target);
    const Shown shown = shown_of(visit, *space, *declaration, wish);
    const std::string base = class_link(*space, visit.main, declaration->name);
    const views::ClassView view = visit.views.of(*declaration, space->schema);
    const auto all = all_columns(shown, *declaration);
    const auto chosen = chosen_columns(all, view, wish.all);
    std::string body = "<p>" + escaped(qualifier_text(declaration->qualifiers, "Description")) + "</p>\n" +
                       notes_of(shown, view) + filter_form(wish, base) + pager(shown, wish, base);
    if (!shown.objects.empty())
        body += table(visit, *space, shown, chosen, wish, base) + rest(all, chosen, shown, wish, base);
    return {200, "text/html; charset=utf-8", page(declaration->name, link("/", "Classes"), body)};
}

} // namespace cmpihost::pages
