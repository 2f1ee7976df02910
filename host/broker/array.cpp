// CMPIArray.
#include "host/broker/broker_tables.h"
#include "host/broker/scope.h"
#include "host/broker/values.h"

namespace cmpihost {

namespace {

constexpr CMPICount most_elements = 1'000'000;

/// The type under which values of `type` are stored.
CMPIType stored_type(CMPIType type) {
    return type == CMPI_chars ? CMPI_string : type;
}

HeldArray nulls(Store& store, CMPICount size) {
    HeldArray values = list_for<HeldValue>(store, size);
    while (values.count < size)
        append(store, values, HeldValue{});
    return values;
}

CMPICount get_size(const CMPIArray* self, CMPIStatus* status) {
    const ArrayData* array = open(self, status);
    return array == nullptr ? 0 : static_cast<CMPICount>(array->values.count);
}

CMPIType get_simple_type(const CMPIArray* self, CMPIStatus* status) {
    const ArrayData* array = open(self, status);
    return array == nullptr ? CMPI_null : array->type;
}

/// An index out of range is ERR_NOT_FOUND.
CMPIData get_element_at(const CMPIArray* self, CMPICount index, CMPIStatus* status) {
    const ArrayData* array = open(self, status);
    if (array == nullptr)
        return nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE);
    if (index >= array->values.count)
        return nothing_found(status, CMPI_RC_ERR_NOT_FOUND);
    return give_value(array->values[index], array->type, status);
}

/// An index out of range is ERR_INVALID_PARAMETER, another type than the array's ERR_TYPE_MISMATCH. A value of type
/// CMPI_null empties the element.
CMPIStatus set_element_at(const CMPIArray* self, CMPICount index, const CMPIValue* value, CMPIType type) {
    CMPIStatus status;
    ArrayData* array = open(self, &status);
    if (array == nullptr)
        return status;
    if (index >= array->values.count)
        return status_of(CMPI_RC_ERR_INVALID_PARAMETER);
    if (type != CMPI_null && stored_type(type) != array->type)
        return status_of(CMPI_RC_ERR_TYPE_MISMATCH);
    Store& store = store_of(self);
    HeldValue read;
    const CMPIrc rc = read_value(store, value, type, read);
    if (rc != CMPI_RC_OK)
        return status_of(rc);
    release(store, array->values[index]);
    array->values[index] = read;
    return status;
}

} // namespace

const CMPIArrayFT array_table{
    .ftVersion = CMPIVersion100,
    .release = release_object,
    .clone = clone_object,
    .getSize = get_size,
    .getSimpleType = get_simple_type,
    .getElementAt = get_element_at,
    .setElementAt = set_element_at,
};

/// `type` is that of the elements, which start as NULL. At most a million of them.
CMPIArray* new_array(const CMPIBroker*, CMPICount size, CMPIType type, CMPIStatus* status) {
    if (type == CMPI_null || (type & CMPI_ARRAY) != 0 || type_name(type).empty()) {
        report(status, CMPI_RC_ERR_INVALID_DATA_TYPE);
        return nullptr;
    }
    if (size > most_elements) {
        report(status, CMPI_RC_ERR_INVALID_PARAMETER);
        return nullptr;
    }
    return make<CMPIArray>(status, [size, type](Store& store) {
        return ArrayData{stored_type(type), nulls(store, size)};
    });
}

} // namespace cmpihost
