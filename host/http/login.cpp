#include "host/http/login.h"

namespace cmpihost::http {

Login::Login(boost::asio::io_context& context, const LoginLimits& limits, Users users)
    : users_(std::move(users)), penalties_(limits.penalties), verified_(limits), hasher_(context, limits.waiting) {}

void Login::check(const Source& source, const Secret& authorization, Done done) {
    if (authorization.view().empty())
        return done(Verdict::refused, {}); // many clients ask without credentials first
    auto credentials = read_basic(authorization.view());
    if (!credentials) {
        penalties_.add(source);
        return done(Verdict::refused, {});
    }
    const std::string* stored = users_.hash_of(credentials->user);
    const auto digest =
        verified_.digest(credentials->user, credentials->password, stored == nullptr ? users_.decoy() : *stored);
    if (verified_.knows(digest))
        return done(Verdict::accepted, credentials->user);
    if (penalties_.in_force(source) > milliseconds{0})
        return done(Verdict::slowed, credentials->user);
    hash(source, std::move(*credentials), stored, digest, std::move(done));
}

void Login::hash(const Source& source, Credentials credentials, const std::string* stored,
                 const Verified::Digest& digest, Done done) {
    const auto found = waiting_.find(digest);
    if (found == waiting_.end() &&
        !hasher_.submit({std::move(credentials.password), stored == nullptr ? users_.decoy() : *stored},
                        [this, digest, known = stored != nullptr](bool right) { hashed(digest, right, known); }))
        return done(Verdict::busy, credentials.user);
    waiting_[digest].push_back([this, source, user = std::move(credentials.user), done = std::move(done)](bool right) {
        if (!right)
            penalties_.add(source);
        done(right ? Verdict::accepted : Verdict::refused, user);
    });
}

void Login::hashed(const Verified::Digest& digest, bool right, bool known_user) {
    const bool accepted = right && known_user;
    if (accepted)
        verified_.remember(digest);
    const auto waiting = waiting_.extract(digest);
    for (const auto& done : waiting.mapped())
        done(accepted);
}

} // namespace cmpihost::http
