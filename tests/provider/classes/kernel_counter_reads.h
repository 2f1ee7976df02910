// The reads of the kernel's IP counters. They are no platform calls, so programs that look at them are linked with
// --wrap=ipconf_linux_get_ip_stats.
#pragma once

#include <string>
#include <vector>

namespace test {

/// Of each read of the IP group alone: the platform call before it. Any other read notes "other groups".
extern std::vector<std::string> kernel_counter_reads;

} // namespace test
