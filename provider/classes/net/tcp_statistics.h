// ZANTO_TCPEndPointStatistics and ZANTO_TCPStatisticalData: a tunnel's TCP counters.
#pragma once

#include "provider/classes/builders.h"

namespace fcip {

/// Null when no link has the row's link index or its profile cannot be read.
link_instance_builder tcp_statistics_build_instance;

/// -1 as a pointer when no link has the row's link index.
link_instance_builder tcp_statistical_data_build_instance;

} // namespace fcip
