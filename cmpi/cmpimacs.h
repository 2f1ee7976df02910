/*
 * CMPI convenience macros as the standard names them: calls through the function tables, returns with a status, and the
 * tables and factories of a provider.
 */
#ifndef CMPI_CMPIMACS_H
#define CMPI_CMPIMACS_H

#include "cmpidt.h"
#include "cmpift.h"

#include <stddef.h>

#ifdef __cplusplus
#define CMPI_EXTERN_C extern "C" __attribute__((visibility("default")))
#else
#define CMPI_EXTERN_C __attribute__((visibility("default")))
#endif

/* Broker: new objects. They belong to the broker and live until the end of the MI call. */
#define CMNewInstance(broker, path, status) ((broker)->eft->newInstance((broker), (path), (status)))
#define CMNewObjectPath(broker, ns, class_name, status)                                                                \
    ((broker)->eft->newObjectPath((broker), (ns), (class_name), (status)))
#define CMNewArgs(broker, status) ((broker)->eft->newArgs((broker), (status)))
#define CMNewString(broker, text, status) ((broker)->eft->newString((broker), (text), (status)))
#define CMNewArray(broker, size, type, status) ((broker)->eft->newArray((broker), (size), (type), (status)))
#define CMNewDateTime(broker, status) ((broker)->eft->newDateTime((broker), (status)))
#define CMNewDateTimeFromBinary(broker, microseconds, is_interval, status)                                             \
    ((broker)->eft->newDateTimeFromBinary((broker), (microseconds), (is_interval), (status)))
#define CMNewDateTimeFromChars(broker, text, status) ((broker)->eft->newDateTimeFromChars((broker), (text), (status)))
#define CMNewSelectExp(broker, query, language, projection, status)                                                    \
    ((broker)->eft->newSelectExp((broker), (query), (language), (projection), (status)))

/* Broker: questions about objects, messages. */
#define CMClassPathIsA(broker, path, class_name, status)                                                               \
    ((broker)->eft->classPathIsA((broker), (path), (class_name), (status)))
#define CMObjectToString(broker, object, status) ((broker)->eft->toString((broker), (object), (status)))
#define CMObjectIsOfType(broker, object, type_name, status)                                                            \
    ((broker)->eft->isOfType((broker), (object), (type_name), (status)))
#define CMGetObjectType(broker, object, status) ((broker)->eft->getType((broker), (object), (status)))
#define CMLogMessage(broker, severity, id, text, string)                                                               \
    ((broker)->eft->logMessage((broker), (severity), (id), (text), (string)))
#define CMTraceMessage(broker, level, component, text, string)                                                         \
    ((broker)->eft->trace((broker), (level), (component), (text), (string)))

/* Broker: requests to other providers. */
#define CBGetInstance(broker, context, path, properties, status)                                                       \
    ((broker)->bft->getInstance((broker), (context), (path), (properties), (status)))
#define CBCreateInstance(broker, context, path, instance, status)                                                      \
    ((broker)->bft->createInstance((broker), (context), (path), (instance), (status)))
#define CBModifyInstance(broker, context, path, instance, properties)                                                  \
    ((broker)->bft->modifyInstance((broker), (context), (path), (instance), (properties)))
#define CBDeleteInstance(broker, context, path) ((broker)->bft->deleteInstance((broker), (context), (path)))
#define CBExecQuery(broker, context, path, query, language, status)                                                    \
    ((broker)->bft->execQuery((broker), (context), (path), (query), (language), (status)))
#define CBEnumInstanceNames(broker, context, path, status)                                                             \
    ((broker)->bft->enumerateInstanceNames((broker), (context), (path), (status)))
#define CBEnumInstances(broker, context, path, properties, status)                                                     \
    ((broker)->bft->enumerateInstances((broker), (context), (path), (properties), (status)))
#define CBAssociators(broker, context, path, assoc_class, result_class, role, result_role, properties, status)         \
    ((broker)->bft->associators((broker), (context), (path), (assoc_class), (result_class), (role), (result_role),     \
                                (properties), (status)))
