// The line cards: what answers a statistics request.
#pragma once

#include "simulator/switchsim.h"

namespace switchsim {

inline constexpr std::uint32_t statistics_access_point = 943;

/// The access point of the one response queue.
inline constexpr std::uint32_t own_access_point = 1201;

/// The payloads that answer a request, in order; none if no line card sits at that node or it has no answer.
std::vector<std::vector<std::uint8_t>> line_card_replies(const SentRequest& request);

/// Writes the status into a reply's payload, if it is long enough to have one.
void set_status(std::vector<std::uint8_t>& payload, std::uint16_t status);

} // namespace switchsim
