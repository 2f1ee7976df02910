// Users files: read whole or refused in one line.
#include "host/http/users.h"

#include "fuzz/invariant.h"
#include "host/http/password_hash.h"

#include <stdexcept>

namespace {

using namespace cmpihost::http;

/// Each line that is an entry is a user.
void check(const Users& users, std::string_view text) {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (line.empty() || line.front() == '#')
            continue;
        const std::string* hash = users.hash_of(line.substr(0, line.find(':')));
        fuzz::require(hash != nullptr && line.ends_with(*hash), "each entry is a user");
        fuzz::require(is_usable_hash(*hash) && is_usable_hash(users.decoy()), "hashes have a bounded cost");
        fuzz::require(cost_of(users.decoy()) >= cost_of(*hash), "the decoy is as costly as any");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        check(Users::read_text("users", text), text);
    } catch (const std::runtime_error& error) {
        fuzz::require(fuzz::is_one_line(error.what()) && std::string_view(error.what()).starts_with("users:"),
                      "an error is one line that begins with the file");
    }
    return 0;
}
