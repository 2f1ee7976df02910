// The shapes of associations, and the rebuilders of get-instance.
#include "provider/associations/shapes.h"

#include "provider/associations/rebuilders.h"
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/common/results.h"
#include "provider/common/values.h"
#include "tests/provider/associations/association_test.h"
#include "tests/support/front_broker.h"

namespace {

using namespace test;

struct ShapeRow {
    const char* name;
    fcip::association_path_builder* fill; ///< null: the shape has instances only
    fcip::association_instance_builder* build;
    const char* first;
    const char* second;
    bool setting;
};

constexpr ShapeRow shapes[] = {
    {"realize", fcip::realize_fill_reference, fcip::realize_build_instance, "Antecedent", "Dependent", false},
    {"group-part", fcip::group_part_fill_reference, fcip::group_part_build_instance, "GroupComponent", "PartComponent",
     false},
    {"managed-stats", fcip::managed_stats_fill_reference, fcip::managed_stats_build_instance, "ManagedElement", "Stats",
     false},
    {"managed-setting", fcip::managed_setting_fill_reference, fcip::managed_setting_build_instance, "ManagedElement",
     "SettingData", true},
    {"system-software", nullptr, fcip::hba_si_build_instance, "System", "InstalledSoftware", false},
};

class Shapes : public AssociationTest {
  protected:
    void SetUp() override {
        AssociationTest::SetUp();
        first = end("ZANTO_First");
        second = end("ZANTO_Second");
    }

    static CMPIObjectPath* end(const char* class_name) {
        CMPIObjectPath* path = fcip::new_path("root/cimv2", class_name);
        fcip::add_string_key(path, "InstanceID", "1");
        return path;
    }

    Rows expected_of(const ShapeRow& shape) const {
        Rows expected = {{shape.first, "reference", R"(root/cimv2:ZANTO_First.InstanceID="1")"},
                         {shape.second, "reference", R"(root/cimv2:ZANTO_Second.InstanceID="1")"}};
        if (shape.setting) {
            expected.push_back({"IsDefault", "uint16", "1"});
            expected.push_back({"IsCurrent", "uint16", "1"});
        }
        return expected;
    }

    void expect_ends(const ShapeRow& shape, const cmpihost::Object& object,
                     const std::vector<cmpihost::Property>& ends) const {
        EXPECT_EQ(rows(ends), expected_of(shape));
        EXPECT_EQ(object.class_name, "ZANTO_X");
        EXPECT_EQ(object.name_space, "root/cimv2");
        EXPECT_EQ(object.host, "switch-a");
        EXPECT_EQ(trace, "");
    }

    CMPIObjectPath* fill(const ShapeRow& shape, CMPIObjectPath* one, CMPIObjectPath* other) {
        return call([&] { return shape.fill("ZANTO_X", "root/cimv2", one, other, _broker); });
    }

    CMPIInstance* build(const ShapeRow& shape, CMPIObjectPath* one, CMPIObjectPath* other) {
        return call([&] { return shape.build("ZANTO_X", "root/cimv2", one, other, _broker); });
    }

