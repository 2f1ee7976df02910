#include "tests/provider/access/ipc_fake.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace fcip {

ipc_fake the_fake;

namespace {

constexpr std::uint32_t request_token = 0x7050;
constexpr std::uint32_t own_sap = 0x01020304;

int handles[3];
std::vector<std::vector<std::uint8_t>> messages; // all that were sent or received, by number

std::string queue_name(mts_queue queue) {
    return "q" + std::to_string(reinterpret_cast<int*>(queue) - handles);
}

void write_down(const std::string& call) {
    the_fake.log.push_back(call);
}

void store(mts_msg* message, std::vector<std::uint8_t> payload) {
    messages.push_back(std::move(payload));
    const auto number = static_cast<std::uint32_t>(messages.size() - 1);
    std::memcpy(message->opaque, &number, sizeof number);
}

std::vector<std::uint8_t>& find(const mts_msg* message) {
    std::uint32_t number = 0;
    std::memcpy(&number, message->opaque, sizeof number);
    return messages.at(number);
}

} // namespace

mts_queue fake_queue(int number) {
    return reinterpret_cast<mts_queue>(&handles[number]);
}

} // namespace fcip

using namespace fcip;

mts_queue mts_q = fake_queue(0);

int mts_send(mts_queue queue, const mts_addr* destination, std::uint32_t opcode, const void* payload,
             std::uint32_t length, mts_msg* sent, int constant_0, int another_0) {
    write_down("send " + queue_name(queue) + " " + std::to_string(constant_0) + " " + std::to_string(another_0));
    if (the_fake.send_code != 0)
        return the_fake.send_code;
    const auto* bytes = static_cast<const std::uint8_t*>(payload);
    the_fake.sent.push_back({*destination, opcode, {bytes, bytes + length}});
    store(sent, {'r', 'e', 'q', 'u', 'e', 's', 't'});
    return 0;
}

int mts_recv(mts_queue queue, mts_msg* received, const mts_recv_options* options, int wait) {
    std::string words;
    for (const std::uint32_t word : options->words)
        words += " " + std::to_string(word);
    write_down("recv " + queue_name(queue) + words + " wait " + std::to_string(wait));
    if (the_fake.replies.empty())
        return -7;
    const scripted_reply reply = the_fake.replies.front();
    the_fake.replies.pop_front();
    if (reply.code != 0)
        return reply.code;
    store(received, reply.payload);
    return 0;
}

std::uint32_t mts_rr_token_get(const mts_msg* message) {
    write_down(find(message).front() == 'r' ? "token of request" : "token of something else");
    return request_token;
}

void* mts_payload_get(const mts_msg* message) {
    return find(message).data();
}

std::uint32_t mts_payload_size(const mts_msg* message) {
    return static_cast<std::uint32_t>(find(message).size());
}

std::uint32_t mts_sap_get(mts_queue) {
    return own_sap;
}

void mts_drop(mts_queue queue, mts_msg* message) {
    std::vector<std::uint8_t>& payload = find(message);
    const bool is_request = payload.size() == 7;
    write_down("drop " + queue_name(queue) + (is_request ? " request" : " reply"));
    payload.assign(payload.size(), 0xDD); // whoever reads on sees that it is gone
}

std::uint32_t hton_if_index(std::uint32_t if_index) {
    const std::uint8_t bytes[] = {static_cast<std::uint8_t>(if_index >> 24), static_cast<std::uint8_t>(if_index >> 16),
                                  static_cast<std::uint8_t>(if_index >> 8), static_cast<std::uint8_t>(if_index)};
    std::uint32_t network_order = 0;
    std::memcpy(&network_order, bytes, sizeof bytes);
    return network_order;
}

int if_index_get_slot(std::uint32_t, std::uint8_t* slot) {
    write_down("slot");
    *slot = the_fake.slot.value_or(0);
    return the_fake.slot ? 0 : -1;
}

int if_index_get_port(std::uint32_t, std::uint8_t* port) {
    write_down("port");
    *port = the_fake.port.value_or(0);
    return the_fake.port ? 0 : -1;
}

int idxmap_node_by_if_index(std::uint32_t if_index, void* record) {
    write_down("node of " + std::to_string(if_index));
    if (the_fake.node_code == 0)
        std::memcpy(record, &the_fake.node, sizeof the_fake.node);
    return the_fake.node_code;
}

int cmi_req_resp(std::uint32_t opcode, int constant_1, int constant_0, void** reply, std::uint32_t* reply_length,
                 int another_0, int third_0, int constant_35, mts_queue queue, int wait) {
    char call[128];
    std::snprintf(call, sizeof call, "configuration %u %d %d length %u %d %d %d %s wait %d", opcode, constant_1,
                  constant_0, *reply_length, another_0, third_0, constant_35, queue_name(queue).c_str(), wait);
    write_down(call);
    if (the_fake.configuration) {
        const auto& bytes = *the_fake.configuration;
        *reply = std::malloc(bytes.size() + 1);
        std::copy(bytes.begin(), bytes.end(), static_cast<std::uint8_t*>(*reply));
        *reply_length = static_cast<std::uint32_t>(bytes.size());
    }
    return the_fake.configuration_code;
}
