// Lines, each once.
#include "host/metrics/lines.h"

#include <gtest/gtest.h>

namespace cmpihost::metrics {
namespace {

bool keep(Lines& lines, const std::string& text) {
    lines.begin() += text;
    EXPECT_EQ(lines.line(), text);
    return lines.keep();
}

TEST(Lines, AreKeptOnceHoweverMany) {
    Lines lines;
    for (int turn = 0; turn < 2; ++turn)
        for (int number = 0; number < 1000; ++number)
            EXPECT_EQ(keep(lines, "line " + std::to_string(number)), turn == 0) << number;
    EXPECT_FALSE(keep(lines, "line 7"));
    EXPECT_TRUE(keep(lines, "line 1000"));
    EXPECT_EQ(lines.line(), "line 1000");
}

TEST(Lines, AreNewAfterClearing) {
    Lines lines;
    EXPECT_TRUE(keep(lines, "one"));
    EXPECT_TRUE(keep(lines, "two"));
    lines.clear();
    EXPECT_TRUE(keep(lines, "two"));
    EXPECT_TRUE(keep(lines, "one"));
    EXPECT_FALSE(keep(lines, "two"));
}

TEST(Lines, OneThatAnotherBeginsWithIsNew) {
    Lines lines;
    EXPECT_TRUE(keep(lines, "one line"));
    EXPECT_TRUE(keep(lines, "one"));
    EXPECT_TRUE(keep(lines, "one line and more"));
    EXPECT_FALSE(keep(lines, "one"));
}

} // namespace
} // namespace cmpihost::metrics
