// The object path of the three statistics classes of a tunnel.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Null when the profile or the link cannot be read, or when no Ethernet port carries the link.
link_path_builder stat_fill_reference;

} // namespace fcip
