#include "simulator/control.h"

#include "simulator/lock.h"
#include "simulator/switchsim.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <thread>

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace switchsim {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int patience = 50;                         ///< milliseconds between two looks at whether it is over
constexpr int longest_silence = 5000 / patience;     ///< of a client, in such looks
constexpr std::chrono::seconds longest_exchange(30); ///< with a client: others wait
constexpr std::size_t longest_command = 1 << 26;     ///< bytes

constexpr int pause_of_tries = 1000 / patience; ///< to have the socket, in such looks

void complain_about(const std::string& file, int error) {
    std::fprintf(stderr, "switchsim: %s: %s\n", file.c_str(), std::strerror(error));
}

std::optional<sockaddr_un> address_of(const std::string& file) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (file.size() >= sizeof address.sun_path)
        return std::nullopt;
    std::memcpy(address.sun_path, file.c_str(), file.size());
    return address;
}

const sockaddr* generic(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

/// Whether the file is a socket that nobody listens to any more.
bool is_left_over(const std::string& file, const sockaddr_un& address) {
    struct stat status {};
    if (lstat(file.c_str(), &status) != 0 || !S_ISSOCK(status.st_mode))
        return false;
    const int probe = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool refused = connect(probe, generic(address), sizeof address) != 0 && errno == ECONNREFUSED;
    close(probe);
    return refused;
}

/// A socket that listens at the file, with mode 0600 from the beginning; -1 if it cannot be had, and errno says why.
int listen_at(const std::string& file) {
    const auto address = address_of(file);
    if (!address) {
        errno = ENAMETOOLONG;
        return -1;
    }
    if (is_left_over(file, *address))
        unlink(file.c_str());
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool bound = listener >= 0 && fchmod(listener, S_IRUSR | S_IWUSR) == 0 &&
                       bind(listener, generic(*address), sizeof *address) == 0 &&
                       chmod(file.c_str(), S_IRUSR | S_IWUSR) == 0 && listen(listener, 8) == 0;
    if (bound)
        return listener;
    const int error = errno;
    if (listener >= 0)
        close(listener);
    errno = error;
    return -1;
}

class Control {
  public:
    ~Control() {
        ending_ = true;
        if (thread_.joinable())
            thread_.join();
    }

    void open(const std::string& file) {
        file_ = file;
        listener_ = listen_at(file);
        if (listener_ < 0)
            complain_about(file, errno);
        thread_ = std::thread([this] {
            wait_for_socket();
            serve();
        });
    }

  private:
    /// Another process has it, which hangs perhaps, and is being replaced by this one.
    void wait_for_socket() {
        for (int looks = 1; listener_ < 0 && !ending_; ++looks) {
            std::this_thread::sleep_for(std::chrono::milliseconds(patience));
            if (looks % pause_of_tries == 0)
                listener_ = listen_at(file_);
        }
    }

    void serve() {
        while (!ending_) {
            pollfd waiting{listener_, POLLIN, 0};
            if (poll(&waiting, 1, patience) <= 0)
                continue;
            const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
            if (client < 0) { // there may be no descriptor left
                std::this_thread::sleep_for(std::chrono::milliseconds(patience));
                continue;
            }
            answer(client);
            close(client);
        }
        if (listener_ < 0)
            return;
        unlink(file_.c_str()); // while nobody else can have made it
        close(listener_);
    }

    void answer(int client) {
        const Clock::time_point end = Clock::now() + longest_exchange;
        try {
            std::vector<std::string> words;
            if (!receive(client, words, end))
                return;
            const CommandResult result = run(words);
            send_all(client, (result.good ? "0" : "1") + result.text + '\0', end);
        } catch (const std::exception&) {
            constexpr char failed[] = "1not enough memory for the command";
            send_all(client, {failed, sizeof failed}, end);
        }
    }

    bool may_go_on(int silence, Clock::time_point end) const {
        return silence < longest_silence && !ending_ && Clock::now() < end;
    }

    /// The words that a client sends; false for one that says nothing for seconds, takes too long, or says too much.
    bool receive(int client, std::vector<std::string>& words, Clock::time_point end) const {
        std::string text;
        for (int silence = 0; may_go_on(silence, end) && text.size() <= longest_command;) {
            pollfd waiting{client, POLLIN, 0};
            char block[16384];
            if (poll(&waiting, 1, patience) <= 0) {
                ++silence;
                continue;
            }
            const ssize_t got = read(client, block, sizeof block);
            if (got < 0)
                return false;
            if (got == 0) {
                for (std::size_t at = 0, zero = 0; (zero = text.find('\0', at)) != std::string::npos; at = zero + 1)
                    words.push_back(text.substr(at, zero - at));
                return true;
            }
            text.append(block, static_cast<std::size_t>(got));
        }
        return false;
    }

    /// Runs a command between two requests. The process may end while somebody holds the lock.
    CommandResult run(const std::vector<std::string>& words) const {
        while (!try_lock_switch()) {
            if (ending_)
                return {false, "the process ends"};
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        struct Unlock {
            ~Unlock() { unlock_switch(); }
        } const unlock;
        return command(words);
    }

    /// A client that takes nothing for seconds, or too long, loses what is left: others wait for their turn.
    void send_all(int client, std::string_view text, Clock::time_point end) const {
        for (int silence = 0; may_go_on(silence, end) && !text.empty();) {
            pollfd waiting{client, POLLOUT, 0};
            if (poll(&waiting, 1, patience) <= 0) {
                ++silence;
                continue;
            }
            const ssize_t sent = send(client, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
            if (sent < 0 && errno != EAGAIN)
                return;
            text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(sent, 0)));
            silence = 0;
        }
    }

    std::string file_;
    int listener_ = -1;
    std::atomic<bool> ending_ = false;
    std::thread thread_;
};

} // namespace

void open_control() {
    const char* file = std::getenv("SWITCHSIM_CONTROL");
    if (!file || !*file)
        return;
    static Control control;
    static const bool opened = (control.open(file), true);
    static_cast<void>(opened);
}

} // namespace switchsim
