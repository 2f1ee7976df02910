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

// Requests back to the broker (upcalls.h).
CMPIEnumeration* up_enumerate_names(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                                    CMPIStatus* status);
CMPIEnumeration* up_enumerate(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                              const char** properties, CMPIStatus* status);
CMPIInstance* up_get(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path, const char** properties,
                     CMPIStatus* status);
CMPIObjectPath* up_create(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                          const CMPIInstance* instance, CMPIStatus* status);
CMPIStatus up_modify(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path, const CMPIInstance* instance,
                     const char** properties);
CMPIStatus up_delete(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path);
CMPIEnumeration* up_query(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path, const char* query,
                          const char* language, CMPIStatus* status);
CMPIEnumeration* up_associators(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                                const char* assoc_class, const char* result_class, const char* role,
                                const char* result_role, const char** properties, CMPIStatus* status);
CMPIEnumeration* up_associator_names(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                                     const char* assoc_class, const char* result_class, const char* role,
                                     const char* result_role, CMPIStatus* status);
CMPIEnumeration* up_references(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                               const char* assoc_class, const char* role, const char** properties, CMPIStatus* status);
CMPIEnumeration* up_reference_names(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path,
                                    const char* assoc_class, const char* role, CMPIStatus* status);
CMPIData up_invoke(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path, const char* method,
                   const CMPIArgs* in, CMPIArgs* out, CMPIStatus* status);
CMPIData up_get_property(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path, const char* name,
                         CMPIStatus* status);
CMPIStatus up_set_property(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath* path, const char* name,
                           const CMPIValue* value, CMPIType type);

} // namespace cmpihost
