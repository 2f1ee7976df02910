// CMPIContext, and the threads that a provider attaches with one.
#include "host/broker/broker_tables.h"
#include "host/broker/named_values.h"

namespace cmpihost {

namespace {

/// The context that a call was given ends with the call; a copy may be released before.
CMPIStatus release_context(CMPIContext* self) {
    const State* scope = State::innermost();
    if (scope != nullptr && self == &scope->context.handle)
        return status_of(CMPI_RC_OK);
    return release_object(self);
}

/// The scopes of threads that the provider made and attached. They end with the thread if not before.
thread_local std::unique_ptr<CallScope> attached;

} // namespace

const CMPIContextFT context_table{
    .ftVersion = CMPIVersion100,
    .release = release_context,
    .clone = clone_object,
    .getEntry = get_named_value,
    .getEntryAt = get_named_value_at,
    .getEntryCount = get_named_value_count,
    .addEntry = add_named_value,
};

/// A copy of the context, for attach_thread() while the call that made it is still running.
CMPIContext* prepare_attach_thread(const CMPIBroker*, const CMPIContext* context) {
    return clone_object(context, nullptr);
}

/// Gives a thread of the provider's a scope of its own. What it makes ends with that scope and is no object of the
/// call's result, which belongs to the thread that was called.
CMPIStatus attach_thread(const CMPIBroker*, const CMPIContext* context) {
    CMPIStatus status;
    const auto* entries = open(context, &status);
    if (entries == nullptr)
        return status;
    if (State::innermost() != nullptr)
        return status_of(CMPI_RC_ERR_FAILED);
    attached = std::make_unique<CallScope>();
    State& own = *State::innermost();
    own.context.data = copy(own.store, *entries);
    return status;
}

/// Within a call that the thread itself asked for, the attached scope is still in use below.
CMPIStatus detach_thread(const CMPIBroker*, const CMPIContext*) {
    const State* scope = State::innermost();
    if (attached == nullptr || scope == nullptr || attached->context() != &scope->context.handle)
        return status_of(CMPI_RC_ERR_FAILED);
    attached.reset();
    return status_of(CMPI_RC_OK);
}

} // namespace cmpihost
