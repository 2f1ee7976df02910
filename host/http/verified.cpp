#include "host/http/verified.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace cmpihost::http {

Verified::Verified(const LoginLimits& limits, Clock clock) : limits_(limits), clock_(std::move(clock)) {
    if (RAND_bytes(key_.data(), static_cast<int>(key_.size())) != 1)
        throw std::runtime_error("there are no random numbers");
}

Verified::~Verified() {
    OPENSSL_cleanse(key_.data(), key_.size());
}

Verified::Digest Verified::digest(std::string_view user, const Secret& password, std::string_view hash) const {
    // None of the three has a null byte, so that the joined text tells them apart.
    std::vector<char> joined;
    joined.reserve(user.size() + password.view().size() + hash.size() + 3);
    for (const std::string_view part : {user, password.view(), hash}) {
        joined.insert(joined.end(), part.begin(), part.end());
        joined.push_back('\0');
    }
    Digest digest{};
    unsigned size = 0;
    const auto* made = HMAC(EVP_sha256(), key_.data(), static_cast<int>(key_.size()),
                            reinterpret_cast<const unsigned char*>(joined.data()), joined.size(), digest.data(), &size);
    OPENSSL_cleanse(joined.data(), joined.size());
    if (made == nullptr)
        throw std::runtime_error("no digest can be made");
    return digest;
}

bool Verified::knows(const Digest& digest) const {
    const auto found = ends_.find(digest);
    return found != ends_.end() && found->second > clock_();
}

void Verified::remember(const Digest& digest) {
    const auto now = clock_();
    std::erase_if(ends_, [now](const auto& row) { return row.second <= now; });
    if (ends_.size() >= limits_.remembered_passwords)
        ends_.erase(std::ranges::min_element(ends_, {}, [](const auto& row) { return row.second; }));
    ends_[digest] = now + limits_.remembered;
}

} // namespace cmpihost::http
