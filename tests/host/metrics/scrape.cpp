// What a scrape gets of the objects that a provider answers.
#include "host/metrics/scraper.h"

#include "tests/host/metrics/metrics_test.h"

#include <atomic>
#include <future>
#include <limits>
#include <thread>

namespace cmpihost::metrics {
namespace {

using std::chrono::milliseconds;

Property value(const std::string& name, const std::string& type, Value::Array values) {
    return {name, type, {std::move(values)}};
}

template <class Simple>
Property value(const std::string& name, const std::string& type, Simple simple) {
    return {name, type, {std::move(simple)}};
}

Object port(const std::string& id, std::vector<Property> properties) {
    Object object;
    object.class_name = "Test_Port";
    object.properties = {value("DeviceID", "string", id),
                         value("CreationClassName", "string", std::string("Test_Port"))};
    object.properties.insert(object.properties.end(), properties.begin(), properties.end());
    return object;
}

/// Classes whose objects are the test's.
class Scrapes : public testing::Test {
  protected:
    void SetUp() override {
        views.classes.push_back({"Test_Port", {}, {}, true, "", {{"Status", {{"2", "ok"}, {"6", "error"}}}}});
        ask = [this](const Request& request, const Sink& sink) {
            ++asked;
            EXPECT_EQ(request.operation, Request::Operation::enumerate_instances);
            Store store;
            for (const Object& object : objects)
                sink(hold(store, object), true);
            Answer answer;
            answer.rc = rc;
            return answer;
        };
    }

    std::string text(milliseconds time = {}) { return text_of(scrape({plan()}, time)); }

    ClassPlan plan() { return make_plan(served, space, views); }

    /// The samples of a metric, without its name.
    std::string samples(const std::string& metric) {
        const std::string all = text();
        std::string found;
        for (std::size_t at = 0; at < all.size();) {
            const std::size_t end = all.find('\n', at);
            const std::string line = all.substr(at, end - at);
            if (line.starts_with(metric + "{"))
                found += line.substr(metric.size()) + "\n";
            at = end + 1;
        }
        return found;
    }

