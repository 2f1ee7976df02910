#include "host/cim/date_time.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace cmpihost {

namespace {

constexpr std::int64_t second = 1'000'000;
constexpr std::int64_t minute = 60 * second;
constexpr std::int64_t day = 24 * (60 * minute);
constexpr std::int64_t longest_interval = 100'000'000 * day - 1;
constexpr std::int64_t last_point_in_time =
    std::chrono::sys_days(std::chrono::year(10000) / 1 / 1).time_since_epoch().count() * day - 1;

/// The decimal number in text[first, first + length); nothing if a character is no digit.
std::optional<int> digits(std::string_view text, std::size_t first, std::size_t length) {
    int number = 0;
    for (const char c : text.substr(first, length)) {
        if (c < '0' || c > '9')
            return std::nullopt;
        number = number * 10 + (c - '0');
    }
    return number;
}

/// Microseconds since midnight of `hhmmss.mmmmmm`, the part that both forms share.
std::optional<std::int64_t> time_of_day(std::string_view text) {
    const auto hours = digits(text, 0, 2);
    const auto minutes = digits(text, 2, 2);
    const auto seconds = digits(text, 4, 2);
    const auto fraction = digits(text, 7, 6);
    if (!hours || !minutes || !seconds || !fraction || text[6] != '.' || *hours > 23 || *minutes > 59 || *seconds > 59)
        return std::nullopt;
    return (*hours * 60 + *minutes) * minute + *seconds * second + *fraction;
}

std::optional<std::int64_t> days_of_date(std::string_view text) {
    const auto year = digits(text, 0, 4);
    const auto month = digits(text, 4, 2);
    const auto day_of_month = digits(text, 6, 2);
    if (!year || !month || !day_of_month)
        return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day_of_month))};
    if (!date.ok())
        return std::nullopt;
    return std::chrono::sys_days(date).time_since_epoch().count();
}

std::string format(const char* pattern, auto... values) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), pattern, values...);
    return text.data();
}

std::string format_time_of_day(std::int64_t microseconds) {
    return format("%02d%02d%02d.%06d", static_cast<int>(microseconds / (60 * minute)),
                  static_cast<int>(microseconds / minute % 60), static_cast<int>(microseconds / second % 60),
                  static_cast<int>(microseconds % second));
}

} // namespace

std::optional<DateTime> parse_date_time(std::string_view text) {
    if (text.size() != 25)
        return std::nullopt;
    const auto offset = digits(text, 22, 3);
    const auto time = time_of_day(text.substr(8));
    if (!offset || !time)
        return std::nullopt;
    if (text[21] == ':') {
        const auto days = digits(text, 0, 8);
        return days && *offset == 0 ? std::optional(DateTime{*days * day + *time, true, 0}) : std::nullopt;
    }
    const auto days = days_of_date(text);
    if (!days || (text[21] != '+' && text[21] != '-'))
        return std::nullopt;
    const int east = text[21] == '-' ? -*offset : *offset;
    return DateTime{*days * day + *time - east * minute, false, east};
}

std::string format_date_time(const DateTime& time) {
    if (time.interval)
        return format("%08d", static_cast<int>(time.microseconds / day)) + format_time_of_day(time.microseconds % day) +
               ":000";
    const std::chrono::microseconds local(time.microseconds + time.utc_offset * minute);
    const auto days = std::chrono::floor<std::chrono::days>(local);
    const std::chrono::year_month_day date{std::chrono::sys_days(days)};
    return format("%04d%02u%02u", static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day())) +
           format_time_of_day((local - days).count()) + format("%+04d", time.utc_offset);
}

std::optional<DateTime> date_time_from_binary(std::uint64_t microseconds, bool interval) {
    const std::int64_t last = interval ? longest_interval : last_point_in_time;
    if (microseconds > static_cast<std::uint64_t>(last))
        return std::nullopt;
    return DateTime{static_cast<std::int64_t>(microseconds), interval, 0};
}

} // namespace cmpihost
