/*
 * A well-behaved provider in plain C for the tests of the host. What it answers hangs on the class it is asked for:
 *
 *   Test_Thing    three instances with values of every kind, keys Name and Number
 *   Test_Pair     two paths and instances with references
 *   Test_Echo     one instance that tells what arrived: path, property list, filters, query, context
 *   Test_Results  one good, two null and one invalid result
 *   Test_Broken   one instance or path, then ERR_FAILED with a message
 *   Test_Swapped  a path where instances are asked for
 *   Test_Note     nothing, rc OK with a message
 *   Test_Codes    an rc that the standard does not know
 *   any other     ERR_INVALID_CLASS with a message
 *
 * and for methods, of any class, on the method:
 *
 *   Add           the sum of A and B, and as output parameters Text, what was added, and Where, the object
 *   Quiet         nothing
 *   any other     ERR_METHOD_NOT_FOUND
 */
#include "cmpidt.h"
#include "cmpift.h"
#include "cmpimacs.h"

#include <stdio.h>
#include <string.h>

#define EXPORT __attribute__((visibility("default")))

static const CMPIBroker* broker;

static CMPIStatus ok(void) {
    CMPIStatus status = {CMPI_RC_OK, NULL};
    return status;
}

static CMPIStatus with_message(CMPIrc rc, const char* text) {
    CMPIStatus status = {CMPI_RC_OK, NULL};
    status.rc = rc;
    status.msg = CMNewString(broker, text, NULL);
    return status;
}

static const char* text_of(CMPIString* string) {
    return string == NULL ? "(null)" : CMGetCharsPtr(string, NULL);
}

static const char* or_null(const char* text) {
    return text == NULL ? "(null)" : text;
}

static int is_class(const CMPIObjectPath* path, const char* name) {
    return strcmp(text_of(CMGetClassName(path, NULL)), name) == 0;
}

/* ---------------------------------------------------------------------------------------------------- Test_Thing */

static CMPIObjectPath* thing_path(const CMPIObjectPath* request, unsigned number) {
    char name[32];
    CMPIValue value;
    CMPIObjectPath* path = CMNewObjectPath(broker, text_of(CMGetNameSpace(request, NULL)), "Test_Thing", NULL);
    snprintf(name, sizeof name, number == 2 ? "a \"second\" thing" : "thing %u", number);
    CMSetHostname(path, "switch");
    CMAddKey(path, "Name", name, CMPI_chars);
    value.uint32 = number;
    CMAddKey(path, "Number", &value, CMPI_uint32);
    return path;
}

static void set_numbers(CMPIInstance* instance) {
    CMPIValue value;
    value.boolean = 1;
    CMSetProperty(instance, "Flag", &value, CMPI_boolean);
    value.uint8 = 255;
    CMSetProperty(instance, "U8", &value, CMPI_uint8);
    value.uint64 = 18446744073709551615ULL;
    CMSetProperty(instance, "U64", &value, CMPI_uint64);
    value.sint64 = -9223372036854775807LL - 1;
    CMSetProperty(instance, "S64", &value, CMPI_sint64);
    value.real64 = 2.5;
    CMSetProperty(instance, "Real", &value, CMPI_real64);
    value.char16 = 'A';
    CMSetProperty(instance, "Letter", &value, CMPI_char16);
}

static void set_others(CMPIInstance* instance) {
    CMPIValue value;
    CMPIValue element;
    CMSetProperty(instance, "Missing", NULL, CMPI_string);
    value.dateTime = broker->eft->newDateTimeFromChars(broker, "20260102030405.000006+060", NULL);
    CMSetProperty(instance, "Since", &value, CMPI_dateTime);
    value.array = broker->eft->newArray(broker, 2, CMPI_uint16, NULL);
    element.uint16 = 7;
    value.array->ft->setElementAt(value.array, 0, &element, CMPI_uint16);
    CMSetProperty(instance, "List", &value, CMPI_ARRAY | CMPI_uint16);
    CMSetProperty(instance, "Text", "tab\there", CMPI_chars);
}

static CMPIInstance* thing(const CMPIObjectPath* request, unsigned number, const char** properties) {
    CMPIInstance* instance = CMNewInstance(broker, thing_path(request, number), NULL);
    const char* keys[] = {"Name", NULL};
    CMSetPropertyFilter(instance, properties, keys);
    CMSetProperty(instance, "Name", "N", CMPI_chars);
    set_numbers(instance);
    set_others(instance);
    return instance;
}

