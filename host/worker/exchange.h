// A request and what has come of its answer.
#pragma once

#include "host/worker/frames.h"
#include "host/worker/reply_body.h"

namespace cmpihost::worker {

class Exchange {
  public:
    Exchange(Backend::Done done, const std::shared_ptr<ReplyMemory>& memory, std::size_t max_reply);

    /// Takes a frame of this request. Answers when the last one has come, or with an error when the body becomes too
    /// large; what still comes then is dropped.
    /// @return whether it was the last
    /// @throws BrokenFrame
    bool take(const Frame& frame);

    /// Answers with CIM error 1 and this text, or with an HTTP status where the subject is not known; once.
    void fail(const std::string& text, unsigned http_status = 500);

    bool answered() const { return done_ == nullptr; }
    std::string name() const; ///< "EnumerateInstances of X"

  private:
    const server::Subject* subject() const { return subject_ ? &*subject_ : nullptr; }
    void take_subject(const Frame& frame);
    void take_part(std::string_view part);
    bool take_outcome(const Frame& frame);
    void answer(server::Outcome outcome);

    Backend::Done done_;
    std::size_t max_reply_;
    std::string record_; ///< of the frames of the subject or outcome so far
    std::optional<server::Subject> subject_;
    ReplyBody body_;
};

} // namespace cmpihost::worker
