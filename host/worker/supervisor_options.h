// What worker processes are run with.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace cmpihost::worker {

enum class LogLevel : std::uint8_t { info, warning, error };

struct SupervisorOptions {
    using Milliseconds = std::chrono::milliseconds;

    std::vector<std::string> command;                        ///< the worker's program, and its arguments
    unsigned threads = 8;                                    ///< requests that a worker answers at once; others wait
    std::size_t waiting = 256;                               ///< requests that may wait
    Milliseconds timeout{25'000};                            ///< for a request, from the moment of asking
    Milliseconds start_timeout{60'000};                      ///< for a worker, until it is ready
    Milliseconds first_pause{100};                           ///< before a worker is replaced that had answered nothing
    Milliseconds longest_pause{60'000};                      ///< to which the pause doubles
    Milliseconds abort_wait{5'000};                          ///< between SIGABRT and SIGKILL for a worker that hangs
    Milliseconds stop_wait{1'000};                           ///< between end of file, SIGTERM and SIGKILL at the end
    std::size_t max_reply = std::size_t{256} << 20;          ///< bytes of one reply
    std::size_t max_replies = std::size_t{512} << 20;        ///< bytes of all replies until their hold is dropped
    std::function<void(LogLevel, const std::string&)> log{}; ///< takes a line without its end
};

/// "25 s", "0.2 s".
std::string seconds_text(std::chrono::milliseconds time);

} // namespace cmpihost::worker
