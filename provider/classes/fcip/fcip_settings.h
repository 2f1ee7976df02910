// ZANTO_FCIPSettings: a tunnel's FCIP options.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Null when the link's profile cannot be read.
link_instance_builder fcip_settings_build_instance;

/// Null when the link's profile cannot be read.
link_path_builder fcip_settings_fill_reference;

} // namespace fcip
