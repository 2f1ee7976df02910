// The objects of a class as a table.
#include "tests/host/pages/pages_test.h"

namespace cmpihost::pages {
namespace {

class ClassPages : public PagesTest {
  protected:
    void use_tunnels(unsigned tunnels) {
        settings.scenario = file("class_page.toml");
        std::ofstream(settings.scenario) << "[switch]\nname = \"many\"\n[generate]\ntunnels = " << tunnels << "\n";
    }

    /// The first cells of the rows.
    std::string rows(const Got& page) {
        std::string text;
        for (std::size_t n = 0; n < page.count("<tr><th scope=\"row\"><a"); ++n) {
            const std::string cell = page.between("<tr><th scope=\"row\"><a", "</a>", n);
            text += cell.substr(cell.find('>') + 1) + " ";
        }
        return text;
    }

    std::string heads(const Got& page) {
        std::string text;
        for (std::size_t n = 0; n < page.count("<th scope=\"col\""); ++n) {
            const std::string cell = page.between("<th scope=\"col\"", "</a>", n);
            text += cell.substr(cell.rfind('>') + 1) + " ";
        }
        return text;
    }
};

TEST_F(ClassPages, ColumnsOfTheViewComeFirstThenWhatDiffers) {
    EXPECT_EQ(heads(get("/class/ZANTO_FCIPProtocolEndPoint")),
              "TunnelID LocalIPAddress RemoteIPAddress CommittedRate Compression Name SystemName RemoteWWN "
              "SelectiveACK WAN_TOV ");
}

TEST_F(ClassPages, OfOneObjectTheFirstPropertiesAreShown) {
    use_tunnels(1);
    EXPECT_EQ(
        heads(get("/class/ZANTO_FCIPProtocolEndPoint")),
        "TunnelID LocalIPAddress RemoteIPAddress CommittedRate Compression Name SystemCreationClassName SystemName "
        "CreationClassName NameFormat ");
    EXPECT_EQ(heads(get("/class/ZANTO_TCPSettings")),
              "InstanceID SystemCreationClassName SystemName Description Caption ElementName RetransmissionTimeoutMax "
              "RetransmissionTimeoutMin RetransmissionTimeoutAlgorithm ");
}

TEST_F(ClassPages, UnitsStandInTheHeads) {
    EXPECT_TRUE(get("/class/ZANTO_FCIPProtocolEndPoint")
                    .has("CommittedRate</a> <span class=\"unit\">bit / second * 10^3</span></th>"));
}

TEST_F(ClassPages, RestIsThereOnDemand) {
    const Got page = get("/class/ZANTO_FCIPProtocolEndPoint");
    EXPECT_TRUE(page.has("<dt>LocalWWN</dt><dd>20:00:00:00:5e:11:22:33</dd>"));
    const std::string all = page.link("/class/ZANTO_FCIPProtocolEndPoint?columns");
    EXPECT_EQ(all, "/class/ZANTO_FCIPProtocolEndPoint?columns=all");
    EXPECT_GT(get(all).count("<th scope=\"col\""), page.count("<th scope=\"col\""));
}

TEST_F(ClassPages, SortedAsNumbersBothWays) {
    const std::string url =
        get("/class/ZANTO_FCIPProtocolEndPoint").link("/class/ZANTO_FCIPProtocolEndPoint?sort=TunnelID");
    const Got up = get(url);
    EXPECT_EQ(rows(up), "1 2 3 4 5 6 7 8 9 16 ");
    EXPECT_TRUE(up.has("<th scope=\"col\" aria-sort=\"ascending\">"));
    const Got down = get(up.link("/class/ZANTO_FCIPProtocolEndPoint?sort=TunnelID&amp;order=down"));
    EXPECT_EQ(rows(down), "16 9 8 7 6 5 4 3 2 1 ");
}

TEST_F(ClassPages, FilterLooksIntoAllValues) {
    const Got page = get("/class/ZANTO_FCIPProtocolEndPoint?filter=10.2.4");
    EXPECT_EQ(rows(page), "4 5 ");
    EXPECT_TRUE(page.has("1 to 2 of 2 objects that contain the text, of 10."));
    EXPECT_TRUE(page.has("value=\"10.2.4\""));
    EXPECT_TRUE(get("/class/ZANTO_FCIPProtocolEndPoint?filter=nowhere").has("No object of 0 objects"));
}

TEST_F(ClassPages, TwoHundredObjectsAreAPage) {
    use_tunnels(450);
    const Got first = get("/class/ZANTO_FCIPProtocolEndPoint?sort=TunnelID");
    EXPECT_EQ(first.count("<tr><th scope=\"row\">"), 200U);
    EXPECT_TRUE(first.has("1 to 200 of 450 objects."));
    const Got third = get("/class/ZANTO_FCIPProtocolEndPoint?sort=TunnelID&page=3");
    EXPECT_EQ(third.count("<tr><th scope=\"row\">"), 50U);
    EXPECT_TRUE(third.has("401 to 450 of 450"));
    EXPECT_TRUE(third.has(">Before</a>"));
    EXPECT_FALSE(third.has(">After</a>"));
    EXPECT_EQ(rows(get("/class/ZANTO_FCIPProtocolEndPoint?page=9")), "");
}

TEST_F(ClassPages, OfManyObjectsOnlyThoseThatAreShownAreGot) {
    use_tunnels(1200);
    get("/assets/style.css");
    const auto calls = [this] { return catalogue->providers().front().calls; };
    const std::uint64_t before = calls();
    const Got page = get("/class/ZANTO_TCPSettings");
    EXPECT_EQ(calls() - before, 201U) << "the names, then each of the page's objects";
    EXPECT_EQ(page.count("<tr><th scope=\"row\">"), 200U);
    EXPECT_TRUE(page.has("sorted and searched by their keys alone"));
    EXPECT_TRUE(page.has("200 of 1,200 objects"));
}

TEST_F(ClassPages, ObjectsThatCannotBeGotHaveTheirKeys) {
    use_tunnels(1200);
    const Got page = get("/class/ZANTO_FCIPPEBasedOn"); // the class declares none of the keys in its names
    EXPECT_EQ(heads(page), "Antecedent Dependent ") << page.body;
    EXPECT_EQ(page.count("<tr><th scope=\"row\"><a href=\"/object/ZANTO_FCIPPEBasedOn.Antecedent="), 200U);
    EXPECT_TRUE(page.has("<p>200 objects of this page cannot be got"));
    EXPECT_FALSE(get("/class/ZANTO_FCIPProtocolEndPoint").has("cannot be got"));
}

TEST_F(ClassPages, HeadsOfManyObjectsAreLinksForKeysAlone) {
    use_tunnels(1200);
    const Got page = get("/class/ZANTO_TCPSettings?sort=ElementName&columns=all"); // which takes long to enumerate
    EXPECT_TRUE(page.has("<th scope=\"col\"><a href=\"/class/ZANTO_TCPSettings?sort=InstanceID&amp;columns=all\">"));
    EXPECT_TRUE(page.has("<th scope=\"col\">ElementName</th>")) << "neither a link nor sorted by";
    use_tunnels(20);
    site.reset();
    EXPECT_TRUE(get("/class/ZANTO_TCPSettings?columns=all").has("?sort=ElementName&amp;columns=all\">"));
}

TEST_F(ClassPages, ManyObjectsAreSortedAndFilteredByAllValues) {
    use_tunnels(1200);
    const Got first = get("/class/ZANTO_FCIPProtocolEndPoint");
    EXPECT_FALSE(first.has("keys alone"));
    const std::string url = first.link("/class/ZANTO_FCIPProtocolEndPoint?sort=TunnelID");
    EXPECT_EQ(url, "/class/ZANTO_FCIPProtocolEndPoint?sort=TunnelID") << "no key";
    const Got down = get(url + "&order=down");
    EXPECT_TRUE(rows(down).starts_with("1200 1199 1198 ")) << rows(down);
    EXPECT_TRUE(down.has("1 to 200 of 1,200 objects.</p>"));
    const Got filtered = get("/class/ZANTO_FCIPProtocolEndPoint?filter=20:00:00"); // of no key
    EXPECT_TRUE(filtered.has("1 to 200 of 1,200 objects.</p>")) << filtered.body;
}

TEST_F(ClassPages, ClassThatTookLongIsSortedByItsKeys) {
    use_tunnels(1200);
    site_settings.enumerating = {};
    const std::string url = "/class/ZANTO_FCIPProtocolEndPoint?sort=TunnelID&order=down";
    EXPECT_TRUE(rows(get(url)).starts_with("1200 1199 1198 "));
    const Got later = get(url);
    EXPECT_TRUE(later.has("sorted and searched by their keys alone")) << later.body;
    EXPECT_TRUE(later.has("<th scope=\"col\">TunnelID</th>"));
    EXPECT_EQ(later.count("<tr><th scope=\"row\">"), 200U);
}

TEST_F(ClassPages, FilterMatchesMappedTextsAsShown) {
    use_mapped_things();
    const Got page = get("/class/Test_Thing?filter=full");
    EXPECT_TRUE(page.has("1 to 3 of 3 objects")) << page.body;
    EXPECT_TRUE(get("/class/Test_Thing?filter=empty").has("No object of 0 objects"));
}

TEST_F(ClassPages, ColumnsOfASuperclassHoldForItsSubclasses) {
    site_settings.views = file("class_page_views.toml");
    std::ofstream(site_settings.views) << "[class.CIM_StatisticalData]\ncolumns = ['ElementName']\n";
    EXPECT_TRUE(heads(get("/class/ZANTO_EthernetPortStatistics")).starts_with("ElementName "));
    EXPECT_TRUE(heads(get("/class/CIM_StatisticalData")).starts_with("ElementName "));
}

TEST_F(ClassPages, ProviderThatLacksTheClassIsNoFailure) {
    settings.providers.push_back({TEST_PROVIDERS "/host_good_provider.so", "Good"});
    const Got page = get("/class/ZANTO_FCIPProtocolEndPoint");
    EXPECT_TRUE(page.has("of 10 objects"));
    EXPECT_FALSE(page.has("answered with error")) << page.body;
    settings.providers.erase(settings.providers.begin());
    settings.scenario.clear();
    site.reset();
    EXPECT_TRUE(get("/class/ZANTO_FCIPProtocolEndPoint").has("answered with error 5")) << "where nobody knows it";
}

TEST_F(ClassPages, ObjectsOfSubclassesAreThereToo) {
    const Got page = get("/class/CIM_StatisticalData");
    EXPECT_TRUE(page.has("/object/ZANTO_IPEndPointStatistics."));
    EXPECT_TRUE(page.has("/object/ZANTO_EthernetPortStatistics."));
}

TEST_F(ClassPages, NoteOfTheViewIsTold) {
    EXPECT_TRUE(get("/class/ZANTO_IPEndPointStatistics").has("not to be summed over tunnels"));
}

TEST_F(ClassPages, FailureOfTheProviderIsTold) {
    settings.schema = {FCIP_SOURCE_DIR "/tests/host/server/test_classes.mof"};
    settings.providers = {{TEST_PROVIDERS "/host_good_provider.so", "Good"}};
    settings.scenario.clear();
    site_settings.views.clear();
    const Got page = get("/class/Test_Broken");
    EXPECT_EQ(page.status, 200U);
    EXPECT_TRUE(page.has("The provider answered with error 1: broke off")) << page.body;
}

} // namespace
} // namespace cmpihost::pages
