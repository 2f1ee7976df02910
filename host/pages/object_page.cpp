// An object: what it has, what it is tied to, and how to get the same elsewhere.
#include "host/cim/path_text.h"
#include "host/cim/value_text.h"
#include "host/cimxml/write_path.h"
#include "host/mof/typed_value.h"
#include "host/pages/html.h"
#include "host/pages/json.h"
#include "host/pages/objects.h"
#include "host/pages/other_side.h"
#include "host/pages/roles.h"
#include "host/pages/site_parts.h"
#include "host/pages/svg.h"
#include "host/pages/timed_ask.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace cmpihost::pages {

namespace {

using mof::ClassDeclaration;
using mof::PropertyDeclaration;
using server::Namespace;

/// What is known of the object of a page.
struct Subject {
    const Visit& visit;
    const Namespace& space;
    const ClassDeclaration& declaration; ///< of the path's class
    const Object& path;
    const Object& instance;
    views::ClassView view;
    std::optional<server::ProviderPlace> provider; ///< that answered; nothing: the server did
};

/// Reads a path, whose keys get the types that their class declares. @throws PathError
Object read_path(const Visit& visit, const Namespace*& space) {
    const auto declared_key = [&visit](const std::string& class_name, const std::string& key) {
        const ClassDeclaration* declaration = visit.main.schema.find(class_name);
        return declaration == nullptr ? nullptr : declaration->property(key);
    };
    Object path = parse_path(visit.rest, [&](const std::string& class_name, const std::string& key) {
        const PropertyDeclaration* declared = declared_key(class_name, key);
        return declared == nullptr || declared->type == "reference";
    });
    space = namespace_of(visit, path.name_space);
    path.name_space.clear();
    path.host.reset();
    for (Property& key : path.keys)
        if (const PropertyDeclaration* declared = declared_key(path.class_name, key.name))
            if (auto value = mof::typed_value(declared->type, key.value)) {
                key.type = declared->type;
                key.value = std::move(*value);
            }
    return path;
}

std::string value_cell(const Subject& subject, const PropertyDeclaration* declared, const Property& property) {
    if (const auto* reference = std::get_if<Value::Reference>(&property.value.data);
        reference != nullptr && *reference != nullptr && !(*reference)->keys.empty())
        return "<td>" + link(object_link(subject.space, subject.visit.main, **reference), path_text(**reference)) +
               "</td>";
    const bool counts = declared != nullptr && mof::is_on(declared->qualifiers, "Counter");
    std::string attributes = is_number(property) ? " class=\"number\"" : "";
    if (counts) {
        const auto& curves = subject.view.curves;
        const bool curve = curves.empty() || std::find(curves.begin(), curves.end(), declared->name) != curves.end();
        attributes += " data-counter=\"" + escaped(property.name) + "\"" + (curve ? " data-curve=\"\"" : "");
    } else if (is_refreshed(declared, property)) {
        attributes += " data-value=\"" + escaped(property.name) + "\"";
    }
    return "<td" + attributes + ">" + escaped(value_text(declared, property)) + "</td>";
}

std::string property_table(const Subject& subject) {
    std::string html = "<table id=\"properties\">\n<caption>Properties</caption>\n<thead><tr><th scope=\"col\">Property"
                       "</th><th scope=\"col\">Value</th><th scope=\"col\">Unit</th>"
                       "<th scope=\"col\">What it is</th></tr></thead>\n<tbody>\n";
    for (const Property& property : subject.instance.properties) {
        const PropertyDeclaration* declared = subject.declaration.property(property.name);
        const bool key = declared != nullptr && declared->key;
        html += "<tr><th scope=\"row\">" + escaped(property.name) + (key ? " <span class=\"unit\">key</span>" : "") +
                "</th>" + value_cell(subject, declared, property) + "<td>" + escaped(unit_of(declared)) + "</td><td>" +
                escaped(declared == nullptr ? "Not declared." : qualifier_text(declared->qualifiers, "Description")) +
                "</td></tr>\n";
    }
    return scrolled("Properties", html + "</tbody>\n</table>\n");
}

std::string neighbour_list(const Subject& subject, const Graph& graph, TimedAsk& ask) {
    std::map<std::string, std::vector<const Object*>> by_association;
    for (const GraphEdge& edge : graph.edges)
        by_association[edge.association].push_back(&graph.objects[edge.from == 0 ? edge.to : edge.from]);
    std::string html;
    for (const auto& [association, objects] : by_association) {
        const Roles roles(ask, subject.space, subject.path, association);
        html +=
            "<h3>" + link(class_link(subject.space, subject.visit.main, association), association) + "</h3>\n<ul>\n";
        for (const Object* object : objects) {
            const EndNames names = roles.of(*object);
            html += "<li>" + link(object_link(subject.space, subject.visit.main, *object),
                                  path_text(path_of(subject.space, *object)));
            html +=
                " <span class=\"unit\">" +
                (names.other.empty() ? "role not told" : escaped(names.own) + " \xE2\x86\x92 " + escaped(names.other)) +
                "</span></li>\n";
        }
        html += "</ul>\n";
    }
    return html;
}

/// What a list of neighbours is not complete for; empty if nothing is missing.
std::string missing_neighbours(const GraphWalk::Notes& notes, bool late) {
    std::string text;
    if (notes.limited)
        text = "There are more neighbours than these.";
    if (late)
        text += (text.empty() ? "" : " ") + std::string("Not all were asked for, since that takes long.");
    if (notes.errors > 0)
        text +=
            (text.empty() ? "" : " ") + counted(notes.errors, "request") + " failed, the first: " + notes.first_error;
    return text.empty() ? text : "<p>" + escaped(text) + "</p>\n";
}

/// Where nobody names a neighbour: what other ends tell.
std::string other_side_list(const Subject& subject, TimedAsk& ask) {
    constexpr std::size_t most = 200;
    std::string items;
    const auto tied = tied_by_names(ask, subject.space, subject.path, most);
    for (const TiedObject& each : tied)
        items += "<li>" +
                 link(object_link(subject.space, subject.visit.main, each.object),
                      path_text(path_of(subject.space, each.object))) +
                 " <span class=\"unit\">" + escaped(each.association) + ": " + escaped(each.names.own) +
                 " \xE2\x86\x92 " + escaped(each.names.other) + "</span></li>\n";
    if (items.empty())
        return {};
    return std::string("<h3>Found from the other side</h3>\n<p>These stand beside it in the names of associations' ") +
           "instances." + (tied.size() >= most ? " There are more than these." : "") + "</p>\n<ul>\n" + items +
           "</ul>\n";
}

std::string neighbours(const Subject& subject) {
    constexpr std::size_t most = 500;
    TimedAsk timed(subject.space, subject.visit.settings);
    const auto asked = [&timed](const Request& request) { return timed(request); };
    GraphWalk walk(subject.space.schema, asked, subject.space.name, most);
    walk.start_with(subject.path);
    walk.run_once();
    const std::string list = neighbour_list(subject, walk.graph(), timed);
    const bool unnamed = walk.graph().edges.empty() && walk.notes().errors == 0 && !timed.is_late();
    const std::string others = unnamed ? other_side_list(subject, timed) : std::string();
    const std::string head = "<h2>Neighbours</h2>\n" + missing_neighbours(walk.notes(), timed.is_late());
    if (walk.graph().edges.empty())
        return head + (unnamed ? "<p>The providers name no neighbour when asked from here.</p>\n" + others : "");
    const std::string drawing =
        svg_of(walk.graph(), star_of(walk.graph()), subject.space.schema, "The object and its neighbours",
               [&subject](const Object& object) { return object_link(subject.space, subject.visit.main, object); });
    return head + list + scrolled("Drawing", drawing);
}

std::string shell_quoted(const std::string& text) {
    std::string out = "'";
    for (const char c : text)
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

/// The request for this object, as WBEM clients send it.
std::string xml_request(const Subject& subject) {
    std::string spaces;
    std::string_view rest = subject.space.name;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('/'), rest.size());
        spaces += "<NAMESPACE NAME=\"" + escaped(rest.substr(0, end)) + "\"/>";
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    std::string name;
    cimxml::append_instance_name(name, subject.path,
                                 {subject.visit.question.host, subject.space.name, subject.space.schema});
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">"
           "<MESSAGE ID=\"1\" PROTOCOLVERSION=\"1.0\"><SIMPLEREQ><IMETHODCALL NAME=\"GetInstance\">\n"
           "<LOCALNAMESPACEPATH>" +
           spaces + "</LOCALNAMESPACEPATH>\n<IPARAMVALUE NAME=\"InstanceName\">" + name +
           "</IPARAMVALUE>\n</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>\n";
}

/// A file as it is named from any folder; a library that is not in this one is looked for where the system looks.
std::string file_word(const std::string& file) {
    std::error_code error;
    const bool here = std::filesystem::exists(file, error);
    return shell_quoted(here ? std::filesystem::absolute(file).lexically_normal().string() : file);
}

/// The command that asks the same of the same provider.
std::string command(const Subject& subject) {
    const CommandWords& words = subject.visit.settings.command;
    const server::ProviderPlace& provider = *subject.provider;
    Object named = subject.path;
    named.name_space = subject.space.name;
    std::string text = "cmpihost gi " + shell_quoted(path_text(named));
    if (!words.default_provider) {
        text += " --provider " + file_word(provider.file.library);
        if (provider.file.name != words.default_name)
            text += " --name " + shell_quoted(provider.file.name);
    }
    for (const std::string& file : words.schema)
        text += " --schema " + file_word(file);
    if (!words.scenario.empty() && provider.simulated)
        text += " --scenario " + file_word(words.scenario);
    return text;
}

std::string copies(const Subject& subject) {
    const std::string url = object_link(subject.space, subject.visit.main, subject.path) + "?format=json";
    const auto part = [](const std::string& title, const std::string& text) {
        return "<h3>" + title + "</h3>\n<pre tabindex=\"0\" role=\"region\" aria-label=\"" + title + "\">" +
               escaped(text) + "</pre>\n";
    };
    return "<h2>The same elsewhere</h2>\n" + (subject.provider ? part("On the command line", command(subject)) : "") +
           "<h3>" + link(url, "In JSON") + "</h3>\n" + part("In CIM-XML", xml_request(subject));
}

std::string title_of(const Object& path) {
    for (const char* name : {"Name", "InstanceID", "DeviceID"})
        if (const Property* key = path.key(name))
            return path.class_name + " " + value_text(nullptr, *key);
    return path.class_name;
}

Page page_of(const Subject& subject) {
    const std::string trail =
        link("/", "Classes") + " " +
        link(class_link(subject.space, subject.visit.main, subject.declaration.name), subject.declaration.name);
    const std::string body = "<p class=\"path\">" + escaped(path_text(subject.path)) + "</p>\n" +
                             property_table(subject) + neighbours(subject) + copies(subject);
    return {200, "text/html; charset=utf-8", page(title_of(subject.path), trail, body)};
}

} // namespace

Page object_page(const Visit& visit) {
    try {
        const Namespace* space = nullptr;
        const Object path = read_path(visit, space);
        const ClassDeclaration* declaration = space == nullptr ? nullptr : space->schema.find(path.class_name);
        if (declaration == nullptr)
            return error_page(404, "No such object", "There is no class " + path.class_name + ".");
        server::Status status;
        const server::Ask* who = nullptr;
        const auto instance = get(*space, path, status, &who);
        if (!instance)
            return error_page(status.code == server::CimCode::not_found ? 404 : 502, "No such object",
                              path_text(path) + ": error " + std::to_string(static_cast<unsigned>(status.code)) + ", " +
                                  status.description);
        if (visit.target.value("format") == "json")
            return {200, "application/json", json_of(path, *instance, *declaration)};
        return page_of({visit, *space, *declaration, path, *instance, visit.views.of(*declaration, space->schema),
                        visit.catalogue.provider_of(*who)});
    } catch (const PathError& error) {
        return error_page(400, "No such object", error.what());
    }
}

} // namespace cmpihost::pages
