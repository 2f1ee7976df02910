// The bytes of replies, in blocks, and a limit for what all replies take.
#pragma once

#include "host/worker/backend.h"

namespace cmpihost::worker {

/// What all replies take at this moment. Used on one thread.
struct ReplyMemory {
    std::size_t most;
    std::size_t used = 0;
};

/// A reply's body while it comes.
class ReplyBody {
  public:
    explicit ReplyBody(std::shared_ptr<ReplyMemory> memory);

    /// @return false: all replies together would take too much; nothing was added
    bool append(std::string_view part);
    void clear();
    std::size_t size() const;

    /// Hands over body and hold.
    void move_to(Reply& reply);

  private:
    struct Lease;
    std::shared_ptr<Lease> lease_;
    std::vector<std::string> blocks_;
};

} // namespace cmpihost::worker
