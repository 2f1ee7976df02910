#include "simulator/switchsim.h"

#include "simulator/call.h"
#include "simulator/control.h"
#include "simulator/live.h"
#include "simulator/scenario.h"
#include "simulator/state.h"

#include <atomic>
#include <cstdio>

namespace switchsim {
namespace {

Switch the_tables;
std::atomic<bool> loaded = false;
bool bad_scenario = false;

/// Fills the switch as a process finds it at its first platform call.
void load_first() {
    const char* file = std::getenv("SWITCHSIM_SCENARIO");
    const std::string error =
        file && *file ? load(file) : load_text(built_in_scenario(), "the built-in two-site scenario");
    if (error.empty())
        return;
    std::fprintf(stderr, "%s\n", error.c_str());
    bad_scenario = true;
    loaded = true;
    restart_clock();
}

/// Puts a scenario in place, or gives its first error and how many more there are.
std::string take(ScenarioResult result) {
    if (!result.errors.empty()) {
        const std::size_t more = result.errors.size() - 1;
        return result.errors[0] + (more > 0 ? " (and " + std::to_string(more) + " more)" : "");
    }
    the_tables = std::move(result.contents);
    bad_scenario = false;
    loaded = true;
    restart_clock();
    open_control();
    return {};
}

} // namespace

void ensure_loaded() {
    if (is_loaded())
        return;
    load_first();
    open_control(); // of a bad scenario too
}

bool is_loaded() {
    return loaded.load(std::memory_order_relaxed);
}

Switch& current() {
    return the_tables;
}

bool load_failed() {
    return bad_scenario;
}

Switch& the_switch() {
    ensure_loaded();
    return the_tables;
}

void reset() {
    the_tables = {};
    bad_scenario = false;
    loaded = true;
    reset_clock();
    clear_faults();
    clear_counts();
    clear_complaints();
    reset_ipc();
}

std::string load(const std::string& file) {
    return take(read_scenario_file(file));
}

std::string load_text(std::string_view toml, const std::string& origin) {
    return take(read_scenario(toml, origin));
}

std::vector<std::string> scenario_errors(std::string_view toml, const std::string& origin) {
    return read_scenario(toml, origin).errors;
}

void generate(unsigned tunnels) {
    the_tables = generate_switch({.tunnels = tunnels});
    bad_scenario = false;
    loaded = true;
    restart_clock();
}

} // namespace switchsim

int switchsim_load_scenario(const char* file, char* message, std::size_t size) {
    const auto tell = [&](std::string_view error) {
        if (message && size > 0)
            switchsim::write_text(message, error, size);
        return error.empty() ? 0 : switchsim::failed;
    };
    try {
        return tell(file ? switchsim::load(file) : "no scenario file was named");
    } catch (const std::exception&) {
        return tell("not enough memory for the scenario");
    }
}
