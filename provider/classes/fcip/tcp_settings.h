// ZANTO_TCPSettings: a tunnel's TCP retransmission settings.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Null when the profile cannot be read; -1 as a pointer when no link has the row's link index.
link_instance_builder tcp_settings_build_instance;

/// Null when the link's profile cannot be read.
link_path_builder tcp_settings_fill_reference;

} // namespace fcip
