// Every operation, every shape of a parameter, and keys as clients send them.
#include "host/cim/path_text.h"
#include "tests/host/cimxml/request_text.h"

#include <limits>

namespace cmpihost::cimxml {

namespace {

std::string value(const std::string& text) {
    return "<VALUE>" + text + "</VALUE>";
}

std::string instance_name(const std::string& keys = key("Id", "", "x"), const std::string& class_name = "T_Single") {
    return "<INSTANCENAME CLASSNAME=\"" + class_name + "\">" + keys + "</INSTANCENAME>";
}

const std::string host_path = R"(<NAMESPACEPATH><HOST>h</HOST><LOCALNAMESPACEPATH><NAMESPACE NAME="root"/>)"
                              R"(<NAMESPACE NAME="a"/></LOCALNAMESPACEPATH></NAMESPACEPATH>)";

/// The path that GetInstance is asked for, as text.
std::string path_of(const std::string& body) {
    const Call call = call_of(body);
    const Object* path = argument<Object>(call, "InstanceName");
    return path == nullptr ? "(none)" : path_text(*path);
}

struct OperationCase {
    const char* operation;
    std::string parameters;
};

TEST(CimXmlRequests, EveryOperationIsReadWithItsParameters) {
    const std::string context = parameter("EnumerationContext", value("7"));
    const std::string name = parameter("InstanceName", instance_name());
    const std::string object = parameter("ObjectName", instance_name());
    const std::string pull = context + parameter("MaxObjectCount", value("10"));
    const std::string open = parameter("OperationTimeout", value("60")) + parameter("MaxObjectCount", value("5")) +
                             parameter("ContinueOnError", value("false"));
    const std::string roles = class_parameter("ResultClass") + parameter("Role", value("One"));
    const std::string far = roles + class_parameter("AssocClass", "T_Link") + parameter("ResultRole", value("Other"));
    const std::string shown = parameter("IncludeQualifiers", value("true")) +
                              parameter("IncludeClassOrigin", value("TRUE")) + parameter("PropertyList", "");
    const std::string declared =
        parameter("QualifierDeclaration", R"(<QUALIFIER.DECLARATION NAME="Q" TYPE="string"/>)");
    const std::string instance = R"(<INSTANCE CLASSNAME="T_Single"/>)";
    const std::vector<OperationCase> cases{
        {"EnumerateInstanceNames", class_parameter()},
        {"EnumerateInstances", class_parameter() + shown + parameter("DeepInheritance", value("False"))},
        {"GetInstance", name + shown + parameter("LocalOnly", value("FALSE"))},
        {"Associators", object + far + shown},
        {"References", object + roles + shown},
        {"AssociatorNames", object + far},
        {"ReferenceNames", object + roles},
        {"GetClass", class_parameter() + shown},
        {"EnumerateClasses", ""},
        {"EnumerateClassNames", parameter("DeepInheritance", value("true"))},
        {"OpenEnumerateInstances", class_parameter() + open},
        {"OpenAssociatorInstances", name + far + open},
        {"OpenReferenceInstances", name + roles + open},
        {"PullInstancesWithPath", pull},
        {"OpenEnumerateInstancePaths", class_parameter() + open},
        {"OpenAssociatorInstancePaths", name + far + open},
        {"OpenReferenceInstancePaths", name + roles + open},
        {"PullInstancePaths", pull},
        {"PullInstances", pull},
        {"OpenQueryInstances", parameter("FilterQueryLanguage", value("WQL")) + parameter("FilterQuery", value("q"))},
        {"CloseEnumeration", context},
        {"EnumerationCount", context},
        {"ExecQuery", parameter("QueryLanguage", value("WQL")) + parameter("Query", value("select"))},
        {"GetProperty", name + parameter("PropertyName", value("Id"))},
        {"SetProperty", name + parameter("PropertyName", value("Id")) + parameter("NewValue", value("y"))},
        {"CreateInstance", parameter("NewInstance", instance)},
        {"ModifyInstance", parameter("ModifiedInstance",
                                     "<VALUE.NAMEDINSTANCE>" + instance_name() + instance + "</VALUE.NAMEDINSTANCE>")},
        {"DeleteInstance", name},
        {"CreateClass", parameter("NewClass", R"(<CLASS NAME="N"/>)")},
        {"ModifyClass", parameter("ModifiedClass", R"(<CLASS NAME="N"/>)")},
        {"DeleteClass", class_parameter()},
        {"EnumerateQualifiers", ""},
        {"GetQualifier", parameter("QualifierName", value("Key"))},
        {"SetQualifier", declared},
        {"DeleteQualifier", parameter("QualifierName", value("Key"))},
    };
    for (const OperationCase& each : cases) {
        const Call call = call_of(intrinsic(each.operation, each.parameters));
        EXPECT_EQ(call.envelope.operation, each.operation);
        EXPECT_EQ(call.parameters.empty(), each.parameters.empty()) << each.operation;
    }
}

TEST(CimXmlRequests, EnvelopeIsKeptAsSent) {
    const Call call = call_of(intrinsic("getCLASS", class_parameter()));
    EXPECT_EQ(call.envelope.message_id, "42");
    EXPECT_EQ(call.envelope.protocol_version, "1.0");
    EXPECT_EQ(call.envelope.operation, "getCLASS");
    EXPECT_EQ(call.envelope.name_space, "root/cimv2");
    EXPECT_FALSE(call.envelope.target);
    ASSERT_NE(argument<ClassName>(call, "classname"), nullptr);
    EXPECT_EQ(argument<ClassName>(call, "classname")->name, "T_Thing");
}

TEST(CimXmlRequests, BooleansAreReadInAnyCase) {
    for (const auto& [text, truth] : {std::pair{"TRUE", true}, {"true", true}, {" True\n", true}, {"FALSE", false}}) {
        const Call call =
            call_of(intrinsic("EnumerateInstances", class_parameter() + parameter("localonly", value(text))));
        ASSERT_NE(argument<bool>(call, "LocalOnly"), nullptr) << text;
        EXPECT_EQ(*argument<bool>(call, "LocalOnly"), truth) << text;
    }
}

TEST(CimXmlRequests, AbsentPropertyListIsAllAndEmptyIsNone) {
    const auto list = [](const std::string& parameters) {
        return call_of(intrinsic("EnumerateInstances", class_parameter() + parameters));
    };
    EXPECT_EQ(argument<std::vector<std::string>>(list(""), "PropertyList"), nullptr);
    EXPECT_EQ(argument<std::vector<std::string>>(list(parameter("PropertyList", "")), "PropertyList"), nullptr);
    const Call none = list(parameter("PropertyList", "<VALUE.ARRAY/>"));
    ASSERT_NE(argument<std::vector<std::string>>(none, "PropertyList"), nullptr);
    EXPECT_TRUE(argument<std::vector<std::string>>(none, "PropertyList")->empty());
    const Call two = list(parameter("PropertyList", "<VALUE.ARRAY>" + value("A") + value("b") + "</VALUE.ARRAY>"));
    ASSERT_NE(argument<std::vector<std::string>>(two, "PropertyList"), nullptr);
    EXPECT_EQ(*argument<std::vector<std::string>>(two, "PropertyList"), (std::vector<std::string>{"A", "b"}));
}

TEST(CimXmlRequests, ObjectNameIsClassOrInstance) {
    const auto read = [](const std::string& content) {
        return call_of(intrinsic("AssociatorNames", parameter("ObjectName", content)));
    };
    EXPECT_NE(argument<ClassName>(read("<CLASSNAME NAME=\"T_Single\"/>"), "ObjectName"), nullptr);
    EXPECT_NE(argument<Object>(read(instance_name()), "ObjectName"), nullptr);
    EXPECT_NE(argument<Object>(read(instance_name("")), "ObjectName"), nullptr);
    EXPECT_NE(argument<Object>(read("<VALUE.REFERENCE>" + instance_name() + "</VALUE.REFERENCE>"), "ObjectName"),
              nullptr);
}

TEST(CimXmlRequests, KeysOfTypeAndValueTypeAreRead) {
    EXPECT_EQ(path_of(name_request(key("Name", R"( VALUETYPE="string" TYPE="string")", "a &lt;&amp;&quot; b") +
                                   key("Number", R"( VALUETYPE="numeric" TYPE="uint16")", "17") +
                                   key("Up", R"( VALUETYPE="boolean" TYPE="boolean")", "TRUE"))),
              R"(T_Thing.Name="a <&\" b",Number=17,Up=TRUE)");
}

TEST(CimXmlRequests, KeysTakeTheirTypeFromTheClass) {
    // As a client sends them that guesses the type from the text.
    EXPECT_EQ(path_of(name_request(key("name", R"( VALUETYPE="numeric")", "007") +
                                   key("NUMBER", R"( VALUETYPE="string")", "0x11") + key("Up", "", "false"))),
              R"(T_Thing.name="007",NUMBER=17,Up=FALSE)");
}

TEST(CimXmlRequests, KeyThatDoesNotFitItsTypeKeepsItsText) {
    EXPECT_EQ(path_of(name_request(key("Number", R"( VALUETYPE="string")", "seventeen"))),
              R"(T_Thing.Number="seventeen")");
    EXPECT_EQ(path_of(name_request(key("Number", R"( VALUETYPE="numeric")", "70000"))), "T_Thing.Number=70000");
}

TEST(CimXmlRequests, KeysOfUnknownClassesAreGuessed) {
    struct Row {
        const char* text;
        const char* type;
        Value value;
    };
    const std::vector<Row> rows{{"18446744073709551615", "uint64", {std::numeric_limits<std::uint64_t>::max()}},
                                {"-9223372036854775808", "sint64", {std::numeric_limits<std::int64_t>::min()}},
                                {"0xFf", "uint64", {std::uint64_t{255}}},
                                {"010", "uint64", {std::uint64_t{10}}},
                                {"1.5e3", "real64", {1500.0}},
                                {"18446744073709551616", "real64", {18446744073709551616.0}}};
    for (const Row& row : rows) {
        const Call call = call_of(name_request(key("K", R"( VALUETYPE="numeric")", row.text), "X_Unknown"));
        const Object* path = argument<Object>(call, "InstanceName");
        ASSERT_NE(path, nullptr);
        EXPECT_EQ(path->keys.front(), (Property{"K", row.type, row.value})) << row.text;
    }
    EXPECT_EQ(answer_of(name_request(key("K", R"( VALUETYPE="numeric")", "x"), "X_Unknown")), "400 request-not-valid");
    EXPECT_EQ(answer_of(name_request(key("K", R"( VALUETYPE="boolean")", "x"), "X_Unknown")), "400 request-not-valid");
    EXPECT_EQ(answer_of(name_request(key("K", R"( VALUETYPE="date")", "x"), "X_Unknown")), "400 request-not-valid");
}

TEST(CimXmlRequests, KeysThatAreNotEscapedAreReadAsTheyAre) {
    EXPECT_EQ(path_of(name_request(key("Id", "", "a & b &c; \"q\""), "T_Single")), R"(T_Single.Id="a & b &c; \"q\"")");
}

TEST(CimXmlRequests, BlanksCommentsAndSectionsInKeysStay) {
    EXPECT_EQ(path_of(name_request(key("Id", "", "  "), "T_Single")), R"(T_Single.Id="  ")");
    EXPECT_EQ(path_of(name_request(key("Id", "", "a<!-- x -->b<![CDATA[<&amp;>]]>"), "T_Single")),
              R"(T_Single.Id="ab<&amp;>")");
    EXPECT_EQ(path_of(name_request(key("Id", "", "a\r\nb\rc&#13;"), "T_Single")), "T_Single.Id=\"a\nb\nc\r\"");
}

TEST(CimXmlRequests, SingleUnnamedKeyIsTheOnlyKey) {
    EXPECT_EQ(path_of(name_request("<KEYVALUE>x</KEYVALUE>", "T_Single")), R"(T_Single.Id="x")");
}

TEST(CimXmlRequests, ReferencesInKeysAreReadInEveryForm) {
    const auto link = [](const std::string& path) {
        return path_of(name_request(
            "<KEYBINDING NAME=\"Other\"><VALUE.REFERENCE>" + path + "</VALUE.REFERENCE></KEYBINDING>", "T_Link"));
    };
    EXPECT_EQ(link(instance_name()), R"(T_Link.Other="T_Single.Id=\"x\"")");
    EXPECT_EQ(link("<INSTANCEPATH>" + host_path + instance_name() + "</INSTANCEPATH>"),
              R"(T_Link.Other="//h/root/a:T_Single.Id=\"x\"")");
    EXPECT_EQ(link(R"(<LOCALINSTANCEPATH><LOCALNAMESPACEPATH><NAMESPACE NAME="a"/></LOCALNAMESPACEPATH>)" +
                   instance_name() + "</LOCALINSTANCEPATH>"),
              R"(T_Link.Other="a:T_Single.Id=\"x\"")");
    EXPECT_EQ(link("<CLASSNAME NAME=\"C\"/>"), R"(T_Link.Other="C")");
}

TEST(CimXmlRequests, InstancesAreReadWithTypedProperties) {
    const Call call = call_of(intrinsic(
        "CreateInstance",
        parameter(
            "NewInstance",
            R"(<INSTANCE CLASSNAME="T_Thing"><QUALIFIER NAME="Q" TYPE="boolean"><VALUE>TRUE</VALUE></QUALIFIER>)"
            R"(<PROPERTY NAME="Small" TYPE="uint8"><VALUE>255</VALUE></PROPERTY>)"
            R"(<PROPERTY NAME="None" TYPE="sint8"/>)"
            R"(<PROPERTY.ARRAY NAME="Texts" TYPE="string"><VALUE.ARRAY><VALUE>a</VALUE><VALUE.NULL/></VALUE.ARRAY>)"
            R"(</PROPERTY.ARRAY><PROPERTY NAME="C" TYPE="char16"><VALUE>&#8364;</VALUE></PROPERTY></INSTANCE>)")));
    const Object* instance = argument<Object>(call, "NewInstance");
    ASSERT_NE(instance, nullptr);
    ASSERT_EQ(instance->properties.size(), 4U);
    EXPECT_EQ(instance->properties[0], (Property{"Small", "uint8", {std::uint64_t{255}}}));
    EXPECT_EQ(instance->properties[1], (Property{"None", "sint8", {}}));
    EXPECT_EQ(instance->properties[2], (Property{"Texts", "string[]", {Value::Array{{std::string("a")}, {}}}}));
    EXPECT_EQ(instance->properties[3], (Property{"C", "char16", {std::uint64_t{0x20ac}}}));
}

TEST(CimXmlRequests, PropertyBeyondItsTypeIsNotValid) {
    for (const auto& [type, text] : {std::pair{"uint8", "256"},
                                     {"sint8", "-129"},
                                     {"uint64", "-1"},
                                     {"boolean", "2"},
                                     {"char16", "ab"},
                                     {"real32", "x"},
                                     {"sint64", "9223372036854775808"},
                                     {"uint128", "1"}})
        EXPECT_EQ(
            answer_of(intrinsic("CreateInstance",
                                parameter("NewInstance", "<INSTANCE CLASSNAME=\"T\"><PROPERTY NAME=\"P\" TYPE=\"" +
                                                             std::string(type) + "\">" + value(text) +
                                                             "</PROPERTY></INSTANCE>"))),
            "400 request-not-valid")
            << type << ' ' << text;
}

TEST(CimXmlRequests, ModifiedInstanceHasKeysAndProperties) {
    const Call call = call_of(
        intrinsic("ModifyInstance",
                  parameter("ModifiedInstance",
                            "<VALUE.NAMEDINSTANCE>" + instance_name() +
                                R"(<INSTANCE CLASSNAME="T_Single"><PROPERTY NAME="P" TYPE="string"/></INSTANCE>)"
                                "</VALUE.NAMEDINSTANCE>")));
    const Object* instance = argument<Object>(call, "ModifiedInstance");
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ(instance->keys, (std::vector<Property>{{"Id", "string", {std::string("x")}}}));
    EXPECT_EQ(instance->properties.size(), 1U);
}

TEST(CimXmlRequests, MethodHasTargetAndTypedParameters) {
    const std::string path = R"(<LOCALNAMESPACEPATH><NAMESPACE NAME="root"/></LOCALNAMESPACEPATH>)";
    const Call call = call_of(message("<METHODCALL NAME=\"Reset\"><LOCALINSTANCEPATH>" + path + instance_name() +
                                      "</LOCALINSTANCEPATH><PARAMVALUE NAME=\"Hard\" PARAMTYPE=\"boolean\">" +
                                      value("true") + "</PARAMVALUE><PARAMVALUE NAME=\"Why\"/></METHODCALL>"));
    EXPECT_EQ(call.envelope.name_space, "root");
    ASSERT_TRUE(call.envelope.target);
    EXPECT_EQ(path_text(std::get<Object>(*call.envelope.target)), R"(root:T_Single.Id="x")");
    ASSERT_EQ(call.method_parameters.size(), 2U);
    EXPECT_EQ(call.method_parameters[0], (Property{"Hard", "boolean", {true}}));
    EXPECT_EQ(call.method_parameters[1], (Property{"Why", "string", {}}));
    const Call on_class = call_of(message("<METHODCALL NAME=\"Reset\"><LOCALCLASSPATH>" + path +
                                          "<CLASSNAME NAME=\"T_Single\"/></LOCALCLASSPATH></METHODCALL>"));
    ASSERT_TRUE(on_class.envelope.target);
    EXPECT_EQ(std::get<ClassName>(*on_class.envelope.target).name, "T_Single");
}

} // namespace

} // namespace cmpihost::cimxml
