/*
 * A provider in plain C whose answers are not as the standard wants them, as the class that it is asked for says. It
 * has a factory for any name.
 *
 *   Fault_Late      two results, then it writes through a null pointer
 *   Fault_After     a result after returnDone
 *   Fault_Open      no returnDone
 *   Fault_Kind      a path where instances are asked for, and the other way round
 *   Fault_Keyless   an instance whose path has no keys
 *   Fault_Many      as many paths as it is told by the environment variable FAULT_MANY
 *   Fault_Wide      1001 paths, the last of which has another key
 *   Fault_Up        asks the broker for the instances of Fault_Keyless, and for one of them, and for its Mapped
 *   Fault_Cleanup   answers; the process ends in the cleanup
 *
 * Each result has the key Name, and an instance also Mapped and List.
 */
#include "cmpidt.h"
#include "cmpift.h"
#include "cmpimacs.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define EXPORT __attribute__((visibility("default")))

static const CMPIBroker* broker;
static int exit_in_cleanup;

static CMPIStatus status_of(CMPIrc rc) {
    CMPIStatus status = {CMPI_RC_OK, NULL};
    status.rc = rc;
    return status;
}

static int is_class(const CMPIObjectPath* path, const char* name) {
    return strcmp(CMGetCharsPtr(CMGetClassName(path, NULL), NULL), name) == 0;
}

static CMPIObjectPath* path_of(const CMPIObjectPath* request, const char* key, const char* name) {
    CMPIObjectPath* path =
        CMNewObjectPath(broker, "root/cimv2", CMGetCharsPtr(CMGetClassName(request, NULL), NULL), NULL);
    if (key != NULL)
        CMAddKey(path, key, name, CMPI_chars);
    return path;
}

static void return_result(const CMPIResult* result, const CMPIObjectPath* request, const char* name, int instance) {
    const CMPIUint16 mapped = 2;
    CMPIInstance* made;
    if (!instance) {
        CMReturnObjectPath(result, path_of(request, "Name", name));
        return;
    }
    made = CMNewInstance(broker, path_of(request, is_class(request, "Fault_Keyless") ? NULL : "Name", name), NULL);
    CMSetProperty(made, "Name", name, CMPI_chars);
    CMSetProperty(made, "Mapped", &mapped, CMPI_uint16);
    CMReturnInstance(result, made);
}

static void crash(void) {
    volatile char* volatile nowhere = NULL;
    *nowhere = 1;
}

static void return_many(const CMPIResult* result, const CMPIObjectPath* request, unsigned many, int odd_one) {
    char name[32];
    unsigned i;
    for (i = 0; i < many; ++i) {
        snprintf(name, sizeof name, "number %u", i);
        return_result(result, request, name, 0);
    }
    if (odd_one)
        CMReturnObjectPath(result, path_of(request, "Other", "odd"));
}

/* What the broker answers to this provider, as instances of the class that was asked for. */
static CMPIStatus ask_the_broker(const CMPIContext* context, const CMPIResult* result, const CMPIObjectPath* request) {
    CMPIObjectPath* other = CMNewObjectPath(broker, "root/cimv2", "Fault_Keyless", NULL);
    CMPIStatus status = {CMPI_RC_OK, NULL};
    CMPIInstance* instance = CMNewInstance(broker, path_of(request, "Name", "up"), NULL);
    CMPIEnumeration* all = broker->bft->enumerateInstances(broker, context, other, NULL, &status);
    const CMPIData first = all->ft->getNext(all, NULL);
    CMPIInstance* one = broker->bft->getInstance(broker, context, other, NULL, &status);
    const CMPIData name = CMGetProperty(first.value.inst, "Name", NULL);
    const CMPIData mapped = CMGetProperty(one, "Mapped", NULL);
    const CMPIData property = broker->bft->getProperty(broker, context, other, "Mapped", NULL);
    CMSetProperty(instance, "Name", &name.value, CMPI_string);
    CMSetProperty(instance, "Got", &mapped.value, CMPI_uint16);
    CMSetProperty(instance, "Property", &property.value, CMPI_uint16);
    CMReturnInstance(result, instance);
    CMReturnDone(result);
    CMAddKey(other, "Missing", "x", CMPI_chars);
    if (broker->bft->getInstance(broker, context, CMNewObjectPath(broker, "root/cimv2", "No_Such", NULL), NULL,
                                 &status) != NULL)
        return status_of(CMPI_RC_ERR_FAILED);
    return status_of(status.rc == CMPI_RC_ERR_INVALID_CLASS ? CMPI_RC_OK : CMPI_RC_ERR_FAILED);
}

static CMPIStatus answer(const CMPIContext* context, const CMPIResult* result, const CMPIObjectPath* request,
                         int instance) {
    const char* many = getenv("FAULT_MANY");
    if (is_class(request, "Fault_Up"))
        return ask_the_broker(context, result, request);
    if (is_class(request, "Fault_Many"))
        return_many(result, request, many == NULL ? 0 : (unsigned)atoi(many), 0);
    else if (is_class(request, "Fault_Wide"))
        return_many(result, request, 1000, 1);
    else if (strncmp(CMGetCharsPtr(CMGetClassName(request, NULL), NULL), "Fault_", 6) == 0)
        return_result(result, request, "first", is_class(request, "Fault_Kind") ? !instance : instance);
    else
        return status_of(CMPI_RC_ERR_INVALID_CLASS);
    if (is_class(request, "Fault_Late")) {
        return_result(result, request, "second", instance);
        printf("about to crash\n");
        crash();
    }
    exit_in_cleanup |= is_class(request, "Fault_Cleanup");
    if (!is_class(request, "Fault_Open"))
        CMReturnDone(result);
    if (is_class(request, "Fault_After"))
        return_result(result, request, "late", instance);
    return status_of(CMPI_RC_OK);
}

static CMPIStatus cleanup(CMPIInstanceMI* mi, const CMPIContext* context, CMPIBoolean terminating) {
    (void)mi;
    (void)context;
    (void)terminating;
    if (exit_in_cleanup)
        exit(7);
    return status_of(CMPI_RC_OK);
}

static CMPIStatus enumerate_instance_names(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                           const CMPIObjectPath* path) {
    (void)mi;
    return answer(context, result, path, 0);
}

static CMPIStatus enumerate_instances(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                      const CMPIObjectPath* path, const char** properties) {
    (void)mi;
    (void)properties;
    return answer(context, result, path, 1);
}

static CMPIStatus get_instance(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                               const CMPIObjectPath* path, const char** properties) {
    (void)mi;
    (void)properties;
    return answer(context, result, path, 1);
}

static const CMPIInstanceMIFT instance_table = {
    .ftVersion = 100,
    .miVersion = 100,
    .miName = "instanceFault",
    .cleanup = cleanup,
    .enumerateInstanceNames = enumerate_instance_names,
    .enumerateInstances = enumerate_instances,
    .getInstance = get_instance,
};

EXPORT CMPIInstanceMI* _Generic_Create_InstanceMI(const CMPIBroker* given, const CMPIContext* context, const char* name,
                                                  CMPIStatus* status);
EXPORT CMPIInstanceMI* _Generic_Create_InstanceMI(const CMPIBroker* given, const CMPIContext* context, const char* name,
                                                  CMPIStatus* status) {
    static CMPIInstanceMI mi = {NULL, &instance_table};
    (void)context;
    *status = status_of(CMPI_RC_OK);
    broker = given;
    if (strcmp(name, "Crash") == 0)
        abort();
    return strcmp(name, "None") == 0 ? NULL : &mi;
}
