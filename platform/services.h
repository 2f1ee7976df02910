// The switch platform's C interface, as far as the provider uses it. The link decides who answers: the switch's own
// libraries, or libswitchsim.
//
// What holds for all of them:
//  - int results: 0 is success, anything else failure, unless a function says otherwise.
//  - A `T**` argument receives a heap block that the caller releases with free(), after a success and after a failure
//    alike. Callers set it to null before the call.
//  - `queue` is the value of mts_q after init_mts().
//  - Calls are made with the process-wide lock held (mutex_lock), except mutex_lock itself.
//  - Storage of the caller's is aligned for any type.
//  - A text that is written into a buffer whose length is not told is at most 255 characters long, and terminated.
//    Callers give 256 bytes, cleared, since a call may write nothing, and cut the text to the length that they want.
//  - Constant arguments whose meaning is the service's own are given as their value: pass them unchanged.
#pragma once

#include "platform/records.h"

#include <cmpift.h>

extern "C" {

/// Operation codes of the table reads.
enum : int {
    platform_exact = 1,     ///< the row whose key equals the given one (FCIP service, port manager)
    platform_next = 2,      ///< the first row whose key is greater (FCIP service)
    platform_next_port = 0, ///< the first port whose interface index is greater (port manager)
};

// ---------------------------------------------------------------------------------------------- FCIP service

/// Reads the entity table, ordered by entity id; key 0 with platform_next gives the first row.
/// @param constant 5, or 30 where the FCIP settings re-read the keep-alive
int fcip_get_entity_entry(mts_queue queue, int operation, std::uint32_t entity_id, FcipEntityEntry** row, int constant);

/// Reads the link table, ordered by {entity id, link index}; key {0, 0} with platform_next gives the first row.
/// @param constant_30,constant_1 30 and 1
int fcip_get_link_entry(mts_queue queue, int operation, const std::uint32_t key[2], FcipLinkEntry** row,
                        int constant_30, int constant_1);

/// Reads the TCP connection table: exact lookups only. @param constant 15
int fcip_get_tcpconn_entry(mts_queue queue, int operation, const FcipTcpConnKey* key, FcipTcpConnEntry** row,
                           int constant);

/// Reads a link's error counters; the key is {entity id, link index}, exact lookups only. @param constant 10
int fcip_snmp_get_link_errors(mts_queue queue, int operation, const std::uint32_t key[2], FcipLinkErrors** record,
                              int constant);

/// Sends the FCIP service a request and waits for the reply, a heap block for the caller.
/// Opcode 8946 to {0xfe000000, 60} with a 4-byte entity id (host order) asks for the profile's interface list: a u32
/// count and that many u32 interface indexes, host order.
/// @param scratch an area of at least 256 bytes for the service's own use
int fcip_send_recv_with_mts_q(std::uint32_t opcode, const mts_addr* destination, const void* payload,
                              std::uint32_t length, mts_queue queue, void** reply, std::uint32_t* reply_length,
                              void* scratch);

/// Writes an interface's display name into `buffer` (256 bytes) and returns it.
const char* fcip_if_str(std::uint32_t if_index, char* buffer);

// ---------------------------------------------------------------------------------------------- port manager

/// Reads the port table. Note the order: the out pointer first, the queue last.
/// @param operation platform_exact or platform_next_port
int pm_cim_get_port_info(PmPortInfo** record, int operation, std::uint32_t if_index, mts_queue queue);

/// Reads a port's configuration; both key words are the interface index. @param aux a word of the service's own
int pm_cmi_get_port_config(mts_queue queue, int constant_1, int another_1, const std::uint32_t key[2],
                           std::uint32_t* aux, PmPortConfig** record, int constant_4);

/// Finds the Fibre Channel interface behind an interface index; null when there is none. A heap block for the caller.
PmPortInfo* pm_cim_find_interface(int operation, std::uint32_t if_index, mts_queue queue);

/// Writes a port's network (MAC) address as text into `buffer` (256 bytes); may write nothing.
/// @param type the interface type's first byte
int pm_cim_get_network_address(char* buffer, const PmPortInfo* port, int type);

/// Fills the caller's 4,096-byte counter buffer, big-endian; the MTU is its word at offset 28.
int pm_get_clear_eth_stats(mts_queue queue, std::uint32_t if_index, std::uint32_t same_if_index, int constant_1,
                           void* counters);

/// Reads a port's frame counters. @param constant_0,constant_6 0 and 6
int pm_get_port_counters(mts_queue queue, std::uint32_t if_index, int constant_0, int constant_6,
                         PmPortCounters** record);

// ---------------------------------------------------------------------------------------------- CIM utility service

/// Builds a port's CIM instance. Class name and namespace may come in either order.
/// @param port may be null: the result is then null
/// @param properties the request's property list, applied as a filter; may be null
CMPIInstance* fcport_build_instance_pm(const char* name_or_class, const char* class_or_name, PmPortInfo* port,
                                       const char** properties, const CMPIBroker* broker);

/// Builds a port's object path. Class name and namespace may come in either order.
CMPIObjectPath* fcport_fill_reference_pm(const char* name_or_class, const char* class_or_name, PmPortInfo* port,
                                         const CMPIBroker* broker);

/// Builds an association instance whose two reference properties carry the given paths.
CMPIInstance* association_class_build_instance_path(const char* class_name, const char* name_space,
                                                    CMPIObjectPath* first, CMPIObjectPath* second, const char* role1,
                                                    const char* role2, const CMPIBroker* broker);

/// Builds the instance of the computer system that `key` names. @param constant_0 0
CMPIInstance* switch_build_instance_str(const char* class_name, const char* name_space, const char* key, int constant_0,
                                        const char** properties, const CMPIBroker* broker);

/// Builds the object path of the physical switch.
CMPIObjectPath* switch_fill_reference(const char* class_name, const char* name_space, const CMPIBroker* broker);

/// Builds the object path of the computer system that `key` names.
CMPIObjectPath* switch_fill_reference_str(const char* class_name, const char* name_space, const char* key,
                                          const CMPIBroker* broker);

// ---------------------------------------------------------------------------------------------- VSANs and domains

/// Fills a VSAN entry (4,096 bytes, caller's) whose first word holds the VSAN id. @param operation platform_exact
int vsan_cim_get_vsanEntry(mts_queue queue, int operation, void* vsan_entry);

/// Writes the VSAN's key as text into `key` (256 bytes).
int vsan_cim_get_vsan_key(char* key, const void* vsan_entry, const void* domain_entry);

/// Writes the VSAN's administrative-domain key as text into `key` (256 bytes).
int vsan_cim_get_vsan_admindomain_key(char* key, const void* domain_entry);

/// Fills a VSAN's domain entry (4,096 bytes, caller's). @param constant_1 1
int dm_cim_get_dmEntry(mts_queue queue, std::uint32_t vsan_id, int constant_1, void* domain_entry);

// ---------------------------------------------------------------------------------------------- system identity

/// The switch's name, used as the host name of object paths. The service's storage.
const char* getCSName(void);

/// The physical switch's system name. The service's storage.
const char* CSgetName(mts_queue queue);

/// Reads the switch's WWN.
int system_cim_get_switch_wwn(mts_queue queue, std::uint8_t wwn[8]);

/// Writes a WWN as text into `text` (256 bytes).
int cim_sprintf_wwn(char* text, const std::uint8_t wwn[8]);

// ---------------------------------------------------------------------------------------------- interface indexes

/// The slot (line card) that an interface sits in.
int if_index_get_slot(std::uint32_t if_index, std::uint8_t* slot);

/// An interface's port number on its line card.
int if_index_get_port(std::uint32_t if_index, std::uint8_t* port);

/// An interface's type (16 bytes, caller's); the first byte is the kind, 2 = Ethernet.
int if_index_get_type(std::uint32_t if_index, void* type);

/// The index whose bytes in memory are the interface index in network order.
std::uint32_t hton_if_index(std::uint32_t if_index);

/// Fills a record (4,096 bytes, caller's) whose first word is the IPC node of the interface's line card.
int idxmap_node_by_if_index(std::uint32_t if_index, void* record);

/// Writes an interface's printable name into `text` (256 bytes).
int sprintf_if_index(char* text, std::uint32_t if_index);

/// Writes the kernel's name of an interface into `name` (256 bytes).
int netcfg_print_ifname(char* name, std::uint32_t if_index);

// ---------------------------------------------------------------------------------------------- IP configuration

/// Reads an interface's IPv4 configuration (at least 8 bytes): the subnet mask stands at offset 4, in network order.
int ipconf_get_intf_ip_address(mts_queue queue, std::uint32_t if_index, void** record);

/// Reads an interface's addresses (at least 36 bytes): the word at offset 32, host order, holds the prefix length.
int ipconf_get_if_inet_addrs(mts_queue queue, std::uint32_t if_index, void** record);

/// Asks the configuration service. Opcode 873, reply length 8: the IP forwarding flag (u32) and the default
/// time-to-live (u8), big-endian. @param reply_length in: the size wanted, out: the size received
int cmi_req_resp(std::uint32_t opcode, int constant_1, int constant_0, void** reply, std::uint32_t* reply_length,
                 int another_0, int third_0, int constant_35, mts_queue queue, int wait);

// ---------------------------------------------------------------------------------------------- IP utility

/// Writes an address as text, cut to `length` bytes with the terminator; returns `buffer`.
char* ip_addr_to_str(const ip_addr_value* address, char* buffer, int length);

/// Compares two addresses: 0 = equal.
int ip_addr_compare(const ip_addr_value* one, const ip_addr_value* other);

/// The address that is all zero.
extern const ip_addr_value inet_addr_null;

// ---------------------------------------------------------------------------------------------- IPC service

/// The response queue over which all platform requests travel.
extern mts_queue mts_q;

/// Opens the response queue. A negative result is a failure.
int init_mts(mts_queue* queue);

/// Sends a request; `sent` then describes it until it is dropped.
int mts_send(mts_queue queue, const mts_addr* destination, std::uint32_t opcode, const void* payload,
             std::uint32_t length, mts_msg* sent, int constant_0, int another_0);

/// Receives a message that matches the options' token (0 = any), for at most `wait` seconds.
int mts_recv(mts_queue queue, mts_msg* received, const mts_recv_options* options, int wait);

/// The token that pairs a request with its reply.
std::uint32_t mts_rr_token_get(const mts_msg* message);

/// A message's payload; valid until the message is dropped.
void* mts_payload_get(const mts_msg* message);

/// A message's payload length in bytes.
std::uint32_t mts_payload_size(const mts_msg* message);

/// The queue's own service access point.
std::uint32_t mts_sap_get(mts_queue queue);

/// Releases a message that was sent or received.
void mts_drop(mts_queue queue, mts_msg* message);

// ---------------------------------------------------------------------------------------------- utility services

/// Takes the process-wide lock. Not recursive.
void mutex_lock(void);

/// Releases the process-wide lock.
void mutex_unlock(void);

} // extern "C"
