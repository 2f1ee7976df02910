// Requests and replies on connections that go on.
#include "tests/host/http/http_test.h"

namespace cmpihost::http {
namespace {

using Exchanges = ListenerTest;

TEST_F(Exchanges, BackendGetsWhatHttpBrought) {
    start();
    ask(post("<the body/>"));
    ASSERT_EQ(backend.questions().size(), 1U);
    const server::Question question = backend.questions()[0];
    EXPECT_EQ(question.cim_method, "EnumerateInstanceNames");
    EXPECT_EQ(question.cim_object, "root%2Fcimv2");
    EXPECT_EQ(question.host, "here:5988");
    EXPECT_EQ(question.body, "<the body/>");
}

TEST_F(Exchanges, WhoNamesNoHostIsAnsweredWithTheAddress) {
    start();
    ask("POST /cimom HTTP/1.0\r\n" + cim_headers + "Content-Length: 6\r\n\r\n<CIM/>");
    ASSERT_EQ(backend.questions().size(), 1U);
    EXPECT_EQ(backend.questions()[0].host, "127.0.0.1:" + std::to_string(port));
}

TEST_F(Exchanges, ReplyHasItsHeaders) {
    start();
    const RawReply reply = ask(post());
    EXPECT_TRUE(reply.head.starts_with("HTTP/1.1 200 OK\r\n"));
    EXPECT_EQ(reply.header("Content-Type"), "application/xml; charset=\"utf-8\"");
    EXPECT_EQ(reply.header("Content-Length"), "9");
    EXPECT_EQ(reply.header("CIMOperation"), "MethodResponse");
    EXPECT_EQ(reply.header("Connection"), "(none)");
    EXPECT_EQ(reply.header("Transfer-Encoding"), "(none)");
    EXPECT_TRUE(reply.header("Date").ends_with(" GMT")) << reply.head;
    EXPECT_EQ(reply.header("WBEMServerResponseTime").find_first_not_of("0123456789"), std::string::npos);
}

TEST_F(Exchanges, ResponseTimeIsTheBackendsInMicroseconds) {
    backend.hold = true;
    start();
    RawClient client(port);
    client.send(post());
    wait_for_questions(1);
    std::this_thread::sleep_for(milliseconds{50});
    release();
    EXPECT_GE(std::stoul(client.read_reply().header("WBEMServerResponseTime")), 50'000U);
}

TEST_F(Exchanges, BlocksMakeOneBody) {
    backend.reply.body.clear();
    std::string whole;
    for (int i = 0; i < 100; ++i) {
        backend.reply.body.emplace_back(i % 10 == 3 ? 0 : 50'000, static_cast<char>('a' + i % 26));
        whole += backend.reply.body.back();
    }
    start();
    RawClient client(port);
    for (int round = 0; round < 2; ++round) {
        client.send(post());
        const RawReply reply = client.read_reply();
        EXPECT_EQ(reply.header("Content-Length"), std::to_string(whole.size()));
        EXPECT_TRUE(reply.body == whole) << round;
    }
}

TEST_F(Exchanges, EmptyBody) {
    backend.reply.body.clear();
    start();
    const RawReply reply = ask(post());
    EXPECT_EQ(reply.status(), 200U);
    EXPECT_EQ(reply.header("Content-Length"), "0");
}

TEST_F(Exchanges, ConnectionIsKept) {
    start();
    RawClient client(port);
    for (int i = 0; i < 3; ++i) {
        client.send(post("<" + std::to_string(i) + "/>"));
        EXPECT_EQ(client.read_reply().body, "<answer/>");
    }
    ASSERT_EQ(backend.questions().size(), 3U);
    EXPECT_EQ(backend.questions()[2].body, "<2/>");
}

TEST_F(Exchanges, RequestsSentAtOnceAreAnsweredInOrder) {
    start();
    RawClient client(port);
    client.send(post("<1/>") + post("<2/>") + "GET /x HTTP/1.1\r\nHost: h\r\n\r\n" + post("<3/>"));
    EXPECT_EQ(client.read_reply().status(), 200U);
    EXPECT_EQ(client.read_reply().status(), 200U);
    EXPECT_EQ(client.read_reply().status(), 404U);
    EXPECT_EQ(client.read_reply().status(), 200U);
    ASSERT_EQ(backend.questions().size(), 3U);
    EXPECT_EQ(backend.questions()[1].body, "<2/>");
    EXPECT_EQ(backend.questions()[2].body, "<3/>");
}

TEST_F(Exchanges, RequestMayComeByteByByte) {
    start();
    RawClient client(port);
    const std::string chunked = "POST /cimom HTTP/1.1\r\nHost: h\r\n" + cim_headers +
                                "Transfer-Encoding: chunked\r\n\r\n3\r\n<CI\r\n3;x=y\r\nM/>\r\n0\r\nTrailer: x\r\n\r\n";
    for (const std::string& request : {post(), chunked}) {
        for (const char c : request)
            client.send({&c, 1});
        EXPECT_EQ(client.read_reply().status(), 200U);
    }
    ASSERT_EQ(backend.questions().size(), 2U);
    EXPECT_EQ(backend.questions()[1].body, "<CIM/>");
}

struct KeepRow {
    const char* what;
    const char* version;
    const char* connection;
    const char* told;
    bool kept;
};

TEST_F(Exchanges, WhoKeepsTheConnection) {
    const std::vector<KeepRow> rows{
        {"1.1", "HTTP/1.1", "", "(none)", true},
        {"1.1 with close", "HTTP/1.1", "Connection: close\r\n", "close", false},
        {"1.0", "HTTP/1.0", "", "close", false},
        {"1.0 with keep-alive", "HTTP/1.0", "Connection: Keep-Alive\r\n", "keep-alive", true},
    };
    start();
    for (const KeepRow& row : rows) {
        SCOPED_TRACE(row.what);
        RawClient client(port);
        const std::string request = "POST /cimom " + std::string(row.version) + "\r\nHost: h\r\n" + row.connection +
                                    cim_headers + "Content-Length: 6\r\n\r\n<CIM/>";
        client.send(request);
        EXPECT_EQ(client.read_reply().header("Connection"), row.told);
        if (row.kept) {
            client.send(request);
            EXPECT_EQ(client.read_reply().status(), 200U);
        } else {
            EXPECT_TRUE(client.sees_end());
        }
    }
}

TEST_F(Exchanges, ErrorAfterTheWholeRequestKeepsTheConnection) {
    backend.reply.outcome.http_status = 400;
    backend.reply.outcome.cim_error = "request-not-valid";
    start();
    RawClient client(port);
    for (int i = 0; i < 2; ++i) {
        client.send(post());
        EXPECT_EQ(client.read_reply().header("CIMError"), "request-not-valid");
    }
}

TEST_F(Exchanges, ErrorBeforeTheBodyClosesTheConnection) {
    start();
    RawClient client(port);
    std::string request = post();
    client.send(request.replace(request.find("MethodCall"), 10, "Foo"));
    EXPECT_EQ(client.read_reply().header("Connection"), "close");
    EXPECT_TRUE(client.sees_end());
}

TEST_F(Exchanges, ExpectContinueIsServed) {
    start();
    RawClient client(port);
    const std::string request = post("<CIM/>", "Expect: 100-continue\r\n");
    client.send(request.substr(0, request.size() - 6));
    EXPECT_EQ(client.read_reply().head, "HTTP/1.1 100 Continue\r\n\r\n");
    client.send("<CIM/>");
    EXPECT_EQ(client.read_reply().status(), 200U);
}

TEST_F(Exchanges, WhoExpectsAndIsRefusedGetsTheErrorAtOnce) {
    start();
    std::string request = post("<CIM/>", "Expect: 100-continue\r\n");
    request.replace(request.find("/cimom"), 6, "/other").resize(request.size() - 6);
    EXPECT_EQ(ask(request).status(), 404U);
}

TEST_F(Exchanges, HalfClosedClientGetsItsAnswer) {
    backend.hold = true;
    start();
    RawClient client(port);
    client.send(post());
    client.end_sending();
    wait_for_questions(1);
    release();
    EXPECT_EQ(client.read_reply().status(), 200U);
    EXPECT_TRUE(client.sees_end());
}

TEST_F(Exchanges, HalfARequestIsToldSo) {
    start();
    for (const std::string& half : {std::string("POST /cimom HT"), post().substr(0, post().size() - 3)}) {
        RawClient client(port);
        client.send(half);
        client.end_sending();
        EXPECT_EQ(client.read_reply().status(), 400U);
        EXPECT_TRUE(client.sees_end());
    }
    EXPECT_TRUE(backend.questions().empty());
}

TEST_F(Exchanges, ClientThatIsGoneHarmsNobody) {
    backend.hold = true;
    backend.reply.body = std::vector<std::string>(100, std::string(50'000, 'x'));
    start();
    {
        RawClient client(port);
        client.send(post());
        wait_for_questions(1);
    }
    release();
    backend.hold = false;
    EXPECT_EQ(ask(post()).status(), 200U);
}

TEST_F(Exchanges, ReplyMemoryIsGivenBackWhenItIsSent) {
    const auto memory = std::make_shared<int>(0);
    backend.reply.hold = memory;
    start();
    RawClient client(port);
    client.send(post());
    client.read_reply();
    EXPECT_TRUE(comes_true([&memory] { return memory.use_count() == 2; })) << "the test's and the backend's own";
}

} // namespace
} // namespace cmpihost::http
