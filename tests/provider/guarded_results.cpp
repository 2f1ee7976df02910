// The provider built with FCIP_GUARD_RESULTS, as packages have it: a library of its own, loaded and asked through its
// MI tables, beside the unguarded provider that this program is linked with.
#include "host/broker/loader.h"
#include "tests/support/corpus.h"

#include <map>

namespace {

using namespace test;
using switchsim::Fault;

/// Nulls and other unusable pointers among the results.
struct Unusable {
    unsigned nulls = 0;
    unsigned invalid = 0;

    bool operator==(const Unusable&) const = default;
};

Unusable unusable(const cmpihost::Answer& answer) {
    return {answer.null_results, answer.invalid_results};
}

std::ostream& operator<<(std::ostream& out, const Unusable& counts) {
    return out << counts.nulls << " nulls, " << counts.invalid << " invalid";
}

/// By operation and class of the request's path.
using Counts = std::map<std::string, Unusable>;

std::string operation_and_class(const cmpihost::Request& request) {
    const std::string name = name_of(request);
    return name.substr(0, name.find(' ') + 1) + request.path.class_name;
}

// ---------------------------------------------------------------------------------------------- a server that touches

unsigned touched = 0;

/// As servers do that copy what they are given: a pointer to nothing is the end of the process.
CMPIStatus touch_instance(const CMPIResult* /*self*/, const CMPIInstance* instance) {
    ++touched;
    CMPIStatus status{};
    instance->ft->getPropertyCount(instance, &status);
    return status;
}

CMPIStatus touch_path(const CMPIResult* /*self*/, const CMPIObjectPath* path) {
    ++touched;
    CMPIStatus status{};
    path->ft->getKeyCount(path, &status);
    return status;
}

const CMPIResultFT touching_functions{.ftVersion = 100,
                                      .release = nullptr,
                                      .clone = nullptr,
                                      .returnData = nullptr,
                                      .returnInstance = touch_instance,
                                      .returnObjectPath = touch_path,
                                      .returnDone = nullptr};
const CMPIResult touching_result{nullptr, &touching_functions};

// ---------------------------------------------------------------------------------------------- tests

class GuardedResults : public RequestTest {
  protected:
    void SetUp() override {
        RequestTest::SetUp();
        captured([&] { library.create("FCIPProvider"); });
        guarded = library.provider();
        ASSERT_NE(guarded.instance_mi, provider.instance_mi) << "the library has tables of its own";
        switchsim::clear_counts();
    }

    cmpihost::Answer ask_guarded(const cmpihost::Request& request) {
        auto answer = captured([&] { return cmpihost::run(guarded, request); });
        RequestTest::hold_against_schema(answer, request);
        return answer;
    }

    cmpihost::Answer get_guarded(const cmpihost::Object& path) {
        cmpihost::Request request;
        request.operation = Operation::get_instance;
        request.path = path;
        return ask_guarded(request);
    }

    /// Asks both for everything: the guarded one answers and prints the same but for the unusable results.
    /// @return those of the unguarded one
    Counts unusable_results_of_the_corpus() {
        Counts counts;
        for (const auto& request : all_requests()) {
            SCOPED_TRACE(name_of(request));
            const auto expected = ask(request);
            const std::string expected_trace = trace;
            const auto answer = ask_guarded(request);
            EXPECT_EQ(answer.rc, expected.rc);
            EXPECT_EQ(answer.message, expected.message);
            EXPECT_EQ(answer.objects, expected.objects);
            EXPECT_EQ(unusable(answer), Unusable{});
            EXPECT_EQ(trace, expected_trace);
            if (unusable(expected) == Unusable{})
                continue;
            Unusable& count = counts[operation_and_class(request)];
            count.nulls += expected.null_results;
            count.invalid += expected.invalid_results;
        }
        return counts;
    }

