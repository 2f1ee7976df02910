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
/// @param spare of a scrape before, whose memory is used again: fresh memory would cost more than what is written there
Parts scrape(const std::vector<ClassPlan>& plans, std::chrono::milliseconds time, Parts spare = {});

/// How often the providers were asked, and how long they took.
std::string providers_text(const server::Catalogue& catalogue);

/// Scrapes that come while one is under way get its text. Several threads may call it.
class Scraper {
  public:
    using Scrape = std::function<Parts(std::chrono::milliseconds time, Parts spare)>;

    explicit Scraper(Scrape scrape) : scrape_(std::move(scrape)) {}

    /// Hands the text to `take`, which may throw, and so may the scrape.
    void read(std::chrono::milliseconds time, const std::function<void(const Parts& parts)>& take);

    /// How many have the text of the last scrape, or wait for it.
    unsigned readers();

  private:
    /// A scrape, and those who have its text.
    struct Round {
        Parts parts{};
        std::exception_ptr failure{};
        bool done = false;
        unsigned readers = 0;
    };

    std::shared_ptr<Round> enter(std::chrono::milliseconds time);
    void run(Round& round, Parts spare, std::chrono::milliseconds time);
    void leave(Round& round);

    Scrape scrape_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::shared_ptr<Round> round_; ///< under way, or the last one; null: there was none
};

} // namespace cmpihost::metrics
