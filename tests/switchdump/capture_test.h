// A switch, its capture, and a switch that has another value in every field.
#pragma once

#include "host/broker/loader.h"
#include "simulator/scenario_fields.h"
#include "simulator/statistics_layout.h"
#include "simulator/switchsim.h"
#include "switchdump/switchdump.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

/// For tests of what is captured. The switch is empty at first.
class CaptureTest : public testing::Test {
  protected:
    CaptureTest() {
        unsetenv("SWITCHSIM_SCENARIO");
        switchsim::reset();
    }

    ~CaptureTest() override {
        for (const std::string& complaint : switchsim::complaints())
            ADD_FAILURE() << complaint;
        EXPECT_EQ(switchsim::undropped_messages(), 0U);
    }

    static std::string captured(std::vector<const char*> arguments = {"switchdump", "--scenario"}) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(switchdump::run(static_cast<int>(arguments.size()), arguments.data()), 0);
        return testing::internal::GetCapturedStdout();
    }
};

/// Gives every field that scenarios have a value that no other one has. Addresses are those of no documentation.
void change_every_field();
