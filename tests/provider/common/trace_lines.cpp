// Trace lines that are put together first and printed in pieces.
#include "provider/common/trace.h"

#include <gtest/gtest.h>

#include <string>

namespace fcip {
namespace {

constexpr std::size_t capacity = 16384;
constexpr std::int32_t longest_number = -2147483648;

template <typename F>
std::string printed(F f) {
    testing::internal::CaptureStdout();
    f();
    return testing::internal::GetCapturedStdout();
}

TEST(TraceLines, ArePrintedWhenAskedFor) {
    trace_lines lines;
    EXPECT_EQ(printed([&] { lines.entering("f").location("f", 12).number("index ", -7, " \n").exiting("f"); }), "");
    EXPECT_EQ(lines.view(), "Entering f\n Function : f Line 12 \nindex -7 \nExiting f\n");
    EXPECT_EQ(printed([&] { lines.print(); }), "Entering f\n Function : f Line 12 \nindex -7 \nExiting f\n");
    EXPECT_EQ(printed([&] { lines.print(); }), "");
}

TEST(TraceLines, TextThatDoesNotFitAnyMoreIsPrecededByAPrint) {
    for (const std::size_t room : {0u, 1u, 10u}) {
        trace_lines lines;
        const std::string first(capacity - room, 'a');
        lines.text(first);
        EXPECT_EQ(printed([&] { lines.text(std::string(room, 'b')); }), "") << "fits exactly";
        const std::string full = first + std::string(room, 'b');
        EXPECT_EQ(printed([&] { lines.text("c"); }), full);
        EXPECT_EQ(lines.view(), "c");
    }
}

TEST(TraceLines, NumberThatMayNotFitAnyMoreIsPrecededByAPrint) {
    for (const std::size_t room : {0u, 1u, 10u}) {
        trace_lines lines;
        const std::string first(capacity - room, 'a');
        lines.text(first);
        EXPECT_EQ(printed([&] { lines.number(longest_number); }), first) << room;
        EXPECT_EQ(lines.view(), "-2147483648") << room;
    }
    trace_lines lines;
    lines.text(std::string(capacity - 11, 'a'));
    EXPECT_EQ(printed([&] { lines.number(longest_number); }), "") << "fits exactly";
}

TEST(TraceLines, TextLongerThanAllTheRoomIsCut) {
    trace_lines lines;
    lines.text("a");
    EXPECT_EQ(printed([&] { lines.text(std::string(capacity + 5, 'b')); }), "a");
    EXPECT_EQ(lines.view(), std::string(capacity, 'b'));
}

} // namespace
} // namespace fcip
