#include "tests/support/front_broker.h"

namespace test {

namespace {

Rows all_set;
std::map<std::string, CMPIBoolean> all_flags;
std::vector<int> all_filter_keys;
bool reports_errors = false;
unsigned all_errors = 0;
CMPIObjectPath bare_path{};
CMPIInstance bare_instance{};
CMPIInstanceFT listening_table{};
CMPIObjectPathFT refusing_table{};
CMPIBrokerEncFT objects_table{};
CMPIBroker front{};

/// What a call answers that did as it was asked.
CMPIStatus answer(CMPIStatus status) {
    if (!reports_errors)
        return status;
    ++all_errors;
    return {CMPI_RC_ERR_FAILED, nullptr};
}

CMPIStatus listen(const CMPIInstance* instance, const char* name, const CMPIValue* value, CMPIType type) {
    const CMPIStatus status = bare_instance.ft->setProperty(instance, name, value, type);
    const cmpihost::Property* property = nullptr;
    const cmpihost::Object object = cmpihost::describe(instance);
    if ((property = object.property(name)) != nullptr)
        all_set.push_back({property->name, property->type, text_of(property->value)});
    if (type == CMPI_boolean)
        all_flags[name] = value->boolean;
    return answer(status);
}

CMPIStatus add_key(const CMPIObjectPath* path, const char* name, const CMPIValue* value, CMPIType type) {
    return answer(bare_path.ft->addKey(path, name, value, type));
}

CMPIStatus listen_to_filter(const CMPIInstance* instance, const char** properties, const char** keys) {
    int count = keys == nullptr ? -1 : 0;
    while (keys != nullptr && keys[count] != nullptr)
        ++count;
    all_filter_keys.push_back(count);
    return bare_instance.ft->setPropertyFilter(instance, properties, keys);
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

CMPIObjectPath* new_refusing_path(const CMPIBroker*, const char* name_space, const char* class_name,
                                  CMPIStatus* status) {
    const CMPIBroker* real = cmpihost::broker();
    CMPIObjectPath* path = real->eft->newObjectPath(real, name_space, class_name, status);
    if (path != nullptr)
        path->ft = &refusing_table;
    return path;
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
    listening_table.setPropertyFilter = listen_to_filter;
    refusing_table = *bare_path.ft;
    refusing_table.addKey = add_key;

    objects_table = *real->eft;
    objects_table.newInstance = what == makes::instances_without_handle ? new_bare_instance : new_listening_instance;
    if (what == makes::paths_without_handle)
        objects_table.newObjectPath = new_bare_path;
    if (what == makes::objects_that_report_errors)
        objects_table.newObjectPath = new_refusing_path;
    front = *real;
    front.eft = &objects_table;
    reports_errors = what == makes::objects_that_report_errors;
    all_set.clear();
    all_flags.clear();
    all_filter_keys.clear();
    all_errors = 0;
    _broker = &front;
}

FrontBroker::~FrontBroker() {
    _broker = cmpihost::broker();
}

const Rows& FrontBroker::set() {
    return all_set;
}

const std::map<std::string, CMPIBoolean>& FrontBroker::flags() {
    return all_flags;
}

unsigned FrontBroker::errors_reported() {
    return all_errors;
}

const std::vector<int>& FrontBroker::filter_keys() {
    return all_filter_keys;
}

CMPIObjectPath* FrontBroker::path_without_handle() {
    return &bare_path;
}

CMPIInstance* FrontBroker::instance_without_handle() {
    return &bare_instance;
}

} // namespace test