#define CBAssociatorNames(broker, context, path, assoc_class, result_class, role, result_role, status)                 \
    ((broker)->bft->associatorNames((broker), (context), (path), (assoc_class), (result_class), (role), (result_role), \
                                    (status)))
#define CBReferences(broker, context, path, result_class, role, properties, status)                                    \
    ((broker)->bft->references((broker), (context), (path), (result_class), (role), (properties), (status)))
#define CBReferenceNames(broker, context, path, result_class, role, status)                                            \
    ((broker)->bft->referenceNames((broker), (context), (path), (result_class), (role), (status)))
#define CBInvokeMethod(broker, context, path, method, in, out, status)                                                 \
    ((broker)->bft->invokeMethod((broker), (context), (path), (method), (in), (out), (status)))
#define CBSetProperty(broker, context, path, name, value, type)                                                        \
    ((broker)->bft->setProperty((broker), (context), (path), (name), (const CMPIValue*)(value), (type)))
#define CBGetProperty(broker, context, path, name, status)                                                             \
    ((broker)->bft->getProperty((broker), (context), (path), (name), (status)))
#define CBDeliverIndication(broker, context, ns, indication)                                                           \
    ((broker)->bft->deliverIndication((broker), (context), (ns), (indication)))
#define CBPrepareAttachThread(broker, context) ((broker)->bft->prepareAttachThread((broker), (context)))
#define CBAttachThread(broker, context) ((broker)->bft->attachThread((broker), (context)))
#define CBDetachThread(broker, context) ((broker)->bft->detachThread((broker), (context)))

/* Objects of any type. */
#define CMClone(object, status) ((object)->ft->clone((object), (status)))
#define CMRelease(object) ((object)->ft->release((object)))
#define CMIsNullObject(object) ((object) == NULL || (object)->hdl == NULL)
#define CMIsNullValue(data) (((data).state & CMPI_nullValue) != 0)
#define CMIsKeyValue(data) (((data).state & CMPI_keyValue) != 0)
#define CMIsArray(data) (((data).type & CMPI_ARRAY) != 0)

/* Strings. */
#define CMGetCharsPtr(string, status) ((string)->ft->getCharPtr((string), (status)))
#define CMGetCharPtr(string) ((string)->ft->getCharPtr((string), NULL))

/* Arrays. */
#define CMGetArrayCount(array, status) ((array)->ft->getSize((array), (status)))
#define CMGetArrayType(array, status) ((array)->ft->getSimpleType((array), (status)))
#define CMGetArrayElementAt(array, index, status) ((array)->ft->getElementAt((array), (index), (status)))
#define CMSetArrayElementAt(array, index, value, type)                                                                 \
    ((array)->ft->setElementAt((array), (index), (const CMPIValue*)(value), (type)))

/* Enumerations. */
#define CMGetNext(enumeration, status) ((enumeration)->ft->getNext((enumeration), (status)))
#define CMHasNext(enumeration, status) ((enumeration)->ft->hasNext((enumeration), (status)))
#define CMToArray(enumeration, status) ((enumeration)->ft->toArray((enumeration), (status)))

/* Date-times. */
#define CMGetBinaryFormat(date_time, status) ((date_time)->ft->getBinaryFormat((date_time), (status)))
#define CMGetStringFormat(date_time, status) ((date_time)->ft->getStringFormat((date_time), (status)))
#define CMIsInterval(date_time, status) ((date_time)->ft->isInterval((date_time), (status)))

/* Instances. */
#define CMSetProperty(instance, name, value, type)                                                                     \
    ((instance)->ft->setProperty((instance), (name), (const CMPIValue*)(value), (type)))
#define CMGetProperty(instance, name, status) ((instance)->ft->getProperty((instance), (name), (status)))
#define CMGetPropertyAt(instance, index, name, status)                                                                 \
    ((instance)->ft->getPropertyAt((instance), (index), (name), (status)))
