// Operations on one instance, and queries.
#include "tests/host/server/service_test.h"

namespace cmpihost::server {
namespace {

std::string thing_instance() {
    return R"(<INSTANCE CLASSNAME="Test_Thing"><PROPERTY NAME="Name" TYPE="string"><VALUE>new</VALUE></PROPERTY>)"
           R"(<PROPERTY NAME="Number" TYPE="uint32"><VALUE>4</VALUE></PROPERTY></INSTANCE>)";
}

std::string named(const std::string& instance, const std::string& class_name = "Test_Thing") {
    return "<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"" + class_name + "\">" + thing_keys() + "</INSTANCENAME>" +
           instance + "</VALUE.NAMEDINSTANCE>";
}

class InstanceOperations : public ServiceTest {
  protected:
    Heard query(const std::string& text) {
        return ask("ExecQuery", text_parameter("QueryLanguage", "WQL") + text_parameter("Query", text));
    }
    Heard property(const std::string& name, const std::string& class_name = "Test_Thing") {
        return ask("GetProperty",
                   instance_parameter("InstanceName", class_name, thing_keys()) + text_parameter("PropertyName", name));
    }
};

TEST_F(InstanceOperations, CreatedInstanceHasAName) {
    const Heard heard = ask("CreateInstance", cimxml::parameter("NewInstance", thing_instance()));
    EXPECT_EQ(ending(heard), "ok 1");
    EXPECT_EQ(heard.within("IRETURNVALUE"),
              R"(<INSTANCENAME CLASSNAME="Test_Thing"><KEYBINDING NAME="Name"><KEYVALUE VALUETYPE="string">new)"
              R"(</KEYVALUE></KEYBINDING><KEYBINDING NAME="Number"><KEYVALUE VALUETYPE="numeric">4</KEYVALUE>)"
              R"(</KEYBINDING></INSTANCENAME>)");
}

TEST_F(InstanceOperations, CreatingWhatNobodyServesIsNotSupported) {
    EXPECT_EQ(ending(ask("CreateInstance",
                         cimxml::parameter("NewInstance", "<INSTANCE CLASSNAME=\"Test_Unserved\"></INSTANCE>"))),
              "7 no provider serves Test_Unserved");
    EXPECT_EQ(ending(ask("CreateInstance", cimxml::parameter("NewInstance", "<INSTANCE CLASSNAME=\"X\"></INSTANCE>"))),
              "5 there is no class X in namespace root/cimv2");
}

TEST_F(InstanceOperations, ModifyingReturnsNothing) {
    const Heard heard = ask("ModifyInstance", cimxml::parameter("ModifiedInstance", named(thing_instance())));
    EXPECT_EQ(ending(heard), "ok 0");
    EXPECT_EQ(heard.count("IRETURNVALUE"), 0U);
    EXPECT_EQ(heard.count("<IMETHODRESPONSE NAME=\"ModifyInstance\"></IMETHODRESPONSE>"), 1U) << heard.body;
}

TEST_F(InstanceOperations, DeletingIsWhatTheProviderSays) {
    EXPECT_EQ(ending(ask("DeleteInstance", instance_parameter("InstanceName", "Test_Thing", thing_keys()))),
              "7 NOT_SUPPORTED");
    EXPECT_EQ(ending(ask("DeleteInstance", instance_parameter("InstanceName", "X", ""))),
              "5 there is no class X in namespace root/cimv2");
}

TEST_F(InstanceOperations, QueryGoesToTheClassAfterFrom) {
    const Heard heard = query("select *\n from  test_echo where Id=1");
    EXPECT_EQ(ending(heard), "ok 1");
    EXPECT_NE(heard.body.find("<VALUE>select *\n from  test_echo where Id=1</VALUE>"), std::string::npos) << heard.body;
    EXPECT_NE(heard.body.find("<PROPERTY NAME=\"Language\" TYPE=\"string\"><VALUE>WQL</VALUE>"), std::string::npos);
    EXPECT_NE(heard.body.find("<VALUE>root/cimv2:Test_Echo</VALUE>"), std::string::npos);
    EXPECT_EQ(heard.count("<VALUE.OBJECTWITHPATH>"), 1U);
}

TEST_F(InstanceOperations, QueryOfNoClassIsRefused) {
    EXPECT_EQ(ending(query("select * from")), "15 the query names no class, expected SELECT ... FROM CLASS");
    EXPECT_EQ(ending(query("")), "15 the query names no class, expected SELECT ... FROM CLASS");
    EXPECT_EQ(ending(query("select * from X")), "5 there is no class X in namespace root/cimv2");
}

TEST_F(InstanceOperations, PropertyIsThatOfTheInstance) {
    EXPECT_EQ(property("text").within("IRETURNVALUE"), "<VALUE>tab\there</VALUE>");
    EXPECT_EQ(property("List").within("IRETURNVALUE"), "<VALUE.ARRAY><VALUE>7</VALUE></VALUE.ARRAY>");
    EXPECT_EQ(property("Missing").within("IRETURNVALUE"), "");
    EXPECT_EQ(ending(property("Missing")), "ok 0");
}

TEST_F(InstanceOperations, PropertyThatIsNotDeclaredIsUnknown) {
    EXPECT_EQ(ending(property("None")), "12 Test_Thing has no property None");
    EXPECT_EQ(ending(property("Name", "Test_Unserved")), "6 there is no such instance");
    EXPECT_EQ(ending(property("Name", "Test_Refused")), "5 no class Test_Refused");
}

TEST_F(InstanceOperations, PropertiesAreNotSet) {
    EXPECT_EQ(ending(ask("SetProperty", instance_parameter("InstanceName", "Test_Thing", thing_keys()) +
                                            text_parameter("PropertyName", "Text"))),
              "7 SetProperty is not supported");
}

// ------------------------------------------------------------------------------------------------------ methods

class Methods : public ServiceTest {
  protected:
    static std::string value(const std::string& name, const std::string& type, const std::string& text) {
        return "<PARAMVALUE NAME=\"" + name + "\" PARAMTYPE=\"" + type + "\"><VALUE>" + text + "</VALUE></PARAMVALUE>";
    }

