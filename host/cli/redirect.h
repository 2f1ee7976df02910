// Keeps what a provider prints out of the program's own output.
#pragma once

#include <cstdio>
#include <string>

namespace cmpihost {

/// While it lives, whatever this process writes to standard output goes to a file (created or emptied), to `err` for
/// "-", or nowhere for "". Not for use from several threads.
class StandardOutputElsewhere {
  public:
    /// @throws std::runtime_error if the file cannot be opened
    StandardOutputElsewhere(const std::string& target, std::FILE* err);
    ~StandardOutputElsewhere();
    StandardOutputElsewhere(const StandardOutputElsewhere&) = delete;
    StandardOutputElsewhere& operator=(const StandardOutputElsewhere&) = delete;

  private:
    int saved_;
    std::FILE* err_;
};

} // namespace cmpihost
