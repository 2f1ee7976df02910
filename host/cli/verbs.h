// What cmpihost can be asked to do: one row per verb.
#pragma once

#include "host/cli/options.h"
#include "host/cli/streams.h"

#include <span>
#include <string_view>

namespace cmpihost {

/// What stands behind a verb, and so which arguments and options it takes.
enum class Shape {
    request, ///< an OBJECT and PROPERTYs; the provider answers
    classes, ///< nothing; only the schema is read
    graph,   ///< an OBJECT or none; the provider is asked many times
};

/// Which of the association filters a verb takes.
enum class Filters { none, references, associators };

struct Verb {
    std::string_view name;
    std::string_view words; ///< that follow it, as the line of usage has them
    std::string_view help;
    Shape shape;
    Filters filters;
    Request::Operation operation; ///< of a request
    /// Returns the exit code. @throws ProviderFailed, std::runtime_error whose what() is one line
    int (*handler)(const Options& options, const Streams& streams);
};

std::span<const Verb> all_verbs();

/// Null if there is none of this name.
const Verb* find_verb(std::string_view name);

} // namespace cmpihost
