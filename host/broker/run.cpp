// One MI operation: its arguments as CMPI wants them, the call, the answer.
#include "host/broker/scope.h"
#include "host/broker/values.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace cmpihost {

namespace {

const char* or_null(const std::optional<std::string>& text) {
    return text ? text->c_str() : nullptr;
}

/// A request with its arguments in the form of an MI call. Lives inside the call's scope.
struct Call {
    explicit Call(const CallScope& scope, const Request& asked)
        : context(scope.context()), result(scope.result()), path(new_path(asked.path)), request(asked) {
        if (!asked.properties)
            return;
        for (const std::string& name : *asked.properties)
            names_.push_back(name.c_str());
        names_.push_back(nullptr);
    }

    const char** properties() { return request.properties ? names_.data() : nullptr; }

    /// The instance for createInstance and modifyInstance.
    CMPIInstance* instance() const {
        State& scope = *State::innermost();
        HeldObject object = hold(scope.store, request.path);
        object.properties = hold(scope.store, request.values);
        return scope.add<CMPIInstance>({object, {}, false});
    }

    const CMPIContext* context;
    const CMPIResult* result;
    CMPIObjectPath* path;
    const Request& request;

  private:
    std::vector<const char*> names_;
};

CMPIStatus not_supported() {
    return status_of(CMPI_RC_ERR_NOT_SUPPORTED);
}

/// Calls a slot of an MI's table, if there is an MI and it has the slot.
template <class Mi, class Slot, class... Arguments>
CMPIStatus call(Mi* mi, Slot slot, const Call& with, Arguments... arguments) {
    if (mi == nullptr || mi->ft == nullptr || mi->ft->*slot == nullptr)
        return not_supported();
    return (mi->ft->*slot)(mi, with.context, with.result, with.path, arguments...);
}

CMPIStatus run_instance_operation(CMPIInstanceMI* mi, Call& with) {
    using Table = CMPIInstanceMIFT;
    const Request& request = with.request;
    switch (request.operation) {
    case Request::Operation::enumerate_instances:
        return call(mi, &Table::enumerateInstances, with, with.properties());
    case Request::Operation::enumerate_instance_names:
        return call(mi, &Table::enumerateInstanceNames, with);
    case Request::Operation::get_instance:
        return call(mi, &Table::getInstance, with, with.properties());
    case Request::Operation::create_instance:
        return call(mi, &Table::createInstance, with, with.instance());
    case Request::Operation::modify_instance:
        return call(mi, &Table::modifyInstance, with, with.instance(), with.properties());
    case Request::Operation::delete_instance:
        return call(mi, &Table::deleteInstance, with);
    case Request::Operation::exec_query:
        return call(mi, &Table::execQuery, with, request.query.c_str(), request.query_language.c_str());
    default:
        return not_supported();
    }
}

CMPIStatus run_association_operation(CMPIAssociationMI* mi, Call& with) {
    using Table = CMPIAssociationMIFT;
    const Request& request = with.request;
    const char* assoc_class = or_null(request.assoc_class);
    const char* result_class = or_null(request.result_class);
    const char* role = or_null(request.role);
    const char* result_role = or_null(request.result_role);
    switch (request.operation) {
    case Request::Operation::associators:
        return call(mi, &Table::associators, with, assoc_class, result_class, role, result_role, with.properties());
    case Request::Operation::associator_names:
        return call(mi, &Table::associatorNames, with, assoc_class, result_class, role, result_role);
    case Request::Operation::references:
        return call(mi, &Table::references, with, assoc_class, role, with.properties());
    case Request::Operation::reference_names:
        return call(mi, &Table::referenceNames, with, assoc_class, role);
    default:
        return not_supported();
    }
}

CMPIStatus run_method(CMPIMethodMI* mi, const Call& with) {
    if (mi == nullptr || mi->ft == nullptr || mi->ft->invokeMethod == nullptr)
        return status_of(CMPI_RC_ERR_METHOD_NOT_AVAILABLE);
    State& scope = *State::innermost();
    const CMPIArgs* in = scope.add<CMPIArgs>(hold(scope.store, with.request.arguments));
    CMPIArgs* out = scope.add<CMPIArgs>({});
    const CMPIStatus status =
        mi->ft->invokeMethod(mi, with.context, with.result, with.path, with.request.method.c_str(), in, out);
    if (const HeldProperties* arguments = scope.live(out)) // it may have let go of them
        scope.answer.arguments = plain(*arguments);
    return status;
}

/// The property to set, as a getter would give it.
CMPIData data_of(const Property& property) {
    State& scope = *State::innermost();
    return give_value(hold(scope.store, property.value), type_code(property.type), nullptr);
}

CMPIStatus run_property_operation(CMPIPropertyMI* mi, const Call& with) {
    using Table = CMPIPropertyMIFT;
    if (with.request.values.empty())
        return status_of(CMPI_RC_ERR_INVALID_PARAMETER);
    const Property& property = with.request.values.front();
    if (with.request.operation == Request::Operation::set_property)
        return call(mi, &Table::setProperty, with, property.name.c_str(), data_of(property));
    return call(mi, &Table::getProperty, with, property.name.c_str());
}

bool is_association_operation(Request::Operation operation) {
    constexpr std::array operations{Request::Operation::associators, Request::Operation::associator_names,
                                    Request::Operation::references, Request::Operation::reference_names};
    return std::find(operations.begin(), operations.end(), operation) != operations.end();
}

bool is_property_operation(Request::Operation operation) {
    return operation == Request::Operation::set_property || operation == Request::Operation::get_property;
}

CMPIStatus run_operation(const Provider& provider, Call& with) {
    if (with.request.operation == Request::Operation::invoke_method)
        return run_method(provider.method_mi, with);
    if (is_property_operation(with.request.operation))
        return run_property_operation(provider.property_mi, with);
    if (is_association_operation(with.request.operation))
        return run_association_operation(provider.association_mi, with);
    return run_instance_operation(provider.instance_mi, with);
}

/// The code as the provider set it, which need not be one of the enumeration's.
int number_of(const CMPIStatus& status) {
    static_assert(sizeof status.rc == sizeof(int));
    int number = 0;
    std::memcpy(&number, &status.rc, sizeof number);
    return number;
}

/// @param sink null: collect
Answer run_with(const Provider& provider, const Request& request, const Sink* sink, unsigned fail_object) {
    CallScope scope;
    State& state = *State::innermost();
    state.sink = sink;
    put_named(state.store, state.context.data, CMPIInitNameSpace, CMPI_string,
              {state.store.arena.copy(request.path.name_space)});
    Call with(scope, request);
    scope.fail_object(fail_object);
    const CMPIStatus status = run_operation(provider, with);
    Answer answer = std::move(state.answer);
    answer.rc = number_of(status);
    if (const Text* message = state.live(status.msg))
        answer.message = message->chars;
    return answer;
}

} // namespace

bool gives_paths(Request::Operation operation) {
    return operation == Request::Operation::enumerate_instance_names ||
           operation == Request::Operation::associator_names || operation == Request::Operation::reference_names ||
           operation == Request::Operation::create_instance;
}

bool is_traversal(Request::Operation operation) {
    return operation == Request::Operation::associators || operation == Request::Operation::associator_names ||
           operation == Request::Operation::references || operation == Request::Operation::reference_names;
}

bool gives_value(Request::Operation operation) {
    return operation == Request::Operation::invoke_method || is_property_operation(operation);
}

Answer run(const Provider& provider, const Request& request, unsigned fail_object) {
    return run_with(provider, request, nullptr, fail_object);
}

Answer run(const Provider& provider, const Request& request, const Sink& sink) {
    return run_with(provider, request, &sink, 0);
}

} // namespace cmpihost
