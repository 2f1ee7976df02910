// The fixture of tests that call the provider's functions: the small switch behind the platform functions, a broker
// scope for what they make, and their trace lines as text.
#pragma once

#include "host/broker/broker.h"
#include "host/mof/check.h"
#include "provider/access/lock.h"
#include "provider/common/broker.h"
#include "tests/support/read_faults.h"
#include "tests/support/small_switch.h"

#include <cmpimacs.h>
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

namespace test {

/// A key or a property as a row of text: name, CIM type, value. NULL stands for a null value; a reference shows as its
/// path.
using Row = std::array<std::string, 3>;
using Rows = std::vector<Row>;

/// A class that nobody declares, for builders that put whatever class they are asked for into the path. What is built
/// as it is held against the schema as an object of its CreationClassName, where it has one.
inline constexpr const char* made_up_class = "ZANTO_AskedFor";

/// Keys or properties as rows, in the order in which they were set.
Rows rows(const std::vector<cmpihost::Property>& properties);

/// A value as the third column of its row.
std::string text_of(const cmpihost::Value& value);

/// A path as `ns:Class.key="value",...`, without its host; every value in quotes, a reference's quotes unescaped.
std::string path_text(const cmpihost::Object& path);

class ProviderTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override; ///< nobody complained, the lock is free, no message is left undropped

    /// Calls `f` under the process-wide lock and keeps what it printed in `trace`.
    template <typename F>
    std::invoke_result_t<F> call(F f) {
        return captured([&] {
            const fcip::platform_lock lock;
            return f();
        });
    }

    /// Calls `f` without the lock and keeps what it printed in `trace`.
    template <typename F>
    std::invoke_result_t<F> captured(F f) {
        ::testing::internal::CaptureStdout();
        if constexpr (std::is_void_v<std::invoke_result_t<F>>) {
            f();
            trace = ::testing::internal::GetCapturedStdout();
        } else {
            auto result = f();
            trace = ::testing::internal::GetCapturedStdout();
            return result;
        }
    }

    /// The rows of an instance's properties and of a path's keys. Both are held against the schema.
    Rows properties(const CMPIInstance* instance);
    Rows keys(const CMPIObjectPath* path);

    /// Holds an object against the schema; the test fails for what is wrong with it, once for each finding.
    void hold_against_schema(const cmpihost::Object& object, cmpihost::mof::Kind kind);

    /// The simulator's switch, the small one unless the test changes it.
    static switchsim::Switch& the_switch() { return switchsim::the_switch(); }

    /// Set by tests that make the provider's side complain on purpose.
    bool complaints_expected = false;

    /// Cleared by tests whose faults keep the provider from making whole objects.
    bool whole_objects_expected = true;

    std::string trace;
    cmpihost::CallScope scope; ///< what direct calls make lives until the test's end

  private:
    std::set<std::string> findings_;
};

} // namespace test