/* ----------------------------------------------------------------------------------------------------- Test_Pair */

static CMPIObjectPath* pair_path(const CMPIObjectPath* request, unsigned number) {
    CMPIValue value;
    CMPIObjectPath* path = CMNewObjectPath(broker, text_of(CMGetNameSpace(request, NULL)), "Test_Pair", NULL);
    value.ref = thing_path(request, number);
    CMAddKey(path, "First", &value, CMPI_ref);
    value.ref = thing_path(request, number + 1);
    CMAddKey(path, "Second", &value, CMPI_ref);
    return path;
}

static CMPIInstance* pair(const CMPIObjectPath* request, unsigned number) {
    CMPIValue value;
    CMPIInstance* instance = CMNewInstance(broker, pair_path(request, number), NULL);
    value.ref = thing_path(request, number);
    CMSetProperty(instance, "First", &value, CMPI_ref);
    return instance;
}

/* ----------------------------------------------------------------------------------------------------- Test_Echo */

static void set_list(CMPIInstance* instance, const char** properties) {
    char text[256] = "";
    if (properties == NULL)
        strcpy(text, "(null)");
    for (; properties != NULL && *properties != NULL; ++properties) {
        strcat(text, *properties);
        strcat(text, ";");
    }
    CMSetProperty(instance, "Properties", text, CMPI_chars);
}

static CMPIInstance* echo(const char* operation, const CMPIContext* context, const CMPIObjectPath* request,
                          const char** properties) {
    CMPIValue value;
    CMPIInstance* instance = CMNewInstance(broker, request, NULL);
    CMPIData data = context->ft->getEntry(context, CMPIInitNameSpace, NULL);
    CMSetProperty(instance, "Operation", operation, CMPI_chars);
    value.string = request->ft->toString(request, NULL);
    CMSetProperty(instance, "Path", &value, CMPI_string);
    CMSetProperty(instance, "InitNameSpace", &data.value, data.type);
    set_list(instance, properties);
    return instance;
}

/* ---------------------------------------------------------------------------------------------------- Instance MI */

static CMPIStatus cleanup_instances(CMPIInstanceMI* mi, const CMPIContext* context, CMPIBoolean terminating) {
    (void)mi;
    (void)context;
    printf("cleanup of instances, terminating %d\n", terminating);
    return ok();
}

static CMPIStatus unknown_class(const CMPIObjectPath* path) {
    char text[128];
    snprintf(text, sizeof text, "no class %s", text_of(CMGetClassName(path, NULL)));
    return with_message(CMPI_RC_ERR_INVALID_CLASS, text);
}

static CMPIStatus odd_results(const CMPIResult* result, const CMPIObjectPath* path) {
    CMReturnInstance(result, NULL);
    CMReturnInstance(result, thing(path, 1, NULL));
    CMReturnInstance(result, NULL);
    CMReturnInstance(result, (const CMPIInstance*)-1);
    return ok();
}

static CMPIStatus enumerate_instance_names(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                           const CMPIObjectPath* path) {
    unsigned number;
    (void)mi;
    (void)context;
    printf("Entering names\n");
    if (is_class(path, "Test_Thing"))
        for (number = 1; number <= 3; ++number)
            CMReturnObjectPath(result, thing_path(path, number));
    else if (is_class(path, "Test_Pair"))
        for (number = 1; number <= 2; ++number)
            CMReturnObjectPath(result, pair_path(path, number));
    else if (is_class(path, "Test_Broken")) {
        CMReturnObjectPath(result, thing_path(path, 1));
        return with_message(CMPI_RC_ERR_FAILED, "broke off");
    } else
        return unknown_class(path);
    CMReturnDone(result);
    return ok();
}

static CMPIStatus enumerate_instances(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                      const CMPIObjectPath* path, const char** properties) {
    unsigned number;
    (void)mi;
    printf("Entering instances\n");
    if (is_class(path, "Test_Thing"))
        for (number = 1; number <= 3; ++number)
            CMReturnInstance(result, thing(path, number, properties));
    else if (is_class(path, "Test_Pair"))
        CMReturnInstance(result, pair(path, 1));
    else if (is_class(path, "Test_Echo"))
        CMReturnInstance(result, echo("enumerateInstances", context, path, properties));
    else if (is_class(path, "Test_Results"))
        return odd_results(result, path);
    else if (is_class(path, "Test_Swapped"))
        CMReturnObjectPath(result, thing_path(path, 1));
    else if (is_class(path, "Test_Broken")) {
        CMReturnInstance(result, thing(path, 1, properties));
        return with_message(CMPI_RC_ERR_FAILED, "broke off");
    } else if (is_class(path, "Test_Note"))
        return with_message(CMPI_RC_OK, "nothing to see");
    else if (is_class(path, "Test_Codes"))
        return with_message((CMPIrc)4711, "");
    else
        return unknown_class(path);
    CMReturnDone(result);
    return ok();
}

