#include "host/metrics/plan.h"

#include "host/metrics/metric_names.h"
#include "host/metrics/metric_text.h"

#include <algorithm>
#include <stdexcept>

namespace cmpihost::metrics {

namespace {

using mof::PropertyDeclaration;
using server::Namespace;
using server::ServedClass;
using views::Views;

std::string text_of(std::span<const mof::Qualifier> qualifiers, std::string_view name) {
    const mof::Qualifier* qualifier = mof::find_qualifier(qualifiers, name);
    const auto* text = qualifier == nullptr ? nullptr : std::get_if<std::string>(&qualifier->value.data);
    return text == nullptr ? std::string() : *text;
}

bool is_number(const PropertyDeclaration& property) {
    return property.type == "boolean" || property.type.starts_with("uint") || property.type.starts_with("sint") ||
           property.type.starts_with("real");
}

/// The name with its unit at the end, once.
std::string with_unit(std::string name, const std::string& unit) {
    if (unit.empty() || name.ends_with("_" + unit))
        return name;
    if (const std::size_t at = name.find("_" + unit + "_"); at != std::string::npos)
        name.erase(at, unit.size() + 1);
    return name + "_" + unit;
}

std::string help_of(const ServedClass& served, const PropertyDeclaration& property, const std::string& note) {
    std::string help = text_of(property.qualifiers, "Description");
    for (const std::string& part : {note, served.declaration->name + "." + property.name})
        if (!part.empty())
            help += (help.empty() ? "" : " ") + part;
    return help;
}

Metric metric_of(const ServedClass& served, const PropertyDeclaration& property, const Views& views,
                 const std::string& note) {
    Metric metric;
    metric.property = property.name;
    metric.help = help_of(served, property, note);
    metric.name =
        snake_case(served.declaration->name, views.acronyms) + "_" + snake_case(property.name, views.acronyms);
    return metric;
}

Metric number_of(const ServedClass& served, const PropertyDeclaration& property, const Views& views,
                 const std::string& note) {
    Metric metric = metric_of(served, property, views, note);
    metric.counter = mof::is_on(property.qualifiers, "Counter");
    metric.unit = read_unit(text_of(property.qualifiers, "PUnit"));
    metric.name = with_unit(metric.name, metric.unit.name) + (metric.counter ? "_total" : "");
    return metric;
}

Metric states_of(const ServedClass& served, const PropertyDeclaration& property, const Views& views,
                 const std::map<std::string, std::string>& states, const std::string& note) {
    Metric metric = metric_of(served, property, views, note);
    metric.states.assign(states.begin(), states.end());
    metric.state_label = "state";
    return metric;
}

std::vector<Metric> metrics_of(const ServedClass& served, const Namespace& space, const Views& views) {
    const views::ClassView view = views.of(*served.declaration, space.schema);
    std::vector<Metric> metrics;
    for (const PropertyDeclaration& property : served.declaration->properties) {
        const auto states = view.states.find(property.name);
        const bool marked = mof::is_on(property.qualifiers, "Counter") || mof::is_on(property.qualifiers, "Gauge");
        if (states != view.states.end())
            metrics.push_back(states_of(served, property, views, states->second, view.note));
        else if (marked && is_number(property) && !property.type.ends_with("[]"))
            metrics.push_back(number_of(served, property, views, view.note));
    }
    for (Metric& metric : metrics) {
        Text head;
        append_head(head, metric.name, metric.counter ? "counter" : "gauge", escaped_help(metric.help).view());
        metric.head = head.view();
    }
    return metrics;
}

/// Keys but for the names of classes, which the metrics' names tell; then the name for people, if the class has one.
std::vector<Label> labels_of(const ServedClass& served, const Views& views) {
    std::vector<Label> labels;
    for (const PropertyDeclaration& property : served.declaration->properties)
        if (property.key && !property.name.ends_with("CreationClassName") && property.type != "reference")
            labels.push_back({property.name, label_name(property.name, views.acronyms)});
    const bool has_name =
        std::any_of(labels.begin(), labels.end(), [](const Label& key) { return key.name == "name"; });
    const PropertyDeclaration* name = served.declaration->property("ElementName");
    if (name != nullptr && !name->key)
        labels.push_back({name->name, has_name ? "element_name" : "name"});
    return labels;
}

/// Adds a plan, or whom it asks to that of the same class.
void add_plan(std::vector<ClassPlan>& plans, ClassPlan plan) {
    const auto known = std::find_if(plans.begin(), plans.end(), [&plan](const ClassPlan& each) {
        return same_name(each.declaration->name, plan.declaration->name);
    });
    if (known == plans.end())
        return plans.push_back(std::move(plan));
    for (const Source& source : plan.sources)
        if (std::none_of(known->sources.begin(), known->sources.end(),
                         [&source](const Source& each) { return each.ask == source.ask; }))
            known->sources.push_back(source);
}

/// The plans of a class and its subclasses.
/// @return whether somebody serves one of them
bool add_plans(std::vector<ClassPlan>& plans, const server::Catalogue& catalogue, const Views& views,
               const std::string& name) {
    bool served = false;
    for (const Namespace* space : catalogue.namespaces()) {
        const mof::ClassDeclaration* ancestor = space->schema.find(name);
        if (ancestor == nullptr)
            continue;
        for (const ServedClass& each : space->classes) {
            if (!each.instances || each.declaration->association || !each.is_a(*ancestor))
                continue;
            served = true;
            if (ClassPlan plan = make_plan(each, *space, views); !plan.metrics.empty())
                add_plan(plans, std::move(plan));
        }
    }
    return served;
}

/// Names that are to be different.
class Names {
  public:
    explicit Names(std::string what) : what_(std::move(what)) {}

