// What the front process and the worker say to each other: numbered frames over a stream socket. Frames of several
// requests are interleaved. A frame is a header (payload's length, request's number, kind, all big-endian) and a
// payload.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace cmpihost::worker {

constexpr std::size_t frame_header_size = 9;
constexpr std::size_t max_payload = std::size_t{64} << 10;

/// Bytes of a question, a subject or an outcome, which are records of one or more frames.
constexpr std::size_t max_record = std::size_t{16} << 20;

enum class FrameKind : std::uint8_t {
    question = 1, ///< a record, and all that the front sends
    subject,      ///< a record: what the request is about
    part,         ///< of the reply's body
    discard,      ///< the parts so far are void; no payload
    outcome,      ///< a record, the last of a request
    ready,        ///< the worker takes questions; request 0, no payload
};

/// Who sends frames, which decides on the kinds that are permitted.
enum class Sender : std::uint8_t { front, worker };

struct Frame {
    FrameKind kind = FrameKind::ready;
    bool more = false; ///< the record goes on in the request's next frame of this kind
    std::uint32_t request = 0;
    std::string_view payload{};
};

/// Bytes that break the protocol. what() is part of a line.
class BrokenFrame : public std::runtime_error {
  public:
    using runtime_error::runtime_error;
};

std::array<char, frame_header_size> frame_header(const Frame& frame);

/// Splits a record, or bytes of a reply's body, into frames.
void for_each_frame(FrameKind kind, std::uint32_t request, std::string_view bytes,
                    const std::function<void(const Frame&)>& take);

/// A record as frames, one after the other.
std::string frames_of(FrameKind kind, std::uint32_t request, std::string_view record);

/// Adds a frame to the record that it is part of.
/// @return whether the record is whole
/// @throws BrokenFrame the record is too large
bool add_to_record(std::string& record, const Frame& frame);

/// Finds the frames in a stream of bytes. Its memory does not grow with what the bytes say.
class FrameReader {
  public:
    explicit FrameReader(Sender sender);

    /// Where the next bytes are to be put, after next() gave nothing: never empty. Ends what next() gave.
    std::span<char> room();

    /// So many bytes were put into the room.
    void filled(std::size_t bytes);

    /// The next frame; nothing if bytes of it are missing.
    /// @throws BrokenFrame a frame that the sender may not send
    std::optional<Frame> next();

  private:
    Sender sender_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
};

} // namespace cmpihost::worker
