// Classes, qualifiers and their declarations as elements: what each holds, and what each option leaves out.
#include "host/cimxml/write_qualifier.h"
#include "tests/host/cimxml/reply_text.h"

namespace cmpihost::cimxml {

namespace {

const mof::Schema& class_schema() {
    static const mof::Schema schema = std::get<mof::Schema>(mof::Schema::read_text("test.mof", R"(
        Qualifier Description : string, Scope(any), Flavor(Translatable);
        Qualifier Old : uint16[3] = {1, 2}, Scope(class, method), Flavor(Restricted, ToInstance);
        Qualifier Nothing : string, Scope(indication);
        [Description("a & b"), Abstract] class K_Top {
            [Key, Description("key")] string Id;
            [Description("an array")] sint8 Levels[2] = {-1, 2};
            [Description("starts")] uint32 Start([Description("one")] string a, K_Top REF b, uint8 c[3], K_Top REF d[]);
            boolean Stop();
        };
        [Old{3}] class K_Sub : K_Top {
            [Override("Id")] string Id = "none";
            [EmbeddedInstance("K_Top")] string Inner;
            [EmbeddedObject] string Objects[];
            [Override("Stop")] boolean Stop(uint16 seconds);
        };
        [Association] class K_Link { [Key] K_Top REF One; [Key] K_Top REF Other = "K_Sub.Id=\"x\""; };
    )"));
    return schema;
}

ReplyPlace class_place() {
    return {"host", "root/cimv2", class_schema()};
}

std::string class_element(const std::string& name, const ClassOptions& options) {
    std::string out;
    append_class(out, *class_schema().find(name), options, class_place());
    return out;
}

std::string declaration_element(const std::string& name) {
    std::string out;
    append_qualifier_declaration(out, *class_schema().qualifier(name), class_place());
    return out;
}

/// A QUALIFIER Description.
std::string description(const std::string& text, const std::string& attributes = "") {
    return R"(<QUALIFIER NAME="Description" TYPE="string")" + attributes + R"( TRANSLATABLE="true"><VALUE>)" + text +
           "</VALUE></QUALIFIER>";
}

const std::string from_above = R"( PROPAGATED="true")";

TEST(CimXmlClasses, HavePropertiesAndMethodsOfEveryShape) {
    EXPECT_EQ(class_element("K_Top", {}),
              R"(<CLASS NAME="K_Top">)" + description("a &amp; b") +
                  R"(<QUALIFIER NAME="Abstract" TYPE="boolean" TOSUBCLASS="false"><VALUE>TRUE</VALUE></QUALIFIER>)"
                  R"(<PROPERTY NAME="Id" TYPE="string"><QUALIFIER NAME="Key" TYPE="boolean" OVERRIDABLE="false">)"
                  "<VALUE>TRUE</VALUE></QUALIFIER>" +
                  description("key") + R"(</PROPERTY><PROPERTY.ARRAY NAME="Levels" TYPE="sint8" ARRAYSIZE="2">)" +
                  description("an array") +
                  "<VALUE.ARRAY><VALUE>-1</VALUE><VALUE>2</VALUE></VALUE.ARRAY></PROPERTY.ARRAY>"
                  R"(<METHOD NAME="Start" TYPE="uint32">)" +
                  description("starts") + R"(<PARAMETER NAME="a" TYPE="string">)" + description("one") +
                  R"(</PARAMETER><PARAMETER.REFERENCE NAME="b" REFERENCECLASS="K_Top"></PARAMETER.REFERENCE>)"
                  R"(<PARAMETER.ARRAY NAME="c" TYPE="uint8" ARRAYSIZE="3"></PARAMETER.ARRAY>)"
                  R"(<PARAMETER.REFARRAY NAME="d" REFERENCECLASS="K_Top"></PARAMETER.REFARRAY></METHOD>)"
                  R"(<METHOD NAME="Stop" TYPE="boolean"></METHOD></CLASS>)");
}

TEST(CimXmlClasses, LocalOnesHaveWhatTheyOverrideAndNoInheritedQualifier) {
    EXPECT_EQ(class_element("K_Sub", {}),
              R"(<CLASS NAME="K_Sub" SUPERCLASS="K_Top"><QUALIFIER NAME="Old" TYPE="uint16" TOSUBCLASS="false" )"
              R"(TOINSTANCE="true"><VALUE.ARRAY><VALUE>3</VALUE></VALUE.ARRAY></QUALIFIER>)"
              R"(<PROPERTY NAME="Id" TYPE="string"><QUALIFIER NAME="Override" TYPE="string" TOSUBCLASS="false">)"
              "<VALUE>Id</VALUE></QUALIFIER><VALUE>none</VALUE></PROPERTY>"
              R"(<PROPERTY NAME="Inner" TYPE="string" EmbeddedObject="instance">)"
              R"(<QUALIFIER NAME="EmbeddedInstance" TYPE="string"><VALUE>K_Top</VALUE></QUALIFIER></PROPERTY>)"
              R"(<PROPERTY.ARRAY NAME="Objects" TYPE="string"><QUALIFIER )"
              R"(NAME="EmbeddedObject" TYPE="boolean" OVERRIDABLE="false"><VALUE>TRUE</VALUE></QUALIFIER>)"
              R"(</PROPERTY.ARRAY><METHOD NAME="Stop" TYPE="boolean"><QUALIFIER NAME="Override" TYPE="string" )"
              R"(TOSUBCLASS="false"><VALUE>Stop</VALUE></QUALIFIER><PARAMETER NAME="seconds" TYPE="uint16">)"
              "</PARAMETER></METHOD></CLASS>");
}

TEST(CimXmlClasses, WholeOnesTellWhatIsPropagated) {
    const std::vector<std::string> wanted{"ID", "levels"};
    const std::string whole = class_element("K_Sub", {.local_only = false, .property_list = &wanted});
    EXPECT_TRUE(whole.starts_with(R"(<CLASS NAME="K_Sub" SUPERCLASS="K_Top"><QUALIFIER NAME="Old")")) << whole;
    for (
        const std::string& part :
        {description("a &amp; b", from_above) + R"(<PROPERTY NAME="Id" TYPE="string"><QUALIFIER NAME="Override")",
         R"(<QUALIFIER NAME="Key" TYPE="boolean" PROPAGATED="true" OVERRIDABLE="false"><VALUE>TRUE</VALUE></QUALIFIER>)" +
             description("key", from_above) + "<VALUE>none</VALUE></PROPERTY>",
         R"(<PROPERTY.ARRAY NAME="Levels" TYPE="sint8" ARRAYSIZE="2" PROPAGATED="true">)" +
             description("an array", from_above) + "<VALUE.ARRAY>",
         R"(<METHOD NAME="Start" TYPE="uint32" PROPAGATED="true">)" + description("starts", from_above) +
             R"(<PARAMETER NAME="a" TYPE="string">)" + description("one", from_above),
         std::string(R"(<METHOD NAME="Stop" TYPE="boolean"><QUALIFIER NAME="Override")")})
        EXPECT_NE(whole.find(part), std::string::npos) << part << "\n" << whole;
    EXPECT_EQ(whole.find("Inner"), std::string::npos);
}

TEST(CimXmlClasses, OriginIsTheClassThatDeclaredItFirst) {
    const ClassOptions options{.local_only = false, .qualifiers = false, .class_origin = true};
    EXPECT_EQ(class_element("K_Sub", options),
              R"(<CLASS NAME="K_Sub" SUPERCLASS="K_Top"><PROPERTY NAME="Id" TYPE="string" CLASSORIGIN="K_Top">)"
              R"(<VALUE>none</VALUE></PROPERTY><PROPERTY.ARRAY NAME="Levels" TYPE="sint8" ARRAYSIZE="2" )"
              R"(CLASSORIGIN="K_Top" PROPAGATED="true"><VALUE.ARRAY><VALUE>-1</VALUE><VALUE>2</VALUE></VALUE.ARRAY>)"
              R"(</PROPERTY.ARRAY><PROPERTY NAME="Inner" TYPE="string" CLASSORIGIN="K_Sub" EmbeddedObject="instance">)"
              R"(</PROPERTY><PROPERTY.ARRAY NAME="Objects" TYPE="string" CLASSORIGIN="K_Sub">)"
              "</PROPERTY.ARRAY>"
              R"(<METHOD NAME="Start" TYPE="uint32" CLASSORIGIN="K_Top" PROPAGATED="true">)"
              R"(<PARAMETER NAME="a" TYPE="string"></PARAMETER>)"
              R"(<PARAMETER.REFERENCE NAME="b" REFERENCECLASS="K_Top"></PARAMETER.REFERENCE>)"
              R"(<PARAMETER.ARRAY NAME="c" TYPE="uint8" ARRAYSIZE="3"></PARAMETER.ARRAY>)"
              R"(<PARAMETER.REFARRAY NAME="d" REFERENCECLASS="K_Top"></PARAMETER.REFARRAY></METHOD>)"
              R"(<METHOD NAME="Stop" TYPE="boolean" CLASSORIGIN="K_Top"><PARAMETER NAME="seconds" TYPE="uint16">)"
              "</PARAMETER></METHOD></CLASS>");
}

TEST(CimXmlClasses, DefaultOfAReferenceIsLeftOut) {
    EXPECT_EQ(class_element("K_Link", {.qualifiers = false}),
              R"(<CLASS NAME="K_Link"><PROPERTY.REFERENCE NAME="One" REFERENCECLASS="K_Top"></PROPERTY.REFERENCE>)"
              R"(<PROPERTY.REFERENCE NAME="Other" REFERENCECLASS="K_Top"></PROPERTY.REFERENCE></CLASS>)");
}

TEST(CimXmlClasses, QualifierDeclarationsHaveScopesFlavorsAndDefaults) {
    EXPECT_EQ(declaration_element("Old"),
              R"(<QUALIFIER.DECLARATION NAME="Old" TYPE="uint16" ISARRAY="true" ARRAYSIZE="3" TOSUBCLASS="false" )"
              R"(TOINSTANCE="true"><SCOPE CLASS="true" METHOD="true"></SCOPE><VALUE.ARRAY><VALUE>1</VALUE>)"
              "<VALUE>2</VALUE></VALUE.ARRAY></QUALIFIER.DECLARATION>");
    EXPECT_EQ(declaration_element("Description"),
              R"(<QUALIFIER.DECLARATION NAME="Description" TYPE="string" ISARRAY="false" TRANSLATABLE="true">)"
              R"(<SCOPE CLASS="true" ASSOCIATION="true" INDICATION="true" PROPERTY="true" REFERENCE="true" )"
              R"(METHOD="true" PARAMETER="true"></SCOPE></QUALIFIER.DECLARATION>)");
    EXPECT_EQ(declaration_element("Key"),
              R"(<QUALIFIER.DECLARATION NAME="Key" TYPE="boolean" ISARRAY="false" OVERRIDABLE="false"><SCOPE )"
              R"(PROPERTY="true" REFERENCE="true"></SCOPE><VALUE>FALSE</VALUE></QUALIFIER.DECLARATION>)");
    EXPECT_EQ(declaration_element("Nothing"),
              R"(<QUALIFIER.DECLARATION NAME="Nothing" TYPE="string" ISARRAY="false"><SCOPE INDICATION="true">)"
              "</SCOPE></QUALIFIER.DECLARATION>");
}

} // namespace

} // namespace cmpihost::cimxml
