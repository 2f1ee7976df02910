// Everything that a test makes the provider emit is held against the schema, and noted for the coverage check that
// ends a test run (tests/support/schema_coverage.cmake).
#pragma once

#include "host/mof/check.h"

#include <string>
#include <vector>

namespace test {

/// The schema of the provider's classes.
const cmpihost::mof::Schema& schema();

/// Notes an object's class as emitted, and returns what is wrong with the object and not a known deviation.
std::vector<std::string> findings_of(const cmpihost::Object& object, cmpihost::mof::Kind kind);

} // namespace test
