#include "host/pages/site.h"

#include "host/metrics/metric_text.h"
#include "host/metrics/scraper.h"
#include "host/pages/html.h"
#include "host/pages/site_parts.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace cmpihost::pages {

namespace {

views::Views views_of(const server::Catalogue& catalogue, const SiteSettings& settings) {
    return settings.views.empty() ? views::Views() : views::read_views(settings.views, catalogue.schema_of({}));
}

struct Route {
    std::string_view path; ///< whole, or a folder that ends with /
    Page (*page)(const Visit& visit);
};

constexpr std::array routes{
    Route{"/", front_page},         Route{"/graph", graph_page}, Route{"/class/", class_page},
    Route{"/object/", object_page}, Route{"/assets/", asset},
};

/// The page's own part of a path is taken off `rest`.
const Route* find_route(std::string& rest) {
    const auto* found = std::find_if(routes.begin(), routes.end(), [&rest](const Route& route) {
        const bool folder = route.path.size() > 1 && route.path.ends_with('/');
        return folder ? rest.starts_with(route.path) : rest == route.path;
    });
    if (found == routes.end())
        return nullptr;
    rest.erase(0, found->path.size());
    return found;
}

} // namespace

const server::Namespace* namespace_of(const Visit& visit, const std::string& name) {
    return name.empty() ? &visit.main : visit.catalogue.find(name);
}

Page error_page(unsigned status, const std::string& title, const std::string& text) {
    return {status, "text/html; charset=utf-8", page(title, link("/", "Classes"), "<p>" + escaped(text) + "</p>\n")};
}

class Site::State {
  public:
    State(const server::Catalogue& catalogue, const SiteSettings& settings)
        : catalogue_(catalogue), settings_(settings), views_(views_of(catalogue, settings)),
          plans_(metrics::make_plans(catalogue, views_, settings.metrics)),
          scraper_([this](std::chrono::milliseconds time, metrics::Scraped spare) {
              return metrics::scrape(plans_, time, std::move(spare));
          }) {}

    server::Outcome answer(const server::Question& question, server::ReplySink& sink);

  private:
    server::Outcome answer_metrics(const server::PageRequest& request, server::ReplySink& sink);

    const server::Catalogue& catalogue_;
    const SiteSettings settings_;
    const views::Views views_;
    const std::vector<metrics::ClassPlan> plans_;
    metrics::Scraper scraper_;
    Memory memory_;
};

server::Outcome Site::State::answer_metrics(const server::PageRequest& request, server::ReplySink& sink) {
    const auto time = request.time.count() == 0 ? settings_.timeout : std::min(request.time, settings_.timeout);
    scraper_.read(time, [&sink](std::string_view piece) { sink.append(piece); });
    sink.append(metrics::providers_text(catalogue_).view());
    server::Outcome outcome;
    outcome.content_type = metrics::content_type;
    return outcome;
}

server::Outcome Site::State::answer(const server::Question& question, server::ReplySink& sink) {
    const auto target = read_target(question.page->target);
    if (!target)
        return {400};
    server::Subject subject;
    subject.envelope.operation = "GET";
    subject.class_name = target->path;
    sink.subject(subject);
    if (target->path == "/metrics")
        return answer_metrics(*question.page, sink);
    std::string rest = target->path;
    const Route* route = find_route(rest);
    if (route == nullptr)
        return {404};
    const Page page = route->page(
        {catalogue_, views_, settings_, *catalogue_.namespaces().front(), *target, rest, question, memory_});
    sink.append(page.body);
    server::Outcome outcome;
    outcome.http_status = page.status;
    outcome.content_type = page.content_type;
    return outcome;
}

Site::Site(const server::Catalogue& catalogue, const SiteSettings& settings)
    : state_(std::make_unique<State>(catalogue, settings)) {}

Site::~Site() = default;

server::Outcome Site::answer(const server::Question& question, server::ReplySink& sink) const {
    return state_->answer(question, sink);
}

} // namespace cmpihost::pages