    mof::Schema schema = schema_of(measured_classes);
    views::Views views;
    server::Namespace space{"root/test", schema, {}};
    server::Ask ask;
    server::ServedClass served{schema, *schema.find("Test_Port"), ask};
    std::vector<Object> objects;
    std::atomic<int> asked = 0;
    int rc = 0;
    int second_rc = 0;
};

TEST_F(Scrapes, SamplesOfAMetricStandTogetherUnderItsHead) {
    for (const char* id : {"1", "2"})
        objects.push_back(port(id, {value("Frames", "uint64", std::uint64_t{7}), value("Up", "boolean", true)}));
    const std::string all = text();
    EXPECT_TRUE(all.starts_with("# HELP test_port_frames_total Frames that came. Test_Port.Frames\n"
                                "# TYPE test_port_frames_total counter\n"
                                "test_port_frames_total{device_id=\"1\"} 7\n"
                                "test_port_frames_total{device_id=\"2\"} 7\n"
                                "# HELP test_port_up Test_Port.Up\n"
                                "# TYPE test_port_up gauge\n"
                                "test_port_up{device_id=\"1\"} 1\n"
                                "test_port_up{device_id=\"2\"} 1\n"
                                "# HELP cmpihost_scrape_class_success"))
        << all;
    EXPECT_EQ(all.find("test_port_rate"), std::string::npos) << "no head without samples";
    EXPECT_EQ(all.find("\n\n"), std::string::npos);
    EXPECT_TRUE(all.ends_with("\n"));
}

TEST_F(Scrapes, ValuesAreInBaseUnits) {
    objects = {port("1", {value("Rate", "uint32", std::uint64_t{1000}), value("Balance", "sint32", std::int64_t{-4}),
                          value("Load", "real64", 0.25), value("BytesReceived", "uint64", std::uint64_t{1} << 53)})};
    EXPECT_EQ(samples("test_port_rate_bytes_per_second"), "{device_id=\"1\"} 125000\n");
    EXPECT_EQ(samples("test_port_balance"), "{device_id=\"1\"} -4\n");
    EXPECT_EQ(samples("test_port_load"), "{device_id=\"1\"} 0.25\n");
    EXPECT_EQ(samples("test_port_received_bytes_total"), "{device_id=\"1\"} 0\n");
}

TEST_F(Scrapes, GaugesAreWholeWhereTheirUnitIs) {
    objects = {port("1", {value("Rate", "uint64", std::uint64_t{1'000'000})}),
               port("2", {value("Rate", "uint64", std::numeric_limits<std::uint64_t>::max())}),
               port("3", {value("Delay", "uint32", std::uint64_t{1500})})};
    EXPECT_EQ(samples("test_port_rate_bytes_per_second"),
              "{device_id=\"1\"} 125000000\n{device_id=\"2\"} 2.305843009213694e+21\n");
    EXPECT_EQ(samples("test_port_delay_seconds"), "{device_id=\"3\"} 1.5\n");
}

TEST_F(Scrapes, TruthIs1Or0WhateverTheUnit) {
    objects = {port("1", {value("Up", "boolean", true), value("Rate", "boolean", true)}),
               port("2", {value("Up", "boolean", false), value("Rate", "boolean", false)})};
    for (const char* metric : {"test_port_up", "test_port_rate_bytes_per_second"})
        EXPECT_EQ(samples(metric), "{device_id=\"1\"} 1\n{device_id=\"2\"} 0\n") << metric;
}

TEST_F(Scrapes, HelpsAreEscaped) {
    objects = {port("1", {value("Delay", "uint32", std::uint64_t{1})})};
    EXPECT_NE(text().find("# HELP test_port_delay_seconds Line\\none, \\\\ and two. Test_Port.Delay\n"),
              std::string::npos)
        << text();
}

TEST_F(Scrapes, LabelsAreTheInstancesOwn) {
    Object object =
        port("1", {value("Instance", "uint32", std::uint64_t{3}), value("ElementName", "string", std::string("a\"b")),
                   value("Frames", "uint64", std::uint64_t{1})});
    object.keys = {value("DeviceID", "string", std::string("of the path"))};
    objects = {object};
    EXPECT_EQ(samples("test_port_frames_total"), "{device_id=\"1\",key_instance=\"3\",name=\"a\\\"b\"} 1\n");
}

TEST_F(Scrapes, LabelsMayBeMissing) {
    Object nameless;
    nameless.class_name = "Test_Port";
    nameless.properties = {value("Frames", "uint64", std::uint64_t{1})};
    Object numbered = nameless;
    numbered.properties.push_back(value("Instance", "uint32", std::uint64_t{3}));
    objects = {nameless, numbered};
    EXPECT_EQ(samples("test_port_frames_total"), "{} 1\n{key_instance=\"3\"} 1\n");
}

TEST_F(Scrapes, MissingAndNullValuesGiveNoSample) {
    objects = {port("1", {value("Frames", "uint64", std::monostate())}), port("2", {}),
               port("3", {value("Frames", "string", std::string("many"))}),
               port("4", {value("frames", "uint64", std::uint64_t{4})})};
    EXPECT_EQ(samples("test_port_frames_total"), "{device_id=\"4\"} 4\n");
}

TEST_F(Scrapes, StatesAreOneSampleEach) {
    objects = {port("1", {value("Status", "uint16[]", Value::Array{{std::uint64_t{2}}, {std::uint64_t{3}}})}),
               port("2", {value("Status", "uint16", std::uint64_t{6})})};
    EXPECT_EQ(samples("test_port_status"), "{device_id=\"1\",state=\"ok\"} 1\n{device_id=\"1\",state=\"error\"} 0\n"
                                           "{device_id=\"2\",state=\"ok\"} 0\n{device_id=\"2\",state=\"error\"} 1\n");
}

TEST_F(Scrapes, DoubledSeriesAreLeftOutAndCounted) {
    for (const std::uint64_t frames : {1U, 2U, 3U})
        objects.push_back(port("same", {value("Frames", "uint64", frames)}));
    EXPECT_EQ(samples("test_port_frames_total"), "{device_id=\"same\"} 1\n");
    EXPECT_EQ(samples("cmpihost_scrape_class_doubled_objects"), "{class=\"Test_Port\"} 2\n");
    EXPECT_EQ(samples("cmpihost_scrape_class_objects"), "{class=\"Test_Port\"} 3\n");
}

TEST_F(Scrapes, FailedClassHasNoSamples) {
    objects = {port("1", {value("Frames", "uint64", std::uint64_t{1})})};
    EXPECT_EQ(samples("cmpihost_scrape_class_success"), "{class=\"Test_Port\"} 1\n");
    rc = 1;
    EXPECT_EQ(samples("test_port_frames_total"), "");
    EXPECT_EQ(samples("cmpihost_scrape_class_success"), "{class=\"Test_Port\"} 0\n");
}

TEST_F(Scrapes, ClassIsAskedOnce) {
    text();
    EXPECT_EQ(asked, 1);
}

TEST_F(Scrapes, EveryProviderOfAClassIsAsked) {
    objects = {port("1", {value("Frames", "uint64", std::uint64_t{1})})};
    const server::Ask second = [this](const Request& request, const Sink& sink) {
        EXPECT_EQ(request.path.name_space, "root/other");
        Store store;
        for (const char* id : {"1", "2"})
            sink(hold(store, port(id, {value("Up", "boolean", true), value("Frames", "uint64", std::uint64_t{2})})),
                 true);
        Answer answer;
        answer.rc = second_rc;
        return answer;
    };
    const server::Namespace other{"root/other", schema, {}};
    ClassPlan both = plan();
    both.sources.push_back({&second, &other});
    const std::string joint = text_of(scrape({both}, {}));
    EXPECT_NE(joint.find("test_port_frames_total{device_id=\"1\"} 1\ntest_port_frames_total{device_id=\"2\"} 2\n#"),
              std::string::npos)
        << joint;
    EXPECT_NE(joint.find("cmpihost_scrape_class_success{class=\"Test_Port\"} 1\n#"), std::string::npos);
    second_rc = CMPI_RC_ERR_FAILED;
    const std::string failed = text_of(scrape({both}, {}));
    EXPECT_EQ(failed.find("test_port"), std::string::npos) << "half of the objects would look like all";
    EXPECT_NE(failed.find("cmpihost_scrape_class_success{class=\"Test_Port\"} 0\n#"), std::string::npos);
}

TEST_F(Scrapes, PropertiesOfTwoProvidersMayBeInAnotherOrder) {
    const Property rate = value("Rate", "uint32", std::uint64_t{8});
    const Property load = value("Load", "real64", 0.5);
    objects = {port("1", {rate, load})};
    const server::Ask second = [&](const Request&, const Sink& sink) {
        Store store;
        sink(hold(store, port("2", {load, rate})), true); // as many, with names as long
        return Answer();
    };
    ClassPlan both = plan();
    both.sources.push_back({&second, &space});
    const std::string all = text_of(scrape({both}, {}));
    EXPECT_NE(all.find("rate_bytes_per_second{device_id=\"1\"} 1000\ntest_port_rate_bytes_per_second{device_id=\"2\"} "
                       "1000\n"),
              std::string::npos)
        << all;
    EXPECT_NE(all.find("test_port_load{device_id=\"1\"} 0.5\ntest_port_load{device_id=\"2\"} 0.5\n"), std::string::npos)
        << all;
}

TEST_F(Scrapes, ObjectMayHaveNoPropertyAtAll) {
    objects = {port("1", {value("Frames", "uint64", std::uint64_t{1})})};
    const server::Ask second = [&](const Request&, const Sink& sink) {
        Store store;
        sink(hold(store, Object()), true);
        sink(hold(store, objects.front()), true);
        return Answer();
    };
    ClassPlan both = plan();
    both.sources.push_back({&second, &space});
    const std::string all = text_of(scrape({both}, {}));
    EXPECT_NE(all.find("test_port_frames_total{device_id=\"1\"} 1\n#"), std::string::npos) << all;
    EXPECT_NE(all.find("cmpihost_scrape_class_objects{class=\"Test_Port\"} 3\n"), std::string::npos) << all;
}

TEST_F(Scrapes, ProviderThatLacksTheClassIsNoFailure) {
    objects = {port("1", {value("Frames", "uint64", std::uint64_t{1})})};
    for (const int unsupported : {CMPI_RC_ERR_NOT_SUPPORTED, CMPI_RC_ERR_INVALID_CLASS}) {
        const server::Ask none = [unsupported](const Request&, const Sink&) {
            Answer answer;
            answer.rc = unsupported;
            return answer;
        };
        ClassPlan both = plan();
        both.sources.insert(both.sources.begin(), {&none, &space});
        const std::string all = text_of(scrape({both}, {}));
        EXPECT_NE(all.find("test_port_frames_total{device_id=\"1\"} 1\n"), std::string::npos) << all;
        EXPECT_NE(all.find("cmpihost_scrape_class_success{class=\"Test_Port\"} 1\n"), std::string::npos) << all;
        both.sources.pop_back();
        EXPECT_NE(text_of(scrape({both}, {})).find("cmpihost_scrape_class_success{class=\"Test_Port\"} 0\n"),
                  std::string::npos);
    }
}

TEST_F(Scrapes, ClassesAfterTheTimeAreNotAsked) {
    ask = [this](const Request&, const Sink&) {
        ++asked;
        std::this_thread::sleep_for(milliseconds(2000));
        return Answer();
    };
    const std::string all = text_of(scrape({plan(), plan()}, milliseconds(2000)));
    EXPECT_EQ(asked, 1);
    EXPECT_NE(all.find("cmpihost_scrape_class_success{class=\"Test_Port\"} 1\n"
                       "cmpihost_scrape_class_success{class=\"Test_Port\"} 0\n"),
              std::string::npos)
        << all;
}

/// What a scrape gives whose classes nobody asks.
Scraped told(const char* text) {
    Scraped scraped;
    scraped.figures.append(text);
    return scraped;
}

std::string read(Scraper& scraper, milliseconds time = {}) {
    std::string text;
    scraper.read(time, [&text](std::string_view piece) { text += piece; });
    return text;
}

TEST(Scraper, ScrapesAtTheSameTimeShareOneEnumeration) {
    std::atomic<int> scrapes = 0;
    std::promise<void> gate;
    const std::shared_future<void> open = gate.get_future().share();
    Scraper scraper([&](milliseconds, const Scraped&) {
        ++scrapes;
        open.wait();
        return told("text");
    });
    std::vector<std::future<std::string>> all;
    all.push_back(std::async(std::launch::async, [&scraper] { return read(scraper); }));
    while (scrapes == 0)
        std::this_thread::yield();
    for (int i = 0; i < 3; ++i)
        all.push_back(std::async(std::launch::async, [&scraper] { return read(scraper); }));
    while (scraper.readers() < 4)
        std::this_thread::yield();
    gate.set_value();
    for (auto& each : all)
        EXPECT_EQ(each.get(), "text");
    EXPECT_EQ(scrapes, 1);
    EXPECT_EQ(read(scraper), "text");
    EXPECT_EQ(scrapes, 2) << "a later scrape is one of its own";
}

TEST(Scraper, ScrapeThatMayTakeLongerIsOneOfItsOwn) {
    std::vector<milliseconds> times;
    std::promise<void> gate;
    const std::shared_future<void> open = gate.get_future().share();
    std::atomic<bool> began = false;
    Scraper scraper([&](milliseconds time, const Scraped&) {
        times.push_back(time);
        began = true;
        open.wait();
        return told(times.size() == 1 ? "in a second" : "for ever");
    });
    const auto begin = [&scraper](milliseconds time) {
        return std::async(std::launch::async, [&scraper, time] { return read(scraper, time); });
    };
    auto first = begin(milliseconds(1000));
    while (!began)
        std::this_thread::yield();
    auto shorter = begin(milliseconds(500));
    auto same = begin(milliseconds(1000));
    auto longest = begin(milliseconds(0));
    while (scraper.readers() < 4)
        std::this_thread::yield();
    gate.set_value();
    EXPECT_EQ(first.get(), "in a second");
    EXPECT_EQ(shorter.get(), "in a second");
    EXPECT_EQ(same.get(), "in a second");
    EXPECT_EQ(longest.get(), "for ever");
    EXPECT_EQ(times, (std::vector<milliseconds>{milliseconds(1000), milliseconds(0)}));
}

TEST(Scraper, MemoryOfWhatNobodyReadsIsUsedAgain) {
    std::vector<std::string> spares;
    Scraper scraper([&](milliseconds, const Scraped& spare) {
        spares.emplace_back(spare.figures.view());
        return told(spares.size() == 1 ? "first" : "later");
    });
    EXPECT_EQ(read(scraper), "first");
    scraper.read({}, [&](std::string_view piece) {
        EXPECT_EQ(read(scraper), "later");
        EXPECT_EQ(piece, "later");
    });
    EXPECT_EQ(spares, (std::vector<std::string>{"", "first", ""})) << "the last but one was still read";
}

TEST_F(Scrapes, NothingOfAnEarlierScrapeIsLeft) {
    const std::vector<ClassPlan> plans = {plan()};
    objects = {port("1", {value("Frames", "uint64", std::uint64_t{1}), value("Up", "boolean", true)})};
    Scraped first = scrape(plans, {});
    objects = {port("2", {value("Frames", "uint64", std::uint64_t{2})})};
    Scraped second = scrape(plans, {}, std::move(first));
    const std::string again = text_of(second);
    EXPECT_NE(again.find("test_port_frames_total{device_id=\"2\"} 2\n"), std::string::npos) << again;
    EXPECT_EQ(again.find("device_id=\"1\""), std::string::npos) << again;
    EXPECT_EQ(again.find("test_port_up"), std::string::npos) << again;
    const std::size_t figures = again.find("# TYPE cmpihost_scrape_class_success");
    EXPECT_NE(figures, std::string::npos) << again;
    EXPECT_EQ(again.find("# TYPE cmpihost_scrape_class_success", figures + 1), std::string::npos) << again;
    objects.push_back(objects.front());
    Scraped doubled = scrape(plans, {}, std::move(second));
    EXPECT_NE(text_of(doubled).find("_doubled_objects{class=\"Test_Port\"} 1\n"), std::string::npos);
    rc = CMPI_RC_ERR_FAILED;
    const std::string failed = text_of(scrape(plans, {}, std::move(doubled)));
    EXPECT_EQ(failed.find("test_port"), std::string::npos) << failed;
    EXPECT_NE(failed.find("_doubled_objects{class=\"Test_Port\"} 0\n"), std::string::npos) << failed;
}

TEST_F(Scrapes, PropertiesMayBeOthersInEveryObject) {
    const Property frames = value("Frames", "uint64", std::uint64_t{1});
    const Property up = value("Up", "boolean", true);
    const Property load = value("Load", "real64", 0.5);
    objects = {port("1", {frames, up}), port("2", {up, frames}),       port("3", {load, frames}),
               port("4", {}),           port("5", {frames, up, load}), port("6", {frames, up})};
    EXPECT_EQ(samples("test_port_frames_total"), "{device_id=\"1\"} 1\n{device_id=\"2\"} 1\n{device_id=\"3\"} 1\n"
                                                 "{device_id=\"5\"} 1\n{device_id=\"6\"} 1\n");
    EXPECT_EQ(samples("test_port_up"),
              "{device_id=\"1\"} 1\n{device_id=\"2\"} 1\n{device_id=\"5\"} 1\n{device_id=\"6\"} 1\n");
    EXPECT_EQ(samples("test_port_load"), "{device_id=\"3\"} 0.5\n{device_id=\"5\"} 0.5\n");
}

TEST_F(Scrapes, StatesFollowWhateverLabel) {
    objects = {port("} 2{", {value("Status", "uint16", std::uint64_t{2})})};
    EXPECT_EQ(samples("test_port_status"),
              "{device_id=\"} 2{\",state=\"ok\"} 1\n{device_id=\"} 2{\",state=\"error\"} 0\n");
}

TEST_F(Scrapes, DoublesAreLeftOutOfStatesToo) {
    for (const std::uint64_t status : {2U, 6U})
        objects.push_back(port("same", {value("Status", "uint16", status)}));
    EXPECT_EQ(samples("test_port_status"),
              "{device_id=\"same\",state=\"ok\"} 1\n{device_id=\"same\",state=\"error\"} 0\n");
}

TEST_F(Scrapes, LongTextComesInPieces) {
    std::string expected;
    for (int id = 0; id < 1000; ++id) {
        objects.push_back(port(std::to_string(id), {value("Frames", "uint64", std::uint64_t{7})}));
        expected += "test_port_frames_total{device_id=\"" + std::to_string(id) + "\"} 7\n";
    }
    std::vector<std::string> pieces;
    const std::vector<ClassPlan> plans = {plan()};
    scrape(plans, {}).give([&pieces](std::string_view piece) { pieces.emplace_back(piece); });
    EXPECT_GT(pieces.size(), 4U);
    std::string all;
    for (const std::string& piece : pieces) {
        EXPECT_TRUE(piece.ends_with("\n")) << piece;
        EXPECT_LT(piece.size(), 16'000U);
        all += piece;
    }
    EXPECT_NE(all.find(expected), std::string::npos) << all;
}

TEST(Scraper, FailureIsEverybodys) {
    Scraper scraper([](milliseconds, const Scraped&) -> Scraped { throw std::runtime_error("no"); });
    EXPECT_THROW(read(scraper), std::runtime_error);
    EXPECT_THROW(read(scraper), std::runtime_error);
    EXPECT_EQ(scraper.readers(), 0U);
}

TEST(Providers, CallsAndTimeAreCounted) {
    const server::Catalogue catalogue(switch_settings());
    const auto plans = make_plans(catalogue, {}, {"CIM_StatisticalData"});
    scrape(plans, {});
    const std::string text(providers_text(catalogue).view());
    EXPECT_NE(text.find("cmpihost_provider_calls_total{provider=\"" +
                        std::filesystem::path(FCIP_PROVIDER).filename().string() + " FCIPProvider\"} 4\n"),
              std::string::npos)
        << text;
}

} // namespace
} // namespace cmpihost::metrics
