// The process-wide lock for the length of a scope.
#pragma once

#include "platform/services.h"

namespace fcip {

/// Holds the process-wide lock. Not recursive: nothing that runs under it takes it again.
class platform_lock {
  public:
    platform_lock() { mutex_lock(); }
    ~platform_lock() { mutex_unlock(); }
    platform_lock(const platform_lock&) = delete;
    platform_lock& operator=(const platform_lock&) = delete;
};

} // namespace fcip
