#include "simulator/files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

#include <unistd.h>

namespace switchsim {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t largest_file = 64 << 20;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File opened(const std::string& name, const char* mode) {
    return {std::fopen(name.c_str(), mode), std::fclose};
}

/// 0, or what went wrong.
int write_file(const std::string& name, std::string_view text) {
    File file = opened(name, "wb");
    if (!file)
        return errno;
    const bool written =
        std::fwrite(text.data(), 1, text.size(), file.get()) == text.size() && std::fflush(file.get()) == 0;
    const int error = errno;
    if (std::fclose(file.release()) != 0)
        return written ? errno : error;
    return written ? 0 : error;
}

/// The same for what replaces a file, or where there is none.
int write_beside(const std::string& name, std::string_view text, fs::file_status status) {
    std::error_code ignored;
    const fs::path target = fs::exists(status) ? fs::canonical(name, ignored) : fs::path(name);
    const std::string beside = target.string() + "." + std::to_string(getpid());
    int error = write_file(beside, text);
    if (error == 0 && fs::exists(status))
        fs::permissions(beside, status.permissions(), ignored);
    if (error == 0 && std::rename(beside.c_str(), target.c_str()) != 0)
        error = errno;
    if (error != 0)
        unlink(beside.c_str());
    return error;
}

} // namespace

std::optional<std::string> read_file(const std::string& name, std::string& reason) {
    const File file = opened(name, "rb");
    std::string text;
    char block[16384];
    std::size_t got = 1;
    while (file && got > 0 && text.size() <= largest_file) {
        got = std::fread(block, 1, sizeof block, file.get());
        text.append(block, got);
    }
    if (!file || std::ferror(file.get())) {
        reason = std::strerror(errno);
        return std::nullopt;
    }
    if (text.size() > largest_file) {
        reason = "larger than 64 MB";
        return std::nullopt;
    }
    return text;
}

std::string replace_file(const std::string& name, std::string_view text) {
    std::error_code ignored;
    const fs::file_status status = fs::status(name, ignored);
    const bool in_place = fs::exists(status) && !fs::is_regular_file(status);
    const int error = in_place ? write_file(name, text) : write_beside(name, text, status);
    return error == 0 ? std::string() : std::strerror(error);
}

} // namespace switchsim
