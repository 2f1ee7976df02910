#include "host/worker/question_queue.h"

#include "host/worker/records.h"

#include <poll.h>
#include <sys/socket.h>

#include <cerrno>

namespace cmpihost::worker {

namespace {

/// Bytes that come; 0 at the end of file, which an error is as well. Who waits in recv() is woken whenever the other
/// side has taken something of a reply, too; who waits in poll() is not.
std::size_t receive_some(int socket, std::span<char> room) {
    pollfd readable{socket, POLLIN, 0};
    for (;;) {
        if (poll(&readable, 1, -1) < 0 && errno == EINTR)
            continue;
        const ssize_t count = recv(socket, room.data(), room.size(), 0);
        if (count >= 0 || errno != EINTR)
            return count < 0 ? 0 : static_cast<std::size_t>(count);
    }
}

} // namespace

QuestionQueue::QuestionQueue(int socket, unsigned at_once) : socket_(socket), at_once_(at_once) {}

std::optional<Asked> QuestionQueue::next() {
    Lock lock(mutex_);
    while (waiting_.empty() || busy_ >= at_once_) {
        if (ended_)
            return std::nullopt;
        if (reading_)
            wait(lock);
        else
            read(lock);
    }
    std::optional<Asked> asked = std::move(waiting_.front());
    waiting_.pop_front();
    ++busy_;
    call_one(); // who reads, or takes the next
    return asked;
}

void QuestionQueue::wait(Lock& lock) {
    Idle self;
    crew_.push_back(&self);
    self.call.wait(lock, [&self] { return self.called; });
}

void QuestionQueue::call_one() {
    if (crew_.empty())
        return;
    Idle& last = *crew_.back();
    crew_.pop_back();
    last.called = true;
    last.call.notify_one();
}

void QuestionQueue::done() {
    const std::lock_guard lock(mutex_);
    if (--busy_ == 0)
        idle_.notify_all();
}

void QuestionQueue::read(Lock& lock) {
    std::deque<Asked> came;
    std::optional<BrokenFrame> broken;
    reading_ = true;
    lock.unlock();
    try {
        receive(came);
    } catch (const BrokenFrame& error) {
        broken = error;
    }
    lock.lock();
    reading_ = false;
    if (came.empty() || broken) {
        ended_ = true;
        broken_ = broken;
        waiting_.clear();
        while (!crew_.empty())
            call_one();
        end_.notify_all();
        return;
    }
    for (Asked& asked : came)
        waiting_.push_back(std::move(asked));
}

/// One question at least; none at the end of file.
void QuestionQueue::receive(std::deque<Asked>& came) {
    while (came.empty()) {
        const std::size_t count = receive_some(socket_, reader_.room());
        if (count == 0)
            return;
        reader_.filled(count);
        take_frames(came);
    }
}

void QuestionQueue::take_frames(std::deque<Asked>& came) {
    while (const auto frame = reader_.next()) {
        std::string& record = records_[frame->request];
        if (!add_to_record(record, *frame))
            continue;
        came.push_back({frame->request, decode_question(record)});
        records_.erase(frame->request);
    }
}

void QuestionQueue::await_end() {
    Lock lock(mutex_);
    end_.wait(lock, [this] { return ended_; });
    if (broken_)
        throw BrokenFrame(*broken_);
}

bool QuestionQueue::await_idle(std::chrono::milliseconds most) {
    Lock lock(mutex_);
    return idle_.wait_for(lock, most, [this] { return busy_ == 0; });
}

} // namespace cmpihost::worker
