// Replies, byte for byte.
#include "host/cimxml/characters.h"
#include "tests/host/cimxml/reply_text.h"

#include <cmath>

namespace cmpihost::cimxml {

namespace {

const std::string id_name = R"(<INSTANCENAME CLASSNAME="T_Single"><KEYBINDING NAME="Id"><KEYVALUE VALUETYPE="string">)"
                            R"(x</KEYVALUE></KEYBINDING></INSTANCENAME>)";
const std::string id_path = R"(<INSTANCEPATH><NAMESPACEPATH><HOST>host</HOST><LOCALNAMESPACEPATH>)"
                            R"(<NAMESPACE NAME="root"></NAMESPACE><NAMESPACE NAME="cimv2"></NAMESPACE>)"
                            R"(</LOCALNAMESPACEPATH></NAMESPACEPATH>)" +
                            id_name + "</INSTANCEPATH>";
const std::string id_instance = R"(<INSTANCE CLASSNAME="T_Single"><PROPERTY NAME="Id" TYPE="string"><VALUE>x</VALUE>)"
                                R"(</PROPERTY></INSTANCE>)";

Object full_single() {
    Object object = single("x");
    object.properties = object.keys;
    return object;
}

using Writer = void (*)(std::string&, const Object&, const ReplyPlace&);

std::string written(Writer writer, const Object& object) {
    std::string out;
    writer(out, object, test_place());
    return out;
}

/// The property's element in an instance of a class that nobody declares.
std::string property_element(const Property& property) {
    const std::string begin = R"(<INSTANCE CLASSNAME="T_Unknown">)";
    const std::string end = "</INSTANCE>";
    const std::string xml = written(append_instance, instance_of({property}));
    EXPECT_TRUE(xml.starts_with(begin) && xml.ends_with(end)) << xml;
    return xml.substr(begin.size(), xml.size() - begin.size() - end.size());
}

std::string reply(const std::string& operation, Writer writer) {
    std::string out;
    begin_reply(out, test_envelope(operation));
    writer(out, full_single(), test_place());
    end_reply(out);
    return out;
}

std::string returned(const std::string& operation, const std::string& content) {
    return framed(operation, "<IRETURNVALUE>" + content + "</IRETURNVALUE>");
}

TEST(CimXmlReplies, EnumerateInstanceNamesHasInstanceNames) {
    EXPECT_EQ(reply("enumerateINSTANCENames", append_instance_name), returned("enumerateINSTANCENames", id_name));
}

TEST(CimXmlReplies, EnumerateInstancesHasNamedInstances) {
    EXPECT_EQ(
        reply("EnumerateInstances", append_named_instance),
        returned("EnumerateInstances", "<VALUE.NAMEDINSTANCE>" + id_name + id_instance + "</VALUE.NAMEDINSTANCE>"));
}

TEST(CimXmlReplies, GetInstanceHasAnInstance) {
    EXPECT_EQ(reply("GetInstance", append_instance), returned("GetInstance", id_instance));
}

TEST(CimXmlReplies, AssociatorsHaveObjectsWithPath) {
    EXPECT_EQ(reply("Associators", append_object_with_path),
              returned("Associators", "<VALUE.OBJECTWITHPATH>" + id_path + id_instance + "</VALUE.OBJECTWITHPATH>"));
}

TEST(CimXmlReplies, AssociatorNamesHaveObjectPaths) {
    EXPECT_EQ(reply("AssociatorNames", append_object_path),
              returned("AssociatorNames", "<OBJECTPATH>" + id_path + "</OBJECTPATH>"));
}

TEST(CimXmlReplies, EmptyResultHasBothTags) {
    std::string out;
    begin_reply(out, test_envelope("EnumerateInstances"));
    end_reply(out);
    EXPECT_EQ(out, framed("EnumerateInstances", "<IRETURNVALUE></IRETURNVALUE>"));
}

TEST(CimXmlReplies, PullsEndWithContextAndEndOfSequence) {
    std::string out;
    begin_reply(out, test_envelope("PullInstancesWithPath"));
    append_instance_with_path(out, full_single(), test_place());
    end_reply(out, "7&", false);
    EXPECT_EQ(out, framed("PullInstancesWithPath",
                          "<IRETURNVALUE><VALUE.INSTANCEWITHPATH>" + id_path + id_instance +
                              "</VALUE.INSTANCEWITHPATH></IRETURNVALUE>"
                              R"(<PARAMVALUE NAME="EnumerationContext" PARAMTYPE="string"><VALUE>7&amp;</VALUE>)"
                              R"(</PARAMVALUE><PARAMVALUE NAME="EndOfSequence" PARAMTYPE="boolean"><VALUE>FALSE)"
                              "</VALUE></PARAMVALUE>"));
    std::string last;
    begin_reply(last, test_envelope("PullInstancePaths"));
    end_reply(last, "", true);
    EXPECT_NE(last.find("<VALUE></VALUE></PARAMVALUE>"), std::string::npos);
    EXPECT_NE(last.find("<VALUE>TRUE</VALUE></PARAMVALUE>"), std::string::npos);
}

TEST(CimXmlReplies, CloseEnumerationHasNothing) {
    std::string out;
    append_empty_reply(out, test_envelope("CloseEnumeration"));
    EXPECT_EQ(out, framed("CloseEnumeration", ""));
}

TEST(CimXmlReplies, ErrorHasCodeAndDescriptionAndNoChildren) {
    std::string out;
    append_error_reply(out, test_envelope("GetInstance"), 6, "no \"such\" <thing>");
    EXPECT_EQ(out,
              framed("GetInstance", R"(<ERROR CODE="6" DESCRIPTION="no &quot;such&quot; &lt;thing&gt;"></ERROR>)"));
}

TEST(CimXmlReplies, MethodsHaveReturnValueAndParameters) {
    Envelope envelope = test_envelope("Reset");
    envelope.target = single("x");
    std::string out;
    append_method_reply(out, envelope, {"", "uint32", {std::uint64_t{0}}}, {{"Why", "string", {std::string("so")}}},
                        test_place());
    EXPECT_NE(out.find(R"(<METHODRESPONSE NAME="Reset"><RETURNVALUE PARAMTYPE="uint32"><VALUE>0</VALUE></RETURNVALUE>)"
                       R"(<PARAMVALUE NAME="Why" PARAMTYPE="string"><VALUE>so</VALUE></PARAMVALUE></METHODRESPONSE>)"),
              std::string::npos)
        << out;
    std::string error;
    append_error_reply(error, envelope, 17, "d");
    EXPECT_NE(error.find(R"(<METHODRESPONSE NAME="Reset"><ERROR CODE="17" DESCRIPTION="d"></ERROR></METHODRESPONSE>)"),
              std::string::npos)
        << error;
}

TEST(CimXmlReplies, KeysStandAsTheClassDeclaresThem) {
    Object thing;
    thing.class_name = "T_Thing";
    thing.keys = {{"UP", "boolean", {true}}, {"Extra", "string", {std::string("e")}}};
    thing.properties = {{"number", "uint16", {std::uint64_t{7}}}};
    EXPECT_EQ(
        written(append_instance_name, thing),
        R"(<INSTANCENAME CLASSNAME="T_Thing"><KEYBINDING NAME="Number"><KEYVALUE VALUETYPE="numeric">7</KEYVALUE>)"
        R"(</KEYBINDING><KEYBINDING NAME="Up"><KEYVALUE VALUETYPE="boolean">TRUE</KEYVALUE></KEYBINDING>)"
        "</INSTANCENAME>");
}

TEST(CimXmlReplies, ReferenceKeysAreWholePathsOrLeftOut) {
    Object link;
    link.class_name = "T_Link";
    link.keys = {{"Other", "reference", {std::make_shared<const Object>(single("x"))}}, {"One", "reference", {}}};
    EXPECT_EQ(written(append_instance_name, link),
              "<INSTANCENAME CLASSNAME=\"T_Link\"><KEYBINDING NAME=\"Other\"><VALUE.REFERENCE>" + id_path +
                  "</VALUE.REFERENCE></KEYBINDING></INSTANCENAME>");
}

TEST(CimXmlReplies, ValuesThatCannotBeKeysAreLeftOut) {
    Object object = instance_of({});
    object.keys = {{"A", "instance", {std::make_shared<const Object>(single("x"))}},
                   {"B", "reference", {Value::Reference()}},
                   {"C", "string[]", {Value::Array{}}},
                   {"D", "string", {}}};
    EXPECT_EQ(written(append_instance_name, object), R"(<INSTANCENAME CLASSNAME="T_Unknown"></INSTANCENAME>)");
}

TEST(CimXmlReplies, PathsOwnHostAndNamespaceGoFirst) {
    Object object = single("x");
    object.host = "other";
    object.name_space = "a";
    EXPECT_NE(written(append_instance_path, object)
                  .find(R"(<HOST>other</HOST><LOCALNAMESPACEPATH><NAMESPACE NAME="a"></NAMESPACE></LOCAL)"),
              std::string::npos);
}

TEST(CimXmlReplies, NullPropertiesHaveBothTags) {
    EXPECT_EQ(property_element({"P", "uint8", {}}), R"(<PROPERTY NAME="P" TYPE="uint8"></PROPERTY>)");
    EXPECT_EQ(property_element({"P", "string[]", {}}), R"(<PROPERTY.ARRAY NAME="P" TYPE="string"></PROPERTY.ARRAY>)");
    EXPECT_EQ(property_element({"P", "reference", {}}), R"(<PROPERTY.REFERENCE NAME="P"></PROPERTY.REFERENCE>)");
    EXPECT_EQ(property_element({"P", "null", {}}), R"(<PROPERTY NAME="P" TYPE="string"></PROPERTY>)");
}

TEST(CimXmlReplies, UntypedNullHasTheDeclaredType) {
    Object thing;
    thing.class_name = "T_Thing";
    thing.properties = {{"Small", "null", {}}, {"texts", "null", {}}};
    EXPECT_EQ(written(append_instance, thing),
              R"(<INSTANCE CLASSNAME="T_Thing"><PROPERTY NAME="Small" TYPE="uint8"></PROPERTY>)"
              R"(<PROPERTY.ARRAY NAME="texts" TYPE="string"></PROPERTY.ARRAY></INSTANCE>)");
}

TEST(CimXmlReplies, ScalarsOfEveryTypeAtTheirExtremes) {
    const std::vector<std::pair<Property, std::string>> rows{
        {{"P", "boolean", {false}}, "FALSE"},
        {{"P", "uint8", {std::uint64_t{0}}}, "0"},
        {{"P", "uint64", {std::numeric_limits<std::uint64_t>::max()}}, "18446744073709551615"},
        {{"P", "sint64", {std::numeric_limits<std::int64_t>::min()}}, "-9223372036854775808"},
        {{"P", "real64", {1.0}}, "1.0"},
        {{"P", "real64", {0.1}}, "0.1"},
        {{"P", "real64", {1e300}}, "1.0e+300"},
        {{"P", "real64", {-2.5e-9}}, "-2.5e-09"},
        {{"P", "real64", {std::nan("")}}, "NaN"},
        {{"P", "real64", {-INFINITY}}, "-INF"},
        {{"P", "char16", {std::uint64_t{0x20ac}}}, "\xe2\x82\xac"},
        {{"P", "char16", {std::uint64_t{0xd800}}}, "\xef\xbf\xbd"},
        {{"P", "datetime", {std::string("20240101000000.000000+000")}}, "20240101000000.000000+000"},
        {{"P", "string", {std::string()}}, ""},
    };
    for (const auto& [property, text] : rows)
        EXPECT_EQ(property_element(property),
                  "<PROPERTY NAME=\"P\" TYPE=\"" + property.type + "\"><VALUE>" + text + "</VALUE></PROPERTY>");
}

TEST(CimXmlReplies, RealsReadBackAsTheSameNumber) {
    for (const double number : {std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::max(), 1.0 / 3,
                                123456789012345678.0, static_cast<double>(0.1F), -0.0}) {
        const std::string xml = property_element({"P", "real64", {number}});
        const std::size_t begin = xml.find("<VALUE>") + 7;
        EXPECT_EQ(std::strtod(xml.c_str() + begin, nullptr), number) << xml;
        EXPECT_NE(xml.find('.', begin), std::string::npos) << xml;
    }
}

TEST(CimXmlReplies, ArraysHaveNoNullElements) {
    EXPECT_EQ(property_element({"P", "string[]", {Value::Array{{std::string("a")}, {}, {std::string()}}}}),
              R"(<PROPERTY.ARRAY NAME="P" TYPE="string"><VALUE.ARRAY><VALUE>a</VALUE><VALUE></VALUE><VALUE></VALUE>)"
              "</VALUE.ARRAY></PROPERTY.ARRAY>");
    EXPECT_EQ(property_element({"P", "uint8[]", {Value::Array{{std::uint64_t{1}}, {}}}}),
              R"(<PROPERTY.ARRAY NAME="P" TYPE="uint8"><VALUE.ARRAY><VALUE>1</VALUE></VALUE.ARRAY></PROPERTY.ARRAY>)");
    EXPECT_EQ(property_element({"P", "uint8[]", {Value::Array{}}}),
              R"(<PROPERTY.ARRAY NAME="P" TYPE="uint8"><VALUE.ARRAY></VALUE.ARRAY></PROPERTY.ARRAY>)");
}

TEST(CimXmlReplies, ReferencesInPropertiesAreWholePaths) {
    EXPECT_EQ(property_element({"P", "reference", {std::make_shared<const Object>(single("x"))}}),
              "<PROPERTY.REFERENCE NAME=\"P\"><VALUE.REFERENCE>" + id_path + "</VALUE.REFERENCE></PROPERTY.REFERENCE>");
}

TEST(CimXmlReplies, EmbeddedInstancesAreEscapedXml) {
    EXPECT_EQ(
        property_element(
            {"P", "instance", {std::make_shared<const Object>(instance_of({{"Q", "string", {std::string("<")}}}))}}),
        R"(<PROPERTY NAME="P" TYPE="string" EmbeddedObject="instance"><VALUE>&lt;INSTANCE CLASSNAME=&quot;T_Unknown)"
        R"(&quot;&gt;&lt;PROPERTY NAME=&quot;Q&quot; TYPE=&quot;string&quot;&gt;&lt;VALUE&gt;&amp;lt;)"
        R"(&lt;/VALUE&gt;&lt;/PROPERTY&gt;&lt;/INSTANCE&gt;</VALUE></PROPERTY>)");
}

TEST(CimXmlReplies, ValueOfAnotherShapeBecomesNull) {
    EXPECT_EQ(property_element({"P", "uint8", {Value::Array{}}}), R"(<PROPERTY NAME="P" TYPE="uint8"></PROPERTY>)");
    EXPECT_EQ(property_element({"P", "reference", {std::string("x")}}),
              R"(<PROPERTY.REFERENCE NAME="P"></PROPERTY.REFERENCE>)");
}

TEST(CimXmlReplies, TextsAreEscapedAndNeverNumericReferences) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"a & b < c > d \" e '", "a &amp; b &lt; c &gt; d &quot; e '"},
        {"tab\tline\ncr\r", "tab\tline\ncr\r"},
        {std::string("nul\0bel\x07", 8), "nul\xef\xbf\xbd"
                                         "bel\xef\xbf\xbd"},
        {"\xc3\xa4 \xf0\x9f\x98\x80", "\xc3\xa4 \xf0\x9f\x98\x80"},
        {"\xef\xbf\xbe|\xef\xbf\xbf", "\xef\xbf\xbd|\xef\xbf\xbd"},
        {"\xff|\xc3", "\xef\xbf\xbd|\xef\xbf\xbd"},
        {"\xed\xa0\x80", "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"},
    };
    for (const auto& [text, escaped] : rows)
        EXPECT_EQ(property_element({"P", "string", {text}}),
                  "<PROPERTY NAME=\"P\" TYPE=\"string\"><VALUE>" + escaped + "</VALUE></PROPERTY>");
}

