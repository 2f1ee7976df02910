// CMPIArgs.
#include "host/broker/broker_tables.h"
#include "host/broker/named_values.h"

namespace cmpihost {

const CMPIArgsFT args_table{
    .ftVersion = CMPIVersion100,
    .release = release_object,
    .clone = clone_object,
    .addArg = add_named_value,
    .getArg = get_named_value,
    .getArgAt = get_named_value_at,
    .getArgCount = get_named_value_count,
};

CMPIArgs* new_args(const CMPIBroker*, CMPIStatus* status) {
    return make<CMPIArgs>(status, [](Store&) { return HeldProperties{}; });
}

} // namespace cmpihost
