#include "host/broker/enumeration.h"

#include "host/broker/scope.h"
#include "host/broker/values.h"

namespace cmpihost {

namespace {

/// Behind the last object: ERR_NOT_FOUND.
CMPIData get_next(const CMPIEnumeration* self, CMPIStatus* status) {
    EnumerationData* enumeration = open(self, status);
    if (enumeration == nullptr)
        return nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE);
    if (enumeration->next == enumeration->objects.count)
        return nothing_found(status, CMPI_RC_ERR_NOT_FOUND);
    HeldObject& object = enumeration->objects[enumeration->next++];
    return give_value({&object}, enumeration->type, status);
}

CMPIBoolean has_next(const CMPIEnumeration* self, CMPIStatus* status) {
    const EnumerationData* enumeration = open(self, status);
    return enumeration != nullptr && enumeration->next < enumeration->objects.count ? 1 : 0;
}

/// All objects, whether already fetched or not.
CMPIArray* to_array(const CMPIEnumeration* self, CMPIStatus* status) {
    const EnumerationData* enumeration = open(self, status);
    if (enumeration == nullptr)
        return nullptr;
    return make<CMPIArray>(status, [enumeration](Store& store) {
        HeldArray references = list_for<HeldValue>(store, enumeration->objects.count);
        for (HeldObject& object : enumeration->objects)
            append(store, references, copy(store, HeldValue{&object}));
        return ArrayData{enumeration->type, references};
    });
}

} // namespace

const CMPIEnumerationFT enumeration_table{
    .ftVersion = CMPIVersion100,
    .release = release_object,
    .clone = clone_object,
    .getNext = get_next,
    .hasNext = has_next,
    .toArray = to_array,
};

CMPIEnumeration* new_enumeration(const std::vector<Object>& objects, bool instances) {
    State* scope = State::innermost();
    if (scope == nullptr)
        return nullptr;
    List<HeldObject> held = list_for<HeldObject>(scope->store, objects.size());
    for (const Object& object : objects)
        append(scope->store, held, hold(scope->store, object));
    return scope->add<CMPIEnumeration>({instances ? CMPI_instance : CMPI_ref, held, 0});
}

} // namespace cmpihost
