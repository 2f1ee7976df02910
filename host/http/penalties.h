// Slows down who guesses passwords.
#pragma once

#include "host/http/address.h"

#include <functional>
#include <string_view>
#include <unordered_map>

namespace cmpihost::http {

/// What failed logins cost each address. Penalties add up and go with time.
class Penalties {
  public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    explicit Penalties(const PenaltyLimits& limits, Clock clock = std::chrono::steady_clock::now);

    /// How long logins from there are refused yet; zero if they are not.
    milliseconds in_force(const Source& source) const;

    /// A login from there failed. A table that is full takes no more addresses.
    void add(const Source& source);

  private:
    using Time = std::chrono::steady_clock::time_point;
    struct Hash {
        std::size_t operator()(const Source& source) const;
    };

    void drop_expired(Time now);

    PenaltyLimits limits_;
    Clock clock_;
    std::unordered_map<Source, Time, Hash> ends_;
    Time looked_through_{};
};

} // namespace cmpihost::http
