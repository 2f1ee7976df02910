// Commands that change a switch: of the control socket, and of events.
#pragma once

#include "simulator/switchsim.h"

namespace switchsim {

/// An event's command word by word, its rows as the last word.
std::vector<std::string> words_of(const Event& event);

/// Whether the words begin as a command does that events may give.
bool is_event_command(const std::vector<std::string>& words);

/// A switch after a command, with what undoes it; or what is wrong.
struct Change {
    Switch contents;
    std::vector<Event> undo; ///< their times are not set
    std::string error;       ///< one line; empty on success
};

/// What set, add and remove make of a switch.
Change change(Switch contents, const std::vector<std::string>& words);

} // namespace switchsim
