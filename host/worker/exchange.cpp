#include "host/worker/exchange.h"

#include "host/worker/failure.h"
#include "host/worker/records.h"

#include <utility>

namespace cmpihost::worker {

Exchange::Exchange(Backend::Done done, const std::shared_ptr<ReplyMemory>& memory, std::size_t max_reply)
    : done_(std::move(done)), max_reply_(max_reply), body_(memory) {}

bool Exchange::take(const Frame& frame) {
    switch (frame.kind) {
    case FrameKind::subject:
        take_subject(frame);
        return false;
    case FrameKind::part:
        take_part(frame.payload);
        return false;
    case FrameKind::discard:
        body_.clear();
        return false;
    case FrameKind::outcome:
        return take_outcome(frame);
    default:
        throw BrokenFrame("a frame that answers nothing");
    }
}

void Exchange::take_subject(const Frame& frame) {
    if (subject_)
        throw BrokenFrame("a second subject");
    if (add_to_record(record_, frame))
        subject_ = decode_subject(std::exchange(record_, {}));
}

void Exchange::take_part(std::string_view part) {
    if (answered())
        return;
    if (part.size() > max_reply_ - body_.size())
        fail("the reply to " + name() + " takes more than " + std::to_string(max_reply_) + " bytes");
    else if (!body_.append(part))
        fail("the replies that are under way take too much memory for that to " + name());
}

bool Exchange::take_outcome(const Frame& frame) {
    if (!add_to_record(record_, frame))
        return false;
    server::Outcome outcome = decode_outcome(std::exchange(record_, {}));
    if (!answered())
        answer(std::move(outcome));
    return true;
}

void Exchange::fail(const std::string& text, unsigned http_status) {
    if (answered())
        return;
    Failure failed = failure(subject(), text, http_status);
    failed.outcome.notes.push_back(text);
    body_.clear();
    Reply reply;
    reply.outcome = std::move(failed.outcome);
    if (!failed.body.empty())
        reply.body.push_back(std::move(failed.body));
    reply.subject = subject_.value_or(server::Subject{});
    std::exchange(done_, nullptr)(std::move(reply));
}

void Exchange::answer(server::Outcome outcome) {
    Reply reply;
    reply.outcome = std::move(outcome);
    body_.move_to(reply);
    reply.subject = std::move(subject_).value_or(server::Subject{});
    std::exchange(done_, nullptr)(std::move(reply));
}

std::string Exchange::name() const {
    return request_name(subject());
}

} // namespace cmpihost::worker
