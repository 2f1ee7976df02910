/*
 * A provider in plain C that misbehaves in a call, as the class that it is asked for says:
 *
 *   Bad_Segv      writes through a null pointer        Bad_Abort     abort()
 *   Bad_Exit      exit(3)                              Bad_Stack     runs out of stack
 *   Bad_Loop      never returns                        Bad_Endless   never stops returning instances or paths
 *   Bad_Null      two null results, and a good one     Bad_Garbage   two pointers to no object, and a good one
 *   Bad_SleepN    answers after N milliseconds         Bad_Prints    writes a line to standard output, then answers
 *   Bad_Closes    closes what it did not open, and never returns
 *   Bad_Good      answers
 *
 * Each class has one good instance, with the key Name. Any class that does not begin with Bad_ is ERR_INVALID_CLASS.
 */
#include "cmpidt.h"
#include "cmpift.h"
#include "cmpimacs.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#define EXPORT __attribute__((visibility("default")))

static const CMPIBroker* broker;

static CMPIStatus ok(void) {
    CMPIStatus status = {CMPI_RC_OK, NULL};
    return status;
}

static CMPIStatus refuse(CMPIrc rc) {
    CMPIStatus status = {CMPI_RC_OK, NULL};
    status.rc = rc;
    return status;
}

static const char* class_of(const CMPIObjectPath* path) {
    CMPIString* name = CMGetClassName(path, NULL);
    return name == NULL ? "" : CMGetCharsPtr(name, NULL);
}

static CMPIObjectPath* good_path(const CMPIObjectPath* request) {
    CMPIString* name_space = CMGetNameSpace(request, NULL);
    CMPIObjectPath* path = CMNewObjectPath(broker, CMGetCharsPtr(name_space, NULL), class_of(request), NULL);
    CMAddKey(path, "Name", "good", CMPI_chars);
    return path;
}

static CMPIInstance* good_instance(const CMPIObjectPath* request) {
    CMPIInstance* instance = CMNewInstance(broker, good_path(request), NULL);
    CMSetProperty(instance, "Name", "good", CMPI_chars);
    return instance;
}

/* -------------------------------------------------------------------------------------------- ends of the process */

static unsigned fill_stack(volatile unsigned* depth) {
    volatile char frame[4096];
    frame[*depth % sizeof frame] = 1;
    if (++*depth == 0) /* not before there is no stack left, which compilers need not know */
        return 0;
    return fill_stack(depth) + (unsigned)frame[0];
}

static void loop(void) {
    volatile int forever = 1;
    while (forever)
        usleep(10000);
}

static void close_all(void) {
    int descriptor;
    for (descriptor = 3; descriptor < 1024; ++descriptor)
        close(descriptor);
}

static void write_through_null(void) {
    volatile char* volatile nowhere = NULL;
    *nowhere = 1;
}

/* What ends or holds up the process; returns for other classes. */
static void misbehave(const char* name) {
    volatile unsigned depth = 1;
    if (strcmp(name, "Bad_Segv") == 0)
        write_through_null();
    if (strcmp(name, "Bad_Abort") == 0)
        abort();
    if (strcmp(name, "Bad_Exit") == 0)
        exit(3);
    if (strcmp(name, "Bad_Stack") == 0)
        fill_stack(&depth);
    if (strcmp(name, "Bad_Closes") == 0)
        close_all();
    if (strcmp(name, "Bad_Loop") == 0 || strcmp(name, "Bad_Closes") == 0)
        loop();
    if (strncmp(name, "Bad_Sleep", 9) == 0)
        usleep((useconds_t)atoi(name + 9) * 1000);
    if (strcmp(name, "Bad_Prints") == 0)
        printf("the provider was here\n");
}

/* -------------------------------------------------------------------------------------------------------- results */

static void return_good(const CMPIResult* result, const CMPIObjectPath* request, int instance) {
    if (instance)
        CMReturnInstance(result, good_instance(request));
    else
        CMReturnObjectPath(result, good_path(request));
}

/* `pointer` twice, and a good result between. */
static void return_pointer(const CMPIResult* result, const CMPIObjectPath* request, int instance, void* pointer) {
    int time;
    for (time = 0; time < 2; ++time) {
        if (instance)
            CMReturnInstance(result, (CMPIInstance*)pointer);
        else
            CMReturnObjectPath(result, (CMPIObjectPath*)pointer);
        if (time == 0)
            return_good(result, request, instance);
    }
}

static CMPIStatus answer(const CMPIResult* result, const CMPIObjectPath* request, int instance) {
    const char* name = class_of(request);
    if (strncmp(name, "Bad_", 4) != 0)
        return refuse(CMPI_RC_ERR_INVALID_CLASS);
    misbehave(name);
    if (strcmp(name, "Bad_Null") == 0)
        return_pointer(result, request, instance, NULL);
    else if (strcmp(name, "Bad_Garbage") == 0)
        return_pointer(result, request, instance, (void*)-1);
    else
        return_good(result, request, instance);
    while (strcmp(name, "Bad_Endless") == 0)
        return_good(result, request, instance);
    CMReturnDone(result);
    return ok();
}

/* ---------------------------------------------------------------------------------------------------- Instance MI */

static CMPIStatus cleanup(CMPIInstanceMI* mi, const CMPIContext* context, CMPIBoolean terminating) {
    (void)mi;
    (void)context;
    (void)terminating;
    return ok();
}

static CMPIStatus enumerate_instance_names(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                           const CMPIObjectPath* path) {
    (void)mi;
    (void)context;
    return answer(result, path, 0);
}

static CMPIStatus enumerate_instances(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                      const CMPIObjectPath* path, const char** properties) {
    (void)mi;
    (void)context;
    (void)properties;
    return answer(result, path, 1);
}

static CMPIStatus get_instance(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                               const CMPIObjectPath* path, const char** properties) {
    (void)mi;
    (void)context;
    (void)properties;
    return answer(result, path, 1);
}

static const CMPIInstanceMIFT instance_table = {
    .ftVersion = 100,
    .miVersion = 100,
    .miName = "instanceBad",
    .cleanup = cleanup,
    .enumerateInstanceNames = enumerate_instance_names,
    .enumerateInstances = enumerate_instances,
    .getInstance = get_instance,
};

EXPORT CMPIInstanceMI* Bad_Create_InstanceMI(const CMPIBroker* given, const CMPIContext* context) {
    static CMPIInstanceMI mi = {NULL, &instance_table};
    (void)context;
    broker = given;
    return &mi;
}
