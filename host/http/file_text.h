// Small files, read whole and replaced whole.
#pragma once

#include <cstddef>
#include <string>

namespace cmpihost::http {

struct FileText {
    std::string text;
    unsigned mode = 0; ///< permission bits
};

bool file_exists(const std::string& file);

/// @throws std::runtime_error "FILE: ...", one line: it cannot be read, is larger, or no regular file
FileText read_file(const std::string& file, std::size_t largest);

/// Writes a new file (mode 0600) and puts it in place of the old one, at once. An old file's mode is kept, as far as
/// that lets nobody but its group read it, and its owner and group where that is allowed.
/// @throws std::runtime_error "FILE: ...", one line; the old file is as it was
void replace_file(const std::string& file, const std::string& text);

} // namespace cmpihost::http
