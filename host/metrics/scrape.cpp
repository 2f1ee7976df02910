#include "host/metrics/scrape.h"

#include "host/metrics/metric_text.h"
#include "host/server/asking.h"

#include <array>

namespace cmpihost::metrics {

namespace {

using Clock = std::chrono::steady_clock;

/// What is told of how a class was asked.
struct ClassFigures {
    const std::string* name;
    bool success = false;
    double seconds = 0;
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

/// Asks everybody who serves the class. False: one failed, nobody supports it, or there was no time for all.
bool ask_all(const ClassPlan& plan, ClassSamples& samples, Clock::time_point until) {
    bool answered = false;
    for (const Source& source : plan.sources) {
        if (Clock::now() >= until)
            return false;
        const server::Status status = ask(plan, source, samples);
        answered = answered || status.code == server::CimCode::ok;
        if (status.code != server::CimCode::ok && !server::is_unsupported(status))
            return false;
    }
    return answered;
}

/// What the classes of a scrape are written into.
struct Texts {
    Spare spare;
    Lines& labels;
    Parts parts{};
};

ClassFigures scrape_class(const ClassPlan& plan, Texts& texts, Clock::time_point until) {
    const auto began = Clock::now();
    ClassFigures figures{&plan.declaration->name};
    if (began >= until)
        return figures;
    ClassSamples samples(plan, texts.spare, texts.labels);
    figures.success = ask_all(plan, samples, until);
    if (figures.success) {
        samples.move_to(texts.parts);
        figures.objects = samples.objects();
        figures.doubles = samples.doubles();
    }
    figures.seconds = std::chrono::duration<double>(Clock::now() - began).count();
    return figures;
}

struct FigureRow {
    const char* name;
    const char* help;
    double (*value)(const ClassFigures& figures);
};

constexpr std::array figure_rows{
    FigureRow{"cmpihost_scrape_class_success", "Whether the class was enumerated without an error.",
              [](const ClassFigures& figures) { return figures.success ? 1.0 : 0.0; }},
    FigureRow{"cmpihost_scrape_class_duration_seconds", "How long the enumeration of the class took.",
              [](const ClassFigures& figures) { return figures.seconds; }},
    FigureRow{"cmpihost_scrape_class_objects", "Objects that the enumeration of the class gave.",
              [](const ClassFigures& figures) { return static_cast<double>(figures.objects); }},
    FigureRow{"cmpihost_scrape_class_doubled_objects", "Objects left out: their keys are those of another object.",
              [](const ClassFigures& figures) { return static_cast<double>(figures.doubles); }},
};

std::string class_figures_text(const std::vector<ClassFigures>& all) {
    std::string text;
    for (const FigureRow& row : figure_rows) {
        append_head(text, row.name, "gauge", row.help);
        for (const ClassFigures& figures : all)
            append_sample(text, row.name, "class", *figures.name, row.value(figures));
    }
    return text;
}

} // namespace

std::string providers_text(const server::Catalogue& catalogue) {
    const auto providers = catalogue.providers();
    std::string text;
    append_head(text, "cmpihost_provider_calls_total", "counter", "Calls of the provider since its process began.");
    for (const server::ProviderFigures& each : providers)
        append_sample(text, "cmpihost_provider_calls_total", "provider", each.name, each.calls);
    append_head(text, "cmpihost_provider_failed_calls_total", "counter", "Of these those that ended with an error.");
    for (const server::ProviderFigures& each : providers)
        append_sample(text, "cmpihost_provider_failed_calls_total", "provider", each.name, each.failures);
    append_head(text, "cmpihost_provider_call_seconds_total", "counter", "Time that the provider took for its calls.");
    for (const server::ProviderFigures& each : providers)
        append_sample(text, "cmpihost_provider_call_seconds_total", "provider", each.name,
                      std::chrono::duration<double>(each.time).count());
    return text;
}

Parts scrape(const std::vector<ClassPlan>& plans, std::chrono::milliseconds time, Lines& labels, Parts spare) {
    const auto until = time.count() == 0 ? Clock::time_point::max() : Clock::now() + time * 8 / 10;
    Texts texts{Spare(std::move(spare)), labels};
    std::vector<ClassFigures> figures;
    figures.reserve(plans.size());
    for (const ClassPlan& plan : plans)
        figures.push_back(scrape_class(plan, texts, until));
    if (!figures.empty())
        texts.parts.push_back(class_figures_text(figures));
    return std::move(texts.parts);
}

} // namespace cmpihost::metrics
