// ZANTO_IPProtocolEndPoint: the local IP address of a tunnel.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Null when the link's profile cannot be read.
link_instance_builder ip_pe_build_instance;

/// Null for a null link or when the link's profile cannot be read.
link_path_builder ip_pe_fill_reference;

} // namespace fcip
