#include "host/metrics/lines.h"

#include <bit>
#include <functional>

namespace cmpihost::metrics {

void Lines::clear() {
    text_.cut(0);
    begins_.clear();
    kept_.clear();
}

Text& Lines::begin() {
    begins_.push_back(text_.size());
    return text_;
}

std::string_view Lines::line(std::size_t index) const {
    const std::size_t end = index + 1 < size() ? begins_[index + 1] : text_.size();
    return text_.view().substr(begins_[index], end - begins_[index]);
}

std::size_t Lines::end() {
    slots_.assign(std::bit_ceil(2 * size() + 1), {});
    std::size_t doubles = 0;
    for (std::size_t index = 0; index < size(); ++index) {
        const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>{}(line(index)));
        Slot& slot = slot_of(line(index), hash);
        const bool is_double = slot.number != 0;
        kept_.push_back(is_double ? std::string_view() : line(index));
        if (is_double)
            ++doubles;
        else
            slot = {hash, static_cast<std::uint32_t>(index + 1)};
    }
    return doubles;
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
