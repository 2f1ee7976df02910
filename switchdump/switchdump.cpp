#include "switchdump/switchdump.h"

#include "provider/access/dumps.h"
#include "provider/access/lock.h"
#include "provider/common/memory.h"

#include <CLI/CLI.hpp>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

/// Of the simulated platform; a switch's libraries have no such function.
extern "C" [[gnu::weak]] int switchsim_load_scenario(const char* file, char* message, std::size_t size);

namespace switchdump {

namespace {

constexpr int exit_failed = 1;
constexpr int exit_usage = 2;

int fail(const std::string& message) {
    std::fflush(stdout);
    std::fprintf(stderr, "switchdump: %s\n", message.c_str());
    return exit_failed;
}

bool is_simulated() {
    return switchsim_load_scenario != nullptr;
}

/// The scenario that the environment names; "" = the built-in one. None of a switch's business.
std::string scenario_of_environment() {
    const char* file = is_simulated() ? std::getenv("SWITCHSIM_SCENARIO") : nullptr;
    return file == nullptr ? "" : file;
}

/// What is wrong with a scenario, on one line; "" if nothing is.
std::string load(const std::string& scenario) {
    if (!is_simulated())
        return "--scenario: this switch is none that is simulated";
    std::array<char, 1024> message{};
    return switchsim_load_scenario(scenario.c_str(), message.data(), message.size()) == 0 ? "" : message.data();
}

/// Prints every link, each behind an empty line.
int dump_links() {
    int result = 0;
    std::uint32_t key[] = {0, 0};
    for (;;) {
        FcipLinkEntry* row = nullptr;
        const int status = fcip_get_link_entry(mts_q, platform_next, key, &row, 30, 1);
        const fcip::platform_ptr<FcipLinkEntry> link(row);
        if (status != 0 || link == nullptr)
            return result;
        std::printf("\n");
        if (fcip_print_link_entity_brief(link.get()) != 0)
            result = fail("the VSAN of the interface above cannot be read");
        key[0] = link->entity_id;
        key[1] = link->link_index;
    }
}

int dump(const std::string& scenario) {
    const fcip::platform_lock lock;
    const std::string error = scenario.empty() ? "" : load(scenario);
    if (!error.empty())
        return fail(error);
    if (init_mts(&mts_q) < 0)
        return fail("the switch's response queue cannot be opened");
    const int profiles = get_all_fcip_entities(mts_q) == 0 ? 0 : fail("a profile's interface list cannot be read");
    const int links = dump_links();
    return profiles != 0 ? profiles : links;
}

} // namespace

int run(int argc, const char* const* argv) {
    CLI::App app{"Shows the FCIP profiles and links of a switch the way its own command line does.", "switchdump"};
    std::string scenario = scenario_of_environment();
    app.add_option("--scenario", scenario,
                   "Scenario file of the simulated switch; without it the one that SWITCHSIM_SCENARIO names, or the "
                   "built-in two-site switch")
        ->type_name("FILE");
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        std::printf("%s", app.help().c_str());
        return 0;
    } catch (const CLI::ParseError& error) {
        fail(std::string(error.what()) + " (see switchdump --help)");
        return exit_usage;
    }
    const int result = dump(scenario);
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return result;
    return fail("the output could not be written");
}

} // namespace switchdump
