#include "host/broker/held.h"

#include "host/broker/values.h"
#include "host/cim/names.h"

#include <algorithm>

namespace cmpihost {

namespace {

/// `element` as an object of its own in the store.
template <class T>
T* put(Store& store, const T& element) {
    return new (store.arena.allocate(sizeof(T))) T(element);
}

/// The elements of a range, each as `convert` gives it.
template <class To, class Range, class Convert>
List<To> converted(Store& store, const Range& from, std::size_t count, Convert convert) {
    List<To> list = list_for<To>(store, count);
    for (const auto& element : from)
        new (&list.first[list.count++]) To(convert(element));
    return list;
}

HeldArray hold(Store& store, const Value::Array& values) {
    return converted<HeldValue>(store, values, values.size(),
                                [&store](const Value& value) { return hold(store, value); });
}

const Name* name_or_null(Store& store, const std::optional<std::string>& text) {
    return text ? store.name(*text) : nullptr;
}

} // namespace

// ------------------------------------------------------------------------------------------------------ plain to held

HeldValue hold(Store& store, const Value& value) {
    if (const auto* text = std::get_if<std::string>(&value.data))
        return {store.arena.copy(*text)};
    if (const auto* reference = std::get_if<Value::Reference>(&value.data))
        return *reference == nullptr ? HeldValue{} : HeldValue{put(store, hold(store, **reference))};
    if (const auto* values = std::get_if<Value::Array>(&value.data))
        return {put(store, hold(store, *values))};
    HeldValue held;
    std::visit(
        [&held](const auto& number) {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(number)>>)
                held.data = number;
        },
        value.data);
    return held;
}

HeldProperties hold(Store& store, const std::vector<Property>& properties) {
    return converted<HeldProperty>(store, properties, properties.size(), [&store](const Property& property) {
        return HeldProperty{store.name(property.name), type_code(property.type), hold(store, property.value)};
    });
}

HeldObject hold(Store& store, const Object& object) {
    return {store.name(object.class_name), store.name(object.name_space), name_or_null(store, object.host),
            hold(store, object.keys), hold(store, object.properties)};
}

// ------------------------------------------------------------------------------------------------------ held to held

HeldValue copy(Store& store, const HeldValue& value) {
    if (const auto* text = std::get_if<std::string_view>(&value.data))
        return {store.arena.copy(*text)};
    if (HeldObject* const* object = std::get_if<HeldObject*>(&value.data))
        return {put(store, copy(store, **object))};
    if (HeldArray* const* values = std::get_if<HeldArray*>(&value.data))
        return {put(store, copy(store, **values))};
    return value;
}

HeldArray copy(Store& store, const HeldArray& values) {
    return converted<HeldValue>(store, values, values.count,
                                [&store](const HeldValue& value) { return copy(store, value); });
}

HeldProperties copy(Store& store, const HeldProperties& properties) {
    return converted<HeldProperty>(store, properties, properties.count, [&store](const HeldProperty& property) {
        return HeldProperty{store.name(property.name->text), property.type, copy(store, property.value)};
    });
}

HeldObject copy(Store& store, const HeldObject& object) {
    return {store.name(object.class_name->text), store.name(object.name_space->text),
            object.host == nullptr ? nullptr : store.name(object.host->text), copy(store, object.keys),
            copy(store, object.properties)};
}

// ------------------------------------------------------------------------------------------------------ held to plain

Value plain(const HeldValue& value) {
    if (const auto* text = std::get_if<std::string_view>(&value.data))
        return {std::string(*text)};
    if (HeldObject* const* object = std::get_if<HeldObject*>(&value.data))
        return {std::make_shared<const Object>(plain(**object))};
    if (HeldArray* const* values = std::get_if<HeldArray*>(&value.data)) {
        Value::Array array;
        array.reserve((*values)->count);
        for (const HeldValue& element : **values)
            array.push_back(plain(element));
        return {std::move(array)};
    }
    Value result;
    std::visit(
        [&result](const auto& number) {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(number)>>)
                result.data = number;
        },
        value.data);
    return result;
}

std::vector<Property> plain(const HeldProperties& properties) {
    std::vector<Property> result;
    result.reserve(properties.count);
    for (const HeldProperty& property : properties)
        result.push_back({std::string(property.name->text), type_name(property.type), plain(property.value)});
    return result;
}

Object plain(const HeldObject& object) {
    Object result;
    result.class_name = object.class_name->text;
    result.name_space = object.name_space->text;
    if (object.host != nullptr)
        result.host = object.host->text;
    result.keys = plain(object.keys);
    result.properties = plain(object.properties);
    return result;
}

// ------------------------------------------------------------------------------------------------------ released

void release(Store& store, const HeldValue& value) {
    if (const auto* text = std::get_if<std::string_view>(&value.data)) {
        store.arena.release(*text);
    } else if (HeldObject* const* object = std::get_if<HeldObject*>(&value.data)) {
        release(store, **object);
        store.arena.release(*object, sizeof(HeldObject));
    } else if (HeldArray* const* values = std::get_if<HeldArray*>(&value.data)) {
        release(store, **values);
        store.arena.release(*values, sizeof(HeldArray));
    }
}

void release(Store& store, const HeldArray& values) {
    for (const HeldValue& value : values)
        release(store, value);
    release_list(store, values);
}

void release(Store& store, const HeldProperties& properties) {
    for (const HeldProperty& property : properties)
        release(store, property.value);
    release_list(store, properties);
}

void release(Store& store, const HeldObject& object) {
    release(store, object.keys);
    release(store, object.properties);
}

HeldProperty* find_by_name(const HeldProperties& properties, std::string_view name) {
    auto* const found = std::find_if(properties.begin(), properties.end(), [name](const HeldProperty& property) {
        return same_name(property.name->text, name);
    });
    return found == properties.end() ? nullptr : found;
}

} // namespace cmpihost
