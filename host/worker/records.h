// Questions, subjects and outcomes as bytes.
#pragma once

#include "host/server/question.h"

namespace cmpihost::worker {

std::string encode(const server::Question& question);

/// Of a method's target only that there is one is told.
std::string encode(const server::Subject& subject);

/// Notes beyond a mebibyte are counted, not told.
std::string encode(const server::Outcome& outcome);

/// @throws BrokenFrame
server::Question decode_question(std::string_view bytes);

/// The target of a method names the class alone.
/// @throws BrokenFrame
server::Subject decode_subject(std::string_view bytes);

/// @throws BrokenFrame as do an HTTP status that is none, and a CIMError that no header can carry
server::Outcome decode_outcome(std::string_view bytes);

} // namespace cmpihost::worker
