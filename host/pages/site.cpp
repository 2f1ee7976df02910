#include "host/pages/site.h"

#include "host/metrics/metric_text.h"
#include "host/metrics/scrape.h"
#include "host/pages/target.h"

#include <stdexcept>

namespace cmpihost::pages {

namespace {

views::Views views_of(const server::Catalogue& catalogue, const SiteSettings& settings) {
    return settings.views.empty() ? views::Views() : views::read_views(settings.views, catalogue.schema_of({}));
}

} // namespace

class Site::State {
  public:
    State(const server::Catalogue& catalogue, const SiteSettings& settings)
        : catalogue_(catalogue), views_(views_of(catalogue, settings)),
          plans_(metrics::make_plans(catalogue, views_, settings.metrics)),
          scraper_([this](std::chrono::milliseconds time) { return metrics::scrape(plans_, time); }) {}

    server::Outcome answer(const server::Question& question, server::ReplySink& sink);

  private:
    server::Outcome answer_metrics(const server::PageRequest& request, server::ReplySink& sink);

    const server::Catalogue& catalogue_;
    const views::Views views_;
    const std::vector<metrics::ClassPlan> plans_;
    metrics::Scraper scraper_;
};

server::Outcome Site::State::answer_metrics(const server::PageRequest& request, server::ReplySink& sink) {
    const auto parts = scraper_.parts(request.time);
    for (const std::string& part : *parts)
        sink.append(part);
    sink.append(metrics::providers_text(catalogue_));
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
    return {404};
}

Site::Site(const server::Catalogue& catalogue, const SiteSettings& settings)
    : state_(std::make_unique<State>(catalogue, settings)) {}

Site::~Site() = default;

server::Outcome Site::answer(const server::Question& question, server::ReplySink& sink) const {
    return state_->answer(question, sink);
}

} // namespace cmpihost::pages
