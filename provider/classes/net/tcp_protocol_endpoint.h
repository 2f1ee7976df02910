// ZANTO_TCPProtocolEndPoint: the local end of a tunnel's TCP transport.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Null when the link's profile cannot be read.
link_instance_builder tcp_pe_build_instance;

/// Null when the link's profile cannot be read.
link_path_builder tcp_pe_fill_reference;

} // namespace fcip
