// The FCIP service's tables, read one row per call, and the lookups that turn a CIM key value back into a row.
#pragma once

#include "platform/services.h"
#include "provider/common/memory.h"

#include <array>

namespace fcip {

/// The key words of the link table: {entity id, link index}.
using link_key = std::array<std::uint32_t, 2>;

/// The key of a link row.
inline link_key key_of(const FcipLinkEntry& link) {
    return {link.entity_id, link.link_index};
}

/// One read of the entity table. @param constant 5, or 30 where the keep-alive is read anew
fetched<FcipEntityEntry> fetch_entity(mts_queue queue, int operation, std::uint32_t entity_id, int constant = 5);

/// One read of the link table.
fetched<FcipLinkEntry> fetch_link(mts_queue queue, int operation, const link_key& key);

/// The profile that a link uses; null if it cannot be read.
platform_ptr<FcipEntityEntry> profile_of(const FcipLinkEntry& link);

/// Reads a link's error counters.
fetched<FcipLinkErrors> fetch_link_errors(const FcipLinkEntry& link);

/// What a visitor says of a walk.
enum class walk { go_on, stop };

/// Hands each row of the link table, in order, to `visit`. A row is released before the next one is read.
/// @return whether the walk ended with a failed read that had left a row (released by now)
template <typename Visit>
bool walk_links(mts_queue queue, Visit visit) {
    link_key key{};
    for (;;) {
        const fetched<FcipLinkEntry> link = fetch_link(queue, platform_next, key);
        if (!link)
            return link.row != nullptr;
        if (visit(*link.row) == walk::stop)
            return false;
        key = key_of(*link.row);
    }
}

/// Hands each row of the entity table, in order, to `visit`, as walk_links does.
/// @param patience how many reads that succeed without a row are repeated before the walk ends
template <typename Visit>
bool walk_entities(mts_queue queue, Visit visit, int patience = 0) {
    std::uint32_t key = 0;
    for (int fruitless = 0; fruitless <= patience;) {
        const fetched<FcipEntityEntry> entity = fetch_entity(queue, platform_next, key);
        if (entity.status != 0)
            return entity.row != nullptr;
        if (entity.row == nullptr) {
            ++fruitless;
            continue;
        }
        if (visit(*entity.row) == walk::stop)
            return false;
        key = entity.row->entity_id;
        fruitless = 0;
    }
    return false;
}

/// The patience of the walks that repeat a read that brought no row.
inline constexpr int patient = 100;

/// How a key value names a link row. Tokens are separated by "_" (by ":" or "_" in ethernet_if_index); numbers are
/// signed decimal, and what follows their digits is ignored.
enum class lookup_mode : int {
    tunnel = 1,            ///< "TUNNEL_...": link index + 1
    if_index = 2,          ///< "IFINDEX_...": link if-index
    if_index_only = 3,     ///< "IFINDEX": link if-index, the whole text
    ethernet_if_index = 4, ///< "IFINDEX:...": Ethernet if-index
    entity = 5,            ///< "ID": entity id, the whole text
    peer_address = 6,      ///< "0_ADDRESS": the peer's address as the platform writes it, without regard to case
    peer_if_index = 7,     ///< "0_IFINDEX": link if-index
};

/// Finds the link row that a key value names and copies it to `destination`. A key that names no row is no error: the
/// answer is 0 and `destination` stays as it was.
/// @return 0, or -1 when the key lacks a token that the mode needs (an empty table never looks at the key)
int get_fcip_link_entry_from(const char* key_value, FcipLinkEntry* destination, lookup_mode mode);

/// Finds the profile whose id, as text, equals the key value exactly: "7" matches profile 7, "07" nothing.
/// @return 1 and the row in `destination`, or 0
int get_fcip_entity_from_key_value(mts_queue queue, const char* key_value, FcipEntityEntry* destination);

/// Finds the profile whose id equals the key value read as decimal. @return 0 found or not; -1 for a null key
int get_fcip_entity_from(const char* key_value, FcipEntityEntry* destination);

/// Reads the profile that a link uses (only its entity id is read). @return 0, or -1 if it cannot be read
int get_profile_from_link_entry(const FcipLinkEntry* link, FcipEntityEntry* destination);

/// Finds the first link with the index, whatever its profile. @return 0, or -1 if there is none
int get_link_from_link_index(mts_queue queue, std::uint32_t link_index, FcipLinkEntry* destination);

/// Walks the link table and discards each row. Always 0.
int get_all_link_entries(mts_queue queue);

/// The interfaces that use a profile, as the FCIP service replied: a u32 count, then that many u32 interface indexes,
/// host order. `count` is cut to what the reply holds; null when there was no reply of at least four bytes.
struct interface_list {
    platform_ptr<std::uint8_t> reply;
    std::uint32_t count = 0;

    explicit operator bool() const { return reply != nullptr; }
    std::uint32_t operator[](std::uint32_t position) const; ///< the interface index at `position` < count
};

/// Asks the FCIP service for the interfaces that use a profile.
interface_list fcip_get_ifs_for_this_profile(std::uint32_t entity_id, mts_queue queue);

} // namespace fcip