static CMPIStatus get_instance(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                               const CMPIObjectPath* path, const char** properties) {
    (void)mi;
    if (is_class(path, "Test_Echo"))
        CMReturnInstance(result, echo("getInstance", context, path, properties));
    else if (is_class(path, "Test_Thing"))
        CMReturnInstance(result, thing(path, 1, properties));
    else
        return unknown_class(path);
    CMReturnDone(result);
    return ok();
}

static CMPIStatus create_instance(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                  const CMPIObjectPath* path, const CMPIInstance* instance) {
    (void)mi;
    (void)context;
    CMPIObjectPath* created = instance->ft->getObjectPath(instance, NULL);
    unsigned at;
    for (at = 0; at < instance->ft->getPropertyCount(instance, NULL); ++at) {
        CMPIString* name = NULL;
        CMPIData data = instance->ft->getPropertyAt(instance, at, &name, NULL);
        CMAddKey(created, text_of(name), &data.value, data.type);
    }
    CMReturnObjectPath(result, created);
    (void)path;
    CMReturnDone(result);
    return ok();
}

static CMPIStatus modify_instance(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                  const CMPIObjectPath* path, const CMPIInstance* instance, const char** properties) {
    (void)mi;
    (void)instance;
    CMReturnInstance(result, echo("modifyInstance", context, path, properties));
    return ok();
}

static CMPIStatus delete_instance(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                                  const CMPIObjectPath* path) {
    CMPIStatus status = {CMPI_RC_ERR_NOT_SUPPORTED, NULL};
    (void)mi;
    (void)context;
    (void)result;
    (void)path;
    return status;
}

static CMPIStatus exec_query(CMPIInstanceMI* mi, const CMPIContext* context, const CMPIResult* result,
                             const CMPIObjectPath* path, const char* query, const char* language) {
    CMPIInstance* instance = echo("execQuery", context, path, NULL);
    (void)mi;
    CMSetProperty(instance, "Query", query, CMPI_chars);
    CMSetProperty(instance, "Language", language, CMPI_chars);
    CMReturnInstance(result, instance);
    CMReturnDone(result);
    return ok();
}

/* ------------------------------------------------------------------------------------------------- Association MI */

static CMPIStatus cleanup_associations(CMPIAssociationMI* mi, const CMPIContext* context, CMPIBoolean terminating) {
    (void)mi;
    (void)context;
    printf("cleanup of associations, terminating %d\n", terminating);
    return ok();
}

static void set_filters(CMPIInstance* instance, const char* ac, const char* arc, const char* ar, const char* arr) {
    char text[256];
    snprintf(text, sizeof text, "%s|%s|%s|%s", or_null(ac), or_null(arc), or_null(ar), or_null(arr));
    CMSetProperty(instance, "Filters", text, CMPI_chars);
}

static CMPIStatus associators(CMPIAssociationMI* mi, const CMPIContext* context, const CMPIResult* result,
                              const CMPIObjectPath* path, const char* ac, const char* arc, const char* ar,
                              const char* arr, const char** properties) {
    CMPIInstance* instance = echo("associators", context, path, properties);
    (void)mi;
    set_filters(instance, ac, arc, ar, arr);
    CMReturnInstance(result, instance);
    CMReturnDone(result);
    return ok();
}

/* The names carry the filters as keys: an instance has nowhere to go in this operation. */
static CMPIStatus associator_names(CMPIAssociationMI* mi, const CMPIContext* context, const CMPIResult* result,
                                   const CMPIObjectPath* path, const char* ac, const char* arc, const char* ar,
                                   const char* arr) {
    CMPIObjectPath* answer = CMNewObjectPath(broker, "root/test", "Test_Filters", NULL);
    (void)mi;
    (void)context;
    CMAddKey(answer, "AC", or_null(ac), CMPI_chars);
    CMAddKey(answer, "ARC", or_null(arc), CMPI_chars);
    CMAddKey(answer, "AR", or_null(ar), CMPI_chars);
    CMAddKey(answer, "ARR", or_null(arr), CMPI_chars);
    CMReturnObjectPath(result, answer);
    CMReturnObjectPath(result, thing_path(path, 1));
    CMReturnDone(result);
    return ok();
}

