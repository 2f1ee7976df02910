// Who may ask.
#pragma once

#include "host/http/address.h"
#include "host/http/basic.h"
#include "host/http/hasher.h"
#include "host/http/penalties.h"
#include "host/http/users.h"
#include "host/http/verified.h"

#include <memory>

namespace cmpihost::http {

/// What becomes of a request's credentials.
enum class Verdict {
    accepted,
    refused, ///< none, unknown user or wrong password: nobody learns which
    slowed,  ///< too many failures from that address
    busy,    ///< too many passwords wait
};

/// Checks credentials without blocking the event loop, on whose thread it is used.
class Login {
  public:
    using Done = std::function<void(Verdict, const std::string& user)>;

    Login(boost::asio::io_context& context, const LoginLimits& limits, Users users);

    /// Calls `done` at once or later.
    /// @param authorization the header's value; empty if there was none
    void check(const Source& source, const Secret& authorization, Done done);

    /// How long an address is slowed yet.
    milliseconds slowed(const Source& source) const { return penalties_.in_force(source); }

    void replace(Users users) { users_ = std::move(users); }

  private:
    using Waiting = std::vector<std::function<void(bool)>>;

    void hash(const Source& source, Credentials credentials, const std::string* stored, const Verified::Digest& digest,
              Done done);
    void hashed(const Verified::Digest& digest, bool right, bool known_user);

    Users users_;
    Penalties penalties_;
    Verified verified_;
    std::map<Verified::Digest, Waiting> waiting_; ///< who waits for the same credentials
    Hasher hasher_;
};

} // namespace cmpihost::http
