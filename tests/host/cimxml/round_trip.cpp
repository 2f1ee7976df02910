// Replies read by another reader of XML than ours. Of native builds only, where there is a library to link.
#include "host/cimxml/write_qualifier.h"
#include "host/cimxml/xml_reader.h"
#include "tests/host/cimxml/reply_text.h"
#include "tests/host/mof/mof_files.h"

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

/// The reply of a class operation with what `append` appends.
template <class Append>
pugi::xml_document reread_declarations(Append append) {
    std::string out;
    begin_reply(out, test_envelope("GetClass"));
    append(out);
    end_reply(out);
    EXPECT_EQ(out.find("/>"), std::string::npos) << out; // some clients read no self-closed elements
    return reread(out);
}

/// Names and values of the qualifiers that an element begins with.
std::vector<std::string> qualifiers_of(const pugi::xml_node& element) {
    std::vector<std::string> found;
    for (pugi::xml_node child = element.first_child(); std::string_view(child.name()) == "QUALIFIER";
         child = child.next_sibling())
        found.push_back(std::string(child.attribute("NAME").value()) + '=' + child.child("VALUE").text().get());
    return found;
}

std::vector<std::string> qualifiers_of(const std::vector<mof::Qualifier>& declared) {
    std::vector<std::string> found;
    for (const mof::Qualifier& qualifier : declared) {
        const auto* text = std::get_if<std::string>(&qualifier.value.data);
        const auto* truth = std::get_if<bool>(&qualifier.value.data);
        found.push_back(qualifier.name + '=' + (text ? *text : truth && *truth ? "TRUE" : ""));
    }
    return found;
}

TEST(CimXmlRoundTrip, ClassesReadBackAsTheyAreDeclared) {
    const mof::Schema& schema = mof::provider_schema();
    for (const mof::ClassDeclaration& declaration : schema.classes()) {
        SCOPED_TRACE(declaration.name);
        const auto document = reread_declarations([&](std::string& out) {
            append_class(out, declaration, {.local_only = false}, {"host", "root/cimv2", schema});
        });
        const pugi::xml_node element = document.select_node("//CLASS").node();
        EXPECT_EQ(element.attribute("NAME").value(), declaration.name);
        EXPECT_EQ(element.attribute("SUPERCLASS").value(), declaration.superclass);
        EXPECT_EQ(qualifiers_of(element), qualifiers_of(declaration.qualifiers));
        const auto properties = element.select_nodes("*[starts-with(name(), 'PROPERTY')]");
        ASSERT_EQ(properties.size(), declaration.properties.size());
        for (std::size_t i = 0; i < properties.size(); ++i) {
            EXPECT_EQ(properties[i].node().attribute("NAME").value(), declaration.properties[i].name);
            EXPECT_EQ(qualifiers_of(properties[i].node()), qualifiers_of(declaration.properties[i].qualifiers));
        }
    }
    EXPECT_GT(schema.classes().size(), 60U);
}

TEST(CimXmlRoundTrip, QualifierDeclarationsReadBack) {
    const mof::Schema& schema = mof::provider_schema();
    for (const mof::QualifierDeclaration& declaration : schema.qualifiers()) {
        SCOPED_TRACE(declaration.name);
        const auto document = reread_declarations([&](std::string& out) {
            append_qualifier_declaration(out, declaration, {"host", "root/cimv2", schema});
        });
        const pugi::xml_node element = document.select_node("//QUALIFIER.DECLARATION").node();
        EXPECT_EQ(element.attribute("NAME").value(), declaration.name);
        EXPECT_EQ(element.attribute("ISARRAY").as_bool(), declaration.type.ends_with("[]"));
        const auto scopes = element.child("SCOPE").attributes();
        EXPECT_EQ(static_cast<std::size_t>(std::distance(scopes.begin(), scopes.end())), declaration.scopes.count());
    }
    EXPECT_GT(schema.qualifiers().size(), 40U);
}

TEST(CimXmlRoundTrip, HostileTextsInClassesLeaveTheReplyWellFormed) {
    const auto read = mof::Schema::read_text(
        "t.mof", "[Description(\"</CLASS> \\x1 & \\\" ]]> <!-- \xff\")] class K_A { string a = \"</VALUE>\"; };");
    const mof::Schema& schema = std::get<mof::Schema>(read);
    const auto document = reread_declarations([&](std::string& out) {
        append_class(out, *schema.find("K_A"), {}, {"host", "root/cimv2", schema});
    });
    EXPECT_STREQ(document.select_node("//QUALIFIER/VALUE").node().text().get(),
                 "</CLASS> \xef\xbf\xbd & \" ]]> <!-- \xef\xbf\xbd");
    EXPECT_STREQ(document.select_node("//PROPERTY/VALUE").node().text().get(), "</VALUE>");
}

} // namespace

} // namespace cmpihost::cimxml
