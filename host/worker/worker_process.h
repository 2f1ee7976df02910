// The process that runs the providers: questions in, answers out, over one socket.
#pragma once

#include "host/server/question.h"

#include <chrono>
#include <functional>

namespace cmpihost::worker {

/// Answers a question; called on several threads at once. What it throws becomes CIM error 1.
using AnswerFunction = std::function<server::Outcome(const server::Question&, server::ReplySink&)>;

/// Says that it is ready, then answers the questions that come over the socket until its end of file. SIGPIPE is
/// ignored from then on, and the socket is closed on exec.
/// @param threads questions that are answered at once; others wait
/// @param grace for what still runs at the end of file; the process is ended where that is not enough
/// @return the process's exit status: 0, or 1 if the other side breaks the protocol
int run_worker(int socket, const AnswerFunction& answer, unsigned threads,
               std::chrono::milliseconds grace = std::chrono::seconds(5));

} // namespace cmpihost::worker
