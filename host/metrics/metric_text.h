// The text format that Prometheus reads, version 0.0.4.
#pragma once

#include "host/metrics/units.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace cmpihost::metrics {

inline constexpr const char* content_type = "text/plain; version=0.0.4; charset=utf-8";

/// The two lines before a metric's samples.
/// @param type "counter", "gauge" or "histogram"
void append_head(std::string& out, std::string_view name, std::string_view type, std::string_view help);

/// `name="value"` after what `out` holds already, with a comma if that ends with no brace. What is no UTF-8 and control
/// characters become U+FFFD.
void append_label(std::string& out, std::string_view name, std::string_view value);

/// Integers whole, reals as the shortest text that reads back as the same.
void append_number(std::string& out, std::uint64_t number);
void append_number(std::string& out, std::int64_t number);
void append_number(std::string& out, double number);

/// A counter's value in its base unit, modulo 2^53: doubles of a scraper hold it exactly, and its wrap is a reset.
void append_counter(std::string& out, std::uint64_t value, const Unit& unit);

/// `name{class="X"} number` and a line's end
template <class Number>
void append_sample(std::string& out, std::string_view name, std::string_view label, std::string_view value,
                   Number number) {
    out.append(name);
    out += '{';
    append_label(out, label, value);
    out += "} ";
    append_number(out, number);
    out += '\n';
}

} // namespace cmpihost::metrics
