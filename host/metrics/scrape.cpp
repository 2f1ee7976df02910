#include "host/metrics/scrape.h"

#include "host/metrics/metric_text.h"
#include "host/server/asking.h"

#include <array>

namespace cmpihost::metrics {

namespace {

using Clock = std::chrono::steady_clock;

/// What is told of how a class was asked.
struct ClassFigures {
    const ClassPlan* plan;
    bool success = false;
    std::chrono::microseconds time{};
    std::uint64_t objects = 0;
    std::uint64_t doubles = 0;
};

Request enumeration(const ClassPlan& plan, const Source& source) {
    Request request;
    request.operation = Request::Operation::enumerate_instances;
    request.path.class_name = plan.declaration->name;
    request.path.name_space = source.space->name;
    return request;
}

server::Status ask(const ClassPlan& plan, const Source& source, ClassSamples& samples) {
    std::exception_ptr failure;
    samples.begin_call();
    const Answer answer = (*source.ask)(enumeration(plan, source), [&](const HeldObject& object, bool is_instance) {
        try { // nothing may be thrown through the provider
            if (is_instance && !failure)
                samples.add(object);
        } catch (...) {
            failure = std::current_exception();
        }
    });
    if (failure)
        std::rethrow_exception(failure);
    return server::status_of(answer);
}

bool is_over(Clock::time_point until) {
    return until != Clock::time_point::max() && Clock::now() >= until;
}

/// Asks everybody who serves the class. False: one failed, nobody supports it, or there was no time for all.
bool ask_all(const ClassPlan& plan, ClassSamples& samples, Clock::time_point until) {
    bool answered = false;
    for (const Source& source : plan.sources) {
        if (is_over(until))
            return false;
        const server::Status status = ask(plan, source, samples);
        answered = answered || status.code == server::CimCode::ok;
        if (status.code != server::CimCode::ok && !server::is_unsupported(status))
            return false;
    }
    return answered;
}

ClassFigures scrape_class(const ClassPlan& plan, ClassSamples& samples, Clock::time_point until) {
    const auto began = Clock::now();
    samples.clear();
    ClassFigures figures{&plan};
    if (began >= until)
        return figures;
    figures.success = ask_all(plan, samples, until);
    if (figures.success)
        samples.end();
    else
        samples.clear();
    figures.objects = samples.objects();
    figures.doubles = samples.doubles();
    figures.time = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - began);
    return figures;
}

struct FigureRow {
    const char* name;
    const char* help;
    void (*append_value)(Text& text, const ClassFigures& figures);
};

constexpr std::array figure_rows{
    FigureRow{"cmpihost_scrape_class_success", "Whether the class was enumerated without an error.",
              [](Text& text, const ClassFigures& figures) { text.append(figures.success ? "1" : "0"); }},
    FigureRow{"cmpihost_scrape_class_duration_seconds", "How long the enumeration of the class took.",
              [](Text& text, const ClassFigures& figures) { append_seconds(text, figures.time); }},
    FigureRow{"cmpihost_scrape_class_objects", "Objects that the enumeration of the class gave.",
              [](Text& text, const ClassFigures& figures) { append_number(text, figures.objects); }},
    FigureRow{"cmpihost_scrape_class_doubled_objects", "Objects left out: their keys are those of another object.",
              [](Text& text, const ClassFigures& figures) { append_number(text, figures.doubles); }},
};

void append_class_figures(Text& text, const std::vector<ClassFigures>& all) {
    if (all.empty())
        return;
    for (const FigureRow& row : figure_rows) {
        append_head(text, row.name, "gauge", row.help);
        for (const ClassFigures& figures : all) {
            text.append(row.name).append(figures.plan->class_label);
            row.append_value(text, figures);
            text.append("\n");
        }
    }
}

} // namespace

Text providers_text(const server::Catalogue& catalogue) {
    const auto providers = catalogue.providers();
    std::vector<Text> labels;
    labels.reserve(providers.size());
    for (const server::ProviderFigures& each : providers)
        labels.push_back(only_label("provider", each.name));
    Text text;
    text.room(2048); // mostly enough
    const auto append_all = [&](const char* name, const char* help, const auto& append_value) {
        append_head(text, name, "counter", help);
        for (std::size_t index = 0; index < providers.size(); ++index) {
            text.append(name).append(labels[index].view());
            append_value(providers[index]);
            text.append("\n");
        }
    };
    using Figures = server::ProviderFigures;
    append_all("cmpihost_provider_calls_total", "Calls of the provider since its process began.",
               [&text](const Figures& each) { append_number(text, each.calls); });
    append_all("cmpihost_provider_failed_calls_total", "Of these those that ended with an error.",
               [&text](const Figures& each) { append_number(text, each.failures); });
    append_all("cmpihost_provider_call_seconds_total", "Time that the provider took for its calls.",
               [&text](const Figures& each) { append_seconds(text, each.time); });
    return text;
}

void Scraped::give(const Pieces::Take& take) const {
    Pieces pieces(take);
    for (const ClassSamples& samples : classes)
        samples.write(pieces);
    pieces.line().append(figures.view());
    pieces.end();
}

Scraped scrape(const std::vector<ClassPlan>& plans, std::chrono::milliseconds time, Scraped spare) {
    const auto until = time.count() == 0 ? Clock::time_point::max() : Clock::now() + time * 8 / 10;
    if (spare.classes.empty())
        for (const ClassPlan& plan : plans)
            spare.classes.emplace_back(plan);
    std::vector<ClassFigures> figures;
    figures.reserve(plans.size());
    for (std::size_t index = 0; index < plans.size(); ++index)
        figures.push_back(scrape_class(plans[index], spare.classes[index], until));
    spare.figures.cut(0);
    append_class_figures(spare.figures, figures);
    return spare;
}

} // namespace cmpihost::metrics
