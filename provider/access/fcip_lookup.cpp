// get_fcip_link_entry_from: the one resolver of key values that name a link.
#include "provider/access/fcip_tables.h"

#include "provider/access/addresses.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"

#include <algorithm>
#include <cstring>

#include <strings.h>

namespace fcip {

namespace {

constexpr const char* self = "get_fcip_link_entry_from";

/// A key value as a mode reads it. A token that the key lacks is null, and its number 0.
struct lookup_key {
    std::array<char, 512> text; ///< the key value, split into its tokens
    const char* first;
    const char* second;
    std::int32_t first_number;
    std::int32_t second_number;
};

constexpr const char* whole_text = "";
constexpr int no_location = 0;

/// How a mode reads a key, and what it prints of it for each row.
struct mode_row {
    lookup_mode mode;
    const char* delimiters;           ///< or whole_text: the first token is all of the key, even where that is empty
    int tokens;                       ///< where two are needed, the first is 0 in a key that names anything
    const char* first_line;           ///< what the line with the first number begins with; null = no such line
    int location;                     ///< of the trace ahead of it
    int location_short = no_location; ///< of the trace when the second token is missing
};

// clang-format off
constexpr mode_row modes[] = {
    {lookup_mode::tunnel,            "_",        1, "tunnel id : ", no_location},
    {lookup_mode::if_index,          "_",        1, "if_index : ",  76},
    {lookup_mode::if_index_only,     whole_text, 1, "if_index : ",  no_location},
    {lookup_mode::ethernet_if_index, ":_",       1, "if_index : ",  113},
    {lookup_mode::entity,            whole_text, 1, nullptr,        no_location},
    {lookup_mode::peer_address,      "_",        2, "if_index : ",  151, 165},
    {lookup_mode::peer_if_index,     "_",        2, "if_index : ",  193},
};
// clang-format on

/// Splits a key value, of which 511 characters count, into the tokens that a mode reads.
void read_key(const mode_row& mode, const char* key_value, lookup_key& key) {
    key.text = copy_text<512>(key_value);
    char* rest = nullptr;
    key.first = *mode.delimiters == '\0' ? key.text.data() : strtok_r(key.text.data(), mode.delimiters, &rest);
    key.second = mode.tokens == 2 && key.first != nullptr ? strtok_r(nullptr, mode.delimiters, &rest) : nullptr;
    key.first_number = key.first == nullptr ? 0 : parse_decimal(key.first);
    key.second_number = key.second == nullptr ? 0 : parse_decimal(key.second);
}

/// What can be said of a key before it is held against a row.
enum class key_kind { complete, of_no_row, too_short };

/// Judges a key, and adds the lines that every row prints of it.
key_kind judge_key(const mode_row& mode, const lookup_key& key, trace_lines& lines) {
    if (mode.location != no_location)
        lines.location(self, mode.location);
    if (key.first == nullptr)
        return key_kind::too_short;
    if (mode.first_line != nullptr)
        lines.add(mode.first_line, key.first_number, " \n");
    if (mode.tokens == 2 && key.first_number != 0)
        return key_kind::of_no_row;
    if (mode.tokens == 2 && key.second == nullptr) {
        if (mode.location_short != no_location)
            lines.location(self, mode.location_short);
        return key_kind::too_short;
    }
    return key_kind::complete;
}

/// Whether a row is the one that a complete key names. Adds the lines that the comparison prints.
bool matches(lookup_mode mode, const FcipLinkEntry& link, const lookup_key& key, trace_lines& lines) {
    switch (mode) {
    case lookup_mode::tunnel:
        return as_signed(link.link_index + 1) == key.first_number;
    case lookup_mode::if_index:
    case lookup_mode::if_index_only:
        return as_signed(link.link_if_index) == key.first_number;
    case lookup_mode::ethernet_if_index:
        lines.add(" ret_entry->vrkFcipLinkExtEthIfIndex ", as_signed(link.ethernet_if_index), " \n");
        return as_signed(link.ethernet_if_index) == key.first_number;
    case lookup_mode::entity:
        return as_signed(link.entity_id) == key.first_number;
    case lookup_mode::peer_address: {
        lines.location(self, 170);
        const auto peer = address_text(link.remote_address);
        lines.add("ipstr: ", peer.data(), " \n");
        return strcasecmp(peer.data(), key.second) == 0;
    }
    case lookup_mode::peer_if_index:
        lines.add("fcipifidx : ", key.second_number, " \n");
        return as_signed(link.link_if_index) == key.second_number;
    }
    return false;
}

/// Walks the links up to the one that the key names, and copies it out. Prints the lines of each row at once.
/// @return 0, or -1 when there is a row and the key is too short for it
int find_link(const mode_row& mode, const lookup_key& key, FcipLinkEntry& destination) {
    trace_lines key_lines;
    const key_kind kind = judge_key(mode, key, key_lines);
    int status = 0;
    walk_links(mts_q, [&](const FcipLinkEntry& link) {
        trace_lines lines;
        lines.add(key_lines.text());
        const bool found = kind == key_kind::complete && matches(mode.mode, link, key, lines);
        if (found) {
            lines.add("Entry Found");
            destination = link;
        }
        lines.print();
        status = kind == key_kind::too_short ? -1 : 0;
        return found || status != 0 ? walk::stop : walk::go_on;
    });
    return status;
}

} // namespace

int get_fcip_link_entry_from(const char* key_value, FcipLinkEntry* destination, lookup_mode mode) {
    trace_entering(self);
    const auto row = std::ranges::find(modes, mode, &mode_row::mode);
    if (row == std::end(modes)) {
        get_all_link_entries(mts_q); // an unknown mode matches no row
    } else {
        lookup_key key;
        read_key(*row, key_value, key);
        if (find_link(*row, key, *destination) != 0)
            return -1;
    }
    trace_exiting(self);
    return 0; // found or not: callers take the destination as it stands
}

} // namespace fcip