    CMPIObjectPath* first = nullptr;
    CMPIObjectPath* second = nullptr;
};

TEST_F(Shapes, PathsHaveTheirRolesAsKeysInOrder) {
    for (const ShapeRow& shape : shapes) {
        if (shape.fill == nullptr)
            continue;
        SCOPED_TRACE(shape.name);
        const auto path = cmpihost::describe(fill(shape, first, second));
        expect_ends(shape, path, path.keys);
    }
}

TEST_F(Shapes, InstancesHaveTheirRolesAsPropertiesInOrder) {
    for (const ShapeRow& shape : shapes) {
        SCOPED_TRACE(shape.name);
        const auto instance = cmpihost::describe(build(shape, first, second));
        expect_ends(shape, instance, instance.properties);
    }
}

TEST_F(Shapes, AMissingEndIsPrintedAndGivesNull) {
    CMPIObjectPath no_handle{nullptr, first->ft};
    for (CMPIObjectPath* missing :
         {static_cast<CMPIObjectPath*>(nullptr), fcip::minus_one<CMPIObjectPath>(), &no_handle})
        for (const ShapeRow& shape : shapes) {
            SCOPED_TRACE(shape.name);
            EXPECT_EQ(build(shape, missing, second), nullptr);
            EXPECT_EQ(trace, "swop : NULL\n");
            EXPECT_EQ(build(shape, first, missing), nullptr);
            EXPECT_EQ(trace, "peop : NULL\n");
            EXPECT_EQ(build(shape, missing, missing), nullptr);
            EXPECT_EQ(trace, "swop : NULL\n");
            if (shape.fill == nullptr)
                continue;
            EXPECT_EQ(fill(shape, missing, second), nullptr);
            EXPECT_EQ(trace, "swop : NULL\n");
            EXPECT_EQ(fill(shape, first, missing), nullptr);
            EXPECT_EQ(trace, "peop : NULL\n");
        }
}

TEST_F(Shapes, AnObjectThatIsNotMadeGivesNullWithoutAWord) {
    for (const ShapeRow& shape : shapes) {
        SCOPED_TRACE(shape.name);
        for (const unsigned nth : {1u, 2u}) { // the path, the instance
            scope.fail_object(nth);
            EXPECT_EQ(build(shape, first, nullptr), nullptr);
            EXPECT_EQ(trace, "");
        }
        if (shape.fill == nullptr)
            continue;
        scope.fail_object(1);
        EXPECT_EQ(fill(shape, nullptr, second), nullptr);
        EXPECT_EQ(trace, "");
    }
}

TEST_F(Shapes, AnObjectWithoutHandleGivesNullWithoutAWord) {
    for (const ShapeRow& shape : shapes) {
        SCOPED_TRACE(shape.name);
        for (const auto what :
             {FrontBroker::makes::paths_without_handle, FrontBroker::makes::instances_without_handle}) {
            const FrontBroker front(what);
            EXPECT_EQ(build(shape, first, second), nullptr);
            EXPECT_EQ(trace, "");
            EXPECT_EQ(build(shape, nullptr, second), nullptr);
            EXPECT_EQ(trace, "");
        }
        if (shape.fill == nullptr)
            continue;
        const FrontBroker front(FrontBroker::makes::paths_without_handle);
        EXPECT_EQ(fill(shape, first, second), nullptr);
        EXPECT_EQ(trace, "");
        EXPECT_EQ(fill(shape, nullptr, second), nullptr);
        EXPECT_EQ(trace, "");
    }
}

TEST_F(Shapes, ASwitchWithoutNameIsAnEmptyHost) {
    the_switch().has_name = false;
    EXPECT_EQ(cmpihost::describe(fill(shapes[0], first, second)).host, "");
    EXPECT_EQ(cmpihost::describe(build(shapes[0], first, second)).host, "");
}

// ---------------------------------------------------------------------------------------------- rebuilders

struct RebuilderRow {
    const char* name;
    fcip::association_rebuilder* rebuild;
    const ShapeRow& shape;
    bool prints_keys;
};

const RebuilderRow rebuilders[] = {
    {"get_ant_dep_instance", fcip::get_ant_dep_instance, shapes[0], false},
    {"get_group_part_instance", fcip::get_group_part_instance, shapes[1], true},
    {"get_managed_stats_instance", fcip::get_managed_stats_instance, shapes[2], false},
    {"get_managed_setting_instance", fcip::get_managed_setting_instance, shapes[3], false},
};

/// Reference keys as a client may send them, where the broker's own paths keep one key of a name and no null ones.
class Keys {
  public:
    using List = std::vector<std::pair<const char*, CMPIObjectPath*>>;

    /// Gives the path these keys in place of its own.
    static void put(CMPIObjectPath* path, List keys) {
        list = std::move(keys);
        table = *path->ft;
        table.getKeyCount = [](const CMPIObjectPath*, CMPIStatus*) { return static_cast<CMPICount>(list.size()); };
        table.getKeyAt = [](const CMPIObjectPath*, CMPICount index, CMPIString** name, CMPIStatus*) {
            *name = CMNewString(_broker, list.at(index).first, nullptr);
            CMPIData data{CMPI_ref, CMPI_goodValue, {}};
            data.value.ref = list.at(index).second;
            return data;
        };
        path->ft = &table;
    }

  private:
    inline static List list;
    inline static CMPIObjectPathFT table{};
};

class Rebuilders : public Shapes {
  protected:
    static std::string lower(std::string text) {
        for (char& c : text)
            c = static_cast<char>(std::tolower(c));
        return text;
    }

    Outcome rebuild(const RebuilderRow& row, const CMPIObjectPath* path) {
        return outcome_of([&] { return row.rebuild(path, scope.result(), nullptr); });
    }

