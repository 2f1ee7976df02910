/* CMPI convenience calls of the set in this folder, see cmpidt.h. */
#ifndef LATER_CMPIMACS_H
#define LATER_CMPIMACS_H

#include "cmpift.h"

static inline CMPIInstance* CMNewInstance(const CMPIBroker* broker, const CMPIObjectPath* path, CMPIStatus* status) {
    return broker->eft->newInstance(broker, path, status);
}

static inline CMPIObjectPath* CMNewObjectPath(const CMPIBroker* broker, const char* ns, const char* class_name,
                                              CMPIStatus* status) {
    return broker->eft->newObjectPath(broker, ns, class_name, status);
}

static inline CMPIString* CMNewString(const CMPIBroker* broker, const char* text, CMPIStatus* status) {
    return broker->eft->newString(broker, text, status);
}

static inline const char* CMGetCharsPtr(const CMPIString* string, CMPIStatus* status) {
    return string->ft->getCharPtr(string, status);
}

static inline CMPIStatus CMSetProperty(const CMPIInstance* instance, const char* name, const CMPIValue* value,
                                       CMPIType type) {
    return instance->ft->setProperty(instance, name, value, type);
}

static inline CMPIStatus CMSetPropertyFilter(CMPIInstance* instance, const char** properties, char** keys) {
    return instance->ft->setPropertyFilter(instance, properties, keys);
}

static inline CMPIStatus CMAddKey(const CMPIObjectPath* path, const char* name, const CMPIValue* value, CMPIType type) {
    return path->ft->addKey(path, name, value, type);
}

static inline CMPIData CMGetKeyAt(const CMPIObjectPath* path, CMPICount index, CMPIString** name, CMPIStatus* status) {
    return path->ft->getKeyAt(path, index, name, status);
}

static inline CMPICount CMGetKeyCount(const CMPIObjectPath* path, CMPIStatus* status) {
    return path->ft->getKeyCount(path, status);
}

static inline CMPIString* CMGetClassName(const CMPIObjectPath* path, CMPIStatus* status) {
    return path->ft->getClassName(path, status);
}

static inline CMPIString* CMGetNameSpace(const CMPIObjectPath* path, CMPIStatus* status) {
    return path->ft->getNameSpace(path, status);
}

static inline CMPIStatus CMSetHostname(const CMPIObjectPath* path, const char* host) {
    return path->ft->setHostname(path, host);
}

static inline CMPIStatus CMReturnInstance(const CMPIResult* result, const CMPIInstance* instance) {
    return result->ft->returnInstance(result, instance);
}

static inline CMPIStatus CMReturnObjectPath(const CMPIResult* result, const CMPIObjectPath* path) {
    return result->ft->returnObjectPath(result, path);
}

#endif
