// Passwords that were found right a moment ago.
#pragma once

#include "host/http/options.h"
#include "host/http/secret.h"

#include <array>
#include <functional>
#include <map>

namespace cmpihost::http {

/// Remembers credentials as digests under a key that nobody knows, for a while.
class Verified {
  public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;
    using Digest = std::array<unsigned char, 32>;

    explicit Verified(const LoginLimits& limits, Clock clock = std::chrono::steady_clock::now);
    ~Verified();
    Verified(const Verified&) = delete;
    Verified& operator=(const Verified&) = delete;

    /// Of user, password and stored hash, so that a changed password is another.
    Digest digest(std::string_view user, const Secret& password, std::string_view hash) const;

    bool knows(const Digest& digest) const;
    void remember(const Digest& digest);

  private:
    LoginLimits limits_;
    Clock clock_;
    std::array<unsigned char, 32> key_{};
    std::map<Digest, std::chrono::steady_clock::time_point> ends_;
};

} // namespace cmpihost::http
