// The functions in the broker's own tables that are more than a refusal, each in the file of the type that it makes.
#pragma once

#include <cmpift.h>

namespace cmpihost {

extern const CMPIBrokerFT broker_table;
extern const CMPIBrokerEncFT encapsulated_table;

CMPIInstance* new_instance(const CMPIBroker*, const CMPIObjectPath* path, CMPIStatus* status);
CMPIObjectPath* new_object_path(const CMPIBroker*, const char* name_space, const char* class_name, CMPIStatus* status);
CMPIArgs* new_args(const CMPIBroker*, CMPIStatus* status);
CMPIString* new_string(const CMPIBroker*, const char* text, CMPIStatus* status);
CMPIArray* new_array(const CMPIBroker*, CMPICount size, CMPIType type, CMPIStatus* status);
CMPIDateTime* new_date_time(const CMPIBroker*, CMPIStatus* status);
CMPIDateTime* new_date_time_from_binary(const CMPIBroker*, CMPIUint64 microseconds, CMPIBoolean interval,
                                        CMPIStatus* status);
CMPIDateTime* new_date_time_from_chars(const CMPIBroker*, const char* text, CMPIStatus* status);

CMPIBoolean class_path_is_a(const CMPIBroker*, const CMPIObjectPath* path, const char* class_name, CMPIStatus* status);
CMPIString* to_string(const CMPIBroker*, const void* object, CMPIStatus* status);
CMPIBoolean is_of_type(const CMPIBroker*, const void* object, const char* type, CMPIStatus* status);
CMPIString* get_type(const CMPIBroker*, const void* object, CMPIStatus* status);

CMPIString* get_message(const CMPIBroker*, const char* id, const char* text, CMPIStatus* status, CMPICount count, ...);
CMPIStatus log_message(const CMPIBroker*, CMPISeverity severity, const char* id, const char* text,
                       const CMPIString* string);
CMPIStatus trace(const CMPIBroker*, CMPILevel level, const char* component, const char* text, const CMPIString* string);

CMPIContext* prepare_attach_thread(const CMPIBroker*, const CMPIContext* context);
CMPIStatus attach_thread(const CMPIBroker*, const CMPIContext* context);
CMPIStatus detach_thread(const CMPIBroker*, const CMPIContext* context);

} // namespace cmpihost
