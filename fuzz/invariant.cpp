#include "fuzz/invariant.h"

#include <cstdio>
#include <cstdlib>

namespace fuzz {

void require(bool holds, std::string_view what) {
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %.*s\n", static_cast<int>(what.size()), what.data());
    std::abort();
}

void drop_trace() {
    static const bool dropped = std::freopen("/dev/null", "w", stdout) != nullptr;
    require(dropped, "standard output goes to /dev/null");
}

bool is_one_line(std::string_view message) {
    return !message.empty() && message.find('\n') == std::string_view::npos;
}

} // namespace fuzz
