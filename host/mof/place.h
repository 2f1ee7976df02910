// Where something stands in a MOF file.
#pragma once

#include <string>

namespace cmpihost::mof {

/// A file, and a line and column (in bytes) that begin with 1; line 0 means the file as a whole.
struct Place {
    std::string file;
    unsigned line = 0;
    unsigned column = 0;

    std::string text() const; ///< "FILE:LINE:COLUMN"
};

} // namespace cmpihost::mof
