#include "host/broker/enumeration.h"

#include "host/broker/scope.h"
#include "host/broker/values.h"

namespace cmpihost {

namespace {

Value reference_to(const Object& object) {
    return {std::make_shared<const Object>(object)};
}

/// Behind the last object: ERR_NOT_FOUND.
CMPIData get_next(const CMPIEnumeration* self, CMPIStatus* status) {
    EnumerationData* enumeration = open(self, status);
    if (enumeration == nullptr)
        return nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE);
    if (enumeration->next == enumeration->objects.size())
        return nothing_found(status, CMPI_RC_ERR_NOT_FOUND);
    const Object& object = enumeration->objects[enumeration->next++];
    return give_value(reference_to(object), enumeration->type, status);
}

CMPIBoolean has_next(const CMPIEnumeration* self, CMPIStatus* status) {
    const EnumerationData* enumeration = open(self, status);
    return enumeration != nullptr && enumeration->next < enumeration->objects.size() ? 1 : 0;
}

/// All objects, whether already fetched or not.
CMPIArray* to_array(const CMPIEnumeration* self, CMPIStatus* status) {
    const EnumerationData* enumeration = open(self, status);
    if (enumeration == nullptr)
        return nullptr;
    ArrayData array{enumeration->type, {}};
    for (const Object& object : enumeration->objects)
        array.values.push_back(reference_to(object));
    return make<CMPIArray>(std::move(array), status);
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

CMPIEnumeration* new_enumeration(std::vector<Object> objects, bool instances) {
    State* scope = State::innermost();
    const CMPIType type = instances ? CMPI_instance : CMPI_ref;
    return scope == nullptr ? nullptr : scope->add<CMPIEnumeration>({type, std::move(objects), 0});
}

} // namespace cmpihost
