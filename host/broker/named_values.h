// Functions of the tables whose objects are lists of named values: arguments and contexts.
#pragma once

#include "host/broker/scope.h"
#include "host/broker/values.h"

namespace cmpihost {

template <class Handle>
CMPIStatus add_named_value(const Handle* self, const char* name, const CMPIValue* value, CMPIType type) {
    CMPIStatus status;
    auto* values = open(self, &status);
    return values == nullptr ? status : status_of(set_named(store_of(self), *values, name, value, type));
}

/// An absent name is ERR_NOT_FOUND.
template <class Handle>
CMPIData get_named_value(const Handle* self, const char* name, CMPIStatus* status) {
    const auto* values = open(self, status);
    return values == nullptr ? nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE)
                             : get_named(*values, name, status, CMPI_RC_ERR_NOT_FOUND);
}

/// An index out of range is ERR_NOT_FOUND.
template <class Handle>
CMPIData get_named_value_at(const Handle* self, CMPICount index, CMPIString** name, CMPIStatus* status) {
    const auto* values = open(self, status);
    return values == nullptr ? nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE)
                             : get_indexed(*values, index, name, status, CMPI_RC_ERR_NOT_FOUND);
}

template <class Handle>
CMPICount get_named_value_count(const Handle* self, CMPIStatus* status) {
    const auto* values = open(self, status);
    return values == nullptr ? 0 : values->count;
}

} // namespace cmpihost
