#include "host/worker/supervisor_options.h"

namespace cmpihost::worker {

std::string seconds_text(std::chrono::milliseconds time) {
    std::string text = std::to_string(time.count() / 1'000);
    if (const auto fraction = time.count() % 1'000; fraction != 0) {
        const std::string digits = std::to_string(1'000 + fraction).substr(1);
        text += "." + digits.substr(0, digits.find_last_not_of('0') + 1);
    }
    return text + " s";
}

} // namespace cmpihost::worker
