// ZANTO_IPEndPointStatistics: the line card's IP counters.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Null for a null link or when no counter record came back.
link_instance_builder ip_statistics_build_instance;

} // namespace fcip
