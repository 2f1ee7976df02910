// The ways in which a read of the platform comes to nothing.
#pragma once

#include "simulator/switchsim.h"

namespace test {

/// A failure, a failure that leaves a record behind, a success without one.
inline constexpr switchsim::Fault read_faults[] = {switchsim::Fault::fail, switchsim::Fault::fail_leaving_record,
                                                   switchsim::Fault::succeed_without_record};

} // namespace test
