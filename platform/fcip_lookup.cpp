// get_fcip_link_entry_from: the one resolver of key values that name a link.
#include "platform/fcip_tables.h"

#include "common/text.h"
#include "common/trace.h"
#include "platform/addresses.h"

#include <cstdio>
#include <cstring>

#include <strings.h>

namespace fcip {

namespace {

constexpr const char* self = "get_fcip_link_entry_from";

/// A key value split into its first two tokens and read as numbers, once for all rows.
class key_tokens {
  public:
    key_tokens(const char* key_value, const char* delimiters) : text_(format_text<512>("%s", key_value)) {
        char* rest = nullptr;
        const char* first = strtok_r(text_.data(), delimiters, &rest);
        has_first_ = first != nullptr;
        if (!has_first_)
            return;
        first_ = parse_decimal(first);
        second_ = strtok_r(nullptr, delimiters, &rest);
    }
    key_tokens(const key_tokens&) = delete;
    key_tokens& operator=(const key_tokens&) = delete;

    bool has_first() const { return has_first_; }
    bool has_second() const { return second_ != nullptr; }
    std::int32_t first() const { return first_; }
    const char* second() const { return second_; }

  private:
    std::array<char, 512> text_;
    bool has_first_ = false;
    std::int32_t first_ = 0;
    const char* second_ = nullptr;
};

enum class verdict { match, no_match, short_key };

verdict matches(bool equal) {
    return equal ? verdict::match : verdict::no_match;
}

verdict by_tunnel(const key_tokens& key, const FcipLinkEntry& link) {
    if (!key.has_first())
        return verdict::short_key;
    trace_number("tunnel id : ", key.first(), " \n");
    return matches(as_signed(link.link_index + 1) == key.first());
}

verdict by_if_index(const key_tokens& key, const FcipLinkEntry& link) {
    trace_location(self, 76);
    if (!key.has_first())
        return verdict::short_key;
    trace_number("if_index : ", key.first(), " \n");
    return matches(as_signed(link.link_if_index) == key.first());
}

verdict by_whole_if_index(const char* key_value, const FcipLinkEntry& link) {
    const std::int32_t if_index = parse_decimal(key_value);
    trace_number("if_index : ", if_index, " \n");
    return matches(as_signed(link.link_if_index) == if_index);
}

verdict by_ethernet_if_index(const key_tokens& key, const FcipLinkEntry& link) {
    trace_location(self, 113);
    if (!key.has_first())
        return verdict::short_key;
    trace_number("if_index : ", key.first(), " \n");
    trace_number(" ret_entry->vrkFcipLinkExtEthIfIndex ", as_signed(link.ethernet_if_index), " \n");
    return matches(as_signed(link.ethernet_if_index) == key.first());
}

verdict by_entity(const char* key_value, const FcipLinkEntry& link) {
    return matches(as_signed(link.entity_id) == parse_decimal(key_value));
}

verdict by_peer_address(const key_tokens& key, const FcipLinkEntry& link) {
    trace_location(self, 151);
    if (!key.has_first())
        return verdict::short_key;
    trace_number("if_index : ", key.first(), " \n");
    if (key.first() != 0)
        return verdict::no_match;
    if (!key.has_second()) {
        trace_location(self, 165);
        return verdict::short_key;
    }
    trace_location(self, 170);
    const auto peer = address_text(link.remote_address);
    std::printf("ipstr: %s \n", peer.data());
    return matches(strcasecmp(peer.data(), key.second()) == 0);
}

verdict by_peer_if_index(const key_tokens& key, const FcipLinkEntry& link) {
    trace_location(self, 193);
    if (!key.has_first())
        return verdict::short_key;
    trace_number("if_index : ", key.first(), " \n");
    if (key.first() != 0)
        return verdict::no_match;
    if (!key.has_second())
        return verdict::short_key;
    const std::int32_t if_index = parse_decimal(key.second());
    trace_number("fcipifidx : ", if_index, " \n");
    return matches(as_signed(link.link_if_index) == if_index);
}

verdict compare(lookup_mode mode, const char* key_value, const key_tokens& key, const FcipLinkEntry& link) {
    switch (mode) {
    case lookup_mode::tunnel:
        return by_tunnel(key, link);
    case lookup_mode::if_index:
        return by_if_index(key, link);
    case lookup_mode::if_index_only:
        return by_whole_if_index(key_value, link);
    case lookup_mode::ethernet_if_index:
        return by_ethernet_if_index(key, link);
    case lookup_mode::entity:
        return by_entity(key_value, link);
    case lookup_mode::peer_address:
        return by_peer_address(key, link);
    case lookup_mode::peer_if_index:
        return by_peer_if_index(key, link);
    }
    return verdict::no_match; // an unknown mode matches no row
}

} // namespace

int get_fcip_link_entry_from(const char* key_value, FcipLinkEntry* destination, lookup_mode mode) {
    trace_entering(self);
    const key_tokens key(key_value, mode == lookup_mode::ethernet_if_index ? ":_" : "_");
    verdict last = verdict::no_match;
    walk_links(mts_q, [&](const FcipLinkEntry& link) {
        last = compare(mode, key_value, key, link);
        if (last == verdict::no_match)
            return walk::go_on;
        if (last == verdict::match) {
            std::printf("Entry Found");
            *destination = link;
        }
        return walk::stop;
    });
    if (last == verdict::short_key)
        return -1;
    trace_exiting(self);
    return 0; // found or not: callers take the destination as it stands
}

} // namespace fcip
