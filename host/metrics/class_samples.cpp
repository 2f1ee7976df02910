#include "host/metrics/class_samples.h"

#include "host/cim/names.h"
#include "host/cimxml/typed_text.h"
#include "host/metrics/metric_text.h"

#include <algorithm>

namespace cmpihost::metrics {

namespace {

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

} // namespace

std::string Spare::take() {
    if (next_ == parts_.size())
        return {};
    std::string text = std::move(parts_[next_++]);
    text.clear();
    return text;
}

const HeldProperty* Finder::look_for(const HeldProperties& properties) {
    const auto is_it = [this](const HeldProperty& property) { return same_name(property.name->text, name_); };
    if (place_ >= properties.count || !is_it(properties[place_])) {
        const auto* found = std::find_if(properties.begin(), properties.end(), is_it);
        if (found == properties.end())
            return nullptr;
        place_ = static_cast<std::size_t>(found - properties.begin());
    }
    known_ = properties[place_].name;
    return &properties[place_];
}

ClassSamples::ClassSamples(const ClassPlan& plan, Spare& spare, Lines& lines) : lines_(lines) {
    lines_.clear();
    families_.reserve(plan.metrics.size());
    for (const Metric& metric : plan.metrics)
        families_.push_back({&metric, Finder(metric.property), spare.take()});
    labels_.reserve(plan.labels.size());
    for (const Label& label : plan.labels)
        labels_.emplace_back(&label, Finder(label.property));
}

void ClassSamples::begin_call() {
    for (Family& family : families_)
        family.finder.begin_call();
    for (auto& [label, finder] : labels_)
        finder.begin_call();
}

void ClassSamples::add(const HeldObject& object) {
    ++objects_;
    if (!write_labels(object)) {
        ++doubles_;
        return;
    }
    for (Family& family : families_)
        if (const HeldProperty* property = family.finder.find(object.properties))
            add(family, *property);
}

void ClassSamples::move_to(Parts& parts) {
    for (Family& family : families_)
        parts.push_back(std::move(family.text));
}

/// False: they are those of an object before.
bool ClassSamples::write_labels(const HeldObject& object) {
    std::string& line = lines_.begin();
    line += '{';
    for (auto& [label, finder] : labels_)
        if (const HeldProperty* property = finder.find(object.properties)) {
            const auto* text = std::get_if<std::string_view>(&property->value.data);
            append_label(line, label->name, text != nullptr ? *text : std::string_view(text_of(*property)));
        }
    line += "} ";
    return lines_.keep();
}

void ClassSamples::add(Family& family, const HeldProperty& property) const {
    std::string& text = family.text;
    const std::size_t begin = text.size();
    if (begin == 0)
        text = family.metric->head;
    if (!family.metric->states.empty())
        return add_states(family, property);
    text.append(family.metric->name).append(lines_.line());
    if (append_value(text, property.value, *family.metric))
        text += '\n';
    else
        text.resize(begin);
}

void ClassSamples::add_states(Family& family, const HeldProperty& property) const {
    const std::string_view line = lines_.line();
    for (const auto& [value, state] : family.metric->states) {
        family.text.append(family.metric->name).append(line.substr(0, line.rfind('}')));
        append_label(family.text, family.metric->state_label, state);
        family.text += is_in_state(property, value) ? "} 1\n" : "} 0\n";
    }
}

} // namespace cmpihost::metrics
