#include "host/broker/store.h"

#include <new>

namespace cmpihost {

namespace {

std::uint32_t hash_of(std::string_view text) {
    return static_cast<std::uint32_t>(NameTraits{}(text));
}

/// Literals lie close together: the product spreads them, so that hardly two of a class meet in one place.
std::size_t place_of(const char* text) {
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(text)) * std::uint32_t{0x9e3779b1} >> 24;
}

/// The slot of the name with this text, or the empty one where it belongs.
std::size_t slot_of(const std::vector<const Name*>& slots, std::string_view text, std::uint32_t hash) {
    std::size_t slot = hash % slots.size();
    while (slots[slot] != nullptr && slots[slot]->text != text)
        slot = (slot + 1) % slots.size();
    return slot;
}

} // namespace

const Name* Store::name(std::string_view text) {
    if (!arena.is_mine()) // the table is for the thread of the arena alone
        return add(text, hash_of(text));
    Recent& recent = recent_[place_of(text.data()) % recent_.size()];
    if (recent.at != text.data() || recent.name->text != text)
        recent = {text.data(), find_or_add(text)};
    return recent.name;
}

const Name* Store::find_or_add(std::string_view text) {
    if (2 * (count_ + 1) > slots_.size())
        grow();
    const std::uint32_t hash = hash_of(text);
    const Name*& found = slots_[slot_of(slots_, text, hash)];
    if (found == nullptr) {
        found = add(text, hash);
        ++count_;
    }
    return found;
}

const Name* Store::add(std::string_view text, std::uint32_t hash) {
    return new (arena.allocate(sizeof(Name))) Name{arena.copy(text), hash};
}

void Store::grow() {
    std::vector<const Name*> larger(slots_.empty() ? 64 : 2 * slots_.size());
    for (const Name* name : slots_)
        if (name != nullptr)
            larger[slot_of(larger, name->text, name->hash)] = name;
    slots_ = std::move(larger);
}

} // namespace cmpihost
