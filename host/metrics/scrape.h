// What a scrape of /metrics gets.
#pragma once

#include "host/metrics/plan.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace cmpihost::metrics {

/// The text of a scrape, in parts.
using Parts = std::vector<std::string>;

/// Enumerates the classes of some plans, each once. A class that fails has no samples, and a gauge says so.
/// @param time that the client waits, 0: for ever. Classes whose turn comes when most of it is over are not asked, and
/// have failed.
Parts scrape(const std::vector<ClassPlan>& plans, std::chrono::milliseconds time);

/// How often the providers were asked, and how long they took.
std::string providers_text(const server::Catalogue& catalogue);

/// Scrapes that come while one is under way get its text. Several threads may call it.
class Scraper {
  public:
    using Scrape = std::function<Parts(std::chrono::milliseconds time)>;

    explicit Scraper(Scrape scrape) : scrape_(std::move(scrape)) {}

    std::shared_ptr<const Parts> parts(std::chrono::milliseconds time);

    /// How many wait for the scrape that is under way.
    unsigned waiting();

  private:
    struct Round {
        std::shared_ptr<const Parts> parts{};
        std::exception_ptr failure{};
        bool done = false;
        unsigned waiting = 0;
    };

    std::shared_ptr<const Parts> run(const std::shared_ptr<Round>& round, std::chrono::milliseconds time);

    Scrape scrape_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::shared_ptr<Round> round_; ///< under way; null: none
};

} // namespace cmpihost::metrics
