// What all traversals share: what they are asked, how the key of the source object is read, what is fetched beside the
// source's link row, and how the objects at the ends of an association are made from it.
#pragma once

#include "provider/access/fcip_tables.h"
#include "provider/classes/builders.h"

namespace fcip {

/// Whether an operation answers with instances or with their names.
enum class wanted { instances, paths };

/// What a member was asked.
struct traversal_request {
    const char* member; ///< the member's own name, for traces
    wanted answer;
    const char* key_value;
    const char* association_class; ///< may be null
    const CMPIResult* result;
    const char* name_space;
    const char** properties = nullptr; ///< null = all
};

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
};

/// A platform record that a branch fetches after its lookup. Without it the branch ends, unless it says otherwise.
enum class platform_record {
    none,
    fc_port,        ///< the Fibre Channel port behind the link's FCIP interface
    port_of_link,   ///< the Ethernet port that carries the link
    port_or_null,   ///< the same; goes on without it
    port_by_key,    ///< the port with the key's interface index
    profile,        ///< the link's profile
    link_again,     ///< the link, read once more by its key
    errors,         ///< the link's error counters, which nobody uses
    errors_or_none, ///< the same; goes on without them
};

/// What is known of the object that a traversal starts from. Its records are released with it.
struct traversal_source {
    FcipLinkEntry link{};       ///< zero where no link was looked up, and where a well-formed key names none
    std::uint32_t if_index = 0; ///< the key's leading number; with ethernet_token that of its first token
    FcipEntityEntry profile{};
    platform_ptr<PmPortInfo> port{};
    platform_ptr<void> unread{}; ///< a record that only has to be held until the far end was returned
};

/// How an object at an end is made: its instance and its path. The link's profile, the port or the interface index of
/// the source stand for objects as its link row does.
struct end_class {
    CMPIInstance* (*build)(const char* class_name, const char* name_space, const traversal_source& source,
                           const char** properties);
    CMPIObjectPath* (*fill)(const char* class_name, const char* name_space, const traversal_source& source);
};

/// One end of an association.
struct association_end {
    const char* class_name; ///< the class text that the builders are given
    end_class of;
};

/// Reads a source object's key. @return 0, or -1 when the key lacks a token
int find_source(key_use use, const char* key_value, traversal_source& source);

/// Fetches a record that a branch needs. Error counters that fail and leave a record are traced.
/// @param member,location of the trace
/// @return whether the branch goes on
bool fetch_record(platform_record record, traversal_source& source, const char* member, int location);

} // namespace fcip
