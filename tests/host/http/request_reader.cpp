// Bytes to requests, whatever pieces they come in.
#include "host/http/request_reader.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace cmpihost::http {
namespace {

using Progress = RequestReader::Progress;

/// What became of a stream of bytes.
struct ReadRequests {
    std::vector<std::string> requests; ///< method, target and body of each
    unsigned status = 0;               ///< of the first that was refused

    bool operator==(const ReadRequests&) const = default;
};

/// Reads what is there. False: it was refused.
bool read_all(RequestReader& reader, ReadRequests& found) {
    for (;;)
        switch (reader.advance()) {
        case Progress::wants_more:
            return true;
        case Progress::head:
            break;
        case Progress::complete:
            found.requests.push_back(reader.head().method + " " + reader.head().target + " " + reader.body());
            reader.next();
            break;
        case Progress::refused:
            found.status = reader.status();
            return false;
        }
}

/// Brings the bytes in pieces of one size.
ReadRequests read_in_pieces(const std::string& bytes, std::size_t size) {
    RequestReader reader(16'384, 100'000);
    ReadRequests found;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto room = reader.room();
        const std::size_t count = std::min({size, room.size(), bytes.size() - at});
        EXPECT_GT(count, 0U);
        std::copy_n(bytes.data() + at, count, room.data());
        reader.received(count);
        at += count;
        if (!read_all(reader, found))
            break;
    }
    return found;
}

const std::string two_requests = "POST /a HTTP/1.1\r\nHost: h\r\nContent-Length: 5\r\n\r\nhello\r\n"
                                 "POST /b HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n"
                                 "1\r\nx\r\n5;ext=\"y\"\r\nabcde\r\n0\r\nTrailer: z\r\n\r\n"
                                 "GET /c HTTP/1.0\r\n\r\n";

TEST(RequestReaders, PiecesMakeNoDifference) {
    const ReadRequests expected{{"POST /a hello", "POST /b xabcde", "GET /c "}, 0};
    for (std::size_t size = 1; size <= two_requests.size(); ++size)
        EXPECT_EQ(read_in_pieces(two_requests, size), expected) << size;
}

TEST(RequestReaders, LongHeadersInPieces) {
    const std::string request = "GET /a HTTP/1.1\r\nX: " + std::string(9'000, 'x') + "\r\nY: y\r\n\r\n";
    for (const std::size_t size : {1U, 7U, 4096U, 100'000U})
        EXPECT_EQ(read_in_pieces(request, size).requests.size(), 1U) << size;
}

TEST(RequestReaders, LimitOfTheHeaderIsOfAllItsFields) {
    std::string fields;
    for (int i = 0; i < 200; ++i)
        fields += "X: " + std::string(95, 'x') + "\r\n";
    for (const std::size_t size : {1U, 100U, 4096U, 100'000U})
        EXPECT_EQ(read_in_pieces("GET /a HTTP/1.1\r\n" + fields + "\r\n", size).status, 431U) << size;
}

TEST(RequestReaders, LimitOfTheHeaderAtItsEdge) {
    const std::string frame = "GET /a HTTP/1.1\r\nX: \r\n\r\n";
    const auto request = [&frame](std::size_t size) {
        return frame.substr(0, 20) + std::string(size - frame.size(), 'x') + frame.substr(20);
    };
    for (const std::size_t size : {1U, 1'000U, 100'000U}) {
        EXPECT_EQ(read_in_pieces(request(16'383), size).requests.size(), 1U) << size;
        EXPECT_EQ(read_in_pieces(request(16'385), size).status, 431U) << size;
    }
}

TEST(RequestReaders, ChunkLinesAndTrailersAreLimited) {
    const std::string head = "POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n";
    EXPECT_EQ(read_in_pieces(head + "1;" + std::string(20'000, 'x'), 1'000).status, 400U);
    EXPECT_EQ(read_in_pieces(head + "0\r\nX: " + std::string(20'000, 'x'), 1'000).status, 400U);
    EXPECT_EQ(read_in_pieces(head + std::string(20'000, '0'), 1'000).status, 400U);
}

TEST(RequestReaders, TrailersAreNoHeaders) {
    RequestReader reader(16'384, 1'000);
    const std::string bytes = "POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n0\r\nCIMMethod: x\r\n\r\n";
    std::ranges::copy(bytes, reader.room().begin());
    reader.received(bytes.size());
    EXPECT_EQ(reader.advance(), Progress::head);
    EXPECT_EQ(reader.advance(), Progress::complete);
    EXPECT_EQ(reader.head().field("CIMMethod"), nullptr);
}

TEST(RequestReaders, TellWhetherARequestHasBegun) {
    RequestReader reader(16'384, 1'000);
    EXPECT_FALSE(reader.has_begun());
    reader.room()[0] = '\n';
    reader.received(1);
    EXPECT_EQ(reader.advance(), Progress::wants_more);
    EXPECT_FALSE(reader.has_begun()) << "an empty line between requests";
    reader.room()[0] = 'P';
    reader.received(1);
    EXPECT_EQ(reader.advance(), Progress::wants_more);
    EXPECT_TRUE(reader.has_begun());
    EXPECT_FALSE(reader.is_complete());
}

TEST(RequestReaders, KeepAuthorizationApart) {
    RequestReader reader(16'384, 1'000);
    const std::string bytes = "GET / HTTP/1.1\r\nauthorization: Basic x\r\nA: b\r\n\r\n";
    std::ranges::copy(bytes, reader.room().begin());
    const char* place = reader.room().data();
    reader.received(bytes.size());
    EXPECT_EQ(reader.advance(), Progress::head);
    ASSERT_EQ(reader.head().authorizations.size(), 1U);
    EXPECT_EQ(reader.head().authorizations[0].view(), "Basic x");
    EXPECT_EQ(reader.head().fields.size(), 1U);
    EXPECT_EQ(std::string(place, bytes.size()).find("Basic"), std::string::npos) << "it is still in memory";
}

} // namespace
} // namespace cmpihost::http
