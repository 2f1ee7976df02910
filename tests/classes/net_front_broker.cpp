#include "classes/net_front_broker.h"

namespace test {

namespace {

Rows all_set;
CMPIObjectPath bare_path{};
CMPIInstance bare_instance{};
CMPIInstanceFT listening_table{};
CMPIBrokerEncFT objects_table{};
CMPIBroker front{};

CMPIStatus listen(const CMPIInstance* instance, const char* name, const CMPIValue* value, CMPIType type) {
    const CMPIStatus status = bare_instance.ft->setProperty(instance, name, value, type);
    const cmpihost::Property* property = nullptr;
    const cmpihost::Object object = cmpihost::describe(instance);
    if ((property = object.property(name)) != nullptr)
        all_set.push_back({property->name, property->type, text_of(property->value)});
    return status;
}

CMPIInstance* new_listening_instance(const CMPIBroker*, const CMPIObjectPath* path, CMPIStatus* status) {
    const CMPIBroker* real = cmpihost::broker();
    CMPIInstance* instance = real->eft->newInstance(real, path, status);
    if (instance != nullptr)
        instance->ft = &listening_table;
    return instance;
}

CMPIInstance* new_bare_instance(const CMPIBroker*, const CMPIObjectPath*, CMPIStatus*) {
    return &bare_instance;
}

CMPIObjectPath* new_bare_path(const CMPIBroker*, const char*, const char*, CMPIStatus*) {
    return &bare_path;
}

} // namespace

FrontBroker::FrontBroker(makes what) {
    const CMPIBroker* real = cmpihost::broker();
    const cmpihost::CallScope scope; // for one path and instance, whose tables are copied
    const CMPIObjectPath* path = real->eft->newObjectPath(real, "root", "Any", nullptr);
    bare_path = {nullptr, path->ft};
    bare_instance = {nullptr, real->eft->newInstance(real, path, nullptr)->ft};
    listening_table = *bare_instance.ft;
    listening_table.setProperty = listen;

    objects_table = *real->eft;
    objects_table.newInstance = what == makes::instances_without_handle ? new_bare_instance : new_listening_instance;
    if (what == makes::paths_without_handle)
        objects_table.newObjectPath = new_bare_path;
    front = *real;
    front.eft = &objects_table;
    all_set.clear();
    _broker = &front;
}

FrontBroker::~FrontBroker() {
    _broker = cmpihost::broker();
}

const Rows& FrontBroker::set() {
    return all_set;
}

const CMPIObjectPath* FrontBroker::path_without_handle() {
    return &bare_path;
}

const CMPIInstance* FrontBroker::instance_without_handle() {
    return &bare_instance;
}

} // namespace test
