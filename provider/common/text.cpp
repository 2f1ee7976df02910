#include "provider/common/text.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace fcip {

std::int32_t parse_decimal(const char* text) {
    using range = std::numeric_limits<std::int32_t>;
    const long number = std::strtol(text, nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long>(number, range::min(), range::max()));
}

} // namespace fcip
