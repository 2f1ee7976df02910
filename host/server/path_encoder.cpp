#include "host/server/path_encoder.h"

#include "host/broker/broker.h"
#include "host/cimxml/characters.h"
#include "host/cimxml/typed_text.h"
#include "host/cimxml/write_path.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace cmpihost::server {

namespace {

constexpr std::size_t most_plans = 64; // a provider that makes up names gets the slow way

void append_number(std::string& out, std::uint64_t number) {
    std::array<char, 24> digits{};
    out.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

bool has_names(const HeldProperties& keys, const std::vector<const Name*>& names) {
    return std::equal(keys.begin(), keys.end(), names.begin(), names.end(),
                      [](const HeldProperty& key, const Name* name) { return key.name == name; });
}

/// What stands before the value of a key; empty for a value that is not written by the encoder.
std::string begin_of_key(std::string_view name, const HeldProperty& key) {
    const auto& data = key.value.data;
    std::string begin = "<KEYBINDING";
    cimxml::append_attribute(begin, "NAME", name);
    if (std::holds_alternative<HeldObject*>(data))
        return key.type == CMPI_ref ? begin + '>' : std::string();
    if (std::holds_alternative<std::monostate>(data) || std::holds_alternative<HeldArray*>(data))
        return {};
    const bool text = std::holds_alternative<std::string_view>(data) || key.type == CMPI_char16;
    const char* type = std::holds_alternative<bool>(data) ? "boolean" : text ? "string" : "numeric";
    return begin + "><KEYVALUE VALUETYPE=\"" + type + "\">";
}

} // namespace

bool append_held_text(std::string& out, CMPIType type, const HeldValue& value) {
    if (const auto* text = std::get_if<std::string_view>(&value.data)) {
        cimxml::append_escaped(out, *text);
        return true;
    }
    const auto* number = std::get_if<std::uint64_t>(&value.data);
    if (number != nullptr && type != CMPI_char16)
        append_number(out, *number);
    else if (number != nullptr)
        cimxml::append_typed(out, "char16", {*number});
    else if (const auto* flag = std::get_if<bool>(&value.data))
        out += *flag ? "TRUE" : "FALSE";
    else if (const auto* with_sign = std::get_if<std::int64_t>(&value.data))
        cimxml::append_typed(out, {}, {*with_sign});
    else if (const auto* real = std::get_if<double>(&value.data))
        cimxml::append_typed(out, {}, {*real});
    else
        return false;
    return true;
}

Property plain_property(std::string_view name, const HeldProperty& property) {
    return {std::string(name), type_name(property.type), plain(property.value)};
}

void PathEncoder::append_instance_name(std::string& out, const HeldObject& object) {
    const Plan* plan = plan_for(object);
    if (plan == nullptr)
        return cimxml::append_instance_name(out, plain(object), place_);
    out += plan->name_begin;
    append_keys(out, *plan, object);
}

void PathEncoder::append_instance_path(std::string& out, const HeldObject& object) {
    const Plan* plan = plan_for(object);
    if (plan == nullptr)
        return cimxml::append_instance_path(out, plain(object), place_);
    out += plan->path_begin;
    append_keys(out, *plan, object);
    out += "</INSTANCEPATH>";
}

void PathEncoder::append_value_reference(std::string& out, const HeldObject& object) {
    out += "<VALUE.REFERENCE>";
    append_instance_path(out, object);
    out += "</VALUE.REFERENCE>";
}

/// Null: there are too many already.
const PathEncoder::Plan* PathEncoder::plan_for(const HeldObject& object) {
    const auto fits = [&object](const Plan& plan) {
        return object.class_name == plan.class_name && object.name_space == plan.name_space &&
               object.host == plan.host && has_names(object.keys, plan.key_names);
    };
    if (last_ != nullptr && fits(*last_))
        return last_;
    const auto found = std::find_if(plans_.begin(), plans_.end(), fits);
    if (found != plans_.end())
        return last_ = &*found;
    return plans_.size() == most_plans ? nullptr : last_ = &plans_.emplace_back(make_plan(object));
}

PathEncoder::Plan PathEncoder::make_plan(const HeldObject& object) const {
    Plan plan{object.class_name, object.name_space, object.host, {}, {}, "<INSTANCENAME", "<INSTANCEPATH>"};
    for (const HeldProperty& key : object.keys)
        plan.key_names.push_back(key.name);
    if (const mof::ClassDeclaration* declaration = place_.schema.find(object.class_name->text))
        for (const mof::PropertyDeclaration& declared : declaration->properties)
            if (declared.key)
                plan.keys.push_back(key_of(object, declared.name));
    if (plan.keys.empty())
        for (const HeldProperty& key : object.keys)
            plan.keys.push_back(key_of(object, key.name->text));
    cimxml::append_attribute(plan.name_begin, "CLASSNAME", object.class_name->text);
    plan.name_begin += '>';
    const bool has_host = object.host != nullptr && !object.host->text.empty();
    const std::string_view name_space = object.name_space->text;
    cimxml::append_namespace_path(plan.path_begin, has_host ? object.host->text : place_.host,
                                  name_space.empty() ? place_.name_space : name_space);
    plan.path_begin += plan.name_begin;
    return plan;
}

PathEncoder::Key PathEncoder::key_of(const HeldObject& object, std::string_view name) {
    const bool in_keys = find_by_name(object.keys, name) != nullptr;
    const HeldProperties& values = in_keys ? object.keys : object.properties;
    const HeldProperty* value = find_by_name(values, name);
    if (value == nullptr) // another object may have it
        return {std::string(name), nullptr, false, 0, CMPI_null, 0, {}};
    return {std::string(name),
            value->name,
            in_keys,
            static_cast<std::uint32_t>(value - values.first),
            value->type,
            value->value.data.index(),
            begin_of_key(name, *value)};
}

void PathEncoder::append_keys(std::string& out, const Plan& plan, const HeldObject& object) {
    const std::size_t before = out.size();
    for (const Key& key : plan.keys)
        append_key(out, key, object);
    if (out.size() > before || object.keys.count == 0) {
        out += "</INSTANCENAME>";
        return;
    }
    out.resize(before - plan.name_begin.size());
    cimxml::append_instance_name(out, plain(object), place_);
}

void PathEncoder::append_key(std::string& out, const Key& key, const HeldObject& object) {
    const HeldProperties& values = key.in_keys ? object.keys : object.properties;
    const HeldProperty* value = key.index < values.count ? &values[key.index] : nullptr;
    if (value == nullptr || value->name != key.held_name)
        value = find_by_name(values, key.name);
    if (value == nullptr)
        return;
    if (key.begin.empty() || value->type != key.type || value->value.data.index() != key.alternative)
        return cimxml::append_key(out, key.name, plain_property(key.name, *value), place_);
    out += key.begin;
    if (HeldObject* const* target = std::get_if<HeldObject*>(&value->value.data)) {
        append_value_reference(out, **target);
        out += "</KEYBINDING>";
        return;
    }
    append_held_text(out, value->type, value->value);
    out += "</KEYVALUE></KEYBINDING>";
}

} // namespace cmpihost::server
