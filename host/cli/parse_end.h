// What a command line comes to that was not read to its end: help, a version, or a wrong option.
#pragma once

#include <string>

namespace CLI {
class App;
class Error;
} // namespace CLI

namespace cmpihost {

/// What to print and how to exit in place of a run.
struct ParseEnd {
    int exit_code;
    std::string output;
    std::string error;
};

/// Wrong usage, in one line that ends with where help is. `program` is "cmpihost" or a verb behind it.
ParseEnd usage_end(const std::string& program, const std::string& what);

/// Of what CLI11 threw.
ParseEnd parse_end(const CLI::App& app, const CLI::Error& error, const std::string& program);

} // namespace cmpihost
