// Files that are read and written whole.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace switchsim {

/// A file's contents, at most 64 MB; or the reason why there are none.
std::optional<std::string> read_file(const std::string& name, std::string& reason);

/// Puts a text in a file's place, or leaves the file as it was. Devices and pipes are written to.
/// @return empty, or the reason why it is not written
std::string replace_file(const std::string& name, std::string_view text);

} // namespace switchsim
