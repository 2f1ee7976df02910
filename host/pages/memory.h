// What pages learn, for those that come later.
#pragma once

#include "host/server/catalogue.h"

#include <chrono>
#include <map>
#include <mutex>
#include <utility>

namespace cmpihost::pages {

/// Which classes took long to enumerate. Several threads may use it.
class Memory {
  public:
    /// Remembers it for some minutes: an enumeration cannot be stopped, and one that took long once may have been
    /// unlucky.
    void note_slow(const server::Namespace& space, const mof::ClassDeclaration& declaration);
    bool is_slow(const server::Namespace& space, const mof::ClassDeclaration& declaration);

  private:
    using Clock = std::chrono::steady_clock;

    std::mutex mutex_;
    std::map<std::pair<const server::Namespace*, const mof::ClassDeclaration*>, Clock::time_point> slow_until_;
};

} // namespace cmpihost::pages
