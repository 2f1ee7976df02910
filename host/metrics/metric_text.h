// The text format that Prometheus reads, version 0.0.4.
#pragma once

#include "host/metrics/text.h"
#include "host/metrics/units.h"

#include <chrono>
#include <cstdint>

namespace cmpihost::metrics {

inline constexpr const char* content_type = "text/plain; version=0.0.4; charset=utf-8";

/// The two lines before a metric's samples.
/// @param type "counter", "gauge" or "histogram"
/// @param help as it is to stand there: one of this program's own, or by escaped_help()
void append_head(Text& out, std::string_view name, std::string_view type, std::string_view help);

/// Any text as a metric's help.
Text escaped_help(std::string_view help);

/// What a character of a label's value becomes at most.
inline constexpr std::size_t longest_escaped = 3;

/// Writes a label's value to `at`, where there is room for the longest one. What is no UTF-8 and control characters
/// become U+FFFD. @return behind it
char* write_escaped(char* at, std::string_view value);

/// `name="value"` after what `out` holds already, with a comma if that ends with no brace.
void append_label(Text& out, std::string_view name, std::string_view value);

/// Room that a number takes at most.
inline constexpr std::size_t longest_number = 32;

/// Writes a number to `at`, where there is room for the longest one. Integers whole, reals as the shortest text that
/// reads back as the same. @return behind it
char* write_number(char* at, std::uint64_t number);
char* write_number(char* at, double number);

/// A counter's value in its base unit, modulo 2^53: doubles of a scraper hold it exactly, and its wrap is a reset.
char* write_counter(char* at, std::uint64_t value, const Unit& unit);

template <class Number>
void append_number(Text& out, Number number) {
    out.end_at(write_number(out.room(longest_number), number));
}

/// A time in seconds.
void append_seconds(Text& out, std::chrono::microseconds time);

/// `{name="value"} `, as it stands between a metric's name and a number.
Text only_label(std::string_view name, std::string_view value);

} // namespace cmpihost::metrics
