#include "host/worker/frame_writer.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>

namespace cmpihost::worker {

namespace {

/// Takes written bytes off the front of what is to be written.
void advance(std::span<iovec> blocks, std::size_t written) {
    for (iovec& block : blocks) {
        const std::size_t taken = std::min(written, block.iov_len);
        block.iov_base = static_cast<char*>(block.iov_base) + taken;
        block.iov_len -= taken;
        written -= taken;
    }
}

bool write_all(int socket, std::span<iovec> blocks) {
    msghdr message{};
    message.msg_iov = blocks.data();
    message.msg_iovlen = blocks.size();
    while (std::any_of(blocks.begin(), blocks.end(), [](const iovec& block) { return block.iov_len > 0; })) {
        const ssize_t written = sendmsg(socket, &message, MSG_NOSIGNAL);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        advance(blocks, static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

void TurnLock::lock() {
    std::unique_lock lock(mutex_);
    const std::uint64_t turn = taken_++;
    next_turn_.wait(lock, [this, turn] { return served_ == turn; });
}

void TurnLock::unlock() {
    {
        const std::lock_guard lock(mutex_);
        ++served_;
    }
    next_turn_.notify_all();
}

FrameWriter::FrameWriter(int socket) : socket_(socket) {}

void FrameWriter::write(FrameKind kind, std::uint32_t request, std::string_view bytes) {
    for_each_frame(kind, request, bytes, [this](const Frame& frame) { write_frame(frame); });
}

void FrameWriter::write_frame(const Frame& frame) {
    auto header = frame_header(frame);
    std::array<iovec, 2> blocks{
        {{header.data(), header.size()}, {const_cast<char*>(frame.payload.data()), frame.payload.size()}}};
    const std::lock_guard turn(turn_);
    if (!gone_ && !write_all(socket_, blocks))
        gone_ = true;
}

} // namespace cmpihost::worker
