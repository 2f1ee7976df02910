#include "simulator/call.h"
#include "simulator/line_card.h"
#include "simulator/state.h"

#include <algorithm>
#include <deque>
#include <map>

using namespace switchsim;

/// The one response queue.
struct mts_queue_handle {
    std::uint32_t access_point;
};

namespace {

constexpr int timed_out = -2;

struct Message {
    std::uint32_t token;
    std::vector<std::uint8_t> payload;
};

/// What a caller's mts_msg holds: the number of a message in `held`. All zero = no message.
struct Descriptor {
    std::uint32_t mark;
    std::uint32_t number;
};
constexpr std::uint32_t live_mark = 0x4D534721;
constexpr std::uint32_t dropped_mark = 0x64726F70;

mts_queue_handle response_queue{own_access_point};
bool opened = false;
bool open_failed = false;
std::uint32_t last_token = 0;
std::uint32_t last_number = 0;
std::deque<Message> waiting;           // replies that nobody has received yet
std::map<std::uint32_t, Message> held; // messages that the caller has not dropped yet
SentRequest request;

void store(mts_msg* message, const Descriptor& descriptor) {
    std::memcpy(message->opaque, &descriptor, sizeof descriptor);
}

void hold(mts_msg* message, Message content) {
    held.emplace(++last_number, std::move(content));
    store(message, {live_mark, last_number});
}

/// The message that a descriptor stands for; null, with a complaint where the descriptor is at fault.
const Message* find(Function function, const mts_msg* message) {
    if (!message) {
        complain(function, "the message is null");
        return nullptr;
    }
    Descriptor descriptor;
    std::memcpy(&descriptor, message->opaque, sizeof descriptor);
    const auto found = held.find(descriptor.number);
    if (descriptor.mark == live_mark && found != held.end())
        return &found->second;
    if (descriptor.mark == live_mark || descriptor.mark == dropped_mark)
        complain(function, "the message was dropped before");
    else if (descriptor.mark != 0)
        complain(function, "the message was never sent or received");
    return nullptr;
}

/// Bends replies the way a fault wants it.
void distort(const Call& call, std::vector<std::uint8_t>& payload) {
    if (call.has(Fault::wrong_status))
        set_status(payload, static_cast<std::uint16_t>(call.fault()->code));
    if (call.has(Fault::short_reply))
        payload.resize(std::min(payload.size(), static_cast<std::size_t>(std::max(call.fault()->code, 0))));
}

std::deque<Message> replies_to_request(const Call& call, std::uint32_t token) {
    std::deque<Message> replies;
    if (call.has(Fault::no_reply))
        return replies;
    for (auto& payload : line_card_replies(request)) {
        distort(call, payload);
        replies.push_back({token, std::move(payload)});
    }
    return replies;
}

bool valid_options(const Call& call, const mts_recv_options* options, int wait) {
    if (!call.expect_pointer("the options", options))
        return false;
    const auto& words = options->words;
    return call.expect("the options' first word", words[0], {1}) &&
           call.expect("the options' second word", words[1], {0}) &&
           call.expect("the options' wait limit", words[2], {wait}) &&
           call.expect("the options' last words", words[4] | words[5] | words[6] | words[7], {0});
}

/// Takes the first waiting message with this token; 0 is any.
std::optional<Message> take(std::uint32_t token) {
    const auto found = std::find_if(waiting.begin(), waiting.end(),
                                    [token](const Message& one) { return token == 0 || one.token == token; });
    if (found == waiting.end())
        return std::nullopt;
    std::optional<Message> message(std::move(*found));
    waiting.erase(found);
    return message;
}

int send(const Call& call, SentRequest sent_request, mts_msg* sent) {
    request = std::move(sent_request);
    waiting.clear(); // what is left of an earlier exchange would only be mistaken for this one's replies
    const std::uint32_t token = ++last_token;
    auto replies = replies_to_request(call, token);
    hold(sent, {token, request.payload});
    waiting.swap(replies);
    return 0;
}

int receive(const Call& call, std::uint32_t token, mts_msg* received) {
    auto message = take(token);
    if (!message || call.has(Fault::no_reply))
        return timed_out;
    distort(call, message->payload);
    hold(received, std::move(*message));
    return 0;
}

} // namespace

