// The operations on classes and qualifiers: which classes each answers, what its options leave out, and its errors.
#include "host/server/class_operations.h"
#include "tests/host/mof/mof_files.h"

#include <gtest/gtest.h>

namespace cmpihost::server {

namespace {

using Parameters = std::vector<cimxml::Parameter>;
using Names = std::vector<std::string>;

const mof::Schema& family_schema() {
    static const mof::Schema schema = std::get<mof::Schema>(mof::Schema::read_text("t.mof", R"(
        Qualifier Description : string, Scope(any), Flavor(Translatable);
        [Description("top")] class K_Top { [Key, Description("id")] string Id; string Note; uint8 Stop(); };
        class K_Other { string Text; };
        class K_Middle : k_top { string More; [Override("Note")] string Note; };
        class K_Bottom : K_Middle {};
        class K_Beside : K_Top {};
    )"));
    return schema;
}

struct ClassAnswer {
    Status status;
    std::string values;
    std::uint64_t objects = 0;
};

ClassAnswer ask(const std::string& operation, Parameters parameters, const mof::Schema& schema = family_schema()) {
    cimxml::Call call;
    call.envelope.operation = operation;
    call.parameters = std::move(parameters);
    ClassAnswer answer;
    answer.status = answer_class_operation(call, {"host", "root/cimv2", schema}, answer.values, answer.objects);
    return answer;
}

cimxml::Parameter class_named(const std::string& name) {
    return {"ClassName", cimxml::ClassName{name}};
}

/// The attributes NAME of the elements that begin with "<TAG NAME=".
Names names_of(const std::string& values, const std::string& tag) {
    Names names;
    const std::string begin = "<" + tag + " NAME=\"";
    for (std::size_t at = values.find(begin); at != std::string::npos; at = values.find(begin, at + 1)) {
        const std::size_t name = at + begin.size();
        names.push_back(values.substr(name, values.find('"', name) - name));
    }
    return names;
}

bool has(const ClassAnswer& answer, const std::string& part) {
    return answer.values.find(part) != std::string::npos;
}

// ---------------------------------------------------------------------------------------------- which operations

TEST(ClassOperations, AreTheReadingOnesInAnyCase) {
    for (const char* name :
         {"GetClass", "EnumerateClasses", "enumerateclassnames", "GETQUALIFIER", "EnumerateQualifiers"})
        EXPECT_TRUE(is_class_operation(name)) << name;
    for (const char* name : {"CreateClass", "ModifyClass", "DeleteClass", "SetQualifier", "DeleteQualifier",
                             "GetInstance", "EnumerateInstances", ""}) {
        EXPECT_FALSE(is_class_operation(name)) << name;
        EXPECT_EQ(ask(name, {}).status.code, CimCode::not_supported) << name;
    }
}

// ---------------------------------------------------------------------------------------------- GetClass

TEST(ClassOperations, GetClassAnswersOne) {
    const ClassAnswer answer = ask("GetClass", {class_named("k_middle")});
    EXPECT_EQ(answer.status.code, CimCode::ok);
    EXPECT_EQ(answer.objects, 1U);
    EXPECT_EQ(answer.values,
              R"(<CLASS NAME="K_Middle" SUPERCLASS="k_top"><PROPERTY NAME="Note" TYPE="string"><QUALIFIER )"
              R"(NAME="Override" TYPE="string" TOSUBCLASS="false"><VALUE>Note</VALUE></QUALIFIER></PROPERTY>)"
              R"(<PROPERTY NAME="More" TYPE="string"></PROPERTY></CLASS>)");
}

TEST(ClassOperations, GetClassOfAnUnknownClassIsNotFound) {
    const ClassAnswer answer = ask("GetClass", {class_named("K_None")});
    EXPECT_EQ(answer.status.code, CimCode::not_found);
    EXPECT_EQ(answer.status.description, "class K_None is not declared");
    EXPECT_EQ(answer.values, "");
    EXPECT_EQ(answer.objects, 0U);
}

TEST(ClassOperations, LocalOnlyIsTrueByDefault) {
    EXPECT_EQ(names_of(ask("GetClass", {class_named("K_Bottom")}).values, "PROPERTY"), Names{});
    EXPECT_EQ(names_of(ask("GetClass", {class_named("K_Bottom"), {"LocalOnly", true}}).values, "PROPERTY"), Names{});
    const ClassAnswer whole = ask("GetClass", {class_named("K_Bottom"), {"LocalOnly", false}});
    EXPECT_EQ(names_of(whole.values, "PROPERTY"), (Names{"Id", "Note", "More"}));
    EXPECT_EQ(names_of(whole.values, "METHOD"), Names{"Stop"});
    EXPECT_TRUE(has(whole, R"(<QUALIFIER NAME="Description" TYPE="string" PROPAGATED="true" TRANSLATABLE="true">)"));
}

TEST(ClassOperations, IncludeQualifiersIsTrueByDefault) {
    EXPECT_TRUE(has(ask("GetClass", {class_named("K_Top")}), "<QUALIFIER"));
    EXPECT_TRUE(has(ask("GetClass", {class_named("K_Top"), {"IncludeQualifiers", true}}), "<QUALIFIER"));
    EXPECT_FALSE(has(ask("GetClass", {class_named("K_Top"), {"IncludeQualifiers", false}}), "<QUALIFIER"));
}

TEST(ClassOperations, IncludeClassOriginIsFalseByDefault) {
    EXPECT_FALSE(has(ask("GetClass", {class_named("K_Middle")}), "CLASSORIGIN"));
    EXPECT_FALSE(has(ask("GetClass", {class_named("K_Middle"), {"IncludeClassOrigin", false}}), "CLASSORIGIN"));
    const ClassAnswer told = ask("GetClass", {class_named("K_Middle"), {"IncludeClassOrigin", true}});
    EXPECT_TRUE(has(told, R"(<PROPERTY NAME="Note" TYPE="string" CLASSORIGIN="K_Top">)")) << told.values;
    EXPECT_TRUE(has(told, R"(<PROPERTY NAME="More" TYPE="string" CLASSORIGIN="K_Middle">)")) << told.values;
}

TEST(ClassOperations, PropertyListLeavesOutOtherProperties) {
    const auto listed = [](Names list) {
        return names_of(ask("GetClass", {class_named("K_Middle"), {"LocalOnly", false}, {"PropertyList", list}}).values,
                        "PROPERTY");
    };
    EXPECT_EQ(listed({"MORE", "id", "K_None"}), (Names{"Id", "More"}));
    EXPECT_EQ(listed({}), Names{});
}

// ---------------------------------------------------------------------------------------------- enumerations

struct Enumerated {
    const char* name;
    Parameters parameters;
    Names classes;
};

const std::vector<Enumerated>& enumerations() {
    static const std::vector<Enumerated> rows{
        {"all at the top", {}, {"K_Top", "K_Other"}},
        {"all at the top, said so", {{"DeepInheritance", false}}, {"K_Top", "K_Other"}},
        {"all", {{"DeepInheritance", true}}, {"K_Top", "K_Other", "K_Middle", "K_Bottom", "K_Beside"}},
        {"next below one", {class_named("K_TOP")}, {"K_Middle", "K_Beside"}},
        {"all below one", {class_named("k_top"), {"DeepInheritance", true}}, {"K_Middle", "K_Bottom", "K_Beside"}},
        {"below a class in the middle", {class_named("K_Middle"), {"DeepInheritance", true}}, {"K_Bottom"}},
        {"below a class without subclasses", {class_named("K_Other"), {"DeepInheritance", true}}, {}},
    };
    return rows;
}

TEST(ClassOperations, EnumerateClassNamesByClassAndDepth) {
    for (const Enumerated& row : enumerations()) {
        SCOPED_TRACE(row.name);
        const ClassAnswer answer = ask("EnumerateClassNames", row.parameters);
        EXPECT_EQ(answer.status.code, CimCode::ok);
        EXPECT_EQ(names_of(answer.values, "CLASSNAME"), row.classes);
        EXPECT_EQ(answer.objects, row.classes.size());
    }
}

TEST(ClassOperations, EnumerateClassesByClassAndDepth) {
    for (const Enumerated& row : enumerations()) {
        SCOPED_TRACE(row.name);
        const ClassAnswer answer = ask("EnumerateClasses", row.parameters);
        EXPECT_EQ(answer.status.code, CimCode::ok);
        EXPECT_EQ(names_of(answer.values, "CLASS"), row.classes);
        EXPECT_EQ(answer.objects, row.classes.size());
    }
}

TEST(ClassOperations, EnumeratedClassesAreWrittenAsGetClassWritesThem) {
    for (const bool value : {false, true})
        for (const char* option : {"LocalOnly", "IncludeQualifiers", "IncludeClassOrigin"}) {
            const ClassAnswer all = ask("EnumerateClasses", {{"DeepInheritance", true}, {option, value}});
            std::string each;
            for (const char* name : {"K_Top", "K_Other", "K_Middle", "K_Bottom", "K_Beside"})
                each += ask("GetClass", {class_named(name), {option, value}}).values;
            EXPECT_EQ(all.values, each) << option << value;
        }
}

TEST(ClassOperations, EnumerationsBelowAnUnknownClassAreInvalid) {
    for (const char* operation : {"EnumerateClasses", "EnumerateClassNames"})
        for (const bool deep : {false, true}) {
            const ClassAnswer answer = ask(operation, {class_named("K_None"), {"DeepInheritance", deep}});
            EXPECT_EQ(answer.status.code, CimCode::invalid_class);
            EXPECT_EQ(answer.status.description, "class K_None is not declared");
            EXPECT_EQ(answer.values, "");
        }
}

TEST(ClassOperations, SubclassesOfTheProvidersSchemaAreAllThere) {
    const mof::Schema& schema = mof::provider_schema();
    const ClassAnswer all = ask("EnumerateClassNames", {{"DeepInheritance", true}}, schema);
    EXPECT_EQ(all.objects, schema.classes().size());
    const ClassAnswer endpoints =
        ask("EnumerateClassNames", {class_named("CIM_ProtocolEndpoint"), {"DeepInheritance", true}}, schema);
    EXPECT_EQ(
        names_of(endpoints.values, "CLASSNAME"),
        (Names{"CIM_IPProtocolEndpoint", "CIM_TCPProtocolEndpoint", "CIM_LANEndpoint", "ZANTO_FCIPProtocolEndPoint",
               "ZANTO_IPProtocolEndPoint", "ZANTO_TCPProtocolEndPoint", "ZANTO_LANEndPoint"}));
}

// ---------------------------------------------------------------------------------------------- qualifiers

TEST(ClassOperations, GetQualifierAnswersItsDeclaration) {
    const ClassAnswer answer = ask("GetQualifier", {{"QualifierName", std::string("description")}});
    EXPECT_EQ(answer.status.code, CimCode::ok);
    EXPECT_EQ(answer.objects, 1U);
    EXPECT_EQ(names_of(answer.values, "QUALIFIER.DECLARATION"), Names{"Description"});
}

TEST(ClassOperations, GetQualifierOfAnUnknownOneIsNotFound) {
    const ClassAnswer answer = ask("GetQualifier", {{"QualifierName", std::string("Nothing")}});
    EXPECT_EQ(answer.status.code, CimCode::not_found);
    EXPECT_EQ(answer.status.description, "qualifier Nothing is not declared");
    EXPECT_EQ(answer.objects, 0U);
}

TEST(ClassOperations, EnumerateQualifiersAnswersAll) {
    const ClassAnswer answer = ask("EnumerateQualifiers", {});
    EXPECT_EQ(names_of(answer.values, "QUALIFIER.DECLARATION"),
              (Names{"Abstract", "Association", "EmbeddedInstance", "EmbeddedObject", "Key", "Override", "Required",
                     "Description"}));
    EXPECT_EQ(answer.objects, 8U);
    EXPECT_EQ(ask("EnumerateQualifiers", {}, mof::provider_schema()).objects,
              mof::provider_schema().qualifiers().size());
}

} // namespace

} // namespace cmpihost::server
