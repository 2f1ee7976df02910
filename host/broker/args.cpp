// CMPIArgs.
#include "host/broker/broker_tables.h"
#include "host/broker/scope.h"
#include "host/broker/values.h"

namespace cmpihost {

namespace {

CMPIStatus add_arg(const CMPIArgs* self, const char* name, const CMPIValue* value, CMPIType type) {
    CMPIStatus status;
    auto* args = open(self, &status);
    return args == nullptr ? status : status_of(set_named(*args, name, value, type));
}

/// An absent argument is ERR_NOT_FOUND.
CMPIData get_arg(const CMPIArgs* self, const char* name, CMPIStatus* status) {
    const auto* args = open(self, status);
    return args == nullptr ? nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE)
                           : get_named(*args, name, status, CMPI_RC_ERR_NOT_FOUND);
}

CMPIData get_arg_at(const CMPIArgs* self, CMPICount index, CMPIString** name, CMPIStatus* status) {
    const auto* args = open(self, status);
    return args == nullptr ? nothing_found(status, CMPI_RC_ERR_INVALID_HANDLE)
                           : get_indexed(*args, index, name, status, CMPI_RC_ERR_NOT_FOUND);
}

CMPICount get_arg_count(const CMPIArgs* self, CMPIStatus* status) {
    const auto* args = open(self, status);
    return args == nullptr ? 0 : static_cast<CMPICount>(args->size());
}

} // namespace

const CMPIArgsFT args_table{
    .ftVersion = CMPIVersion100,
    .release = release_object,
    .clone = clone_object,
    .addArg = add_arg,
    .getArg = get_arg,
    .getArgAt = get_arg_at,
    .getArgCount = get_arg_count,
};

CMPIArgs* new_args(const CMPIBroker*, CMPIStatus* status) {
    return make<CMPIArgs>({}, status);
}

} // namespace cmpihost
