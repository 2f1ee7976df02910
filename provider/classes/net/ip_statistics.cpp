#include "provider/classes/net/ip_statistics.h"

#include "provider/access/statistics.h"
#include "provider/access/systems.h"
#include "provider/common/endian.h"
#include "provider/common/memory.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

#include <array>
#include <cstring>

namespace fcip {

namespace {

using ip_counters = std::array<std::uint8_t, ip_record_size>;

/// A property that is the sum of some words of the counter record, less another: 32 bits, wrapping around.
struct counter_row {
    const char* property;
    std::array<std::size_t, 6> added; ///< byte offsets; 0 = none
    std::size_t subtracted = 0;       ///< byte offset; 0 = none
};

/// Which word feeds which property, and a property that is set twice, are what clients have always been given.
constexpr counter_row counter_rows[] = {
    {"ReceivedPDUs", {36}},
    {"ReceivedPDUHeaderErrors", {64, 68, 72, 76, 56, 140}},
    {"ReceivedPDUAddressErrors", {80}},
    {"ReceivedPDUForwards", {92}},
    {"ReceivedPDUUnknownProtocolErrors", {108}},
    {"ReceivedPDUDiscards", {152}},
    {"PDUDelivers", {44}},
    {"SentPDUs", {52}},
    {"SentPDUDiscards", {84}},
    {"SentPDUNoRouteErrors", {136}},
    {"ReassemblyRequireds", {80}, 116}, // the address errors less the reassembled packets
    {"ReassembledPackets", {116}},
    {"ReassemblyFailed", {148}},
    {"Fragmentation", {120}},
    {"FragmentationFaileds", {128}},
    {"FragmentedPDUCreates", {124}},
    {"FragmentationFaileds", {128}},
    {"RouteEntriesDiscards", {152}}, // the same word as ReceivedPDUDiscards
};

std::uint32_t value_of(const counter_row& row, const ip_counters& counters) {
    const auto word = [&](std::size_t offset) { return offset == 0 ? 0 : read_be32(counters.data() + offset); };
    std::uint32_t value = 0;
    for (const std::size_t offset : row.added)
        value += word(offset);
    return value - word(row.subtracted);
}

void set_properties(CMPIInstance* instance, const FcipLinkEntry& link, const ip_counters& counters) {
    set_string(instance, "InstanceID", index_text(link.link_if_index).data());
    set_string(instance, "SystemName", vsan_system_name(link.link_if_index).data());
    set_string(instance, "CreationClassName", "ZANTO_IPEndPointStatistics");
    for (const counter_row& row : counter_rows)
        set_uint32(instance, row.property, value_of(row, counters));
}

/// Copies out the line card's counters for the Ethernet port that carries the link. False when none came back.
bool query_counters(const FcipLinkEntry& link, ip_counters& counters) {
    std::uint8_t* reply = nullptr;
    const int status = get_ip_stats(mts_q, link.ethernet_if_index, 1, &reply);
    const platform_ptr<std::uint8_t> record(reply);
    trace(status == 0 ? "Great!!!\n" : "\ntol : some problem in get_ip_stats\n ");
    if (record == nullptr)
        return false;
    std::memcpy(counters.data(), record.get(), counters.size());
    return true;
}

} // namespace

CMPIInstance* ip_statistics_build_instance(const char* class_name, const char* name_space, const FcipLinkEntry* link,
                                           const char** properties) {
    trace_entering(__func__);
    CMPIInstance* instance = new_switch_instance(class_name, name_space, __func__);
    if (!is_usable(instance))
        return instance;
    if (link == nullptr)
        return nullptr;
    ip_counters counters{};
    if (!query_counters(*link, counters))
        return nullptr;
    set_properties(instance, *link, counters);
    filter_properties(instance, properties);
    trace_exiting(__func__);
    return instance;
}

} // namespace fcip
