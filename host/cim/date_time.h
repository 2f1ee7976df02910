// CIM date-times: points in time and intervals, as text and as microseconds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cmpihost {

struct DateTime {
    std::int64_t microseconds = 0; ///< since 1970-01-01 00:00:00 UTC, or the interval's length
    bool interval = false;
    int utc_offset = 0; ///< minutes east of UTC, in which a point in time is written

    bool operator==(const DateTime&) const = default;
};

/// Reads `yyyymmddhhmmss.mmmmmmsooo` (s = + or -, ooo = minutes) or the interval `ddddddddhhmmss.mmmmmm:000`. Nothing
/// if the text is neither, or names a day or a time of day that does not exist. Fields of asterisks are not accepted:
/// they have no binary form.
std::optional<DateTime> parse_date_time(std::string_view text);

/// Writes the 25 characters that parse_date_time() reads.
std::string format_date_time(const DateTime& time);

/// From CMPI's binary form. Nothing if the text form has no room for it (year 10000, 100,000,000 days).
std::optional<DateTime> date_time_from_binary(std::uint64_t microseconds, bool interval);

} // namespace cmpihost
