// Properties of the switch's objects that are not single texts.
#pragma once

#include "simulator/switchsim.h"

#include <cmpift.h>

#include <string>
#include <vector>

namespace switchsim {

/// How an object is, in the standard's numbers.
struct State {
    std::uint16_t operational_status;
    std::uint16_t enabled_state;
};

inline constexpr State state_unknown{0, 0};
inline constexpr State state_good{2, 2};       ///< OK, enabled
inline constexpr State state_stopped{10, 6};   ///< stopped, enabled but offline
inline constexpr State state_not_there{13, 6}; ///< lost communication, enabled but offline

void set_state(const CMPIBroker* broker, CMPIInstance* instance, const State& state);

void set_number(CMPIInstance* instance, const char* name, std::uint16_t number);
void set_numbers(const CMPIBroker* broker, CMPIInstance* instance, const char* name,
                 const std::vector<std::uint16_t>& numbers);
void set_texts(const CMPIBroker* broker, CMPIInstance* instance, const char* name,
               const std::vector<std::string>& texts);

} // namespace switchsim
