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
    .enumerateInstanceNames = refuse_object,
    .getInstance = refuse_object,
    .createInstance = refuse_object,
    .modifyInstance = refuse,
    .deleteInstance = refuse,
    .execQuery = refuse_object,
    .enumerateInstances = refuse_object,
    .associators = refuse_object,
    .associatorNames = refuse_object,
    .references = refuse_object,
    .referenceNames = refuse_object,
    .invokeMethod = refuse_data,
    .setProperty = refuse,
    .getProperty = refuse_data,
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
