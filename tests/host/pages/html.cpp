// Pieces of HTML.
#include "host/pages/html.h"

#include <gtest/gtest.h>

namespace cmpihost::pages {
namespace {

TEST(Html, TextsAreEscaped) {
    EXPECT_EQ(escaped("<a href=\"x\">&"), "&lt;a href=&quot;x&quot;&gt;&amp;");
    EXPECT_EQ(escaped(std::string("\0\x01\xff", 3)), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(link("/a?b&c\"", "<d>"), "<a href=\"/a?b&amp;c&quot;\">&lt;d&gt;</a>");
    EXPECT_NE(page("</title><x>", "", "").find("<title>&lt;/title&gt;&lt;x&gt; - cmpihost</title>"), std::string::npos);
}

TEST(Html, NumbersAreGrouped) {
    EXPECT_EQ(grouped(0), "0");
    EXPECT_EQ(grouped(999), "999");
    EXPECT_EQ(grouped(1'000), "1,000");
    EXPECT_EQ(grouped(18'446'744'073'709'551'615U), "18,446,744,073,709,551,615");
    EXPECT_EQ(counted(1, "object"), "1 object");
    EXPECT_EQ(counted(1'200, "object"), "1,200 objects");
}

} // namespace
} // namespace cmpihost::pages
