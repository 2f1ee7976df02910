// Ownership of what the platform hands out.
#pragma once

#include <cstdlib>
#include <memory>

namespace fcip {

/// Releases a block that a platform call allocated.
struct free_deleter {
    void operator()(void* block) const noexcept { std::free(block); }
};

/// A record that the platform handed out; released when it goes out of scope.
template <typename Record>
using platform_ptr = std::unique_ptr<Record, free_deleter>;

} // namespace fcip
