// What each operation does before it takes the lock, under it, and after it gave it back. This program stands in front
// of the lock and of the request's path, and writes into the trace when they are used.
#include "tests/support/request_test.h"

#include <dlfcn.h>

#include <cstdio>

namespace {

bool marks = false;

void mark(const char* text) {
    if (marks)
        std::printf("(%s)\n", text);
}

void call_platform(const char* function) {
    reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, function))();
}

} // namespace

void mutex_lock(void) {
    call_platform("mutex_lock");
    mark("locked");
}

void mutex_unlock(void) {
    call_platform("mutex_unlock");
    mark("unlocked");
}

namespace {

using namespace test;

CMPIObjectPathFT bare_table{};
CMPIObjectPathFT marking_table{};

CMPIString* marking_get_name_space(const CMPIObjectPath* path, CMPIStatus* status) {
    mark("namespace");
    return bare_table.getNameSpace(path, status);
}

class LockOrder : public RequestTest {
  protected:
    void SetUp() override {
        RequestTest::SetUp();
        marks = true;
    }

    void TearDown() override {
        marks = false;
        RequestTest::TearDown();
    }

    /// A path that tells when its namespace is read.
    static CMPIObjectPath* marking_path(const cmpihost::Object& object) {
        CMPIObjectPath* path = cmpihost::new_path(object);
        bare_table = *path->ft;
        marking_table = bare_table;
        marking_table.getNameSpace = marking_get_name_space;
        path->ft = &marking_table;
        return path;
    }

    std::string get_trace(const cmpihost::Object& object) {
        const auto* path = marking_path(object);
        captured([&] {
            provider.instance_mi->ft->getInstance(provider.instance_mi, scope.context(), scope.result(), path, nullptr);
        });
        return trace;
    }

    /// The traces of the four association operations from one source.
    std::vector<std::string> association_traces(const cmpihost::Object& object) {
        auto* mi = provider.association_mi;
        const auto* path = marking_path(object);
        const auto* context = scope.context();
        const auto* result = scope.result();
        const char* asked = "ZANTO_NoSuchClass";
        std::vector<std::string> traces;
        const auto add = [&](auto operation) {
            captured(operation);
            traces.push_back(trace);
        };
        add([&] { mi->ft->associators(mi, context, result, path, asked, nullptr, nullptr, nullptr, nullptr); });
        add([&] { mi->ft->associatorNames(mi, context, result, path, asked, nullptr, nullptr, nullptr); });
        add([&] { mi->ft->references(mi, context, result, path, asked, nullptr, nullptr); });
        add([&] { mi->ft->referenceNames(mi, context, result, path, asked, nullptr); });
        return traces;
    }
};

constexpr const char* association_operations[] = {"FCIP_Associators", "FCIP_AssociatorNames", "FCIP_References",
                                                  "FCIP_ReferenceNames"};

const std::string get_entering = "Entering FCIP_GetInstance\n";

TEST_F(LockOrder, EnumerationsReadTheNamespaceBeforeTheyTakeTheLock) {
    const auto* path = marking_path(path_of("ZANTO_FCPortProtocolEndPoint"));
    auto* mi = provider.instance_mi;
    captured([&] { mi->ft->enumerateInstances(mi, scope.context(), scope.result(), path, nullptr); });
    EXPECT_EQ(trace, "(namespace)\n(locked)\n(unlocked)\n");

    the_switch().links.clear();
    path = marking_path(path_of("ZANTO_FCIPProtocolEndPoint"));
    captured([&] { mi->ft->enumerateInstanceNames(mi, scope.context(), scope.result(), path); });
    EXPECT_EQ(trace, "(namespace)\n(locked)\nEntering get_all_fcip_pe_references\n(unlocked)\n");
}

TEST_F(LockOrder, GetReadsNamespaceAndKeyBeforeLockAndExitsAfterIt) {
    EXPECT_EQ(get_trace(path_of("ZANTO_EthernetPort", {{"DeviceID", "1"}})),
              "(namespace)\n" + get_entering +
                  "\tfound key DeviceID : 1\n(locked)\n(unlocked)\nExiting FCIP_GetInstance\n");
    EXPECT_TRUE(get_trace(path_of("ZANTO_FCIPProtocolEndPoint", {{"Name", "1_"}}))
                    .ends_with("Exiting fcip_pe_build_instance\n(unlocked)\nExiting FCIP_GetInstance\n"));
}

TEST_F(LockOrder, GetWithoutItsKeyTakesNoLock) {
    EXPECT_EQ(get_trace(path_of("ZANTO_FCIPProtocolEndPoint")),
              "(namespace)\n" + get_entering + "getInstance can't find key\n");
}

TEST_F(LockOrder, AssociationsReadNamespaceUnderLockAndExitAfterIt) {
    const auto traces = association_traces(path_of("ZANTO_FCIPProtocolEndPoint", {{"Name", "1_10.1.1.1_10.1.1.2"}}));
    for (std::size_t operation = 0; operation < traces.size(); ++operation) {
        SCOPED_TRACE(traces[operation]);
        const std::string name = association_operations[operation];
        EXPECT_TRUE(traces[operation].starts_with("Entering " + name + "\n\tfound key Name : 1_10.1.1.1_10.1.1.2"));
        EXPECT_NE(traces[operation].find("\n(locked)\n(namespace)\n"), std::string::npos);
        EXPECT_EQ(traces[operation].find("(namespace)"), traces[operation].rfind("(namespace)"));
        EXPECT_TRUE(traces[operation].ends_with("(unlocked)\nExiting " + name + "\n"));
    }
}

TEST_F(LockOrder, SourceThatNobodyTraversesReadsNoNamespace) {
    const auto traces = association_traces(path_of("ZANTO_FCIPPEBasedOn", {{"Antecedent", "x"}}));
    for (std::size_t operation = 0; operation < traces.size(); ++operation) {
        const std::string name = association_operations[operation];
        std::string expected = "Entering " + name + "\n\tfound key Antecedent : x";
        expected += operation < 2 ? "\n" : " \n";
        expected += "(locked)\n(unlocked)\nExiting " + name + "\n";
        EXPECT_EQ(traces[operation], expected);
    }
}

TEST_F(LockOrder, AssociationsWithoutKeyTakeNeitherLockNorNamespace) {
    for (const std::string& one : association_traces(path_of("ZANTO_FCIPProtocolEndPoint"))) {
        EXPECT_TRUE(one.ends_with("can't find key\n")) << one;
        EXPECT_EQ(one.find('('), std::string::npos) << one;
    }
}

} // namespace
