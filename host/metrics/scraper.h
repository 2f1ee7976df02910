// Scrapes that come at the same time.
#pragma once

#include "host/metrics/scrape.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace cmpihost::metrics {

/// Scrapes that come while one is under way get its text, if it has as much time as they. Several threads may call it;
/// those that wait do so in here, since a question is answered when its function returns, and nothing else lets go of
/// its thread before.
class Scraper {
  public:
    using Scrape = std::function<Scraped(std::chrono::milliseconds time, Scraped spare)>;

    explicit Scraper(Scrape scrape) : scrape_(std::move(scrape)) {}

    /// Hands the text to `take`, piece by piece. It may throw, and so may the scrape.
    void read(std::chrono::milliseconds time, const Pieces::Take& take);

    /// How many have the text of the last scrape, or wait for it.
    unsigned readers();

  private:
    /// A scrape, and those who have its text.
    struct Round {
        Scraped scraped{};
        std::chrono::milliseconds time{}; ///< that it has at most, 0: as long as it takes
        std::exception_ptr failure{};
        bool done = false;
        unsigned readers = 0;
    };

    std::shared_ptr<Round> enter(std::chrono::milliseconds time);
    void run(Round& round, Scraped spare, std::chrono::milliseconds time);
    void leave(Round& round);

    Scrape scrape_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::shared_ptr<Round> round_; ///< under way, or the last one; null: there was none
};

} // namespace cmpihost::metrics
