// The frames between the front process and the worker, and the records in them.
#include "host/worker/frames.h"
#include "host/worker/records.h"

#include <gtest/gtest.h>

namespace cmpihost::worker {
namespace {

/// A header and a payload, as they come over the socket.
std::string raw_frame(std::uint32_t length, std::uint32_t request, int kind, std::string_view payload = {}) {
    std::string bytes;
    for (const std::uint32_t number : {length, request})
        for (const int shift : {24, 16, 8, 0})
            bytes += static_cast<char>(number >> shift & 0xff);
    bytes += static_cast<char>(kind);
    return bytes.append(payload);
}

struct ReadFrame {
    FrameKind kind;
    bool more;
    std::uint32_t request;
    std::string payload;

    bool operator==(const ReadFrame&) const = default;
};

/// Reads bytes that come in pieces of this size.
std::vector<ReadFrame> read_frames(Sender sender, std::string_view bytes, std::size_t piece = 100'000) {
    FrameReader reader(sender);
    std::vector<ReadFrame> frames;
    while (!bytes.empty()) {
        const std::span<char> room = reader.room();
        const std::size_t count = bytes.copy(room.data(), std::min(piece, room.size()));
        bytes.remove_prefix(count);
        reader.filled(count);
        while (const auto frame = reader.next())
            frames.push_back({frame->kind, frame->more, frame->request, std::string(frame->payload)});
    }
    return frames;
}

std::string why_broken(Sender sender, const std::string& bytes) {
    try {
        read_frames(sender, bytes);
    } catch (const BrokenFrame& broken) {
        return broken.what();
    }
    return "not broken";
}

TEST(Frames, AreAHeaderInBigEndianAndAPayload) {
    EXPECT_EQ(frames_of(FrameKind::question, 0x01020304, "abc"), raw_frame(3, 0x01020304, 1, "abc"));
    EXPECT_EQ(frames_of(FrameKind::ready, 0, ""), raw_frame(0, 0, 6));
}

TEST(Frames, LongRecordGoesOnInTheNextFrame) {
    const std::string record = std::string(max_payload, 'a') + std::string(max_payload, 'b') + "c";
    const std::string bytes = frames_of(FrameKind::subject, 9, record);
    const std::vector<ReadFrame> expected{{FrameKind::subject, true, 9, std::string(max_payload, 'a')},
                                          {FrameKind::subject, true, 9, std::string(max_payload, 'b')},
                                          {FrameKind::subject, false, 9, "c"}};
    EXPECT_EQ(read_frames(Sender::worker, bytes), expected);
}

TEST(Frames, RecordOfAWholeFrameDoesNotGoOn) {
    const auto frames = read_frames(Sender::front, frames_of(FrameKind::question, 1, std::string(max_payload, 'a')));
    ASSERT_EQ(frames.size(), 1u);
    EXPECT_FALSE(frames[0].more);
}

TEST(Frames, PartsOfABodyDoNotGoOn) {
    const auto frames = read_frames(Sender::worker, frames_of(FrameKind::part, 1, std::string(max_payload + 1, 'a')));
    ASSERT_EQ(frames.size(), 2u);
    EXPECT_FALSE(frames[0].more);
}

TEST(Frames, AreTheSameInWhateverPiecesTheyCome) {
    std::string bytes = frames_of(FrameKind::ready, 0, "") + frames_of(FrameKind::subject, 5, "about");
    bytes += frames_of(FrameKind::part, 5, std::string(150'000, 'p')) + frames_of(FrameKind::discard, 5, "");
    bytes += frames_of(FrameKind::outcome, 5, "");
    const auto whole = read_frames(Sender::worker, bytes);
    ASSERT_EQ(whole.size(), 7u);
    for (const std::size_t piece : {1U, 7U, 9U, 65'545U})
        EXPECT_EQ(read_frames(Sender::worker, bytes, piece), whole) << piece;
}

TEST(Frames, CutOffFrameIsNoFrame) {
    const std::string bytes = frames_of(FrameKind::part, 5, "abc");
    EXPECT_TRUE(read_frames(Sender::worker, bytes.substr(0, bytes.size() - 1)).empty());
}

TEST(Frames, LengthIsCheckedBeforeThePayloadComes) {
    EXPECT_EQ(why_broken(Sender::worker, raw_frame(65'537, 1, 3)), "a frame of 65537 bytes");
    EXPECT_EQ(why_broken(Sender::worker, raw_frame(0xffffffff, 1, 3)), "a frame of 4294967295 bytes");
    EXPECT_EQ(why_broken(Sender::worker, raw_frame(65'536, 1, 3)), "not broken");
}

TEST(Frames, UnknownKindIsRefused) {
    for (const int kind : {0, 7, 127})
        EXPECT_EQ(why_broken(Sender::worker, raw_frame(0, 1, kind)), "a frame of kind " + std::to_string(kind));
}

TEST(Frames, EachSideSendsItsOwnKinds) {
    for (int kind = 1; kind <= 6; ++kind) {
        const std::string bytes = raw_frame(0, kind == 6 ? 0 : 1, kind);
        EXPECT_EQ(why_broken(Sender::front, bytes) == "not broken", kind == 1) << kind;
        EXPECT_EQ(why_broken(Sender::worker, bytes) == "not broken", kind != 1) << kind;
    }
}

TEST(Frames, OnlyReadyIsOfNoRequest) {
    EXPECT_EQ(why_broken(Sender::worker, raw_frame(0, 1, 6)), "a frame of request 1");
    EXPECT_EQ(why_broken(Sender::worker, raw_frame(0, 0, 5)), "a frame of request 0");
}

TEST(Frames, OnlyRecordsGoOn) {
    EXPECT_EQ(why_broken(Sender::worker, raw_frame(1, 1, 0x83, "p")), "a frame that cannot go on");
    EXPECT_EQ(why_broken(Sender::worker, raw_frame(1, 1, 0x85, "o")), "not broken");
}

TEST(Frames, DiscardAndReadyHaveNoPayload) {
    EXPECT_EQ(why_broken(Sender::worker, raw_frame(1, 1, 4, "x")), "a frame with a payload that it cannot have");
    EXPECT_EQ(why_broken(Sender::worker, raw_frame(1, 0, 6, "x")), "a frame with a payload that it cannot have");
}

TEST(Frames, RecordGrowsToALimit) {
    std::string record(max_record - 1, 'r');
    EXPECT_TRUE(add_to_record(record, {FrameKind::question, false, 1, "1"}));
    EXPECT_THROW(add_to_record(record, {FrameKind::question, false, 1, "2"}), BrokenFrame);
}

server::Outcome some_outcome() {
    return {400, "header-mismatch", 5, 0x0102030405060708, {"one", "", "three"}};
}

TEST(Records, QuestionComesAsItWasSent) {
    const server::Question sent{"GetInstance", "root/cimv2", "host:5988", std::string("<?xml\0>", 7)};
    const server::Question got = decode_question(encode(sent));
    EXPECT_EQ(got.cim_method, sent.cim_method);
    EXPECT_EQ(got.cim_object, sent.cim_object);
    EXPECT_EQ(got.host, sent.host);
    EXPECT_EQ(got.body, sent.body);
}

TEST(Records, SubjectComesAsItWasSent) {
    server::Subject sent{{"42", "1.4", "getinstance", "root/cimv2", std::nullopt}, "C"};
    const server::Subject got = decode_subject(encode(sent));
    EXPECT_EQ(got.envelope.message_id, "42");
    EXPECT_EQ(got.envelope.protocol_version, "1.4");
    EXPECT_EQ(got.envelope.operation, "getinstance");
    EXPECT_EQ(got.envelope.name_space, "root/cimv2");
    EXPECT_FALSE(got.envelope.target.has_value());
    EXPECT_EQ(got.class_name, "C");
}

TEST(Records, SubjectOfAMethodStaysOne) {
    server::Subject sent{{"42", "1.4", "Reset", "root/cimv2", cimxml::Target{cimxml::ClassName{"some class"}}}, "C"};
    const auto target = decode_subject(encode(sent)).envelope.target;
    ASSERT_TRUE(target.has_value());
    EXPECT_EQ(std::get<cimxml::ClassName>(*target).name, "C");
}

TEST(Records, PageRequestComesAsItWasSent) {
    server::Question sent{"", "", "host", "",
                          server::PageRequest{"/x?y", std::chrono::milliseconds(2500), {1, 2, 3, 4, 5}}};
    const std::string bytes = encode(sent);
    const server::Question got = decode_question(bytes);
    ASSERT_TRUE(got.page.has_value());
    EXPECT_EQ(got.page->target, "/x?y");
    EXPECT_EQ(got.page->time, std::chrono::milliseconds(2500));
    const server::ServerFigures& figures = got.page->figures;
    EXPECT_EQ(figures.since, 1U);
    EXPECT_EQ(figures.requests, 2U);
    EXPECT_EQ(figures.failures, 3U);
    EXPECT_EQ(figures.restarts, 4U);
    EXPECT_EQ(figures.connections, 5U);
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_THROW(decode_question(bytes.substr(0, size)), BrokenFrame) << size;
    EXPECT_FALSE(decode_question(encode(server::Question{})).page.has_value());
}

TEST(Records, TypeOfContentIsAHeadersText) {
    EXPECT_EQ(decode_outcome(encode(server::Outcome{.content_type = "text/html"})).content_type, "text/html");
    EXPECT_THROW(decode_outcome(encode(server::Outcome{.content_type = "a\r\nb"})), BrokenFrame);
}

TEST(Records, OutcomeComesAsItWasSent) {
    const server::Outcome got = decode_outcome(encode(some_outcome()));
    EXPECT_EQ(got.http_status, 400u);
    EXPECT_EQ(got.cim_error, "header-mismatch");
    EXPECT_EQ(got.cim_status, 5u);
    EXPECT_EQ(got.objects, 0x0102030405060708u);
    EXPECT_EQ(got.notes, (std::vector<std::string>{"one", "", "three"}));
}

TEST(Records, CutAnywhereAreRefused) {
    const std::string outcome = encode(some_outcome());
    for (std::size_t size = 0; size < outcome.size(); ++size)
        EXPECT_THROW(decode_outcome(outcome.substr(0, size)), BrokenFrame) << size;
    const std::string subject = encode(server::Subject{{"42", "1.4", "a", "b", std::nullopt}, "C"});
    for (std::size_t size = 0; size < subject.size(); ++size)
        EXPECT_THROW(decode_subject(subject.substr(0, size)), BrokenFrame) << size;
}

TEST(Records, MoreThanTheFieldsIsRefused) {
    EXPECT_THROW(decode_outcome(encode(some_outcome()) + "x"), BrokenFrame);
    EXPECT_THROW(decode_subject(encode(server::Subject{}) + "x"), BrokenFrame);
    EXPECT_THROW(decode_question(encode(server::Question{}) + "x"), BrokenFrame);
}

TEST(Records, OutcomeThatHttpCannotTellIsRefused) {
    for (const unsigned status : {0U, 199U, 600U})
        EXPECT_THROW(decode_outcome(encode(server::Outcome{.http_status = status})), BrokenFrame) << status;
    for (const char* text : {"a\r\nSet-Cookie: b", "\x7f", "\xc3\xa9"})
        EXPECT_THROW(decode_outcome(encode(server::Outcome{.cim_error = text})), BrokenFrame) << text;
    EXPECT_EQ(decode_outcome(encode(server::Outcome{.http_status = 599, .cim_error = " ~"})).cim_error, " ~");
}

TEST(Records, NotesBeyondAMebibyteAreCounted) {
    const server::Outcome sent{.notes = std::vector<std::string>(12, std::string(100'000, 'n'))};
    const auto notes = decode_outcome(encode(sent)).notes;
    ASSERT_EQ(notes.size(), 11u);
    EXPECT_EQ(notes[9], sent.notes[9]);
    EXPECT_EQ(notes[10], "notes left out: 2");
}

TEST(Records, OutcomeOfTooManyBytesIsRefused) {
    EXPECT_THROW(decode_outcome(encode(server::Outcome{.cim_error = std::string(3 << 20, 'e')})), BrokenFrame);
}

} // namespace
} // namespace cmpihost::worker
