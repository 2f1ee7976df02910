// CMPIResult: hands on what a provider returns, and tells the observer.
#include "host/broker/refusals.h"
#include "host/broker/scope.h"
#include "host/broker/values.h"

#include <algorithm>
#include <atomic>
#include <mutex>

namespace cmpihost {

namespace {

constexpr std::uint32_t most_likely_properties = 48; // one large instance is not to make all that follow large

struct Watch {
    std::mutex mutex; // observers are called one at a time
    Observer observer = nullptr;
    void* closure = nullptr;
    std::atomic<bool> set = false; // spares calls without an observer the lock
};

Watch& watch() {
    static Watch the_watch;
    return the_watch;
}

void tell_observer(const Object& object, bool is_instance) {
    Watch& watching = watch();
    const std::lock_guard lock(watching.mutex);
    if (watching.observer != nullptr)
        watching.observer(object, is_instance, watching.closure);
}

/// The scope whose result this is; null if it is no result or not that of the innermost scope of this thread.
State* scope_of(const CMPIResult* self) {
    State* const* scope = open(self, nullptr);
    return scope != nullptr && *scope == State::innermost() ? *scope : nullptr;
}

const HeldObject& object_of(State& scope, const InstanceData& instance) {
    scope.store.likely_properties = std::min(instance.object.properties.count, most_likely_properties);
    return instance.object;
}

const HeldObject& object_of(State& /*scope*/, const HeldObject& path) {
    return path;
}

/// To the sink or into the answer, and to the observer.
void hand_over(State& scope, const HeldObject& object, bool is_instance) {
    if (scope.sink != nullptr) {
        (*scope.sink)(object, is_instance);
        if (watch().set)
            tell_observer(plain(object), is_instance);
        return;
    }
    scope.answer.objects.push_back(plain(object));
    if (watch().set)
        tell_observer(scope.answer.objects.back(), is_instance);
}

template <class Handle>
CMPIStatus return_object(const CMPIResult* self, const Handle* handle) {
    State* scope = scope_of(self);
    if (scope == nullptr)
        return status_of(CMPI_RC_ERR_INVALID_HANDLE);
    scope->answer.late_results += scope->answer.done ? 1 : 0;
    if (handle == nullptr) {
        ++scope->answer.null_results;
        return status_of(CMPI_RC_ERR_INVALID_PARAMETER);
    }
    const DataOf<Handle>* data = scope->live(handle);
    if (data == nullptr) {
        ++scope->answer.invalid_results;
        return status_of(CMPI_RC_ERR_INVALID_HANDLE);
    }
    hand_over(*scope, object_of(*scope, *data), std::is_same_v<Handle, CMPIInstance>);
    return status_of(CMPI_RC_OK);
}

/// What a method returns.
CMPIStatus return_data(const CMPIResult* self, const CMPIValue* value, CMPIType type) {
    State* scope = scope_of(self);
    if (scope == nullptr)
        return status_of(CMPI_RC_ERR_INVALID_HANDLE);
    scope->answer.late_results += scope->answer.done ? 1 : 0;
    HeldValue held;
    const CMPIrc rc = read_value(scope->store, value, type, held);
    if (rc == CMPI_RC_OK)
        scope->answer.returned = Property{{}, type_name(type), plain(held)};
    return status_of(rc);
}

CMPIStatus return_done(const CMPIResult* self) {
    State* scope = scope_of(self);
    if (scope == nullptr)
        return status_of(CMPI_RC_ERR_INVALID_HANDLE);
    scope->answer.done = true;
    return status_of(CMPI_RC_OK);
}

/// A result ends with its call, not before.
CMPIStatus release_result(CMPIResult* self) {
    return status_of(scope_of(self) == nullptr ? CMPI_RC_ERR_INVALID_HANDLE : CMPI_RC_OK);
}

} // namespace

const CMPIResultFT result_table{
    .ftVersion = CMPIVersion100,
    .release = release_result,
    .clone = refuse_object,
    .returnData = return_data,
    .returnInstance = return_object,
    .returnObjectPath = return_object,
    .returnDone = return_done,
};

void observe(Observer observer, void* closure) {
    Watch& watching = watch();
    const std::lock_guard lock(watching.mutex);
    watching.observer = observer;
    watching.closure = closure;
    watching.set = observer != nullptr;
}

} // namespace cmpihost
