#include "provider/access/fcip_tables.h"

#include "provider/common/endian.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"

#include <algorithm>
#include <cstring>

namespace fcip {

namespace {

constexpr std::uint32_t opcode_profile_interfaces = 8946;
constexpr mts_addr fcip_service{0xfe000000, 60};

} // namespace

fetched<FcipEntityEntry> fetch_entity(mts_queue queue, int operation, std::uint32_t entity_id, int constant) {
    return fetch<FcipEntityEntry>(
        [&](FcipEntityEntry** row) { return fcip_get_entity_entry(queue, operation, entity_id, row, constant); });
}

fetched<FcipLinkEntry> fetch_link(mts_queue queue, int operation, const link_key& key) {
    return fetch<FcipLinkEntry>(
        [&](FcipLinkEntry** row) { return fcip_get_link_entry(queue, operation, key.data(), row, 30, 1); });
}

platform_ptr<FcipEntityEntry> profile_of(const FcipLinkEntry& link) {
    return fetch_entity(mts_q, platform_exact, link.entity_id).take();
}

fetched<FcipLinkErrors> fetch_link_errors(const FcipLinkEntry& link) {
    const link_key key = key_of(link);
    return fetch<FcipLinkErrors>([&](FcipLinkErrors** record) {
        return fcip_snmp_get_link_errors(mts_q, platform_exact, key.data(), record, 10);
    });
}

int get_fcip_entity_from_key_value(mts_queue queue, const char* key_value, FcipEntityEntry* destination) {
    const std::int32_t wanted = parse_decimal(key_value);
    const bool names_one = std::strcmp(index_text(static_cast<std::uint32_t>(wanted)).data(), key_value) == 0;
    int found = 0;
    walk_entities(
        queue,
        [&](const FcipEntityEntry& entity) {
            if (names_one && as_signed(entity.entity_id) == wanted) {
                *destination = entity;
                found = 1;
            }
            return walk::go_on; // a later equal row would overwrite
        },
        patient);
    return found;
}

int get_fcip_entity_from(const char* key_value, FcipEntityEntry* destination) {
    if (key_value == nullptr)
        return -1;
    trace_entering(__func__);
    const std::int32_t wanted = parse_decimal(key_value);
    walk_entities(mts_q, [&](const FcipEntityEntry& entity) {
        if (as_signed(entity.entity_id) != wanted)
            return walk::go_on;
        trace("Match Found ");
        *destination = entity;
        return walk::stop;
    });
    trace_exiting(__func__);
    return 0;
}

int get_profile_from_link_entry(const FcipLinkEntry* link, FcipEntityEntry* destination) {
    const fetched<FcipEntityEntry> profile = fetch_entity(mts_q, platform_exact, link->entity_id);
    if (profile)
        *destination = *profile.row;
    if (profile.row != nullptr) // after a success too: a trace, not a failure
        trace("get_profile_from_link_entry : Error\n");
    return profile ? 0 : -1;
}

int get_link_from_link_index(mts_queue queue, std::uint32_t link_index, FcipLinkEntry* destination) {
    int result = -1;
    walk_links(queue, [&](const FcipLinkEntry& link) {
        if (link.link_index != link_index)
            return walk::go_on;
        *destination = link;
        result = 0;
        return walk::stop;
    });
    return result;
}

int get_all_link_entries(mts_queue queue) {
    walk_links(queue, [](const FcipLinkEntry&) { return walk::go_on; });
    return 0;
}

std::uint32_t interface_list::operator[](std::uint32_t position) const {
    return read_host32(reply.get() + std::size_t{4} * (position + 1));
}

interface_list fcip_get_ifs_for_this_profile(std::uint32_t entity_id, mts_queue queue) {
    void* reply = nullptr;
    std::uint32_t length = 0;
    platform_storage<4096> scratch;
    fcip_send_recv_with_mts_q(opcode_profile_interfaces, &fcip_service, &entity_id, sizeof entity_id, queue, &reply,
                              &length, scratch.data());
    interface_list list{platform_ptr<std::uint8_t>(static_cast<std::uint8_t*>(reply)), 0};
    if (list.reply == nullptr || length < 4)
        return {};
    list.count = std::min(read_host32(list.reply.get()), length / 4 - 1);
    return list;
}

} // namespace fcip
