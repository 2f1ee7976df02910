/*
 * CMPI convenience macros: a call through a function table, written as the standard names it. Only those that
 * providers of version 100 commonly use.
 */
#ifndef CMPI_CMPIMACS_H
#define CMPI_CMPIMACS_H

#include "cmpidt.h"
#include "cmpift.h"

/* Broker: new objects. They belong to the broker and live until the end of the MI call. */
#define CMNewInstance(broker, path, status) ((broker)->eft->newInstance((broker), (path), (status)))
#define CMNewObjectPath(broker, ns, class_name, status)                                                                \
    ((broker)->eft->newObjectPath((broker), (ns), (class_name), (status)))
#define CMNewString(broker, text, status) ((broker)->eft->newString((broker), (text), (status)))

/* Strings. */
#define CMGetCharsPtr(string, status) ((string)->ft->getCharPtr((string), (status)))

/* Instances. */
#define CMSetProperty(instance, name, value, type)                                                                     \
    ((instance)->ft->setProperty((instance), (name), (CMPIValue*)(value), (type)))
#define CMGetProperty(instance, name, status) ((instance)->ft->getProperty((instance), (name), (status)))
#define CMSetPropertyFilter(instance, properties, keys)                                                                \
    ((instance)->ft->setPropertyFilter((instance), (properties), (keys)))

/* Object paths. */
#define CMAddKey(path, name, value, type) ((path)->ft->addKey((path), (name), (CMPIValue*)(value), (type)))
#define CMGetKey(path, name, status) ((path)->ft->getKey((path), (name), (status)))
#define CMGetKeyAt(path, index, name, status) ((path)->ft->getKeyAt((path), (index), (name), (status)))
#define CMGetKeyCount(path, status) ((path)->ft->getKeyCount((path), (status)))
#define CMGetClassName(path, status) ((path)->ft->getClassName((path), (status)))
#define CMGetNameSpace(path, status) ((path)->ft->getNameSpace((path), (status)))
#define CMGetHostname(path, status) ((path)->ft->getHostname((path), (status)))
#define CMSetHostname(path, name) ((path)->ft->setHostname((path), (name)))

/* Results. */
#define CMReturnInstance(result, instance) ((result)->ft->returnInstance((result), (instance)))
#define CMReturnObjectPath(result, path) ((result)->ft->returnObjectPath((result), (path)))
#define CMReturnDone(result) ((result)->ft->returnDone((result)))

#endif
