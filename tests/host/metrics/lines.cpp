// Lines of text, and which of them stand there twice.
#include "host/metrics/lines.h"

#include <gtest/gtest.h>

namespace cmpihost::metrics {
namespace {

void add(Lines& lines, const std::string& text) {
    const std::size_t before = lines.size();
    lines.begin().append(text);
    ASSERT_EQ(lines.size(), before + 1);
    ASSERT_EQ(lines.line(before), text);
}

TEST(Lines, AreFoundWhereTheyStandTwice) {
    Lines lines;
    for (int turn = 0; turn < 2; ++turn)
        for (int number = 0; number < 1000; ++number)
            add(lines, "line " + std::to_string(number));
    add(lines, "line 7");
    add(lines, "line 1000");
    EXPECT_EQ(lines.find_doubles(), 1001U);
    for (std::size_t index = 0; index < lines.size(); ++index)
        EXPECT_EQ(lines.is_double(index), index >= 1000 && index <= 2000) << lines.line(index);
}

TEST(Lines, AreToldApartWhereTheirHashesAreTheSame) {
    Lines lines;
    constexpr std::size_t many = 300'000; // some ten pairs of which have the same 32 bits
    for (std::size_t number = 0; number < many; ++number)
        lines.begin().append(std::to_string(number));
    EXPECT_EQ(lines.find_doubles(), 0U);
}

TEST(Lines, AreNewAfterClearing) {
    Lines lines;
    for (int turn = 0; turn < 2; ++turn) {
        for (int number = 0; number < 100; ++number)
            add(lines, std::to_string(number));
        EXPECT_EQ(lines.find_doubles(), 0U) << turn;
        lines.clear();
        EXPECT_EQ(lines.size(), 0U);
    }
    EXPECT_EQ(lines.find_doubles(), 0U);
}

} // namespace
} // namespace cmpihost::metrics
