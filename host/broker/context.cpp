// CMPIContext, and the threads that a provider attaches with one.
#include "host/broker/broker_tables.h"
#include "host/broker/scope.h"
#include "host/broker/values.h"

namespace cmpihost {

namespace {

/// The context that a call was given ends with the call; a copy may be released before.
CMPIStatus release_context(CMPIContext* self) {
    const State* scope = State::innermost();
    if (scope != nullptr && self == &scope->context.handle)
        return status_of(CMPI_RC_OK);
    return release_object(self);
}

/// An absent entry is ERR_NOT_FOUND.
CMPIData get_entry(const CMPIContext* self, const char* name, CMPIStatus* status) {
    const auto* entries = open(self, status);
    return entries == nullptr ? nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE)
                              : get_named(*entries, name, status, CMPI_RC_ERR_NOT_FOUND);
}

CMPIData get_entry_at(const CMPIContext* self, CMPICount index, CMPIString** name, CMPIStatus* status) {
    const auto* entries = open(self, status);
    return entries == nullptr ? nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE)
                              : get_indexed(*entries, index, name, status, CMPI_RC_ERR_NOT_FOUND);
}

CMPICount get_entry_count(const CMPIContext* self, CMPIStatus* status) {
    const auto* entries = open(self, status);
    return entries == nullptr ? 0 : static_cast<CMPICount>(entries->size());
}

CMPIStatus add_entry(const CMPIContext* self, const char* name, const CMPIValue* value, CMPIType type) {
    CMPIStatus status;
    auto* entries = open(self, &status);
    return entries == nullptr ? status : status_of(set_named(*entries, name, value, type));
}

/// The scopes of threads that the provider made and attached. They end with the thread if not before.
thread_local std::unique_ptr<CallScope> attached;

} // namespace

const CMPIContextFT context_table{
    .ftVersion = CMPIVersion100,
    .release = release_context,
    .clone = clone_object,
    .getEntry = get_entry,
    .getEntryAt = get_entry_at,
    .getEntryCount = get_entry_count,
    .addEntry = add_entry,
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
    State::innermost()->context.data = *entries;
    return status;
}

CMPIStatus detach_thread(const CMPIBroker*, const CMPIContext*) {
    if (attached == nullptr)
        return status_of(CMPI_RC_ERR_FAILED);
    attached.reset();
    return status_of(CMPI_RC_OK);
}

} // namespace cmpihost
