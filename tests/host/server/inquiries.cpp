// Which classes are asked, and how what they answer is put together.
#include "tests/host/server/service_test.h"

namespace cmpihost::server {
namespace {

using cimxml::class_parameter;

std::string boolean(const std::string& name, const std::string& value) {
    return text_parameter(name, value);
}

class Inquiries : public ServiceTest {
  protected:
    static std::string property(const std::string& name, const std::string& type, const std::string& value) {
        return "<PROPERTY NAME=\"" + name + "\" TYPE=\"" + type + "\"><VALUE>" + value + "</VALUE></PROPERTY>";
    }
};

TEST_F(Inquiries, AskForAClassGivesItsInstances) {
    const Heard heard = enumerate("Test_Thing");
    EXPECT_EQ(ending(heard), "ok 3");
    EXPECT_EQ(heard.count("<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"Test_Thing\">"), 3U);
    EXPECT_EQ(ending(ask("EnumerateInstanceNames", of_class("Test_Thing"))), "ok 3");
}

TEST_F(Inquiries, ClassIsFoundInAnyCase) {
    EXPECT_EQ(ending(enumerate("TEST_thing")), "ok 3");
    EXPECT_EQ(ending(ask("enumerateINSTANCES", of_class("Test_Thing"))), "ok 3");
    EXPECT_NE(
        ask("enumerateINSTANCES", of_class("Test_Thing")).body.find("<IMETHODRESPONSE NAME=\"enumerateINSTANCES\">"),
        std::string::npos);
}

TEST_F(Inquiries, AskForASuperclassAsksForEverySubclass) {
    use_registration(stanza("Test_Thing", "instance") + stanza("Test_Results", "instance"));
    const Heard heard = enumerate("Test_Base");
    EXPECT_EQ(ending(heard), "ok 3"); // the one of Test_Results is the first thing
}

TEST_F(Inquiries, SubclassThatFailsIsNoted) {
    const Heard heard = enumerate("Test_Base");
    EXPECT_EQ(ending(heard), "ok 3");
    ASSERT_EQ(heard.outcome.notes.size(), 4U);
    EXPECT_EQ(heard.outcome.notes[3], "Test_Broken: error 1, broke off");
}

TEST_F(Inquiries, SubclassThatIsNotSupportedIsNotNoted) {
    use_registration(stanza("Test_Pair", "instance") + stanza("Test_Pair2", "instance"));
    const Heard heard = ask("EnumerateInstanceNames", of_class("Test_Tie"));
    EXPECT_EQ(ending(heard), "ok 2");
    EXPECT_EQ(heard.outcome.notes, std::vector<std::string>());
}

TEST_F(Inquiries, FailureOfTheOnlyClassIsTheAnswer) {
    EXPECT_EQ(ending(enumerate("Test_Refused")), "5 no class Test_Refused");
    EXPECT_EQ(ending(enumerate("Test_Broken")), "1 broke off");
    EXPECT_EQ(ending(ask("EnumerateInstanceNames", of_class("Test_Broken"))), "1 broke off");
    EXPECT_EQ(enumerate("Test_Broken").outcome.objects, 0U);
}

TEST_F(Inquiries, FailureOfAllIsThatOfTheFirst) {
    use_registration(stanza("Test_Broken", "instance") + stanza("Test_Results", "instance"));
    EXPECT_EQ(ending(ask("EnumerateInstanceNames", of_class("Test_Base"))), "1 broke off");
    made.reset();
    use_registration(stanza("Test_Results", "instance") + stanza("Test_Broken", "instance"));
    EXPECT_EQ(ending(ask("EnumerateInstanceNames", of_class("Test_Base"))), "5 no class Test_Results");
}

TEST_F(Inquiries, CodeOfNoStandardIsFailed) {
    EXPECT_EQ(ending(enumerate("Test_Codes")), "1 the provider answered with status 4711");
}

TEST_F(Inquiries, ErrorWithoutTextHasTheCodesName) {
    EXPECT_EQ(ending(ask("DeleteInstance", instance_parameter("InstanceName", "Test_Thing", thing_keys()))),
              "7 NOT_SUPPORTED");
}

TEST_F(Inquiries, ClassOfNobodyGivesNothing) {
    EXPECT_EQ(ending(enumerate("Test_Unserved")), "ok 0");
    EXPECT_EQ(ending(ask("EnumerateInstanceNames", of_class("Test_Unserved"))), "ok 0");
    EXPECT_EQ(ending(walk("Associators", class_parameter("AssocClass", "Test_Loose"))), "ok 0");
    const std::string instance = instance_parameter("InstanceName", "Test_Unserved", cimxml::key("Name", "", "x"));
    EXPECT_EQ(ending(ask("GetInstance", instance)), "6 there is no such instance");
    EXPECT_EQ(ending(ask("DeleteInstance", instance)), "7 no provider serves Test_Unserved");
    EXPECT_EQ(ending(ask("ExecQuery", text_parameter("QueryLanguage", "WQL") +
                                          text_parameter("Query", "SELECT * FROM Test_Unserved"))),
              "7 no provider serves Test_Unserved");
}

TEST_F(Inquiries, NullInvalidAndFurtherResultsAreNoted) {
    const Heard heard = enumerate("Test_Results");
    EXPECT_EQ(ending(heard), "ok 1");
    EXPECT_EQ(heard.outcome.notes.size(), 3U); // and a type
    EXPECT_EQ(heard.outcome.notes[1], "Test_Results: 2 null results were left out");
    EXPECT_EQ(heard.outcome.notes[2], "Test_Results: 1 invalid result was left out");
}

TEST_F(Inquiries, PathInPlaceOfAnInstanceIsLeftOut) {
    const Heard heard = enumerate("Test_Swapped");
    EXPECT_EQ(ending(heard), "ok 0");
    EXPECT_EQ(heard.outcome.notes, std::vector<std::string>{"Test_Swapped: 1 path was left out"});
}

TEST_F(Inquiries, TypeUnlikeTheDeclaredIsSentAndNotedOnce) {
    const Heard heard = enumerate("Test_Thing");
    EXPECT_EQ(heard.count(property("Real", "real64", "2.5")), 3U);
    EXPECT_EQ(
        heard.outcome.notes,
        std::vector<std::string>{"Test_Thing.Real: is sent as real64, which the provider gave it; declared as real32"});
    EXPECT_EQ(enumerate("Test_Thing").outcome.notes, std::vector<std::string>());
}

TEST_F(Inquiries, WithoutPropertyListGiveAll) {
    const Heard heard = enumerate("Test_Echo");
    EXPECT_NE(heard.body.find(property("Properties", "string", "(null)")), std::string::npos) << heard.body;
    EXPECT_NE(heard.body.find(property("InitNameSpace", "string", "root/cimv2")), std::string::npos);
}

TEST_F(Inquiries, PropertyListReachesTheProviderWithTheKeys) {
    const Heard heard = enumerate("Test_Echo", properties_parameter({"properties", "Path"}));
    EXPECT_NE(heard.body.find(property("Properties", "string", "properties;Path;Id;")), std::string::npos)
        << heard.body;
    EXPECT_EQ(heard.count("<PROPERTY "), 2U);
}

TEST_F(Inquiries, EmptyPropertyListGivesNoProperty) {
    const Heard heard = enumerate("Test_Thing", properties_parameter({}));
    EXPECT_EQ(ending(heard), "ok 3");
    EXPECT_EQ(heard.count("<PROPERTY"), 0U);
    EXPECT_EQ(heard.count("<KEYBINDING NAME=\"Number\">"), 3U);
}

TEST_F(Inquiries, PropertyOfASubclassIsLeftOutWithoutDeepInheritance) {
    const Heard shallow = enumerate("Test_Base", boolean("DeepInheritance", "FALSE"));
    EXPECT_EQ(shallow.count("<PROPERTY"), shallow.count("<PROPERTY NAME=\"Name\"")) << shallow.body;
    EXPECT_GT(shallow.count("<PROPERTY NAME=\"Name\""), 0U);
    EXPECT_GT(enumerate("Test_Base", boolean("DeepInheritance", "true")).count("<PROPERTY NAME=\"Flag\""), 0U);
    EXPECT_GT(enumerate("Test_Base").count("<PROPERTY NAME=\"Flag\""), 0U);
    EXPECT_GT(enumerate("Test_Thing", boolean("DeepInheritance", "FALSE")).count("<PROPERTY NAME=\"Flag\""), 0U);
}

TEST_F(Inquiries, DeprecatedFlagsAreReadOver) {
    const std::string plain = enumerate("Test_Thing").body;
    for (const char* name : {"LocalOnly", "IncludeQualifiers", "IncludeClassOrigin"})
        for (const char* value : {"TRUE", "false"})
            EXPECT_EQ(enumerate("Test_Thing", boolean(name, value)).body, plain) << name;
}

TEST_F(Inquiries, GetGivesOneInstance) {
    const Heard heard = ask("GetInstance", instance_parameter("InstanceName", "Test_Thing", thing_keys()));
    EXPECT_EQ(ending(heard), "ok 1");
    EXPECT_TRUE(heard.within("IRETURNVALUE").starts_with("<INSTANCE CLASSNAME=\"Test_Thing\">")) << heard.body;
}

TEST_F(Inquiries, GetBySuperclassIsAnsweredByASubclass) {
    EXPECT_EQ(ending(ask("GetInstance", instance_parameter("InstanceName", "Test_Base", thing_keys()))), "ok 1");
}

TEST_F(Inquiries, GetHandsOnWhatTheProviderSays) {
    EXPECT_EQ(ending(ask("GetInstance", instance_parameter("InstanceName", "Test_Note", thing_keys()))),
              "5 no class Test_Note");
}

TEST_F(Inquiries, UnknownClassIsInvalid) {
    EXPECT_EQ(ending(enumerate("Test_Nothing")), "5 there is no class Test_Nothing in namespace root/cimv2");
    EXPECT_EQ(ending(ask("EnumerateInstanceNames", of_class("X"))), "5 there is no class X in namespace root/cimv2");
    EXPECT_EQ(ending(ask("GetInstance", instance_parameter("InstanceName", "X", ""))),
              "5 there is no class X in namespace root/cimv2");
}

TEST_F(Inquiries, UnknownClassOfAnObjectIsAnInvalidParameter) {
    for (const char* operation : {"Associators", "AssociatorNames", "References", "ReferenceNames"})
        EXPECT_EQ(ending(walk(operation, "", "X")), "4 there is no class X in namespace root/cimv2");
    EXPECT_EQ(ending(walk("Associators", class_parameter("AssocClass", "X"))),
              "4 there is no class X in namespace root/cimv2");
    EXPECT_EQ(ending(walk("References", class_parameter("ResultClass", "X"))),
              "4 there is no class X in namespace root/cimv2");
}

TEST_F(Inquiries, AssociationsOfAClassAreNotSupported) {
    EXPECT_EQ(ending(ask("Associators", class_parameter("ObjectName", "Test_Thing"))),
              "7 associations of classes are not known, expected an instance");
}

TEST_F(Inquiries, WithoutAssocClassEveryAssociationIsAskedOnce) {
    const Heard heard = walk("AssociatorNames");
    EXPECT_EQ(ending(heard), "ok 3"); // two with the filters, and one thing twice
    EXPECT_EQ(heard.count("<KEYVALUE VALUETYPE=\"string\">Test_Pair</KEYVALUE>"), 1U) << heard.body;
    EXPECT_EQ(heard.count("<KEYVALUE VALUETYPE=\"string\">Test_Pair2</KEYVALUE>"), 1U);
    EXPECT_EQ(heard.count("<KEYVALUE VALUETYPE=\"string\">thing 1</KEYVALUE>"), 1U);
}

TEST_F(Inquiries, AssocClassIsAskedWithItsSubclasses) {
    EXPECT_EQ(walk("AssociatorNames", class_parameter("AssocClass", "Test_Pair")).count(">Test_Pair<"), 1U);
    EXPECT_EQ(walk("AssociatorNames", class_parameter("AssocClass", "Test_Pair")).count(">Test_Pair2<"), 0U);
    EXPECT_EQ(walk("AssociatorNames", class_parameter("AssocClass", "Test_Tie")).count(">Test_Pair2<"), 1U);
}

TEST_F(Inquiries, ResultClassKeepsItAndItsSubclasses) {
    const auto named = [this](const char* name) {
        return ending(walk("AssociatorNames", class_parameter("ResultClass", name)));
    };
    EXPECT_EQ(named("Test_Thing"), "ok 1");
    EXPECT_EQ(named("Test_Base"), "ok 1");
    EXPECT_EQ(named("Test_Echo"), "ok 0");
}

TEST_F(Inquiries, ResultClassOfReferencesIsTheAssociation) {
    const Heard heard =
        walk("ReferenceNames", class_parameter("ResultClass", "Test_Tie") + text_parameter("Role", "R"));
    EXPECT_EQ(ending(heard), "ok 1"); // both name the same pair
    EXPECT_EQ(ending(walk("ReferenceNames", class_parameter("ResultClass", "Test_Pair2"))), "ok 0");
}

TEST_F(Inquiries, FiltersReachTheProvider) {
    const Heard heard = walk("Associators",
                             class_parameter("AssocClass", "test_PAIR") + class_parameter("ResultClass", "test_echo") +
                                 text_parameter("Role", "first") + text_parameter("ResultRole", "Second"),
                             "Test_Echo");
    EXPECT_EQ(ending(heard), "ok 1");
    EXPECT_NE(heard.body.find("<VALUE>Test_Pair|Test_Echo|first|Second</VALUE>"), std::string::npos) << heard.body;
}

TEST_F(Inquiries, PropertyListOfAssociatorsHasTheKeysOfResults) {
    const Heard heard = walk("Associators",
                             class_parameter("AssocClass", "Test_Pair") + class_parameter("ResultClass", "Test_Echo") +
                                 properties_parameter({"Properties"}),
                             "Test_Echo");
    EXPECT_NE(heard.body.find(property("Properties", "string", "Properties;Id;")), std::string::npos) << heard.body;
    EXPECT_EQ(heard.count("<PROPERTY "), 1U);
}

TEST_F(Inquiries, ClassOfTwoProvidersGivesEachObjectOnce) {
    use_registration(stanza("Test_Thing", "instance") + stanza("Test_Thing", "instance", "Half"));
    EXPECT_EQ(ending(enumerate("Test_Thing")), "ok 3");
}

TEST_F(Inquiries, ObjectsWithoutKeysAreNoDoubles) {
    use_registration(stanza("Test_Echo", "instance") + stanza("Test_Echo", "instance", "Half"));
    EXPECT_EQ(ending(enumerate("Test_Echo")), "ok 2");
}

TEST_F(Inquiries, ProviderWithoutRegistrationServesEveryClass) {
    use_registration(stanza("Test_Echo", "method"));
    settings.providers = {{TEST_PROVIDERS "/host_good_provider.so", "Half"}};
    EXPECT_EQ(ending(enumerate("Test_Thing")), "ok 3");
    EXPECT_EQ(ending(enumerate("Test_Echo")), "ok 0");         // is registered, but not for this
    EXPECT_EQ(ending(walk("Associators")), "7 NOT_SUPPORTED"); // there is no MI for them
}

TEST_F(Inquiries, ClassServedInAnotherNamespaceIsFoundThere) {
    std::string text = stanza("Test_Thing", "instance");
    text.replace(text.find("root/cimv2"), 10, "root/other");
    use_registration(text + stanza("Test_Note", "instance"));
    EXPECT_EQ(ending(enumerate("Test_Thing")), "ok 0");
    std::string body = cimxml::intrinsic("EnumerateInstances", of_class("Test_Thing"));
    body.replace(body.find("\"cimv2\""), 7, "\"OTHER\"");
    const Heard heard = ask_body(service(), "EnumerateInstances", "root/OTHER", body);
    EXPECT_EQ(ending(heard), "ok 3");
}

TEST_F(Inquiries, ReplyBeyondTheLimitIsAnError) {
    settings.max_reply = 2000;
    EXPECT_EQ(ending(enumerate("Test_Echo")), "ok 1");
    const Heard heard = enumerate("Test_Thing");
    EXPECT_EQ(ending(heard), "1 the answer is larger than this server's limit for a reply");
    EXPECT_EQ(heard.outcome.objects, 0U);
}

} // namespace
} // namespace cmpihost::server
