// What the services share: the tables, the interprocess queue's reset, and the complaints.
#pragma once

#include "simulator/functions.h"
#include "simulator/switchsim.h"

#include <string>
#include <string_view>

namespace switchsim {

/// Loads the switch if that was not yet tried. Cheap afterwards.
void ensure_loaded();

/// Whether that was tried.
bool is_loaded();

/// The switch, loaded already: for use inside a platform call.
Switch& current();

/// Whether the switch that SWITCHSIM_SCENARIO names could not be loaded.
bool load_failed();

/// Notes what a caller did wrong, and aborts if that is wanted. Without memory to note it, standard error gets a line.
void complain(Function function, std::string_view what) noexcept;

/// A fault by its name in commands.
std::optional<Fault> fault_by_name(std::string_view name);

/// Whether a platform function can fail so, or take longer. Throw std::invalid_argument for a name that is none.
bool can_happen(std::string_view function, Fault fault);
bool can_be_delayed(std::string_view function);

/// The faults by name and the delays that wait for calls, a line each.
std::vector<std::string> planned_faults();

/// Forgets the IPC queue's messages and the last request.
void reset_ipc();

/// The port row of an interface index; null if there is none.
inline const Port* find_port(std::uint32_t if_index) {
    const auto& ports = current().ports;
    const auto found = ports.find(if_index);
    return found == ports.end() ? nullptr : &found->second;
}

} // namespace switchsim
