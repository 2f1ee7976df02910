#include "simulator/call.h"
#include "simulator/state.h"
#include "simulator/table.h"

#include <algorithm>
#include <cstdio>

using namespace switchsim;

namespace {

constexpr std::uint32_t interface_list_opcode = 8946;
constexpr mts_addr fcip_service_address{0xFE000000, 60};
constexpr std::size_t scratch_size = 256;

bool expect_table_read(const Call& call, mts_queue queue, int operation) {
    return call.expect_queue(queue) && call.expect("the operation", operation, {platform_exact, platform_next});
}

/// The interfaces that use a profile: their count and their interface indexes.
std::vector<std::uint32_t> interface_list(std::uint32_t entity_id) {
    std::vector<std::uint32_t> list{0};
    const auto& links = current().links;
    for (auto row = links.lower_bound({entity_id, 0}); row != links.end() && row->first.first == entity_id; ++row)
        list.push_back(row->second.link_if_index);
    list[0] = static_cast<std::uint32_t>(list.size() - 1);
    return list;
}

int reply_with_interfaces(const Call& call, std::uint32_t entity_id, void** reply, std::uint32_t* reply_length) {
    const std::vector<std::uint32_t> list = interface_list(entity_id);
    std::size_t size = list.size() * sizeof list[0];
    if (const auto fault = call.fault_on_record(reply, size)) {
        *reply_length = *reply ? static_cast<std::uint32_t>(size) : 0;
        return *fault;
    }
    if (call.has(Fault::no_reply) || !current().profiles.contains(entity_id))
        return failed;
    if (call.has(Fault::short_reply))
        size = std::min(size, static_cast<std::size_t>(std::max(call.fault()->code, 0)));
    *reply_length = static_cast<std::uint32_t>(size);
    return hand_out(reply, list.data(), size);
}

} // namespace

int fcip_get_entity_entry(mts_queue queue, int operation, std::uint32_t entity_id, FcipEntityEntry** row,
                          int constant) {
    const Call call(Function::fcip_get_entity_entry);
    if (!expect_table_read(call, queue, operation) || !call.expect_out(row) ||
        !call.expect("the constant", constant, {5, 30}))
        return failed;
    if (const auto fault = call.fault_on_record(row))
        return *fault;
    return hand_out_row(row, find_row(current().profiles, operation == platform_exact, entity_id));
}

int fcip_get_link_entry(mts_queue queue, int operation, const std::uint32_t key[2], FcipLinkEntry** row,
                        int constant_30, int constant_1) {
    const Call call(Function::fcip_get_link_entry);
    if (!expect_table_read(call, queue, operation) || !call.expect_pointer("the key", key) || !call.expect_out(row) ||
        !call.expect("the first constant", constant_30, {30}) || !call.expect("the second constant", constant_1, {1}))
        return failed;
    if (const auto fault = call.fault_on_record(row))
        return *fault;
    return hand_out_row(row, find_row(current().links, operation == platform_exact, {key[0], key[1]}));
}

int fcip_get_tcpconn_entry(mts_queue queue, int operation, const FcipTcpConnKey* key, FcipTcpConnEntry** row,
                           int constant) {
    const Call call(Function::fcip_get_tcpconn_entry);
    if (!call.expect_queue(queue) || !call.expect("the operation", operation, {platform_exact}) ||
        !call.expect_pointer("the key", key) || !call.expect_out(row) || !call.expect("the constant", constant, {15}))
        return failed;
    if (const auto fault = call.fault_on_record(row))
        return *fault;
    return hand_out_row(row, find_row(current().connections, true,
                                      {key->entity_id, key->link_index, key->local_port, key->remote_port}));
}

int fcip_snmp_get_link_errors(mts_queue queue, int operation, const std::uint32_t key[2], FcipLinkErrors** record,
                              int constant) {
    const Call call(Function::fcip_snmp_get_link_errors);
    if (!call.expect_queue(queue) || !call.expect("the operation", operation, {platform_exact}) ||
        !call.expect_pointer("the key", key) || !call.expect_out(record) ||
        !call.expect("the constant", constant, {10}))
        return failed;
    if (const auto fault = call.fault_on_record(record))
        return *fault;
    return hand_out_row(record, find_row(current().link_errors, true, {key[0], key[1]}));
}

int fcip_send_recv_with_mts_q(std::uint32_t opcode, const mts_addr* destination, const void* payload,
                              std::uint32_t length, mts_queue queue, void** reply, std::uint32_t* reply_length,
                              void* scratch) {
    const Call call(Function::fcip_send_recv_with_mts_q);
    if (!call.expect_queue(queue) || !call.expect("the opcode", opcode, {interface_list_opcode}) ||
        !call.expect_pointer("the destination", destination) ||
        !call.expect("the destination's node", destination->node, {fcip_service_address.node}) ||
        !call.expect("the destination's access point", destination->sap, {fcip_service_address.sap}) ||
        !call.expect_pointer("the payload", payload) ||
        !call.expect("the payload length", length, {sizeof(std::uint32_t)}) || !call.expect_out(reply) ||
        !call.expect_pointer("the reply length", reply_length) || !call.expect_pointer("the scratch area", scratch))
        return failed;
    std::memset(scratch, 0, scratch_size);
    std::uint32_t entity_id = 0;
    std::memcpy(&entity_id, payload, sizeof entity_id);
    return without_throwing([&] { return reply_with_interfaces(call, entity_id, reply, reply_length); });
}

const char* fcip_if_str(std::uint32_t if_index, char* buffer) {
    const Call call(Function::fcip_if_str);
    if (!call.expect_pointer("the buffer", buffer))
        return buffer;
    const Port* port = find_port(if_index);
    if (port)
        write_text(buffer, port->name);
    else
        std::snprintf(buffer, text_size, "interface 0x%08x", if_index);
    return buffer;
}