#define CMGetPropertyCount(instance, status) ((instance)->ft->getPropertyCount((instance), (status)))
#define CMGetObjectPath(instance, status) ((instance)->ft->getObjectPath((instance), (status)))
#define CMSetObjectPath(instance, path) ((instance)->ft->setObjectPath((instance), (path)))
#define CMSetPropertyFilter(instance, properties, keys)                                                                \
    ((instance)->ft->setPropertyFilter((instance), (properties), (keys)))

/* Object paths. */
#define CMAddKey(path, name, value, type) ((path)->ft->addKey((path), (name), (const CMPIValue*)(value), (type)))
#define CMGetKey(path, name, status) ((path)->ft->getKey((path), (name), (status)))
#define CMGetKeyAt(path, index, name, status) ((path)->ft->getKeyAt((path), (index), (name), (status)))
#define CMGetKeyCount(path, status) ((path)->ft->getKeyCount((path), (status)))
#define CMGetClassName(path, status) ((path)->ft->getClassName((path), (status)))
#define CMSetClassName(path, name) ((path)->ft->setClassName((path), (name)))
#define CMGetNameSpace(path, status) ((path)->ft->getNameSpace((path), (status)))
#define CMSetNameSpace(path, name) ((path)->ft->setNameSpace((path), (name)))
#define CMGetHostname(path, status) ((path)->ft->getHostname((path), (status)))
#define CMSetHostname(path, name) ((path)->ft->setHostname((path), (name)))
#define CMSetNameSpaceFromObjectPath(path, other) ((path)->ft->setNameSpaceFromObjectPath((path), (other)))
#define CMSetHostAndNameSpaceFromObjectPath(path, other)                                                               \
    ((path)->ft->setHostAndNameSpaceFromObjectPath((path), (other)))
#define CMGetClassQualifier(path, qualifier, status) ((path)->ft->getClassQualifier((path), (qualifier), (status)))
#define CMGetPropertyQualifier(path, property, qualifier, status)                                                      \
    ((path)->ft->getPropertyQualifier((path), (property), (qualifier), (status)))
#define CMGetMethodQualifier(path, method, qualifier, status)                                                          \
    ((path)->ft->getMethodQualifier((path), (method), (qualifier), (status)))
#define CMGetParameterQualifier(path, method, parameter, qualifier, status)                                            \
    ((path)->ft->getParameterQualifier((path), (method), (parameter), (qualifier), (status)))

/* Arguments of methods. */
#define CMAddArg(args, name, value, type) ((args)->ft->addArg((args), (name), (const CMPIValue*)(value), (type)))
#define CMGetArg(args, name, status) ((args)->ft->getArg((args), (name), (status)))
#define CMGetArgAt(args, index, name, status) ((args)->ft->getArgAt((args), (index), (name), (status)))
#define CMGetArgCount(args, status) ((args)->ft->getArgCount((args), (status)))

/* Contexts. */
#define CMAddContextEntry(context, name, value, type)                                                                  \
    ((context)->ft->addEntry((context), (name), (const CMPIValue*)(value), (type)))
#define CMGetContextEntry(context, name, status) ((context)->ft->getEntry((context), (name), (status)))
#define CMGetContextEntryAt(context, index, name, status)                                                              \
    ((context)->ft->getEntryAt((context), (index), (name), (status)))
#define CMGetContextEntryCount(context, status) ((context)->ft->getEntryCount((context), (status)))

/* Results. */
#define CMReturnData(result, value, type) ((result)->ft->returnData((result), (const CMPIValue*)(value), (type)))
#define CMReturnInstance(result, instance) ((result)->ft->returnInstance((result), (instance)))
#define CMReturnObjectPath(result, path) ((result)->ft->returnObjectPath((result), (path)))
#define CMReturnDone(result) ((result)->ft->returnDone((result)))

/* Statuses: in a variable, or as what the function returns. */
#define CMSetStatus(status, code)                                                                                      \
    do {                                                                                                               \
        (status)->rc = (code);                                                                                         \
        (status)->msg = NULL;                                                                                          \
    } while (0)
