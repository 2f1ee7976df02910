// Clients that are slow, silent or never read.
#include "tests/host/http/http_test.h"

namespace cmpihost::http {
namespace {

/// Deadlines are short, so that tests may wait for them.
class Deadlines : public ListenerTest {
  protected:
    Deadlines() {
        options.limits.header = milliseconds{150};
        options.limits.body = milliseconds{150};
        options.limits.body_most = milliseconds{400};
        options.limits.idle = milliseconds{150};
        options.limits.sending = milliseconds{150};
        options.limits.linger_silent = milliseconds{100};
        options.limits.linger = milliseconds{300};
    }

    /// Sends a byte every 20 ms until the server answers or closes.
    static void dribble(RawClient& client, const std::string& bytes) {
        for (std::size_t i = 0; i < bytes.size() && client.hears_nothing(20); ++i)
            client.send(bytes.substr(i, 1));
    }
};

TEST_F(Deadlines, SilentClientIsClosed) {
    start();
    RawClient client(port);
    EXPECT_TRUE(client.sees_end());
}

TEST_F(Deadlines, HeaderByteByByteIsNotWaitedFor) {
    start();
    RawClient client(port);
    dribble(client, post());
    EXPECT_EQ(client.read_reply().status(), 408U);
    EXPECT_TRUE(client.is_closed());
    EXPECT_TRUE(backend.questions().empty());
}

TEST_F(Deadlines, HeaderAfterHeaderIsNotWaitedFor) {
    start();
    RawClient client(port);
    client.send("POST /cimom HTTP/1.1\r\n");
    for (int i = 0; i < 500 && client.hears_nothing(20); ++i)
        client.send("X-" + std::to_string(i) + ": x\r\n");
    EXPECT_EQ(client.read_reply().status(), 408U);
}

TEST_F(Deadlines, BodyByteByByteIsNotWaitedFor) {
    options.limits.body_rate = 1'000'000;
    start();
    RawClient client(port);
    const std::string request = post(std::string(1000, 'x'));
    client.send(request.substr(0, request.size() - 1000));
    dribble(client, request.substr(request.size() - 1000));
    EXPECT_EQ(client.read_reply().status(), 408U);
    EXPECT_TRUE(backend.questions().empty());
}

TEST_F(Deadlines, BodyThatComesFastEnoughIsWaitedFor) {
    options.limits.body = milliseconds{500};
    options.limits.body_rate = 100; // 20 bytes earn 200 ms
    options.limits.body_most = seconds{10};
    start();
    RawClient client(port);
    const std::string request = post(std::string(400, 'x'));
    client.send(request.substr(0, request.size() - 400));
    for (int i = 0; i < 20; ++i) {
        std::this_thread::sleep_for(milliseconds{40}); // 800 ms in all, more than a body is given to begin with
        client.send(std::string(20, 'x'));
    }
    EXPECT_EQ(client.read_reply().status(), 200U);
}

TEST_F(Deadlines, NoBodyIsWaitedForLongerThanTheMost) {
    options.limits.body_rate = 1; // each byte earns a second
    start();
    RawClient client(port);
    const std::string request = post(std::string(1000, 'x'));
    client.send(request.substr(0, request.size() - 1000));
    dribble(client, request.substr(request.size() - 1000));
    EXPECT_EQ(client.read_reply().status(), 408U);
}

TEST_F(Deadlines, IdleConnectionIsClosed) {
    start();
    RawClient client(port);
    client.send(post());
    EXPECT_EQ(client.read_reply().status(), 200U);
    EXPECT_TRUE(client.sees_end());
}

TEST_F(Deadlines, ProviderMayTakeLongerThanClients) {
    backend.hold = true;
    start();
    RawClient client(port);
    client.send(post());
    wait_for_questions(1);
    std::this_thread::sleep_for(milliseconds{500}); // longer than any deadline
    release();
    EXPECT_EQ(client.read_reply().status(), 200U);
}

TEST_F(Deadlines, WhoNeverReadsIsClosed) {
    backend.reply.body = std::vector<std::string>(400, std::string(65'536, 'x'));
    backend.reply.hold = std::make_shared<int>(0);
    start();
    RawClient client(port, 4096);
    client.send(post());
    wait_for_questions(1);
    for (int i = 0; i < 500 && backend.reply.hold.use_count() > 1; ++i)
        std::this_thread::sleep_for(milliseconds{10});
    EXPECT_EQ(backend.reply.hold.use_count(), 1) << "the reply is still held for the client";
    EXPECT_EQ(ask(post()).status(), 200U);
}

TEST_F(Deadlines, WhoReadsSlowlyGetsAll) {
    options.limits.sending = seconds{1};
    const std::size_t size = std::size_t{6'000'000};
    backend.reply.body = {std::string(size, 'x')};
    start();
    RawClient client(port, 65'536);
    client.send(post());
    std::size_t received = 0;
    char buffer[100'000];
    while (received < size) { // with pauses shorter than the deadline, longer in all
        std::this_thread::sleep_for(milliseconds{20});
        const ssize_t count = recv(client.socket(), buffer, sizeof buffer, 0);
        ASSERT_GT(count, 0);
        received += static_cast<std::size_t>(count);
    }
}

TEST_F(Deadlines, LingeringEndsWhenTheClientIsSilent) {
    options.limits.linger = seconds{60};
    start();
    RawClient client(port);
    client.send("hello\r\n");
    EXPECT_EQ(client.read_reply().status(), 400U);
    EXPECT_TRUE(client.sees_end());
    on_loop([] {});
    std::this_thread::sleep_for(milliseconds{300});
    client.send("x");
    std::this_thread::sleep_for(milliseconds{50});
    EXPECT_FALSE(client.send("x")) << "the server is still there";
}

TEST_F(Deadlines, LingeringEndsThoughTheClientGoesOnSending) {
    start();
    RawClient client(port);
    client.send("hello\r\n");
    EXPECT_EQ(client.read_reply().status(), 400U);
    int sent = 0;
    while (sent < 500 && client.send("x")) {
        std::this_thread::sleep_for(milliseconds{20});
        ++sent;
    }
    EXPECT_LT(sent, 500);
}

} // namespace
} // namespace cmpihost::http
