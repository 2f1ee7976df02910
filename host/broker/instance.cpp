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
    return instance == nullptr ? 0 : instance->object.properties.count;
}

bool passes_filter(const InstanceData& instance, std::string_view name) {
    return !instance.filtered || std::any_of(instance.filter.begin(), instance.filter.end(),
                                             [name](const Name& listed) { return same_name(listed.text, name); });
}

/// A property that the filter leaves out is checked like any other, and then dropped.
CMPIStatus set_property(const CMPIInstance* self, const char* name, const CMPIValue* value, CMPIType type) {
    CMPIStatus status;
    InstanceData* instance = open(self, &status);
    if (instance == nullptr)
        return status;
    Store& store = store_of(self);
    if (name == nullptr || passes_filter(*instance, name))
        return status_of(set_named(store, instance->object.properties, name, value, type));
    HeldProperties dropped;
    const CMPIrc rc = set_named(store, dropped, name, value, type);
    release(store, dropped);
    return status_of(rc);
}

/// The object without its properties, as a path of `store`.
HeldObject path_of(Store& store, const HeldObject& object) {
    HeldObject path = object;
    path.properties = {};
    return copy(store, path);
}

CMPIObjectPath* get_object_path(const CMPIInstance* self, CMPIStatus* status) {
    const InstanceData* instance = open(self, status);
    if (instance == nullptr)
        return nullptr;
    return make<CMPIObjectPath>(status, [instance](Store& store) { return path_of(store, instance->object); });
}

void remove_filtered(Store& store, InstanceData& instance) {
    HeldProperties& properties = instance.object.properties;
    std::uint32_t kept = 0;
    for (const HeldProperty& property : properties)
        if (passes_filter(instance, property.name->text))
            properties[kept++] = property;
        else
            release(store, property.value);
    properties.count = kept;
}

/// A null property list lets everything through, an empty one only what the key list names. Properties already set
/// that do not pass are removed.
CMPIStatus set_property_filter(const CMPIInstance* self, const char** properties, const char** keys) {
    CMPIStatus status;
    InstanceData* instance = open(self, &status);
    if (instance == nullptr)
        return status;
    Store& store = store_of(self);
    instance->filtered = properties != nullptr;
    instance->filter.count = 0;
    if (properties == nullptr)
        return status;
    for (const char** list : {properties, keys})
        for (; list != nullptr && *list != nullptr; ++list)
            append(store, instance->filter, *store.name(*list));
    remove_filtered(store, *instance);
    return status;
}

CMPIStatus set_object_path(const CMPIInstance* self, const CMPIObjectPath* argument) {
    CMPIStatus status;
    InstanceData* instance = open(self, &status);
    if (instance == nullptr)
        return status;
    const HeldObject* path = live(argument);
    if (path == nullptr)
        return status_of(fault_of(argument));
    Store& store = store_of(self);
    HeldObject& object = instance->object;
    const HeldProperties properties = object.properties;
    release(store, object.keys);
    object = path_of(store, *path);
    object.properties = properties;
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
    const HeldObject* path = live(argument);
    if (path != nullptr)
        return make<CMPIInstance>(status, [path](Store& store) {
            HeldObject object = path_of(store, *path);
            object.properties = list_for<HeldProperty>(store, store.likely_properties);
            return InstanceData{object, {}, false};
        });
    report(status, fault_of(argument));
    return nullptr;
}

} // namespace cmpihost
