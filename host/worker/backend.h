// Who answers the listener's requests: a process of its own, or this one.
#pragma once

#include "host/server/question.h"

#include <functional>
#include <memory>

namespace cmpihost::worker {

/// An answered request, or one that the provider did not live to answer.
struct Reply {
    server::Subject subject; ///< empty if the request was not read
    server::Outcome outcome;
    std::vector<std::string> body; ///< in blocks
    std::shared_ptr<void> hold;    ///< the memory that all replies may take, until the reply is dropped
};

/// Answers requests without blocking. Used on the thread of the listener's event loop alone, which it calls back on.
class Backend {
  public:
    using Done = std::function<void(Reply)>;
    virtual ~Backend() = default;

    /// @return false: too many requests wait already, `done` is not called
    virtual bool ask(server::Question question, Done done) = 0;

    /// How often the process behind it ended of itself, or had to be ended.
    virtual std::uint64_t restarts() const { return 0; }

    /// Ends the process behind it, if any. Requests that still run are answered with an error.
    virtual void stop(std::function<void()> stopped) = 0;
};

} // namespace cmpihost::worker
