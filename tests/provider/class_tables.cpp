// One table for each class of instances, tests/golden/class-tables.txt: the path that its names enumerate, the instance
// that its instances enumerate, and what a get of that path answers, all of one object of the small switch (tunnel 3,
// the second Ethernet port, profile 3), every key and property with its CIM type and value, in the order of setting.
//
// When a change is wanted, run this program with UPDATE_GOLDEN=1 in its environment and read the difference before you
// commit it.
#include "tests/support/request_test.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

using namespace test;

struct TableOfClass {
    const char* name;
    std::size_t object; ///< which of those that the enumerations answer
};

constexpr TableOfClass tables_of_classes[] = {
    {"ZANTO_FCIPProtocolEndPoint", 1},
    {"ZANTO_RemoteFCIPPort", 1},
    {"ZANTO_FCIPProfile", 0},
    {"ZANTO_IPProtocolEndPoint", 1},
    {"ZANTO_TCPProtocolEndPoint", 1},
    {"ZANTO_LANEndPoint", 1},
    {"ZANTO_RemoteTCPPort", 1},
    {"ZANTO_RemoteIPServiceAccessPoint", 1},
    {"ZANTO_FCIPSettings", 1},
    {"ZANTO_IPSettings", 1},
    {"ZANTO_TCPSettings", 1},
    {"ZANTO_TCPEndPointStatistics", 1},
    {"ZANTO_IPEndPointStatistics", 1},
    {"ZANTO_TCPStatisticalData", 1},
    {"ZANTO_EthernetPortStatistics", 1},
};

class ClassTables : public RequestTest {
  protected:
    static std::string column(std::string text, std::size_t width) {
        text.resize(std::max(text.size(), width), ' ');
        return text;
    }

    static std::string table(const std::vector<cmpihost::Property>& properties) {
        std::string text;
        for (const auto& [name, type, value] : rows(properties))
            text += "    " + column(name, 42) + "  " + column(type, 8) + "  " + value + "\n";
        return text;
    }

    /// What a get of the path answers, in short where that is the instance.
    std::string got(const cmpihost::Object& path, const cmpihost::Object& instance) {
        const auto answer = get(path);
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.null_results + answer.invalid_results, 0u);
        if (answer.objects.empty())
            return "  get: nothing, " + answer.message.value_or("and no message") + "\n";
        EXPECT_EQ(answer.objects.size(), 1u);
        const auto& object = answer.objects.front();
        if (object == instance)
            return "  get: the instance\n";
        return "  get: another of class " + object.class_name + "\n" + table(object.properties);
    }

    std::string tables_of(const TableOfClass& served) {
        const auto names = enumerate_names(served.name);
        const auto instances = enumerate_instances(served.name);
        EXPECT_EQ(names.objects.size(), instances.objects.size());
        const auto& path = names.objects.at(served.object);
        const auto& instance = instances.objects.at(served.object);
        EXPECT_EQ(path.class_name, served.name);
        EXPECT_EQ(instance.class_name, served.name);
        return std::string(served.name) + "\n  path\n" + table(path.keys) + "  instance\n" +
               table(instance.properties) + got(path, instance) + "\n";
    }
};

TEST_F(ClassTables, AreWhatBothEnumerationsAndTheGetAnswer) {
    std::string tables;
    for (const TableOfClass& served : tables_of_classes) {
        SCOPED_TRACE(served.name);
        tables += tables_of(served);
    }
    const std::string file = FCIP_SOURCE_DIR "/tests/golden/class-tables.txt";
    if (std::getenv("UPDATE_GOLDEN") != nullptr)
        std::ofstream(file) << tables;
    std::ostringstream expected;
    expected << std::ifstream(file).rdbuf();
    EXPECT_EQ(tables, expected.str());
}

} // namespace
