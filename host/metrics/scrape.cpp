#include "host/metrics/scrape.h"

#include "host/broker/held.h"
#include "host/cim/names.h"
#include "host/cimxml/typed_text.h"
#include "host/metrics/metric_text.h"

#include <algorithm>
#include <unordered_set>

namespace cmpihost::metrics {

namespace {

using Clock = std::chrono::steady_clock;

/// Finds properties of one class's objects, which mostly have them at the same places.
class Finder {
  public:
    explicit Finder(std::string_view name) : name_(name) {}

    const HeldProperty* find(const HeldProperties& properties) {
        if (place_ < properties.count && properties[place_].name->text == name_)
            return &properties[place_];
        for (place_ = 0; place_ < properties.count; ++place_)
            if (same_name(properties[place_].name->text, name_))
                return &properties[place_];
        return nullptr;
    }

  private:
    std::string name_;
    std::size_t place_ = 0;
};

/// A metric's samples while they come.
struct Family {
    const Metric* metric;
    Finder finder;
    std::string begin; ///< of each sample
    std::string text;
};

/// Appends a value as a number. False: it is none.
bool append_value(std::string& out, const HeldValue& value, const Metric& metric) {
    const auto real = [&](double number) {
        append_number(out, number * static_cast<double>(metric.unit.times) / static_cast<double>(metric.unit.by));
        return true;
    };
    if (const auto* natural = std::get_if<std::uint64_t>(&value.data)) {
        if (!metric.counter && metric.unit.by * metric.unit.times != 1)
            return real(static_cast<double>(*natural));
        metric.counter ? append_counter(out, *natural, metric.unit) : append_number(out, *natural);
        return true;
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value.data))
        return real(static_cast<double>(*integer));
    if (const auto* number = std::get_if<double>(&value.data))
        return real(*number);
    if (const auto* truth = std::get_if<bool>(&value.data)) {
        out += *truth ? '1' : '0';
        return true;
    }
    return false;
}

std::string text_of(const HeldProperty& property) {
    if (const auto* text = std::get_if<std::string_view>(&property.value.data))
        return std::string(*text);
    std::string out;
    cimxml::append_typed(out, type_name(property.type), plain(property.value));
    return out;
}

bool is_in_state(const HeldProperty& property, const std::string& value) {
    const auto* array = std::get_if<HeldArray*>(&property.value.data);
    if (array == nullptr)
        return text_of(property) == value;
    return *array != nullptr && std::any_of((*array)->begin(), (*array)->end(), [&](const HeldValue& element) {
        return text_of({property.name, static_cast<CMPIType>(property.type & ~CMPI_ARRAY), element}) == value;
    });
}

/// Gives the memory of one text after the other.
class Spare {
  public:
    explicit Spare(Parts parts) : parts_(std::move(parts)) {}

    std::string take() {
        if (next_ == parts_.size())
            return {};
        std::string text = std::move(parts_[next_++]);
        text.clear();
        return text;
    }

  private:
    Parts parts_;
    std::size_t next_ = 0;
};

/// The samples of a class's objects.
class ClassSamples {
  public:
    ClassSamples(const ClassPlan& plan, Spare& spare) {
        for (const Metric& metric : plan.metrics)
            families_.push_back({&metric, Finder(metric.property), metric.name + "{", spare.take()});
        for (const Label& label : plan.labels)
            labels_.emplace_back(&label, Finder(label.property));
    }

    void add(const HeldObject& object) {
        ++objects_;
        line_.clear();
        for (auto& [label, finder] : labels_)
            if (const HeldProperty* property = finder.find(object.properties)) {
                const auto* text = std::get_if<std::string_view>(&property->value.data);
                append_label(line_, label->name, text != nullptr ? *text : std::string_view(text_of(*property)));
            }
        if (!seen_.insert(line_).second) {
            ++doubles_;
            return;
        }
        for (Family& family : families_)
            if (const HeldProperty* property = family.finder.find(object.properties))
                add(family, *property);
    }

    std::uint64_t objects() const { return objects_; }
    std::uint64_t doubles() const { return doubles_; }

    void move_to(Parts& parts) {
        for (Family& family : families_)
            parts.push_back(std::move(family.text));
    }

