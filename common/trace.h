// Trace lines on standard output. The texts are part of the provider's behaviour.
#pragma once

#include <cstdint>

namespace fcip {

/// "Entering FUNCTION".
void trace_entering(const char* function);

/// "Exiting FUNCTION".
void trace_exiting(const char* function);

/// " Function : FUNCTION Line LINE ". The line is a fixed number that names the place, not a line of our source.
void trace_location(const char* function, int line);

/// A number between two texts, which together are at most 200 characters long.
void trace_number(const char* before, std::int32_t number, const char* after);

} // namespace fcip
