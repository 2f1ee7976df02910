// Scenarios: from TOML text to the switch's tables.
#pragma once

#include "simulator/switchsim.h"

namespace switchsim {

/// Either the switch that a scenario describes or all that is wrong with it.
struct ScenarioResult {
    Switch contents;
    std::vector<std::string> errors; ///< a line each, "FILE:LINE:COLUMN: KEY: what was expected"; none on success
};

/// Reads a scenario from TOML text; `origin` stands for the file's name in the message.
ScenarioResult read_scenario(std::string_view toml, const std::string& origin);

/// Adds the rows of a text that holds nothing else ([[tunnel]] and the like) to a switch.
ScenarioResult read_rows(std::string_view toml, const std::string& origin, Switch contents);

/// Reads a scenario file.
ScenarioResult read_scenario_file(const std::string& file);

/// How large a generated switch is.
struct GeneratorSizes {
    std::uint32_t tunnels = 1;
    std::uint32_t profiles = 0;       ///< 0 = one for every 100 tunnels, at least one
    std::uint32_t ethernet_ports = 4; ///< shared out over the slots 1 and 2
    std::uint32_t vsans = 4;
};

/// Makes a switch of any size whose rows differ from each other.
Switch generate_switch(GeneratorSizes sizes);

} // namespace switchsim
