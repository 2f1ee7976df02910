// cmpihost as a function.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace cmpihost {

/// Does what the program does. @param arguments without the program's name
/// @param out the program's output; not the `stdout` stream, which belongs to the provider
/// @return 0 ok, 1 CIM error, 2 wrong usage, an unusable provider or schema, 3 output that could not be
/// written, 4 answers that are not as the schema wants them, 5 a provider that did not come to answer
int run_command_line(const std::vector<std::string>& arguments, std::FILE* out, std::FILE* err);

} // namespace cmpihost
