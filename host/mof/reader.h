// Reads the declarations of one MOF file.
#pragma once

#include "host/mof/builder.h"

namespace cmpihost::mof {

/// Reads a file and those that it includes, once each. Throws Refusal.
void read_file(const std::string& path, Builder& builder);

/// Reads text; `name` is its file's path.
void read_text(const std::string& name, std::string_view text, Builder& builder);

} // namespace cmpihost::mof