    /// Asks with a result that touches what it is given.
    void ask_touching(const cmpihost::Provider& asked, const cmpihost::Request& request) {
        CMPIInstanceMI* instances = asked.instance_mi;
        CMPIAssociationMI* associations = asked.association_mi;
        const CMPIContext* context = scope.context();
        const CMPIResult* result = &touching_result;
        const CMPIObjectPath* path = cmpihost::new_path(request.path);
        const char* association = request.assoc_class ? request.assoc_class->c_str() : nullptr;
        switch (request.operation) {
        case Operation::enumerate_instances:
            instances->ft->enumerateInstances(instances, context, result, path, nullptr);
            break;
        case Operation::enumerate_instance_names:
            instances->ft->enumerateInstanceNames(instances, context, result, path);
            break;
        case Operation::get_instance:
            instances->ft->getInstance(instances, context, result, path, nullptr);
            break;
        case Operation::associators:
            associations->ft->associators(associations, context, result, path, association, nullptr, nullptr, nullptr,
                                          nullptr);
            break;
        case Operation::associator_names:
            associations->ft->associatorNames(associations, context, result, path, association, nullptr, nullptr,
                                              nullptr);
            break;
        case Operation::references:
            associations->ft->references(associations, context, result, path, association, nullptr, nullptr);
            break;
        case Operation::reference_names:
            associations->ft->referenceNames(associations, context, result, path, association, nullptr);
            break;
        default:
            FAIL() << "no operation of the corpus";
        }
    }

