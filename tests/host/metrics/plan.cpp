// What is measured of which class, and under which names.
#include "host/metrics/plan.h"

#include "tests/host/metrics/metrics_test.h"

namespace cmpihost::metrics {
namespace {

/// The plan of one class that nobody is asked for.
struct Planned {
    explicit Planned(const std::string& class_name, const views::Views& views = {},
                     const std::string& text = measured_classes)
        : schema(schema_of(text)), space{"root/test", schema, {}}, served(schema, *schema.find(class_name), ask),
          plan(make_plan(served, space, views)) {}

    std::string names() const {
        std::string text;
        for (const Metric& metric : plan.metrics)
            text += metric.name + "\n";
        return text;
    }
    std::string labels() const {
        std::string text;
        for (const Label& label : plan.labels)
            text += label.property + "=" + label.name + " ";
        return text;
    }

    mof::Schema schema;
    server::Ask ask;
    server::Namespace space;
    server::ServedClass served;
    ClassPlan plan;
};

TEST(MetricPlan, NumbersThatAreMarkedAreMeasured) {
    EXPECT_EQ(Planned("Test_Port").names(),
              "test_port_frames_total\ntest_port_received_bytes_total\n"
              "test_port_rate_bytes_per_second\ntest_port_delay_seconds\ntest_port_balance\ntest_port_load\n"
              "test_port_up\n");
    EXPECT_EQ(Planned("Test_Plain").names(), "");
}

TEST(MetricPlan, HelpEndsWithClassAndProperty) {
    views::Views views;
    views.classes.push_back({"Test_Port", {}, {}, true, "Beware.", {}});
    EXPECT_EQ(Planned("Test_Port").plan.metrics.front().help, "Frames that came. Test_Port.Frames");
    EXPECT_EQ(Planned("test_port", views).plan.metrics.front().help, "Frames that came. Beware. Test_Port.Frames");
    EXPECT_EQ(Planned("Test_Port").plan.metrics.back().help, "Test_Port.Up");
}

TEST(MetricPlan, LabelsAreKeysAndTheNameForPeople) {
    EXPECT_EQ(Planned("Test_Port").labels(), "DeviceID=device_id Instance=key_instance ElementName=name ");
    EXPECT_EQ(Planned("Test_Plain").labels(), "Name=name ");
    EXPECT_EQ(Planned("A_B", {}, "class A_B { [Key] string Name; string ElementName; };").labels(),
              "Name=name ElementName=element_name ");
}

TEST(MetricPlan, StatesComeWithTheirLabel) {
    views::Views views;
    views.classes.push_back({"Test_Port", {}, {}, true, "", {{"Status", {{"2", "ok"}, {"6", "error"}}}}});
    const Planned planned("Test_Port", views);
    const Metric& metric = planned.plan.metrics.back();
    EXPECT_EQ(metric.name, "test_port_status");
    EXPECT_FALSE(metric.counter);
    EXPECT_EQ(metric.states.size(), 2U);
}

TEST(MetricPlan, TwoPropertiesWithOneNameAreRefused) {
    const Planned planned("A_B", {},
                          "class A_B { [Key] string Id; [Counter] uint32 FooBar; [Counter] uint32 foo_bar; };");
    try {
        check_names({planned.plan});
        FAIL() << "was taken";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "metric a_b_foo_bar_total: is the name of both A_B.FooBar and A_B.foo_bar");
    }
}

TEST(MetricPlan, TwoLabelsWithOneNameAreRefused) {
    views::Views views;
    views.classes.push_back({"A_B", {}, {}, true, "", {{"Status", {{"2", "ok"}}}}});
    const std::vector<std::pair<const char*, const char*>> rows{
        {"class A_B { [Key] string FooBar; [Key] string foo_bar; [Counter] uint32 C; };",
         "label foo_bar: is the name of both A_B.FooBar and A_B.foo_bar"},
        {"class A_B { [Key] string Name; [Key] string Element_Name; string ElementName; [Counter] uint32 C; };",
         "label element_name: is the name of both A_B.Element_Name and A_B.ElementName"},
        {"class A_B { [Key] string name_; [Key] string Name; [Counter] uint32 C; };",
         "label name: is the name of both A_B.name_ and A_B.Name"},
        {"class A_B { [Key] string State; uint16 Status; };",
         "label state: is the name of both A_B.State and the states of A_B.Status"},
    };
    for (const auto& [text, expected] : rows) {
        try {
            check_names({Planned("A_B", views, text).plan});
            ADD_FAILURE() << text << " was taken";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), expected);
        }
    }
    check_names({Planned("A_B", {}, "class A_B { [Key] string State; [Counter] uint32 C; };").plan});
}

