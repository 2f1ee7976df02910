// ZANTO_RemoteTCPPort: the peer's end of a tunnel's TCP transport.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Null when the link's profile cannot be read.
link_instance_builder tcp_remote_pe_build_instance;

/// Null when the link's profile cannot be read. CreationClassName is the class name that the caller passed.
link_path_builder tcp_remote_pe_fill_reference;

/// The same object under the name that enumerations use; only its traces differ.
link_instance_builder remote_service_ap_build_instance;

/// The same path under the name that enumerations use.
link_path_builder remote_service_ap_fill_reference;

} // namespace fcip