#define CMSetStatusWithString(status, code, string)                                                                    \
    do {                                                                                                               \
        (status)->rc = (code);                                                                                         \
        (status)->msg = (string);                                                                                      \
    } while (0)
#define CMSetStatusWithChars(broker, status, code, text)                                                               \
    CMSetStatusWithString((status), (code), CMNewString((broker), (text), NULL))
#define CMReturn(code)                                                                                                 \
    do {                                                                                                               \
        CMPIStatus returned_status;                                                                                    \
        CMSetStatus(&returned_status, (code));                                                                         \
        return returned_status;                                                                                        \
    } while (0)
#define CMReturnWithString(code, string)                                                                               \
    do {                                                                                                               \
        CMPIStatus returned_status;                                                                                    \
        CMSetStatusWithString(&returned_status, (code), (string));                                                     \
        return returned_status;                                                                                        \
    } while (0)
#define CMReturnWithChars(broker, code, text) CMReturnWithString((code), CMNewString((broker), (text), NULL))

/*
 * The table and the factory of an MI. The functions in it have the names prefix##Cleanup and so on, as they stand
 * below. `name` is the provider's, by which a broker finds the factory; `broker` is the variable that is given the
 * broker; `hook` is a statement that the factory executes then, or CMNoHook.
 */
#define CMNoHook ((void)0)

#define CMFactoryStub(kind, name, table, broker, hook)                                                                 \
    CMPI_EXTERN_C CMPI##kind##MI* name##_Create_##kind##MI(const CMPIBroker* given_broker, const CMPIContext* context, \
                                                           CMPIStatus* status);                                        \
    CMPI_EXTERN_C CMPI##kind##MI* name##_Create_##kind##MI(const CMPIBroker* given_broker, const CMPIContext* context, \
                                                           CMPIStatus* status) {                                       \
        static CMPI##kind##MI mi = {NULL, &table};                                                                     \
        (void)context;                                                                                                 \
        (void)status;                                                                                                  \
        broker = given_broker;                                                                                         \
        hook;                                                                                                          \
        return &mi;                                                                                                    \
    }

#define CMInstanceMIStub(prefix, name, broker, hook)                                                                   \
    static const CMPIInstanceMIFT name##_instance_table = {                                                            \
        CMPICurrentVersion,        CMPICurrentVersion,     "instance" #name,    prefix##Cleanup,                       \
        prefix##EnumInstanceNames, prefix##EnumInstances,  prefix##GetInstance, prefix##CreateInstance,                \
        prefix##ModifyInstance,    prefix##DeleteInstance, prefix##ExecQuery};                                         \
    CMFactoryStub(Instance, name, name##_instance_table, broker, hook)

#define CMAssociationMIStub(prefix, name, broker, hook)                                                                \
    static const CMPIAssociationMIFT name##_association_table = {                                                      \
        CMPICurrentVersion,  CMPICurrentVersion,      "association" #name, prefix##AssociationCleanup,                 \
        prefix##Associators, prefix##AssociatorNames, prefix##References,  prefix##ReferenceNames};                    \
    CMFactoryStub(Association, name, name##_association_table, broker, hook)

#define CMMethodMIStub(prefix, name, broker, hook)                                                                     \
    static const CMPIMethodMIFT name##_method_table = {CMPICurrentVersion, CMPICurrentVersion, "method" #name,         \
                                                       prefix##MethodCleanup, prefix##InvokeMethod};                   \
    CMFactoryStub(Method, name, name##_method_table, broker, hook)

#define CMPropertyMIStub(prefix, name, broker, hook)                                                                   \
    static const CMPIPropertyMIFT name##_property_table = {CMPICurrentVersion,  CMPICurrentVersion,                    \
                                                           "property" #name,    prefix##PropertyCleanup,               \
                                                           prefix##SetProperty, prefix##GetProperty};                  \
    CMFactoryStub(Property, name, name##_property_table, broker, hook)

#endif
