// Targets: read and written.
#include "host/pages/target.h"

#include <gtest/gtest.h>

namespace cmpihost::pages {
namespace {

TEST(Targets, PathAndQueryAreDecoded) {
    const auto target = read_target("/a%20b/c+d?x=1&y=%26+%3D&z&&x=2");
    ASSERT_TRUE(target.has_value());
    EXPECT_EQ(target->path, "/a b/c+d");
    EXPECT_EQ(target->value("x"), "1");
    EXPECT_EQ(target->value("y"), "& =");
    EXPECT_EQ(target->value("z"), "");
    EXPECT_EQ(target->value("none"), "");
}

TEST(Targets, EscapesThatAreNoneAreRefused) {
    for (const char* text : {"/%", "/%1", "/%zz", "/?a=%", "/?%=1", "/%-1", "/% 1"})
        EXPECT_FALSE(read_target(text).has_value()) << text;
}

TEST(Targets, WhatIsWrittenReadsBack) {
    std::string all;
    for (int c = 0; c < 256; ++c)
        all += static_cast<char>(c);
    EXPECT_EQ(read_target("/" + encoded_path(all))->path, "/" + all);
    EXPECT_EQ(read_target("/?x=" + encoded(all))->value("x"), all);
    EXPECT_EQ(encoded_path("a/b:c=\"d\",e&f?g#"), "a/b:c=%22d%22,e%26f%3Fg%23");
}

} // namespace
} // namespace cmpihost::pages
