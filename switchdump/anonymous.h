// A captured switch without what tells whose it is.
#pragma once

#include "simulator/switchsim.h"

namespace switchdump {

/// Puts others in the place of names, addresses and WWNs: the same for the same wherever it stands, so that what
/// belongs together still does. They are numbered as they come, so nothing of the old ones is in the new ones. What is
/// not set stays so.
void make_anonymous(switchsim::Switch& contents);

} // namespace switchdump
