// How many clients there may be, and who gives way.
#include "host/http/places.h"
#include "tests/host/http/http_test.h"

#include <sys/resource.h>

namespace cmpihost::http {
namespace {

class Crowds : public ListenerTest {
  protected:
    Crowds() { options.limits.count_loopback = true; }

    /// A client whose request waits for the backend.
    std::unique_ptr<RawClient> busy_client() {
        auto client = std::make_unique<RawClient>(port);
        client->send(post());
        wait_for_questions(++busy_);
        return client;
    }

    std::size_t busy_ = 0;
};

TEST_F(Crowds, IdleConnectionMakesRoom) {
    options.limits.connections = 2;
    start();
    RawClient first(port);
    first.send(post());
    first.read_reply();
    RawClient second(port);
    second.send(post());
    second.read_reply();
    RawClient third(port);
    third.send(post());
    EXPECT_EQ(third.read_reply().status(), 200U);
    EXPECT_TRUE(first.is_closed()) << "the one that was idle for the longest time";
    second.send(post());
    EXPECT_EQ(second.read_reply().status(), 200U);
}

TEST_F(Crowds, WithoutIdleOnesTheNextWaits) {
    options.limits.connections = 2;
    backend.hold = true;
    start();
    const auto first = busy_client();
    const auto second = busy_client();
    RawClient third(port);
    third.send(post());
    EXPECT_TRUE(third.hears_nothing(100));
    backend.hold = false;
    release();
    EXPECT_EQ(first->read_reply().status(), 200U);
    EXPECT_EQ(second->read_reply().status(), 200U);
    EXPECT_EQ(third.read_reply().status(), 200U);
}

TEST_F(Crowds, OneAddressGetsItsShareOnly) {
    options.limits.connections_per_address = 2;
    backend.hold = true;
    start();
    const auto first = busy_client();
    const auto second = busy_client();
    RawClient third(port);
    EXPECT_TRUE(third.is_closed());
    release();
    EXPECT_EQ(first->read_reply().status(), 200U);
}

TEST_F(Crowds, IdleOneOfTheAddressMakesRoom) {
    options.limits.connections_per_address = 1;
    start();
    RawClient first(port);
    first.send(post());
    first.read_reply();
    EXPECT_EQ(ask(post()).status(), 200U);
    EXPECT_TRUE(first.is_closed());
}

TEST_F(Crowds, ClientsOnThisMachineAreNotCountedByAddress) {
    options.limits.count_loopback = false;
    options.limits.connections_per_address = 1;
    backend.hold = true;
    start();
    const auto first = busy_client();
    const auto second = busy_client();
    release();
    EXPECT_EQ(first->read_reply().status(), 200U);
    EXPECT_EQ(second->read_reply().status(), 200U);
}

TEST_F(Crowds, PlacesOfThoseThatWentAreFree) {
    options.limits.connections = 3;
    options.limits.connections_per_address = 3;
    start();
    for (int i = 0; i < 50; ++i)
        ASSERT_EQ(ask(post()).status(), 200U) << i;
}

TEST_F(Crowds, AcceptingGoesOnAfterItFailed) {
    options.limits.accept_pause = milliseconds{20};
    start();
    RawClient waiting(port); // with a descriptor of this process, before there are none
    waiting.send(post());
    EXPECT_EQ(waiting.read_reply().status(), 200U);
    RawClient second(port);
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &usual), 0);
    const int next = dup(0);
    ::close(next);
    const rlimit none{static_cast<rlim_t>(next), usual.rlim_max};
    const int client = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    ASSERT_EQ(connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    std::this_thread::sleep_for(milliseconds{100});
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &usual), 0);
    EXPECT_EQ(ask(post()).status(), 200U);
    ::close(client);
}

TEST_F(Crowds, ManyAtOnce) {
    options.limits.count_loopback = false;
    start();
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 200; ++i)
        clients.push_back(std::make_unique<RawClient>(port));
    for (const auto& client : clients)
        client->send(post());
    for (const auto& client : clients)
        EXPECT_EQ(client->read_reply().status(), 200U);
}

} // namespace
} // namespace cmpihost::http
