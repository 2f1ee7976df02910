// Writes frames of several threads to one socket.
#pragma once

#include "host/worker/frames.h"

#include <atomic>
#include <condition_variable>
#include <mutex>

#include <sys/uio.h>

namespace cmpihost::worker {

/// A lock that is given to threads in the order in which they ask, so that one with many frames to write does not keep
/// out the others.
class TurnLock {
  public:
    void lock();
    void unlock();

  private:
    std::mutex mutex_;
    std::condition_variable next_turn_;
    std::uint64_t taken_ = 0;
    std::uint64_t served_ = 0;
};

class FrameWriter {
  public:
    /// @param socket blocking; stays the caller's
    explicit FrameWriter(int socket);

    /// Writes a record or bytes of a body, a few frames at once; between them other threads have their turn. Once the
    /// other side is gone it does nothing.
    void write(FrameKind kind, std::uint32_t request, std::string_view bytes);

    /// Writes two frames at once, so that the other side is woken once.
    void write(const Frame& first, const Frame& second);

  private:
    void write_blocks(std::span<iovec> blocks);

    int socket_;
    TurnLock turn_;
    std::atomic<bool> gone_ = false;
};

} // namespace cmpihost::worker
