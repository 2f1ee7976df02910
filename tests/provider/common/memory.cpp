#include "provider/common/memory.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace fcip {
namespace {

/// A query that answers `status` and sets a record if it has a number to put into it.
auto answering(int status, int number) {
    return [=](int** record) {
        EXPECT_EQ(*record, nullptr) << "as the platform demands";
        if (number != 0) {
            *record = static_cast<int*>(std::malloc(sizeof(int)));
            **record = number;
        }
        return status;
    };
}

TEST(Fetch, RecordOfASuccessIsHeldUntilItIsTaken) {
    auto answer = fetch<int>(answering(0, 7));
    ASSERT_TRUE(answer);
    EXPECT_EQ(*answer.row, 7);
    EXPECT_EQ(*answer.take(), 7);
    EXPECT_EQ(answer.row, nullptr);
}

TEST(Fetch, FailureGivesItsStatusAndNoRecordEvenIfItLeftOne) {
    auto answer = fetch<int>(answering(-3, 7));
    EXPECT_FALSE(answer);
    EXPECT_EQ(answer.status, -3);
    ASSERT_NE(answer.row, nullptr) << "left for the caller to see";
    EXPECT_EQ(answer.take(), nullptr);
}

TEST(Fetch, SuccessWithoutARecordCountsAsFailed) {
    auto answer = fetch<int>(answering(0, 0));
    EXPECT_FALSE(answer);
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.take(), nullptr);
}

TEST(PlatformStorage, IsAlignedForAnyTypeAndZero) {
    EXPECT_EQ(alignof(platform_storage<1>), alignof(std::max_align_t));
    EXPECT_GE(sizeof(platform_storage<100>), 100u);
    alignas(platform_storage<64>) unsigned char dirty[sizeof(platform_storage<64>)];
    std::fill(std::begin(dirty), std::end(dirty), std::uint8_t{0xEE});
    auto* storage = new (dirty) platform_storage<64>;
    EXPECT_EQ(std::count(storage->data(), storage->data() + 64, 0), 64);
}

} // namespace
} // namespace fcip
