#include "host/broker/upcalls.h"

#include "host/broker/broker_tables.h"
#include "host/broker/enumeration.h"
#include "host/broker/scope.h"
#include "host/broker/values.h"

#include <atomic>

namespace cmpihost {

namespace {

using enum Request::Operation;

std::atomic<const Upcalled*> answers = nullptr;
std::atomic<unsigned> under_way = 0; // on all threads

/// Each is answered on the stack of the one around it.
constexpr unsigned most_nested = 32;
thread_local unsigned nested = 0;

/// Whoever ends the answers after this one began waits for it.
struct Nesting {
    Nesting() {
        ++nested;
        ++under_way;
    }
    ~Nesting() {
        --nested;
        if (--under_way == 0)
            under_way.notify_all();
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
};

Answer too_deep() {
    Answer answer;
    answer.rc = CMPI_RC_ERR_FAILED;
    answer.message = "requests to the broker are nested too deep";
    return answer;
}

std::optional<std::string> optional_text(const char* text) {
    return text ? std::optional<std::string>(text) : std::nullopt;
}

Request request_for(Request::Operation operation, const CMPIObjectPath* path, const char** properties) {
    Request request;
    request.operation = operation;
    request.path = describe(path);
    if (properties != nullptr) {
        request.properties.emplace();
        for (; *properties != nullptr; ++properties)
            request.properties->push_back(*properties);
    }
    return request;
}

void set_filters(Request& request, const char* assoc_class, const char* result_class, const char* role,
                 const char* result_role) {
    request.assoc_class = optional_text(assoc_class);
    request.result_class = optional_text(result_class);
    request.role = optional_text(role);
    request.result_role = optional_text(result_role);
}

/// The provider's answer; its status is reported, with the text as an object of the scope that asks.
Answer answer_to(const Request& request, const CMPIObjectPath* path, CMPIStatus* status) {
    const Nesting nesting;
    const Upcalled* upcalled = answers;
    Answer answer;
    if (live(path) == nullptr)
        answer.rc = fault_of(path);
    else if (upcalled == nullptr)
        answer.rc = CMPI_RC_ERR_NOT_SUPPORTED;
    else if (nested > most_nested)
        answer = too_deep();
    else
        answer = (*upcalled)(request);
    report(status, static_cast<CMPIrc>(answer.rc));
    if (status != nullptr && answer.message)
        status->msg = State::innermost()->add<CMPIString>(text_in(State::innermost()->store, *answer.message));
    return answer;
}

CMPIEnumeration* enumerate(const Request& request, const CMPIObjectPath* path, CMPIStatus* status) {
    const Answer answer = answer_to(request, path, status);
    return answer.rc == CMPI_RC_OK ? new_enumeration(answer.objects, !gives_paths(request.operation)) : nullptr;
}

CMPIData value_of(const Property& property, CMPIStatus* status) {
    Store& store = State::innermost()->store;
    const HeldProperties held = hold(store, {property});
    return give_value(held[0].value, held[0].type, status);
}

CMPIData no_value() {
    CMPIData data{};
    data.state = CMPI_nullValue;
    return data;
}

} // namespace

void serve_upcalls(const Upcalled* answer) {
    answers = answer;
}

void end_upcalls(const Upcalled* answer) {
    answers.compare_exchange_strong(answer, nullptr);
    while (const unsigned left = under_way)
        under_way.wait(left);
}

CMPIEnumeration* up_enumerate_names(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                                    CMPIStatus* status) {
    return enumerate(request_for(enumerate_instance_names, path, nullptr), path, status);
}

CMPIEnumeration* up_enumerate(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                              const char** properties, CMPIStatus* status) {
    return enumerate(request_for(enumerate_instances, path, properties), path, status);
}

CMPIInstance* up_get(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path, const char** properties,
                     CMPIStatus* status) {
    const Answer answer = answer_to(request_for(get_instance, path, properties), path, status);
    if (answer.rc == CMPI_RC_OK && answer.objects.empty())
        report(status, CMPI_RC_ERR_NOT_FOUND);
    if (answer.rc != CMPI_RC_OK || answer.objects.empty())
        return nullptr;
    State& scope = *State::innermost();
    return scope.add<CMPIInstance>({hold(scope.store, answer.objects.front()), {}, false});
}

CMPIObjectPath* up_create(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                          const CMPIInstance* instance, CMPIStatus* status) {
    Request request = request_for(create_instance, path, nullptr);
    request.values = describe(instance).properties;
    const Answer answer = answer_to(request, path, status);
    return answer.rc == CMPI_RC_OK && !answer.objects.empty() ? new_path(answer.objects.front()) : nullptr;
}

CMPIStatus up_modify(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path, const CMPIInstance* instance,
                     const char** properties) {
    CMPIStatus status{};
    Request request = request_for(modify_instance, path, properties);
    request.values = describe(instance).properties;
    answer_to(request, path, &status);
    return status;
}

CMPIStatus up_delete(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path) {
    CMPIStatus status{};
    answer_to(request_for(delete_instance, path, nullptr), path, &status);
    return status;
}

CMPIEnumeration* up_query(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path, const char* query,
                          const char* language, CMPIStatus* status) {
    Request request = request_for(exec_query, path, nullptr);
    request.query = optional_text(query).value_or("");
    request.query_language = optional_text(language).value_or("");
    return enumerate(request, path, status);
}

CMPIEnumeration* up_associators(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                                const char* assoc_class, const char* result_class, const char* role,
                                const char* result_role, const char** properties, CMPIStatus* status) {
    Request request = request_for(associators, path, properties);
    set_filters(request, assoc_class, result_class, role, result_role);
    return enumerate(request, path, status);
}

CMPIEnumeration* up_associator_names(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                                     const char* assoc_class, const char* result_class, const char* role,
                                     const char* result_role, CMPIStatus* status) {
    Request request = request_for(associator_names, path, nullptr);
    set_filters(request, assoc_class, result_class, role, result_role);
    return enumerate(request, path, status);
}

CMPIEnumeration* up_references(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                               const char* assoc_class, const char* role, const char** properties, CMPIStatus* status) {
    Request request = request_for(references, path, properties);
    set_filters(request, assoc_class, nullptr, role, nullptr);
    return enumerate(request, path, status);
}

CMPIEnumeration* up_reference_names(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                                    const char* assoc_class, const char* role, CMPIStatus* status) {
    Request request = request_for(reference_names, path, nullptr);
    set_filters(request, assoc_class, nullptr, role, nullptr);
    return enumerate(request, path, status);
}

CMPIData up_invoke(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path, const char* method,
                   const CMPIArgs* in, CMPIArgs* out, CMPIStatus* status) {
    Request request = request_for(invoke_method, path, nullptr);
    request.method = optional_text(method).value_or("");
    if (const HeldProperties* arguments = live(in))
        request.arguments = plain(*arguments);
    const Answer answer = answer_to(request, path, status);
    if (HeldProperties* arguments = live(static_cast<const CMPIArgs*>(out)))
        for (const HeldProperty& held : hold(store_of(out), answer.arguments))
            put_named(store_of(out), *arguments, held.name->text, held.type, held.value);
    return answer.rc == CMPI_RC_OK && answer.returned ? value_of(*answer.returned, status) : no_value();
}

/// The property of the instance, as a get for it alone answers.
CMPIData up_get_property(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path, const char* name,
                         CMPIStatus* status) {
    const char* list[] = {name, nullptr};
    const Answer answer = answer_to(request_for(get_instance, path, list), path, status);
    const Property* property =
        answer.objects.empty() || name == nullptr ? nullptr : answer.objects.front().property(name);
    if (answer.rc == CMPI_RC_OK && property == nullptr)
        report(status, CMPI_RC_ERR_NO_SUCH_PROPERTY);
    return property ? value_of(*property, status) : no_value();
}

/// Modifies the instance in this property alone.
CMPIStatus up_set_property(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path, const char* name,
                           const CMPIValue* value, CMPIType type) {
    HeldValue held;
    State* scope = State::innermost();
    if (scope == nullptr || name == nullptr)
        return status_of(CMPI_RC_ERR_INVALID_PARAMETER);
    CMPIStatus status = status_of(read_value(scope->store, value, type, held));
    if (status.rc != CMPI_RC_OK)
        return status;
    const char* list[] = {name, nullptr};
    Request request = request_for(modify_instance, path, list);
    request.values = {{name, type_name(type), plain(held)}};
    answer_to(request, path, &status);
    return status;
}

} // namespace cmpihost
