// What is told on a terminal while something takes its time.
#include "host/cli/progress.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace cmpihost {
namespace {

using std::chrono::milliseconds;

class ProgressTest : public testing::Test {
  protected:
    /// A clock that the test moves.
    Progress::Clock clock() {
        return [this] { return now_; };
    }

    std::chrono::steady_clock::time_point now_{std::chrono::hours(1)};
};

/// A terminal, and what came to be seen on it.
class Terminal {
  public:
    Terminal() : shown_(posix_openpt(O_RDWR | O_NOCTTY)) {
        std::array<char, 64> name{};
        EXPECT_TRUE(grantpt(shown_) == 0 && unlockpt(shown_) == 0 && ptsname_r(shown_, name.data(), name.size()) == 0);
        file_ = std::fopen(name.data(), "w");
        EXPECT_NE(file_, nullptr);
    }
    ~Terminal() {
        std::fclose(file_);
        close(shown_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    std::FILE* file() { return file_; }

    /// All that is shown, after writing a mark behind it.
    std::string text() {
        std::fputs("end", file_);
        std::fflush(file_);
        std::string text;
        std::array<char, 256> block{};
        while (!text.ends_with("end")) {
            const ssize_t got = read(shown_, block.data(), block.size());
            if (got <= 0)
                break;
            text.append(block.data(), static_cast<std::size_t>(got));
        }
        return text;
    }

  private:
    int shown_;
    std::FILE* file_ = nullptr;
};

TEST_F(ProgressTest, IsALineOnATerminalAfterASecond) {
    Terminal terminal;
    {
        Progress progress(terminal.file(), clock());
        now_ += milliseconds(999);
        progress.tell("too early");
        now_ += milliseconds(1);
        progress.tell("12 objects");
        now_ += milliseconds(199);
        progress.tell("too soon");
        now_ += milliseconds(1);
        progress.tell("13 objects");
    }
    EXPECT_EQ(terminal.text(), "\r\033[K12 objects\r\033[K13 objects\r\033[Kend");
}

TEST_F(ProgressTest, IsNothingElsewhere) {
    std::FILE* file = std::tmpfile();
    {
        Progress progress(file, clock());
        now_ += std::chrono::seconds(2);
        progress.tell("12 objects");
    }
    EXPECT_EQ(std::ftell(file), 0);
    std::fclose(file);
    Progress(nullptr).tell("x");
}

} // namespace
} // namespace cmpihost
