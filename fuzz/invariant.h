// What the fuzz targets assert.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// One input. Always 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Ends the process with a line that says what did not hold.
void require(bool holds, std::string_view what);

/// Sends standard output, where the provider's trace goes, to /dev/null. Further calls do nothing.
void drop_trace();

/// Whether a message is what users get to see: one line, not empty.
bool is_one_line(std::string_view message);

} // namespace fuzz
