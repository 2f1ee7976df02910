#include "host/broker/scope.h"

#include <pwd.h>
#include <unistd.h>

namespace cmpihost {

namespace {

thread_local State* innermost_state = nullptr;

std::string user_name() {
    const passwd* user = getpwuid(geteuid());
    return user != nullptr ? user->pw_name : std::to_string(geteuid());
}

HeldProperties entries_of_every_call(Store& store) {
    static const std::string principal = user_name();
    HeldProperties entries;
    append(store, entries, {store.name(CMPIInvocationFlags), CMPI_uint32, {std::uint64_t{0}}});
    append(store, entries, {store.name(CMPIInitNameSpace), CMPI_string, {store.arena.copy("root/cimv2")}});
    append(store, entries, {store.name(CMPIPrincipal), CMPI_string, {store.arena.copy(principal)}});
    return entries;
}

} // namespace

CallScope::State::State()
    : context{{&store, nullptr}, {nullptr, Kind<CMPIContext>::table}, entries_of_every_call(store)},
      result{{&store, nullptr}, {nullptr, Kind<CMPIResult>::table}, this} {
    context.handle.hdl = &context.data;
    result.handle.hdl = &result.data;
}

State* CallScope::State::innermost() {
    return innermost_state;
}

Node* CallScope::State::find(const void* handle) const {
    if (!store.arena.is_handle(handle))
        return nullptr;
    auto* address = static_cast<std::byte*>(const_cast<void*>(handle));
    return reinterpret_cast<Node*>(address - handle_offset);
}

bool CallScope::State::count_object() {
    ++objects_made;
    return calls_until_failure == 0 || --calls_until_failure != 0;
}

bool CallScope::State::release(const void* handle) {
    Node* node = find(handle);
    if (node == nullptr)
        return false;
    store.arena.unmark(handle);
    node->kind->release(*node);
    return true;
}

CallScope::CallScope() : state_(std::make_unique<State>()), outer_(innermost_state) {
    innermost_state = state_.get();
}

CallScope::~CallScope() {
    innermost_state = outer_;
}

const CMPIContext* CallScope::context() const {
    return &state_->context.handle;
}

const CMPIResult* CallScope::result() const {
    return &state_->result.handle;
}

Answer& CallScope::answer() {
    return state_->answer;
}

unsigned CallScope::objects_made() const {
    return state_->objects_made;
}

void CallScope::fail_object(unsigned nth) {
    state_->calls_until_failure = nth;
}

CMPIObjectPath* new_path(const Object& path) {
    State* scope = State::innermost();
    return scope == nullptr ? nullptr : scope->add<CMPIObjectPath>(hold(scope->store, path));
}

Object describe(const CMPIInstance* instance) {
    const InstanceData* data = live(instance);
    return data == nullptr ? Object{} : plain(data->object);
}

Object describe(const CMPIObjectPath* path) {
    const HeldObject* data = live(path);
    return data == nullptr ? Object{} : plain(*data);
}

bool is_live(const void* object) {
    const State* scope = State::innermost();
    return scope != nullptr && scope->find(object) != nullptr;
}

} // namespace cmpihost