    cmpihost::Library library{FCIP_BINARY_DIR "/tests/libguarded_provider.so"};
    cmpihost::Provider guarded;
};

const Counts of_a_healthy_switch{
    {"ei ZANTO_RemoteIPPort", {3, 0}}, {"ai ZANTO_LanEndPoint", {1, 0}}, {"ain ZANTO_LanEndPoint", {1, 0}}};

TEST_F(GuardedResults, OfAHealthySwitchLackTheNulls) {
    EXPECT_EQ(unusable_results_of_the_corpus(), of_a_healthy_switch);
}

TEST_F(GuardedResults, OfSystemsThatCannotBeNamedLackTheMinusOnes) {
    switchsim::inject("vsan_cim_get_vsanEntry", Fault::fail);
    Counts expected = of_a_healthy_switch;
    expected["ai ZANTO_FCIPProtocolEndPoint"] = expected["ain ZANTO_FCIPProtocolEndPoint"] = {0, 1};
    expected["ai ZANTO_IPProtocolEndPoint"] = {0, 1};
    expected["ain ZANTO_IPProtocolEndPoint"] = {0, 17}; // the system under most association names
    expected["ai ZANTO_TCPProtocolEndPoint"] = {0, 1};
    EXPECT_EQ(unusable_results_of_the_corpus(), expected);
}

TEST_F(GuardedResults, WithoutProfilesLackInstancesAndPathsThatNeedOne) {
    switchsim::inject("fcip_get_entity_entry", Fault::fail);
    Counts by_operation;
    for (const auto& [name, count] : unusable_results_of_the_corpus()) {
        Unusable& sum = by_operation[name.substr(0, name.find(' '))];
        sum.nulls += count.nulls;
        sum.invalid += count.invalid;
    }
    const Counts expected{{"ei", {36, 0}}, {"ein", {39, 0}}, {"gi", {10, 0}}, {"ai", {21, 0}}, {"ain", {23, 0}}};
    EXPECT_EQ(by_operation, expected);
}

TEST_F(GuardedResults, OfAGetLackAMinusOne) {
    the_switch().links.erase(tunnel_1); // no link of index 0, which a key of no link leads to
    const auto path = path_of("ZANTO_TCPSettings", {{"InstanceID", "99"}});
    EXPECT_EQ(unusable(get(path)), (Unusable{0, 1}));
    const auto answer = get_guarded(path);
    EXPECT_EQ(unusable(answer), Unusable{});
    EXPECT_TRUE(answer.objects.empty());
}

TEST_F(GuardedResults, KeepAServerAliveThatTouchesThem) {
    for (const char* failing : {"", "vsan_cim_get_vsanEntry", "fcip_get_entity_entry"}) {
        switchsim::clear_faults();
        if (*failing != '\0')
            switchsim::inject(failing, Fault::fail);
        touched = 0;
        std::size_t expected = 0;
        for (const auto& request : all_requests()) {
            expected += ask(request).objects.size();
            captured([&] { ask_touching(guarded, request); });
        }
        EXPECT_EQ(touched, expected) << failing;
        EXPECT_GT(touched, 50u) << failing;
    }
}

/// A request that the unguarded provider answers with one unusable pointer at least.
struct DeadlyRow {
    const char* failing;
    Operation operation;
    cmpihost::Object path;
    const char* association;
};

TEST_F(GuardedResults, UnguardedEndAServerThatTouchesThem) {
    const auto tunnel = path_of("ZANTO_FCIPProtocolEndPoint", {{"Name", "1_10.1.1.1_10.1.1.2"}});
    const char* hosted = "ZANTO_SwitchHostedFCIPAccessPoint";
    for (const DeadlyRow& row :
         {DeadlyRow{"fcip_get_entity_entry", Operation::enumerate_instances, path_of("ZANTO_FCIPSettings"), nullptr},
          DeadlyRow{"fcip_get_entity_entry", Operation::enumerate_instance_names, path_of("ZANTO_FCIPSettings"),
                    nullptr},
          DeadlyRow{"vsan_cim_get_vsanEntry", Operation::associators, tunnel, hosted},
          DeadlyRow{"vsan_cim_get_vsanEntry", Operation::associator_names, tunnel, hosted}}) {
        cmpihost::Request request;
        request.operation = row.operation;
        request.path = row.path;
        if (row.association != nullptr)
            request.assoc_class = row.association;
        SCOPED_TRACE(name_of(request));
        switchsim::clear_faults();
        switchsim::inject(row.failing, Fault::fail);
        captured([&] { EXPECT_DEATH(ask_touching(provider, request), ""); });
        captured([&] { ask_touching(guarded, request); });
    }
}

// ---------------------------------------------------------------------------------------------- role keys

struct RoleRow {
    const char* class_name;
    const char* first_role;
    const char* second_role;
};

constexpr RoleRow role_rows[] = {
    {"ZANTO_TCPIPEndpoint", "Antecedent", "Dependent"},
    {"ZANTO_FCIPPEBasedOn", "GroupComponent", "PartComponent"},
    {"ZANTO_IPElementSettingData", "ManagedElement", "SettingData"},
    {"ZANTO_EthernetPortStatisticalData", "ManagedElement", "Stats"},
};

constexpr const char* association_builder = "association_class_build_instance_path";

TEST_F(GuardedResults, RoleKeyThatIsNoReferenceCountsAsMissing) {
    whole_objects_expected = false; // the ends are made up
    const cmpihost::Value reference{std::make_shared<const cmpihost::Object>(path_of("ZANTO_X", {{"Name", "1"}}))};
    for (const RoleRow& row : role_rows) {
        SCOPED_TRACE(row.class_name);
        const cmpihost::Property good_first{row.first_role, "reference", reference};
        const cmpihost::Property good_second{row.second_role, "reference", reference};
        const cmpihost::Property text_first{row.first_role, "string", {"text"}};
        const cmpihost::Property number_second{row.second_role, "uint16", {std::uint64_t{5}}};
        auto path = path_of(row.class_name);
        for (const auto& keys : {std::vector{text_first, good_second}, std::vector{good_first, number_second},
                                 std::vector{text_first, number_second}}) {
            path.keys = keys;
            const auto answer = get_guarded(path);
            EXPECT_TRUE(answer.objects.empty());
            EXPECT_EQ(answer.rc, CMPI_RC_OK);
            EXPECT_EQ(answer.message, std::nullopt);
            EXPECT_EQ(switchsim::calls(association_builder), 0u);
        }
        path.keys = {text_first, good_second};
        get(path); // which the unguarded one hands on
        EXPECT_EQ(switchsim::calls(association_builder), 1u);
        switchsim::clear_counts();
    }
}

TEST_F(GuardedResults, RoleKeysThatAreReferencesAreHandedOn) {
    whole_objects_expected = false; // the ends are made up
    const cmpihost::Value reference{std::make_shared<const cmpihost::Object>(path_of("ZANTO_X", {{"Name", "1"}}))};
    for (const RoleRow& row : role_rows) {
        SCOPED_TRACE(row.class_name);
        auto path = path_of(row.class_name);
        path.keys = {{row.first_role, "reference", reference}, {row.second_role, "reference", reference}};
        const auto answer = get_guarded(path);
        ASSERT_EQ(answer.objects.size(), 1u);
        EXPECT_EQ(answer.objects, get(path).objects);
    }
}

} // namespace