/// Long texts are looked at a word at a time, short ones byte by byte.
TEST(CimXmlReplies, TextsAreEscapedAtEveryPlace) {
    const std::string letters = "abcdefghijklmnopqrstuvw";
    for (unsigned code = 0; code < 256; ++code) {
        const std::string byte(1, static_cast<char>(code));
        std::string expected;
        append_escaped(expected, byte);
        for (std::size_t place = 0; place <= letters.size(); ++place) {
            std::string out;
            append_escaped(out, letters.substr(0, place) + byte + letters.substr(place));
            ASSERT_EQ(out, letters.substr(0, place) + expected + letters.substr(place)) << code << " at " << place;
        }
    }
}

TEST(CimXmlReplies, ClassesHaveQualifiersDefaultsAndReferences) {
    std::string out;
    append_class(out, *test_schema().find("T_Link"), {.qualifiers = false, .class_origin = true}, test_place());
    EXPECT_EQ(out,
              R"(<CLASS NAME="T_Link"><PROPERTY.REFERENCE NAME="One" REFERENCECLASS="T_Thing" CLASSORIGIN="T_Link">)"
              R"(</PROPERTY.REFERENCE><PROPERTY.REFERENCE NAME="Other" REFERENCECLASS="T_Single" )"
              R"(CLASSORIGIN="T_Link"></PROPERTY.REFERENCE></CLASS>)");
    out.clear();
    const std::vector<std::string> wanted{"NAME", "small"};
    append_class(out, *test_schema().find("T_Thing"), {.property_list = &wanted}, test_place());
    EXPECT_EQ(
        out,
        R"(<CLASS NAME="T_Thing"><PROPERTY NAME="Name" TYPE="string"><QUALIFIER NAME="Key" TYPE="boolean" )"
        R"(OVERRIDABLE="false"><VALUE>TRUE</VALUE></QUALIFIER><QUALIFIER NAME="MaxLen" TYPE="uint32"><VALUE>64</VALUE></QUALIFIER>)"
        R"(<QUALIFIER NAME="Description" TYPE="string"><VALUE>what it is called</VALUE></QUALIFIER></PROPERTY>)"
        R"(<PROPERTY NAME="Small" TYPE="uint8"><VALUE>7</VALUE></PROPERTY></CLASS>)");
}

TEST(CimXmlReplies, InheritedPropertiesArePropagatedOrLeftOut) {
    std::string out;
    append_class(out, *test_schema().find("T_Sub"), {.local_only = false, .qualifiers = false}, test_place());
    EXPECT_EQ(out, R"(<CLASS NAME="T_Sub" SUPERCLASS="T_Single"><PROPERTY NAME="Id" TYPE="string" PROPAGATED="true">)"
                   R"(</PROPERTY><PROPERTY NAME="Level" TYPE="sint32"></PROPERTY></CLASS>)");
    out.clear();
    append_class(out, *test_schema().find("T_Sub"), {.qualifiers = false}, test_place());
    EXPECT_EQ(out,
              R"(<CLASS NAME="T_Sub" SUPERCLASS="T_Single"><PROPERTY NAME="Level" TYPE="sint32"></PROPERTY></CLASS>)");
    out.clear();
    append_class_name(out, "T_Sub");
    append_class_path(out, "T_Sub", test_place());
    EXPECT_TRUE(out.starts_with(R"(<CLASSNAME NAME="T_Sub"></CLASSNAME><CLASSPATH><NAMESPACEPATH>)")) << out;
}

} // namespace

} // namespace cmpihost::cimxml
