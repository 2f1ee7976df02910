#include "host/metrics/class_samples.h"

#include "host/cim/names.h"
#include "host/cimxml/typed_text.h"
#include "host/metrics/metric_text.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace cmpihost::metrics {

namespace {

std::string text_of(CMPIType type, const HeldValue& value) {
    if (const auto* text = std::get_if<std::string_view>(&value.data))
        return std::string(*text);
    std::string out;
    cimxml::append_typed(out, type_name(type), plain(value));
    return out;
}

/// The texts of a value, of an array those of its elements.
std::vector<std::string> texts_of(const HeldProperty& property) {
    const auto* array = std::get_if<HeldArray*>(&property.value.data);
    if (array == nullptr)
        return {text_of(property.type, property.value)};
    std::vector<std::string> texts;
    if (*array != nullptr)
        for (const HeldValue& element : **array)
            texts.push_back(text_of(static_cast<CMPIType>(property.type & ~CMPI_ARRAY), element));
    return texts;
}

Cell cell_of(const HeldValue& value) {
    if (const auto* natural = std::get_if<std::uint64_t>(&value.data))
        return {Cell::Kind::natural, *natural};
    if (const auto* integer = std::get_if<std::int64_t>(&value.data))
        return {Cell::Kind::integer, static_cast<std::uint64_t>(*integer)};
    if (const auto* real = std::get_if<double>(&value.data))
        return {Cell::Kind::real, std::bit_cast<std::uint64_t>(*real)};
    if (const auto* truth = std::get_if<bool>(&value.data))
        return {Cell::Kind::truth, *truth ? 1U : 0U};
    return {};
}

/// A gauge in its base unit.
char* write_gauge(char* at, double number, const Unit& unit) {
    return write_number(at, number * static_cast<double>(unit.times) / static_cast<double>(unit.by));
}

char* write_natural(char* at, std::uint64_t number, const Metric& metric) {
    if (metric.counter)
        return write_counter(at, number, metric.unit);
    const bool is_whole =
        metric.unit.by == 1 && number <= std::numeric_limits<std::uint64_t>::max() / metric.unit.times;
    if (is_whole)
        return write_number(at, number * metric.unit.times);
    return write_gauge(at, static_cast<double>(number), metric.unit);
}

char* write_cell(char* at, const Cell& cell, const Metric& metric) {
    if (cell.kind == Cell::Kind::natural)
        return write_natural(at, cell.bits, metric);
    if (cell.kind == Cell::Kind::truth)
        return write_number(at, cell.bits);
    if (cell.kind == Cell::Kind::integer)
        return write_gauge(at, static_cast<double>(static_cast<std::int64_t>(cell.bits)), metric.unit);
    return write_gauge(at, std::bit_cast<double>(cell.bits), metric.unit);
}

Text joined(std::initializer_list<std::string_view> parts) {
    Text text;
    for (const std::string_view part : parts)
        text.append(part);
    return text;
}

void add_label(Text& line, char separator, std::string_view opening, std::string_view value) {
    char* at = line.room(1 + opening.size() + longest_escaped * value.size() + 1);
    *at++ = separator;
    at = write_escaped(write_blocks(at, opening), value);
    *at++ = '"';
    line.end_at(at);
}

} // namespace

void ClassSamples::Place::look_for(const HeldProperties& properties) {
    const auto is_it = [this](const HeldProperty& property) {
        const std::string_view text = property.name->text;
        return text == name || same_name(text, name); // mostly it is written as in the schema
    };
    if (index >= properties.count || !is_it(properties[index]))
        index =
            static_cast<std::size_t>(std::find_if(properties.begin(), properties.end(), is_it) - properties.begin());
    is_there = index < properties.count;
}

ClassSamples::ClassSamples(const ClassPlan& plan) : plan_(&plan) {
    for (const Metric& metric : plan.metrics)
        metrics_.push_back({metric.property, joined({metric.name}), metric.states.empty() ? nullptr : &metric});
    for (const Label& label : plan.labels)
        labels_.push_back({label.property, joined({label.name, "=\""})});
}

