// The classes in use, and what the server is.
#include "host/pages/html.h"
#include "host/pages/objects.h"
#include "host/pages/site_parts.h"
#include "host/pages/timed_ask.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <map>

namespace cmpihost::pages {

namespace {

using Clock = std::chrono::steady_clock;
using server::Namespace;
using server::ServedClass;

std::string time_text(std::uint64_t seconds) {
    const auto time = static_cast<std::time_t>(seconds);
    std::tm parts{};
    gmtime_r(&time, &parts);
    std::array<char, 64> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S UTC", &parts);
    return {text.data(), length};
}

std::string seconds_text(std::chrono::microseconds time) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.3f", std::chrono::duration<double>(time).count());
    return text.data();
}

std::string row(const std::string& name, const std::string& value) {
    return "<tr><th scope=\"row\">" + name + "</th><td>" + value + "</td></tr>\n";
}

std::string server_table(const server::ServerFigures& figures) {
    return "<table>\n<caption>This server</caption>\n" + row("Program", "cmpihost " CMPIHOST_VERSION) +
           row("Since", time_text(figures.since)) +
           row("Requests so far",
               grouped(figures.requests) + ", of which " + grouped(figures.failures) + " did not end well") +
           row("Connections", grouped(figures.connections)) +
           row("Restarts of the providers' process", grouped(figures.restarts)) + "</table>\n";
}

std::string provider_table(const server::Catalogue& catalogue) {
    std::string html = "<table>\n<caption>Providers, since their process began</caption>\n<thead><tr>"
                       "<th scope=\"col\">Provider</th><th scope=\"col\">Calls</th>"
                       "<th scope=\"col\">Failed</th><th scope=\"col\">Seconds in all</th></tr></thead>\n<tbody>\n";
    for (const server::ProviderFigures& each : catalogue.providers())
        html += "<tr><th scope=\"row\">" + escaped(each.name) + "</th><td class=\"number\">" + grouped(each.calls) +
                "</td><td class=\"number\">" + grouped(each.failures) + "</td><td class=\"number\">" +
                seconds_text(each.time) + "</td></tr>\n";
    return scrolled("Providers", html + "</tbody>\n</table>\n");
}

/// How many objects a class has.
std::string count_text(const Namespace& space, const mof::ClassDeclaration& declaration) {
    const Objects found = enumerate(space, declaration, true);
    if (found.objects.empty() && found.status.code != server::CimCode::ok)
        return "error " + std::to_string(static_cast<unsigned>(found.status.code));
    return grouped(found.objects.size());
}

/// The classes that are served, each once, under their superclasses.
std::map<std::string, std::vector<const mof::ClassDeclaration*>> families_of(const Namespace& space, bool association) {
    std::map<std::string, std::vector<const mof::ClassDeclaration*>> families;
    for (const ServedClass& each : space.classes) {
        if (!each.instances || each.declaration->association != association)
            continue;
        auto& family = families[each.declaration->superclass];
        if (std::find(family.begin(), family.end(), each.declaration) == family.end())
            family.push_back(each.declaration);
    }
    return families;
}

/// Counts the objects of the classes for a time, those first whose count is missing or the oldest.
void count_objects(const Visit& visit, std::chrono::milliseconds time) {
    struct Due {
        Clock::time_point counted;
        const Namespace* space;
        const mof::ClassDeclaration* declaration;
    };
    std::vector<Due> all;
    for (const bool association : {false, true})
        for (const Namespace* space : visit.catalogue.namespaces())
            for (const auto& [superclass, family] : families_of(*space, association))
                for (const mof::ClassDeclaration* declaration : family) {
                    const auto last = visit.memory.count(*space, *declaration);
                    all.push_back({last ? last->when : Clock::time_point(), space, declaration});
                }
    std::stable_sort(all.begin(), all.end(), [](const Due& a, const Due& b) { return a.counted < b.counted; });
    const auto until = Clock::now() + time;
    for (const Due& each : all)
        if (!visit.catalogue.is_interop(*each.space) && Clock::now() < until)
            visit.memory.note_count(*each.space, *each.declaration, count_text(*each.space, *each.declaration));
}

std::string class_table(const Visit& visit, const Namespace& space, bool association) {
    std::string rows;
    for (const auto& [superclass, family] : families_of(space, association)) {
        rows += "<tbody>\n<tr><th colspan=\"3\" scope=\"rowgroup\">" +
                (superclass.empty() ? "Without a superclass" : escaped(superclass)) + "</th></tr>\n";
        for (const mof::ClassDeclaration* declaration : family) {
            const auto count = visit.memory.count(space, *declaration);
            rows += "<tr><th scope=\"row\">" +
                    link(class_link(space, visit.main, declaration->name), declaration->name) +
                    "</th><td class=\"number\">" + (count ? count->text : "not counted") + "</td><td>" +
                    escaped(qualifier_text(declaration->qualifiers, "Description")) + "</td></tr>\n";
        }
        rows += "</tbody>\n";
    }
    if (rows.empty())
        return {};
    const std::string name = association ? "Associations" : "Classes";
    return scrolled(name + " of " + space.name,
                    "<table>\n<caption>" + name + " in " + escaped(space.name) +
                        "</caption>\n<thead><tr><th scope=\"col\">Class</th><th scope=\"col\">Objects</th>"
                        "<th scope=\"col\">What it is</th></tr></thead>\n" +
                        rows + "</table>\n");
}

} // namespace

Page front_page(const Visit& visit) {
    count_objects(visit, within_request(visit.settings, visit.settings.counting));
    std::string body;
    for (const bool association : {false, true})
        for (const Namespace* space : visit.catalogue.namespaces())
            if (!visit.catalogue.is_interop(*space))
                body += class_table(visit, *space, association);
    body += server_table(visit.question.page->figures) + provider_table(visit.catalogue);
    return {200, "text/html; charset=utf-8", page("Classes", "", body)};
}

} // namespace cmpihost::pages
