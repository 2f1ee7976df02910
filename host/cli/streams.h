// Where the program writes.
#pragma once

#include <cstdio>
#include <string>

namespace cmpihost {

/// `out` is the program's own output, apart from the provider's.
struct Streams {
    std::FILE* out;
    std::FILE* err;
};

/// Exit codes, told in the help text.
enum : int { exit_ok = 0, exit_cim_error = 1, exit_usage = 2, exit_output = 3, exit_findings = 4 };

bool is_terminal(std::FILE* out);

/// On a terminal, unless NO_COLOR is set.
bool wants_colour(std::FILE* out);

/// Writes a text to `out`. Returns exit_ok, or exit_output after telling why on `err`.
int print(const Streams& streams, const std::string& text);

/// Tells on `err` in one line what cannot be used. Returns exit_usage.
int refuse(const Streams& streams, const std::string& what);

} // namespace cmpihost
