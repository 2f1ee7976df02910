// get_fcip_link_entry_from: the one resolver of key values that name a link.
#include "provider/access/fcip_tables.h"

#include "provider/access/addresses.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

#include <strings.h>

namespace fcip {

namespace {

constexpr const char* self = "get_fcip_link_entry_from";

// The location traces, whole: they are printed for every row.
constexpr std::string_view no_line = "";
constexpr std::string_view line_76 = " Function : get_fcip_link_entry_from Line 76 \n";
constexpr std::string_view line_113 = " Function : get_fcip_link_entry_from Line 113 \n";
constexpr std::string_view line_151 = " Function : get_fcip_link_entry_from Line 151 \n";
constexpr std::string_view line_165 = " Function : get_fcip_link_entry_from Line 165 \n";
constexpr std::string_view line_170 = " Function : get_fcip_link_entry_from Line 170 \n";
constexpr std::string_view line_193 = " Function : get_fcip_link_entry_from Line 193 \n";

/// A key value as a mode reads it. A token that the key lacks is null, and its number 0.
struct lookup_key {
    std::array<char, 512> text; ///< the key value, split into its tokens
    const char* first;
    const char* second;
    std::int32_t first_number;
    std::int32_t second_number;
};

/// Whether a row is the one that a key names. Adds the lines that the comparison prints.
using row_comparison = bool(const FcipLinkEntry& link, const lookup_key& key, trace_lines& lines);

bool is_tunnel(const FcipLinkEntry& link, const lookup_key& key, trace_lines& /*lines*/) {
    return as_signed(link.link_index + 1) == key.first_number;
}

bool is_if_index(const FcipLinkEntry& link, const lookup_key& key, trace_lines& /*lines*/) {
    return as_signed(link.link_if_index) == key.first_number;
}

bool is_ethernet_if_index(const FcipLinkEntry& link, const lookup_key& key, trace_lines& lines) {
    lines.add(" ret_entry->vrkFcipLinkExtEthIfIndex ", as_signed(link.ethernet_if_index), " \n");
    return as_signed(link.ethernet_if_index) == key.first_number;
}

bool is_entity(const FcipLinkEntry& link, const lookup_key& key, trace_lines& /*lines*/) {
    return as_signed(link.entity_id) == key.first_number;
}

bool is_peer_address(const FcipLinkEntry& link, const lookup_key& key, trace_lines& lines) {
    const auto peer = address_text(link.remote_address);
    lines.add(line_170, "ipstr: ", peer.data(), " \n");
    return strcasecmp(peer.data(), key.second) == 0;
}

bool is_peer_if_index(const FcipLinkEntry& link, const lookup_key& key, trace_lines& lines) {
    lines.add("fcipifidx : ", key.second_number, " \n");
    return as_signed(link.link_if_index) == key.second_number;
}

constexpr const char* whole_text = "";

/// How a mode reads a key, and what it compares a row with.
struct mode_row {
    lookup_mode mode;
    const char* delimiters;          ///< or whole_text: the first token is all of the key, even where that is empty
    int tokens;                      ///< where two are needed, the first is 0 in a key that names anything
    row_comparison* matches;         ///< asked for rows whose key has all its tokens
    std::string_view first_line;     ///< what the line with the first number begins with; empty = no such line
    std::string_view location;       ///< the trace ahead of it
    std::string_view location_short; ///< the trace when the second token is missing
};

// clang-format off
constexpr mode_row modes[] = {
    {lookup_mode::tunnel,            "_",        1, is_tunnel,            "tunnel id : ", no_line, no_line},
    {lookup_mode::if_index,          "_",        1, is_if_index,          "if_index : ",  line_76, no_line},
    {lookup_mode::if_index_only,     whole_text, 1, is_if_index,          "if_index : ",  no_line, no_line},
    {lookup_mode::ethernet_if_index, ":_",       1, is_ethernet_if_index, "if_index : ",  line_113, no_line},
    {lookup_mode::entity,            whole_text, 1, is_entity,            "",             no_line, no_line},
    {lookup_mode::peer_address,      "_",        2, is_peer_address,      "if_index : ",  line_151, line_165},
    {lookup_mode::peer_if_index,     "_",        2, is_peer_if_index,     "if_index : ",  line_193, no_line},
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

enum class verdict { no_match, match, short_key };

/// Tests a row, and adds the lines that this prints.
verdict test_row(const mode_row& mode, const FcipLinkEntry& link, const lookup_key& key, trace_lines& lines) {
    lines.add(mode.location);
    if (key.first == nullptr)
        return verdict::short_key;
    if (!mode.first_line.empty())
        lines.add(mode.first_line, key.first_number, " \n");
    if (mode.tokens == 2 && key.first_number != 0)
        return verdict::no_match;
    if (mode.tokens == 2 && key.second == nullptr) {
        lines.add(mode.location_short);
        return verdict::short_key;
    }
    return mode.matches(link, key, lines) ? verdict::match : verdict::no_match;
}

/// Walks the links up to the one that the key names, and copies it out. Prints the lines of each row at once.
verdict find_link(const mode_row& mode, const lookup_key& key, FcipLinkEntry& destination) {
    verdict last = verdict::no_match;
    walk_links(mts_q, [&](const FcipLinkEntry& link) {
        trace_lines lines;
        last = test_row(mode, link, key, lines);
        if (last == verdict::match) {
            lines.add("Entry Found");
            destination = link;
        }
        lines.print();
        return last == verdict::no_match ? walk::go_on : walk::stop;
    });
    return last;
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
        if (find_link(*row, key, *destination) == verdict::short_key)
            return -1;
    }
    trace_exiting(self);
    return 0; // found or not: callers take the destination as it stands
}

} // namespace fcip
