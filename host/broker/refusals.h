// Function-table slots without a meaning in this host: they answer NOT_SUPPORTED and null.
#pragma once

#include "host/broker/scope.h"

#include <tuple>

namespace cmpihost {

template <class... Arguments>
CMPIStatus refuse(Arguments...) {
    return status_of(CMPI_RC_ERR_NOT_SUPPORTED);
}

/// For slots that return an object and take a status as their last argument.
template <class Object, class... Arguments>
Object* refuse_object(Arguments... arguments) {
    report(std::get<sizeof...(Arguments) - 1>(std::tuple(arguments...)), CMPI_RC_ERR_NOT_SUPPORTED);
    return nullptr;
}

/// For slots that return data and take a status as their last argument.
template <class... Arguments>
CMPIData refuse_data(Arguments... arguments) {
    report(std::get<sizeof...(Arguments) - 1>(std::tuple(arguments...)), CMPI_RC_ERR_NOT_SUPPORTED);
    CMPIData data{};
    data.state = CMPI_nullValue;
    return data;
}

} // namespace cmpihost
