#include "host/worker/spawn.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <system_error>

extern "C" { // which the header of glibc 2.36 forgets to say
#include <sys/pidfd.h>
}

namespace cmpihost::worker {

namespace {

constexpr int worker_socket = 3;

void check(int error, const std::string& what) {
    if (error != 0)
        throw std::system_error(error, std::generic_category(), what);
}

/// What becomes of descriptors, signals and process group.
class SpawnSettings {
  public:
    explicit SpawnSettings(int socket) {
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, socket, worker_socket);
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&actions, worker_socket + 1);
        sigset_t signals;
        posix_spawnattr_init(&attributes);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes, &signals);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes, &signals);
        posix_spawnattr_setpgroup(&attributes, 0);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
    }

    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }

    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
};

pid_t spawn_with(const std::vector<std::string>& command, int socket) {
    const SpawnSettings settings(socket);
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    pid_t pid = -1;
    check(posix_spawn(&pid, arguments[0], &settings.actions, &settings.attributes, arguments.data(), environ),
          command.front() + " cannot be started");
    return pid;
}

} // namespace

Process spawn(const std::vector<std::string>& command) {
    std::array<int, 2> ends{};
    check(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) == 0 ? 0 : errno, "no socket pair");
    const int room = 1 << 20; // or what the system allows: replies come faster than the front takes them
    setsockopt(ends[1], SOL_SOCKET, SO_SNDBUF, &room, sizeof room);
    Process process;
    process.socket = ends[0];
    try {
        process.pid = spawn_with(command, ends[1]);
        process.pidfd = pidfd_open(process.pid, 0);
        check(process.pidfd >= 0 ? 0 : errno, "no descriptor for a process");
    } catch (...) {
        if (process.pid > 0) {
            kill(process.pid, SIGKILL);
            reap(process.pid);
        }
        close(ends[0]);
        close(ends[1]);
        throw;
    }
    close(ends[1]);
    return process;
}

void send_signal(const Process& process, int number) {
    pidfd_send_signal(process.pidfd, number, nullptr, 0);
}

std::string reap(pid_t pid) {
    int status = 0;
    while (waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR)
            return "ended";
    }
    if (!WIFSIGNALED(status))
        return "ended with exit status " + std::to_string(WEXITSTATUS(status));
    const char* name = sigabbrev_np(WTERMSIG(status));
    return name == nullptr ? "ended with signal " + std::to_string(WTERMSIG(status))
                           : "ended with SIG" + std::string(name);
}

} // namespace cmpihost::worker
