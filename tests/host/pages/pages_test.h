// Pages over the switch's provider, asked as the listener asks.
#pragma once

#include "host/cli/redirect.h"
#include "host/pages/site.h"
#include "host/server/catalogue.h"

#include <gtest/gtest.h>

#include <fstream>
#include <optional>

namespace cmpihost::pages {

struct Got {
    unsigned status = 0;
    std::string type;
    std::string body;

    bool has(const std::string& text) const { return body.find(text) != std::string::npos; }
    std::size_t count(const std::string& text) const {
        std::size_t found = 0;
        for (std::size_t at = body.find(text); at != std::string::npos; at = body.find(text, at + 1))
            ++found;
        return found;
    }
    /// What stands between two texts, from the n-th first one on; empty if they are not there.
    std::string between(const std::string& before, const std::string& after, std::size_t n = 0) const {
        std::size_t at = body.find(before);
        for (; n > 0 && at != std::string::npos; --n)
            at = body.find(before, at + 1);
        const std::size_t end = at == std::string::npos ? at : body.find(after, at + before.size());
        return end == std::string::npos ? std::string() : body.substr(at + before.size(), end - at - before.size());
    }
    /// The address of the n-th link that begins so, as a browser asks for it.
    std::string link(const std::string& begin, std::size_t n = 0) const {
        std::string url = begin + between("href=\"" + begin, "\"", n);
        for (std::size_t at = url.find("&amp;"); at != std::string::npos; at = url.find("&amp;", at + 1))
            url.erase(at + 1, 4);
        return url;
    }
};

class PagesTest : public testing::Test {
  protected:
    PagesTest() {
        settings.schema = {FCIP_SOURCE_DIR "/schema/dmtf.mof", FCIP_SOURCE_DIR "/schema/fcip.mof"};
        settings.providers = {{FCIP_PROVIDER, "FCIPProvider"}};
        settings.scenario = FCIP_SOURCE_DIR "/scenarios/two-site.toml";
        site_settings.counting = site_settings.walking = std::chrono::hours(1); // however slow the machine is
        site_settings.timeout = std::chrono::hours(2);
        site_settings.views = FCIP_SOURCE_DIR "/schema/views.toml";
    }

    Got get(const std::string& target) {
        const StandardOutputElsewhere quiet("", stderr);
        if (!site) {
            catalogue.emplace(settings);
            site.emplace(*catalogue, site_settings);
        }
        struct Sink : server::ReplySink {
            void subject(const server::Subject&) override {}
            void append(std::string_view part) override { body += part; }
            void discard() override { body.clear(); }
            std::string body;
        } sink;
        server::Question question{"", "", "localhost", "",
                                  server::PageRequest{target, {}, {1'700'000'000, 1234, 5, 6, 7}}};
        server::Outcome outcome = site->answer(question, sink);
        return {outcome.http_status, std::move(outcome.content_type), std::move(sink.body)};
    }

    /// A provider in C for tests, and classes with mapped values that it answers for.
    void use_mapped_things() {
        settings.schema = {testing::TempDir() + "mapped_things.mof"};
        std::ofstream(settings.schema.front())
            << "class Test_Thing { [Key] string Name; [Key] uint32 Number; uint64 U64; sint64 S64; real64 Real;\n"
               "  [ValueMap {\"1\", \"255\"}, Values {\"Empty\", \"Full\"}] uint8 U8; char16 Letter;\n"
               "  [ValueMap {\"7\"}, Values {\"Seven\"}] uint16 List[]; string Text; };\n";
        settings.providers = {{TEST_PROVIDERS "/host_good_provider.so", "Good"}};
        settings.scenario.clear();
        site_settings.views.clear();
    }

    /// Every page that is linked from a page, and begins so.
    std::vector<std::string> links(const Got& page, const std::string& begin) {
        std::vector<std::string> all;
        for (std::size_t n = 0; n < page.count("href=\"" + begin); ++n)
            all.push_back(page.link(begin, n));
        return all;
    }

    server::Settings settings;
    SiteSettings site_settings;
    std::optional<server::Catalogue> catalogue;
    std::optional<Site> site;
};

} // namespace cmpihost::pages
