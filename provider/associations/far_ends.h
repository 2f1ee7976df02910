// The far ends of Associators and AssociatorNames: each is given what is known of the source and returns one object.
#pragma once

#include "provider/associations/associator_table.h"

namespace fcip::far_ends {

/// Objects that the link row itself stands for.
far_end fcip_pe, ip_pe, tcp_pe;
far_end fcip_remote_pe, ip_remote_pe, tcp_remote_pe;
far_end fcip_settings, ip_settings;

/// TCP settings, from the link read once more by its key; nothing if that fails.
far_end tcp_settings_read_again;

/// The Fibre Channel port behind the FCIP interface; nothing if there is none.
far_end fc_port;

/// The link's profile; nothing if it cannot be read.
far_end profile;

/// The logical computer system of the link's VSAN.
far_end logical_system;

/// Statistics, after the link's error counters were read. Nobody uses the counters, and failing to get them shows in
/// the trace only.
far_end ip_statistics, tcp_statistics;

/// The Ethernet port that carries the link. Whether the port was found is not looked at.
far_end ethernet_port_of_link;

/// The Ethernet port of a LAN endpoint.
far_end walked_port;

/// The LAN endpoint of the port that the key names.
far_end lan_endpoint;

/// Statistics of the port that the key names, and that port itself; nothing if the port cannot be read.
far_end ethernet_statistics, ethernet_port_of_statistics;

// ---------------------------------------------------------------------------------------------- AssociatorNames only

/// The IP settings and then, after a lookup of its own, the logical system too: two paths for one request.
far_end ip_settings_and_system;

/// A path of statistics, but only if the link's error counters could be read.
far_end statistics_if_counted;

/// The switch itself, whatever the link.
far_end physical_system;

/// The port of statistics, the platform's builder given the namespace first.
far_end ethernet_port_namespace_first;

/// A path of the TCP endpoint that is made and never returned.
far_end tcp_pe_not_returned;

} // namespace fcip::far_ends
