// What a scrape of /metrics gets.
#pragma once

#include "host/metrics/class_samples.h"

#include <chrono>

namespace cmpihost::metrics {

/// What a scrape got, and the memory for another one of the same plans.
struct Scraped {
    std::vector<ClassSamples> classes{}; ///< one for each plan
    Text figures{};                      ///< how the classes were asked

    /// Hands the text to `take`, piece by piece.
    void give(const Pieces::Take& take) const;
};

/// Enumerates the classes of some plans, each once with each provider that serves it. A class that fails with one of
/// them has no samples, and a gauge says so; that a provider does not support a class is no failure if another does.
/// @param plans outlive what is returned
/// @param time that the client waits, 0: for ever. Classes whose turn comes when most of it is over are not asked, and
/// have failed.
/// @param spare of a scrape before of the same plans
Scraped scrape(const std::vector<ClassPlan>& plans, std::chrono::milliseconds time, Scraped spare = {});

/// How often the providers were asked, and how long they took.
Text providers_text(const server::Catalogue& catalogue);

} // namespace cmpihost::metrics
