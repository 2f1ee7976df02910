// The interop namespace: its instances against their classes, what clients discover by them, and each operation with
// its filters.
#include "host/server/interop.h"
#include "host/mof/check.h"
#include "tests/host/mof/mof_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace cmpihost::server {

namespace {

using Operation = Request::Operation;
using Names = std::vector<std::string>;

const mof::Schema& interop_schema() {
    static const mof::Schema schema = mof::read_schema({mof::schema_folder + "interop.mof"});
    return schema;
}

const std::vector<std::string> namespaces{"root/cimv2", "interop", "root/interop"};

const Interop& interop() {
    static const Interop made(interop_schema(), namespaces, "switch.example");
    return made;
}

Request request_for(Operation operation, const std::string& class_name) {
    Request request;
    request.operation = operation;
    request.path.class_name = class_name;
    request.path.name_space = "root/interop";
    return request;
}

std::vector<Object> all_of(const std::string& class_name, Operation operation = Operation::enumerate_instances) {
    Answer answer = interop().answer(request_for(operation, class_name));
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    return std::move(answer.objects);
}

/// A request about the first instance of a class.
Request about(Operation operation, const std::string& class_name, std::size_t index = 0) {
    Request request = request_for(operation, class_name);
    request.path = all_of(class_name, Operation::enumerate_instance_names).at(index);
    return request;
}

std::string text_of(const Object& object, const std::string& property) {
    const Property* found = object.property(property);
    const auto* text = found == nullptr ? nullptr : std::get_if<std::string>(&found->value.data);
    return text == nullptr ? "(none)" : *text;
}

/// "CLASS", or "CLASS NAME" where the name tells instances apart.
Names shown(const Answer& answer) {
    Names lines;
    for (const Object& object : answer.objects) {
        const Property* name = object.key("Name");
        lines.push_back(object.class_name + (name == nullptr ? "" : " " + std::get<std::string>(name->value.data)));
    }
    return lines;
}

/// Every instance of every class.
std::vector<Object> everything() {
    std::vector<Object> objects;
    for (const mof::ClassDeclaration& declaration : interop_schema().classes())
        for (Object& object : all_of(declaration.name))
            objects.push_back(std::move(object));
    return objects;
}

// ---------------------------------------------------------------------------------------------- the instances

TEST(Interop, InstancesAreAsTheirClassesDeclare) {
    const std::vector<Object> objects = everything();
    EXPECT_EQ(objects.size(), 6U + 2 * namespaces.size());
    for (const Object& object : objects) {
        EXPECT_EQ(mof::check(interop_schema(), object, mof::Kind::instance), Names{});
        Object path = object;
        path.properties.clear();
        EXPECT_EQ(mof::check(interop_schema(), path, mof::Kind::path), Names{});
    }
}

TEST(Interop, SchemaReadsTheSameBehindTheExcerptThatItIncludes) {
    const mof::Schema both = mof::read_schema(
        {mof::schema_folder + "dmtf.mof", mof::schema_folder + "fcip.mof", mof::schema_folder + "interop.mof"});
    EXPECT_EQ(both.instances().size(), interop_schema().instances().size());
    EXPECT_NE(both.find("CIM_Namespace"), nullptr);
}

TEST(Interop, ListsEveryNamespaceItselfToo) {
    Names names;
    for (const Object& object : all_of("CIM_Namespace")) {
        names.push_back(text_of(object, "Name"));
        EXPECT_EQ(text_of(object, "CreationClassName"), "CIM_Namespace");
        EXPECT_EQ(text_of(object, "ObjectManagerName"), "cmpihost");
        EXPECT_EQ(text_of(object, "ObjectManagerCreationClassName"), "CIM_ObjectManager");
        EXPECT_EQ(text_of(object, "SystemCreationClassName"), "CIM_ComputerSystem");
        EXPECT_EQ(text_of(object, "SystemName"), "switch.example");
    }
    EXPECT_EQ(names, namespaces);
}

TEST(Interop, ANamespaceThatIsGivenTwiceIsListedOnce) {
    const Interop twice(interop_schema(), {"root/a", "ROOT/A", "root/b", "root/a"}, "s");
    EXPECT_EQ(shown(twice.answer(request_for(Operation::enumerate_instances, "CIM_Namespace"))),
              (Names{"CIM_Namespace root/a", "CIM_Namespace root/b"}));
}

TEST(Interop, HasOneObjectManagerThatTellsProgramAndVersion) {
    const std::vector<Object> managers = all_of("CIM_ObjectManager");
    ASSERT_EQ(managers.size(), 1U);
    EXPECT_EQ(text_of(managers[0], "ElementName"), "cmpihost");
    EXPECT_EQ(text_of(managers[0], "Description"), "cmpihost Version " CMPIHOST_VERSION);
    EXPECT_EQ(text_of(managers[0], "SystemName"), "switch.example");
}

TEST(Interop, ClaimsProfileRegistrationOfTheDmtfAlone) {
    const std::vector<Object> profiles = all_of("CIM_RegisteredProfile");
    ASSERT_EQ(profiles.size(), 1U);
    EXPECT_EQ(profiles[0].property("RegisteredOrganization")->value, Value{std::uint64_t{2}});
    EXPECT_EQ(text_of(profiles[0], "RegisteredName"), "Profile Registration");
    EXPECT_EQ(text_of(profiles[0], "RegisteredVersion"), "1.0.0");
    EXPECT_EQ(profiles[0].property("AdvertiseTypes")->value, (Value{Value::Array{{std::uint64_t{2}}}}));
}

TEST(Interop, DefaultsOfTheClassAreFilledInAndNullIsLeftOut) {
    const std::vector<Object> mechanisms = all_of("CIM_CIMXMLCommunicationMechanism");
    ASSERT_EQ(mechanisms.size(), 1U);
    EXPECT_EQ(mechanisms[0].property("CommunicationMechanism")->value, Value{std::uint64_t{2}});
    EXPECT_EQ(mechanisms[0].property("Caption"), nullptr);
}

// ---------------------------------------------------------------------------------------------- enumerate and get

TEST(Interop, EnumerationsAreOfOneClassWithoutItsSubclasses) {
    EXPECT_TRUE(all_of("CIM_ManagedElement").empty());
    EXPECT_TRUE(all_of("CIM_Service").empty());
    EXPECT_EQ(all_of("cim_objectmanager").size(), 1U);
}

TEST(Interop, PathsHaveTheRequestsNamespaceAndEveryKey) {
    Request request = request_for(Operation::enumerate_instance_names, "CIM_NamespaceInManager");
    for (const char* name_space : {"interop", "root/interop"}) {
        request.path.name_space = name_space;
        const Answer answer = interop().answer(request);
        ASSERT_EQ(answer.objects.size(), namespaces.size());
        for (const Object& path : answer.objects) {
            EXPECT_EQ(path.name_space, name_space);
            EXPECT_TRUE(path.properties.empty());
            ASSERT_EQ(path.keys.size(), 2U);
            for (const Property& key : path.keys)
                EXPECT_EQ(std::get<Value::Reference>(key.value.data)->name_space, name_space);
        }
        EXPECT_TRUE(answer.done);
    }
}

TEST(Interop, PropertyListLeavesOutOthersAndKeepsThePath) {
    Request request = request_for(Operation::enumerate_instances, "CIM_Namespace");
    request.properties = Names{"NAME", "ElementName", "None"};
    const Answer answer = interop().answer(request);
    ASSERT_EQ(answer.objects.size(), namespaces.size());
    ASSERT_EQ(answer.objects[0].properties.size(), 2U);
    EXPECT_EQ(answer.objects[0].properties[0].name, "ElementName");
    EXPECT_EQ(answer.objects[0].properties[1].name, "Name");
    EXPECT_EQ(answer.objects[0].keys.size(), 6U);
    request.properties = Names{};
    EXPECT_TRUE(interop().answer(request).objects.at(0).properties.empty());
}

TEST(Interop, EveryInstanceIsFoundByItsPath) {
    for (const Object& object : everything()) {
        Request request;
        request.operation = Operation::get_instance;
        request.path = object;
        request.path.properties.clear();
        const Answer answer = interop().answer(request);
        ASSERT_EQ(answer.objects.size(), 1U) << object.class_name;
        EXPECT_EQ(answer.objects[0], object);
    }
}

TEST(Interop, KeysAreFoundInAnyOrderAndCase) {
    Request request = about(Operation::get_instance, "CIM_Namespace");
    request.path.class_name = "CIM_NAMESPACE";
    request.path.host = "another.example";
    std::reverse(request.path.keys.begin(), request.path.keys.end());
    for (Property& key : request.path.keys)
        for (char& c : key.name)
            c = lower(c);
    EXPECT_EQ(shown(interop().answer(request)), Names{"CIM_Namespace root/cimv2"});
}

TEST(Interop, KeysThatNameNothingAreNotFound) {
    Request other = about(Operation::get_instance, "CIM_Namespace");
    other.path.keys.back().value = {std::string("root/none")};
    Request fewer = about(Operation::get_instance, "CIM_Namespace");
    fewer.path.keys.pop_back();
    Request more = about(Operation::get_instance, "CIM_Namespace");
    more.path.keys.push_back({"More", "string", {std::string("x")}});
    Request superclass = about(Operation::get_instance, "CIM_Namespace");
    superclass.path.class_name = "CIM_ManagedElement";
    for (const Request& request : {other, fewer, more, superclass}) {
        const Answer answer = interop().answer(request);
        EXPECT_EQ(answer.rc, CMPI_RC_ERR_NOT_FOUND);
        EXPECT_TRUE(answer.objects.empty());
    }
}

TEST(Interop, OperationsOnAnUnknownClassAreInvalid) {
    for (const Operation operation :
         {Operation::enumerate_instances, Operation::get_instance, Operation::associators}) {
        const Answer answer = interop().answer(request_for(operation, "CIM_None"));
        EXPECT_EQ(answer.rc, CMPI_RC_ERR_INVALID_CLASS);
        EXPECT_EQ(answer.message, "class CIM_None is not declared");
    }
}

TEST(Interop, AnythingElseIsNotSupported) {
    for (const Operation operation :
         {Operation::create_instance, Operation::modify_instance, Operation::delete_instance, Operation::exec_query}) {
        const Answer answer = interop().answer(request_for(operation, "CIM_Namespace"));
        EXPECT_EQ(answer.rc, CMPI_RC_ERR_NOT_SUPPORTED);
        EXPECT_TRUE(answer.objects.empty());
    }
}

// ---------------------------------------------------------------------------------------------- associations

const Names manager_ends{"CIM_CIMXMLCommunicationMechanism cmpihost", "CIM_RegisteredProfile",
                         "CIM_Namespace root/cimv2", "CIM_Namespace interop", "CIM_Namespace root/interop"};

struct Filtered {
    const char* name;
    std::optional<std::string> assoc_class;
    std::optional<std::string> result_class;
    std::optional<std::string> role;
    std::optional<std::string> result_role;
    Names found;
};

TEST(Interop, AssociatorsOfTheManagerByEachFilter) {
    const Names none;
    const Names mechanism{manager_ends[0]};
    const Names profile{manager_ends[1]};
    const Names all_namespaces(manager_ends.begin() + 2, manager_ends.end());
    const Filtered rows[] = {
        {"none", {}, {}, {}, {}, manager_ends},
        {"association", "CIM_NamespaceInManager", {}, {}, {}, all_namespaces},
        {"association's superclass", "cim_serviceaccessbysap", {}, {}, {}, mechanism},
        {"association that has no instance", "CIM_HostedDependency", {}, {}, {}, none},
        {"association that is not declared", "CIM_None", {}, {}, {}, none},
        {"result class", {}, "CIM_Namespace", {}, {}, all_namespaces},
        {"result's superclass", {}, "CIM_ServiceAccessPoint", {}, {}, mechanism},
        {"role", {}, {}, "MANAGEDELEMENT", {}, profile},
        {"role of the other end", {}, {}, "Dependent", {}, none},
        {"result role", {}, {}, {}, "conformantstandard", profile},
        {"the source's own role as result role", {}, {}, {}, "Antecedent", none},
        {"all",
         "CIM_Dependency",
         "CIM_ManagedElement",
         "Antecedent",
         "Dependent",
         {manager_ends[0], manager_ends[2], manager_ends[3], manager_ends[4]}},
    };
    for (const Filtered& row : rows) {
        SCOPED_TRACE(row.name);
        Request request = about(Operation::associators, "CIM_ObjectManager");
        request.assoc_class = row.assoc_class;
        request.result_class = row.result_class;
        request.role = row.role;
        request.result_role = row.result_role;
        const Answer instances = interop().answer(request);
        EXPECT_EQ(instances.rc, CMPI_RC_OK);
        EXPECT_EQ(shown(instances), row.found);
        request.operation = Operation::associator_names;
        const Answer paths = interop().answer(request);
        EXPECT_EQ(shown(paths), row.found);
        for (std::size_t i = 0; i < paths.objects.size(); ++i) {
            EXPECT_TRUE(paths.objects[i].properties.empty());
            EXPECT_FALSE(instances.objects.at(i).properties.empty());
        }
    }
}

TEST(Interop, ReferencesOfTheManagerByEachFilter) {
    const Names tie{"CIM_CommMechanismForManager"};
    const Names conforms{"CIM_ElementConformsToProfile"};
    const Names in_manager(3, "CIM_NamespaceInManager");
    const Filtered rows[] = {
        {"none", {}, {}, {}, {}, {tie[0], conforms[0], in_manager[0], in_manager[0], in_manager[0]}},
        {"result class", "CIM_NamespaceInManager", {}, {}, {}, in_manager},
        {"result's superclass", "CIM_Dependency", {}, {}, {}, {tie[0], in_manager[0], in_manager[0], in_manager[0]}},
        {"role", {}, {}, "managedELEMENT", {}, conforms},
        {"both, which exclude each other", "CIM_Dependency", {}, "ManagedElement", {}, {}},
    };
    for (const Filtered& row : rows) {
        SCOPED_TRACE(row.name);
        Request request = about(Operation::references, "CIM_ObjectManager");
        request.assoc_class = row.assoc_class;
        request.role = row.role;
        EXPECT_EQ(shown(interop().answer(request)), row.found);
        request.operation = Operation::reference_names;
        EXPECT_EQ(shown(interop().answer(request)), row.found);
    }
}

TEST(Interop, AssociatorsAnswerFromTheOtherEndToo) {
    for (const char* class_name : {"CIM_Namespace", "CIM_CIMXMLCommunicationMechanism"})
        EXPECT_EQ(shown(interop().answer(about(Operation::associators, class_name))),
                  Names{"CIM_ObjectManager cmpihost"});
}

TEST(Interop, AProfileThatConformsToItselfIsFoundOnce) {
    Request request = about(Operation::associators, "CIM_RegisteredProfile");
    request.assoc_class = "CIM_ElementConformsToProfile";
    EXPECT_EQ(shown(interop().answer(request)), (Names{"CIM_RegisteredProfile", "CIM_ObjectManager cmpihost"}));
    request.operation = Operation::references;
    EXPECT_EQ(interop().answer(request).objects.size(), 2U);
}

TEST(Interop, AssociatorsTakeThePropertyList) {
    Request request = about(Operation::associators, "CIM_Namespace");
    request.properties = Names{"elementname"};
    const Answer answer = interop().answer(request);
    ASSERT_EQ(answer.objects.size(), 1U);
    ASSERT_EQ(answer.objects[0].properties.size(), 1U);
    EXPECT_EQ(answer.objects[0].properties[0].name, "ElementName");
}

TEST(Interop, AssociatorsOfAPathThatNamesNothingAreNone) {
    Request request = about(Operation::associators, "CIM_ObjectManager");
    request.path.keys.back().value = {std::string("another")};
    const Answer answer = interop().answer(request);
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    EXPECT_TRUE(answer.objects.empty());
}

// ---------------------------------------------------------------------------------------------- refusals

/// What is said of instances that are declared beside the object manager; empty if they are accepted.
std::string interop_refusal(const std::string& instances) {
    const std::string text = "class CIM_ObjectManager { [Key] string Name; [Key] string SystemName; };\n"
                             "[Abstract] class A {}; class B { [Key] string Id; uint8 n; };\n"
                             "[Association] class T { [Key] B REF One; [Key] B REF Two; };\n" +
                             instances;
    const auto read = mof::Schema::read_text("i.mof", text);
    try {
        const Interop made(std::get<mof::Schema>(read), {}, "s");
        return "";
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

constexpr const char* a_manager = "instance of CIM_ObjectManager { Name = \"m\"; };\n";

TEST(InteropRefusals, SayWhereAndWhat) {
    const struct {
        const char* instance;
        const char* message;
    } rows[] = {
        {"", ""},
        {"instance of C {};", "i.mof:5:13: instance of C, expected a class that is declared and not abstract"},
        {"instance of A {};", "i.mof:5:13: instance of A, expected a class that is declared and not abstract"},
        {"instance of B { Id = \"1\"; x = 1; };", "i.mof:5:13: B has no property x"},
        {"instance of B { n = 1; };", "i.mof:5:13: key Id of B has no value"},
        {"instance of B { Id = NULL; };", "i.mof:5:13: key Id of B has no value"},
        {"instance of B { Id = \"1\"; n = 256; };", "i.mof:5:13: property n of B, expected a value of type uint8"},
        {"instance of T { One = $b; Two = $b; };",
         "i.mof:5:13: reference One of T, expected the alias of an instance before"},
        {"instance of T { One = 1; Two = $b; };",
         "i.mof:5:13: reference One of T, expected the alias of an instance before"},
        {"instance of B as $b { Id = \"1\"; }; instance of B as $B { Id = \"2\"; };",
         "i.mof:5:48: alias $B is there twice"},
        {"instance of CIM_ObjectManager { Name = \"n\"; };",
         "the interop schema has no instance of CIM_ObjectManager or several, expected one"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(interop_refusal(std::string(a_manager) + row.instance), row.message);
    EXPECT_EQ(interop_refusal(""), "the interop schema has no instance of CIM_ObjectManager or several, expected one");
}

} // namespace

} // namespace cmpihost::server
