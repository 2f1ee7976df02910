// Ports: their records, the walk over them, and what an interface index or a key value says of them.
#pragma once

#include "platform/services.h"
#include "provider/access/fcip_tables.h"
#include "provider/common/endian.h"
#include "provider/common/memory.h"
#include "provider/common/text.h"

namespace fcip {

/// Port walks start behind this interface index.
inline constexpr std::uint32_t first_port_key = 0x82FFFFFF;

/// Interface kinds that the provider tells apart.
enum : std::uint8_t { interface_kind_ethernet = 2, interface_kind_5 = 5 };

/// A port's interface index (port information, offset 0).
inline std::uint32_t port_if_index(const PmPortInfo& port) {
    return read_host32(port.bytes);
}

/// A port's MTU in bytes (port information, offset 28).
inline std::uint32_t port_mtu(const PmPortInfo& port) {
    return read_host32(port.bytes + 28);
}

/// A port's VSAN id (port information, offset 213).
inline std::uint32_t port_vsan_id(const PmPortInfo& port) {
    return read_host32(port.bytes + 213);
}

/// One read of the port table. @param operation platform_exact or platform_next_port
fetched<PmPortInfo> read_port(int operation, std::uint32_t if_index);

/// The same; null if the port cannot be read.
platform_ptr<PmPortInfo> fetch_port(int operation, std::uint32_t if_index);

/// What if_index_get_type() said.
struct interface_type {
    int status = -1;       ///< 0 = success
    std::uint8_t kind = 0; ///< 0 when the query failed

    bool is(std::uint8_t wanted) const { return status == 0 && kind == wanted; }
};

/// Asks for an interface's type.
interface_type type_of(std::uint32_t if_index);

/// Whether an interface is listed with its Ethernet statistics: of kind 2 or 5, or of a kind that cannot be told.
inline bool may_have_statistics(const interface_type& type) {
    return type.status != 0 || type.kind == interface_kind_ethernet || type.kind == interface_kind_5;
}

/// Hands each port behind first_port_key, by interface index, to `visit`, which may change the record but not keep it.
template <typename Visit>
void walk_ports(Visit visit) {
    std::uint32_t key = first_port_key;
    while (const platform_ptr<PmPortInfo> port = fetch_port(platform_next_port, key)) {
        key = port_if_index(*port);
        if (visit(*port) == walk::stop)
            return;
    }
}

/// An interface's printable name.
platform_text interface_name(std::uint32_t if_index);

/// A port's network (MAC) address, cut to 31 characters; empty where the platform writes none.
/// @param kind of the interface
std::array<char, 32> network_address(const PmPortInfo& port, std::uint8_t kind);

/// The VSAN that an interface is in. @return 0, or -1 and a trace
int get_vsan_id(std::uint32_t if_index, std::uint32_t* vsan_id);

/// The VSAN that an interface is in, from the port's configuration; prints it twice. @return 0 or -1
int get_vsan_from_ifindex(std::uint32_t if_index, std::uint32_t* vsan_id);

/// The interface index at the head of an Ethernet-side key value ("12:..." or "12_..."). @return 0, or -1 for a key
/// without a token
int get_eth_ifidx_from_keyvalue(std::uint32_t* if_index, const char* key_value);

/// Returns the Ethernet port with the interface index to the result: its instance, or its path. Only the run of
/// Ethernet ports that follows first_port_key is looked at. Always 0.
/// @param class_name ignored
int get_etherport_from_if_index(std::uint32_t if_index, int want_instance, const char* class_name,
                                const CMPIResult* result, const char* name_space, const char** properties,
                                const CMPIBroker* broker);

/// Clears a WWN.
void init_wwn(std::uint8_t wwn[8]);

/// Stores a port's MTU, cut to 16 bits, and prints it whole. Always 0.
int pm_cli_eth_intf_prefix_print(const PmPortInfo* port, std::uint16_t* mtu);

} // namespace fcip
