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

std::vector<Property> entries_of_every_call() {
    static const std::string principal = user_name();
    return {{"CMPIInvocationFlags", "uint32", {std::uint64_t{0}}},
            {"CMPIInitNameSpace", "string", {std::string("root/cimv2")}},
            {"CMPIPrincipal", "string", {principal}}};
}

} // namespace

CallScope::State::State() : context(entries_of_every_call()), result(this) {}

State* CallScope::State::innermost() {
    return innermost_state;
}

Node* CallScope::State::find(const void* handle) const {
    const auto found = objects_.find(handle);
    return found == objects_.end() ? nullptr : found->second.get();
}

bool CallScope::State::count_object() {
    ++objects_made;
    return calls_until_failure == 0 || --calls_until_failure != 0;
}

bool CallScope::State::release(const void* handle) {
    return objects_.erase(handle) == 1;
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
    return scope == nullptr ? nullptr : scope->add<CMPIObjectPath>(path);
}

Object describe(const CMPIInstance* instance) {
    const InstanceData* data = live(instance);
    return data == nullptr ? Object{} : data->object;
}

Object describe(const CMPIObjectPath* path) {
    const Object* data = live(path);
    return data == nullptr ? Object{} : *data;
}

bool is_live(const void* object) {
    const State* scope = State::innermost();
    return scope != nullptr && scope->find(object) != nullptr;
}

} // namespace cmpihost
