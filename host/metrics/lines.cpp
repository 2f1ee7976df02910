#include "host/metrics/lines.h"

#include <bit>
#include <functional>

namespace cmpihost::metrics {

void Lines::clear() {
    text_.cut(0);
    begins_.clear();
    doubles_.clear();
}

Text& Lines::begin() {
    begins_.push_back(text_.size());
    return text_;
}

std::size_t Lines::find_doubles() {
    slots_.assign(std::bit_ceil(2 * size() + 1), {});
    doubles_.assign(size(), 0);
    std::size_t found = 0;
    for (std::size_t index = 0; index < size(); ++index) {
        const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>{}(line(index)));
        Slot& slot = slot_of(line(index), hash);
        if (slot.number == 0) {
            slot = {hash, static_cast<std::uint32_t>(index + 1)};
            continue;
        }
        doubles_[index] = 1;
        ++found;
    }
    return found;
}

/// Where the line is, or belongs.
Lines::Slot& Lines::slot_of(std::string_view line, std::uint32_t hash) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t place = hash & mask;
    while (slots_[place].number != 0 && (slots_[place].hash != hash || this->line(slots_[place].number - 1) != line))
        place = (place + 1) & mask;
    return slots_[place];
}

} // namespace cmpihost::metrics
