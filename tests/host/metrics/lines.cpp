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

TEST(Lines, AreToldApartWhereTheirHashesAreTheSame) {
    Lines lines;
    std::size_t kept = 0;
    constexpr std::size_t many = 300'000; // some ten pairs of which have the same 32 bits
    for (std::size_t number = 0; number < many; ++number) {
        lines.begin() += std::to_string(number);
        kept += lines.keep() ? 1 : 0;
    }
    EXPECT_EQ(kept, many);
}

TEST(Lines, AreNewAfterClearing) {
    Lines lines;
    for (int turn = 0; turn < 2; ++turn) {
        for (int number = 0; number < 100; ++number)
            EXPECT_TRUE(keep(lines, std::to_string(number))) << number << " in turn " << turn;
        lines.clear();
    }
}

} // namespace
} // namespace cmpihost::metrics
