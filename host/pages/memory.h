// What pages learn, for those that come later.
#pragma once

#include "host/server/catalogue.h"

#include <chrono>
#include <map>
#include <mutex>
#include <utility>

namespace cmpihost::pages {

/// How many objects classes have, and which ones took long to enumerate. Several threads may use it.
class Memory {
  public:
    /// Remembers it for some minutes: an enumeration cannot be stopped, and one that took long once may have been
    /// unlucky.
    void note_slow(const server::Namespace& space, const mof::ClassDeclaration& declaration);
    bool is_slow(const server::Namespace& space, const mof::ClassDeclaration& declaration);

    using Clock = std::chrono::steady_clock;

    /// How many objects a class has, and when that was so.
    struct Count {
        std::string text;
        Clock::time_point when;
    };
    void note_count(const server::Namespace& space, const mof::ClassDeclaration& declaration, const std::string& text);

    /// The last count; nothing if there is none, or it is older than a minute.
    std::optional<Count> count(const server::Namespace& space, const mof::ClassDeclaration& declaration);

  private:
    using ClassName = std::pair<const server::Namespace*, const mof::ClassDeclaration*>;

    std::mutex mutex_;
    std::map<ClassName, Clock::time_point> slow_until_;
    std::map<ClassName, Count> counts_;
};

} // namespace cmpihost::pages
