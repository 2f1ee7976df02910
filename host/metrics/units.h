// Units of properties, as Prometheus wants them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace cmpihost::metrics {

/// What a value is multiplied with and divided by to be in its base unit, and what that is called.
struct Unit {
    std::string name{}; ///< "bytes", "seconds", "bytes_per_second"; empty: a number
    std::uint64_t times = 1;
    std::uint64_t by = 1;
};

/// Reads a programmatic unit (DSP0004, annex C) of bits, bytes, seconds, counts and their quotients, with powers as
/// factors: "count * 2^32", "second * 10^-3", "bit / second * 10^3". Others are no units of ours, and values stay as
/// they are.
Unit read_unit(std::string_view punit);

} // namespace cmpihost::metrics