    static CMPIObjectPath* association(const char* class_name = "ZANTO_Y") {
        return fcip::new_path("root/other", class_name);
    }
};

TEST_F(Rebuilders, MakeTheInstanceOfTheTwoRoles) {
    for (const RebuilderRow& row : rebuilders) {
        SCOPED_TRACE(row.name);
        CMPIObjectPath* path = association();
        fcip::add_reference_key(path, row.shape.first, first);
        fcip::add_reference_key(path, row.shape.second, second);
        const auto outcome = rebuild(row, path);
        EXPECT_EQ(outcome.status, 0);
        ASSERT_EQ(outcome.answer.objects.size(), 1u);
        const auto& instance = outcome.answer.objects[0];
        EXPECT_EQ(rows(instance.properties), expected_of(row.shape));
        EXPECT_EQ(instance.class_name, "ZANTO_Y"); // not held against any catalogue
        EXPECT_EQ(instance.name_space, "root/other");
        EXPECT_EQ(trace, row.prints_keys ? "Key GroupComponent \nKey PartComponent \n" : "");
    }
}

TEST_F(Rebuilders, FindTheRolesInAnyOrderAndAnyCaseAmongOtherKeys) {
    for (const RebuilderRow& row : rebuilders) {
        SCOPED_TRACE(row.name);
        CMPIObjectPath* path = association();
        fcip::add_reference_key(path, lower(row.shape.second).c_str(), second);
        fcip::add_string_key(path, "Other", "x");
        fcip::add_reference_key(path, lower(row.shape.first).c_str(), first);
        const auto outcome = rebuild(row, path);
        EXPECT_EQ(outcome.status, 0);
        ASSERT_EQ(outcome.answer.objects.size(), 1u);
        EXPECT_EQ(rows(outcome.answer.objects[0].properties), expected_of(row.shape));
        EXPECT_EQ(trace, row.prints_keys ? "Key partcomponent \nKey Other \nKey groupcomponent \n" : "");
    }
}

TEST_F(Rebuilders, WithoutOneOfTheRolesAnswerMinusOneAndNothing) {
    for (const RebuilderRow& row : rebuilders)
        for (const char* only : {row.shape.first, row.shape.second, "Other"}) {
            CMPIObjectPath* path = association();
            fcip::add_reference_key(path, only, first);
            const auto outcome = rebuild(row, path);
            EXPECT_EQ(outcome.status, -1) << row.name;
            EXPECT_TRUE(outcome.answer.objects.empty());
            EXPECT_EQ(outcome.answer.null_results, 0u);
        }
    EXPECT_EQ(switchsim::calls("association_class_build_instance_path"), 0u);
}

TEST_F(Rebuilders, HandOnWhatThePlatformGives) {
    for (const RebuilderRow& row : rebuilders) {
        CMPIObjectPath* path = association();
        fcip::add_reference_key(path, row.shape.first, first);
        fcip::add_reference_key(path, row.shape.second, second);
        switchsim::inject("association_class_build_instance_path", switchsim::Fault::fail, 1);
        const auto outcome = rebuild(row, path);
        EXPECT_EQ(outcome.status, 0) << row.name;
        EXPECT_EQ(outcome.answer.null_results, 1u);
    }
}

TEST_F(Rebuilders, ARoleThatIsNoReferenceIsHandedOnUnchecked) {
    for (const RebuilderRow& row : rebuilders) {
        SCOPED_TRACE(row.name);
        CMPIObjectPath* path = association();
        fcip::add_string_key(path, row.shape.first, "no reference");
        fcip::add_reference_key(path, row.shape.second, second);
        const auto outcome = rebuild(row, path);
        EXPECT_EQ(outcome.status, 0);
        ASSERT_EQ(outcome.answer.objects.size() + outcome.answer.null_results, 1u);
        EXPECT_EQ(switchsim::calls("association_class_build_instance_path"), 1u);
        switchsim::clear_counts();
    }
}

TEST_F(Rebuilders, ALaterKeyOfTheSameNameOverwritesAnEarlierOne) {
    CMPIObjectPath* third = end("ZANTO_Third");
    for (const RebuilderRow& row : rebuilders) {
        SCOPED_TRACE(row.name);
        const std::string lower_second = lower(row.shape.second);
        CMPIObjectPath* path = association();
        Keys::put(path, {{row.shape.first, third},
                         {row.shape.second, third},
                         {row.shape.first, first},
                         {lower_second.c_str(), second}});
        const auto outcome = rebuild(row, path);
        EXPECT_EQ(outcome.status, 0);
        ASSERT_EQ(outcome.answer.objects.size(), 1u);
        EXPECT_EQ(rows(outcome.answer.objects[0].properties), expected_of(row.shape));
    }
}

TEST_F(Rebuilders, ARoleWithANullReferenceIsMissing) {
    for (const RebuilderRow& row : rebuilders) {
        SCOPED_TRACE(row.name);
        for (const Keys::List& keys :
             {Keys::List{{row.shape.first, nullptr}, {row.shape.second, second}},
              Keys::List{{row.shape.first, first}, {row.shape.second, nullptr}},
              Keys::List{{row.shape.first, first}, {row.shape.second, second}, {row.shape.first, nullptr}}}) {
            CMPIObjectPath* path = association();
            Keys::put(path, keys);
            const auto outcome = rebuild(row, path);
            EXPECT_EQ(outcome.status, -1);
            EXPECT_TRUE(outcome.answer.objects.empty());
            EXPECT_EQ(outcome.answer.null_results, 0u);
        }
    }
    EXPECT_EQ(switchsim::calls("association_class_build_instance_path"), 0u);
}

TEST_F(Rebuilders, KeyNamesAreCutTo253Characters) {
    const std::string longest(253, 'x');
    CMPIObjectPath* path = association();
    fcip::add_reference_key(path, longest.c_str(), first);
    fcip::add_reference_key(path, (longest + "y").c_str(), first);
    fcip::add_reference_key(path, (longest + std::string(300, 'z')).c_str(), first);
    EXPECT_EQ(rebuild(rebuilders[1], path).status, -1);
    const std::string line = "Key " + longest + " \n";
    EXPECT_EQ(trace, line + line + line);
}

TEST_F(Rebuilders, RoleNamesAreReadWithoutCuttingOffWhatFits) {
    CMPIObjectPath* path = association();
    fcip::add_reference_key(path, ("Antecedent" + std::string(300, 'x')).c_str(), first);
    fcip::add_reference_key(path, "Dependent", second);
    EXPECT_EQ(rebuild(rebuilders[0], path).status, -1);
}

TEST_F(Rebuilders, OfGetInstanceRebuildWhatReferencesAnswered) {
    const auto asked = source("ZANTO_FCIPProtocolEndPoint").path();
    for (const char* association : {"ZANTO_FCIPElementSettingData", "ZANTO_FCIPTCPEndpoint", "ZANTO_FCIPPEBasedOn"}) {
        const auto names = walk(Operation::reference_names, asked, association);
        const auto instances = walk(Operation::references, asked, association);
        ASSERT_EQ(names.objects.size(), 1u);
        const auto got = get(names.objects[0]);
        ASSERT_EQ(got.objects.size(), 1u) << association;
        EXPECT_EQ(text_of_object(got.objects[0]), text_of_object(instances.objects.at(0)));
        EXPECT_EQ(got.objects[0].host, "switch-a");
        EXPECT_EQ(instances.objects[0].host, "switch-a");
    }
}

TEST_F(Rebuilders, AreMissingForThreeAssociationsWhoseGetIsEmpty) {
    struct {
        const char* source;
        const char* association;
    } const rows[] = {
        {"ZANTO_LanEndPoint", "CIM_HostedAccessPoint"},
        {"ZANTO_FCIPProtocolEndPoint", "ZANTO_FCPortProtocolEndPoint"},
        {"ZANTO_TCPProtocolEndPoint", "ZANTO_TCPEndPointStatisticalData"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.association);
        const auto names = walk(Operation::reference_names, source(row.source).path(), row.association);
        ASSERT_EQ(names.objects.size(), 1u);
        switchsim::clear_counts();
        const auto answer = get(names.objects[0]);
        EXPECT_EQ(answer.rc, 0);
        EXPECT_EQ(answer.message, "invalid key name"); // no key of theirs is known
        EXPECT_TRUE(answer.objects.empty());
        EXPECT_EQ(answer.null_results, 0u);
        EXPECT_EQ(switchsim::calls("association_class_build_instance_path"), 0u);
    }
}

TEST_F(Rebuilders, OfGetInstanceTakeLowerCaseRolesAndRefuseASingleOne) {
    auto path = walk(Operation::reference_names, source("ZANTO_IPProtocolEndPoint").path(), "ZANTO_TCPIPEndpoint")
                    .objects.at(0);
    for (auto& key : path.keys)
        key.name = lower(key.name);
    EXPECT_EQ(get(path).objects.size(), 1u);
    path.keys.pop_back();
    const auto answer = get(path);
    EXPECT_EQ(answer.rc, 0);
    EXPECT_EQ(answer.message, std::nullopt);
    EXPECT_TRUE(answer.objects.empty());
}

} // namespace
