#include "provider/associations/traversal.h"

#include "provider/access/ports.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"

#include <utility>

namespace fcip {

namespace {

bool fetch_link_again(traversal_source& source) {
    fetched<FcipLinkEntry> link = fetch_link(mts_q, platform_exact, key_of(source.link));
    if (!link)
        return false;
    source.link = *link.row;
    source.unread = std::move(link.row);
    return true;
}

bool fetch_errors(traversal_source& source, const char* member, int location) {
    fetched<FcipLinkErrors> errors = fetch_link_errors(source.link);
    if (errors.status != 0 && errors.row != nullptr) {
        errors.row.reset();
        trace_location(member, location);
    }
    source.unread = std::move(errors.row);
    return source.unread != nullptr;
}

} // namespace

int find_source(key_use use, const char* key_value, traversal_source& source) {
    source.if_index = static_cast<std::uint32_t>(parse_decimal(key_value));
    switch (use) {
    case key_use::number:
        return 0;
    case key_use::ethernet_token:
        return get_eth_ifidx_from_keyvalue(&source.if_index, key_value);
    default:
        return get_fcip_link_entry_from(key_value, &source.link, static_cast<lookup_mode>(use));
    }
}

bool fetch_record(platform_record record, traversal_source& source, const char* member, int location) {
    switch (record) {
    case platform_record::none:
        return true;
    case platform_record::fc_port:
        source.port.reset(pm_cim_find_interface(platform_exact, source.link.link_if_index, mts_q));
        return source.port != nullptr;
    case platform_record::port_of_link:
        source.port = fetch_port(platform_exact, source.link.ethernet_if_index);
        return source.port != nullptr;
    case platform_record::port_or_null:
        source.port = fetch<PmPortInfo>([&](PmPortInfo** port) {
                          return pm_cim_get_port_info(port, platform_exact, source.link.ethernet_if_index, mts_q);
                      }).row; // whatever the status
        return true;
    case platform_record::port_by_key:
        source.port = fetch_port(platform_exact, source.if_index);
        return source.port != nullptr;
    case platform_record::profile:
        return get_profile_from_link_entry(&source.link, &source.profile) == 0;
    case platform_record::link_again:
        return fetch_link_again(source);
    case platform_record::errors:
        return fetch_errors(source, member, location);
    case platform_record::errors_or_none:
        fetch_errors(source, member, location);
        return true;
    }
    return false;
}

} // namespace fcip
