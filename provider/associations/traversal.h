// What all traversals share: how the key of the source object is read.
#pragma once

#include "provider/access/fcip_tables.h"

namespace fcip {

/// How a branch reads the key of the source object. The first seven find the source's link row, in the lookup mode of
/// the same number.
enum class key_use : int {
    tunnel = static_cast<int>(lookup_mode::tunnel),
    if_index = static_cast<int>(lookup_mode::if_index),
    if_index_only = static_cast<int>(lookup_mode::if_index_only),
    ethernet_if_index = static_cast<int>(lookup_mode::ethernet_if_index),
    entity = static_cast<int>(lookup_mode::entity),
    peer_address = static_cast<int>(lookup_mode::peer_address),
    peer_if_index = static_cast<int>(lookup_mode::peer_if_index),
    number,         ///< the whole text as an interface index; no link is looked up
    ethernet_token, ///< the first token as an Ethernet interface index; no link is looked up
    left_to_end,    ///< the far end does its own lookups
};

/// What is known of the object that a traversal starts from.
struct traversal_source {
    FcipLinkEntry link{};       ///< zero where no link was looked up, and where a well-formed key names none
    std::uint32_t if_index = 0; ///< the key's leading number; with ethernet_token that of its first token
};

/// Reads a source object's key. @return 0, or -1 when the key lacks a token
int find_source(key_use use, const char* key_value, traversal_source& source);

} // namespace fcip
