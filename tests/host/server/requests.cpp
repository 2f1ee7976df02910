// Requests as they arrive: headers, namespaces, odd ones, and what the reply of each operation is made of.
#include "host/cimxml/xml_reader.h"
#include "tests/host/mof/mof_files.h"
#include "tests/host/server/service_test.h"

#include <set>
#include <thread>

namespace cmpihost::server {
namespace {

using cimxml::class_parameter;
using cimxml::intrinsic;
using cimxml::parameter;
using cimxml::replaced;

class Requests : public ServiceTest {
  protected:
    Heard names(const std::string& body) { return ask_body(service(), "EnumerateInstanceNames", "root/cimv2", body); }
    static std::string names_body() { return intrinsic("EnumerateInstanceNames", of_class("Test_Thing")); }
};

TEST_F(Requests, SubjectIsToldBeforeTheReply) {
    const Heard heard = ask("GetInstance", instance_parameter("InstanceName", "Test_Thing", thing_keys()));
    ASSERT_EQ(heard.subjects.size(), 1U);
    EXPECT_EQ(heard.subjects[0].class_name, "Test_Thing");
    EXPECT_EQ(heard.subjects[0].envelope.operation, "GetInstance");
    EXPECT_EQ(heard.subjects[0].envelope.message_id, "42");
    EXPECT_EQ(heard.subjects[0].envelope.name_space, "root/cimv2");
}

TEST_F(Requests, SubjectNamesTheSourceOfAWalk) {
    const Heard heard = ask("Associators", class_parameter("AssocClass", "Test_Pair") +
                                               instance_parameter("ObjectName", "Test_Echo", thing_keys()));
    ASSERT_EQ(heard.subjects.size(), 1U);
    EXPECT_EQ(heard.subjects[0].class_name, "Test_Echo");
}

TEST_F(Requests, SubjectOfARefusedCallIsTold) {
    const Heard heard = ask("Guess", "");
    ASSERT_EQ(heard.subjects.size(), 1U);
    EXPECT_EQ(heard.subjects[0].envelope.operation, "Guess");
    EXPECT_TRUE(names("nonsense").subjects.empty());
}

struct HeadersRow {
    const char* method;
    const char* object;
    const char* answer;
};

TEST_F(Requests, HeadersUnlikeTheBodyAreRefused) {
    const HeadersRow rows[] = {
        {"EnumerateInstanceNames", "root/cimv2", "ok 3"},
        {"enumerateinstancenames", "ROOT%2fcimv2", "ok 3"},
        {"EnumerateInstances", "root/cimv2", "http 400 header-mismatch"},
        {"EnumerateInstanceNames", "root/other", "http 400 header-mismatch"},
        {"", "root/cimv2", "http 400 header-mismatch"},
        {"EnumerateInstanceNames", "", "http 400 header-mismatch"},
        {"EnumerateInstanceNames", "root%2", "http 400 header-mismatch"},
    };
    for (const HeadersRow& row : rows)
        EXPECT_EQ(ending(ask_body(service(), row.method, row.object, names_body())), row.answer)
            << row.method << ' ' << row.object;
}

TEST_F(Requests, HeadersUnlikeARefusedCallAreRefusedAsSuch) {
    EXPECT_EQ(ending(ask_body(service(), "Other", "root/cimv2", intrinsic("Guess", ""))), "http 400 header-mismatch");
}

struct BodyRow {
    const char* what;
    std::string body;
    const char* answer;
};

TEST_F(Requests, OddBodiesAreAnsweredAsDocumented) {
    const std::string good = names_body();
    const std::string call_begin = good.substr(0, good.find("<IMETHODCALL"));
    const BodyRow rows[] = {
        {"empty", "", "http 400 request-not-valid"},
        {"no XML", "hello", "http 400 request-not-valid"},
        {"DOCTYPE", replaced(good, "<CIM ", "<!DOCTYPE CIM><CIM "), "http 400 request-not-valid"},
        {"no MESSAGE", "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"></CIM>", "http 400 request-not-valid"},
        {"no ID", replaced(good, "ID=\"42\" ", ""), "http 400 request-not-valid"},
        {"a response", replaced(replaced(good, "<SIMPLEREQ>", "<SIMPLERSP>"), "</SIMPLEREQ>", "</SIMPLERSP>"),
         "http 400 request-not-valid"},
        {"cut off", good.substr(0, good.size() - 20), "http 400 request-not-well-formed"},
        {"no UTF-8", replaced(good, "Test_Thing", "Test\xff"), "http 400 request-not-valid"},
        {"something behind", good + "<x/>", "http 400 request-not-well-formed"},
        {"CIMVERSION", replaced(good, "CIMVERSION=\"2.0\"", "CIMVERSION=\"3.0\""), "http 501 unsupported-cim-version"},
        {"DTDVERSION", replaced(good, "DTDVERSION=\"2.0\"", "DTDVERSION=\"3.0\""), "http 501 unsupported-dtd-version"},
        {"PROTOCOLVERSION", replaced(good, "PROTOCOLVERSION=\"1.0\"", "PROTOCOLVERSION=\"2.0\""),
         "http 501 unsupported-protocol-version"},
        {"PROTOCOLVERSION 1.4", replaced(good, "PROTOCOLVERSION=\"1.0\"", "PROTOCOLVERSION=\"1.4\""), "ok 3"},
        {"MULTIREQ",
         replaced(replaced(good, "<SIMPLEREQ>", "<MULTIREQ><SIMPLEREQ>"), "</SIMPLEREQ>", "</SIMPLEREQ></MULTIREQ>"),
         "http 501 multiple-requests-unsupported"},
        {"no ClassName", intrinsic("EnumerateInstanceNames", ""),
         "4 EnumerateInstanceNames, expected parameter ClassName"},
        {"unknown parameter", intrinsic("EnumerateInstanceNames", of_class("Test_Thing") + text_parameter("X", "1")),
         "4 EnumerateInstanceNames has no parameter X"},
        {"parameter twice", intrinsic("EnumerateInstanceNames", of_class("Test_Thing") + of_class("Test_Thing")),
         "4 parameter ClassName is there twice, expected once"},
        {"illegal class name", replaced(good, "Test_Thing", "9"), "http 400 request-not-valid"},
        {"unknown class", replaced(good, "Test_Thing", "Nothing"),
         "5 there is no class Nothing in namespace root/cimv2"},
    };
    for (const BodyRow& row : rows)
        EXPECT_EQ(ending(names(row.body)), row.answer) << row.what;
}

TEST_F(Requests, UnknownNamespaceIsInvalid) {
    const std::string body = replaced(names_body(), "\"cimv2\"", "\"nowhere\"");
    EXPECT_EQ(ending(ask_body(service(), "EnumerateInstanceNames", "root/nowhere", body)),
              "3 there is no namespace root/nowhere");
}

TEST_F(Requests, NamespaceIsFoundInAnyCase) {
    const std::string body = replaced(names_body(), "\"cimv2\"", "\"CIMV2\"");
    EXPECT_EQ(ending(ask_body(service(), "EnumerateInstanceNames", "root/CIMV2", body)), "ok 3");
}

TEST_F(Requests, OddOperationsAreAnsweredAsDocumented) {
    EXPECT_EQ(ending(ask("Guess")), "7 there is no operation Guess");
    EXPECT_EQ(ending(ask("EnumerateInstances", of_class("Test_Thing") + text_parameter("DeepInheritance", "perhaps"))),
              "http 400 request-not-valid");
    EXPECT_EQ(ending(ask("GetInstance", instance_parameter("InstanceName", "Test_Thing",
                                                           thing_keys() + cimxml::key("NAME", "", "x")))),
              "4 key NAME is there twice, expected once");
    EXPECT_EQ(ending(ask("PullInstancesWithPath",
                         text_parameter("EnumerationContext", "x") + text_parameter("MaxObjectCount", "1"))),
              "21 no such enumeration is open");
    const std::string declaration = "<CLASS NAME=\"A\"></CLASS>";
    EXPECT_EQ(ending(ask("CreateClass", parameter("NewClass", declaration))), "7 CreateClass is not supported");
    EXPECT_EQ(ending(ask("ModifyClass", parameter("ModifiedClass", declaration))), "7 ModifyClass is not supported");
    EXPECT_EQ(ending(ask("DeleteClass", of_class("Test_Thing"))), "7 DeleteClass is not supported");
    EXPECT_EQ(ending(ask("DeleteQualifier", text_parameter("QualifierName", "Key"))),
              "7 DeleteQualifier is not supported");
}

struct ShapeRow {
    const char* operation;
    bool walks;                       ///< or else enumerates
    std::vector<std::string> element; ///< what each value is made of, outermost first
};

/// The names of an element's descendants down its first children of the path that is expected.
bool has_shape(const cimxml::XmlElement& value, const std::vector<std::string>& names) {
    if (!value.is(names.front()))
        return false;
    if (names.size() == 1)
        return true;
    for (std::size_t i = 1; i < names.size(); ++i)
        if (value.children.size() < i || !value.children[i - 1].is(names[i]))
            return false;
    return value.children.size() == names.size() - 1;
}

/// The children of IRETURNVALUE.
std::vector<cimxml::XmlElement> values_of(const Heard& heard) {
    const auto read = cimxml::read_xml(heard.body);
    const auto* root = std::get_if<cimxml::XmlElement>(&read);
    if (root == nullptr) {
        ADD_FAILURE() << heard.body;
        return {};
    }
    const cimxml::XmlElement& response = root->children.front().children.front().children.front();
    return response.children.front().children;
}

TEST_F(Requests, ValuesOfEachOperationHaveTheirShape) {
    const std::vector<std::string> path{"INSTANCEPATH", "NAMESPACEPATH", "INSTANCENAME"};
    const ShapeRow rows[] = {
        {"EnumerateInstanceNames", false, {"INSTANCENAME", "KEYBINDING", "KEYBINDING"}},
        {"EnumerateInstances", false, {"VALUE.NAMEDINSTANCE", "INSTANCENAME", "INSTANCE"}},
        {"Associators", true, {"VALUE.OBJECTWITHPATH", "INSTANCEPATH", "INSTANCE"}},
        {"References", true, {"VALUE.OBJECTWITHPATH", "INSTANCEPATH", "INSTANCE"}},
        {"AssociatorNames", true, {"OBJECTPATH", "INSTANCEPATH"}},
        {"ReferenceNames", true, {"OBJECTPATH", "INSTANCEPATH"}},
        {"OpenEnumerateInstances", false, {"VALUE.INSTANCEWITHPATH", "INSTANCEPATH", "INSTANCE"}},
        {"OpenAssociatorInstances", true, {"VALUE.INSTANCEWITHPATH", "INSTANCEPATH", "INSTANCE"}},
        {"OpenReferenceInstances", true, {"VALUE.INSTANCEWITHPATH", "INSTANCEPATH", "INSTANCE"}},
        {"OpenEnumerateInstancePaths", false, path},
        {"OpenAssociatorInstancePaths", true, path},
        {"OpenReferenceInstancePaths", true, path},
    };
    for (const ShapeRow& row : rows) {
        const bool opens = std::string_view(row.operation).starts_with("Open");
        const std::string from = instance_parameter(opens ? "InstanceName" : "ObjectName", "Test_Thing", thing_keys());
        const Heard heard = ask(row.operation, (row.walks ? from : of_class("Test_Thing")) +
                                                   (opens ? text_parameter("MaxObjectCount", "100") : ""));
        const auto values = values_of(heard);
        EXPECT_FALSE(values.empty()) << row.operation << heard.body;
        EXPECT_EQ(values.size(), heard.outcome.objects) << row.operation;
        for (const cimxml::XmlElement& value : values)
            EXPECT_TRUE(has_shape(value, row.element)) << row.operation << heard.body;
    }
}

TEST_F(Requests, PathsNameTheHostThatTheListenerTold) {
    const Heard heard = walk("ReferenceNames");
    EXPECT_GT(heard.count("<HOST>host</HOST>"), 0U);
}

TEST_F(Requests, SeveralThreadsAreAnsweredAtOnce) {
    service();
    const std::string expected = enumerate("Test_Thing").body;
    const StandardOutputElsewhere quiet("", stderr);
    std::vector<std::thread> threads;
    std::vector<unsigned> right(4);
    for (unsigned& mine : right)
        threads.emplace_back([&] {
            for (int i = 0; i < 50; ++i) {
                Heard heard;
                heard.outcome = service().answer({"EnumerateInstances", "root/cimv2", "host",
                                                  intrinsic("EnumerateInstances", of_class("Test_Thing"))},
                                                 heard);
                mine += heard.body == expected ? 1 : 0;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(right, (std::vector<unsigned>{50, 50, 50, 50}));
}

// ------------------------------------------------------------------------------------------------------ opening

class Opening : public ServiceTest {
  protected:
    std::string refusal() {
        try {
            const StandardOutputElsewhere quiet("", stderr);
            const Service opened(settings);
            return "opened";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }
};

TEST_F(Opening, SchemaThatIsMissingIsTold) {
    settings.schema = {"/nowhere.mof"};
    EXPECT_TRUE(refusal().starts_with("/nowhere.mof: ")) << refusal();
}

TEST_F(Opening, SchemaMayBeACopyInAnotherFolder) {
    const std::string copied = folder + "/copied";
    std::filesystem::create_directories(copied);
    for (const std::string name : {"/dmtf.mof", "/qualifiers.mof"})
        std::filesystem::copy_file(FCIP_SOURCE_DIR "/schema" + name, copied + name,
                                   std::filesystem::copy_options::overwrite_existing);
    settings.schema.insert(settings.schema.begin(), copied + "/dmtf.mof");
    settings.interop_schema = FCIP_SOURCE_DIR "/schema/interop.mof";
    EXPECT_EQ(refusal(), "opened");
}

TEST_F(Opening, RegistrationOfAnUnknownClassIsTold) {
    use_registration(stanza("Test_Nothing", "instance"));
    EXPECT_EQ(refusal(), folder + "/test.reg: class Test_Nothing is in no schema file");
}

TEST_F(Opening, RegistrationThatIsMissingIsTold) {
    settings.registrations = {"/nowhere.reg"};
    EXPECT_EQ(refusal(), "/nowhere.reg: cannot be read, expected a file with text");
}

TEST_F(Opening, LibraryThatIsMissingIsTold) {
    settings.providers = {{"/nowhere.so", "Good"}};
    EXPECT_EQ(refusal(), "provider library /nowhere.so: no such file");
}

TEST_F(Opening, ScenarioThatNoProviderTakesIsTold) {
    use_registration(stanza("Test_Thing", "instance"));
    settings.scenario = FCIP_SOURCE_DIR "/scenarios/two-site.toml";
    EXPECT_NE(refusal().find("takes no scenario"), std::string::npos) << refusal();
}

TEST_F(Opening, ScenarioGoesToTheProviderThatTakesIt) {
    settings.providers = {{TEST_PROVIDERS "/host_good_provider.so", "Good"}, {FCIP_PROVIDER, "FCIPProvider"}};
    settings.scenario = FCIP_SOURCE_DIR "/scenarios/two-site.toml";
    EXPECT_EQ(refusal(), "opened");
    settings.scenario = "/nowhere.toml";
    EXPECT_NE(refusal().find("/nowhere.toml"), std::string::npos) << refusal();
}

TEST_F(Opening, FactoriesOfOneLibraryAreLoadedOnce) {
    use_registration(stanza("Test_Thing", "instance") + stanza("Test_Echo", "instance", "Half"));
    EXPECT_EQ(refusal(), "opened");
}

// ------------------------------------------------------------------------------------------------------ the switch

class SwitchService : public testing::Test {
  protected:
    static Settings settings_for(const std::string& scenario) {
        Settings settings;
        settings.schema = {FCIP_SOURCE_DIR "/schema/dmtf.mof", FCIP_SOURCE_DIR "/schema/fcip.mof"};
        settings.registrations = {FCIP_SOURCE_DIR "/schema/registration/sfcb.reg"};
        settings.provider_folder = std::filesystem::path(FCIP_PROVIDER).parent_path();
        settings.interop_schema = FCIP_SOURCE_DIR "/schema/interop.mof";
        settings.scenario = FCIP_SOURCE_DIR "/scenarios/" + scenario;
        return settings;
    }
};

TEST_F(SwitchService, EndpointsOfAllKindsAreProtocolEndpoints) {
    Service service(settings_for("two-site.toml"));
    std::uint64_t one_by_one = 0;
    for (const char* name :
         {"ZANTO_FCIPProtocolEndPoint", "ZANTO_IPProtocolEndPoint", "ZANTO_TCPProtocolEndPoint", "ZANTO_LANEndPoint"})
        one_by_one += ask(service, "EnumerateInstanceNames", of_class(name)).outcome.objects;
    const Heard heard = ask(service, "EnumerateInstanceNames", of_class("CIM_ProtocolEndpoint"));
    EXPECT_EQ(ending(heard), "ok " + std::to_string(one_by_one));
    EXPECT_GT(one_by_one, 3U);
}

/// The first tunnel's endpoint, as the two-site switch has it.
std::string endpoint_keys(const std::string& name = "1_10.1.1.1_10.2.1.1") {
    return cimxml::key("SystemName", "", "200A00005E112233") +
           cimxml::key("SystemCreationClassName", "", "ZANTO_LogicalComputerSystem") +
           cimxml::key("CreationClassName", "", "ZANTO_FCIPProtocolEndPoint") + cimxml::key("Name", "", name);
}

TEST_F(SwitchService, EndpointIsFoundByItsKeys) {
    Service service(settings_for("two-site.toml"));
    const auto get = [&service](const std::string& keys) {
        return ask(service, "GetInstance", instance_parameter("InstanceName", "ZANTO_FCIPProtocolEndPoint", keys));
    };
    EXPECT_EQ(ending(get(endpoint_keys())), "ok 1");
    EXPECT_EQ(ending(get(endpoint_keys("77_10.9.9.9_10.8.8.8"))), "6 there is no such instance");
    EXPECT_EQ(ending(get("")), "6 there is no such instance");
}

TEST_F(SwitchService, WalkWithoutAssocClassJoinsThoseAlongEach) {
    Service service(settings_for("two-site.toml"));
    const std::string source = instance_parameter("ObjectName", "ZANTO_FCIPProtocolEndPoint", endpoint_keys());
    std::set<std::string> one_by_one;
    for (const mof::ClassDeclaration& declaration : mof::provider_schema().classes()) {
        if (!declaration.association || declaration.abstract)
            continue;
        const Heard heard = ask(service, "AssociatorNames", source + class_parameter("AssocClass", declaration.name));
        const std::string paths = heard.within("IRETURNVALUE");
        for (std::size_t at = paths.find("<OBJECTPATH>"); at != std::string::npos;) {
            const std::size_t next = paths.find("<OBJECTPATH>", at + 1);
            one_by_one.insert(paths.substr(at, next - at));
            at = next;
        }
    }
    const Heard heard = ask(service, "AssociatorNames", source);
    EXPECT_GT(one_by_one.size(), 3U);
    EXPECT_EQ(ending(heard), "ok " + std::to_string(one_by_one.size()));
    EXPECT_EQ(heard.outcome.notes, std::vector<std::string>());
}

Heard ask_interop(Service& service, const std::string& operation, const std::string& parameters) {
    const std::string body = intrinsic(operation, parameters);
    return ask_body(service, operation, "root/interop", replaced(body, "\"cimv2\"", "\"interop\""));
}

TEST_F(SwitchService, InteropNamespaceTellsOfAllNamespaces) {
    Service service(settings_for("two-site.toml"));
    const Heard heard = ask_interop(service, "EnumerateInstances", of_class("CIM_Namespace"));
    EXPECT_EQ(ending(heard), "ok 3") << heard.body;
    for (const char* name : {"root/cimv2", "root/interop", "interop"})
        EXPECT_EQ(heard.count(std::string("<PROPERTY NAME=\"Name\" TYPE=\"string\"><VALUE>") + name + "</VALUE>"), 1U)
            << heard.body;
    EXPECT_EQ(ending(ask_interop(service, "EnumerateInstances", of_class("CIM_ObjectManager"))), "ok 1");
    EXPECT_EQ(ending(ask_interop(service, "EnumerateInstanceNames", of_class("ZANTO_FCIPProtocolEndPoint"))),
              "5 there is no class ZANTO_FCIPProtocolEndPoint in namespace root/interop");
    EXPECT_EQ(ending(ask(service, "EnumerateInstances", of_class("CIM_Namespace"))),
              "5 there is no class CIM_Namespace in namespace root/cimv2");
}

TEST_F(SwitchService, InteropObjectsAreGotAndWalkedByTheirNames) {
    Service service(settings_for("two-site.toml"));
    const Heard names = ask_interop(service, "EnumerateInstanceNames", of_class("CIM_ObjectManager"));
    const std::string name = names.within("IRETURNVALUE");
    EXPECT_EQ(ending(ask_interop(service, "GetInstance", parameter("InstanceName", name))), "ok 1") << name;
    EXPECT_EQ(
        ending(ask_interop(service, "Associators",
                           parameter("ObjectName", name) + class_parameter("AssocClass", "CIM_NamespaceInManager"))),
        "ok 3");
    EXPECT_EQ(ending(ask_interop(service, "DeleteInstance", parameter("InstanceName", name))),
              "7 the interop namespace is read-only");
}

TEST_F(SwitchService, ClassOperationsAreAnsweredByTheSchema) {
    Service service(settings_for("two-site.toml"));
    const Heard heard = ask(service, "GetClass", of_class("ZANTO_FCIPProtocolEndPoint"));
    EXPECT_EQ(ending(heard), "ok 1");
    EXPECT_TRUE(heard.within("IRETURNVALUE").starts_with("<CLASS NAME=\"ZANTO_FCIPProtocolEndPoint\" ")) << heard.body;
    EXPECT_EQ(ending(ask(service, "EnumerateClassNames", of_class("X"))).substr(0, 2), "5 ");
    EXPECT_EQ(ending(ask(service, "GetClass", of_class("X"))).substr(0, 2), "6 ");
}

TEST_F(SwitchService, LargeReplyComesInParts) {
    Service service(settings_for("ten-thousand.toml"));
    const Heard heard = ask(service, "EnumerateInstances", of_class("ZANTO_FCIPProtocolEndPoint"));
    EXPECT_EQ(ending(heard), "ok 10000");
    EXPECT_GT(heard.parts.size(), 100U);
    for (const std::size_t part : heard.parts)
        EXPECT_LT(part, std::size_t{104} << 10);
}

TEST_F(SwitchService, ReplyThatGrowsBeyondTheLimitIsDiscarded) {
    Settings settings = settings_for("ten-thousand.toml");
    settings.max_reply = 1000000;
    Service service(settings);
    const Heard heard = ask(service, "EnumerateInstances", of_class("ZANTO_FCIPProtocolEndPoint"));
    EXPECT_EQ(ending(heard), "1 the answer is larger than this server's limit for a reply");
    EXPECT_EQ(heard.discards, 1U);
    EXPECT_TRUE(heard.body.starts_with("<?xml ")) << heard.body;
    EXPECT_EQ(heard.parts.back(), heard.body.size());
}

} // namespace
} // namespace cmpihost::server
