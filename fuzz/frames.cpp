// Frames, as the worker and the front process read them. The first byte says in how large pieces the others come.
#include "fuzz/invariant.h"
#include "host/worker/exchange.h"
#include "host/worker/records.h"

#include <algorithm>
#include <map>

namespace {

using namespace cmpihost::worker;

constexpr std::size_t max_reply = 2'000;
constexpr std::size_t max_replies = 5'000;

/// Hands over the frames until one is broken.
void read_frames(Sender sender, std::string_view bytes, std::size_t piece,
                 const std::function<void(const Frame&)>& take) {
    FrameReader reader(sender);
    try {
        while (!bytes.empty()) {
            const std::span<char> room = reader.room();
            fuzz::require(!room.empty(), "there is room for more bytes");
            const std::size_t count = bytes.copy(room.data(), std::min(piece, room.size()));
            bytes.remove_prefix(count);
            reader.filled(count);
            while (const auto frame = reader.next())
                take(*frame);
        }
    } catch (const BrokenFrame& broken) {
        fuzz::require(fuzz::is_one_line(broken.what()), "what is broken is told in a line");
    }
}

void read_as_worker(std::string_view bytes, std::size_t piece) {
    std::map<std::uint32_t, std::string> records;
    read_frames(Sender::front, bytes, piece, [&records](const Frame& frame) {
        std::string& record = records[frame.request];
        if (!add_to_record(record, frame))
            return;
        fuzz::require(encode(decode_question(record)) == record, "a question that was read is what was sent");
        records.erase(frame.request);
    });
}

void check(const Reply& reply) {
    std::size_t bytes = 0;
    for (const std::string& block : reply.body)
        bytes += block.size();
    fuzz::require(bytes <= max_reply || reply.outcome.cim_status == 1, "a reply has its limit");
    fuzz::require(reply.outcome.http_status >= 200 && reply.outcome.http_status < 600, "the status is one of HTTP");
}

void read_as_front(std::string_view bytes, std::size_t piece) {
    const auto memory = std::make_shared<ReplyMemory>(ReplyMemory{max_replies});
    std::map<std::uint32_t, Exchange> exchanges;
    std::vector<Reply> replies;
    std::size_t begun = 0;
    read_frames(Sender::worker, bytes, piece, [&](const Frame& frame) {
        const auto keep = [&replies](Reply reply) { replies.push_back(std::move(reply)); };
        const auto [exchange, added] = exchanges.try_emplace(frame.request, keep, memory, max_reply);
        begun += added ? 1 : 0;
        fuzz::require(memory->used <= max_replies, "all replies have their limit");
        if (frame.kind != FrameKind::ready && exchange->second.take(frame))
            exchanges.erase(exchange);
    });
    for (auto& [number, exchange] : exchanges)
        exchange.fail("the end");
    fuzz::require(replies.size() == begun, "each request is answered once");
    std::for_each(replies.begin(), replies.end(), check);
    exchanges.clear();
    replies.clear();
    fuzz::require(memory->used == 0, "replies that are dropped take no memory");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::size_t piece = std::size_t{data[0]} * data[0] + 1;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    read_as_worker(bytes, piece);
    read_as_front(bytes, piece);
    return 0;
}
