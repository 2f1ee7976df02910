#include "host/worker/frame_writer.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace cmpihost::worker {

namespace {

/// Bytes to be written, which iovec has no const for.
iovec block_of(std::string_view bytes) {
    return {const_cast<char*>(bytes.data()), bytes.size()};
}

iovec block_of(const std::array<char, frame_header_size>& header) {
    return block_of(std::string_view(header.data(), header.size()));
}

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
    constexpr std::size_t frames_at_once = 4;
    std::array<std::array<char, frame_header_size>, frames_at_once> headers{};
    std::array<iovec, 2 * frames_at_once> blocks{};
    std::size_t count = 0;
    for_each_frame(kind, request, bytes, [&](const Frame& frame) {
        headers[count] = frame_header(frame);
        blocks[2 * count] = block_of(headers[count]);
        blocks[2 * count + 1] = block_of(frame.payload);
        const bool last = frame.payload.data() + frame.payload.size() == bytes.data() + bytes.size();
        if (++count == frames_at_once || last)
            write_blocks(std::span(blocks).first(2 * std::exchange(count, 0)));
    });
}

void FrameWriter::write(const Frame& first, const Frame& second) {
    std::array headers{frame_header(first), frame_header(second)};
    std::array blocks{block_of(headers[0]), block_of(first.payload), block_of(headers[1]), block_of(second.payload)};
    write_blocks(blocks);
}

void FrameWriter::write_blocks(std::span<iovec> blocks) {
    const std::lock_guard turn(turn_);
    if (!gone_ && !write_all(socket_, blocks))
        gone_ = true;
}

} // namespace cmpihost::worker
