// Holds what a provider answers against the schema.
#pragma once

#include "host/cli/options.h"
#include "host/mof/check.h"
#include "host/mof/deviations.h"

#include <cstdio>
#include <map>

namespace cmpihost {

/// Counts in how many objects each fault was found. Without --check it finds nothing.
class AnswerCheck {
  public:
    /// Reads schema and deviations if there is to be a check.
    /// @throws std::runtime_error whose what() is one line
    explicit AnswerCheck(const Options& options);

    void add(const Request& request, const Answer& answer);

    /// Tells each finding in a line, in the order in which they first came.
    void tell(std::FILE* err) const;

    bool found() const { return !findings_.empty(); }

  private:
    struct Finding {
        std::string text;
        std::size_t objects;
    };

    void count(const std::string& finding);

    std::optional<mof::Schema> schema_;
    mof::Deviations deviations_;
    std::vector<Finding> findings_;
    std::map<std::string, std::size_t> index_; ///< where each stands in findings_
};

} // namespace cmpihost
