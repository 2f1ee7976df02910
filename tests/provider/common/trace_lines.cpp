// Trace lines: what is written, and with how many writes.
#include "provider/common/trace.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace fcip {
namespace {

constexpr std::size_t storage = 512;

template <typename F>
std::string printed(F f) {
    testing::internal::CaptureStdout();
    f();
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

TEST(Trace, PrintsItsPiecesInOrder) {
    EXPECT_EQ(printed([] { trace("index ", -7, " of ", 3U, " \n"); }), "index -7 of 3 \n");
}

TEST(Trace, NumbersAreWholeAtTheirExtremes) {
    using i32 = std::numeric_limits<std::int32_t>;
    EXPECT_EQ(printed([] { trace(i32::min(), " ", i32::max(), " ", 0); }), "-2147483648 2147483647 0");
    EXPECT_EQ(printed([] { trace(std::numeric_limits<std::uint32_t>::max()); }), "4294967295");
}

TEST(Trace, TheThreeLinesThatFunctionsHave) {
    EXPECT_EQ(printed([] { trace_entering("f"); }), "Entering f\n");
    EXPECT_EQ(printed([] { trace_exiting("f"); }), "Exiting f\n");
    EXPECT_EQ(printed([] { trace_location("f", 12); }), " Function : f Line 12 \n");
}

TEST(TraceLines, ArePrintedWhenAskedForAndOnce) {
    trace_lines lines;
    EXPECT_EQ(printed([&] {
                  lines.location("f", 12);
                  lines.add("index ", -7, " \n");
              }),
              "");
    EXPECT_EQ(printed([&] { lines.print(); }), " Function : f Line 12 \nindex -7 \n");
    EXPECT_EQ(printed([&] { lines.print(); }), "");
}

TEST(TraceLines, PieceThatDoesNotFitAnyMoreIsPrecededByAPrint) {
    for (const std::size_t room : {0U, 1U, 10U}) {
        trace_lines lines;
        const std::string first(storage - room, 'a');
        const std::string second(room, 'b');
        EXPECT_EQ(printed([&] { lines.add(first, second); }), "") << "fits exactly, " << room;
        EXPECT_EQ(printed([&] { lines.add(-1); }), first + second) << room;
        EXPECT_EQ(printed([&] { lines.print(); }), "-1") << room;
    }
}

TEST(TraceLines, TextLongerThanTheStorageIsWrittenWhole) {
    trace_lines lines;
    const std::string text(storage + 1, 'b');
    lines.add("x");
    EXPECT_EQ(printed([&] { lines.add("a", text, -3, "c"); }), "xa" + text + "-3c");
    EXPECT_EQ(printed([&] { lines.print(); }), "");
}

} // namespace
} // namespace fcip
