#include "simulator/bytes.h"
#include "simulator/call.h"
#include "simulator/state.h"

using namespace switchsim;

namespace switchsim {

std::uint32_t node_of_slot(std::uint8_t slot) {
    return 0x02000001U | static_cast<std::uint32_t>(slot) << 8;
}

} // namespace switchsim

namespace {

/// Stores a byte that a port has or has not.
int store(const Call& call, std::uint8_t* out, const std::optional<std::uint8_t>& value) {
    if (!call.expect_pointer("the result", out))
        return failed;
    if (const auto fault = call.fault_on_storage(out, 1))
        return *fault;
    if (!value)
        return failed;
    *out = *value;
    return 0;
}

/// Writes a name that a port has or has not.
int write_name(const Call& call, char* buffer, const std::string* name) {
    if (!call.expect_pointer("the buffer", buffer))
        return failed;
    if (const auto fault = call.fault_on_storage(buffer, 1))
        return *fault;
    if (!name)
        return failed;
    write_text(buffer, *name);
    return 0;
}

} // namespace

int if_index_get_slot(std::uint32_t if_index, std::uint8_t* slot) {
    const Call call(Function::if_index_get_slot);
    const Port* port = find_port(if_index);
    return store(call, slot, port ? port->slot : std::nullopt);
}

int if_index_get_port(std::uint32_t if_index, std::uint8_t* port) {
    const Call call(Function::if_index_get_port);
    const Port* row = find_port(if_index);
    return store(call, port, row ? row->port : std::nullopt);
}

int if_index_get_type(std::uint32_t if_index, void* type) {
    const Call call(Function::if_index_get_type);
    const Port* port = find_port(if_index);
    return store(call, static_cast<std::uint8_t*>(type),
                 port && port->type_known ? std::optional(port->kind) : std::nullopt);
}

std::uint32_t hton_if_index(std::uint32_t if_index) {
    const Call call(Function::hton_if_index);
    std::uint8_t bytes[4];
    put_big(bytes, 0, if_index);
    return get_host(bytes, 0);
}

int idxmap_node_by_if_index(std::uint32_t if_index, void* record) {
    const Call call(Function::idxmap_node_by_if_index);
    if (!call.expect_pointer("the record", record))
        return failed;
    if (const auto fault = call.fault_on_storage(record, 4096))
        return *fault;
    const Port* port = find_port(if_index);
    if (!port || !port->slot)
        return failed;
    put_host(static_cast<std::uint8_t*>(record), 0, node_of_slot(*port->slot));
    return 0;
}

int sprintf_if_index(char* text, std::uint32_t if_index) {
    const Call call(Function::sprintf_if_index);
    const Port* port = find_port(if_index);
    return write_name(call, text, port ? &port->name : nullptr);
}

int netcfg_print_ifname(char* name, std::uint32_t if_index) {
    const Call call(Function::netcfg_print_ifname);
    const Port* port = find_port(if_index);
    return write_name(call, name, port ? &port->kernel_name : nullptr);
}
