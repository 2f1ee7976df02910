/*
 * A CMPI provider to begin with: the class Example_Lamp of lamp.mof, with two lamps that can be switched on and off.
 * README.md tells how to build and to try it.
 */
#include <cmpimacs.h>

#include <string.h>

static const CMPIBroker* broker;

static struct lamp {
    const char* name;
    CMPIBoolean is_on;
} lamps[] = {{"desk", 1}, {"door", 0}};
enum { lamp_count = sizeof lamps / sizeof *lamps };

/* The lamp that the keys of a path name; null if there is none. */
static struct lamp* lamp_of(const CMPIObjectPath* path) {
    const CMPIData key = CMGetKey(path, "Name", NULL);
    if (key.type != CMPI_string || CMIsNullValue(key))
        return NULL;
    for (int at = 0; at < lamp_count; ++at)
        if (strcmp(CMGetCharPtr(key.value.string), lamps[at].name) == 0)
            return &lamps[at];
    return NULL;
}

static CMPIObjectPath* path_of(const struct lamp* lamp, const CMPIObjectPath* asked) {
    const char* name_space = CMGetCharPtr(CMGetNameSpace(asked, NULL));
    CMPIObjectPath* path = CMNewObjectPath(broker, name_space, "Example_Lamp", NULL);
    CMAddKey(path, "Name", lamp->name, CMPI_chars);
    return path;
}

static CMPIInstance* instance_of(const struct lamp* lamp, const CMPIObjectPath* asked, const char** properties) {
    const char* keys[] = {"Name", NULL};
    CMPIInstance* instance = CMNewInstance(broker, path_of(lamp, asked), NULL);
    CMSetPropertyFilter(instance, properties, keys);
    CMSetProperty(instance, "Name", lamp->name, CMPI_chars);
    CMSetProperty(instance, "IsOn", &lamp->is_on, CMPI_boolean);
    return instance;
}

/* ---------------------------------------------------------------------------------------------------- instances */

static CMPIStatus LampCleanup(CMPIInstanceMI* mi, const CMPIContext* context, CMPIBoolean terminating) {
    (void)mi, (void)context, (void)terminating;
    CMReturn(CMPI_RC_OK);
}

static CMPIStatus LampEnumInstanceNames(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                        const CMPIObjectPath* path) {
    (void)mi, (void)context;
    for (int at = 0; at < lamp_count; ++at)
        CMReturnObjectPath(result, path_of(&lamps[at], path));
    CMReturnDone(result);
    CMReturn(CMPI_RC_OK);
}

static CMPIStatus LampEnumInstances(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                    const CMPIObjectPath* path, const char** properties) {
    (void)mi, (void)context;
    for (int at = 0; at < lamp_count; ++at)
        CMReturnInstance(result, instance_of(&lamps[at], path, properties));
    CMReturnDone(result);
    CMReturn(CMPI_RC_OK);
}

static CMPIStatus LampGetInstance(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                  const CMPIObjectPath* path, const char** properties) {
    const struct lamp* lamp = lamp_of(path);
    (void)mi, (void)context;
    if (lamp == NULL)
        CMReturnWithChars(broker, CMPI_RC_ERR_NOT_FOUND, "there is no lamp of this name");
    CMReturnInstance(result, instance_of(lamp, path, properties));
    CMReturnDone(result);
    CMReturn(CMPI_RC_OK);
}

static CMPIStatus LampCreateInstance(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                     const CMPIObjectPath* path, const CMPIInstance* instance) {
    (void)mi, (void)context, (void)result, (void)path, (void)instance;
    CMReturn(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus LampModifyInstance(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                     const CMPIObjectPath* path, const CMPIInstance* instance,
                                     const char** properties) {
    (void)mi, (void)context, (void)result, (void)path, (void)instance, (void)properties;
    CMReturn(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus LampDeleteInstance(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                     const CMPIObjectPath* path) {
    (void)mi, (void)context, (void)result, (void)path;
    CMReturn(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus LampExecQuery(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                const CMPIObjectPath* path, const char* query, const char* language) {
    (void)mi, (void)context, (void)result, (void)path, (void)query, (void)language;
    CMReturn(CMPI_RC_ERR_NOT_SUPPORTED);
}

/* ------------------------------------------------------------------------------------------------------ methods */

static CMPIStatus LampMethodCleanup(CMPIMethodMI* mi, const CMPIContext* context, CMPIBoolean terminating) {
    (void)mi, (void)context, (void)terminating;
    CMReturn(CMPI_RC_OK);
}

/* Switch(On) returns 0. */
static CMPIStatus LampInvokeMethod(CMPIMethodMI* mi, const CMPIContext* context, const CMPIResult* result,
                                   const CMPIObjectPath* path, const char* method, const CMPIArgs* in, CMPIArgs* out) {
    struct lamp* lamp = lamp_of(path);
    CMPIValue value = {.uint32 = 0};
    (void)mi, (void)context, (void)out;
    if (strcmp(method, "Switch") != 0)
        CMReturn(CMPI_RC_ERR_METHOD_NOT_FOUND);
    if (lamp == NULL)
        CMReturnWithChars(broker, CMPI_RC_ERR_NOT_FOUND, "there is no lamp of this name");
    const CMPIData on = CMGetArg(in, "On", NULL);
    if (on.type != CMPI_boolean || CMIsNullValue(on))
        CMReturnWithChars(broker, CMPI_RC_ERR_INVALID_PARAMETER, "On: expected a boolean");
    lamp->is_on = on.value.boolean;
    CMReturnData(result, &value, CMPI_uint32);
    CMReturnDone(result);
    CMReturn(CMPI_RC_OK);
}

/* Lamp_Create_InstanceMI() and Lamp_Create_MethodMI(), which servers look for. */
CMInstanceMIStub(Lamp, Lamp, broker, CMNoHook) CMMethodMIStub(Lamp, Lamp, broker, CMNoHook)
