#include "switchsim/program.h"

#include "simulator/files.h"
#include "simulator/scenario.h"
#include "switchsim/control_client.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace switchsim_program {

namespace {

constexpr int exit_failed = 1;
constexpr int exit_usage = 2;

constexpr const char* usage =
    "Usage: switchsim check FILE...\n"
    "  or:  switchsim COMMAND...\n"
    "\n"
    "  check FILE...                  say all that is wrong with scenario files, a line each\n"
    "\n"
    "Commands for the running switch whose control socket SWITCHSIM_CONTROL names:\n"
    "\n"
    "  show                           what the switch has, its clock, faults, delays and events to come\n"
    "  set WHAT NAME KEY VALUE        give a row's key another value, as a scenario has it; \"default\" for none;\n"
    "                                 WHAT: tunnel, profile, ethernet, fibre_channel, port_channel, vsan, wwn_text\n"
    "  set switch|ip KEY VALUE        the same for what has no name\n"
    "  add FILE                       add the rows of a file: [[tunnel]] and the like\n"
    "  add card SLOT                  put a line card in\n"
    "  remove WHAT NAME               take a row away; a line card: remove card SLOT; [ip]: remove ip\n"
    "  fault FUNCTION [NTH [SHAPE]]   make a platform function fail: its NTH call, or every one\n"
    "  delay FUNCTION MS              make a platform function take longer, milliseconds\n"
    "  clear                          end all faults and delays\n"
    "  step SECONDS                   move the switch's clock on\n"
    "  save FILE                      write the switch as it is into a scenario file\n"
    "\n"
    "A tunnel's NAME is its number, or PROFILE/NUMBER; a port's SLOT/PORT, or its interface index.\n"
    "What commands changed is gone when the switch's process ends, unless it was saved. Under cmpihost serve that is\n"
    "the providers' process: when another one is started, after a crash or beside one in which a request hangs, the\n"
    "switch begins anew from its scenario.\n";

/// One line on standard error, whatever the texts in it have.
int fail(std::string message) {
    const auto is_control = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7f; };
    std::ranges::replace_if(message, is_control, '?');
    std::fprintf(stderr, "%s\n", message.c_str());
    return exit_failed;
}

/// Names every error of the files.
int check(const std::vector<std::string>& files) {
    int result = 0;
    for (const std::string& file : files)
        for (const std::string& error : switchsim::read_scenario_file(file).errors)
            result = fail(error);
    return result;
}

/// Files are read and written here: the switch may run in another folder, as another user.
int steer(const std::string& socket, std::vector<std::string> words) {
    const bool adds_file = words[0] == "add" && words.size() == 2;
    const bool saves = words[0] == "save" && words.size() == 2;
    if (adds_file) {
        std::string reason;
        auto text = switchsim::read_file(words[1], reason);
        if (!text)
            return fail("switchsim: " + words[1] + ": cannot read: " + reason);
        words[1] = std::move(*text);
    }
    const Reply reply = ask(socket, saves ? std::vector<std::string>{"save"} : words);
    if (!reply.good)
        return fail("switchsim: " + reply.text);
    if (saves) {
        const std::string error = switchsim::replace_file(words[1], reply.text);
        return error.empty() ? 0 : fail("switchsim: " + words[1] + ": cannot write: " + error);
    }
    const bool shown = std::fputs(reply.text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    return shown ? 0 : fail(std::string("switchsim: cannot write: ") + std::strerror(errno));
}

bool is_command(const std::string& word) {
    constexpr const char* words[] = {"show", "set", "add", "remove", "fault", "delay", "clear", "step", "save"};
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

} // namespace

int run(const std::vector<std::string>& arguments) {
    if (arguments == std::vector<std::string>{"--help"}) {
        std::printf("%s", usage);
        return 0;
    }
    if (arguments.size() > 1 && arguments[0] == "check")
        return check({arguments.begin() + 1, arguments.end()});
    if (arguments.empty() || !is_command(arguments[0]) || (arguments[0] == "save" && arguments.size() != 2)) {
        std::fprintf(stderr, "%s", usage);
        return exit_usage;
    }
    const char* socket = std::getenv("SWITCHSIM_CONTROL");
    if (!socket || !*socket)
        return fail("switchsim: SWITCHSIM_CONTROL names no control socket");
    return steer(socket, arguments);
}

} // namespace switchsim_program
