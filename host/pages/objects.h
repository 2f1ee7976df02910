// Objects for pages: asked of those who serve their classes, and named in links.
#pragma once

#include "host/graph/graph.h"
#include "host/server/inquiry.h"

namespace cmpihost::pages {

/// Objects, or why there are none.
struct Objects {
    std::vector<Object> objects;
    server::Status status{}; ///< an error of one of those who were asked; who does not support a class is none, where
                             ///< another one answers
};

/// The instances, or their names, of a class and its served subclasses, each once.
Objects enumerate(const server::Namespace& space, const mof::ClassDeclaration& declaration, bool names);

/// The instance of this path; nothing if nobody answers with one, and why stands in `status`.
/// @param who unless null: gets who answered
std::optional<Object> get(const server::Namespace& space, const Object& path, server::Status& status,
                          const server::Ask** who = nullptr);

/// Asks exactly those who serve the class that a request names: the class of its path, or of the association. What
/// nobody serves is not supported; an association that is not declared is asked of all who serve any.
Answer ask(const server::Namespace& space, const Request& request);

/// The path of an instance: its keys, or else those that its class declares.
Object path_of(const server::Namespace& space, const Object& instance);

/// Where the page of a class or an object is.
/// @param main the namespace that links need not name
std::string class_link(const server::Namespace& space, const server::Namespace& main, const std::string& class_name);
std::string object_link(const server::Namespace& space, const server::Namespace& main, const Object& path);

/// A value for people, with the text that the MOF gives for it in parentheses.
std::string value_text(const mof::PropertyDeclaration* declared, const Property& property);

/// Whether the page of an object brings a value up to date: all but references, which are links.
bool is_refreshed(const mof::PropertyDeclaration* declared, const Property& property);

bool is_number(const Property& property);

/// The unit of a property: "byte", "second * 10^-3"; empty for none and for a count.
std::string unit_of(const mof::PropertyDeclaration* declared);

/// The text of a qualifier that is one; empty if there is none.
std::string qualifier_text(std::span<const mof::Qualifier> qualifiers, std::string_view name);

} // namespace cmpihost::pages
