// Answers as text, MOF and JSON.
#pragma once

#include "host/broker/broker.h"
#include "host/cim/value_text.h"
#include "host/mof/schema.h"

#include <memory>

namespace cmpihost {

/// Turns an answer into text, piece by piece as its objects come: begin(), object() for each, end().
class AnswerText {
  public:
    AnswerText() = default;
    virtual ~AnswerText() = default;
    AnswerText(const AnswerText&) = delete;
    AnswerText& operator=(const AnswerText&) = delete;

    virtual std::string begin() { return {}; }
    virtual std::string object(const Object& object) = 0;
    /// @param answer all but the objects. @param failure why the provider did not come to answer; empty: it did
    virtual std::string end(const Answer& answer, const std::string& failure) = 0;
};

/// One JSON object: objects, status, and how many results were null or invalid; of a method also what it returned.
/// Bytes that are no UTF-8 are replaced.
std::unique_ptr<AnswerText> json_answer();

/// Instances as MOF declarations, each under a comment with its path; paths as comments.
std::unique_ptr<AnswerText> mof_answer(bool paths);

/// For people: paths as a table of their keys (one path a line if a key is a reference), instances as a list of their
/// properties, and how many there were; of a method what it returned, and its output parameters. The columns of a
/// table are made for the first thousand paths; one that does not fit comes as a line of its own.
/// @param schema for the texts of enumerated values; null: none
std::unique_ptr<AnswerText> text_answer(const Request& request, bool colour, const mof::Schema* schema);

/// One path a line, quoted for a shell.
std::unique_ptr<AnswerText> path_lines();

/// How many objects there are.
std::unique_ptr<AnswerText> object_count();

} // namespace cmpihost
