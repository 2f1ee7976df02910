// The ends of References and ReferenceNames: each makes one object path from what is known of the source.
#pragma once

#include "provider/associations/reference_table.h"

namespace fcip::ends {

/// Objects that the link row stands for.
reference_path_maker fcip_pe, ip_pe, tcp_pe;
reference_path_maker fcip_remote_pe, ip_remote_pe, tcp_remote_pe;
reference_path_maker fcip_settings, ip_settings, tcp_settings;
reference_path_maker statistics;

/// The logical computer system of the link's VSAN; the class text is the platform helper's own.
reference_path_maker logical_system;

/// The profile that was fetched.
reference_path_maker profile;

/// The port that was fetched, as the platform names it.
reference_path_maker port;

/// The same, the platform's builder given the namespace first.
reference_path_maker port_namespace_first;

/// Statistics of the port that was fetched.
reference_path_maker ethernet_statistics;

/// The LAN endpoint with the key's interface index.
reference_path_maker lan_endpoint;

} // namespace fcip::ends
