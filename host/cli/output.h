// Answers as text, MOF and JSON.
#pragma once

#include "host/broker/broker.h"

namespace cmpihost {

/// Whether an operation answers with paths instead of instances.
bool gives_paths(Request::Operation operation);

/// One JSON object: status, objects, and how many results were null or invalid; of a method also what it returned.
/// Bytes that are no UTF-8 are replaced.
std::string json_of(const Answer& answer);

/// Instances as MOF declarations, each under a comment with its path; paths as comments.
std::string mof_of(const Answer& answer, bool paths);

/// For people: paths as a table of their keys (one path a line if a key is a reference), instances as a list of their
/// properties, and how many there were; of a method what it returned, and its output parameters.
std::string text_of(const Answer& answer, const Request& request, bool colour);

/// A text for a terminal or a comment: control characters as escapes.
std::string printable(std::string_view text);

/// A value as text output shows it.
std::string text_value(const Property& property);

/// A value as a MOF initializer.
std::string mof_value(const Property& property);

} // namespace cmpihost