void ClassSamples::clear() {
    lines_.clear();
    states_.clear();
    doubles_ = 0;
}

void ClassSamples::add(const HeldObject& object) {
    const HeldProperties& properties = object.properties;
    const std::size_t first = lines_.size() * metrics_.size();
    find_places(properties);
    add_labels(properties);
    if (cells_.size() - first < metrics_.size())
        cells_.resize(2 * first + metrics_.size());
    Cell* cell = cells_.data() + first;
    for (const Place& place : metrics_) {
        const HeldProperty* property = place.in(properties);
        if (property == nullptr)
            *cell = {};
        else
            *cell = place.with_states == nullptr ? cell_of(property->value) : states_in(*property, *place.with_states);
        ++cell;
    }
}

/// Objects of a class mostly have the same properties in the same order.
void ClassSamples::find_places(const HeldProperties& properties) {
    const auto is_as_before = [](const HeldProperty& property, const Name* name) { return property.name == name; };
    if (!names_.empty() && std::equal(properties.begin(), properties.end(), names_.begin(), names_.end(), is_as_before))
        return;
    names_.clear();
    for (const HeldProperty& property : properties)
        names_.push_back(property.name);
    for (Place& place : metrics_)
        place.look_for(properties);
    for (Place& place : labels_)
        place.look_for(properties);
}

void ClassSamples::add_labels(const HeldProperties& properties) {
    Text& line = lines_.begin();
    char separator = '{';
    for (const Place& label : labels_)
        if (const HeldProperty* property = label.in(properties)) {
            const auto* text = std::get_if<std::string_view>(&property->value.data);
            add_label(line, std::exchange(separator, ','), label.opening.view(),
                      text != nullptr ? *text : std::string_view(text_of(property->type, property->value)));
        }
    line.append(separator == '{' ? "{} " : "} ");
}

Cell ClassSamples::states_in(const HeldProperty& property, const Metric& metric) {
    const std::size_t first = states_.size();
    const std::vector<std::string> texts = texts_of(property);
    for (const auto& [value, state] : metric.states)
        states_.push_back(std::find(texts.begin(), texts.end(), value) != texts.end() ? 1 : 0);
    return {Cell::Kind::states, first};
}

void ClassSamples::write(Pieces& pieces) const {
    for (std::size_t index = 0; index < metrics_.size(); ++index)
        write(pieces, index);
}

/// One metric's samples.
void ClassSamples::write(Pieces& pieces, std::size_t index) const {
    const Metric& metric = plan_->metrics[index];
    const std::string_view name = metrics_[index].opening.view();
    std::string_view head = metric.head;
    const std::size_t cells_of_object = metrics_.size();
    std::size_t next = index;
    for (const std::string_view line : lines_.kept()) {
        const Cell cell = cells_[std::exchange(next, next + cells_of_object)];
        if (cell.kind == Cell::Kind::none || line.empty())
            continue;
        Text& out = pieces.line();
        if (!head.empty())
            out.append(std::exchange(head, {}));
        if (cell.kind == Cell::Kind::states) {
            append_states(out, metric, line, static_cast<std::size_t>(cell.bits));
            continue;
        }
        char* at = out.room(name.size() + line.size() + longest_number + 1);
        at = write_blocks(write_blocks(at, name), line);
        at = write_cell(at, cell, metric);
        *at++ = '\n';
        out.end_at(at);
    }
}

void ClassSamples::append_states(Text& out, const Metric& metric, std::string_view line, std::size_t first) const {
    for (std::size_t index = 0; index < metric.states.size(); ++index) {
        out.append(metric.name).append(line.substr(0, line.rfind('}')));
        append_label(out, metric.state_label, metric.states[index].second);
        out.append(states_[first + index] != 0 ? "} 1\n" : "} 0\n");
    }
}

} // namespace cmpihost::metrics
