// Files that say how classes are shown and measured.
#include "host/views/views.h"

#include "tests/host/metrics/metrics_test.h"

namespace cmpihost::views {
namespace {

using metrics::TextFile;

const char* const file_name = "views_test.toml";

Views read(const std::string& text) {
    const TextFile file(file_name, text);
    return read_views(file.name(), metrics::schema_of(metrics::measured_classes));
}

TEST(Views, SayHowAClassIsShown) {
    const Views views =
        read("acronyms = ['PDU']\n[class.test_port]\ncolumns = ['rate', 'Up']\ncurves = ['Frames']\n"
             "metrics = true\nslow = true\nnote = 'Beware.'\nstates.Status = { 2 = 'ok', 6 = 'error' }\n");
    EXPECT_EQ(views.acronyms, std::vector<std::string>{"PDU"});
    ASSERT_EQ(views.classes.size(), 1U);
    const ClassView& view = *views.find("TEST_PORT");
    EXPECT_EQ(view.name, "Test_Port");
    EXPECT_EQ(view.columns, (std::vector<std::string>{"Rate", "Up"}));
    EXPECT_EQ(view.curves, std::vector<std::string>{"Frames"});
    EXPECT_TRUE(view.metrics);
    EXPECT_TRUE(view.slow);
    EXPECT_EQ(view.note, "Beware.");
    EXPECT_EQ(view.states.at("Status").at("6"), "error");
    EXPECT_EQ(views.find("Test_Plain"), nullptr);
}

TEST(Views, ClassesThatAreNotDeclaredAreLeftOut) {
    const Views views = read("[class.Test_None]\nmetrics = true\n[class.Test_Plain]\n");
    ASSERT_EQ(views.classes.size(), 1U);
    EXPECT_EQ(views.classes.front().name, "Test_Plain");
}

TEST(Views, HoldForSubclassesWithoutTheirOwn) {
    const mof::Schema schema = metrics::schema_of(metrics::measured_classes);
    const Views views =
        read("[class.Test_Port]\ncolumns = ['Rate']\ncurves = ['Frames']\nmetrics = true\n"
             "slow = true\nnote = 'Beware.'\nstates.Status = { 2 = 'ok' }\nstates.Balance = { 0 = 'even' }\n"
             "[class.Test_SubPort]\ncolumns = ['Up']\nstates.Status = { 3 = 'bad' }\n");
    const ClassView sub = views.of(*schema.find("Test_SubPort"), schema);
    EXPECT_EQ(sub.name, "Test_SubPort");
    EXPECT_EQ(sub.columns, std::vector<std::string>{"Up"});
    EXPECT_EQ(sub.curves, std::vector<std::string>{"Frames"});
    EXPECT_EQ(sub.note, "Beware.");
    EXPECT_TRUE(sub.slow);
    EXPECT_EQ(sub.states.at("Status"), (std::map<std::string, std::string>{{"3", "bad"}}));
    EXPECT_EQ(sub.states.at("Balance"), (std::map<std::string, std::string>{{"0", "even"}}));
    EXPECT_FALSE(sub.metrics);
    EXPECT_EQ(views.of(*schema.find("Test_Port"), schema).columns, std::vector<std::string>{"Rate"});
    EXPECT_TRUE(views.of(*schema.find("Test_Plain"), schema).columns.empty());
}

TEST(Views, MistakesAreToldWithTheirLine) {
    const std::vector<std::pair<const char*, const char*>> rows{
        {"x = 1", ":1: expected acronyms or [class.NAME], not x"},
        {"acronyms = 'a'", ":1: expected a list of texts"},
        {"acronyms = [1]", ":1: expected a text"},
        {"[class.Test_Port]\ncolumns = ['None']", ":2: Test_Port has no property None"},
        {"[class.Test_Port]\nmetrics = 'yes'",
         ":2: expected columns, curves, metrics, slow, note or states, not metrics"},
        {"[class.Test_Port]\nstates = 1", ":2: expected a table of properties"},
        {"[class.Test_Port]\nstates.Status = 1", ":2: expected a table of values and their names"},
        {"[class.Test_Port]\nstates.Status = { 2 = 'ok', 3 = 'ok' }", ":2: a state's name is there twice: ok"},
        {"class.Test_Port = 1", ":1: expected a table"},
    };
    for (const auto& [text, expected] : rows) {
        try {
            read(text);
            ADD_FAILURE() << text << " was taken";
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), testing::TempDir() + file_name + expected);
        }
    }
    EXPECT_THROW(read("[class"), std::runtime_error);
    EXPECT_THROW(read_views("/nonexistent", metrics::schema_of(metrics::measured_classes)), std::runtime_error);
}

} // namespace
} // namespace cmpihost::views
