#include "provider/classes/net/tcp_statistics.h"

#include "provider/access/fcip_tables.h"
#include "provider/access/statistics.h"
#include "provider/access/systems.h"
#include "provider/common/endian.h"
#include "provider/common/results.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

namespace fcip {

namespace {

using tcp_counters = std::array<std::uint8_t, tcp_record_size>;

/// A property and the byte offset of its word in the counter record.
struct counter_row {
    const char* property;
    std::size_t offset;
};

/// The counters of ZANTO_TCPStatisticalData behind its InstanceID.
// clang-format off
constexpr counter_row statistical_data_rows[] = {
    {"ActiveOpenConnections", 36},
    {"PassiveOpenConnections", 44},
    {"AttemptFails", 68},
    {"EstablishedResets", 664},
    {"EstablishedConnections", 52},
    {"ReceivedSegments", 268},
    {"RetransmittedSegments", 196},
};
// clang-format on

/// Asks the line card for a port's TCP counters. What it counts is not handed out: the record is cleared after the
/// query and before it is read, so that every TCP counter reads 0. Clients depend on it.
/// @param error_line what to print when the card does not answer
void query_counters(std::uint32_t if_index, tcp_counters& counters, const char* error_line) {
    if (get_tcp_stats(if_index, counters.data()) != 0)
        trace(error_line);
}

/// The low half of the sum of five 64-bit counters.
std::uint32_t segments_in_error(const tcp_counters& counters) {
    std::uint64_t sum = 0;
    for (const int offset : {288, 296, 304, 312, 320})
        sum += read_be64(counters.data() + offset);
    return static_cast<std::uint32_t>(sum);
}

/// What both classes have ahead of their InstanceID.
void set_error_counters(CMPIInstance* instance, const tcp_counters& counters) {
    set_uint32(instance, "ReceivedSegmentsInError", segments_in_error(counters));
    set_uint32(instance, "SentResetSegments", read_be32(counters.data() + 668));
}

/// Two neighbouring words of a link row as one number.
constexpr std::uint64_t joined(std::uint32_t high, std::uint32_t low) {
    return static_cast<std::uint64_t>(high) << 32 | low;
}

/// Four properties that are pairs of option words of the link row, though their names say otherwise.
void set_link_words(CMPIInstance* instance, const FcipLinkEntry& link) {
    set_uint64(instance, "TooManyErrors", joined(link.local_port_enable, link.special_frame_enable));
    set_uint64(instance, "KeepAliveTimeOut", joined(link.unread_88, link.bport_keep_alive_enable));
    set_uint64(instance, "DatagramsDropped", joined(link.control_qos, link.data_qos));
    set_uint64(instance, "SaParamMismatch", joined(link.ethernet_if_index, link.write_acceleration));
}

/// @param link the caller's row  @param current the row of the same link index as the table has it now
void set_endpoint_statistics(CMPIInstance* instance, const FcipLinkEntry& link, const FcipLinkEntry& current) {
    set_string(instance, "SystemCreationClassName", logical_computer_system);
    tcp_counters counters{};
    query_counters(current.ethernet_if_index, counters, "******* Error ******** \n");
    system_name_text system{};
    const bool known = get_vsan_wwn(current.link_if_index, system.data()) == 0;
    set_string(instance, "SystemName", known ? system.data() : "0000");
    counters.fill(0);
    set_error_counters(instance, counters);
    set_string(instance, "InstanceID", index_text(current.link_if_index).data());
    set_string(instance, "CreationClassName", "ZANTO_TCPEndPointStatistics");
    set_link_words(instance, link);
}

/// @param link the caller's row  @param current the row of the same link index as the table has it now
void set_statistical_data(CMPIInstance* instance, const FcipLinkEntry& link, const FcipLinkEntry& current) {
    tcp_counters counters{};
    query_counters(current.ethernet_if_index, counters, "******* Error ******** "); // without a line end
    set_string(instance, "SystemName", vsan_system_name(current.link_if_index).data());
    counters.fill(0);
    set_error_counters(instance, counters);
    set_string(instance, "InstanceID", index_text(link.link_index + 1).data()); // the path has the interface index
    for (const counter_row& row : statistical_data_rows)
        set_uint32(instance, row.property, read_be32(counters.data() + row.offset));
}

} // namespace

CMPIInstance* tcp_statistics_build_instance(const char* class_name, const char* name_space, const FcipLinkEntry* link,
                                            const char** properties) {
    trace_entering(__func__);
    FcipLinkEntry current{};
    if (get_link_from_link_index(mts_q, link->link_index, &current) != 0) {
        trace_location(__func__, 728);
        return nullptr;
    }
    auto profile = fetch_entity(mts_q, platform_exact, current.entity_id); // only has to be there
    if (!profile) {
        trace_location(__func__, 738);
        return nullptr;
    }
    CMPIInstance* instance = new_switch_instance(class_name, name_space, __func__);
    if (!is_usable(instance))
        return instance;
    set_endpoint_statistics(instance, *link, current);
    filter_properties(instance, properties);
    profile.row.reset();
    trace_exiting(__func__);
    return instance;
}

CMPIInstance* tcp_statistical_data_build_instance(const char* class_name, const char* name_space,
                                                  const FcipLinkEntry* link, const char** properties) {
    trace_entering(__func__);
    CMPIInstance* instance = new_switch_instance(class_name, name_space, __func__);
    if (!is_usable(instance))
        return instance;
    set_string(instance, "SystemCreationClassName", logical_computer_system);
    trace_location(__func__, 959);
    FcipLinkEntry current{};
    if (get_link_from_link_index(mts_q, link->link_index, &current) != 0) {
        trace_location(__func__, 963);
        return minus_one<CMPIInstance>(); // not null
    }
    set_statistical_data(instance, *link, current);
    filter_properties(instance, properties);
    trace_location(__func__, 1024);
    trace_exiting(__func__);
    return instance;
}

} // namespace fcip
