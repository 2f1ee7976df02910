// Pages and metrics, from a request's target to the bytes of a reply.
#pragma once

#include "host/pages/site_settings.h"
#include "host/server/question.h"

#include <memory>

namespace cmpihost::server {
class Catalogue;
}

namespace cmpihost::pages {

/// Answers several requests at once, each on the thread that asks.
class Site {
  public:
    /// @param catalogue outlives the site
    /// @throws std::runtime_error whose what() is one line: views that cannot be used, classes that cannot be measured
    Site(const server::Catalogue& catalogue, const SiteSettings& settings);
    ~Site();
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;

    /// Answers a request with a page. Its subject is the path.
    server::Outcome answer(const server::Question& question, server::ReplySink& sink) const;

  private:
    class State;
    std::unique_ptr<State> state_;
};

} // namespace cmpihost::pages
