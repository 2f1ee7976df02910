// Text that is written in place.
#include "host/metrics/text.h"

#include <gtest/gtest.h>

namespace cmpihost::metrics {
namespace {

std::string letters(std::size_t count) {
    std::string text(count, 'a');
    for (std::size_t index = 0; index < count; ++index)
        text[index] = static_cast<char>('a' + index % 26);
    return text;
}

TEST(Text, GrowsWithWhatIsAppended) {
    Text text;
    std::string expected;
    for (const std::size_t count : {0U, 1U, 255U, 256U, 257U, 5000U}) {
        text.append(letters(count));
        expected += letters(count);
        EXPECT_EQ(text.view(), expected);
    }
    text.cut(3);
    EXPECT_EQ(text.append("d").view(), expected.substr(0, 3) + "d");
}

TEST(Text, IsMovedWithItsMemory) {
    Text text;
    text.append("one");
    const std::string_view before = text.view();
    Text other(std::move(text));
    EXPECT_EQ(other.view(), "one");
    EXPECT_EQ(other.view().data(), before.data());
    text = std::move(other);
    EXPECT_EQ(text.append(" two").view(), "one two");
}

TEST(Text, BlocksAreWrittenAsFarAsTheTextGoes) {
    for (const std::size_t count : {0U, 1U, 31U, 32U, 33U, 63U, 64U, 65U, 256U, 300U}) {
        Text from;
        from.append(letters(count));
        Text to;
        to.append("before ");
        to.end_at(write_blocks(to.room(count), from.view()));
        EXPECT_EQ(to.view(), "before " + letters(count));
    }
}

TEST(Pieces, AreHandedOverInOrder) {
    std::string all;
    std::size_t pieces = 0;
    const Pieces::Take take = [&](std::string_view piece) {
        all += piece;
        ++pieces;
    };
    Pieces text(take);
    std::string expected;
    for (const std::size_t count : {10U, 5000U, 20'000U, 10U}) {
        text.line().append(letters(count));
        expected += letters(count);
    }
    text.end();
    EXPECT_EQ(all, expected);
    EXPECT_GT(pieces, 2U);
}

} // namespace
} // namespace cmpihost::metrics
