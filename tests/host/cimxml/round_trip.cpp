// Replies read by another reader of XML than ours. Of native builds only, where there is a library to link.
#include "host/cimxml/xml_reader.h"
#include "tests/host/cimxml/reply_text.h"

#include <pugixml.hpp>

namespace cmpihost::cimxml {

namespace {

pugi::xml_document reread(const std::string& reply) {
    pugi::xml_document document;
    const auto result = document.load_buffer(reply.data(), reply.size(),
                                             pugi::parse_default | pugi::parse_ws_pcdata_single, pugi::encoding_utf8);
    EXPECT_TRUE(result) << result.description() << " at " << result.offset << "\n" << reply;
    EXPECT_TRUE(std::holds_alternative<XmlElement>(read_xml(reply))) << reply;
    return document;
}

std::string instance_reply(const Object& object) {
    std::string out;
    begin_reply(out, test_envelope("EnumerateInstances"));
    append_named_instance(out, object, test_place());
    end_reply(out);
    return out;
}

TEST(CimXmlRoundTrip, TextsReadBackAsTheyWere) {
    for (const std::string text : {"", " ", "a", " a & <b> \"c\" 'd' ]]> &amp; &#65;", "\xc3\xa4\n\tz"}) {
        Object object = single(text);
        object.properties = object.keys;
        const auto document = reread(instance_reply(object));
        EXPECT_EQ(document.select_node("//KEYVALUE").node().text().get(), text);
        EXPECT_EQ(document.select_node("//PROPERTY/VALUE").node().text().get(), text);
    }
}

TEST(CimXmlRoundTrip, EmbeddedInstanceIsXmlItself) {
    const Object inner = instance_of({{"Q", "string", {std::string("<&>")}}});
    const auto document =
        reread(instance_reply(instance_of({{"P", "instance", {std::make_shared<const Object>(inner)}}})));
    const auto embedded = reread(document.select_node("//PROPERTY/VALUE").node().text().get());
    EXPECT_STREQ(embedded.child("INSTANCE").child("PROPERTY").child("VALUE").text().get(), "<&>");
}

TEST(CimXmlRoundTrip, HostileTextsLeaveTheReplyWellFormed) {
    std::string every_byte;
    for (int c = 0; c < 256; ++c)
        every_byte += static_cast<char>(c);
    for (const std::string& text : {every_byte, std::string("</VALUE><ERROR CODE=\"1\"/>"), std::string("]]>"),
                                    std::string("<!--"), std::string("\" NAME=\"x"), std::string("&\xf0\x9f")}) {
        Object object = instance_of({{text, "string", {text}}, {"A", "string[]", {Value::Array{{text}}}}});
        object.class_name = text;
        object.keys = {{text, "string", {text}}};
        const auto document = reread(instance_reply(object));
        EXPECT_EQ(document.select_nodes("//VALUE").size(), 2U) << text;
        EXPECT_EQ(document.select_nodes("//ERROR").size(), 0U) << text;
        std::string error;
        append_error_reply(error, test_envelope(text), 1, text);
        EXPECT_EQ(reread(error).select_nodes("//ERROR").size(), 1U);
    }
}

TEST(CimXmlRoundTrip, KeysWrittenAreReadAsTheSameKeys) {
    Object thing;
    thing.class_name = "T_Thing";
    thing.keys = {{"Name", "string", {std::string(" <1> & \"2\"")}},
                  {"Number", "uint16", {std::uint64_t{65535}}},
                  {"Up", "boolean", {false}}};
    std::string name;
    append_instance_name(name, thing, test_place());
    const Call call = call_of(intrinsic("GetInstance", parameter("InstanceName", name)));
    ASSERT_NE(argument<Object>(call, "InstanceName"), nullptr);
    EXPECT_EQ(*argument<Object>(call, "InstanceName"), thing);
}

} // namespace

} // namespace cmpihost::cimxml
