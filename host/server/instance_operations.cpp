// Operations on one instance, and those that are handed to a provider as they are.
#include "host/broker/held.h"
#include "host/cimxml/characters.h"
#include "host/cimxml/write_reply.h"
#include "host/server/asking.h"
#include "host/server/exchange.h"

#include <algorithm>
#include <array>

namespace cmpihost::server {

namespace {

/// Who serves exactly this class. @throws Status nobody does
const ServedClass& server_of(const Namespace& space, const mof::ClassDeclaration& declaration,
                             bool ServedClass::*served, CimCode otherwise) {
    for (const ServedClass& each : space.classes)
        if (each.declaration == &declaration && each.*served)
            return each;
    throw Status{otherwise, "no provider serves " + declaration.name};
}

/// A request about an instance of a class that is served.
struct Addressed {
    const ServedClass& served;
    Request request;
};

Addressed addressed(const Exchange& exchange, Request::Operation operation, const Object& instance) {
    const auto& declaration = declared_class(exchange.space, instance.class_name, CimCode::invalid_class);
    Addressed result{server_of(exchange.space, declaration, &ServedClass::instances, CimCode::not_supported), {}};
    result.request.operation = operation;
    result.request.path = {declaration.name, exchange.space.name, {}, instance.keys, {}};
    return result;
}

/// For operations that return nothing.
Status answer_empty(Exchange& exchange, const Addressed& to) {
    const Answer answer = (*to.served.ask)(to.request, [](const HeldObject&, bool) {});
    Status status = status_of(answer);
    if (status.code == CimCode::ok)
        cimxml::append_empty_reply(exchange.body.buffer(), exchange.call.envelope);
    return status;
}

Status delete_instance(Exchange& exchange) {
    const auto& path = *cimxml::argument<Object>(exchange.call, "InstanceName");
    return answer_empty(exchange, addressed(exchange, Request::Operation::delete_instance, path));
}

Status modify_instance(Exchange& exchange) {
    const auto& instance = *cimxml::argument<Object>(exchange.call, "ModifiedInstance");
    Addressed to = addressed(exchange, Request::Operation::modify_instance, instance);
    to.request.values = instance.properties;
    if (const auto* properties = cimxml::argument<std::vector<std::string>>(exchange.call, "PropertyList"))
        to.request.properties = *properties;
    return answer_empty(exchange, to);
}

/// Asks one provider, and writes the objects that it returns. Status and number of objects as ask().
Status answer_objects(Exchange& exchange, const Inquiry& inquiry) {
    cimxml::begin_reply(exchange.body.buffer(), exchange.call.envelope);
    Asked asked = ask(inquiry, exchange.place, exchange.body, exchange.notes);
    exchange.objects = asked.objects;
    cimxml::end_reply(exchange.body.buffer());
    return std::move(asked.status);
}

Status create_instance(Exchange& exchange) {
    const auto& instance = *cimxml::argument<Object>(exchange.call, "NewInstance");
    Addressed to = addressed(exchange, Request::Operation::create_instance, instance);
    to.request.values = instance.properties;
    for (const mof::PropertyDeclaration& declared : to.served.declaration->properties) {
        const Property* key = declared.key ? instance.property(declared.name) : nullptr;
        if (key != nullptr && !std::holds_alternative<std::monostate>(key->value.data))
            to.request.path.keys.push_back(*key);
    }
    Inquiry inquiry;
    inquiry.request = std::move(to.request);
    inquiry.classes = {&to.served};
    inquiry.named = to.served.declaration;
    inquiry.form = Form::instance_name;
    inquiry.single = true;
    Status status = answer_objects(exchange, inquiry);
    if (status.code == CimCode::ok && exchange.objects == 0)
        return {CimCode::failed, "the provider did not tell the path of the new instance"};
    return status;
}

std::vector<std::string_view> words_of(std::string_view text) {
    std::vector<std::string_view> words;
    while (!(text = cimxml::trimmed(text)).empty()) {
        const std::size_t length = std::min(text.find_first_of(" \t\r\n"), text.size());
        words.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return words;
}

/// The class whose instances a query selects from.
std::string_view queried_class(std::string_view query) {
    const auto words = words_of(query);
    const auto from =
        std::find_if(words.begin(), words.end(), [](std::string_view word) { return same_name(word, "FROM"); });
    if (from == words.end() || from + 1 == words.end())
        throw Status{CimCode::invalid_query, "the query names no class, expected SELECT ... FROM CLASS"};
    return *(from + 1);
}

Status exec_query(Exchange& exchange) {
    const auto& query = *cimxml::argument<std::string>(exchange.call, "Query");
    Inquiry inquiry;
    inquiry.named = &declared_class(exchange.space, queried_class(query), CimCode::invalid_class);
    inquiry.classes = served_below(exchange.space, inquiry.named, &ServedClass::instances);
    if (inquiry.classes.empty())
        return {CimCode::not_supported, "no provider serves " + inquiry.named->name};
    inquiry.request.operation = Request::Operation::exec_query;
    inquiry.request.path.name_space = exchange.space.name;
    inquiry.request.query = query;
    inquiry.request.query_language = *cimxml::argument<std::string>(exchange.call, "QueryLanguage");
    inquiry.form = Form::object_with_path;
    return answer_objects(exchange, inquiry);
}

/// The instance of an inquiry that gets one. @throws Status there is none
Object got(const Inquiry& inquiry) {
    Status status{CimCode::not_found, "there is no such instance"};
    Request request = inquiry.request;
    for (const ServedClass* each : inquiry.classes) {
        std::optional<Object> found;
        request.path.class_name = each->declaration->name;
        const Answer answer = (*each->ask)(request, [&found](const HeldObject& object, bool is_instance) {
            if (is_instance && !found)
                found = plain(object);
        });
        if (answer.rc == 0 && found)
            return std::move(*found);
        if (answer.rc != 0 && each->declaration == inquiry.named)
            status = status_of(answer);
    }
    throw std::move(status);
}

/// A property is that of the instance, asked for alone.
Status get_property(Exchange& exchange) {
    const std::vector<std::string> names{*cimxml::argument<std::string>(exchange.call, "PropertyName")};
    const auto& path = *cimxml::argument<Object>(exchange.call, "InstanceName");
    const Inquiry inquiry = get_inquiry(path, &names, exchange.space);
    if (inquiry.named->property(names.front()) == nullptr)
        return {CimCode::no_such_property, inquiry.named->name + " has no property " + names.front()};
    const Object instance = got(inquiry);
    cimxml::begin_reply(exchange.body.buffer(), exchange.call.envelope);
    if (const Property* property = instance.property(names.front()))
        cimxml::append_value(exchange.body.buffer(), property->type, property->value, exchange.place);
    cimxml::end_reply(exchange.body.buffer());
    return {};
}

struct InstanceRow {
    std::string_view name;
    Operation operation;
};

constexpr std::array instance_rows{
    InstanceRow{"CreateInstance", create_instance}, InstanceRow{"DeleteInstance", delete_instance},
    InstanceRow{"ExecQuery", exec_query},           InstanceRow{"GetProperty", get_property},
    InstanceRow{"ModifyInstance", modify_instance},
};

} // namespace

Operation find_instance_operation(std::string_view name) {
    const auto* found = std::find_if(instance_rows.begin(), instance_rows.end(),
                                     [name](const InstanceRow& row) { return same_name(row.name, name); });
    return found == instance_rows.end() ? nullptr : found->operation;
}

} // namespace cmpihost::server
