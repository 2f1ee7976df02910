// Requests for pages and metrics on their way through the listener.
#include "tests/host/http/http_test.h"

namespace cmpihost::http {
namespace {

std::string get(const std::string& target, const std::string& headers = {}, const std::string& method = "GET",
                const std::string& host = "localhost:5988") {
    return method + " " + target + " HTTP/1.1\r\nHost: " + host + "\r\n" + headers + "\r\n";
}

class Pages : public ListenerTest {
  protected:
    Pages() {
        backend.reply.outcome.content_type = "text/html; charset=utf-8";
        backend.reply.body = {"<p>", "page"};
    }

    server::PageRequest asked() {
        const auto questions = backend.questions();
        return questions.empty() || !questions.back().page ? server::PageRequest{"(none)"} : *questions.back().page;
    }
};

TEST_F(Pages, AreAnsweredByTheBackend) {
    start();
    for (const char* target :
         {"/", "/?a=b", "/graph", "/metrics", "/class/X?page=2", "/object/X.Y=%22z%22", "/assets/x.js"}) {
        EXPECT_EQ(ask(get(target)).status(), 200U) << target;
        EXPECT_EQ(asked().target, target);
    }
    for (const char* target : {"/x", "/classes", "/class", "/index.html", "//", "*"})
        EXPECT_EQ(ask(get(target)).status(), 404U) << target;
    EXPECT_EQ(backend.questions().size(), 7U);
}

TEST_F(Pages, HaveTheHeadersThatConfineThem) {
    start();
    const RawReply reply = ask(get("/"));
    EXPECT_EQ(reply.body, "<p>page");
    EXPECT_EQ(reply.header("Content-Type"), "text/html; charset=utf-8");
    EXPECT_EQ(reply.header("Content-Security-Policy"),
              "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src 'self'; "
              "form-action 'self'; base-uri 'none'; frame-ancestors 'none'");
    EXPECT_EQ(reply.header("X-Content-Type-Options"), "nosniff");
    EXPECT_EQ(reply.header("Referrer-Policy"), "no-referrer");
    EXPECT_EQ(reply.header("Access-Control-Allow-Origin"), "(none)");
}

TEST_F(Pages, ConnectionIsKeptAndHeadHasNoBody) {
    start();
    RawClient client(port);
    client.send(get("/", {}, "HEAD") + get("/"));
    const RawReply reply = client.read_reply(); // which takes what follows for the body: the next reply
    EXPECT_EQ(reply.header("Content-Length"), "7");
    EXPECT_EQ(reply.body, "HTTP/1.");
}

TEST_F(Pages, StatusOfAPageIsTheBackends) {
    backend.reply.outcome.http_status = 404;
    start();
    const RawReply reply = ask(get("/class/None"));
    EXPECT_EQ(reply.status(), 404U);
    EXPECT_EQ(reply.body, "<p>page");
}

TEST_F(Pages, WhereTheBackendFailsThereIsNone) {
    backend.reply = {};
    start();
    EXPECT_EQ(ask(get("/")).status(), 500U);
    on_loop([this] { backend.reply.outcome.http_status = 503; });
    const RawReply reply = ask(get("/"));
    EXPECT_EQ(reply.status(), 503U);
    EXPECT_EQ(reply.body, "");
}

struct HostRow {
    const char* host;
    unsigned status;
};

TEST_F(Pages, OnlyOwnNamesAreServed) {
    options.hosts = {"switch.example"};
    start();
    for (const HostRow& row : {HostRow{"localhost", 200},
                               {"LOCALHOST:1", 200},
                               {"127.0.0.1:5988", 200},
                               {"[::1]:5988", 200},
                               {"[::1]", 200},
                               {"10.1.2.3", 200},
                               {"switch.example", 200},
                               {"Switch.Example:80", 200},
                               {"evil.example", 421},
                               {"127.0.0.1.evil.example", 421},
                               {"xlocalhost", 421},
                               {"e v", 400}})
        EXPECT_EQ(ask(get("/", {}, "GET", row.host)).status(), row.status) << row.host;
}

TEST_F(Pages, PostsOfOtherSitesAreRefused) {
    start();
    const auto posted = [this](const std::string& headers) {
        std::string request = post("<CIM/>", headers);
        request.replace(request.find("here:5988"), 9, "localhost");
        return ask(request).status();
    };
    backend.reply.outcome.content_type.clear();
    EXPECT_EQ(posted(""), 200U);
    EXPECT_EQ(posted("Origin: http://localhost\r\n"), 200U);
    EXPECT_EQ(posted("Sec-Fetch-Site: same-origin\r\n"), 200U);
    EXPECT_EQ(posted("Origin: http://evil.example\r\n"), 403U);
    EXPECT_EQ(posted("Origin: http://127.0.0.1\r\n"), 403U) << "another origin, though the same server";
    EXPECT_EQ(posted("Origin: null\r\n"), 403U);
    EXPECT_EQ(posted("Sec-Fetch-Site: cross-site\r\n"), 403U);
    EXPECT_EQ(posted("Sec-Fetch-Site: same-site\r\n"), 403U);
    std::string rebound = post("<CIM/>", "Origin: http://here:5988\r\n");
    EXPECT_EQ(ask(rebound).status(), 403U) << "a name that was made to lead here";
}

TEST_F(Pages, OfOtherSitesMayBeLinkedAndNotFetched) {
    start();
    struct Row {
        const char* site;
        const char* mode;
        unsigned status;
    };
    for (const Row& row : {Row{"none", "navigate", 200},
                           {"same-origin", "cors", 200},
                           {"same-origin", "no-cors", 200},
                           {"cross-site", "navigate", 200},
                           {"cross-site", "Navigate", 200},
                           {"cross-site", "cors", 403},
                           {"cross-site", "no-cors", 403},
                           {"same-site", "no-cors", 403},
                           {"cross-site", "", 403}})
        for (const char* target : {"/", "/metrics", "/object/X.Y=1?format=json"}) {
            const std::string mode = *row.mode == '\0' ? "" : std::string("Sec-Fetch-Mode: ") + row.mode + "\r\n";
            const std::string headers = std::string("Sec-Fetch-Site: ") + row.site + "\r\n" + mode;
            EXPECT_EQ(ask(get(target, headers)).status(), row.status) << target << " " << headers;
        }
}

TEST_F(Pages, ScrapersTimeIsHandedOn) {
    start();
    const std::vector<std::pair<const char*, int>> rows{{"10", 10'000}, {"0.5", 500}, {"", 0},   {"x", 0},
                                                        {"-1", 0},      {"1e9", 0},   {"5s", 0}, {"nan", 0}};
    for (const auto& [text, expected] : rows) {
        ask(get("/metrics", std::string("X-Prometheus-Scrape-Timeout-Seconds: ") + text + "\r\n"));
        EXPECT_EQ(asked().time.count(), expected) << text;
    }
}

TEST_F(Pages, MetricsEndWithTheListenersOwn) {
    backend.reply.body = {"provider_metric 1\n"};
    backend.reply.outcome.content_type = "text/plain";
    start();
    ask(get("/x"));
    const RawReply reply = ask(get("/metrics"));
    EXPECT_EQ(reply.header("Content-Type"), "text/plain; version=0.0.4; charset=utf-8");
    EXPECT_TRUE(reply.body.starts_with("provider_metric 1\n# HELP cmpihost_requests_total")) << reply.body;
    EXPECT_NE(reply.body.find("cmpihost_requests_total{operation=\"none\",status=\"http 404\"} 1\n"), std::string::npos)
        << reply.body;
    EXPECT_NE(reply.body.find("\ncmpihost_provider_up 1\n"), std::string::npos);
}

TEST_F(Pages, MetricsComeWithoutTheProvidersToo) {
    backend.reply.outcome = {};
    backend.reply.outcome.http_status = 500;
    backend.reply.body = {"half of it"};
    start();
    const RawReply reply = ask(get("/metrics"));
    EXPECT_EQ(reply.status(), 200U);
    EXPECT_EQ(reply.body.find("half"), std::string::npos);
    EXPECT_NE(reply.body.find("\ncmpihost_provider_up 0\n"), std::string::npos) << reply.body;
}

TEST_F(Pages, MetricsComeBeforeTheScraperGivesUp) {
    backend.hold = true;
    start();
    RawClient client(port);
    client.send(get("/metrics", "X-Prometheus-Scrape-Timeout-Seconds: 0.5\r\n"));
    const RawReply reply = client.read_reply();
    EXPECT_EQ(reply.status(), 200U);
    EXPECT_NE(reply.body.find("\ncmpihost_provider_up 0\n"), std::string::npos) << reply.body;
    EXPECT_EQ(backend.questions().size(), 1U);
    client.send(get("/graph"));
    ASSERT_TRUE(comes_true([this] { return backend.questions().size() == 2; }));
    on_loop([this] { backend.release(); });
    EXPECT_EQ(client.read_reply().body, "<p>page") << "once: what came too late for the scraper is dropped";
    on_loop([this] {
        backend.hold = false;
        backend.reply.body = {"next"};
    });
    client.send(get("/class/X"));
    EXPECT_EQ(client.read_reply().body, "next");
    finish();
    EXPECT_NE(log_file.text().find("the providers did not answer in the time that the scraper allows"),
              std::string::npos);
}

TEST_F(Pages, OthersThanScrapersAreWaitedFor) {
    backend.hold = true;
    start();
    RawClient client(port);
    client.send(get("/graph", "X-Prometheus-Scrape-Timeout-Seconds: 0.001\r\n"));
    RawClient other(port);
    other.send(get("/metrics"));
    ASSERT_TRUE(comes_true([this] { return backend.questions().size() == 2; }));
    std::this_thread::sleep_for(milliseconds{20});
    on_loop([this] { backend.release(); });
    EXPECT_EQ(client.read_reply().body, "<p>page");
    EXPECT_TRUE(other.read_reply().body.starts_with("<p>page# HELP"));
}

TEST_F(Pages, FiguresOfTheServerGoWithTheQuestion) {
    start();
    ask(get("/"));
    ask(get("/x"));
    ask(get("/"));
    const server::ServerFigures figures = asked().figures;
    EXPECT_EQ(figures.requests, 2U);
    EXPECT_EQ(figures.failures, 1U);
    EXPECT_EQ(figures.restarts, 0U);
    EXPECT_GE(figures.connections, 1U);
    EXPECT_GT(figures.since, 1'600'000'000U);
}

} // namespace
} // namespace cmpihost::http
