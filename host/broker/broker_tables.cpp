#include "host/broker/broker_tables.h"

#include "host/broker/broker.h"
#include "host/broker/refusals.h"

namespace cmpihost {

const CMPIBrokerFT broker_table{
    .brokerCapabilities = 0,
    .brokerVersion = CMPIVersion100,
    .brokerName = "cmpihost",
    .prepareAttachThread = prepare_attach_thread,
    .attachThread = attach_thread,
    .detachThread = detach_thread,
    .deliverIndication = refuse,
    .enumerateInstanceNames = up_enumerate_names,
    .getInstance = up_get,
    .createInstance = up_create,
    .modifyInstance = up_modify,
    .deleteInstance = up_delete,
    .execQuery = up_query,
    .enumerateInstances = up_enumerate,
    .associators = up_associators,
    .associatorNames = up_associator_names,
    .references = up_references,
    .referenceNames = up_reference_names,
    .invokeMethod = up_invoke,
    .setProperty = up_set_property,
    .getProperty = up_get_property,
    .enumerateInstancesFiltered = refuse_object,
    .associatorsFiltered = refuse_object,
    .referencesFiltered = refuse_object,
};

const CMPIBrokerEncFT encapsulated_table{
    .ftVersion = CMPIVersion100,
    .newInstance = new_instance,
    .newObjectPath = new_object_path,
    .newArgs = new_args,
    .newString = new_string,
    .newArray = new_array,
    .newDateTime = new_date_time,
    .newDateTimeFromBinary = new_date_time_from_binary,
    .newDateTimeFromChars = new_date_time_from_chars,
    .newSelectExp = refuse_object,
    .classPathIsA = class_path_is_a,
    .toString = to_string,
    .isOfType = is_of_type,
    .getType = get_type,
    .getMessage = get_message,
    .logMessage = log_message,
    .trace = trace,
};

const CMPIBroker* broker() {
    static const CMPIBroker the_broker{&broker_table, &broker_table, &encapsulated_table, nullptr};
    return &the_broker;
}

} // namespace cmpihost
