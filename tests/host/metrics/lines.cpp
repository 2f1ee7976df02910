// Lines of text, and which of them stand there twice.
#include "host/metrics/lines.h"

#include <gtest/gtest.h>

namespace cmpihost::metrics {
namespace {

void add(Lines& lines, const std::string& text) {
    const std::size_t before = lines.size();
    lines.begin().append(text);
    ASSERT_EQ(lines.size(), before + 1);
}

TEST(Lines, AreFoundWhereTheyStandTwice) {
    Lines lines;
    std::vector<std::string> kept;
    for (int turn = 0; turn < 2; ++turn)
        for (int number = 0; number < 1000; ++number) {
            add(lines, "line " + std::to_string(number));
            kept.push_back(turn == 0 ? "line " + std::to_string(number) : "");
        }
    add(lines, "line 7");
    add(lines, "line 1000");
    kept.insert(kept.end(), {"", "line 1000"});
    EXPECT_EQ(lines.end(), 1001U);
    EXPECT_EQ(std::vector<std::string>(lines.kept().begin(), lines.kept().end()), kept);
}

TEST(Lines, AreToldApartWhereTheirHashesAreTheSame) {
    Lines lines;
    constexpr std::size_t many = 300'000; // some ten pairs of which have the same 32 bits
    for (std::size_t number = 0; number < many; ++number)
        lines.begin().append(std::to_string(number));
    EXPECT_EQ(lines.end(), 0U);
}

TEST(Lines, AreNewAfterClearing) {
    Lines lines;
    for (int turn = 0; turn < 2; ++turn) {
        for (int number = 0; number < 100; ++number)
            add(lines, std::to_string(number));
        EXPECT_EQ(lines.end(), 0U) << turn;
        EXPECT_EQ(lines.kept().size(), 100U);
        lines.clear();
        EXPECT_EQ(lines.size(), 0U);
        EXPECT_TRUE(lines.kept().empty());
    }
    EXPECT_EQ(lines.end(), 0U);
}

} // namespace
} // namespace cmpihost::metrics
