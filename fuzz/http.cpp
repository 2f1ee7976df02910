// What clients send before and between bodies: requests are found or refused, in whatever pieces the bytes come.
#include "fuzz/invariant.h"
#include "host/http/reply_head.h"
#include "host/http/request_reader.h"

#include <algorithm>
#include <string>

namespace {

using namespace cmpihost::http;

constexpr std::size_t header_bytes = 600;
constexpr std::size_t body_bytes = 1'000;

/// Lines, an empty one at the end, and nothing in them that a client made up.
void check_reply(const std::string& head) {
    fuzz::require(head.starts_with("HTTP/1.1 ") && head.find("\r\n\r\n") == head.size() - 4,
                  "a reply's head ends at its first empty line");
    fuzz::require(std::ranges::count(head, '\n') == std::ranges::count(head, '\r'), "its lines end in the same way");
}

void check_head(const RequestHead& head) {
    const Persistence persistence{head.keep_alive, head.version_1_1};
    const unsigned fault = framing_fault(head);
    fuzz::require(fault == 0 || fault == 400, "a faulty frame is a bad request");
    const auto checked = check_request(head);
    if (const auto* headers = std::get_if<CimHeaders>(&checked)) {
        fuzz::require(head.method == (headers->prefix.empty() ? "POST" : "M-POST"), "an operation is posted");
        check_reply(operation_head(headers->prefix, 1, std::chrono::microseconds(1), persistence));
        return;
    }
    const auto& refusal = std::get<Refusal>(checked);
    fuzz::require(refusal.status >= 400 && reason_of(refusal.status) != "Error", "a refusal has a known status");
    check_reply(refusal_head(refusal, persistence));
}

/// False: the stream ends here.
bool read_all(RequestReader& reader, std::string& found) {
    for (;;)
        switch (reader.advance()) {
        case RequestReader::Progress::wants_more:
            return true;
        case RequestReader::Progress::head:
            check_head(reader.head());
            break;
        case RequestReader::Progress::complete:
            fuzz::require(reader.body().size() <= body_bytes, "a body is as large as it may be at most");
            found += reader.head().method + " " + reader.head().target + " " + reader.body() + "\n";
            reader.next();
            break;
        case RequestReader::Progress::refused:
            fuzz::require(reason_of(reader.status()) != "Error", "a refusal has a known status");
            return false;
        }
}

/// All whole requests.
std::string read_in_pieces(std::string_view bytes, std::size_t size) {
    RequestReader reader(header_bytes, body_bytes);
    std::string found;
    while (!bytes.empty()) {
        const auto room = reader.room();
        fuzz::require(!room.empty(), "there is room while more is wanted");
        const std::size_t count = std::min({size, room.size(), bytes.size()});
        std::copy_n(bytes.begin(), count, room.begin());
        bytes.remove_prefix(count);
        reader.received(count);
        if (!read_all(reader, found))
            break;
    }
    return found;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t piece = data[0] % 32 + std::size_t{1};
    fuzz::require(read_in_pieces(bytes, piece) == read_in_pieces(bytes, bytes.size()), "pieces make no difference");
    return 0;
}
