#include "simulator/live.h"

#include "simulator/commands.h"
#include "simulator/counters.h"
#include "simulator/state.h"
#include "simulator/statistics_layout.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace switchsim {
namespace {

using WallClock = std::chrono::steady_clock;

enum class Mode { unknown, wall, stopped };
Mode mode = Mode::unknown;
WallClock::time_point began; ///< when the switch's clock was at began_at
std::uint64_t began_at = 0;

bool is_stopped() {
    if (mode == Mode::unknown) {
        const char* wanted = std::getenv("SWITCHSIM_CLOCK");
        mode = wanted && std::string_view(wanted) == "manual" ? Mode::stopped : Mode::wall;
    }
    return mode == Mode::stopped;
}

std::uint64_t wall_time() {
    const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(WallClock::now() - began);
    return began_at + static_cast<std::uint64_t>(passed.count());
}

/// A number from 0 to 1 that seed, counter and period always give.
double chance(std::uint64_t seed, const CounterPlace& place, std::uint64_t period) {
    std::uint64_t mixed = seed;
    for (const std::uint64_t part :
         {std::uint64_t{static_cast<std::uint8_t>(place.table)},
          std::uint64_t{place.row.first} << 32 | place.row.second, std::uint64_t{place.offset}, period}) {
        mixed = (mixed ^ part) + 0x9E3779B97F4A7C15;
        mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EB;
        mixed ^= mixed >> 31;
    }
    return static_cast<double>(mixed >> 11) / 9007199254740992.0;
}

/// The value at a time. Values of a counter only rise: none is ahead by more than a period's amount.
std::uint64_t value_at(const CounterPlace& place, const Rate& rate, std::uint64_t seed, std::uint64_t now) {
    const std::uint64_t periods = (now - rate.since) / rate.period;
    if (periods == 0)
        return rate.start;
    const std::uint64_t passed = periods * rate.period;
    const std::uint64_t counted = rate.per_second * (passed / 1000) + rate.per_second * (passed % 1000) / 1000;
    const double most = static_cast<double>(rate.per_second) * rate.period / 1000 * rate.jitter / 100;
    return rate.start + counted + static_cast<std::uint64_t>(most * chance(seed, place, periods));
}

/// @param now the switch's clock, milliseconds; a time that is past counts as the present one
void move_counters_to(std::uint64_t now) {
    Switch& contents = current();
    contents.now = std::max(contents.now, now);
    for (const auto& [place, rate] : contents.rates) {
        if (std::uint8_t* record = record_of(contents, place))
            CounterField{"", place.offset, place.bits}.put(record, value_at(place, rate, contents.seed, contents.now));
    }
}

/// Whether enough time has passed for counters to move. @param now milliseconds
bool is_time_to_move(std::uint64_t now) {
    const std::uint64_t resolution = current().rates.size() > 1000 ? 1000 : 10;
    return now >= current().now + resolution;
}

/// The events that come first, or the end.
auto next_event(Switch& contents) {
    return std::min_element(contents.events.begin(), contents.events.end(),
                            [](const Event& one, const Event& other) { return one.at < other.at; });
}

/// Lets an event happen. One that cannot is told, and nothing is changed.
void happen(const Event& event) {
    Switch& contents = current();
    const std::vector<std::string> words = words_of(event);
    Change changed = change(contents, words);
    if (!changed.error.empty()) {
        std::fprintf(stderr, "switchsim: event at %llu ms: %s\n", static_cast<unsigned long long>(event.at),
                     changed.error.c_str());
        return;
    }
    replace_switch(std::move(changed.contents));
    if (!event.lasts || event.at + *event.lasts > longest_clock)
        return;
    for (Event& undo : changed.undo)
        undo.at = event.at + *event.lasts;
    // Before all others: what ends at a time has ended when something begins at that time, and the last begun ends
    // first.
    contents.events.insert(contents.events.begin(), std::make_move_iterator(changed.undo.begin()),
                           std::make_move_iterator(changed.undo.end()));
}

} // namespace

void replace_switch(Switch&& contents) {
    // Callers may hold the names: their storage stays where they do.
    if (contents.name == current().name)
        contents.name.swap(current().name);
    if (contents.system_name == current().system_name)
        contents.system_name.swap(current().system_name);
    current() = std::move(contents);
}

void restart_clock() {
    began = WallClock::now();
    began_at = current().now;
}

void advance_to(std::uint64_t milliseconds) {
    for (auto next = next_event(current()); next != current().events.end() && next->at <= milliseconds;
         next = next_event(current())) {
        const Event event = std::move(*next);
        current().events.erase(next);
        move_counters_to(event.at);
        happen(event);
    }
    move_counters_to(milliseconds);
}

void advance() {
    if (is_stopped())
        return;
    const std::uint64_t now = wall_time();
    const auto next = next_event(current());
    if (is_time_to_move(now) || (next != current().events.end() && next->at <= now))
        advance_to(now);
}

void advance_within_request() {
    if (current().rates.empty() || is_stopped())
        return;
    const std::uint64_t now = wall_time();
    if (is_time_to_move(now))
        move_counters_to(now);
}

const Switch* present_switch() {
    ensure_loaded();
    advance_within_request();
    return load_failed() ? nullptr : &current();
}

void reset_clock() {
    mode = Mode::unknown;
    restart_clock();
}

void stop_clock(bool stopped) {
    mode = stopped ? Mode::stopped : Mode::wall;
    restart_clock();
}

void step(std::uint64_t milliseconds) {
    const std::uint64_t target = the_switch().now + milliseconds;
    advance_to(target);
    restart_clock();
}

} // namespace switchsim
