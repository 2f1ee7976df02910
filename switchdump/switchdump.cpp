#include "switchdump/switchdump.h"

#include "provider/access/dumps.h"
#include "provider/access/lock.h"
#include "provider/common/memory.h"
#include "simulator/scenario_writer.h"
#include "switchdump/anonymous.h"
#include "switchdump/capture.h"
#include "switchdump/notes.h"

#include <CLI/CLI.hpp>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
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

/// A salt that no other run has.
std::string random_salt() {
    std::random_device random;
    std::string salt;
    for (int i = 0; i < 4; ++i)
        salt += std::to_string(random()) + " ";
    return salt;
}

/// What was asked for.
struct Options {
    std::string scenario; ///< of the simulated switch; "" = the built-in one
    bool capture = false;
    bool anonymous = false;
    std::string salt; ///< of anonymous captures
};

int dump() {
    const int profiles = get_all_fcip_entities(mts_q) == 0 ? 0 : fail("a profile's interface list cannot be read");
    const int links = dump_links();
    return profiles != 0 ? profiles : links;
}

/// Prints the switch as a scenario.
int print_scenario(const Options& options) {
    switchsim::Switch contents = capture();
    if (options.anonymous)
        make_anonymous(contents, options.salt);
    const std::string text = notes(contents) + switchsim::write_scenario(contents);
    const bool whole = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    return whole ? 0 : fail("the scenario cannot be written: " + std::string(std::strerror(errno)));
}

int look(const Options& options) {
    const fcip::platform_lock lock;
    const std::string error = options.scenario.empty() ? "" : load(options.scenario);
    if (!error.empty())
        return fail(error);
    if (init_mts(&mts_q) < 0)
        return fail("the switch's response queue cannot be opened");
    return options.capture ? print_scenario(options) : dump();
}

/// The exit code of a run whose output was to be written.
int written(int result) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return result;
    return result != 0 ? result : fail("the output could not be written");
}

/// Reads the command line. @throws CLI::ParseError, CLI::CallForHelp
Options parse(CLI::App& app, int argc, const char* const* argv) {
    Options options{.scenario = scenario_of_environment(), .salt = random_salt()};
    const auto* scenario =
        app.add_option("--scenario", options.scenario,
                       "With FILE: the scenario file of the simulated switch; without this the one that "
                       "SWITCHSIM_SCENARIO names, or the built-in two-site switch. Without FILE: print the switch as a "
                       "scenario instead")
            ->type_name("FILE")
            ->expected(0, 1);
    app.add_flag("--anonymous", options.anonymous,
                 "With --scenario: put others in the place of names, addresses and WWNs, the same for the same");
    const auto* salt =
        app.add_option("--salt", options.salt,
                       "With --anonymous: with the same text, the same switch gets the same others again; "
                       "without this, each run takes a text of its own")
            ->type_name("TEXT");
    app.parse(argc, argv);
    options.capture = scenario->count() > 0 && (scenario->results().empty() || scenario->results()[0].empty());
    if (options.capture)
        options.scenario = scenario_of_environment();
    if (options.anonymous && !options.capture)
        throw CLI::ValidationError("--anonymous goes with --scenario without a file");
    if (salt->count() > 0 && !options.anonymous)
        throw CLI::ValidationError("--salt goes with --anonymous");
    return options;
}

} // namespace

int run(int argc, const char* const* argv) {
    CLI::App app{"Shows the FCIP profiles and links of a switch the way its own command line does.", "switchdump"};
    try {
        return written(look(parse(app, argc, argv)));
    } catch (const CLI::CallForHelp&) {
        std::printf("%s", app.help().c_str());
        return 0;
    } catch (const CLI::ParseError& error) {
        fail(std::string(error.what()) + " (see switchdump --help)");
        return exit_usage;
    }
}

} // namespace switchdump
