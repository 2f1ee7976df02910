// The command line of cmpihost as plain values.
#pragma once

#include "host/broker/broker.h"

#include <optional>
#include <string>
#include <vector>

namespace cmpihost {

struct Verb;

enum class Format { text, mof, json };
enum class GraphFormat { text, dot };

struct Options {
    const Verb* verb = nullptr;
    std::string provider; ///< library file
    std::string name;     ///< factory prefix
    std::string scenario; ///< file; empty: none
    std::string trace;    ///< file; "-": standard error; empty: dropped
    Format format = Format::text;
    bool format_given = false;
    std::vector<std::string> schema; ///< MOF files in order; empty: those beside the program
    std::string deviations;          ///< file of findings to accept; empty: the one beside the schema
    bool check = false;              ///< hold answers against the schema
    Request request;

    GraphFormat graph_format = GraphFormat::text;
    std::size_t limit = 0;       ///< of objects in a graph
    std::optional<Object> start; ///< of a graph; unset: everywhere
    std::string name_space;      ///< for a graph's objects that have none
};

/// The provider beside this program, where both are built or installed, or else wherever the system's loader finds one.
std::string default_provider();

/// What came of reading a command line: options to go on with, or a text to print and an exit code.
struct CommandLine {
    std::optional<Options> options;
    int exit_code = 0;
    std::string output;
    std::string error;
};

/// Reads the arguments, the program's own name not among them.
CommandLine read_command_line(const std::vector<std::string>& arguments);

} // namespace cmpihost
