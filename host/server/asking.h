// Asks providers, and puts together what they answer.
#pragma once

#include "host/server/inquiry.h"
#include "host/server/notes.h"
#include "host/server/reply_body.h"

namespace cmpihost::server {

/// What came of an inquiry.
struct Asked {
    Status status;
    std::uint64_t objects = 0; ///< given to the output
};

/// Asks for each class of an inquiry and gives the objects to the output, each once. If any class was answered, so is
/// the inquiry, and what went wrong with others is noted; a class's objects from before its error stay.
Asked ask(const Inquiry& inquiry, const cimxml::ReplyPlace& place, ObjectOutput& output, Notes& notes);

/// The status of an answer. Codes that the standard does not know become FAILED.
Status status_of(const Answer& answer);

/// Whether a provider says that it does not know the class or the operation: no failure if another one answers.
bool is_unsupported(const Status& status);

/// "N null results were left out" and the like, if there are any.
void note_leftovers(const Answer& answer, const std::string& what, Notes& notes);

} // namespace cmpihost::server
