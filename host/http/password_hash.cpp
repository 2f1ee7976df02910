#include "host/http/password_hash.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <stdexcept>

#include <crypt.h>

namespace cmpihost::http {

namespace {

/// What hashes begin with at the costs 1 to 7 of crypt_gensalt(); 5 is the default.
constexpr std::array<std::string_view, 7> costs{"$y$j75$", "$y$j85$", "$y$j7T$", "$y$j8T$",
                                                "$y$j9T$", "$y$jAT$", "$y$jBT$"};

constexpr std::size_t prefix_size = 7;
constexpr std::size_t digest_size = 43;
constexpr std::size_t longest_salt = 86;

bool is_hash_digit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '.' || c == '/';
}

bool is_text_of_digits(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, is_hash_digit);
}

/// What the library works in: 32 KiB that hold traces of the password.
struct WorkSpace {
    crypt_data data{};
    WorkSpace() = default;
    ~WorkSpace() { OPENSSL_cleanse(&data, sizeof data); }
    WorkSpace(const WorkSpace&) = delete;
    WorkSpace& operator=(const WorkSpace&) = delete;
};

/// Empty if the library cannot do it.
std::string crypt_with(const Secret& password, const std::string& setting) {
    const auto space = std::make_unique<WorkSpace>();
    const char* hash = crypt_rn(password.c_str(), setting.c_str(), &space->data, sizeof space->data);
    return hash == nullptr ? std::string() : std::string(hash);
}

} // namespace

std::string hash_password(const Secret& password) {
    std::array<char, CRYPT_GENSALT_OUTPUT_SIZE> setting{};
    std::string hash;
    if (crypt_gensalt_rn("$y$", 0, nullptr, 0, setting.data(), static_cast<int>(setting.size())) != nullptr)
        hash = crypt_with(password, setting.data());
    if (hash.empty())
        throw std::runtime_error(std::string("the password cannot be hashed: ") + std::strerror(errno));
    return hash;
}

unsigned cost_of(std::string_view hash) {
    const auto* found = std::ranges::find(costs, hash.substr(0, prefix_size));
    return static_cast<unsigned>(found - costs.begin());
}

bool is_usable_hash(std::string_view hash) {
    if (cost_of(hash) == costs.size())
        return false;
    const std::string_view rest = hash.substr(prefix_size);
    const std::size_t dollar = rest.find('$');
    return dollar <= longest_salt && is_text_of_digits(rest.substr(0, dollar)) &&
           rest.size() - dollar - 1 == digest_size && is_text_of_digits(rest.substr(dollar + 1));
}

std::string decoy_of(std::string_view hash) {
    return std::string(hash.substr(0, hash.rfind('$') + 1)) + std::string(digest_size, '.');
}

bool matches(const Secret& password, const std::string& hash) {
    const std::string found = crypt_with(password, hash);
    return found.size() == hash.size() && CRYPTO_memcmp(found.data(), hash.data(), hash.size()) == 0;
}

} // namespace cmpihost::http
