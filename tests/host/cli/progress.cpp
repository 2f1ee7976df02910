// What is told on a terminal while something takes its time.
#include "host/cli/progress.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace cmpihost {
namespace {

TEST(Progress, IsALineOnATerminalAfterASecond) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    std::array<char, 64> name{};
    ASSERT_TRUE(grantpt(terminal) == 0 && unlockpt(terminal) == 0 &&
                ptsname_r(terminal, name.data(), name.size()) == 0);
    std::FILE* err = std::fopen(name.data(), "w");
    ASSERT_NE(err, nullptr);
    {
        Progress progress(err);
        progress.tell("too early");
        usleep(1'050'000);
        progress.tell("12 objects");
        progress.tell("too soon");
    }
    std::fflush(err);
    std::array<char, 256> text{};
    const ssize_t size = read(terminal, text.data(), text.size());
    EXPECT_EQ(std::string(text.data(), static_cast<std::size_t>(size)), "\r\033[K12 objects\r\033[K");
    std::fclose(err);
    close(terminal);
}

TEST(Progress, IsNothingElsewhere) {
    std::FILE* file = std::tmpfile();
    {
        Progress progress(file);
        usleep(1'050'000);
        progress.tell("12 objects");
    }
    EXPECT_EQ(std::ftell(file), 0);
    std::fclose(file);
    Progress(nullptr).tell("x");
}

} // namespace
} // namespace cmpihost
