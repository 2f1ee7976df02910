// Key values of object paths: the first byte chooses how the text is read.
#include "fuzz/invariant.h"
#include "provider/access/fcip_tables.h"
#include "provider/access/lock.h"
#include "provider/access/ports.h"
#include "simulator/switchsim.h"

#include <cstring>
#include <string>

namespace {

constexpr unsigned tunnels = 20; // both address families, several profiles

void prepare() {
    fuzz::drop_trace();
    switchsim::generate(tunnels);
    switchsim::complaints_are_fatal(true);
    const fcip::platform_lock lock;
    fuzz::require(init_mts(&mts_q) >= 0, "the queue opens");
}

bool is_row(const FcipLinkEntry& link) {
    const auto& links = switchsim::the_switch().links;
    const auto row = links.find({link.entity_id, link.link_index});
    return row != links.end() && std::memcmp(&row->second, &link, sizeof link) == 0;
}

bool is_row(const FcipEntityEntry& profile) {
    const auto& profiles = switchsim::the_switch().profiles;
    const auto row = profiles.find(profile.entity_id);
    return row != profiles.end() && std::memcmp(&row->second, &profile, sizeof profile) == 0;
}

/// A lookup gives a row of the table or leaves the destination alone.
template <typename Row>
bool is_untouched(const Row& row) {
    const Row zero{};
    return std::memcmp(&row, &zero, sizeof row) == 0;
}

void look_up_link(const char* text, fcip::lookup_mode mode) {
    FcipLinkEntry link{};
    const int result = fcip::get_fcip_link_entry_from(text, &link, mode);
    fuzz::require(result == 0 || result == -1, "a link lookup answers 0 or -1");
    fuzz::require(is_untouched(link) || (result == 0 && is_row(link)), "a link lookup gives a row or nothing");
}

void look_up_profile(const char* text) {
    FcipEntityEntry profile{};
    const int found = fcip::get_fcip_entity_from_key_value(mts_q, text, &profile);
    fuzz::require(found == 1 ? is_row(profile) : is_untouched(profile), "an exact profile lookup says what it found");
    FcipEntityEntry other{};
    fuzz::require(fcip::get_fcip_entity_from(text, &other) == 0, "a profile lookup answers 0");
    fuzz::require(is_untouched(other) || is_row(other), "a profile lookup gives a row or nothing");
    if (found == 1)
        fuzz::require(other.entity_id == profile.entity_id, "both profile lookups agree");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool prepared = (prepare(), true);
    if (!prepared || size == 0)
        return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const fcip::platform_lock lock;
    if (const int mode = data[0] % 9; mode < 8) // 1 to 7 are the modes; 0 is none
        look_up_link(text.c_str(), static_cast<fcip::lookup_mode>(mode));
    else
        look_up_profile(text.c_str());
    std::uint32_t if_index = 0;
    const int result = fcip::get_eth_ifidx_from_keyvalue(&if_index, text.c_str());
    fuzz::require(result == 0 || (result == -1 && if_index == 0), "an interface index comes with success only");
    return 0;
}
