#include "host/http/log.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <unistd.h>

namespace cmpihost::http {

namespace {

constexpr std::size_t most_lines = 8'192;
constexpr milliseconds poll_time{100};
constexpr milliseconds end_time{1'000};

int open_log(const std::string& file) {
    return ::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0640);
}

int first_descriptor(const std::string& file) {
    const int opened = file.empty() ? fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0) : open_log(file);
    if (opened < 0 && !file.empty())
        throw std::runtime_error(file + ": the log cannot be opened: " + std::strerror(errno));
    return opened;
}

} // namespace

Log::Log(const LogOptions& options)
    : options_(options), descriptor_(first_descriptor(options.file)), thread_([this] { run(); }) {}

Log::~Log() {
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
        end_ = std::chrono::steady_clock::now() + end_time;
    }
    changed_.notify_one();
    thread_.join();
    if (descriptor_ >= 0)
        close(descriptor_);
}

void Log::record(const LogRecord& record) {
    if (!options_.quiet)
        queue(options_.json ? json_line(record) : text_line(record));
}

void Log::note(std::string_view text) {
    queue(note_text(text));
}

std::string Log::note_text(std::string_view text) const {
    const auto now = std::chrono::system_clock::now();
    return options_.json ? json_note_line(now, text) : note_line(now, text);
}

void Log::queue(std::string line) {
    {
        const std::lock_guard lock(mutex_);
        if (lines_.size() >= most_lines) {
            ++dropped_;
            return;
        }
        lines_.push_back(std::move(line));
    }
    changed_.notify_one();
}

void Log::reopen() {
    {
        const std::lock_guard lock(mutex_);
        reopen_ = true;
    }
    changed_.notify_one();
}

void Log::run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return ended_ || reopen_ || !lines_.empty(); });
        if (std::exchange(reopen_, false))
            open_again();
        if (lines_.empty() && ended_)
            return;
        std::deque<std::string> lines;
        lines.swap(lines_);
        std::uint64_t dropped = std::exchange(dropped_, 0);
        lock.unlock();
        for (const std::string& line : lines)
            if (!put(line + "\n"))
                ++dropped;
        if (dropped > 0 && put(note_text(std::to_string(dropped) + " lines of the log were dropped") + "\n"))
            dropped = 0;
        lock.lock();
        dropped_ += dropped;
    }
}

/// A pipe that is said to take bytes takes PIPE_BUF of them without blocking, and a terminal a line.
bool Log::put(std::string_view text) {
    while (!text.empty()) {
        const bool at_once = gives_up(); // or not at all
        pollfd ready{descriptor_, POLLOUT, 0};
        const int count = poll(&ready, 1, at_once ? 0 : static_cast<int>(poll_time.count()));
        if ((count < 0 && errno != EINTR) || (ready.revents & (POLLERR | POLLNVAL)) != 0)
            return false;
        if (count <= 0 && at_once)
            return false;
        if (count <= 0)
            continue;
        const ssize_t written = ::write(descriptor_, text.data(), std::min<std::size_t>(text.size(), PIPE_BUF));
        if (written < 0 && errno != EINTR && errno != EAGAIN)
            return false;
        text.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return true;
}

void Log::open_again() {
    const int opened = options_.file.empty() ? -1 : open_log(options_.file);
    if (opened < 0)
        return;
    close(descriptor_);
    descriptor_ = opened;
}

bool Log::gives_up() {
    const std::lock_guard lock(mutex_);
    return ended_ && std::chrono::steady_clock::now() > end_;
}

} // namespace cmpihost::http
