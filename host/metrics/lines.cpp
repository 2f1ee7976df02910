#include "host/metrics/lines.h"

#include <algorithm>
#include <functional>

namespace cmpihost::metrics {

void Lines::clear() {
    text_.clear();
    begins_.clear();
    std::fill(slots_.begin(), slots_.end(), Slot{});
}

std::string& Lines::begin() {
    begins_.push_back(text_.size());
    return text_;
}

bool Lines::keep() {
    if (2 * begins_.size() > slots_.size())
        grow();
    const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>{}(line()));
    Slot& slot = slot_of(line(), hash);
    if (slot.number != 0) {
        text_.resize(begins_.back());
        begins_.pop_back();
        return false;
    }
    slot = {hash, static_cast<std::uint32_t>(begins_.size())};
    return true;
}

/// A line before the last one.
std::string_view Lines::line(std::size_t index) const {
    return std::string_view(text_).substr(begins_[index], begins_[index + 1] - begins_[index]);
}

/// Where the line is, or belongs.
Lines::Slot& Lines::slot_of(std::string_view line, std::uint32_t hash) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t place = hash & mask;
    while (slots_[place].number != 0 && (slots_[place].hash != hash || this->line(slots_[place].number - 1) != line))
        place = (place + 1) & mask;
    return slots_[place];
}

void Lines::grow() {
    const std::vector<Slot> old = std::move(slots_);
    slots_.assign(old.empty() ? 64 : 2 * old.size(), {});
    const std::size_t mask = slots_.size() - 1;
    for (const Slot& slot : old) {
        if (slot.number == 0)
            continue;
        std::size_t place = slot.hash & mask;
        while (slots_[place].number != 0)
            place = (place + 1) & mask;
        slots_[place] = slot;
    }
}

} // namespace cmpihost::metrics
