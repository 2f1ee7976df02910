#include "simulator/address_text.h"
#include "simulator/bytes.h"
#include "simulator/call.h"
#include "simulator/state.h"

#include <algorithm>

using namespace switchsim;

namespace {

constexpr std::uint32_t misc_configuration_opcode = 873;

bool expect_configuration_request(const Call& call, std::uint32_t opcode, int constant_1, int constant_0, int another_0,
                                  int third_0, int constant_35) {
    return call.expect("the opcode", opcode, {misc_configuration_opcode}) &&
           call.expect("the second argument", constant_1, {1}) && call.expect("the third argument", constant_0, {0}) &&
           call.expect("the sixth argument", another_0, {0}) && call.expect("the seventh argument", third_0, {0}) &&
           call.expect("the eighth argument", constant_35, {35});
}

} // namespace

const ip_addr_value inet_addr_null = {};

int ipconf_get_intf_ip_address(mts_queue queue, std::uint32_t if_index, void** record) {
    const Call call(Function::ipconf_get_intf_ip_address);
    std::uint8_t bytes[8] = {};
    if (!call.expect_queue(queue) || !call.expect_out(record))
        return failed;
    if (const auto fault = call.fault_on_record(record, sizeof bytes))
        return *fault;
    const Port* port = find_port(if_index);
    if (!port || !port->subnet_mask)
        return failed;
    std::memcpy(bytes + 4, port->subnet_mask->data(), port->subnet_mask->size());
    return hand_out(record, bytes, sizeof bytes);
}

int ipconf_get_if_inet_addrs(mts_queue queue, std::uint32_t if_index, void** record) {
    const Call call(Function::ipconf_get_if_inet_addrs);
    std::uint8_t bytes[36] = {};
    if (!call.expect_queue(queue) || !call.expect_out(record))
        return failed;
    if (const auto fault = call.fault_on_record(record, sizeof bytes))
        return *fault;
    const Port* port = find_port(if_index);
    if (!port || !port->prefix_length)
        return failed;
    put_host(bytes, 32, *port->prefix_length);
    return hand_out(record, bytes, sizeof bytes);
}

int cmi_req_resp(std::uint32_t opcode, int constant_1, int constant_0, void** reply, std::uint32_t* reply_length,
                 int another_0, int third_0, int constant_35, mts_queue queue, int wait) {
    const Call call(Function::cmi_req_resp);
    if (!call.expect_queue(queue) || !call.expect_out(reply) ||
        !call.expect_pointer("the reply length", reply_length) ||
        !call.expect("the reply length", *reply_length, {8}) ||
        !expect_configuration_request(call, opcode, constant_1, constant_0, another_0, third_0, constant_35) ||
        !call.expect("whether the wait limit is above 0", wait > 0, {1}))
        return failed;
    std::uint8_t bytes[8] = {};
    if (const auto fault = call.fault_on_record(reply, sizeof bytes))
        return *fault;
    const auto& configuration = current().ip_configuration;
    if (!configuration || call.has(Fault::no_reply))
        return failed;
    put_big(bytes, 0, configuration->forwarding);
    bytes[4] = configuration->default_ttl;
    std::size_t size = sizeof bytes;
    if (call.has(Fault::short_reply))
        size = std::min(size, static_cast<std::size_t>(std::max(call.fault()->code, 0)));
    *reply_length = static_cast<std::uint32_t>(size);
    return hand_out(reply, bytes, size);
}

char* ip_addr_to_str(const ip_addr_value* address, char* buffer, int length) {
    const Call call(Function::ip_addr_to_str);
    if (!call.expect_pointer("the address", address) || !call.expect_pointer("the buffer", buffer) || length <= 0)
        return buffer;
    AddressText text{"null"};
    if (address->family == ip_family_ipv4)
        text = ipv4_text(std::span(address->address).first<4>());
    else if (address->family == ip_family_ipv6)
        text = ipv6_text(address->address);
    write_text(buffer, text.data(), static_cast<std::size_t>(length));
    return buffer;
}

int ip_addr_compare(const ip_addr_value* one, const ip_addr_value* other) {
    const Call call(Function::ip_addr_compare);
    if (!call.expect_pointer("the first address", one) || !call.expect_pointer("the second address", other))
        return failed;
    if (one->family != other->family)
        return one->family < other->family ? -1 : 1;
    const std::size_t length = one->family == ip_family_ipv4 ? 4 : sizeof one->address;
    return std::memcmp(one->address, other->address, length);
}
