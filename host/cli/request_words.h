// The words of a command line that say what to ask.
#pragma once

#include "host/broker/broker.h"

#include <stdexcept>

namespace cmpihost {

struct Options;

/// Words that cannot be used. what() is one line.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads an OBJECT, in this namespace if it names none. A quoted text that is itself a path is a reference unless the
/// schema declares another type for the key. @throws PathError
Object read_object(const std::string& word, const std::string& name_space, const Options& options);

/// Completes a request whose operation is set. @param object what stands behind the verb: a path, or a whole query for
/// execQuery. @param words what follows. @throws UsageError, PathError
void read_request(const std::string& object, const std::vector<std::string>& words, const Options& options,
                  Request& request);

} // namespace cmpihost
