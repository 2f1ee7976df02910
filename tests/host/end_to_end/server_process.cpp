#include "tests/host/end_to_end/server_process.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <thread>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cmpihost {

namespace {

using namespace std::chrono_literals;

/// What is waited for comes within this, however busy the machine is.
constexpr auto most_patience = 120s;

/// Starts a program whose outputs go to these descriptors.
pid_t start(const std::vector<std::string>& arguments, int out, int err) {
    std::vector<char*> words;
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    const pid_t child = fork();
    if (child != 0)
        return child;
    dup2(out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    // With a sanitizer, too, signals and exit() are to end the process at once.
    const std::string signals = "handle_segv=0:handle_abort=0:handle_sigill=0:handle_sigbus=0:handle_sigfpe=0";
    setenv("ASAN_OPTIONS", signals.c_str(), 1);
    setenv("TSAN_OPTIONS", (signals + ":atexit_sleep_ms=0").c_str(), 1);
    execvp(words[0], words.data());
    _exit(127);
}

std::string all_of(int descriptor) {
    std::string text;
    std::array<char, 4096> block{};
    for (ssize_t got = read(descriptor, block.data(), block.size()); got > 0;
         got = read(descriptor, block.data(), block.size()))
        text.append(block.data(), static_cast<std::size_t>(got));
    return text;
}

int exit_code_of(pid_t process) {
    int status = 0;
    if (waitpid(process, &status, 0) != process)
        return -1;
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

/// The port in "listening on http://127.0.0.1:PORT/cimom"; 0 if there is none.
int port_in(const std::string& text) {
    constexpr std::string_view before = "://127.0.0.1:";
    const std::size_t found = text.find(before);
    return found == std::string::npos || text.find('\n', found) == std::string::npos
               ? 0
               : std::atoi(text.c_str() + found + before.size());
}

/// Waits until something holds, by looking now and then.
template <class Condition>
bool comes_true(Condition holds) {
    const auto end = std::chrono::steady_clock::now() + most_patience;
    while (std::chrono::steady_clock::now() < end) {
        if (holds())
            return true;
        std::this_thread::sleep_for(20ms);
    }
    return false;
}

std::string text_of(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

CommandResult run_command(const std::vector<std::string>& arguments) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return {};
    const pid_t child = start(arguments, ends[1], ends[1]);
    close(ends[1]);
    CommandResult result;
    result.output = all_of(ends[0]);
    close(ends[0]);
    result.exit_code = exit_code_of(child);
    return result;
}

ServerProcess::ServerProcess(const std::vector<std::string>& options) {
    std::string out_file = "/tmp/cmpihost-test-XXXXXX";
    error_file_ = out_file;
    const int out = mkostemp(out_file.data(), O_CLOEXEC);
    const int err = mkostemp(error_file_.data(), O_CLOEXEC);
    std::vector<std::string> arguments{CMPIHOST_PROGRAM, "serve", "--listen", "127.0.0.1:0", "--quiet"};
    arguments.insert(arguments.end(), {"--header-time", "600", "--body-time", "600", "--send-time", "600"});
    if (std::find(options.begin(), options.end(), "--timeout") == options.end())
        arguments.insert(arguments.end(), {"--timeout", "600"});
    arguments.insert(arguments.end(), options.begin(), options.end());
    pid_ = start(arguments, out, err);
    close(out);
    close(err);
    comes_true([this, &out_file] {
        port_ = port_in(text_of(out_file));
        return port_ != 0 || has_ended();
    });
    unlink(out_file.c_str());
}

bool ServerProcess::has_ended() {
    if (pid_ > 0 && waitpid(pid_, nullptr, WNOHANG) == pid_)
        pid_ = -1;
    return pid_ < 0;
}

ServerProcess::~ServerProcess() {
    if (pid_ > 0)
        stop();
    unlink(error_file_.c_str());
}

int ServerProcess::stop() {
    if (pid_ < 0)
        return -1;
    kill(pid_, SIGTERM);
    const int code = exit_code_of(pid_);
    pid_ = -1;
    return code;
}

std::string ServerProcess::errors() const {
    return text_of(error_file_);
}

bool ServerProcess::comes_to_tell(const std::string& text) const {
    return comes_true([&] { return errors().find(text) != std::string::npos; });
}

} // namespace cmpihost