  private:
    void add(Family& family, const HeldProperty& property) {
        const Metric& metric = *family.metric;
        const std::size_t begin = family.text.size();
        if (begin == 0)
            append_head(family.text, metric.name, metric.counter ? "counter" : "gauge", metric.help);
        for (const auto& [value, state] : metric.states) {
            std::string labels = line_;
            append_label(labels, metric.state_label, state);
            family.text.append(metric.name).append("{").append(labels);
            family.text += is_in_state(property, value) ? "} 1\n" : "} 0\n";
        }
        if (!metric.states.empty())
            return;
        family.text.append(family.begin).append(line_).append("} ");
        if (append_value(family.text, property.value, metric))
            family.text += '\n';
        else
            family.text.resize(begin);
    }

    std::vector<Family> families_;
    std::vector<std::pair<const Label*, Finder>> labels_;
    std::unordered_set<std::string> seen_;
    std::string line_; ///< the labels of an object
    std::uint64_t objects_ = 0;
    std::uint64_t doubles_ = 0;
};

/// What is told of how a class was asked.
struct ClassFigures {
    const std::string* name;
    bool success = false;
    double seconds = 0;
    std::uint64_t objects = 0;
    std::uint64_t doubles = 0;
};

Request enumeration(const ClassPlan& plan) {
    Request request;
    request.operation = Request::Operation::enumerate_instances;
    request.path.class_name = plan.served->declaration->name;
    request.path.name_space = plan.space->name;
    return request;
}

ClassFigures scrape_class(const ClassPlan& plan, Parts& parts, Spare& spare) {
    const auto began = Clock::now();
    ClassSamples samples(plan, spare);
    std::exception_ptr failure;
    const Answer answer = (*plan.served->ask)(enumeration(plan), [&](const HeldObject& object, bool is_instance) {
        try { // nothing may be thrown through the provider
            if (is_instance && !failure)
                samples.add(object);
        } catch (...) {
            failure = std::current_exception();
        }
    });
    if (failure)
        std::rethrow_exception(failure);
    ClassFigures figures{&plan.served->declaration->name, answer.rc == 0};
    if (figures.success) {
        samples.move_to(parts);
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

Parts scrape(const std::vector<ClassPlan>& plans, std::chrono::milliseconds time, Parts spare) {
    const auto late = Clock::now() + time * 8 / 10;
    Spare texts(std::move(spare));
    Parts parts;
    std::vector<ClassFigures> figures;
    for (const ClassPlan& plan : plans)
        if (time.count() != 0 && Clock::now() >= late)
            figures.push_back({&plan.served->declaration->name});
        else
            figures.push_back(scrape_class(plan, parts, texts));
    if (!figures.empty())
        parts.push_back(class_figures_text(figures));
    return parts;
}

void Scraper::run(Round& round, Parts spare, std::chrono::milliseconds time) {
    try {
        round.parts = scrape_(time, std::move(spare));
    } catch (...) {
        round.failure = std::current_exception();
    }
    const std::lock_guard lock(mutex_);
    round.done = true;
    changed_.notify_all();
}

/// Joins the scrape that is under way, or starts one.
std::shared_ptr<Scraper::Round> Scraper::enter(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    if (round_ != nullptr && !round_->done) {
        std::shared_ptr<Round> round = round_;
        ++round->readers;
        changed_.wait(lock, [&round] { return round->done; });
        return round;
    }
    Parts spare;
    if (round_ != nullptr && round_->readers == 0)
        spare = std::move(round_->parts);
    auto round = round_ = std::make_shared<Round>();
    ++round->readers;
    lock.unlock();
    run(*round, std::move(spare), time);
    return round;
}

void Scraper::leave(Round& round) {
    const std::lock_guard lock(mutex_);
    --round.readers;
}

unsigned Scraper::readers() {
    const std::lock_guard lock(mutex_);
    return round_ == nullptr ? 0 : round_->readers;
}

void Scraper::read(std::chrono::milliseconds time, const std::function<void(const Parts& parts)>& take) {
    const std::shared_ptr<Round> round = enter(time);
    try {
        if (round->failure)
            std::rethrow_exception(round->failure);
        take(round->parts);
    } catch (...) {
        leave(*round);
        throw;
    }
    leave(*round);
}

} // namespace cmpihost::metrics
