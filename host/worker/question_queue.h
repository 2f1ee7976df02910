// The questions that come to a worker, and the threads that wait for them.
#pragma once

#include "host/server/question.h"
#include "host/worker/frames.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <unordered_map>

namespace cmpihost::worker {

struct Asked {
    std::uint32_t request;
    server::Question question;
};

/// Read by the threads that answer: one of those that have nothing to do waits for the socket, and answers what it has
/// read itself, while another takes its place. So a question wakes one thread only.
class QuestionQueue {
  public:
    /// @param socket blocking; stays the caller's
    /// @param at_once questions that may be answered at the same time. One thread more has to call next(), so that the
    /// end of file is noticed whatever the others do.
    QuestionQueue(int socket, unsigned at_once);

    /// The next question, to be followed by done(). Nothing after the end of file; what still waits then is dropped.
    std::optional<Asked> next();
    void done();

    /// Waits for the end of file.
    /// @throws BrokenFrame where the other side has broken the protocol
    void await_end();

    /// Waits until nothing is being answered.
    /// @return false: something still is after that time
    bool await_idle(std::chrono::milliseconds most);

  private:
    using Lock = std::unique_lock<std::mutex>;

    /// A thread that waits in next().
    struct Idle {
        std::condition_variable call;
        bool called = false;
    };

    void wait(Lock& lock);
    void call_one();
    void read(Lock& lock);
    void receive(std::deque<Asked>& came);
    void take_frames(std::deque<Asked>& came);

    int socket_;
    unsigned at_once_;
    FrameReader reader_{Sender::front};                        ///< of the thread that reads
    std::unordered_map<std::uint32_t, std::string> records_{}; ///< likewise: questions whose last frame has not come

    std::mutex mutex_;
    std::vector<Idle*> crew_; ///< that waits. The last is called first: its memory is still at hand.
    std::condition_variable end_;
    std::condition_variable idle_;
    std::deque<Asked> waiting_;
    unsigned busy_ = 0;
    bool reading_ = false;
    bool ended_ = false;
    std::optional<BrokenFrame> broken_;
};

} // namespace cmpihost::worker
