// ZANTO_RemoteIPServiceAccessPoint: the peer's IP address of a tunnel. Serves ZANTO_RemoteIPPort as well.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Null when the link's profile cannot be read.
link_instance_builder ip_remote_pe_build_instance;

/// Null when the link's profile cannot be read.
link_path_builder ip_remote_pe_fill_reference;

} // namespace fcip
