// A captured switch without what tells whose it is.
#pragma once

#include "simulator/switchsim.h"

#include <string>

namespace switchdump {

/// Puts others in the place of names, addresses and WWNs: the same for the same wherever it stands, so that what
/// belongs together still does. They are given out as they come, in an order that the salt alone tells, so nothing of
/// the old ones is in the new ones. What is not set stays so.
void make_anonymous(switchsim::Switch& contents, const std::string& salt);

} // namespace switchdump
