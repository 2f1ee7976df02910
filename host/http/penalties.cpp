#include "host/http/penalties.h"

namespace cmpihost::http {

namespace {

milliseconds rest(std::chrono::steady_clock::time_point end, std::chrono::steady_clock::time_point now) {
    return end > now ? std::chrono::ceil<milliseconds>(end - now) : milliseconds{0};
}

} // namespace

std::size_t Penalties::Hash::operator()(const Source& source) const {
    return std::hash<std::string_view>()({reinterpret_cast<const char*>(source.data()), source.size()});
}

Penalties::Penalties(const PenaltyLimits& limits, Clock clock) : limits_(limits), clock_(std::move(clock)) {}

milliseconds Penalties::in_force(const Source& source) const {
    const auto found = ends_.find(source);
    if (found == ends_.end())
        return milliseconds{0};
    const milliseconds penalty = rest(found->second, clock_());
    return penalty > limits_.tolerated ? penalty - limits_.tolerated : milliseconds{0};
}

void Penalties::add(const Source& source) {
    const Time now = clock_();
    auto found = ends_.find(source);
    if (found == ends_.end()) {
        if (ends_.size() >= limits_.addresses)
            drop_expired(now);
        if (ends_.size() >= limits_.addresses)
            return;
        found = ends_.emplace(source, now).first;
    }
    found->second = now + std::min(rest(found->second, now) + limits_.failure, limits_.most);
}

/// Once a second at most, since it looks at the whole table.
void Penalties::drop_expired(Time now) {
    if (now - looked_through_ < seconds{1})
        return;
    looked_through_ = now;
    std::erase_if(ends_, [now](const auto& row) { return row.second <= now; });
}

} // namespace cmpihost::http
