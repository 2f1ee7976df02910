#include "host/http/users.h"

#include "host/http/file_text.h"
#include "host/http/password_hash.h"

#include <algorithm>
#include <stdexcept>

namespace cmpihost::http {

namespace {

constexpr std::size_t largest_file = std::size_t{1} << 20;
constexpr std::size_t longest_name = 255;

/// Takes the next line off a text, without its end.
std::string_view take_line(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

bool is_entry(std::string_view line) {
    return !line.empty() && line.front() != '#';
}

std::string_view name_in(std::string_view line) {
    return line.substr(0, line.find(':'));
}

void check_mode(const std::string& file, unsigned mode) {
    if ((mode & 0027) != 0)
        throw std::runtime_error(file + ": others may read or change it, expected mode 0600 or 0640");
}

/// The file's lines but for the user's. @param found whether there was one
std::string without_user(std::string_view text, const std::string& user, bool& found) {
    std::string rest;
    found = false;
    while (!text.empty()) {
        const std::string_view line = take_line(text);
        if (is_entry(line) && name_in(line) == user)
            found = true;
        else
            rest.append(line).append("\n");
    }
    return rest;
}

} // namespace

bool is_user_name(std::string_view name) {
    const auto unfit = [](unsigned char c) { return c < 0x20 || c == 0x7f || c == ':'; };
    return !name.empty() && name.size() <= longest_name && name.front() != '#' && std::ranges::none_of(name, unfit);
}

Users Users::read(const std::string& file) {
    const FileText found = read_file(file, largest_file);
    check_mode(file, found.mode);
    return read_text(file, found.text);
}

Users Users::read_text(const std::string& file, std::string_view text) {
    Users users;
    for (unsigned number = 1; !text.empty(); ++number) {
        const std::string_view line = take_line(text);
        if (!is_entry(line))
            continue;
        const auto refuse = [&](const char* what) {
            return std::runtime_error(file + ":" + std::to_string(number) + ": " + what);
        };
        const std::string_view name = name_in(line);
        if (name.size() == line.size() || !is_user_name(name))
            throw refuse("expected USER:HASH");
        const std::string hash(line.substr(name.size() + 1));
        if (!is_usable_hash(hash))
            throw refuse("expected a yescrypt hash of bounded cost, as cmpihost passwd makes it");
        if (!users.hashes_.emplace(name, hash).second)
            throw refuse("the user is there already");
        if (users.decoy_.empty() || cost_of(hash) > cost_of(users.decoy_))
            users.decoy_ = decoy_of(hash);
    }
    return users;
}

const std::string* Users::hash_of(std::string_view user) const {
    const auto found = hashes_.find(user);
    return found == hashes_.end() ? nullptr : &found->second;
}

void set_user(const std::string& file, const std::string& user, const std::string& hash) {
    FileText old;
    if (file_exists(file)) {
        old = read_file(file, largest_file);
        Users::read_text(file, old.text);
    }
    bool found = false;
    replace_file(file, without_user(old.text, user, found) + user + ":" + hash + "\n");
}

void delete_user(const std::string& file, const std::string& user) {
    const FileText old = read_file(file, largest_file);
    bool found = false;
    const std::string rest = without_user(old.text, user, found);
    if (!found)
        throw std::runtime_error(file + ": there is no user " + user);
    replace_file(file, rest);
}

} // namespace cmpihost::http