TEST(MetricPlan, ViewsOfASuperclassHoldForItsSubclasses) {
    views::Views views;
    views.classes.push_back({"Test_Port", {}, {}, true, "Beware.", {{"Status", {{"2", "ok"}, {"6", "error"}}}}});
    const Planned planned("Test_SubPort", views);
    EXPECT_EQ(planned.plan.metrics.back().name, "test_sub_port_status");
    EXPECT_EQ(planned.plan.metrics.back().states.size(), 2U);
    EXPECT_TRUE(planned.plan.metrics.front().help.ends_with("Beware. Test_SubPort.Frames"));
}

TEST(MetricPlan, CommandLineNamesOtherClasses) {
    const server::Catalogue catalogue(switch_settings());
    const auto count = [&](const std::vector<std::string>& classes) {
        return make_plans(catalogue, {}, classes).size();
    };
    EXPECT_EQ(count({}), 0U);
    EXPECT_EQ(count({"zanto_ipendpointstatistics"}), 1U);
    EXPECT_EQ(count({"CIM_StatisticalData"}), 4U) << "with its subclasses";
}

TEST(MetricPlan, ClassesThatCannotBeMeasuredAreRefused) {
    const server::Catalogue catalogue(switch_settings());
    const std::vector<std::pair<std::vector<std::string>, const char*>> rows{
        {{"ZANTO_Nothing"}, "--metrics ZANTO_Nothing: no provider serves the class"},
        {{"CIM_ComputerSystemX"}, "--metrics CIM_ComputerSystemX: no provider serves the class"},
        {{"CIM_FCPort"}, "--metrics CIM_FCPort: no further property is marked as counter or gauge"},
        {{"ZANTO_FCIPProfile"}, "--metrics ZANTO_FCIPProfile: no further property is marked as counter or gauge"},
    };
    for (const auto& [classes, expected] : rows) {
        try {
            make_plans(catalogue, {}, classes);
            ADD_FAILURE() << classes.front() << " was taken";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), expected);
        }
    }
}

TEST(MetricPlan, ClassIsAskedOfAllThatServeIt) {
    server::Settings settings = switch_settings();
    settings.providers.push_back({FCIP_PROVIDER, "FCIPProvider"}); // which is loaded once
    const server::Catalogue same(settings);
    const auto once = make_plans(same, {}, {"ZANTO_IPEndPointStatistics"});
    ASSERT_EQ(once.size(), 1U);
    EXPECT_EQ(once.front().sources.size(), 1U);
    settings.providers.back() = {TEST_PROVIDERS "/host_good_provider.so", "Good"};
    const server::Catalogue two(settings);
    const auto both = make_plans(two, {}, {"ZANTO_IPEndPointStatistics"});
    ASSERT_EQ(both.size(), 1U);
    EXPECT_EQ(both.front().sources.size(), 2U);
}

TEST(MetricPlan, SwitchesViewsFitTheirClasses) {
    const server::Catalogue catalogue(switch_settings());
    const auto views = views::read_views(FCIP_SOURCE_DIR "/schema/views.toml", catalogue.schema_of({}));
    EXPECT_EQ(views.classes.size(), 13U) << "one of the file's classes is not declared";
    std::string text;
    for (const ClassPlan& plan : make_plans(catalogue, views, {}))
        text += plan.declaration->name + " " + std::to_string(plan.metrics.size()) + "\n";
    EXPECT_EQ(text, "ZANTO_EthernetPortStatistics 22\nZANTO_FCIPProtocolEndPoint 1\nZANTO_IPEndPointStatistics 17\n");
}

} // namespace
} // namespace cmpihost::metrics
