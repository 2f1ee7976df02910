// The file of users and their passwords' hashes.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace cmpihost::http {

/// Users by name, each with the hash of the password. A file has one line `USER:HASH` for each; empty lines and lines
/// that begin with # are read over.
class Users {
  public:
    /// Reads a file that nobody but its owner and group may read, and nobody but its owner may write.
    /// @throws std::runtime_error "FILE: ..." or "FILE:LINE: ...", one line
    static Users read(const std::string& file);

    /// @param file for errors
    /// @throws std::runtime_error "FILE:LINE: ..."
    static Users read_text(const std::string& file, std::string_view text);

    /// Null if there is no such user.
    const std::string* hash_of(std::string_view user) const;

    /// What the password of an unknown user is compared with: as costly as the costliest, and nobody's.
    const std::string& decoy() const { return decoy_; }

    bool empty() const { return hashes_.empty(); }

  private:
    std::map<std::string, std::string, std::less<>> hashes_;
    std::string decoy_;
};

/// Whether a name can stand in the file: 1 to 255 bytes, no colon, no control character, no # in front.
bool is_user_name(std::string_view name);

/// Sets a user's hash in a file, which is made (mode 0600) if it is not there. It is written anew beside the old one
/// and then takes its place, with the old one's mode, and owner and group where that is allowed.
/// @throws std::runtime_error whose what() is one line
void set_user(const std::string& file, const std::string& user, const std::string& hash);

/// Takes a user out of a file. @throws std::runtime_error whose what() is one line: there is none
void delete_user(const std::string& file, const std::string& user);

} // namespace cmpihost::http
