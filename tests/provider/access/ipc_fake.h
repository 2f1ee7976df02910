// An IPC service, interface-index service and configuration service for one test: it answers what it is told to and
// writes down what it is asked. The functions of this file take the place of the simulator's.
#pragma once

#include "platform/services.h"

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace fcip {

/// A request as it went out.
struct sent_request {
    mts_addr destination{};
    std::uint32_t opcode = 0;
    std::vector<std::uint8_t> payload;
};

/// What one mts_recv() does: a code other than 0 fails, otherwise the payload arrives.
struct scripted_reply {
    int code = 0;
    std::vector<std::uint8_t> payload;
};

/// The fake's state; a test starts from a fresh one.
struct ipc_fake {
    int send_code = 0;
    std::deque<scripted_reply> replies; ///< in the order of arrival; none left = -7
    std::optional<std::uint8_t> slot = 3;
    std::optional<std::uint8_t> port = 7;
    std::uint32_t node = 0x0102;
    int node_code = 0;

    int configuration_code = 0;
    std::optional<std::vector<std::uint8_t>> configuration; ///< none = no reply

    std::vector<sent_request> sent;
    std::vector<std::string> log; ///< the calls of the IPC service, in order
};

/// The fake that answers.
extern ipc_fake the_fake;

/// What `action` prints on standard output.
template <typename Action>
std::string printed_by(Action action) {
    testing::internal::CaptureStdout();
    action();
    return testing::internal::GetCapturedStdout();
}

/// The handle that the fake takes for a queue.
mts_queue fake_queue(int number);

} // namespace fcip
