#include "provider/classes/net/ethernet_port_statistics.h"

#include "provider/access/ports.h"
#include "provider/access/statistics.h"
#include "provider/access/systems.h"
#include "provider/common/endian.h"
#include "provider/common/memory.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

namespace fcip {

namespace {

/// The line card's reply: a head, then a block of 28 counters (slots) of 64 bits, big-endian.
using mac_statistics = std::array<std::uint8_t, ethernet_record_size>;

std::uint64_t slot_value(const mac_statistics& reply, std::size_t slot) {
    constexpr std::size_t head_size = 32;
    return read_be64(reply.data() + head_size + 8 * slot);
}

/// A property and the counter of the port manager's record that it comes from.
struct port_counter_row {
    const char* property;
    std::size_t offset;
    std::size_t bytes; ///< 4 or 8
};

// clang-format off
constexpr port_counter_row port_counter_rows[] = {
    {"BroadcastFramesReceived", 263, 4},
    {"BroadcastFramesTransmitted", 271, 4},
    {"MulticastFramesTransmitted", 267, 4},
    {"MulticastFramesReceived", 259, 4},
    {"UnicastFramesTransmitted", 315, 8},
    {"PacketsTransmitted", 315, 8}, // the unicast frames again
    {"UnicastFramesReceived", 283, 8},
    {"PacketsReceived", 283, 8},    // likewise
    {"BytesTransmitted", 307, 8},
    {"BytesReceived", 275, 8},
};
// clang-format on

/// What a property takes of its slot.
enum class part { whole, high_half };

/// A property and the slot of the line card's block that it comes from.
struct slot_row {
    const char* property;
    std::size_t slot;
    part taken;
};

/// The uint32 properties take the high half of their slot, several share one, and two names are misspelt: clients
/// depend on all of it.
constexpr slot_row slot_rows[] = {
    {"BytesTransmitted", 0, part::whole},
    {"BytesReceived", 10, part::whole},
    {"PacketsTransmitted", 7, part::whole},
    {"PacketsReceived", 14, part::whole},
    {"SymbolErrors", 19, part::high_half},
    {"AlignmentErrors", 20, part::whole},
    {"FCSErrors", 4, part::whole},
    {"SingleCollisionFrames", 1, part::high_half},
    {"MultipleCollisionFrames", 1, part::high_half},
    {"DeferredTransmissions", 1, part::high_half},
    {"LateCollissions", 2, part::whole},
    {"ExcessiveCollissions", 3, part::whole},
    {"InternalMACTransmitErrors", 3, part::high_half},
    {"InternalMACReceiveErrors", 3, part::high_half},
    {"CarrierSenseErrors", 3, part::high_half},
    {"FrameTooLongs", 3, part::high_half},
};

platform_ptr<PmPortCounters> query_port_counters(std::uint32_t if_index) {
    const auto query = [&](PmPortCounters** record) { return pm_get_port_counters(mts_q, if_index, 0, 6, record); };
    return fetch<PmPortCounters>(query).take();
}

/// The interface's name, cut to 31 characters.
void set_names(CMPIInstance* instance, std::uint32_t if_index) {
    const auto name = copy_text<32>(interface_name(if_index).data());
    set_string(instance, "Caption", name.data());
    set_string(instance, "ElementName", name.data());
    set_string(instance, "Description", name.data());
}

void set_port_counters(CMPIInstance* instance, const PmPortCounters& counters) {
    for (const port_counter_row& row : port_counter_rows) {
        const std::uint8_t* bytes = counters.bytes + row.offset;
        set_uint64(instance, row.property, row.bytes == 4 ? read_be32(bytes) : read_be64(bytes));
    }
}

/// The first four replace values of the port manager's record.
void set_mac_statistics(CMPIInstance* instance, const mac_statistics& reply) {
    const auto printed = [&reply](std::size_t slot) { // the low half
        return as_signed(static_cast<std::uint32_t>(slot_value(reply, slot)));
    };
    trace("\ntol : ret_code = 0\n ");
    trace("Bytes Tran ", printed(0), " \n");
    trace("Bytes Received ", printed(10), "\n");
    for (const slot_row& row : slot_rows) {
        const std::uint64_t value = slot_value(reply, row.slot);
        if (row.taken == part::whole)
            set_uint64(instance, row.property, value);
        else
            set_uint32(instance, row.property, static_cast<std::uint32_t>(value >> 32));
    }
}

} // namespace

CMPIInstance* eth_statistics_build_instance(const char* class_name, const char* name_space, const PmPortInfo* port,
                                            const char** properties) {
    trace_entering(__func__);
    const std::uint32_t if_index = port_if_index(*port);
    auto counters = query_port_counters(if_index);
    if (counters == nullptr) {
        trace("\ntol:Error in pm_get_port_counters\n");
        return nullptr;
    }
    CMPIInstance* instance = new_switch_instance(class_name, name_space, __func__);
    if (!is_usable(instance))
        return instance;
    mac_statistics reply{};
    const bool replied = get_ethernetport_statistics(if_index, reply.data()) == 0;
    set_string(instance, "InstanceID", index_text(if_index).data());
    set_names(instance, if_index);
    set_port_counters(instance, *counters);
    if (replied) {
        set_mac_statistics(instance, reply);
        filter_properties(instance, properties); // only here: without a reply the request gets every property
    }
    counters.reset();
    trace_exiting(__func__);
    return instance;
}

CMPIObjectPath* eth_statistics_fill_reference(const char* class_name, const char* name_space, const PmPortInfo* port) {
    trace_entering(__func__);
    CMPIObjectPath* path = new_path(name_space, class_name);
    if (is_usable(path)) {
        set_switch_host(path);
        add_string_key(path, "InstanceID", index_text(port_if_index(*port)).data());
    }
    trace_exiting(__func__);
    return path;
}

} // namespace fcip
