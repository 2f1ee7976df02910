// get_fcip_link_entry_from: the one resolver of key values that name a link.
#include "provider/access/fcip_tables.h"

#include "provider/access/addresses.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"

#include <cstring>
#include <string>

#include <strings.h>

namespace fcip {

namespace {

constexpr const char* self = "get_fcip_link_entry_from";

enum class verdict { open, match, no_match, short_key };

verdict matches(bool equal) {
    return equal ? verdict::match : verdict::no_match;
}

/// A key value read for a mode, once for all rows: what it says of every row, and what each row is compared with.
class row_test {
  public:
    row_test(const char* key_value, lookup_mode mode)
        : mode_(mode), key_(copy_text<512>(key_value)), on_every_row_(read(key_value)) {}
    row_test(const row_test&) = delete;
    row_test& operator=(const row_test&) = delete;

    verdict operator()(const FcipLinkEntry& link, trace_lines& trace) {
        trace.text(of_every_row_.view());
        return on_every_row_ == verdict::open ? compare(link, trace) : on_every_row_;
    }

  private:
    verdict read(const char* key_value);
    verdict read_first(const char* before, const char* delimiters = "_");
    verdict read_ethernet_if_index();
    verdict read_peer(int location);
    verdict read_peer_address();
    verdict read_peer_if_index();
    verdict compare(const FcipLinkEntry& link, trace_lines& trace);
    verdict compare_ethernet_if_index(const FcipLinkEntry& link, trace_lines& trace);
    verdict compare_address(const FcipLinkEntry& link, trace_lines& trace) const;

    lookup_mode mode_;
    std::array<char, 512> key_; ///< split into tokens
    char* rest_ = nullptr;      ///< of the key
    std::int32_t number_ = 0;
    const char* address_ = nullptr;
    trace_lines of_every_row_; ///< the lines that the key alone gives
    verdict on_every_row_;
    std::uint32_t shown_if_index_ = 0; ///< the one in shown_
    std::string shown_;                ///< the end of a row's line with its Ethernet if-index
};

/// @return the verdict on every row, open where it depends on the row
verdict row_test::read(const char* key_value) {
    switch (mode_) {
    case lookup_mode::tunnel:
        return read_first("tunnel id : ");
    case lookup_mode::if_index:
        of_every_row_.location(self, 76);
        return read_first("if_index : ");
    case lookup_mode::if_index_only:
        number_ = parse_decimal(key_value);
        of_every_row_.number("if_index : ", number_, " \n");
        return verdict::open;
    case lookup_mode::ethernet_if_index:
        return read_ethernet_if_index();
    case lookup_mode::entity:
        number_ = parse_decimal(key_value);
        return verdict::open;
    case lookup_mode::peer_address:
        return read_peer_address();
    case lookup_mode::peer_if_index:
        return read_peer_if_index();
    }
    return verdict::no_match; // an unknown mode matches no row
}

verdict row_test::read_ethernet_if_index() {
    of_every_row_.location(self, 113);
    const verdict first = read_first("if_index : ", ":_");
    if (first == verdict::open)
        of_every_row_.text(" ret_entry->vrkFcipLinkExtEthIfIndex ");
    return first;
}

verdict row_test::read_first(const char* before, const char* delimiters) {
    const char* first = strtok_r(key_.data(), delimiters, &rest_);
    if (first == nullptr)
        return verdict::short_key;
    number_ = parse_decimal(first);
    of_every_row_.number(before, number_, " \n");
    return verdict::open;
}

/// The first token of a peer's key, which is 0.
verdict row_test::read_peer(int location) {
    of_every_row_.location(self, location);
    const verdict first = read_first("if_index : ");
    return first == verdict::open && number_ != 0 ? verdict::no_match : first;
}

verdict row_test::read_peer_address() {
    const verdict first = read_peer(151);
    if (first != verdict::open)
        return first;
    address_ = strtok_r(nullptr, "_", &rest_);
    if (address_ == nullptr) {
        of_every_row_.location(self, 165);
        return verdict::short_key;
    }
    of_every_row_.location(self, 170).text("ipstr: ");
    return verdict::open;
}

verdict row_test::read_peer_if_index() {
    const verdict first = read_peer(193);
    if (first != verdict::open)
        return first;
    const char* second = strtok_r(nullptr, "_", &rest_);
    if (second == nullptr)
        return verdict::short_key;
    number_ = parse_decimal(second);
    of_every_row_.number("fcipifidx : ", number_, " \n");
    return verdict::open;
}

verdict row_test::compare(const FcipLinkEntry& link, trace_lines& trace) {
    switch (mode_) {
    case lookup_mode::tunnel:
        return matches(as_signed(link.link_index + 1) == number_);
    case lookup_mode::if_index:
    case lookup_mode::if_index_only:
    case lookup_mode::peer_if_index:
        return matches(as_signed(link.link_if_index) == number_);
    case lookup_mode::ethernet_if_index:
        return compare_ethernet_if_index(link, trace);
    case lookup_mode::entity:
        return matches(as_signed(link.entity_id) == number_);
    case lookup_mode::peer_address:
        return compare_address(link, trace);
    }
    return verdict::no_match;
}

/// Neighbouring links mostly share their port, so its number is put into text once for all of them.
verdict row_test::compare_ethernet_if_index(const FcipLinkEntry& link, trace_lines& trace) {
    if (shown_.empty() || link.ethernet_if_index != shown_if_index_) {
        shown_if_index_ = link.ethernet_if_index;
        shown_ = std::string(index_text(shown_if_index_).data()) + " \n";
    }
    trace.text(shown_);
    return matches(as_signed(link.ethernet_if_index) == number_);
}

verdict row_test::compare_address(const FcipLinkEntry& link, trace_lines& trace) const {
    const auto peer = address_text(link.remote_address);
    trace.text(peer.data()).text(" \n");
    return matches(strcasecmp(peer.data(), address_) == 0);
}

} // namespace

int get_fcip_link_entry_from(const char* key_value, FcipLinkEntry* destination, lookup_mode mode) {
    trace_lines trace;
    trace.entering(self);
    row_test test(key_value, mode);
    verdict last = verdict::no_match;
    walk_links(mts_q, [&](const FcipLinkEntry& link) {
        last = test(link, trace);
        if (last == verdict::no_match)
            return walk::go_on;
        if (last == verdict::match) {
            trace.text("Entry Found");
            *destination = link;
        }
        return walk::stop;
    });
    if (last != verdict::short_key)
        trace.exiting(self);
    trace.print();
    return last == verdict::short_key ? -1 : 0; // found or not: callers take the destination as it stands
}

} // namespace fcip
