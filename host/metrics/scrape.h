// What a scrape of /metrics gets.
#pragma once

#include "host/metrics/class_samples.h"

#include <chrono>

namespace cmpihost::metrics {

/// Enumerates the classes of some plans, each once with each provider that serves it. A class that fails with one of
/// them has no samples, and a gauge says so; that a provider does not support a class is no failure if another does.
/// @param time that the client waits, 0: for ever. Classes whose turn comes when most of it is over are not asked, and
/// have failed.
/// @param labels what stands there is lost: its memory alone is used
/// @param spare of a scrape before, whose memory is used again: fresh memory would cost more than what is written there
Parts scrape(const std::vector<ClassPlan>& plans, std::chrono::milliseconds time, Lines& labels, Parts spare = {});

/// How often the providers were asked, and how long they took.
std::string providers_text(const server::Catalogue& catalogue);

} // namespace cmpihost::metrics
