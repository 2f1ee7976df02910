#include "host/pages/timed_ask.h"

#include "host/pages/objects.h"

#include <algorithm>

namespace cmpihost::pages {

std::chrono::milliseconds within_request(const SiteSettings& settings, std::chrono::milliseconds time) {
    return std::min(time, settings.timeout / 2);
}

TimedAsk::TimedAsk(const server::Namespace& space, const SiteSettings& settings)
    : space_(space), until_(std::chrono::steady_clock::now() + within_request(settings, settings.walking)) {}

Answer TimedAsk::operator()(const Request& request) {
    if (std::chrono::steady_clock::now() < until_)
        return ask(space_, request);
    late_ = true;
    return {};
}

} // namespace cmpihost::pages
