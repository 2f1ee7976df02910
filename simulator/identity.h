// The switch's names, for services that put them into objects.
#pragma once

namespace switchsim {

/// What getCSName() answers; null if the switch has no name.
const char* switch_name();

/// What CSgetName() answers; null if the switch has no name.
const char* system_name();

} // namespace switchsim
