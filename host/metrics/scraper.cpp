#include "host/metrics/scraper.h"

#include <exception>

namespace cmpihost::metrics {

void Scraper::run(Round& round, Scraped spare, std::chrono::milliseconds time) {
    try {
        round.scraped = scrape_(time, std::move(spare));
    } catch (...) {
        round.failure = std::current_exception();
    }
    const std::lock_guard lock(mutex_);
    round.done = true;
    changed_.notify_all();
}

namespace {

/// Whether a scrape of so much time has no less than another; 0 is for ever.
bool is_enough(std::chrono::milliseconds time, std::chrono::milliseconds wanted) {
    return time.count() == 0 || (wanted.count() != 0 && time >= wanted);
}

} // namespace

/// Joins the scrape that is under way, or starts one. One that has less time than this one may is waited for.
std::shared_ptr<Scraper::Round> Scraper::enter(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    while (round_ != nullptr && !round_->done) {
        std::shared_ptr<Round> round = round_;
        ++round->readers;
        changed_.wait(lock, [&round] { return round->done; });
        if (is_enough(round->time, time))
            return round;
        --round->readers;
    }
    Scraped spare;
    if (round_ != nullptr && round_->readers == 0)
        spare = std::move(round_->scraped);
    auto round = round_ = std::make_shared<Round>();
    round->time = time;
    ++round->readers;
    lock.unlock();
    run(*round, std::move(spare), time);
    return round;
}

void Scraper::leave(Round& round) {
    const std::lock_guard lock(mutex_);
    --round.readers;
}

unsigned Scraper::readers() {
    const std::lock_guard lock(mutex_);
    return round_ == nullptr ? 0 : round_->readers;
}

void Scraper::read(std::chrono::milliseconds time, const Pieces::Take& take) {
    const std::shared_ptr<Round> round = enter(time);
    try {
        if (round->failure)
            std::rethrow_exception(round->failure);
        round->scraped.give(take);
    } catch (...) {
        leave(*round);
        throw;
    }
    leave(*round);
}

} // namespace cmpihost::metrics
