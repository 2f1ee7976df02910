#include "host/http/file_text.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cmpihost::http {

namespace {

std::runtime_error failed(const std::string& file, const char* what) {
    return std::runtime_error(file + ": " + what + ": " + std::strerror(errno));
}

/// Closes when it goes.
struct Descriptor {
    int number;
    explicit Descriptor(int opened) : number(opened) {}
    ~Descriptor() {
        if (number >= 0)
            close(number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
};

bool write_all(int descriptor, const std::string& text) {
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(descriptor, text.data() + written, text.size() - written);
        if (count < 0 && errno != EINTR)
            return false;
        written += count < 0 ? 0 : static_cast<std::size_t>(count);
    }
    return true;
}

/// Mode, owner and group of the file that is replaced. Who may not give files away owns the new one alone.
bool keep_access(const std::string& old_file, int new_file) {
    struct stat old {};
    if (stat(old_file.c_str(), &old) != 0)
        return errno == ENOENT;
    if (fchown(new_file, old.st_uid, old.st_gid) != 0)
        return errno == EPERM;
    return fchmod(new_file, old.st_mode & 0640) == 0;
}

} // namespace

bool file_exists(const std::string& file) {
    struct stat status {};
    return stat(file.c_str(), &status) == 0 || errno != ENOENT;
}

FileText read_file(const std::string& file, std::size_t largest) {
    const Descriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (opened.number < 0 || fstat(opened.number, &status) != 0)
        throw failed(file, "cannot be read");
    if (!S_ISREG(status.st_mode) || static_cast<std::uint64_t>(status.st_size) > largest)
        throw std::runtime_error(file + ": expected a file of at most " + std::to_string(largest) + " bytes");
    FileText found{std::string(static_cast<std::size_t>(status.st_size), '\0'), status.st_mode & 07777};
    std::size_t size = 0;
    while (size < found.text.size()) {
        const ssize_t count = read(opened.number, found.text.data() + size, found.text.size() - size);
        if (count < 0 && errno != EINTR)
            throw failed(file, "cannot be read");
        if (count == 0)
            break;
        size += count < 0 ? 0 : static_cast<std::size_t>(count);
    }
    found.text.resize(size);
    return found;
}

void replace_file(const std::string& file, const std::string& text) {
    std::string beside = file + ".XXXXXX";
    const Descriptor made(mkostemp(beside.data(), O_CLOEXEC));
    if (made.number < 0)
        throw failed(file, "cannot be written");
    if (!write_all(made.number, text) || !keep_access(file, made.number) || fsync(made.number) != 0 ||
        rename(beside.c_str(), file.c_str()) != 0) {
        const auto error = failed(file, "cannot be written");
        unlink(beside.c_str());
        throw error;
    }
}

} // namespace cmpihost::http
