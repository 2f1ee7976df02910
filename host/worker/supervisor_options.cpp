#include "host/worker/supervisor_options.h"

namespace cmpihost::worker {

std::string seconds_text(std::chrono::milliseconds time) {
    std::string text = std::to_string(time.count() / 1'000);
    if (const auto tenths = time.count() % 1'000 / 100; tenths != 0)
        text += "." + std::to_string(tenths);
    return text + " s";
}

} // namespace cmpihost::worker
