#include "host/cli/wire.h"

#include <bit>
#include <cstring>
#include <stdexcept>

namespace cmpihost {

void WireWriter::number(std::uint64_t value) {
    bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void WireWriter::text(std::string_view text) {
    number(text.size());
    bytes_ += text;
}

void WireWriter::optional(const std::optional<std::string>& text) {
    number(text.has_value());
    if (text)
        this->text(*text);
}

void WireWriter::value(const Value& value) {
    number(value.data.index());
    if (const auto* flag = std::get_if<bool>(&value.data))
        number(*flag);
    else if (const auto* natural = std::get_if<std::uint64_t>(&value.data))
        number(*natural);
    else if (const auto* integer = std::get_if<std::int64_t>(&value.data))
        number(std::bit_cast<std::uint64_t>(*integer));
    else if (const auto* real = std::get_if<double>(&value.data))
        number(std::bit_cast<std::uint64_t>(*real));
    else if (const auto* text = std::get_if<std::string>(&value.data))
        this->text(*text);
    else if (const auto* reference = std::get_if<Value::Reference>(&value.data))
        object(**reference);
    else if (const auto* array = std::get_if<Value::Array>(&value.data)) {
        number(array->size());
        for (const Value& element : *array)
            this->value(element);
    }
}

void WireWriter::property(const Property& property) {
    text(property.name);
    text(property.type);
    value(property.value);
}

void WireWriter::properties(const std::vector<Property>& properties) {
    number(properties.size());
    for (const Property& one : properties)
        property(one);
}

void WireWriter::object(const Object& object) {
    text(object.class_name);
    text(object.name_space);
    optional(object.host);
    properties(object.keys);
    properties(object.properties);
}

void WireWriter::request(const Request& request) {
    number(static_cast<std::uint64_t>(request.operation));
    object(request.path);
    for (const auto* filter : {&request.assoc_class, &request.result_class, &request.role, &request.result_role})
        optional(*filter);
    number(request.properties.has_value());
    if (request.properties) {
        number(request.properties->size());
        for (const std::string& name : *request.properties)
            text(name);
    }
    properties(request.values);
    text(request.query);
    text(request.query_language);
    text(request.method);
    properties(request.arguments);
}

void WireWriter::answer(const Answer& answer) {
    number(static_cast<std::uint64_t>(answer.rc));
    optional(answer.message);
    number(answer.returned.has_value());
    if (answer.returned)
        property(*answer.returned);
    properties(answer.arguments);
    number(answer.null_results);
    number(answer.invalid_results);
    number(answer.late_results);
    number(answer.done);
}

std::string_view WireReader::take(std::uint64_t size) {
    if (size > rest_.size())
        throw std::runtime_error("a message ends too early");
    const auto room = static_cast<std::size_t>(size);
    const std::string_view taken = rest_.substr(0, room);
    rest_.remove_prefix(room);
    return taken;
}

std::uint64_t WireReader::number() {
    std::uint64_t value = 0;
    std::memcpy(&value, take(sizeof value).data(), sizeof value);
    return value;
}

std::string WireReader::text() {
    return std::string(take(number()));
}

std::optional<std::string> WireReader::optional() {
    return number() != 0 ? std::optional(text()) : std::nullopt;
}

Value WireReader::value() {
    switch (number()) { // the alternatives of Value in their order
    case 1:
        return {number() != 0};
    case 2:
        return {number()};
    case 3:
        return {std::bit_cast<std::int64_t>(number())};
    case 4:
        return {std::bit_cast<double>(number())};
    case 5:
        return {text()};
    case 6:
        return {std::make_shared<const Object>(object())};
    case 7: {
        Value::Array values;
        for (std::uint64_t left = number(); left > 0; --left)
            values.push_back(value());
        return {std::move(values)};
    }
    default:
        return {};
    }
}

Property WireReader::property() {
    Property property;
    property.name = text();
    property.type = text();
    property.value = value();
    return property;
}

std::vector<Property> WireReader::properties() {
    std::vector<Property> properties;
    for (std::uint64_t left = number(); left > 0; --left)
        properties.push_back(property());
    return properties;
}

Object WireReader::object() {
    Object object;
    object.class_name = text();
    object.name_space = text();
    object.host = optional();
    object.keys = properties();
    object.properties = properties();
    return object;
}

Request WireReader::request() {
    Request request;
    request.operation = static_cast<Request::Operation>(number());
    request.path = object();
    for (auto* filter : {&request.assoc_class, &request.result_class, &request.role, &request.result_role})
        *filter = optional();
    if (number() != 0) {
        request.properties.emplace();
        for (std::uint64_t left = number(); left > 0; --left)
            request.properties->push_back(text());
    }
    request.values = properties();
    request.query = text();
    request.query_language = text();
    request.method = text();
    request.arguments = properties();
    return request;
}

Answer WireReader::answer() {
    Answer answer;
    answer.rc = static_cast<int>(number());
    answer.message = optional();
    if (number() != 0)
        answer.returned = property();
    answer.arguments = properties();
    answer.null_results = static_cast<unsigned>(number());
    answer.invalid_results = static_cast<unsigned>(number());
    answer.late_results = static_cast<unsigned>(number());
    answer.done = number() != 0;
    return answer;
}

} // namespace cmpihost
