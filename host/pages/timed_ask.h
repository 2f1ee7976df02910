// Asking for as long as there is time.
#pragma once

#include "host/broker/broker.h"
#include "host/pages/site_settings.h"
#include "host/server/catalogue.h"

namespace cmpihost::pages {

/// What a part of a page may take of a time, so that the rest of it comes within the request's timeout.
std::chrono::milliseconds within_request(const SiteSettings& settings, std::chrono::milliseconds time);

/// Asks those who serve a class until it is too late; then nobody knows anything more.
class TimedAsk {
  public:
    TimedAsk(const server::Namespace& space, const SiteSettings& settings);

    Answer operator()(const Request& request);

    /// Whether something was not asked any more.
    bool is_late() const { return late_; }

  private:
    const server::Namespace& space_;
    std::chrono::steady_clock::time_point until_;
    bool late_ = false;
};

} // namespace cmpihost::pages
