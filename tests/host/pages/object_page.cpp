// An object's page.
#include "host/pages/html.h"
#include "host/pages/json.h"
#include "tests/host/pages/pages_test.h"

#include <nlohmann/json.hpp>

namespace cmpihost::pages {
namespace {

class ObjectPages : public PagesTest {
  protected:
    /// The first object of a class.
    std::string first(const std::string& class_name) { return get("/class/" + class_name).link("/object/"); }
};

TEST_F(ObjectPages, PropertiesComeWithUnitAndDescription) {
    const Got page = get(first("ZANTO_FCIPProtocolEndPoint"));
    EXPECT_EQ(page.status, 200U);
    EXPECT_TRUE(
        page.has("<tr><th scope=\"row\">CommittedRate</th><td class=\"number\" data-value=\"CommittedRate\">1000000"
                 "</td><td>bit / second * 10^3</td><td>Bandwidth that the tunnel may use.</td></tr>"))
        << page.body;
    EXPECT_TRUE(page.has("<th scope=\"row\">Name <span class=\"unit\">key</span></th>"));
}

TEST_F(ObjectPages, CountersAreMarkedForTheScript) {
    const Got page = get(first("ZANTO_EthernetPortStatistics"));
    EXPECT_TRUE(page.has("<td class=\"number\" data-counter=\"BytesReceived\" data-curve=\"\">"));
    EXPECT_TRUE(page.has("<td class=\"number\" data-counter=\"FCSErrors\">"));
}

TEST_F(ObjectPages, NeighboursAreGroupedWithTheirRoles) {
    const Got page = get(first("ZANTO_FCIPProtocolEndPoint"));
    EXPECT_TRUE(page.has("<h3><a href=\"/class/ZANTO_FCIPPEBasedOn\">ZANTO_FCIPPEBasedOn</a></h3>"));
    EXPECT_TRUE(page.has("PartComponent \xE2\x86\x92 GroupComponent"));
    EXPECT_EQ(get(page.link("/object/ZANTO_FCIPProfile")).status, 200U);
    EXPECT_EQ(page.count("<rect "), page.count("class=\"tie\"") + 1) << "the object, and a tie to each neighbour";
}

TEST_F(ObjectPages, EveryNeighbourHasARoleOrNoneIsTold) {
    std::size_t directed = 0;
    std::size_t not_told = 0;
    for (const std::string& class_url : links(get("/"), "/class/"))
        for (const std::string& url : links(get(class_url), "/object/")) {
            const Got page = get(url);
            directed += page.count(" \xE2\x86\x92 ");
            not_told += page.count("<span class=\"unit\">role not told</span>");
            EXPECT_EQ(page.count("<li>"), page.count(" \xE2\x86\x92 ") + page.count("role not told")) << url;
        }
    EXPECT_EQ(directed, 212U);
    EXPECT_EQ(not_told, 41U) << "no reference names them, and both ends are declared alike";
}

TEST_F(ObjectPages, WithoutNeighboursNobodyNamedAny) {
    const Got page = get(first("ZANTO_FCIPTCPEndpoint"));
    EXPECT_TRUE(page.has("<p>The providers name no neighbour when asked from here.</p>")) << page.body;
    EXPECT_FALSE(get(first("ZANTO_FCIPProtocolEndPoint")).has("name no neighbour"));
}

TEST_F(ObjectPages, NeighboursAreFoundFromTheOtherSide) {
    settings.providers.push_back({SWITCHSIM_PROVIDER, "switchsimProvider"});
    const Got page = get("/object/ZANTO_LogicalComputerSystem.CreationClassName=%22ZANTO_LogicalComputerSystem%22,"
                         "Name=%22200A00005E112233%22");
    EXPECT_TRUE(page.has("The providers name no neighbour when asked from here.")) << page.body;
    EXPECT_TRUE(page.has("<span class=\"unit\">ZANTO_SwitchHostedFCIPAccessPoint: Antecedent \xE2\x86\x92 Dependent"));
    const std::string neighbour = page.link("/object/ZANTO_FCIPProtocolEndPoint.SystemName=%22200A00005E112233");
    EXPECT_EQ(get(neighbour).status, 200U) << neighbour;
    EXPECT_FALSE(get(neighbour).has("Found from the other side")) << "which names its own";
}

TEST_F(ObjectPages, EveryObjectOfEveryClassOpens) {
    Opened opened;
    for (const std::string& class_url : links(get("/"), "/class/"))
        for (const std::string& url : links(get(class_url), "/object/"))
            opened.add(url, get(url));
    EXPECT_GT(opened.objects, 150U);
    EXPECT_EQ(opened.missing_text(), not_found);
}

TEST_F(ObjectPages, SameInJson) {
    const Got json = get(first("ZANTO_FCIPProtocolEndPoint") + "?format=json");
    EXPECT_EQ(json.type, "application/json");
    const auto object = nlohmann::json::parse(json.body);
    EXPECT_EQ(object["class"], "ZANTO_FCIPProtocolEndPoint");
    EXPECT_EQ(object["keys"]["Name"], "1_10.1.1.1_10.2.1.1");
    EXPECT_EQ(object["properties"]["CommittedRate"], 1000000);
    EXPECT_EQ(object["properties"]["Compression"], false);
}

TEST_F(ObjectPages, SameOnTheCommandLineAndInXml) {
    const Got page = get("/object/ZANTO_FCIPProfile.InstanceID=%221%22");
    EXPECT_TRUE(page.has("cmpihost gi 'root/cimv2:ZANTO_FCIPProfile.InstanceID=&quot;1&quot;'")) << page.body;
    EXPECT_TRUE(page.has("&lt;INSTANCENAME CLASSNAME=&quot;ZANTO_FCIPProfile&quot;&gt;"));
}

TEST_F(ObjectPages, ReferencesAreLinks) {
    const Got page = get(first("ZANTO_FCIPTCPEndpoint"));
    EXPECT_EQ(page.status, 200U);
    EXPECT_TRUE(page.has("<td><a href=\"/object/ZANTO_")) << page.body;
}

TEST_F(ObjectPages, KeysHaveTheTypesOfTheirClass) {
    settings.schema = {FCIP_SOURCE_DIR "/tests/host/server/test_classes.mof"};
    settings.providers = {{TEST_PROVIDERS "/host_good_provider.so", "Good"}};
    settings.scenario.clear();
    site_settings.views.clear();
    const Got page = get("/class/Test_Thing");
    EXPECT_TRUE(page.has("/object/Test_Thing.Name=%22a%20%5C%22second%5C%22%20thing%22,Number=2")) << page.body;
    const Got thing = get(page.link("/object/"));
    EXPECT_EQ(thing.status, 200U) << thing.body;
    EXPECT_TRUE(thing.has("18446744073709551615"));
}

TEST_F(ObjectPages, RefreshedTextsAreThoseOfThePage) {
    use_mapped_things();
    const std::string url = first("Test_Thing");
    const Got page = get(url);
    const auto object = nlohmann::json::parse(get(url + "?format=json").body);
    const std::vector<std::pair<const char*, const char*>> rows{{"U64", "18446744073709551615"},
                                                                {"S64", "-9223372036854775808"},
                                                                {"Real", "2.5"},
                                                                {"Missing", "NULL"},
                                                                {"U8", "255 (Full)"},
                                                                {"Letter", "'A'"},
                                                                {"List", "{7, NULL} (Seven, )"},
                                                                {"Flag", "TRUE"}};
    for (const auto& [name, text] : rows) {
        EXPECT_EQ(object["texts"][name], text);
        EXPECT_TRUE(page.has(std::string(" data-value=\"") + name + "\">" + escaped(text) + "</td>")) << name;
    }
    EXPECT_EQ(object["texts"].size(), rows.size()) << object["texts"];
    EXPECT_EQ(object["properties"]["Text"], "tab\there");
    EXPECT_TRUE(page.has(" data-value=\"Text\">tab\there</td>"));
    EXPECT_EQ(object["properties"]["U8"], 255);
    EXPECT_EQ(object["properties"]["U64"], 18446744073709551615U);
}

TEST_F(ObjectPages, ExactNumbersAndStringsNeedNoText) {
    const auto object = nlohmann::json::parse(get(first("ZANTO_FCIPProtocolEndPoint") + "?format=json").body);
    EXPECT_EQ(object["texts"]["Compression"], "FALSE");
    for (const auto& [name, text] : object["texts"].items())
        EXPECT_TRUE(object["properties"][name].is_boolean()) << name << " " << text;
}

TEST_F(ObjectPages, AllButReferencesIsRefreshed) {
    for (const char* name : {"ZANTO_FCIPTCPEndpoint", "ZANTO_FCIPProtocolEndPoint", "ZANTO_EthernetPortStatistics"}) {
        const std::string url = first(name);
        const Got page = get(url);
        const auto object = nlohmann::json::parse(get(url + "?format=json").body);
        const std::size_t links = page.count("<td><a href=\"/object/");
        EXPECT_EQ(page.count(" data-value=\"") + page.count(" data-counter=\"") + links, object["properties"].size())
            << page.body;
        EXPECT_EQ(links, name == std::string("ZANTO_FCIPTCPEndpoint") ? 2U : 0U);
    }
}

TEST(ObjectJson, TextsHaveWhatNoPageCarriesReplaced) {
    mof::ClassDeclaration declaration;
    declaration.name = "Test_Thing";
    const Object thing{"Test_Thing", "", {}, {}, {{"Bell", "string", {std::string("a\x07\xff\xc3\xa9\xef\xbf\xbe.")}}}};
    const auto object = nlohmann::json::parse(json_of(thing, thing, declaration));
    EXPECT_EQ(object["texts"]["Bell"], "a\xef\xbf\xbd\xef\xbf\xbd\xc3\xa9\xef\xbf\xbd.");
}

TEST_F(ObjectPages, ProviderThatLacksTheClassTellsNothing) {
    settings.providers.push_back({TEST_PROVIDERS "/host_good_provider.so", "Good"}); // which does not know it
    EXPECT_EQ(get("/object/ZANTO_FCIPProfile.InstanceID=%221%22").status, 200U);
    const Got missing = get("/object/ZANTO_FCIPProfile.InstanceID=%2299%22");
    EXPECT_EQ(missing.status, 404U) << missing.body;
    EXPECT_FALSE(missing.has("error 5")) << missing.body;
}

} // namespace
} // namespace cmpihost::pages
