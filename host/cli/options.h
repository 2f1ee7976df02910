// The command line of cmpihost as plain values.
#pragma once

#include "host/broker/broker.h"
#include "host/cli/streams.h"

#include <optional>
#include <string>
#include <vector>

namespace cmpihost {

struct Verb;

enum class Format { text, mof, json, paths };
enum class GraphFormat { text, dot, json };

struct Options {
    const Verb* verb = nullptr;
    std::string provider;         ///< library file
    std::string name;             ///< factory prefix
    std::string beside;           ///< registration of providers in its folder, which are loaded too; empty: none
    std::string scenario;         ///< file; empty: none
    bool scenario_wanted = false; ///< a provider that takes no scenario is refused
    std::string trace;            ///< file; "-": standard error; empty: dropped
    Format format = Format::text;
    bool format_given = false;
    std::vector<std::string> schema; ///< MOF files in order; empty: those beside the program
    std::string deviations;          ///< file of findings to accept; empty: the one beside the schema
    bool check = false;              ///< hold answers against the schema
    Request request;
    bool count = false;             ///< show numbers of objects instead of them
    std::size_t repeat = 1;         ///< how often to ask
    bool every_association = false; ///< ask once per association class of the schema
    Colour colour = Colour::automatic;

    bool fork = true;            ///< the provider gets a process of its own
    double timeout = 0;          ///< seconds that it may take for the next object or the end of a call; 0: any
    std::size_t max_objects = 0; ///< that one call may return

    bool tree = false; ///< classes under their superclasses

    GraphFormat graph_format = GraphFormat::text;
    std::size_t limit = 0;       ///< of objects in a graph
    std::optional<Object> start; ///< of a graph; unset: everywhere
    std::string name_space;      ///< for a graph's objects that have none
};

/// What the names of a provider's factories begin with, unless another name is given.
inline constexpr const char* default_name = "FCIPProvider";

/// The provider beside this program, where both are built or installed, or else wherever the system's loader finds one.
std::string default_provider();

/// The registration of the simulated switch's own provider, which is loaded with the default one; empty if it is not
/// there.
std::string registration_beside(const std::string& provider);

/// What came of reading a command line: options to go on with, or a text to print and an exit code.
struct CommandLine {
    std::optional<Options> options;
    int exit_code = 0;
    std::string output;
    std::string error;
};

/// Reads the arguments, the program's own name not among them.
CommandLine read_command_line(const std::vector<std::string>& words);

} // namespace cmpihost
