// The fixture of the tests of the IPC service's statistics queries: replies to order, and the log of the calls.
#pragma once

#include "tests/provider/access/ipc_fake.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace fcip {

using bytes = std::vector<std::uint8_t>;
using sizes = std::initializer_list<std::size_t>;

constexpr std::uint32_t if_index = 0x8A0B0C0D;

/// A payload of so many bytes with a status; its other bytes count up from 1.
inline bytes payload_of(std::size_t size, std::uint16_t status = 0) {
    bytes payload(size);
    for (std::size_t offset = 0; offset < size; ++offset)
        payload[offset] = static_cast<std::uint8_t>(offset % 251 + 1);
    if (size >= 12) {
        payload[10] = static_cast<std::uint8_t>(status >> 8);
        payload[11] = static_cast<std::uint8_t>(status);
    }
    return payload;
}

/// A further TCP reply whose 16-bit word at offset 36 says whether more follow.
inline bytes further(std::uint8_t high, std::uint8_t low) {
    bytes payload = payload_of(38);
    payload[36] = high;
    payload[37] = low;
    return payload;
}

class IpcStatistics : public testing::Test {
  protected:
    IpcStatistics() { the_fake = {}; }

    static void reply(bytes payload) { the_fake.replies.push_back({0, std::move(payload)}); }
    static void fail_to_receive(int code) { the_fake.replies.push_back({code, {}}); }

    /// The log without the calls that find the port number and the node.
    static std::vector<std::string> exchange() {
        std::vector<std::string> calls;
        for (const std::string& call : the_fake.log) {
            if (call != "slot" && call != "port" && !call.starts_with("node"))
                calls.push_back(call);
        }
        return calls;
    }
};

using calls = std::vector<std::string>;
inline const std::string send_on_q0 = "send q0 0 0";
inline const std::string receive_reply = "recv q0 1 0 5 28752 0 0 0 0 wait 5"; // 28752: the request's token
inline const std::string receive_any = "recv q0 1 0 5 0 0 0 0 0 wait 5";
inline const std::string token = "token of request";
inline const std::string drop_request = "drop q0 request";
inline const std::string drop_reply = "drop q0 reply";

/// How a first exchange fails, for each of the three queries.
struct failure {
    const char* name;
    int send_code;
    std::vector<scripted_reply> replies;
    int ip_status; ///< what get_ip_stats answers
    calls expected;
};

inline const failure failures[] = {
    {"send", 3, {}, -1, {send_on_q0}},
    {"receive", 0, {{-42, {}}}, -42, {send_on_q0, token, receive_reply, drop_request}},
    {"status",
     0,
     {{0, payload_of(1352, 0x0102)}},
     0x0102,
     {send_on_q0, token, receive_reply, drop_reply, drop_request}},
    {"short", 0, {{0, payload_of(11)}}, -1, {send_on_q0, token, receive_reply, drop_reply, drop_request}},
};

inline void arm(const failure& one) {
    the_fake = {};
    the_fake.send_code = one.send_code;
    the_fake.replies.assign(one.replies.begin(), one.replies.end());
}

} // namespace fcip
