// Which paths there are, the first page, the graph, the files.
#include "tests/host/pages/pages_test.h"

namespace cmpihost::pages {
namespace {

using SitePages = PagesTest;

TEST_F(SitePages, PathsAndTheirStatuses) {
    const std::vector<std::pair<const char*, unsigned>> rows{
        {"/", 200},
        {"/?x=y", 200},
        {"/graph", 200},
        {"/metrics", 200},
        {"/class/ZANTO_FCIPProfile", 200},
        {"/class/zanto_fcipprofile", 200},
        {"/class/interop:CIM_Namespace", 200},
        {"/object/ZANTO_FCIPProfile.InstanceID=%221%22", 200},
        {"/assets/style.css", 200},
        {"/assets/live.js", 200},
        {"/assets/icon.svg", 200},
        {"/assets/other", 404},
        {"/nothing", 404},
        {"/class/", 404},
        {"/class/None", 404},
        {"/class/none:ZANTO_FCIPProfile", 404},
        {"/object/ZANTO_FCIPProfile.InstanceID=%2299%22", 404},
        {"/object/None.A=1", 404},
        {"/object/ZANTO_FCIPProfile.InstanceID=", 400},
        {"/object/", 400},
        {"/%zz", 400},
        {"/graph?a=%", 400},
    };
    settings.interop_schema = FCIP_SOURCE_DIR "/schema/interop.mof";
    for (const auto& [target, status] : rows)
        EXPECT_EQ(get(target).status, status) << target;
}

TEST_F(SitePages, FirstPageHasTheClassesWithTheirNumbers) {
    const Got page = get("/");
    EXPECT_EQ(page.type, "text/html; charset=utf-8");
    EXPECT_TRUE(page.has("<a href=\"/class/ZANTO_FCIPProtocolEndPoint\">ZANTO_FCIPProtocolEndPoint</a></th>"
                         "<td class=\"number\">10</td><td>The switch's end of"))
        << page.body;
    EXPECT_TRUE(page.has("<th colspan=\"3\" scope=\"rowgroup\">CIM_ProtocolEndpoint</th>"));
    for (const std::string& url : links(page, "/class/"))
        EXPECT_EQ(get(url).status, 200U) << url;
}

TEST_F(SitePages, FirstPageTellsOfTheServer) {
    const Got page = get("/");
    EXPECT_TRUE(page.has("<th scope=\"row\">Program</th><td>cmpihost " CMPIHOST_VERSION "</td>"));
    EXPECT_TRUE(page.has("2023-11-14 22:13:20 UTC"));
    EXPECT_TRUE(page.has("1,234, of which 5 did not end well"));
    EXPECT_TRUE(page.has("Restarts of the providers' process</th><td>6</td>"));
    EXPECT_TRUE(page.has(" FCIPProvider</th>"));
}

TEST_F(SitePages, GraphLinksEachObject) {
    const Got page = get("/graph");
    EXPECT_TRUE(page.has("<svg role=\"group\""));
    const auto urls = links(page, "/object/");
    EXPECT_EQ(urls.size(), page.count("<rect "));
    EXPECT_GT(urls.size(), 50U);
    EXPECT_GT(page.count("class=\"tie\""), urls.size() / 2);
    EXPECT_FALSE(page.has("style=")) << "which the policy of the pages forbids";
}

TEST_F(SitePages, ObjectsOfTheGraphOpen) {
    Opened drawn;
    for (const std::string& url : links(get("/graph"), "/object/"))
        drawn.add(url, get(url));
    EXPECT_GT(drawn.objects, 50U);
    EXPECT_EQ(drawn.missing_text(), drawn_and_not_found(4));
}

TEST_F(SitePages, WhatTakesTooLongIsLeftOut) {
    site_settings.counting = site_settings.walking = {};
    EXPECT_TRUE(get("/").has("<td class=\"number\">not counted</td>"));
    const Got graph = get("/graph");
    EXPECT_EQ(graph.status, 200U);
    EXPECT_TRUE(graph.has("Not all were asked, since that takes long."));
    EXPECT_FALSE(graph.has("<svg")); // of nothing
}

TEST_F(SitePages, LaterVisitsCountWhatWasLeftOut) {
    settings.scenario = file("counts.toml");
    std::ofstream(settings.scenario) << "[switch]\nname = \"many\"\n[generate]\ntunnels = 1200\n";
    site_settings.counting = std::chrono::milliseconds(1);
    EXPECT_TRUE(get("/").has("not counted"));
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(50);
    while (get("/").has("not counted") && std::chrono::steady_clock::now() < until)
        continue;
    EXPECT_FALSE(get("/").has("not counted"));
}

TEST_F(SitePages, TimeoutOfARequestLimitsWhatTakesLong) {
    site_settings.timeout = {};
    EXPECT_TRUE(get("/").has("<td class=\"number\">not counted</td>"));
    EXPECT_TRUE(get("/graph").has("Not all were asked, since that takes long."));
    const Got object = get("/object/ZANTO_FCIPProfile.InstanceID=%221%22");
    EXPECT_EQ(object.status, 200U);
    EXPECT_TRUE(object.has("Not all were asked for, since that takes long.")) << object.body;
    EXPECT_FALSE(object.has("The providers name no neighbour"));
}

TEST_F(SitePages, ProvidersOfOneFileNameAreToldApart) {
    const std::string folder = testing::TempDir() + "providers_of_one_name_" + std::to_string(getpid()) + "/";
    for (const char* name : {"a/x", "b/x"}) {
        std::filesystem::create_directories(folder + name);
        std::filesystem::copy_file(TEST_PROVIDERS "/host_good_provider.so", folder + name + "/p.so",
                                   std::filesystem::copy_options::overwrite_existing);
    }
    use_mapped_things();
    settings.providers = {{folder + "a/x/p.so", "Good"},
                          {folder + "b/x/p.so", "Good"},
                          {TEST_PROVIDERS "/host_good_provider.so", "Good"}};
    const Got page = get("/");
    for (const char* name : {"a/x/p.so Good", "b/x/p.so Good", "host_good_provider.so Good"})
        EXPECT_TRUE(page.has("<th scope=\"row\">" + std::string(name) + "</th>")) << page.body;
    EXPECT_TRUE(get("/metrics").has("cmpihost_provider_calls_total{provider=\"a/x/p.so Good\"} "));
    site.reset();
    catalogue.reset();
    std::filesystem::remove_all(folder);
}

TEST_F(SitePages, NothingComesFromElsewhere) {
    for (const char* target :
         {"/", "/graph", "/class/ZANTO_FCIPProfile", "/object/ZANTO_FCIPProfile.InstanceID=%221%22"}) {
        const Got page = get(target);
        for (const char* outside :
             {"href=\"http", "src=\"http", "href=\"//", "src=\"//", "<style", " style=\"", " onclick"})
            EXPECT_FALSE(page.has(outside)) << target << " " << outside;
        EXPECT_EQ(page.count("<script"), 1U) << target;
        EXPECT_TRUE(page.has("<script src=\"/assets/live.js\" defer></script>"));
    }
}

TEST_F(SitePages, HostileTextsStayTexts) {
    settings.scenario = FCIP_SOURCE_DIR "/tests/browser/hostile.toml";
    std::vector<std::string> targets = links(get("/"), "/class/");
    targets.emplace_back("/graph");
    Opened listed;
    Opened drawn;
    for (const std::string& target : targets) {
        const Got page = get(target);
        EXPECT_EQ(page.status, 200U) << target;
        EXPECT_EQ(page.count("<script"), 1U) << target;
        EXPECT_FALSE(page.has("<img") || page.has("onload=alert(1)>") || page.has("<title></title>")) << target;
        for (const std::string& url : links(page, "/object/")) {
            const Got object = get(url);
            (target == "/graph" ? drawn : listed).add(url, object);
            EXPECT_EQ(object.count("<script"), 1U) << url;
            EXPECT_FALSE(object.has("<img") || object.has("onload=alert(1)>")) << url;
        }
    }
    EXPECT_GT(listed.objects, 150U);
    EXPECT_EQ(listed.missing_text(), not_found) << "as with harmless texts";
    EXPECT_GT(drawn.objects, 50U);
    EXPECT_EQ(drawn.missing_text(), drawn_and_not_found(1)) << "all systems have one name";
}

TEST_F(SitePages, MetricsAreOfTheClassesThatTheViewsName) {
    const Got metrics = get("/metrics");
    EXPECT_EQ(metrics.type, "text/plain; version=0.0.4; charset=utf-8");
    EXPECT_TRUE(metrics.has("cmpihost_scrape_class_success{class=\"ZANTO_IPEndPointStatistics\"} 1\n"));
    EXPECT_EQ(metrics.count("\ncmpihost_scrape_class_success{"), 3U);
}

TEST_F(SitePages, ScrapeEndsWithinTheShorterOfItsTimes) {
    using std::chrono::milliseconds;
    const auto asked = [this](milliseconds timeout, milliseconds own) {
        site_settings.timeout = timeout;
        site.reset();
        return get("/metrics", own).count("cmpihost_scrape_class_success{class=\"ZANTO_IPEndPointStatistics\"} 1\n");
    };
    EXPECT_EQ(asked(std::chrono::hours(2), {}), 1U);
    EXPECT_EQ(asked(std::chrono::hours(2), std::chrono::hours(1)), 1U);
    EXPECT_EQ(asked(milliseconds(1), {}), 0U);
    EXPECT_EQ(asked(milliseconds(1), std::chrono::hours(1)), 0U);
    EXPECT_EQ(asked(std::chrono::hours(2), milliseconds(1)), 0U);
}

TEST_F(SitePages, WithoutViewsNothingIsMeasured) {
    site_settings.views.clear();
    EXPECT_EQ(get("/metrics").count("cmpihost_scrape_class_success{"), 0U);
}

} // namespace
} // namespace cmpihost::pages
