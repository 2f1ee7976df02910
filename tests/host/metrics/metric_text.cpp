// The text format: escapes and numbers.
#include "host/metrics/metric_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace cmpihost::metrics {
namespace {

std::string label(std::string_view value) {
    std::string out;
    append_label(out, "n", value);
    return out;
}

template <class Number>
std::string number(Number value) {
    std::string out;
    append_number(out, value);
    return out;
}

std::string counter(std::uint64_t value, const Unit& unit = {}) {
    std::string out;
    append_counter(out, value, unit);
    return out;
}

TEST(MetricText, LabelsAreEscaped) {
    EXPECT_EQ(label("plain text"), R"(n="plain text")");
    EXPECT_EQ(label(R"(a"b\c)"), R"(n="a\"b\\c")");
    EXPECT_EQ(label("two\nlines"), R"(n="two\nlines")");
    EXPECT_EQ(label("\xc3\xa9"), "n=\"\xc3\xa9\"");
}

TEST(MetricText, WhatWouldSpoilAScrapeIsReplaced) {
    const std::string replaced = "n=\"\xef\xbf\xbd\"";
    for (const std::string_view spoilt : {"\xff", "\r", "\x01", "\x7f", "\xc3"})
        EXPECT_EQ(label(spoilt), replaced);
    EXPECT_EQ(label(std::string_view("\0", 1)), replaced);
    std::string head;
    append_head(head, "m", "gauge", "one \"two\"\r\n\\three\xff");
    EXPECT_EQ(head, "# HELP m one \"two\"\xef\xbf\xbd\\n\\\\three\xef\xbf\xbd\n# TYPE m gauge\n");
}

TEST(MetricText, LabelsAreDividedByCommas) {
    std::string out = "{";
    append_label(out, "a", "1");
    append_label(out, "b", "2");
    EXPECT_EQ(out, R"({a="1",b="2")");
}

TEST(MetricText, NumbersAreExact) {
    EXPECT_EQ(number(std::uint64_t{18446744073709551615U}), "18446744073709551615");
    EXPECT_EQ(number(std::int64_t{-5}), "-5");
    EXPECT_EQ(number(0.1), "0.1");
    EXPECT_EQ(number(std::numeric_limits<double>::infinity()), "+Inf");
    EXPECT_EQ(number(-std::numeric_limits<double>::infinity()), "-Inf");
    EXPECT_EQ(number(std::numeric_limits<double>::quiet_NaN()), "NaN");
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
