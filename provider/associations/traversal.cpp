#include "provider/associations/traversal.h"

#include "provider/access/ports.h"
#include "provider/common/text.h"

namespace fcip {

int find_source(key_use use, const char* key_value, traversal_source& source) {
    source.if_index = static_cast<std::uint32_t>(parse_decimal(key_value));
    switch (use) {
    case key_use::number:
    case key_use::left_to_end:
        return 0;
    case key_use::ethernet_token:
        return get_eth_ifidx_from_keyvalue(&source.if_index, key_value);
    default:
        return get_fcip_link_entry_from(key_value, &source.link, static_cast<lookup_mode>(use));
    }
}

} // namespace fcip