namespace switchsim {

bool Call::expect_queue(mts_queue queue) const {
    if (queue == &response_queue && opened)
        return true;
    if (queue || !open_failed)
        complain(function_, "the queue is not the one that init_mts() opened");
    return false;
}

void reset_ipc() {
    waiting.clear();
    held.clear();
    request = {};
}

const SentRequest& last_request() {
    return request;
}

unsigned undropped_messages() {
    return static_cast<unsigned>(held.size());
}

} // namespace switchsim

mts_queue mts_q = nullptr;

int init_mts(mts_queue* queue) {
    const Call call(Function::init_mts);
    if (!call.expect_pointer("the queue", queue))
        return failed;
    const auto fault = load_failed() ? std::optional(failed) : call.fault_on_result();
    open_failed = fault.has_value();
    if (fault)
        return *fault;
    opened = true;
    *queue = &response_queue;
    return 0;
}

int mts_send(mts_queue queue, const mts_addr* destination, std::uint32_t opcode, const void* payload,
             std::uint32_t length, mts_msg* sent, int constant_0, int another_0) {
    const Call call(Function::mts_send);
    if (!call.expect_queue(queue) || !call.expect_pointer("the destination", destination) ||
        !call.expect("the destination's access point", destination->sap, {statistics_access_point}) ||
        !call.expect_pointer("the payload", payload) || !call.expect_pointer("the message", sent) ||
        !call.expect("the first constant", constant_0, {0}) || !call.expect("the second constant", another_0, {0}))
        return failed;
    store(sent, {});
    if (const auto fault = call.fault_on_storage(sent, sizeof *sent))
        return *fault;
    const auto* bytes = static_cast<const std::uint8_t*>(payload);
    return without_throwing([&] { return send(call, {*destination, opcode, {bytes, bytes + length}}, sent); });
}

int mts_recv(mts_queue queue, mts_msg* received, const mts_recv_options* options, int wait) {
    const Call call(Function::mts_recv);
    if (!call.expect_queue(queue) || !call.expect_pointer("the message", received) ||
        !valid_options(call, options, wait))
        return failed;
    store(received, {});
    if (const auto fault = call.fault_on_storage(received, sizeof *received))
        return *fault;
    return without_throwing([&] { return receive(call, options->words[3], received); });
}

std::uint32_t mts_rr_token_get(const mts_msg* message) {
    const Call call(Function::mts_rr_token_get);
    const Message* found = find(Function::mts_rr_token_get, message);
    return found ? found->token : 0;
}

void* mts_payload_get(const mts_msg* message) {
    const Call call(Function::mts_payload_get);
    const Message* found = find(Function::mts_payload_get, message);
    return found ? const_cast<std::uint8_t*>(found->payload.data()) : nullptr;
}

std::uint32_t mts_payload_size(const mts_msg* message) {
    const Call call(Function::mts_payload_size);
    const Message* found = find(Function::mts_payload_size, message);
    return found ? static_cast<std::uint32_t>(found->payload.size()) : 0;
}

std::uint32_t mts_sap_get(mts_queue queue) {
    const Call call(Function::mts_sap_get);
    return call.expect_queue(queue) ? queue->access_point : 0;
}

void mts_drop(mts_queue queue, mts_msg* message) {
    const Call call(Function::mts_drop);
    if (!call.expect_queue(queue) || !find(Function::mts_drop, message))
        return;
    Descriptor descriptor;
    std::memcpy(&descriptor, message->opaque, sizeof descriptor);
    held.erase(descriptor.number);
    store(message, {dropped_mark, descriptor.number});
}
