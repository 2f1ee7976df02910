// Methods of classes and instances.
#include "host/cimxml/write_reply.h"
#include "host/server/asking.h"
#include "host/server/exchange.h"

namespace cmpihost::server {

namespace {

/// The class that has the method. @throws Status it is not declared
const mof::ClassDeclaration& target_class(const Exchange& exchange) {
    const auto& target = *exchange.call.envelope.target;
    const auto* name = std::get_if<cimxml::ClassName>(&target);
    return declared_class(exchange.space, name != nullptr ? name->name : std::get<Object>(target).class_name,
                          CimCode::invalid_class);
}

/// Who serves the methods of this class; null if nobody does.
const ServedClass* method_server(const Namespace& space, const mof::ClassDeclaration& declaration) {
    for (const ServedClass& each : space.classes)
        if (each.declaration == &declaration && each.methods)
            return &each;
    return nullptr;
}

Request method_request(const Exchange& exchange, const mof::ClassDeclaration& declaration, const std::string& method) {
    Request request;
    request.operation = Request::Operation::invoke_method;
    request.path = {declaration.name, exchange.space.name, {}, {}, {}};
    if (const auto* instance = std::get_if<Object>(&*exchange.call.envelope.target))
        request.path.keys = instance->keys;
    request.method = method;
    request.arguments = exchange.call.method_parameters;
    return request;
}

} // namespace

Status invoke_method(Exchange& exchange) {
    const std::string& name = exchange.call.envelope.operation;
    const mof::ClassDeclaration& declaration = target_class(exchange);
    const mof::MethodDeclaration* method = declaration.method(name);
    if (method == nullptr)
        return {CimCode::method_not_found, declaration.name + " has no method " + name};
    const ServedClass* served = method_server(exchange.space, declaration);
    if (served == nullptr)
        return {CimCode::method_not_available, "no provider serves the methods of " + declaration.name};
    const Answer answer =
        (*served->ask)(method_request(exchange, declaration, method->name), [](const HeldObject&, bool) {});
    Status status = status_of(answer);
    if (status.code == CimCode::ok)
        cimxml::append_method_reply(exchange.body.buffer(), exchange.call.envelope,
                                    answer.returned.value_or(Property{}), answer.arguments, exchange.place);
    return status;
}

} // namespace cmpihost::server
