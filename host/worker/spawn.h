// Starting a worker process.
#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace cmpihost::worker {

/// A process that was started. Descriptors are the caller's to close, the process is the caller's to reap.
struct Process {
    pid_t pid = -1;
    int pidfd = -1;  ///< readable when the process has ended
    int socket = -1; ///< what it has as descriptor 3
};

/// Starts a program with nothing but a socket (descriptor 3), standard output and standard error of this process: input
/// from /dev/null, its signals as by default, in a process group of its own, so that the terminal's signals pass it by.
/// @param command the program's path, and its arguments
/// @throws std::system_error
Process spawn(const std::vector<std::string>& command);

/// Sends a signal, or none (0), to a process that is not reaped yet.
void send_signal(const Process& process, int number);

/// Takes the status of a process that has ended: "ended with SIGSEGV", "ended with exit status 3".
std::string reap(pid_t pid);

} // namespace cmpihost::worker
