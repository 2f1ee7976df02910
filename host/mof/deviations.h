// Findings of check() that are known and wanted.
#pragma once

#include "host/mof/schema.h"

#include <set>

namespace cmpihost::mof {

/// The lines of a file, each one finding as check() words it. Empty lines and lines that begin with # are comments.
class Deviations {
  public:
    static std::variant<Deviations, Error> read(const std::string& file);

    bool accepts(const std::string& finding) const { return findings_.contains(finding); }

    /// What is left of some findings, in their order.
    std::vector<std::string> unexpected(std::vector<std::string> findings) const;

    /// All of them, for those who want to know whether each still occurs.
    const std::set<std::string>& findings() const { return findings_; }

  private:
    std::set<std::string> findings_;
};

} // namespace cmpihost::mof
