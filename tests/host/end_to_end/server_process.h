// `cmpihost serve` as a process, and commands that ask it, for tests that see what clients see.
#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace cmpihost {

/// What a command printed, both outputs, and how it ended.
struct CommandResult {
    std::string output;
    int exit_code = -1; ///< 128 and the signal's number if one ended it
};

/// Runs a command without a shell and waits for it.
CommandResult run_command(const std::vector<std::string>& arguments);

/// A server on a port of its own, until it goes out of scope.
class ServerProcess {
  public:
    /// Starts `cmpihost serve --listen 127.0.0.1:0 --quiet OPTIONS...` and waits until it listens. Where the options
    /// have no --timeout, it is so long that no machine is too slow for it.
    explicit ServerProcess(const std::vector<std::string>& options = {});
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    bool is_up() const { return port_ != 0; }
    int port() const { return port_; }
    pid_t pid() const { return pid_; }

    /// "localhost:PORT", as clients name it.
    std::string host() const { return "localhost:" + std::to_string(port_); }

    /// Asks it to stop, and waits.
    /// @return as CommandResult::exit_code
    int stop();

    /// What it printed on standard error so far.
    std::string errors() const;

    /// Whether it comes to print this on standard error. The log is written beside the answers.
    bool comes_to_tell(const std::string& text) const;

  private:
    bool has_ended();

    pid_t pid_ = -1;
    int port_ = 0;
    std::string error_file_;
};

} // namespace cmpihost
