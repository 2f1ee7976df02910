#include "switchsim/program.h"

#include "simulator/scenario.h"

#include <cstdio>

namespace switchsim_program {

namespace {

constexpr int exit_failed = 1;
constexpr int exit_usage = 2;

constexpr const char* usage = "usage: switchsim check FILE...\n"
                              "\n"
                              "  check FILE...   say all that is wrong with scenario files, a line each\n";

/// Names every error of the files.
int check(const std::vector<std::string>& files) {
    int result = 0;
    for (const std::string& file : files) {
        for (const std::string& error : switchsim::read_scenario_file(file).errors) {
            std::fprintf(stderr, "%s\n", error.c_str());
            result = exit_failed;
        }
    }
    return result;
}

} // namespace

int run(const std::vector<std::string>& arguments) {
    if (arguments == std::vector<std::string>{"--help"}) {
        std::printf("%s", usage);
        return 0;
    }
    if (arguments.size() > 1 && arguments[0] == "check")
        return check({arguments.begin() + 1, arguments.end()});
    std::fprintf(stderr, "%s", usage);
    return exit_usage;
}

} // namespace switchsim_program