    Heard call(const std::string& method, const std::string& target, const std::string& header,
               const std::string& parameters = {}) {
        const std::string path =
            R"(<LOCALNAMESPACEPATH><NAMESPACE NAME="root"/><NAMESPACE NAME="cimv2"/></LOCALNAMESPACEPATH>)" + target;
        const std::string element = target.starts_with("<CLASSNAME") ? "LOCALCLASSPATH" : "LOCALINSTANCEPATH";
        return ask_body(service(), method, "root/cimv2:" + header,
                        cimxml::message("<METHODCALL NAME=\"" + method + "\"><" + element + ">" + path + "</" +
                                        element + ">" + parameters + "</METHODCALL>"));
    }
    Heard call_thing(const std::string& method, const std::string& parameters = {}) {
        return call(method, "<INSTANCENAME CLASSNAME=\"test_thing\">" + thing_keys() + "</INSTANCENAME>",
                    "Test_Thing.Number=1,Name=\"thing 1\"", parameters);
    }
    Heard call_class(const std::string& method, const std::string& name) {
        return call(method, "<CLASSNAME NAME=\"" + name + "\"/>", name);
    }
};

TEST_F(Methods, ReturnWhatTheProviderDoes) {
    const Heard heard = call_thing("add", value("A", "uint64", "2") + value("B", "uint64", "3"));
    EXPECT_EQ(ending(heard), "ok 0");
    EXPECT_EQ(heard.body.substr(heard.body.find("<METHODRESPONSE")),
              R"(<METHODRESPONSE NAME="add"><RETURNVALUE PARAMTYPE="uint64"><VALUE>5</VALUE></RETURNVALUE>)"
              R"(<PARAMVALUE NAME="Text" PARAMTYPE="string"><VALUE>2 and 3</VALUE></PARAMVALUE>)"
              R"(<PARAMVALUE NAME="Where" PARAMTYPE="string"><VALUE>root/cimv2:Test_Thing.Name=&quot;thing 1&quot;,)"
              R"(Number=1</VALUE></PARAMVALUE></METHODRESPONSE></SIMPLERSP></MESSAGE></CIM>)"
              "\n");
}

TEST_F(Methods, OfAClassAreCalled) {
    const Heard heard = call_class("Quiet", "Test_Thing");
    EXPECT_EQ(ending(heard), "ok 0");
    EXPECT_EQ(heard.count("<METHODRESPONSE NAME=\"Quiet\"></METHODRESPONSE>"), 1U) << heard.body;
}

TEST_F(Methods, ThatAreNotDeclaredAreNotFound) {
    const Heard heard = call_thing("Guess");
    EXPECT_EQ(ending(heard), "17 Test_Thing has no method Guess");
    EXPECT_EQ(heard.count("<METHODRESPONSE NAME=\"Guess\"><ERROR "), 1U) << heard.body;
}

TEST_F(Methods, ThatTheProviderDoesNotKnowAreNotFound) {
    EXPECT_EQ(ending(call_thing("Declared")), "17 METHOD_NOT_FOUND");
}

TEST_F(Methods, OfNobodyAreNotAvailable) {
    use_registration(stanza("Test_Thing", "instance"));
    EXPECT_EQ(ending(call_thing("Quiet")), "16 no provider serves the methods of Test_Thing");
    made.reset();
    use_registration(stanza("Test_Thing", "instance method", "Half"));
    EXPECT_EQ(ending(call_thing("Quiet")), "16 METHOD_NOT_AVAILABLE");
}

TEST_F(Methods, OfAnUnknownClassAreInvalid) {
    EXPECT_EQ(ending(call_class("Quiet", "X")), "5 there is no class X in namespace root/cimv2");
}

TEST_F(Methods, OfATargetThatIsRefusedTellWhy) {
    const Heard heard =
        call("Quiet", "<INSTANCENAME CLASSNAME=\"Test_Thing\">" + thing_keys() + thing_keys() + "</INSTANCENAME>",
             "Test_Thing.Number=1,Name=\"thing 1\"");
    EXPECT_EQ(ending(heard), "4 key Name is there twice, expected once");
    EXPECT_EQ(heard.count("<METHODRESPONSE NAME=\"Quiet\"><ERROR "), 1U) << heard.body;
    ASSERT_EQ(heard.subjects.size(), 1U);
    EXPECT_EQ(heard.subjects[0].class_name, "Test_Thing");
}

TEST_F(Methods, HeaderUnlikeTheTargetIsRefused) {
    EXPECT_EQ(ending(call("Quiet", "<CLASSNAME NAME=\"Test_Thing\"/>", "Test_Echo")), "http 400 header-mismatch");
    EXPECT_EQ(ending(call("Quiet", "<CLASSNAME NAME=\"Test_Thing\"/>", "")), "http 400 header-mismatch");
}

} // namespace
} // namespace cmpihost::server
