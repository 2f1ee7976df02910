// The program called as a function.
#pragma once

#include "switchsim/program.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// For tests of what it says.
class SwitchsimProgramTest : public testing::Test {
  protected:
    /// Returns the exit code. The output stands in out_ and err_ then.
    int run(const std::vector<std::string>& arguments) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int result = switchsim_program::run(arguments);
        out_ = testing::internal::GetCapturedStdout();
        err_ = testing::internal::GetCapturedStderr();
        return result;
    }

    std::string out_;
    std::string err_;
};
