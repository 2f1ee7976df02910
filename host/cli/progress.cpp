#include "host/cli/progress.h"

#include "host/cli/streams.h"

#include <utility>

namespace cmpihost {

namespace {

constexpr std::size_t longest_line = 79;
constexpr const char* clear_line = "\r\033[K";

} // namespace

Progress::Progress(std::FILE* err, Clock clock)
    : err_(err != nullptr && is_terminal(err) ? err : nullptr), clock_(std::move(clock)),
      next_(clock_() + std::chrono::seconds(1)) {}

void Progress::tell(const std::string& text) {
    if (err_ == nullptr)
        return;
    const auto now = clock_();
    if (now < next_)
        return;
    next_ = now + std::chrono::milliseconds(200);
    shown_ = true;
    std::fprintf(err_, "%s%s", clear_line, text.substr(0, longest_line).c_str());
    std::fflush(err_);
}

void Progress::end() {
    if (shown_)
        std::fputs(clear_line, err_);
    shown_ = false;
}

} // namespace cmpihost
