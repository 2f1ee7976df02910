// The rows that commands name.
#pragma once

#include "simulator/switchsim.h"

namespace switchsim {

/// What is wrong with a command: one line.
struct CommandError {
    std::string text;
};

/// A row that a command names.
struct Target {
    std::string section;     ///< as in a scenario: "tunnel", "ethernet", ...
    LinkKey key;             ///< of a tunnel; the two halves of a WWN; else {its number or interface index, 0}
    std::size_t words_taken; ///< of the command
};

/// The row that the words name, from `words[1]` on. Throws CommandError if there is none.
Target target_of(const Switch& contents, const std::vector<std::string>& words);

/// A WWN as its two halves, and back.
LinkKey halves_of(const Wwn& wwn);
Wwn wwn_of(const LinkKey& halves);

/// Whether a tunnel has an interface of its own: it is the first one's that has its index.
bool owns_interface(const Switch& contents, const LinkKey& key);

/// Takes a row away, with all that stands behind it.
void erase(Switch& contents, const Target& target);

/// The rows that are there after and were not before, as commands name them ("tunnel 1/3"): those that refer to
/// others first.
std::vector<std::string> new_rows(const Switch& before, const Switch& after);

} // namespace switchsim
