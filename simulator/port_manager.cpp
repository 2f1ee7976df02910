#include "simulator/bytes.h"
#include "simulator/call.h"
#include "simulator/state.h"
#include "simulator/table.h"

using namespace switchsim;

namespace {

constexpr std::size_t statistics_size = 4096;

PmPortInfo port_info(std::uint32_t if_index, const Port& port) {
    PmPortInfo info{};
    put_host(info.bytes, 0, if_index);
    put_host(info.bytes, 28, port.mtu);
    put_host(info.bytes, 213, port.vsan_id);
    return info;
}

} // namespace

int pm_cim_get_port_info(PmPortInfo** record, int operation, std::uint32_t if_index, mts_queue queue) {
    const Call call(Function::pm_cim_get_port_info);
    if (!call.expect_queue(queue) || !call.expect("the operation", operation, {platform_exact, platform_next_port}) ||
        !call.expect_out(record))
        return failed;
    if (const auto fault = call.fault_on_record(record))
        return *fault;
    const auto* row = find_row(current().ports, operation == platform_exact, if_index);
    return row ? hand_out(record, port_info(row->first, row->second)) : failed;
}

int pm_cmi_get_port_config(mts_queue queue, int constant_1, int another_1, const std::uint32_t key[2],
                           std::uint32_t* aux, PmPortConfig** record, int constant_4) {
    const Call call(Function::pm_cmi_get_port_config);
    if (!call.expect_queue(queue) || !call.expect("the first constant", constant_1, {1}) ||
        !call.expect("the second constant", another_1, {1}) || !call.expect_pointer("the key", key) ||
        !call.expect("the second key word", key[1], {key[0]}) || !call.expect_pointer("the auxiliary word", aux) ||
        !call.expect_out(record) || !call.expect("the third constant", constant_4, {4}))
        return failed;
    if (const auto fault = call.fault_on_record(record))
        return *fault;
    const Port* port = find_port(key[0]);
    if (!port)
        return failed;
    *aux = 0;
    PmPortConfig config{};
    put_host(config.bytes, 0, key[0]);
    put_host(config.bytes, 213, port->vsan_id);
    put_host(config.bytes, 217, port->config_word.value_or(port->vsan_id));
    return hand_out(record, config);
}

PmPortInfo* pm_cim_find_interface(int operation, std::uint32_t if_index, mts_queue queue) {
    const Call call(Function::pm_cim_find_interface);
    if (!call.expect_queue(queue) || !call.expect("the operation", operation, {platform_exact}) || call.returns_null())
        return nullptr;
    const Port* port = find_port(if_index);
    PmPortInfo* record = nullptr;
    if (port && port->fc_interface)
        hand_out(&record, port_info(if_index, *port));
    return record;
}

int pm_cim_get_network_address(char* buffer, const PmPortInfo* port, int) {
    const Call call(Function::pm_cim_get_network_address);
    if (!call.expect_pointer("the buffer", buffer) || !call.expect_pointer("the port", port))
        return failed;
    if (const auto fault = call.fault_on_storage(buffer, 1))
        return *fault;
    const Port* row = find_port(get_host(port->bytes, 0));
    if (!row)
        return failed;
    if (!row->network_address.empty())
        write_text(buffer, row->network_address);
    return 0;
}

int pm_get_clear_eth_stats(mts_queue queue, std::uint32_t if_index, std::uint32_t same_if_index, int constant_1,
                           void* counters) {
    const Call call(Function::pm_get_clear_eth_stats);
    if (!call.expect_queue(queue) || !call.expect("the second interface index", same_if_index, {if_index}) ||
        !call.expect("the constant", constant_1, {1}) || !call.expect_pointer("the counter buffer", counters))
        return failed;
    if (const auto fault = call.fault_on_storage(counters, statistics_size))
        return *fault;
    const Port* port = find_port(if_index);
    if (!port || !port->eth_stats_mtu)
        return failed;
    std::memset(counters, 0, statistics_size);
    put_big(static_cast<std::uint8_t*>(counters), 28, *port->eth_stats_mtu);
    return 0;
}

int pm_get_port_counters(mts_queue queue, std::uint32_t if_index, int constant_0, int constant_6,
                         PmPortCounters** record) {
    const Call call(Function::pm_get_port_counters);
    if (!call.expect_queue(queue) || !call.expect("the first constant", constant_0, {0}) ||
        !call.expect("the second constant", constant_6, {6}) || !call.expect_out(record))
        return failed;
    if (const auto fault = call.fault_on_record(record))
        return *fault;
    const Port* port = find_port(if_index);
    return port && port->counters ? hand_out(record, *port->counters) : failed;
}
