#include "host/metrics/lines.h"

#include <functional>

namespace cmpihost::metrics {

std::string& Lines::begin() {
    begin_ = text_.size();
    return text_;
}

bool Lines::keep() {
    if (2 * (count_ + 1) > slots_.size())
        grow();
    const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>{}(line()));
    Slot& slot = slot_of(line(), hash);
    if (slot.length != 0) {
        text_.resize(begin_);
        return false;
    }
    slot = {hash, static_cast<std::uint32_t>(line().size()), begin_};
    ++count_;
    return true;
}

/// Where the line is, or belongs.
Lines::Slot& Lines::slot_of(std::string_view line, std::uint32_t hash) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t place = hash & mask;
    while (slots_[place].length != 0 &&
           (slots_[place].hash != hash ||
            std::string_view(text_).substr(slots_[place].begin, slots_[place].length) != line))
        place = (place + 1) & mask;
    return slots_[place];
}

void Lines::grow() {
    const std::vector<Slot> old = std::move(slots_);
    slots_.assign(old.empty() ? 64 : 2 * old.size(), {});
    for (const Slot& slot : old)
        if (slot.length != 0)
            slot_of(std::string_view(text_).substr(slot.begin, slot.length), slot.hash) = slot;
}

} // namespace cmpihost::metrics
