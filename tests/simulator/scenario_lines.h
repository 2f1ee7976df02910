// Scenarios that tests write as text.
#pragma once

#include "tests/simulator/simulator_test.h"

/// Loads a scenario of these lines behind a [switch] table that takes lines 1 and 2.
inline std::string load_lines(const std::string& lines) {
    return switchsim::load_text("[switch]\nname = \"sw\"\n" + lines, "test.toml");
}

inline void load_ok(const std::string& lines) {
    EXPECT_EQ(load_lines(lines), "");
}
