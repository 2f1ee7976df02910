// cmpihost run inside the test: what it returns, and what it writes where.
#pragma once

#include "host/cli/command_line.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace cmpihost {

struct Outcome {
    int exit_code = -1;
    std::string out;
    std::string err;
};

inline std::string content_of(std::FILE* file) {
    std::string content;
    std::rewind(file);
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
        content += static_cast<char>(c);
    return content;
}

inline Outcome cmpihost_with(const std::vector<std::string>& arguments) {
    std::FILE* out = std::tmpfile();
    std::FILE* err = std::tmpfile();
    Outcome outcome;
    outcome.exit_code = run_command_line(arguments, out, err);
    outcome.out = content_of(out);
    std::fflush(err);
    outcome.err = content_of(err);
    std::fclose(out);
    std::fclose(err);
    return outcome;
}

inline const std::string good_provider = TEST_PROVIDERS "/host_good_provider.so";
inline const std::string odd_provider = TEST_PROVIDERS "/host_odd_provider.so";
inline const std::string bad_provider = TEST_PROVIDERS "/host_bad_provider.so";
inline const std::string fault_provider = TEST_PROVIDERS "/host_fault_provider.so";
inline const std::string throwing_provider = TEST_PROVIDERS "/host_throwing_provider.so";
inline const std::string graph_provider = TEST_PROVIDERS "/host_graph_provider.so";

/// Without a scenario from the environment.
class CommandLines : public testing::Test {
  protected:
    void SetUp() override { unsetenv("SWITCHSIM_SCENARIO"); }

    /// With the good provider.
    static Outcome ask(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--provider", good_provider, "--name", "Good"});
        return cmpihost_with(arguments);
    }
};

} // namespace cmpihost
