// ZANTO_RemoteFCIPPort: the peer's end of a tunnel.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Null when the link's profile cannot be read. The Name begins with the peer's entity id.
link_instance_builder fcip_remote_pe_build_instance;

/// Null when the link's profile cannot be read. The Name begins with 0, which is what lookups read back. The path
/// has no host name.
link_path_builder fcip_remote_pe_fill_reference;

} // namespace fcip