static CMPIStatus references(CMPIAssociationMI* mi, const CMPIContext* context, const CMPIResult* result,
                             const CMPIObjectPath* path, const char* arc, const char* ar, const char** properties) {
    CMPIInstance* instance = echo("references", context, path, properties);
    (void)mi;
    set_filters(instance, NULL, arc, ar, NULL);
    CMReturnInstance(result, instance);
    CMReturnDone(result);
    return ok();
}

static CMPIStatus reference_names(CMPIAssociationMI* mi, const CMPIContext* context, const CMPIResult* result,
                                  const CMPIObjectPath* path, const char* arc, const char* ar) {
    CMPIObjectPath* answer = pair_path(path, 1);
    (void)mi;
    (void)context;
    CMAddKey(answer, "ARC", or_null(arc), CMPI_chars);
    CMAddKey(answer, "AR", or_null(ar), CMPI_chars);
    CMReturnObjectPath(result, answer);
    CMReturnDone(result);
    return ok();
}

/* ------------------------------------------------------------------------------------------------------ Method MI */

static CMPIStatus cleanup_methods(CMPIMethodMI* mi, const CMPIContext* context, CMPIBoolean terminating) {
    (void)mi;
    (void)context;
    printf("cleanup of methods, terminating %d\n", terminating);
    return ok();
}

static CMPIStatus add(const CMPIResult* result, const CMPIObjectPath* path, const CMPIArgs* in, CMPIArgs* out) {
    CMPIData a = in->ft->getArg(in, "A", NULL);
    CMPIData b = in->ft->getArg(in, "B", NULL);
    CMPIValue value;
    char text[64];
    snprintf(text, sizeof text, "%llu and %llu", (unsigned long long)a.value.uint64,
             (unsigned long long)b.value.uint64);
    out->ft->addArg(out, "Text", (const CMPIValue*)text, CMPI_chars);
    value.string = path->ft->toString(path, NULL);
    out->ft->addArg(out, "Where", &value, CMPI_string);
    value.uint64 = a.value.uint64 + b.value.uint64;
    return result->ft->returnData(result, &value, CMPI_uint64);
}

static CMPIStatus invoke_method(CMPIMethodMI* mi, const CMPIContext* context, const CMPIResult* result,
                                const CMPIObjectPath* path, const char* method, const CMPIArgs* in, CMPIArgs* out) {
    CMPIStatus status = {CMPI_RC_ERR_METHOD_NOT_FOUND, NULL};
    (void)mi;
    (void)context;
    if (strcmp(method, "Add") == 0)
        return add(result, path, in, out);
    return strcmp(method, "Quiet") == 0 ? ok() : status;
}

static const CMPIInstanceMIFT instance_table = {
    CMPIVersion100,           CMPIVersion100,      "instanceGood", cleanup_instances,
    enumerate_instance_names, enumerate_instances, get_instance,   create_instance,
    modify_instance,          delete_instance,     exec_query,
};
static const CMPIAssociationMIFT association_table = {
    CMPIVersion100, CMPIVersion100,   "associationGood", cleanup_associations,
    associators,    associator_names, references,        reference_names,
};

static const CMPIMethodMIFT method_table = {
    CMPIVersion100, CMPIVersion100, "methodGood", cleanup_methods, invoke_method,
};

EXPORT CMPIInstanceMI* Good_Create_InstanceMI(const CMPIBroker* given, const CMPIContext* context) {
    static CMPIInstanceMI mi = {NULL, &instance_table};
    (void)context;
    broker = given;
    printf("factory of instances\n");
    return &mi;
}

EXPORT CMPIAssociationMI* Good_Create_AssociationMI(const CMPIBroker* given, const CMPIContext* context) {
    static CMPIAssociationMI mi = {NULL, &association_table};
    (void)context;
    broker = given;
    printf("factory of associations\n");
    return &mi;
}

EXPORT CMPIMethodMI* Good_Create_MethodMI(const CMPIBroker* given, const CMPIContext* context) {
    static CMPIMethodMI mi = {NULL, &method_table};
    (void)context;
    broker = given;
    printf("factory of methods\n");
    return &mi;
}

/* The same instance MI alone, without an association MI. */
EXPORT CMPIInstanceMI* Half_Create_InstanceMI(const CMPIBroker* given, const CMPIContext* context) {
    return Good_Create_InstanceMI(given, context);
}
