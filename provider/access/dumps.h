// Profiles and links on standard output, in the style of the switch's command-line display. For diagnostics outside
// the library; no CIM request comes here. Call with the process-wide lock held, after init_mts().
#pragma once

#include "platform/services.h"

extern "C" {

/// Prints every profile with fcip_print_entity.
/// @return 0 at the end of the table, 1 when a profile's interface list cannot be had (the dump ends there)
__attribute__((visibility("default"))) int get_all_fcip_entities(mts_queue queue);

/// Prints a profile: its address, its tunnels and its TCP parameters.
/// @param interfaces a count, then as many interface indexes: the tunnels that use the profile
__attribute__((visibility("default"))) void fcip_print_entity(const FcipEntityEntry* profile,
                                                              const std::uint32_t* interfaces);

/// Prints the main fields of a link under their MIB-style names, then its VSAN.
/// @return 0, or -1 when the VSAN cannot be read
__attribute__((visibility("default"))) int fcip_print_link_entity_brief(const FcipLinkEntry* link);

} // extern "C"
