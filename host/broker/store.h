// What the objects of one scope are made of: its arena, and the names in it.
#pragma once

#include "host/broker/arena.h"
#include "host/cim/names.h"

#include <cstdint>
#include <vector>

namespace cmpihost {

/// The name of a class, key, property, namespace or host, held once however many objects bear it.
struct Name {
    std::string_view text; ///< with a terminator behind it
    std::uint32_t hash;    ///< the same for names that differ in case only
};

class Store {
  public:
    /// The name of this text, exactly as it is written. It stays until the store's end.
    const Name* name(std::string_view text);

    Arena arena;

    /// For how many properties a new instance gets room: as many as the one returned last had, 48 at most.
    std::uint32_t likely_properties = 8;

  private:
    const Name* find_or_add(std::string_view text);
    const Name* add(std::string_view text, std::uint32_t hash);
    void grow();

    /// A name that was asked for, and where its text stood then: most are literals, and come from there again.
    struct Recent {
        const char* at = nullptr;
        const Name* name = nullptr;
    };
    std::array<Recent, 256> recent_{};
    std::vector<const Name*> slots_; // open addressing, at most half full
    std::size_t count_ = 0;
};

/// Whether the names differ in case at most.
inline bool same_name(const Name& a, const Name& b) {
    return &a == &b || (a.hash == b.hash && same_name(a.text, b.text));
}

} // namespace cmpihost
