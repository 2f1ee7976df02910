// Holds what a provider answers against the schema, and how it answers against the standard.
#pragma once

#include "host/cli/options.h"
#include "host/mof/check.h"
#include "host/mof/deviations.h"

#include <cstdio>
#include <map>

namespace cmpihost {

/// Counts in how many objects each fault was found. Without --check it finds nothing.
///
/// Beside the faults of single objects (host/mof/check.h), of which an answer has one each:
///
///     CLASS: an instance, expected a path
///     CLASS: a path, expected an instance
///     OPERATION: results after returnDone
///     OPERATION: no returnDone
class AnswerCheck {
  public:
    /// Reads schema and deviations if there is to be a check.
    /// @throws std::runtime_error whose what() is one line
    explicit AnswerCheck(const Options& options);

    void add(const Request& request, const Object& object, bool is_instance);

    /// @param answer to the request as a whole
    void add(const Request& request, const Answer& answer);

    /// Tells each finding in a line, in the order in which they first came.
    void tell(std::FILE* err) const;

    bool found() const { return !findings_.empty(); }

  private:
    struct Finding {
        std::string text;
        std::size_t count;
        const char* of; ///< what is counted
    };

    void count(const std::string& finding, const char* of);

    std::optional<mof::Schema> schema_;
    mof::Deviations deviations_;
    std::vector<Finding> findings_;
    std::map<std::string, std::size_t> index_; ///< where each stands in findings_
};

} // namespace cmpihost
