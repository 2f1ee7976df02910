// Requests that are refused, and some that are not.
#include "host/cimxml/xml_reader.h"
#include "tests/host/cimxml/request_text.h"

namespace cmpihost::cimxml {

namespace {

const std::string plain = intrinsic("EnumerateInstanceNames", class_parameter());

TEST(CimXmlOddRequests, PlainRequestIsServed) {
    EXPECT_EQ(answer_of(plain), "served");
}

TEST(CimXmlOddRequests, EmptyBodyOrNoXmlIsNotValid) {
    for (const char* body : {"", "  \n", "hello", "\xef\xbb\xbf", "{\"a\": 1}"})
        EXPECT_EQ(answer_of(body), "400 request-not-valid") << body;
}

TEST(CimXmlOddRequests, DoctypeIsNotValid) {
    EXPECT_EQ(answer_of("<!DOCTYPE CIM [<!ENTITY a \"b\">]>" + plain.substr(plain.find("<CIM"))),
              "400 request-not-valid");
    EXPECT_EQ(answer_of(replaced(plain, "<SIMPLEREQ>", "<!DOCTYPE CIM><SIMPLEREQ>")), "400 request-not-valid");
}

TEST(CimXmlOddRequests, NoMessageIsNotValid) {
    EXPECT_EQ(answer_of(R"(<CIM CIMVERSION="2.0" DTDVERSION="2.0"></CIM>)"), "400 request-not-valid");
    EXPECT_EQ(answer_of("<MESSAGE/>"), "400 request-not-valid");
}

TEST(CimXmlOddRequests, MissingAttributesAreNotValid) {
    for (const char* attribute : {" ID=\"42\"", " PROTOCOLVERSION=\"1.0\"", " CIMVERSION=\"2.0\"",
                                  " DTDVERSION=\"2.0\"", " NAME=\"ClassName\"", " NAME=\"T_Thing\"", " NAME=\"root\""})
        EXPECT_EQ(answer_of(replaced(plain, attribute, "")), "400 request-not-valid") << attribute;
}

TEST(CimXmlOddRequests, ResponseInPlaceOfRequestIsNotValid) {
    EXPECT_EQ(answer_of(R"(<CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1" PROTOCOLVERSION="1.0"><SIMPLERSP>)"
                        R"(<IMETHODRESPONSE NAME="X"/></SIMPLERSP></MESSAGE></CIM>)"),
              "400 request-not-valid");
}

TEST(CimXmlOddRequests, EveryCutOffRequestIsRefused) {
    const std::size_t root = plain.find("<CIM");
    for (std::size_t length = root + 1; length < plain.size(); ++length)
        EXPECT_EQ(answer_of(plain.substr(0, length)), "400 request-not-well-formed") << length;
}

TEST(CimXmlOddRequests, BytesThatAreNoUtf8AreNotValid) {
    for (const char* bytes : {"\xff", "\xc0\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\xe2\x82", "\x80"})
        EXPECT_EQ(answer_of(replaced(plain, "T_Thing", "T_" + std::string(bytes))), "400 request-not-valid");
}

TEST(CimXmlOddRequests, ControlCharactersAreNotWellFormed) {
    for (const std::string& bytes : {std::string(1, '\0'), std::string("\x01"), std::string("\x1f"),
                                     std::string("\xef\xbf\xbe"), std::string("&#0;"), std::string("&#xD800;")})
        EXPECT_EQ(answer_of(replaced(plain, "T_Thing", "T_" + bytes)), "400 request-not-well-formed");
}

TEST(CimXmlOddRequests, NothingStandsAfterTheRootElement) {
    for (const char* more : {"x", "<CIM/>", "</CIM>", "<![CDATA[x]]>"})
        EXPECT_EQ(answer_of(plain + more), "400 request-not-well-formed") << more;
    EXPECT_EQ(answer_of(plain + " <!-- end --> <?pi x?>\r\n"), "served");
}

TEST(CimXmlOddRequests, VersionsOfAnotherMajorAreUnsupported) {
    EXPECT_EQ(answer_of(replaced(plain, "CIMVERSION=\"2.0", "CIMVERSION=\"3.0")), "501 unsupported-cim-version");
    EXPECT_EQ(answer_of(replaced(plain, "DTDVERSION=\"2.0", "DTDVERSION=\"3.0")), "501 unsupported-dtd-version");
    EXPECT_EQ(answer_of(replaced(plain, "PROTOCOLVERSION=\"1.0", "PROTOCOLVERSION=\"2.0")),
              "501 unsupported-protocol-version");
    for (const char* version : {"", "2", "2.", "2.x", "22.0"})
        EXPECT_EQ(answer_of(replaced(plain, "CIMVERSION=\"2.0", std::string("CIMVERSION=\"") + version)),
                  "501 unsupported-cim-version");
}

TEST(CimXmlOddRequests, LaterMinorVersionsAreServed) {
    for (const char* version : {"1.1", "1.4"})
        EXPECT_EQ(answer_of(replaced(plain, "PROTOCOLVERSION=\"1.0", std::string("PROTOCOLVERSION=\"") + version)),
                  "served");
    EXPECT_EQ(answer_of(replaced(plain, "DTDVERSION=\"2.0", "DTDVERSION=\"2.13")), "served");
}

TEST(CimXmlOddRequests, MultipleRequestsAreUnsupported) {
    const std::string multiple =
        replaced(replaced(plain, "<SIMPLEREQ>", "<MULTIREQ><SIMPLEREQ>"), "</SIMPLEREQ>", "</SIMPLEREQ></MULTIREQ>");
    EXPECT_EQ(answer_of(multiple), "501 multiple-requests-unsupported");
}

TEST(CimXmlOddRequests, UnknownOperationIsError7) {
    EXPECT_EQ(answer_of(intrinsic("Frobnicate", class_parameter())), "200 7 there is no operation Frobnicate");
}

TEST(CimXmlOddRequests, MissingParameterIsError4) {
    EXPECT_EQ(answer_of(intrinsic("EnumerateInstanceNames", "")),
              "200 4 EnumerateInstanceNames, expected parameter ClassName");
    EXPECT_EQ(answer_of(intrinsic("EnumerateInstanceNames", parameter("ClassName", ""))),
              "200 4 EnumerateInstanceNames, expected parameter ClassName");
    EXPECT_EQ(answer_of(intrinsic("ExecQuery", parameter("QueryLanguage", "<VALUE>WQL</VALUE>"))),
              "200 4 ExecQuery, expected parameter Query");
}

TEST(CimXmlOddRequests, UnknownParameterIsError4) {
    EXPECT_EQ(answer_of(intrinsic("EnumerateInstanceNames", class_parameter() + class_parameter("Role"))),
              "200 4 EnumerateInstanceNames has no parameter Role");
}

TEST(CimXmlOddRequests, ParameterTwiceIsError4) {
    EXPECT_EQ(answer_of(intrinsic("EnumerateInstanceNames", class_parameter() + class_parameter("CLASSNAME"))),
              "200 4 parameter CLASSNAME is there twice, expected once");
}

TEST(CimXmlOddRequests, KeyTwiceIsError4) {
    EXPECT_EQ(answer_of(name_request(key("Name", "", "a") + key("NAME", "", "b"))),
              "200 4 key NAME is there twice, expected once");
}

TEST(CimXmlOddRequests, ErrorsKeepWhatTheReplyRepeats) {
    const auto read = read_request(intrinsic("enumerateinstanceNAMES", ""), test_schema());
    const auto* refusal = std::get_if<Refusal>(&read);
    ASSERT_NE(refusal, nullptr);
    EXPECT_EQ(refusal->envelope.message_id, "42");
    EXPECT_EQ(refusal->envelope.operation, "enumerateinstanceNAMES");
    EXPECT_EQ(refusal->envelope.name_space, "root/cimv2");
}

TEST(CimXmlOddRequests, BooleanThatIsNoneIsNotValid) {
    for (const char* text : {"", "yes", "1", "TRUE FALSE"})
        EXPECT_EQ(answer_of(intrinsic("EnumerateInstances",
                                      class_parameter() +
                                          parameter("LocalOnly", "<VALUE>" + std::string(text) + "</VALUE>"))),
                  "400 request-not-valid");
}

TEST(CimXmlOddRequests, NumberBeyondUint32IsNotValid) {
    for (const char* text : {"", "-1", "4294967296", "ten"})
        EXPECT_EQ(answer_of(intrinsic("OpenEnumerateInstances",
                                      class_parameter() +
                                          parameter("MaxObjectCount", "<VALUE>" + std::string(text) + "</VALUE>"))),
                  "400 request-not-valid");
}

TEST(CimXmlOddRequests, IllegalClassNameIsNotValid) {
    for (const char* name : {"", "1A", "A B", "A-B", "A.B", "A&lt;B"})
        EXPECT_EQ(answer_of(intrinsic("EnumerateInstanceNames", class_parameter("ClassName", name))),
                  "400 request-not-valid")
            << name;
}

TEST(CimXmlOddRequests, ParameterOfAnotherShapeIsNotValid) {
    const std::string text = "<VALUE>T_Thing</VALUE>";
    EXPECT_EQ(answer_of(intrinsic("EnumerateInstanceNames", parameter("ClassName", text))), "400 request-not-valid");
    EXPECT_EQ(answer_of(intrinsic("GetInstance", class_parameter("InstanceName"))), "400 request-not-valid");
    EXPECT_EQ(answer_of(intrinsic("CreateInstance", parameter("NewInstance", text))), "400 request-not-valid");
    EXPECT_EQ(answer_of(intrinsic("EnumerateInstances", class_parameter() + parameter("PropertyList", text))),
              "400 request-not-valid");
}

TEST(CimXmlOddRequests, DeepNestingIsNotValidWithoutRecursion) {
    std::string deep;
    for (int i = 0; i < 100'000; ++i)
        deep += "<A>";
    EXPECT_EQ(answer_of(deep), "400 request-not-valid");
}

TEST(CimXmlOddRequests, DepthEndsAtItsLimit) {
    const auto nested = [](std::size_t depth) {
        std::string xml;
        for (std::size_t i = 0; i < depth; ++i)
            xml += "<A>";
        for (std::size_t i = 0; i < depth; ++i)
            xml += "</A>";
        return read_xml(xml);
    };
    EXPECT_TRUE(std::holds_alternative<XmlElement>(nested(max_xml_depth)));
    const auto deeper = nested(max_xml_depth + 1);
    ASSERT_TRUE(std::holds_alternative<XmlFault>(deeper));
    EXPECT_EQ(std::get<XmlFault>(deeper), XmlFault::invalid);
}

TEST(CimXmlOddRequests, AttributesAreOnceEachAndNotTooMany) {
    const auto with = [](std::size_t count) {
        std::string xml = "<A";
        for (std::size_t i = 0; i < count; ++i)
            xml += " a" + std::to_string(i) + "=''";
        return read_xml(xml + "/>");
    };
    EXPECT_TRUE(std::holds_alternative<XmlElement>(with(max_xml_attributes)));
    EXPECT_TRUE(std::holds_alternative<XmlFault>(with(max_xml_attributes + 1)));
    EXPECT_EQ(answer_of(replaced(plain, "ID=\"42\"", "ID=\"42\" ID=\"43\"")), "400 request-not-well-formed");
}

TEST(CimXmlOddRequests, TooManyElementsAreNotValid) {
    const auto with = [](std::size_t count) {
        std::string values;
        for (std::size_t i = 0; i < count; ++i)
            values += "<VALUE/>";
        return intrinsic("EnumerateInstances",
                         class_parameter() + parameter("PropertyList", "<VALUE.ARRAY>" + values + "</VALUE.ARRAY>"));
    };
    constexpr std::size_t others = 11;
    EXPECT_EQ(answer_of(with(max_xml_elements - others)), "served");
    EXPECT_EQ(answer_of(with(max_xml_elements - others + 1)), "400 request-not-valid");
}

TEST(CimXmlOddRequests, StrayTextIsNotValid) {
    EXPECT_EQ(answer_of(replaced(plain, "<SIMPLEREQ>", "x<SIMPLEREQ>")), "400 request-not-valid");
    EXPECT_EQ(answer_of(replaced(plain, "<SIMPLEREQ>", "\n <!-- x --><SIMPLEREQ>")), "served");
}

} // namespace

} // namespace cmpihost::cimxml
