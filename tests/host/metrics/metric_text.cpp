// The text format: escapes and numbers.
#include "host/metrics/metric_text.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace cmpihost::metrics {
namespace {

std::string label(std::string_view value) {
    Text out;
    append_label(out, "n", value);
    return std::string(out.view());
}

template <class Number>
std::string number(Number value) {
    Text out;
    append_number(out, value);
    return std::string(out.view());
}

std::string counter(std::uint64_t value, const Unit& unit = {}) {
    std::array<char, longest_number> room{};
    return {room.data(), write_counter(room.data(), value, unit)};
}

std::string seconds(std::chrono::microseconds time) {
    Text out;
    append_seconds(out, time);
    return std::string(out.view());
}

TEST(MetricText, LabelsAreEscaped) {
    EXPECT_EQ(label("plain text"), R"(n="plain text")");
    EXPECT_EQ(label(R"(a"b\c)"), R"(n="a\"b\\c")");
    EXPECT_EQ(label("two\nlines"), R"(n="two\nlines")");
    EXPECT_EQ(label("\xc3\xa9"), "n=\"\xc3\xa9\"");
}

TEST(MetricText, WhatWouldSpoilAScrapeIsReplaced) {
    const std::string replaced = "n=\"\xef\xbf\xbd\"";
    for (const std::string_view spoilt : {"\xff", "\r", "\x01", "\x7f", "\xc3", "\xef\xbf\xbe"})
        EXPECT_EQ(label(spoilt), replaced);
    EXPECT_EQ(label(std::string_view("\0", 1)), replaced);
    EXPECT_EQ(escaped_help("one \"two\"\r\n\\three\xff").view(), "one \"two\"\xef\xbf\xbd\\n\\\\three\xef\xbf\xbd");
}

TEST(MetricText, HeadIsTwoLines) {
    Text head;
    append_head(head, "m", "gauge", "What it is.");
    EXPECT_EQ(head.view(), "# HELP m What it is.\n# TYPE m gauge\n");
}

TEST(MetricText, LabelsAreDividedByCommas) {
    Text out;
    out.append("{");
    append_label(out, "a", "1");
    append_label(out, "b", "2");
    EXPECT_EQ(out.view(), R"({a="1",b="2")");
    EXPECT_EQ(only_label("a", "1\"").view(), R"({a="1\""} )");
}

TEST(MetricText, NumbersAreExact) {
    EXPECT_EQ(number(std::uint64_t{18446744073709551615U}), "18446744073709551615");
    EXPECT_EQ(number(std::uint64_t{0}), "0");
    EXPECT_EQ(number(std::uint64_t{4294967295U}), "4294967295");
    EXPECT_EQ(number(std::uint64_t{4294967296U}), "4294967296");
    EXPECT_EQ(number(-5.0), "-5");
    EXPECT_EQ(number(-std::numeric_limits<double>::denorm_min()), "-5e-324");
    EXPECT_EQ(number(-2.2250738585072014e-308), "-2.2250738585072014e-308") << "as long as numbers get";
    EXPECT_EQ(number(0.1), "0.1");
    EXPECT_EQ(number(std::numeric_limits<double>::infinity()), "+Inf");
    EXPECT_EQ(number(-std::numeric_limits<double>::infinity()), "-Inf");
    EXPECT_EQ(number(std::numeric_limits<double>::quiet_NaN()), "NaN");
}

TEST(MetricText, TimesAreInSeconds) {
    using std::chrono::microseconds;
    EXPECT_EQ(seconds(microseconds(0)), "0.000000");
    EXPECT_EQ(seconds(microseconds(47)), "0.000047");
    EXPECT_EQ(seconds(microseconds(1'000'000)), "1.000000");
    EXPECT_EQ(seconds(microseconds(12'345'678)), "12.345678");
}

TEST(MetricText, CountersWrapAtTwoToThe53) {
    constexpr std::uint64_t exact = std::uint64_t{1} << 53;
    EXPECT_EQ(counter(exact - 1), "9007199254740991");
    EXPECT_EQ(counter(exact), "0");
    EXPECT_EQ(counter(exact + 7), "7");
    EXPECT_EQ(counter(3, {"", std::uint64_t{1} << 32, 1}), "12884901888");
    EXPECT_EQ(counter(0xFFFFFFFF, {"", std::uint64_t{1} << 32, 1}), "9007194959773696") << "of 2^64 - 2^32";
    EXPECT_EQ(counter(1500, {"seconds", 1, 1000}), "1.5");
}

} // namespace
} // namespace cmpihost::metrics
