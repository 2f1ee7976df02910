// Numbers and texts of keys.
#include "provider/common/text.h"
#include "provider/common/values.h"

#include <gtest/gtest.h>

namespace fcip {
namespace {

TEST(Texts, JoinedTextIsCutToItsRoom) {
    EXPECT_STREQ(join_text<9>({"1_", "10.1.1.1", "_", "x"}).data(), "1_10.1.1");
    EXPECT_STREQ(join_text<11>({"1_", "10.1.1.1", "_", "x"}).data(), "1_10.1.1.1");
    EXPECT_STREQ(join_text<12>({"1_", "10.1.1.1", "_", "x"}).data(), "1_10.1.1.1_");
    EXPECT_STREQ(join_text<20>({"1_", "10.1.1.1", "_", "x"}).data(), "1_10.1.1.1_x");
    EXPECT_STREQ(join_text<5>({}).data(), "");
    EXPECT_STREQ(join_text<1>({"a"}).data(), "");
}

TEST(Texts, CopyIsCutToItsRoom) {
    EXPECT_STREQ(copy_text<4>("abcdef").data(), "abc");
    EXPECT_STREQ(copy_text<4>("abc").data(), "abc");
    EXPECT_STREQ(copy_text<4>("").data(), "");
}

TEST(Texts, IndexIsPrintedAsSigned) {
    EXPECT_STREQ(index_text(0).data(), "0");
    EXPECT_STREQ(index_text(0x7FFFFFFF).data(), "2147483647");
    EXPECT_STREQ(index_text(0x80000000).data(), "-2147483648");
    EXPECT_STREQ(index_text(0xFFFFFFFF).data(), "-1");
}

TEST(Texts, NoStringIsAnEmptyOne) {
    EXPECT_STREQ(chars_of(nullptr), "");
    EXPECT_STREQ(text_or_empty(nullptr), "");
    EXPECT_STREQ(text_or_empty("a"), "a");
}

TEST(Texts, DecimalIsReadAsFarAsItGoes) {
    struct row {
        const char* text;
        std::int32_t value;
    };
    const row rows[] = {{"", 0},
                        {"abc", 0},
                        {"12", 12},
                        {" \t12", 12},
                        {"+12", 12},
                        {"-12", -12},
                        {"12abc", 12},
                        {"0x10", 0},
                        {"- 1", 0},
                        {"2147483647", 2147483647},
                        {"2147483648", 2147483647},
                        {"-2147483648", -2147483648},
                        {"-2147483649", -2147483648},
                        {"99999999999999999999999", 2147483647}};
    for (const row& one : rows)
        EXPECT_EQ(parse_decimal(one.text), one.value) << '"' << one.text << '"';
}

} // namespace
} // namespace fcip
