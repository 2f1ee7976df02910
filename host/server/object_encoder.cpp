#include "host/server/object_encoder.h"

#include "host/broker/broker.h"
#include "host/broker/values.h"
#include "host/cimxml/typed_text.h"
#include "host/cimxml/write_instance.h"

#include <algorithm>
#include <array>

namespace cmpihost::server {

namespace {

struct FormRow {
    Form form;
    std::string_view element; ///< around path and instance; empty: none
    bool has_host;            ///< the path is an INSTANCEPATH, or else an INSTANCENAME
    bool has_instance;
};

constexpr std::array forms{
    FormRow{Form::instance_name, "", false, false},
    FormRow{Form::named_instance, "VALUE.NAMEDINSTANCE>", false, true},
    FormRow{Form::instance, "", false, true},
    FormRow{Form::object_path, "OBJECTPATH>", true, false},
    FormRow{Form::object_with_path, "VALUE.OBJECTWITHPATH>", true, true},
    FormRow{Form::instance_path, "", true, false},
    FormRow{Form::instance_with_path, "VALUE.INSTANCEWITHPATH>", true, true},
};

const FormRow& row_of(Form form) {
    return *std::find_if(forms.begin(), forms.end(), [form](const FormRow& row) { return row.form == form; });
}

bool contains(const std::vector<std::string>& names, std::string_view wanted) {
    return std::any_of(names.begin(), names.end(),
                       [wanted](const std::string& name) { return same_name(name, wanted); });
}

/// An embedded instance is declared as a string.
bool is_declared_type(std::string_view type, std::string_view declared) {
    return type == declared ||
           (cimxml::element_type(type) == "instance" && cimxml::element_type(declared) == "string" &&
            type.ends_with(']') == declared.ends_with(']'));
}

} // namespace

bool has_instance(Form form) {
    return row_of(form).has_instance;
}

ObjectEncoder::ObjectEncoder(Form form, const cimxml::ReplyPlace& place, const Selection& selection,
                             const TypeNote& note)
    : form_(form), place_(place), selection_(selection), note_(note), paths_(place) {}

std::size_t ObjectEncoder::append(std::string& out, const HeldObject& object) {
    const FormRow& row = row_of(form_);
    if (!row.element.empty())
        out.append("<").append(row.element);
    const std::size_t path_end = append_path(out, object);
    if (row.has_instance)
        append_instance(out, object);
    if (!row.element.empty())
        out.append("</").append(row.element);
    return path_end;
}

std::size_t ObjectEncoder::append_path(std::string& out, const HeldObject& object) {
    if (form_ == Form::instance)
        return out.size();
    if (row_of(form_).has_host)
        paths_.append_instance_path(out, object);
    else
        paths_.append_instance_name(out, object);
    return out.size();
}

void ObjectEncoder::append_instance(std::string& out, const HeldObject& object) {
    Plan& plan = plan_for(object);
    out += plan.begin;
    if (plan.steps.size() < object.properties.count)
        plan.steps.resize(object.properties.count);
    for (std::uint32_t i = 0; i < object.properties.count; ++i) {
        const HeldProperty& property = object.properties[i];
        Step& step = plan.steps[i];
        if (step.name != property.name || step.type != property.type)
            step = make_step(plan, property);
        append_property(out, plan, step, property);
    }
    out += "</INSTANCE>";
}

ObjectEncoder::Plan& ObjectEncoder::plan_for(const HeldObject& object) {
    const auto fits = [&object](const Plan& plan) { return plan.class_name == object.class_name; };
    if (last_ < plans_.size() && fits(plans_[last_]))
        return plans_[last_];
    const auto found = std::find_if(plans_.begin(), plans_.end(), fits);
    last_ = static_cast<std::size_t>(found - plans_.begin());
    if (found != plans_.end())
        return *found;
    Plan plan{object.class_name, place_.schema.find(object.class_name->text), "<INSTANCE"};
    cimxml::append_attribute(plan.begin, "CLASSNAME", object.class_name->text);
    plan.begin += '>';
    return plans_.emplace_back(std::move(plan));
}

ObjectEncoder::Step ObjectEncoder::make_step(const Plan& plan, const HeldProperty& property) const {
    const std::string_view name = property.name->text;
    Step step{property.name, property.type};
    if (!is_selected(plan, name))
        return step;
    check_type(plan, property);
    const std::string_view type = type_text(property.type);
    step.way = type == "reference" ? Way::reference : cimxml::is_text_type(type) ? Way::text : Way::other;
    if (step.way == Way::other)
        return step;
    step.begin = step.way == Way::text ? "<PROPERTY" : "<PROPERTY.REFERENCE";
    cimxml::append_attribute(step.begin, "NAME", name);
    if (step.way == Way::text)
        cimxml::append_attribute(step.begin, "TYPE", type);
    step.begin += step.way == Way::text ? "><VALUE>" : ">";
    return step;
}

bool ObjectEncoder::is_selected(const Plan& plan, std::string_view name) const {
    if (selection_.properties != nullptr && !contains(*selection_.properties, name))
        return false;
    const bool of_subclass = selection_.shallow != nullptr && plan.declaration != nullptr &&
                             plan.declaration->property(name) != nullptr &&
                             selection_.shallow->property(name) == nullptr;
    return !of_subclass;
}

void ObjectEncoder::check_type(const Plan& plan, const HeldProperty& property) const {
    const auto* declared = plan.declaration == nullptr ? nullptr : plan.declaration->property(property.name->text);
    const std::string_view type = type_text(property.type);
    const bool has_type = !type.empty() && property.type != CMPI_null;
    if (declared != nullptr && has_type && note_ && !is_declared_type(type, declared->type))
        note_(plan.declaration->name + '.' + declared->name + ": is sent as " + std::string(type) +
              ", which the provider gave it; declared as " + declared->type);
}

void ObjectEncoder::append_property(std::string& out, const Plan& plan, const Step& step,
                                    const HeldProperty& property) {
    constexpr std::string_view open_value = "<VALUE>";
    if (step.way == Way::left_out)
        return;
    if (step.way == Way::text) {
        if (std::holds_alternative<std::monostate>(property.value.data)) {
            out.append(step.begin, 0, step.begin.size() - open_value.size()).append("</PROPERTY>");
            return;
        }
        const std::size_t before = out.size();
        out += step.begin;
        if (append_held_text(out, property.type, property.value)) {
            out += "</VALUE></PROPERTY>";
            return;
        }
        out.resize(before);
    }
    HeldObject* const* target = std::get_if<HeldObject*>(&property.value.data);
    if (step.way != Way::reference || target == nullptr) {
        cimxml::append_property(out, plain_property(property.name->text, property), plan.declaration, place_);
        return;
    }
    out += step.begin;
    paths_.append_value_reference(out, **target);
    out += "</PROPERTY.REFERENCE>";
}

} // namespace cmpihost::server
