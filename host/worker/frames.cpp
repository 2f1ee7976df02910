#include "host/worker/frames.h"

#include "host/worker/numbers.h"

#include <algorithm>
#include <cstring>

namespace cmpihost::worker {

namespace {

constexpr std::uint8_t more_bit = 0x80;

bool is_record(FrameKind kind) {
    return kind == FrameKind::question || kind == FrameKind::subject || kind == FrameKind::outcome;
}

bool may_send(Sender sender, FrameKind kind) {
    const bool of_front = kind == FrameKind::question;
    return kind >= FrameKind::question && kind <= FrameKind::ready && of_front == (sender == Sender::front);
}

void check(Sender sender, const Frame& frame, std::size_t length) {
    if (length > max_payload)
        throw BrokenFrame("a frame of " + std::to_string(length) + " bytes");
    if (!may_send(sender, frame.kind))
        throw BrokenFrame("a frame of kind " + std::to_string(static_cast<unsigned>(frame.kind)));
    if ((frame.request == 0) != (frame.kind == FrameKind::ready))
        throw BrokenFrame("a frame of request " + std::to_string(frame.request));
    if (frame.more && !is_record(frame.kind))
        throw BrokenFrame("a frame that cannot go on");
    const bool empty = frame.kind == FrameKind::ready || frame.kind == FrameKind::discard;
    if (empty && length > 0)
        throw BrokenFrame("a frame with a payload that it cannot have");
}

} // namespace

std::array<char, frame_header_size> frame_header(const Frame& frame) {
    std::array<char, frame_header_size> header{};
    write_number(header.data(), static_cast<std::uint32_t>(frame.payload.size()));
    write_number(header.data() + 4, frame.request);
    const auto kind = static_cast<unsigned>(frame.kind) | (frame.more ? more_bit : 0U);
    header[8] = static_cast<char>(kind);
    return header;
}

void for_each_frame(FrameKind kind, std::uint32_t request, std::string_view bytes,
                    const std::function<void(const Frame&)>& take) {
    do {
        const std::string_view payload = bytes.substr(0, max_payload);
        bytes.remove_prefix(payload.size());
        take({kind, is_record(kind) && !bytes.empty(), request, payload});
    } while (!bytes.empty());
}

std::string frames_of(FrameKind kind, std::uint32_t request, std::string_view record) {
    std::string frames;
    frames.reserve(record.size() + (record.size() / max_payload + 1) * frame_header_size);
    for_each_frame(kind, request, record, [&frames](const Frame& frame) {
        const auto header = frame_header(frame);
        frames.append(header.data(), header.size());
        frames += frame.payload;
    });
    return frames;
}

bool add_to_record(std::string& record, const Frame& frame) {
    if (record.size() + frame.payload.size() > max_record)
        throw BrokenFrame("a record of more than " + std::to_string(max_record) + " bytes");
    record += frame.payload;
    return !frame.more;
}

FrameReader::FrameReader(Sender sender) : sender_(sender), buffer_(2 * (frame_header_size + max_payload)) {}

std::span<char> FrameReader::room() {
    if (begin_ == end_ || buffer_.size() - begin_ < frame_header_size + max_payload) {
        std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
        end_ -= begin_;
        begin_ = 0;
    }
    return std::span(buffer_).subspan(end_);
}

void FrameReader::filled(std::size_t bytes) {
    end_ = std::min(end_ + bytes, buffer_.size());
}

std::optional<Frame> FrameReader::next() {
    if (end_ - begin_ < frame_header_size)
        return std::nullopt;
    const char* header = buffer_.data() + begin_;
    const std::size_t length = read_number<std::uint32_t>(header);
    const auto kind = static_cast<std::uint8_t>(header[8]);
    Frame frame{static_cast<FrameKind>(kind & ~more_bit), (kind & more_bit) != 0,
                read_number<std::uint32_t>(header + 4)};
    check(sender_, frame, length);
    if (end_ - begin_ < frame_header_size + length)
        return std::nullopt;
    frame.payload = {header + frame_header_size, length};
    begin_ += frame_header_size + length;
    return frame;
}

} // namespace cmpihost::worker
