#include "tests/provider/access/call_marks.h"

#include "platform/services.h"

#include <cstdio>

namespace {

std::map<void*, const char*> records;
const mts_msg* request = nullptr; ///< the message that was sent last

void mark(const char* text) {
    std::printf("[%s]", text);
}

/// Marks a read once it is done, and keeps the record that it set.
template <typename Record>
int read(const char* name, int status, Record* const* record) {
    mark(name);
    if (*record != nullptr)
        records[*record] = name;
    return status;
}

} // namespace

const std::map<void*, const char*>& test::held_records() {
    return records;
}

extern "C" {

void __real_free(void* block);
int __real_get_ip_stats(mts_queue queue, std::uint32_t if_index, std::uint32_t flag,
                        std::uint8_t** reply) asm("__real__ZN4fcip12get_ip_statsEP16mts_queue_handlejjPPh");
int __wrap_get_ip_stats(mts_queue queue, std::uint32_t if_index, std::uint32_t flag,
                        std::uint8_t** reply) asm("__wrap__ZN4fcip12get_ip_statsEP16mts_queue_handlejjPPh");
decltype(fcip_get_entity_entry) __real_fcip_get_entity_entry;
decltype(fcip_get_link_entry) __real_fcip_get_link_entry;
decltype(pm_cim_get_port_info) __real_pm_cim_get_port_info;
decltype(pm_get_port_counters) __real_pm_get_port_counters;
decltype(fcip_snmp_get_link_errors) __real_fcip_snmp_get_link_errors;
decltype(if_index_get_slot) __real_if_index_get_slot;
decltype(if_index_get_port) __real_if_index_get_port;
decltype(hton_if_index) __real_hton_if_index;
decltype(idxmap_node_by_if_index) __real_idxmap_node_by_if_index;
decltype(mts_sap_get) __real_mts_sap_get;
decltype(mts_send) __real_mts_send;
decltype(mts_rr_token_get) __real_mts_rr_token_get;
decltype(mts_recv) __real_mts_recv;
decltype(mts_drop) __real_mts_drop;

void __wrap_free(void* block) {
    const auto record = records.find(block);
    if (record != records.end()) {
        std::printf("[release %s]", record->second);
        records.erase(record);
    }
    __real_free(block);
}

int __wrap_get_ip_stats(mts_queue queue, std::uint32_t if_index, std::uint32_t flag, std::uint8_t** reply) {
    const int status = __real_get_ip_stats(queue, if_index, flag, reply);
    if (*reply != nullptr)
        records[*reply] = "reply"; // without a mark: the query's own calls have theirs
    return status;
}

int __wrap_fcip_get_entity_entry(mts_queue queue, int operation, std::uint32_t entity_id, FcipEntityEntry** row,
                                 int constant) {
    return read("profile", __real_fcip_get_entity_entry(queue, operation, entity_id, row, constant), row);
}

int __wrap_fcip_get_link_entry(mts_queue queue, int operation, const std::uint32_t key[2], FcipLinkEntry** row,
                               int constant_30, int constant_1) {
    return read("link", __real_fcip_get_link_entry(queue, operation, key, row, constant_30, constant_1), row);
}

int __wrap_pm_cim_get_port_info(PmPortInfo** record, int operation, std::uint32_t if_index, mts_queue queue) {
    return read("port", __real_pm_cim_get_port_info(record, operation, if_index, queue), record);
}

int __wrap_pm_get_port_counters(mts_queue queue, std::uint32_t if_index, int constant_0, int constant_6,
                                PmPortCounters** record) {
    return read("counters", __real_pm_get_port_counters(queue, if_index, constant_0, constant_6, record), record);
}

int __wrap_fcip_snmp_get_link_errors(mts_queue queue, int operation, const std::uint32_t key[2],
                                     FcipLinkErrors** record, int constant) {
    return read("errors", __real_fcip_snmp_get_link_errors(queue, operation, key, record, constant), record);
}

int __wrap_if_index_get_slot(std::uint32_t if_index, std::uint8_t* slot) {
    mark("slot");
    return __real_if_index_get_slot(if_index, slot);
}

int __wrap_if_index_get_port(std::uint32_t if_index, std::uint8_t* port) {
    mark("port number");
    return __real_if_index_get_port(if_index, port);
}

std::uint32_t __wrap_hton_if_index(std::uint32_t if_index) {
    mark("network order");
    return __real_hton_if_index(if_index);
}

int __wrap_idxmap_node_by_if_index(std::uint32_t if_index, void* record) {
    mark("node");
    return __real_idxmap_node_by_if_index(if_index, record);
}

std::uint32_t __wrap_mts_sap_get(mts_queue queue) {
    mark("own SAP");
    return __real_mts_sap_get(queue);
}

int __wrap_mts_send(mts_queue queue, const mts_addr* destination, std::uint32_t opcode, const void* payload,
                    std::uint32_t length, mts_msg* sent, int constant_0, int another_0) {
    mark("send");
    request = sent;
    return __real_mts_send(queue, destination, opcode, payload, length, sent, constant_0, another_0);
}

std::uint32_t __wrap_mts_rr_token_get(const mts_msg* message) {
    mark("token");
    return __real_mts_rr_token_get(message);
}

int __wrap_mts_recv(mts_queue queue, mts_msg* received, const mts_recv_options* options, int wait) {
    mark("receive");
    return __real_mts_recv(queue, received, options, wait);
}

void __wrap_mts_drop(mts_queue queue, mts_msg* message) {
    mark(message == request ? "drop request" : "drop reply");
    __real_mts_drop(queue, message);
}

} // extern "C"
