// CMPIInstance.
#include "host/broker/broker_tables.h"
#include "host/broker/scope.h"
#include "host/broker/values.h"
#include "host/cim/names.h"

#include <algorithm>

namespace cmpihost {

namespace {

/// An absent property is ERR_NO_SUCH_PROPERTY.
CMPIData get_property(const CMPIInstance* self, const char* name, CMPIStatus* status) {
    const InstanceData* instance = open(self, status);
    return instance == nullptr ? nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE)
                               : get_named(instance->object.properties, name, status, CMPI_RC_ERR_NO_SUCH_PROPERTY);
}

/// An index out of range is ERR_NO_SUCH_PROPERTY.
CMPIData get_property_at(const CMPIInstance* self, CMPICount index, CMPIString** name, CMPIStatus* status) {
    const InstanceData* instance = open(self, status);
    return instance == nullptr
               ? nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE)
               : get_indexed(instance->object.properties, index, name, status, CMPI_RC_ERR_NO_SUCH_PROPERTY);
}

CMPICount get_property_count(const CMPIInstance* self, CMPIStatus* status) {
    const InstanceData* instance = open(self, status);
    return instance == nullptr ? 0 : static_cast<CMPICount>(instance->object.properties.size());
}

bool passes_filter(const InstanceData& instance, std::string_view name) {
    return !instance.filter || std::any_of(instance.filter->begin(), instance.filter->end(),
                                           [name](const std::string& listed) { return same_name(listed, name); });
}

/// A property that the filter leaves out is checked like any other, and then dropped.
CMPIStatus set_property(const CMPIInstance* self, const char* name, const CMPIValue* value, CMPIType type) {
    CMPIStatus status;
    InstanceData* instance = open(self, &status);
    if (instance == nullptr)
        return status;
    if (name == nullptr || passes_filter(*instance, name))
        return status_of(set_named(instance->object.properties, name, value, type));
    std::vector<Property> dropped;
    return status_of(set_named(dropped, name, value, type));
}

CMPIObjectPath* get_object_path(const CMPIInstance* self, CMPIStatus* status) {
    const InstanceData* instance = open(self, status);
    if (instance == nullptr)
        return nullptr;
    const Object& object = instance->object;
    return make<CMPIObjectPath>({object.class_name, object.name_space, object.host, object.keys, {}}, status);
}

/// A null property list lets everything through, an empty one only what the key list names. Properties already set
/// that do not pass are removed.
CMPIStatus set_property_filter(const CMPIInstance* self, const char** properties, const char** keys) {
    CMPIStatus status;
    InstanceData* instance = open(self, &status);
    if (instance == nullptr)
        return status;
    instance->filter.reset();
    if (properties == nullptr)
        return status;
    std::vector<std::string> names;
    for (const char** list : {properties, keys})
        for (; list != nullptr && *list != nullptr; ++list)
            names.emplace_back(*list);
    instance->filter = std::move(names);
    std::erase_if(instance->object.properties,
                  [instance](const Property& property) { return !passes_filter(*instance, property.name); });
    return status;
}

CMPIStatus set_object_path(const CMPIInstance* self, const CMPIObjectPath* argument) {
    CMPIStatus status;
    InstanceData* instance = open(self, &status);
    if (instance == nullptr)
        return status;
    const Object* path = live(argument);
    if (path == nullptr)
        return status_of(fault_of(argument));
    Object& object = instance->object;
    object = {path->class_name, path->name_space, path->host, path->keys, std::move(object.properties)};
    return status;
}

} // namespace

const CMPIInstanceFT instance_table{
    .ftVersion = CMPIVersion100,
    .release = release_object,
    .clone = clone_object,
    .getProperty = get_property,
    .getPropertyAt = get_property_at,
    .getPropertyCount = get_property_count,
    .setProperty = set_property,
    .getObjectPath = get_object_path,
    .setPropertyFilter = set_property_filter,
    .setObjectPath = set_object_path,
};

CMPIInstance* new_instance(const CMPIBroker*, const CMPIObjectPath* argument, CMPIStatus* status) {
    const Object* path = live(argument);
    if (path != nullptr)
        return make<CMPIInstance>({*path, std::nullopt}, status);
    report(status, fault_of(argument));
    return nullptr;
}

} // namespace cmpihost
