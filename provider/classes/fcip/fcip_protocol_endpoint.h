// ZANTO_FCIPProtocolEndPoint: the switch's end of a tunnel.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Null when the link's profile cannot be read.
link_instance_builder fcip_pe_build_instance;

/// Null when the link's profile cannot be read. The path has no host name.
link_path_builder fcip_pe_fill_reference;

} // namespace fcip
