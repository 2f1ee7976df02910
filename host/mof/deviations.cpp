#include "host/mof/deviations.h"

#include <cerrno>
#include <cstring>
#include <fstream>

namespace cmpihost::mof {

std::variant<Deviations, Error> Deviations::read(const std::string& file) {
    std::ifstream stream(file);
    if (!stream)
        return Error{{file}, std::string("cannot be read: ") + std::strerror(errno)};
    Deviations deviations;
    std::string line;
    for (unsigned number = 1; std::getline(stream, line); ++number) {
        if (line.empty() || line[0] == '#')
            continue;
        if (line.find(": ") == std::string::npos)
            return Error{{file, number, 1}, line + ", expected CLASS: WHAT, CLASS.NAME: WHAT, or # and a comment"};
        if (!deviations.findings_.insert(line).second)
            return Error{{file, number, 1}, line + " is there twice"};
    }
    if (stream.bad())
        return Error{{file}, "cannot be read, expected a file with text"};
    return deviations;
}

std::vector<std::string> Deviations::unexpected(std::vector<std::string> findings) const {
    std::erase_if(findings, [this](const std::string& finding) { return accepts(finding); });
    return findings;
}

} // namespace cmpihost::mof
