// What HTTP asks for and what it must not: requests as bytes, and how they are answered.
#include "tests/host/http/http_test.h"

namespace cmpihost::http {
namespace {

using OddHttpRequests = ListenerTest;

struct OddRow {
    const char* what;
    std::string request;
    unsigned status;
    const char* cim_error = "(none)";
};

/// A request with one thing changed.
std::string changed(const std::string& from, const std::string& to) {
    std::string request = post();
    const std::size_t at = request.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return request.replace(at, from.size(), to);
}

const std::string type_header = "Content-Type: application/xml; charset=\"utf-8\"\r\n";
const std::string host_header = "Host: here:5988\r\n";
const std::string length_header = "Content-Length: 6\r\n";

std::vector<OddRow> rows_of_cim_headers() {
    return {
        {"no CIMOperation", changed("CIMOperation: MethodCall\r\n", ""), 400},
        {"another CIMOperation", changed("MethodCall", "Foo"), 400, "unsupported-operation"},
        {"CIMOperation in another case", changed("MethodCall", "METHODcall"), 200},
        {"no CIMMethod", changed("CIMMethod: EnumerateInstanceNames\r\n", ""), 400, "header-mismatch"},
        {"no CIMObject", changed("CIMObject: root%2Fcimv2\r\n", ""), 400, "header-mismatch"},
        {"CIMBatch", changed("CIMMethod:", "CIMBatch: x\r\nCIMMethod:"), 501, "multiple-requests-unsupported"},
        {"CIMOperation twice", post("<CIM/>", "CIMOperation: MethodCall\r\n"), 400},
        {"CIMMethod twice", post("<CIM/>", "CIMMethod: GetInstance\r\n"), 400},
        {"CIMObject twice", post("<CIM/>", "CIMObject: root\r\n"), 400},
        {"no Content-Type", changed(type_header, ""), 400},
        {"JSON", changed("application/xml", "application/json"), 400},
        {"text/xml", changed("application/xml", "text/xml"), 200},
        {"type in another case", changed("application/xml", "Application/XML"), 200},
        {"no charset", changed("; charset=\"utf-8\"", ""), 200},
        {"charset without quotes", changed("\"utf-8\"", "UTF-8"), 200},
        {"another charset", changed("utf-8", "iso-8859-1"), 400},
        {"another charset after blanks", changed(" charset=\"utf-8\"", " x=y ; charset = utf-16"), 400},
        {"Content-Type twice", post("<CIM/>", type_header), 400},
    };
}

std::vector<OddRow> rows_of_http() {
    return {
        {"GET", "GET /cimom HTTP/1.1\r\nHost: h\r\n\r\n", 404},
        {"HEAD", "HEAD /cimom HTTP/1.1\r\nHost: h\r\n\r\n", 404},
        {"OPTIONS", "OPTIONS * HTTP/1.1\r\nHost: h\r\n\r\n", 501},
        {"PUT", changed("POST", "PUT"), 501},
        {"unknown method", changed("POST", "FROB"), 501},
        {"method in lower case", changed("POST", "post"), 501},
        {"another path", changed("/cimom", "/"), 404},
        {"path with more", changed("/cimom", "/cimom/x"), 404},
        {"HTTP/1.1 without Host", changed(host_header, ""), 400},
        {"Host twice", post("<CIM/>", "Host: there\r\n"), 400},
        {"Host that is no name", changed("here:5988", "<x>"), 400},
        {"HTTP/1.0 without Host", "POST /cimom HTTP/1.0\r\n" + cim_headers + length_header + "\r\n<CIM/>", 200},
        {"HTTP/2.0", changed("HTTP/1.1", "HTTP/2.0"), 505},
        {"HTTP/2", "PRI * HTTP/2\r\n\r\n", 505},
        {"HTTP/1.2", changed("HTTP/1.1", "HTTP/1.2"), 505},
        {"bytes that are no HTTP", "hello\r\n\r\n", 400},
        {"a greeting of TLS", {"\x16\x03\x01\x02", 4}, 400},
        {"lines without carriage return", "GET / HTTP/1.1\nHost: h\n\n", 400},
        {"request line without version", "GET /\r\n\r\n", 400},
        {"field without colon", changed("Host: here:5988", "Host"), 400},
        {"no length", changed(length_header, ""), 411},
        {"Content-Length that is no number", changed("Length: 6", "Length: six"), 400},
        {"negative Content-Length", changed("Length: 6", "Length: -6"), 400},
        {"two different lengths", post("<CIM/>", "Content-Length: 7\r\n"), 400},
        {"empty lines in front", "\r\n\r\n" + post(), 200},
    };
}

std::string with_encoding(const std::string& encoding, const std::string& version = "HTTP/1.1") {
    return "POST /cimom " + version + "\r\n" + host_header + cim_headers + encoding + "\r\n6\r\n<CIM/>\r\n0\r\n\r\n";
}

std::vector<OddRow> rows_of_framing() {
    return {
        {"chunked", with_encoding("Transfer-Encoding: chunked\r\n"), 200},
        {"chunked in another case", with_encoding("Transfer-Encoding: Chunked\r\n"), 200},
        {"another encoding", with_encoding("Transfer-Encoding: gzip\r\n"), 400},
        {"another encoding before chunked", with_encoding("Transfer-Encoding: gzip, chunked\r\n"), 400},
        {"identity", with_encoding("Transfer-Encoding: identity\r\n"), 400},
        {"Transfer-Encoding twice", with_encoding("Transfer-Encoding: chunked\r\nTransfer-Encoding: x\r\n"), 400},
        {"chunked and a length", with_encoding("Transfer-Encoding: chunked\r\n" + length_header), 400},
        {"a length and chunked", with_encoding(length_header + "Transfer-Encoding: chunked\r\n"), 400},
        {"chunked in HTTP/1.0", with_encoding("Transfer-Encoding: chunked\r\n", "HTTP/1.0"), 400},
        {"a chunk that has no size", changed(length_header + "\r\n", "Transfer-Encoding: chunked\r\n\r\n\r\n"), 400},
    };
}

TEST_F(OddHttpRequests, AreAnsweredAsTheTableSays) {
    start();
    for (const auto& rows : {rows_of_cim_headers(), rows_of_http(), rows_of_framing()})
        for (const OddRow& row : rows) {
            SCOPED_TRACE(row.what);
            const RawReply reply = ask(row.request);
            EXPECT_EQ(reply.status(), row.status);
            EXPECT_EQ(reply.header("CIMError"), row.cim_error);
            EXPECT_EQ(reply.body, row.status == 200 ? "<answer/>" : "");
            EXPECT_EQ(reply.header("Allow"), row.status == 501 && std::string(row.cim_error) == "(none)"
                                                 ? "POST, M-POST, GET, HEAD"
                                                 : "(none)");
        }
}

TEST_F(OddHttpRequests, ServerGoesOnAfterEach) {
    start();
    for (const auto& rows : {rows_of_cim_headers(), rows_of_http(), rows_of_framing()})
        for (const OddRow& row : rows) {
            RawClient client(port);
            client.send(row.request); // and never reads
        }
    EXPECT_EQ(ask(post()).status(), 200U);
}

TEST_F(OddHttpRequests, BodyThatIsTooLargeIsRefused) {
    options.limits.body_bytes = 1000;
    start();
    EXPECT_EQ(ask(post(std::string(1000, 'x'))).status(), 200U);
    EXPECT_EQ(ask(post(std::string(1001, 'x'))).status(), 413U);
    const std::string chunked =
        "POST /cimom HTTP/1.1\r\nHost: h\r\n" + cim_headers + "Transfer-Encoding: chunked\r\n\r\n";
    const std::string chunk = "1f4\r\n" + std::string(500, 'x') + "\r\n";
    EXPECT_EQ(ask(chunked + chunk + chunk + "0\r\n\r\n").status(), 200U);
    EXPECT_EQ(ask(chunked + chunk + chunk + "1\r\nx\r\n0\r\n\r\n").status(), 413U);
}

TEST_F(OddHttpRequests, HeaderThatIsTooLargeIsRefused) {
    start();
    const auto with_header = [](std::size_t size) { return post("<CIM/>", "X: " + std::string(size, 'x') + "\r\n"); };
    EXPECT_EQ(ask(with_header(16'000)).status(), 200U);
    EXPECT_EQ(ask(with_header(16'400)).status(), 431U);
    EXPECT_EQ(ask(with_header(100'000)).status(), 431U);
    EXPECT_EQ(ask("GET /" + std::string(20'000, 'x')).status(), 431U);
}

TEST_F(OddHttpRequests, RefusedUploadStillReadsItsReply) {
    start();
    RawClient client(port);
    client.send(post(std::string(4'000'000, 'x')).substr(0, 1'000'000));
    const RawReply reply = client.read_reply();
    EXPECT_EQ(reply.status(), 413U);
    EXPECT_EQ(reply.header("Connection"), "close");
    EXPECT_TRUE(client.sees_end());
}

TEST_F(OddHttpRequests, BackendSaysHttpErrors) {
    backend.reply.outcome.http_status = 501;
    backend.reply.outcome.cim_error = "unsupported-dtd-version";
    start();
    const RawReply reply = ask(post());
    EXPECT_EQ(reply.status(), 501U);
    EXPECT_EQ(reply.header("CIMError"), "unsupported-dtd-version");
    EXPECT_EQ(reply.header("Content-Length"), "0");
    EXPECT_EQ(reply.body, "");
}

TEST_F(OddHttpRequests, FullBackendAsksToTryAgain) {
    options.limits.retry_after = seconds{7};
    backend.full = true;
    start();
    const RawReply reply = ask(post());
    EXPECT_EQ(reply.status(), 503U);
    EXPECT_EQ(reply.header("Retry-After"), "7");
}

TEST_F(OddHttpRequests, ExtendedPost) {
    const std::string man = "Man: http://www.dmtf.org/cim/mapping/http/v1.0; ns=73\r\n";
    const std::string headers = "Content-Type: text/xml\r\n73-CIMOperation: MethodCall\r\n73-CIMMethod: GetClass\r\n"
                                "73-CIMObject: root\r\nContent-Length: 6\r\n\r\n<CIM/>";
    const std::string line = "M-POST /cimom HTTP/1.1\r\nHost: h\r\n";
    start();
    const RawReply reply = ask(line + man + headers);
    EXPECT_EQ(reply.status(), 200U);
    EXPECT_EQ(reply.header("Ext"), "");
    EXPECT_EQ(reply.header("Man"), "http://www.dmtf.org/cim/mapping/http/v1.0; ns=73");
    EXPECT_EQ(reply.header("73-CIMOperation"), "MethodResponse");
    EXPECT_EQ(reply.header("CIMOperation"), "(none)");
    ASSERT_EQ(backend.questions().size(), 1U);
    EXPECT_EQ(backend.questions()[0].cim_method, "GetClass");

    EXPECT_EQ(ask(line + "Man: \"http://www.dmtf.org/cim/mapping/http/v1.0\" ; ns=73\r\n" + headers).status(), 200U);
    EXPECT_EQ(ask("M-POST /cimom HTTP/1.0\r\n" + man + headers).status(), 400U);
    EXPECT_EQ(ask(line + headers).status(), 510U) << "without Man";
    EXPECT_EQ(ask(line + "Man: http://other; ns=73\r\n" + headers).status(), 510U);
    EXPECT_EQ(ask(line + "Man: http://www.dmtf.org/cim/mapping/http/v1.0; ns=x\r\n" + headers).status(), 510U);
    const RawReply other = ask(line + "Man: http://www.dmtf.org/cim/mapping/http/v1.0; ns=74\r\n" + headers);
    EXPECT_EQ(other.status(), 400U) << "headers with another prefix";
}

TEST_F(OddHttpRequests, ErrorsOfExtendedPostHavePrefix) {
    start();
    const RawReply reply =
        ask("M-POST /cimom HTTP/1.1\r\nHost: h\r\nMan: http://www.dmtf.org/cim/mapping/http/v1.0; ns=11\r\n"
            "Content-Type: text/xml\r\n11-CIMOperation: Foo\r\nContent-Length: 6\r\n\r\n<CIM/>");
    EXPECT_EQ(reply.status(), 400U);
    EXPECT_EQ(reply.header("11-CIMError"), "unsupported-operation");
    EXPECT_EQ(reply.header("CIMError"), "(none)");
}

} // namespace
} // namespace cmpihost::http
