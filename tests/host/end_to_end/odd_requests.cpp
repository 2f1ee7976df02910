// Odd requests, as bytes to the whole server: what each is answered with. A plain request, one change each.
#include "tests/host/end_to_end/raw_client.h"
#include "tests/host/end_to_end/server_process.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <utility>

namespace cmpihost {
namespace {

class OddRequests : public testing::Test {
  protected:
    static void SetUpTestSuite() { server = new ServerProcess(); }
    static void TearDownTestSuite() { delete server; }
    void SetUp() override { ASSERT_TRUE(server->is_up()) << server->errors(); }

    static RawReply answer_to(const std::string& bytes) { return exchange(server->port(), bytes); }

    static inline ServerProcess* server = nullptr;
};

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t found = text.find(from);
    EXPECT_NE(found, std::string::npos) << from;
    return found == std::string::npos ? text : text.replace(found, from.size(), to);
}

// ------------------------------------------------------------------------------------------------------------- HTTP

/// A change of the plain request, the status, and the header CIMError.
struct HttpRow {
    const char* what;
    std::function<void(RawRequest&)> change;
    int status;
    const char* cim_error;
};

void set_header(std::string& headers, const std::string& name, const std::string& value) {
    const std::size_t begin = headers.find(name + ": ");
    const std::size_t end = headers.find("\r\n", begin) + 2;
    headers.replace(begin, end - begin, value.empty() ? "" : name + ": " + value + "\r\n");
}

auto with_header(const char* name, const char* value) {
    return [=](RawRequest& request) { set_header(request.cim, name, value); };
}

auto with_line(const char* line) {
    return [=](RawRequest& request) { request.line = line; };
}

auto with_type(const char* type) {
    return [=](RawRequest& request) { request.type = type; };
}

auto with_body(const std::string& body) {
    return [=](RawRequest& request) { request.body = body; };
}

std::string nested(std::size_t depth) {
    std::string text = "<CIM>";
    for (std::size_t i = 0; i < depth; ++i)
        text += "<A>";
    return text;
}

std::vector<HttpRow> rows_of_heads() {
    return {
        {"plain", [](RawRequest&) {}, 200, ""},
        {"no CIMOperation", with_header("CIMOperation", ""), 400, ""},
        {"another CIMOperation", with_header("CIMOperation", "Foo"), 400, "unsupported-operation"},
        {"no CIMMethod", with_header("CIMMethod", ""), 400, "header-mismatch"},
        {"no CIMObject", with_header("CIMObject", ""), 400, "header-mismatch"},
        {"CIMMethod unlike the body", with_header("CIMMethod", "GetInstance"), 400, "header-mismatch"},
        {"CIMObject unlike the body", with_header("CIMObject", "root/other"), 400, "header-mismatch"},
        {"CIMObject encoded, in another case", with_header("CIMObject", "Root%2FCIMv2"), 200, ""},
        {"CIMBatch", [](RawRequest& request) { request.more += "CIMBatch: \r\n"; }, 501,
         "multiple-requests-unsupported"},
        {"GET", with_line("GET /nothing HTTP/1.1"), 404, ""},
        {"OPTIONS", with_line("OPTIONS /cimom HTTP/1.1"), 501, ""},
        {"PUT", with_line("PUT /cimom HTTP/1.1"), 501, ""},
        {"M-POST without Man", with_line("M-POST /cimom HTTP/1.1"), 510, ""},
        {"M-POST over HTTP/1.0", with_line("M-POST /cimom HTTP/1.0"), 400, ""},
        {"another path", with_line("POST /other HTTP/1.1"), 404, ""},
        {"no Content-Type", with_type(""), 400, ""},
        {"JSON", with_type("Content-Type: application/json\r\n"), 400, ""},
        {"another charset", with_type("Content-Type: application/xml; charset=utf-16\r\n"), 400, ""},
        {"text/xml", with_type("Content-Type: text/xml\r\n"), 200, ""},
        {"HTTP/1.1 without Host", [](RawRequest& request) { request.host = ""; }, 400, ""},
        {"HTTP/1.0 without Host",
         [](RawRequest& request) {
             request.line = "POST /cimom HTTP/1.0";
             request.host = "";
         },
         200, ""},
        {"HTTP/2.0", with_line("POST /cimom HTTP/2.0"), 505, ""},
        {"header of 100 kB", [](RawRequest& request) { request.more += "X: " + std::string(100'000, 'x') + "\r\n"; },
         431, ""},
        {"Expect: 100-continue", [](RawRequest& request) { request.more += "Expect: 100-continue\r\n"; }, 200, ""},
    };
}

std::vector<HttpRow> rows_of_bodies() {
    const std::string plain = RequestBody{}.text();
    const auto version = [](const char* cim, const char* dtd, const char* protocol) {
        RequestBody body;
        body.cim_version = cim;
        body.dtd_version = dtd;
        body.protocol_version = protocol;
        return with_body(body.text());
    };
    return {
        {"empty body", with_body(""), 400, "request-not-valid"},
        {"no XML", with_body("hello"), 400, "request-not-valid"},
        {"DOCTYPE", with_body(replaced(plain, "<CIM ", "<!DOCTYPE CIM><CIM ")), 400, "request-not-valid"},
        {"no MESSAGE", with_body("<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"></CIM>"), 400, "request-not-valid"},
        {"MESSAGE without ID", with_body(replaced(plain, "ID=\"7\" ", "")), 400, "request-not-valid"},
        {"a response",
         with_body(replaced(replaced(plain, "<SIMPLEREQ>", "<SIMPLERSP>"), "</SIMPLEREQ>", "</SIMPLERSP>")), 400,
         "request-not-valid"},
        {"XML cut off", with_body(plain.substr(0, plain.size() - 9)), 400, "request-not-well-formed"},
        {"no UTF-8", with_body(replaced(plain, "ZANTO", "\xff")), 400, "request-not-valid"},
        {"something behind the root", with_body(plain + "<A></A>"), 400, "request-not-well-formed"},
        {"CIMVERSION 3.0", version("3.0", "2.0", "1.0"), 501, "unsupported-cim-version"},
        {"DTDVERSION 3.0", version("2.0", "3.0", "1.0"), 501, "unsupported-dtd-version"},
        {"PROTOCOLVERSION 2.0", version("2.0", "2.0", "2.0"), 501, "unsupported-protocol-version"},
        {"PROTOCOLVERSION 1.4", version("2.0", "2.0", "1.4"), 200, ""},
        {"MULTIREQ",
         with_body(replaced(replaced(plain, "<SIMPLEREQ>", "<MULTIREQ><SIMPLEREQ>"), "</SIMPLEREQ>",
                            "</SIMPLEREQ></MULTIREQ>")),
         501, "multiple-requests-unsupported"},
        {"illegal class name", with_body(replaced(plain, "ZANTO_", "1")), 400, "request-not-valid"},
        {"100,000 nested elements", with_body(nested(100'000)), 400, "request-not-valid"},
    };
}

TEST_F(OddRequests, OverHttp) {
    for (const auto& rows : {rows_of_heads(), rows_of_bodies()})
        for (const HttpRow& row : rows) {
            SCOPED_TRACE(row.what);
            RawRequest request;
            row.change(request);
            const RawReply reply = answer_to(request.text());
            EXPECT_EQ(reply.status, row.status);
            EXPECT_EQ(reply.header("CIMError"), row.cim_error);
        }
}

TEST_F(OddRequests, ThatAreNoHttpAre400) {
    EXPECT_EQ(exchange(server->port(), "\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03\r\n\r\n").status, 400);
}

TEST_F(OddRequests, WithoutALengthAre411) {
    const std::string text = RawRequest{}.text();
    const std::string head = text.substr(0, text.find("\r\n\r\n") + 4);
    const std::size_t length = head.find("Content-Length");
    EXPECT_EQ(answer_to(head.substr(0, length) + "\r\n").status, 411);
}

TEST_F(OddRequests, WhoseLengthIsNoNumberAre400) {
    const std::string text = RawRequest{}.text();
    const std::size_t length = text.find("Content-Length: ");
    EXPECT_EQ(answer_to(text.substr(0, length) + "Content-Length: many\r\n\r\n").status, 400);
}

TEST_F(OddRequests, InChunksAreServed) {
    RawRequest request;
    const std::string body = std::exchange(request.body, "");
    const std::string head = replaced(request.text(), "Content-Length: 0", "Transfer-Encoding: chunked");
    std::ostringstream chunks;
    chunks << std::hex << 100 << "\r\n"
           << body.substr(0, 0x64) << "\r\n"
           << body.size() - 0x64 << "\r\n"
           << body.substr(0x64) << "\r\n0\r\n\r\n";
    EXPECT_EQ(answer_to(head + replaced(chunks.str(), "64\r\n", "64\r\n")).status, 200);
}

TEST_F(OddRequests, MPostIsAnsweredWithItsPrefix) {
    RawRequest request;
    request.line = "M-POST /cimom HTTP/1.1";
    request.cim = "Man: http://www.dmtf.org/cim/mapping/http/v1.0; ns=73\r\n73-CIMOperation: MethodCall\r\n"
                  "73-CIMMethod: EnumerateInstanceNames\r\n73-CIMObject: root/cimv2\r\n";
    const RawReply reply = answer_to(request.text());
    EXPECT_EQ(reply.status, 200);
    EXPECT_NE(reply.head.find("\r\nExt:"), std::string::npos) << reply.head;
    EXPECT_EQ(reply.header("73-CIMOperation"), "MethodResponse") << reply.head;
}

TEST_F(OddRequests, OfAClientThatClosesItsSideAreAnswered) {
    EXPECT_EQ(exchange(server->port(), RawRequest{}.text(), true).status, 200);
}

// -------------------------------------------------------------------------------------------------------- CIM errors

/// Operation, its parameters, the namespace below root, and the code of the error; 0: none.
struct CimRow {
    const char* what;
    const char* operation;
    std::string parameters;
    const char* name_space;
    int code;
};

std::string class_parameter(const std::string& name) {
    return R"(<IPARAMVALUE NAME="ClassName"><CLASSNAME NAME=")" + name + R"("></CLASSNAME></IPARAMVALUE>)";
}

std::string instance_parameter(const std::string& keys) {
    return R"(<IPARAMVALUE NAME="InstanceName"><INSTANCENAME CLASSNAME="ZANTO_FCIPProfile">)" + keys +
           "</INSTANCENAME></IPARAMVALUE>";
}

std::string key(const std::string& value) {
    return R"(<KEYBINDING NAME="InstanceID"><KEYVALUE VALUETYPE="string">)" + value + "</KEYVALUE></KEYBINDING>";
}

std::string value_parameter(const std::string& name, const std::string& value) {
    return "<IPARAMVALUE NAME=\"" + name + "\"><VALUE>" + value + "</VALUE></IPARAMVALUE>";
}

std::vector<CimRow> cim_rows() {
    const std::string tunnels = class_parameter("ZANTO_FCIPProtocolEndPoint");
    return {
        {"plain", "EnumerateInstances", tunnels, "cimv2", 0},
        {"unknown operation", "Foo", "", "cimv2", 7},
        {"ClassName missing", "EnumerateInstances", "", "cimv2", 4},
        {"unknown parameter", "EnumerateInstances", tunnels + value_parameter("Foo", "x"), "cimv2", 4},
        {"a parameter twice", "EnumerateInstances", tunnels + tunnels, "cimv2", 4},
        {"unknown class", "EnumerateInstances", class_parameter("CIM_Foo"), "cimv2", 5},
        {"unknown namespace", "EnumerateInstances", tunnels, "foo", 3},
        {"keys that name something", "GetInstance", instance_parameter(key("1")), "cimv2", 0},
        {"keys that name nothing", "GetInstance", instance_parameter(key("99")), "cimv2", 6},
        {"no keys", "GetInstance", instance_parameter(""), "cimv2", 6},
        {"a key twice", "GetInstance", instance_parameter(key("1") + key("1")), "cimv2", 4},
        {"CreateClass", "CreateClass", R"(<IPARAMVALUE NAME="NewClass"><CLASS NAME="A"></CLASS></IPARAMVALUE>)",
         "cimv2", 7},
        {"DeleteClass", "DeleteClass", tunnels, "cimv2", 7},
        {"ExecQuery", "ExecQuery",
         value_parameter("QueryLanguage", "WQL") + value_parameter("Query", "SELECT * FROM ZANTO_FCIPProfile"), "cimv2",
         7},
        {"unknown enumeration context", "PullInstancesWithPath",
         value_parameter("EnumerationContext", "x") + value_parameter("MaxObjectCount", "1"), "cimv2", 21},
        {"a class of the schema", "GetClass", tunnels, "cimv2", 0},
        {"an unknown class of the schema", "GetClass", class_parameter("CIM_Foo"), "cimv2", 6},
        {"discovery", "EnumerateInstances", class_parameter("CIM_ObjectManager"), "interop", 0},
    };
}

TEST_F(OddRequests, WithinCim) {
    for (const CimRow& row : cim_rows()) {
        SCOPED_TRACE(row.what);
        RequestBody body;
        body.operation = row.operation;
        body.parameters = row.parameters;
        body.name_space = row.name_space;
        RawRequest request;
        request.body = body.text();
        set_header(request.cim, "CIMMethod", row.operation);
        set_header(request.cim, "CIMObject", std::string("root/") + row.name_space);
        const RawReply reply = answer_to(request.text());
        EXPECT_EQ(reply.status, 200);
        EXPECT_EQ(reply.header("Content-Type"), "application/xml; charset=\"utf-8\"");
        EXPECT_EQ(reply.header("CIMOperation"), "MethodResponse");
        EXPECT_FALSE(reply.header("WBEMServerResponseTime").empty());
        const std::size_t error = reply.body.find("<ERROR CODE=\"");
        EXPECT_EQ(error == std::string::npos ? 0 : std::stoi(reply.body.substr(error + 13)), row.code) << reply.body;
        EXPECT_NE(reply.body.find("<MESSAGE ID=\"7\""), std::string::npos) << reply.body;
    }
}

} // namespace
} // namespace cmpihost
