// The log: lines of requests and of what happens.
#pragma once

#include "host/http/log_line.h"
#include "host/http/options.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string_view>
#include <thread>

namespace cmpihost::http {

/// Writes lines on a thread of its own, so that a disk or a pipe that does not take them blocks nobody: lines that
/// find too many before them are dropped, and counted in a line once the log goes on.
class Log {
  public:
    /// @throws std::runtime_error "FILE: ...", one line: it cannot be opened
    explicit Log(const LogOptions& options);

    /// Writes what waits. After a second, only what is taken at once.
    ~Log();
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    /// A request, unless the log is quiet.
    void record(const LogRecord& record);

    /// Anything else that has to be told, in one line.
    void note(std::string_view text);

    /// Opens the file again, which may have been moved away. One that cannot be opened leaves the log as it was.
    void reopen();

  private:
    void queue(std::string line);
    std::string note_text(std::string_view text) const;
    void run();
    bool put(std::string_view text);
    void open_again();
    bool gives_up();

    LogOptions options_;
    int descriptor_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::string> lines_;
    std::uint64_t dropped_ = 0;
    bool reopen_ = false;
    bool ended_ = false;
    std::chrono::steady_clock::time_point end_{}; ///< when an ended log gives up
    std::thread thread_;
};

} // namespace cmpihost::http
