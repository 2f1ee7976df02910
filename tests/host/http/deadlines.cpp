// Clients that are slow, silent or never read. Each test shortens the limit that it is about, and no other.
#include "tests/host/http/http_test.h"

namespace cmpihost::http {
namespace {

class Deadlines : public ListenerTest {
  protected:
    /// Sends a text again and again, every 20 ms, until the server answers or closes.
    static void dribble(RawClient& client, const std::string& text) {
        const auto end = std::chrono::steady_clock::now() + milliseconds{most_patience_ms};
        while (client.hears_nothing(20) && std::chrono::steady_clock::now() < end)
            client.send(text);
    }
};

TEST_F(Deadlines, SilentClientIsClosed) {
    options.limits.header = milliseconds{150};
    start();
    RawClient client(port);
    EXPECT_TRUE(client.sees_end());
}

TEST_F(Deadlines, HeaderByteByByteIsNotWaitedFor) {
    options.limits.header = milliseconds{150};
    start();
    std::unique_ptr<RawClient> client;
    at_once([&] {
        client = std::make_unique<RawClient>(port);
        client->send("POST /cimom HTTP/1.1\r\nX: ");
    });
    dribble(*client, "x");
    EXPECT_EQ(client->read_reply().status(), 408U);
    EXPECT_TRUE(backend.questions().empty());
}

TEST_F(Deadlines, HeaderAfterHeaderIsNotWaitedFor) {
    options.limits.header = milliseconds{150};
    start();
    std::unique_ptr<RawClient> client;
    at_once([&] {
        client = std::make_unique<RawClient>(port);
        client->send("POST /cimom HTTP/1.1\r\n");
    });
    dribble(*client, "X: x\r\n");
    EXPECT_EQ(client->read_reply().status(), 408U);
}

TEST_F(Deadlines, BodyByteByByteIsNotWaitedFor) {
    options.limits.body = milliseconds{150};
    options.limits.body_rate = 1'000'000;
    start();
    RawClient client(port);
    const std::string request = post(std::string(100'000, 'x'));
    client.send(request.substr(0, request.size() - 100'000));
    dribble(client, "x");
    EXPECT_EQ(client.read_reply().status(), 408U);
    EXPECT_TRUE(backend.questions().empty());
}

TEST_F(Deadlines, BodyThatComesFastEnoughIsWaitedFor) {
    options.limits.body = milliseconds{100};
    options.limits.body_rate = 1; // each byte earns a second
    start();
    const std::string request = post(std::string(100'000, 'x'));
    std::unique_ptr<RawClient> client;
    at_once([&] {
        client = std::make_unique<RawClient>(port);
        client->send(request.substr(0, 50'000));
    });
    std::this_thread::sleep_for(milliseconds{300}); // more than a body is given to begin with
    client->send(request.substr(50'000));
    EXPECT_EQ(client->read_reply().status(), 200U);
}

TEST_F(Deadlines, NoBodyIsWaitedForLongerThanTheMost) {
    options.limits.body_rate = 1;
    options.limits.body_most = milliseconds{400};
    start();
    RawClient client(port);
    const std::string request = post(std::string(100'000, 'x'));
    client.send(request.substr(0, request.size() - 100'000));
    dribble(client, "x");
    EXPECT_EQ(client.read_reply().status(), 408U);
}

TEST_F(Deadlines, IdleConnectionIsClosed) {
    options.limits.idle = milliseconds{150};
    start();
    RawClient client(port);
    client.send(post());
    EXPECT_EQ(client.read_reply().status(), 200U);
    EXPECT_TRUE(client.sees_end());
}

TEST_F(Deadlines, EmptyLinesBehindABodyAreNoHeader) {
    options.limits.header = milliseconds{100};
    start();
    std::unique_ptr<RawClient> client;
    at_once([&] {
        client = std::make_unique<RawClient>(port);
        client->send(post() + "\r\n");
    });
    EXPECT_EQ(client->read_reply().status(), 200U);
    client->send("\r\n");
    std::this_thread::sleep_for(milliseconds{300});
    client->send(post());
    EXPECT_EQ(client->read_reply().status(), 200U);
}

TEST_F(Deadlines, EmptyLinesDoNotKeepAConnection) {
    options.limits.header = options.limits.idle = milliseconds{150};
    start();
    std::unique_ptr<RawClient> client;
    at_once([&] {
        client = std::make_unique<RawClient>(port);
        client->send(post());
    });
    EXPECT_EQ(client->read_reply().status(), 200U);
    dribble(*client, "\r\n");
    EXPECT_TRUE(client->is_closed());
}

TEST_F(Deadlines, ProviderMayTakeLongerThanClients) {
    options.limits.header = options.limits.body = options.limits.body_most = milliseconds{100};
    options.limits.sending = options.limits.idle = milliseconds{100};
    backend.hold = true;
    start();
    std::unique_ptr<RawClient> client;
    at_once([&] {
        client = std::make_unique<RawClient>(port);
        client->send(post());
    });
    wait_for_questions(1);
    std::this_thread::sleep_for(milliseconds{500}); // longer than any deadline
    release();
    EXPECT_EQ(client->read_reply().status(), 200U);
}

TEST_F(Deadlines, WhoNeverReadsIsClosed) {
    options.limits.sending = milliseconds{150};
    backend.reply.body = std::vector<std::string>(400, std::string(65'536, 'x'));
    backend.reply.hold = std::make_shared<int>(0);
    start();
    RawClient client(port, 4096);
    client.send(post());
    wait_for_questions(1);
    EXPECT_TRUE(comes_true([this] { return backend.reply.hold.use_count() == 1; }))
        << "the reply is still held for the client";
    EXPECT_EQ(ask(post()).status(), 200U);
}

/// Reads a reply of so many bytes, with pauses that are longer in all than what a client is given to take some of it.
/// @param longest_pause between two reads, as it was
/// @return whether all of it came
bool read_slowly(RawClient& client, std::size_t size, milliseconds& longest_pause) {
    client.send(post());
    char buffer[100'000];
    auto read_at = std::chrono::steady_clock::now();
    for (std::size_t received = 0; received < size;) {
        std::this_thread::sleep_for(milliseconds{20});
        const ssize_t count = recv(client.socket(), buffer, sizeof buffer, 0);
        if (count <= 0)
            return false;
        received += static_cast<std::size_t>(count);
        const auto now = std::chrono::steady_clock::now();
        longest_pause = std::max(longest_pause, std::chrono::ceil<milliseconds>(now - read_at));
        read_at = now;
    }
    return true;
}

TEST_F(Deadlines, WhoReadsSlowlyGetsAll) {
    options.limits.sending = seconds{1};
    const std::size_t size = 6'000'000;
    backend.reply.body = {std::string(size, 'x')};
    start();
    bool came = false;
    for (int tries = 0; tries < 20 && !came; ++tries) { // again where it was the machine that made a long pause
        RawClient client(port, 65'536);
        milliseconds longest_pause{0};
        came = read_slowly(client, size, longest_pause);
        ASSERT_TRUE(came || longest_pause >= options.limits.sending / 2);
    }
    EXPECT_TRUE(came);
}

TEST_F(Deadlines, LingeringEndsWhenTheClientIsSilent) {
    options.limits.linger_silent = milliseconds{100};
    start();
    RawClient client(port);
    client.send("hello\r\n");
    EXPECT_EQ(client.read_reply().status(), 400U);
    EXPECT_TRUE(client.sees_end());
    EXPECT_TRUE(comes_true([&client] { // what comes when it is over is answered by a reset
        std::this_thread::sleep_for(milliseconds{200});
        return !client.send("x");
    }));
}

TEST_F(Deadlines, LingeringEndsThoughTheClientGoesOnSending) {
    options.limits.linger = milliseconds{300};
    start();
    RawClient client(port);
    client.send("hello\r\n");
    EXPECT_EQ(client.read_reply().status(), 400U);
    EXPECT_TRUE(comes_true([&client] { return !client.send("x"); }));
}

} // namespace
} // namespace cmpihost::http
