// Where a listener listens, and how it ends.
#include "tests/host/http/http_test.h"

namespace cmpihost::http {
namespace {

using Listeners = ListenerTest;

TEST_F(Listeners, TellWhereTheyListen) {
    options.endpoints = {{"127.0.0.1", 0, false}, {"::1", 0, true}};
    start();
    const auto urls = listener->urls();
    ASSERT_FALSE(urls.empty());
    EXPECT_EQ(urls[0], "http://127.0.0.1:" + std::to_string(port) + "/cimom");
    if (urls.size() > 1) { // a machine without IPv6 is fine
        EXPECT_TRUE(urls[1].starts_with("http://[::1]:")) << urls[1];
    }
}

TEST_F(Listeners, AddressThatIsNotThere) {
    options.endpoints = {{"192.0.2.1", 0, true}, {"127.0.0.1", 0, false}};
    start();
    EXPECT_EQ(listener->urls().size(), 1U);
    ListenerOptions others = options;
    others.endpoints[0].optional = false;
    try {
        const Listener other(context, backend, *log, others);
        ADD_FAILURE();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "192.0.2.1:0: cannot be listened on: Cannot assign requested address");
    }
}

TEST_F(Listeners, AddressThatIsTaken) {
    start();
    ListenerOptions same = options;
    same.endpoints[0].port = port;
    same.endpoints[0].optional = true;
    try {
        const Listener other(context, backend, *log, same);
        ADD_FAILURE();
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(error.what(),
                  "127.0.0.1:" + std::to_string(port) + ": cannot be listened on: Address already in use");
    }
}

TEST_F(Listeners, RunningRequestsEndWhenTheyStop) {
    backend.hold = true;
    start();
    RawClient busy(port);
    busy.send(post());
    wait_for_questions(1);
    RawClient idle(port);
    RawClient half(port);
    half.send("POST /ci");
    std::promise<void> stopped;
    on_loop([&] { listener->stop([&] { stopped.set_value(); }); });
    EXPECT_TRUE(idle.is_closed());
    EXPECT_TRUE(half.is_closed());
    auto future = stopped.get_future();
    EXPECT_EQ(future.wait_for(milliseconds{50}), std::future_status::timeout);
    release();
    const RawReply reply = busy.read_reply();
    EXPECT_EQ(reply.status(), 200U);
    EXPECT_EQ(reply.header("Connection"), "close");
    EXPECT_TRUE(busy.sees_end());
    busy.end_sending();
    EXPECT_EQ(future.wait_for(milliseconds{most_patience_ms}), std::future_status::ready);
}

TEST_F(Listeners, TakeNoMoreConnectionsWhenTheyStop) {
    start();
    std::promise<void> stopped;
    on_loop([&] { listener->stop([&] { stopped.set_value(); }); });
    stopped.get_future().wait();
    const int client = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address), -1);
    ::close(client);
}

TEST_F(Listeners, RequestsThatTakeTooLongAreCutOffWhenTheyStop) {
    options.limits.drain = milliseconds{100};
    backend.hold = true;
    start();
    RawClient busy(port);
    busy.send(post());
    wait_for_questions(1);
    std::promise<void> stopped;
    on_loop([&] { listener->stop([&] { stopped.set_value(); }); });
    stopped.get_future().wait();
    EXPECT_TRUE(busy.is_closed());
    release(); // the answer comes to nobody
}

TEST_F(Listeners, GoWithRequestsUnderWay) {
    backend.hold = true;
    start();
    RawClient busy(port);
    busy.send(post());
    wait_for_questions(1);
    on_loop([this] { listener.reset(); });
    EXPECT_TRUE(busy.is_closed());
    release();
}

} // namespace
} // namespace cmpihost::http
