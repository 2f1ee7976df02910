// ZANTO_IPSettings: the IP stack's options as they apply to a tunnel.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Null when the link's profile or the switch's IP configuration cannot be read.
link_instance_builder ip_settings_build_instance;

/// Null when the link's profile cannot be read.
link_path_builder ip_settings_fill_reference;

} // namespace fcip