    /// @throws std::runtime_error another owner has the name
    void check(const std::string& name, const std::string& owner) const {
        if (const auto known = owners_.find(name); known != owners_.end())
            throw std::runtime_error(what_ + " " + name + ": is the name of both " + known->second + " and " + owner);
    }

    void add(const std::string& name, const std::string& owner) {
        check(name, owner);
        owners_.emplace(name, owner);
    }

  private:
    std::string what_;
    std::map<std::string, std::string> owners_{};
};

} // namespace

ClassPlan make_plan(const ServedClass& served, const Namespace& space, const Views& views) {
    return {served.declaration,
            {{served.ask, &space}},
            metrics_of(served, space, views),
            labels_of(served, views),
            std::string(only_label("class", served.declaration->name).view())};
}

void check_names(const std::vector<ClassPlan>& plans) {
    Names metrics("metric");
    for (const ClassPlan& plan : plans) {
        const std::string prefix = plan.declaration->name + ".";
        Names labels("label");
        for (const Label& label : plan.labels)
            labels.add(label.name, prefix + label.property);
        for (const Metric& metric : plan.metrics) {
            metrics.add(metric.name, prefix + metric.property);
            if (!metric.states.empty())
                labels.check(metric.state_label, "the states of " + prefix + metric.property);
        }
    }
}

std::vector<ClassPlan> make_plans(const server::Catalogue& catalogue, const Views& views,
                                  const std::vector<std::string>& classes) {
    std::vector<ClassPlan> plans;
    for (const std::string& name : classes) {
        const std::size_t before = plans.size();
        if (!add_plans(plans, catalogue, views, name))
            throw std::runtime_error("--metrics " + name + ": no provider serves the class");
        if (plans.size() == before)
            throw std::runtime_error("--metrics " + name + ": no further property is marked as counter or gauge");
    }
    if (classes.empty())
        for (const views::ClassView& view : views.classes)
            if (view.metrics)
                add_plans(plans, catalogue, views, view.name);
    check_names(plans);
    return plans;
}

} // namespace cmpihost::metrics
