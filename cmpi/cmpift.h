/*
 * CMPI function tables: what a broker offers (CMPIBrokerFT, CMPIBrokerEncFT and the tables of the encapsulated types)
 * and what a provider offers (CMPIInstanceMIFT, CMPIAssociationMIFT, CMPIMethodMIFT, CMPIPropertyMIFT).
 *
 * The order of the members is the binary interface; tests/cmpi holds every offset against the standard's.
 */
#ifndef CMPI_CMPIFT_H
#define CMPI_CMPIFT_H

#include "cmpidt.h"

#ifdef __cplusplus
extern "C" {
#endif

struct _CMPIBroker {
    const void* hdl;
    const CMPIBrokerFT* bft;
    const CMPIBrokerEncFT* eft;
    const CMPIBrokerExtFT* xft;
};

struct _CMPIBrokerFT {
    unsigned int brokerCapabilities;
    CMPIVersion brokerVersion;
    const char* brokerName;
    CMPIContext* (*prepareAttachThread)(const CMPIBroker*, const CMPIContext*);
    CMPIStatus (*attachThread)(const CMPIBroker*, const CMPIContext*);
    CMPIStatus (*detachThread)(const CMPIBroker*, const CMPIContext*);
    CMPIStatus (*deliverIndication)(const CMPIBroker*, const CMPIContext*, const char*, const CMPIInstance*);
    CMPIEnumeration* (*enumerateInstanceNames)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*,
                                               CMPIStatus*);
    CMPIInstance* (*getInstance)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char**,
                                 CMPIStatus*);
    CMPIObjectPath* (*createInstance)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const CMPIInstance*,
                                      CMPIStatus*);
    CMPIStatus (*modifyInstance)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const CMPIInstance*,
                                 const char**);
    CMPIStatus (*deleteInstance)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*);
    CMPIEnumeration* (*execQuery)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                                  const char*, CMPIStatus*);
    CMPIEnumeration* (*enumerateInstances)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char**,
                                           CMPIStatus*);
    CMPIEnumeration* (*associators)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                                    const char*, const char*, const char*, const char**, CMPIStatus*);
    CMPIEnumeration* (*associatorNames)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                                        const char*, const char*, const char*, CMPIStatus*);
    CMPIEnumeration* (*references)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                                   const char*, const char**, CMPIStatus*);
    CMPIEnumeration* (*referenceNames)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                                       const char*, CMPIStatus*);
    CMPIData (*invokeMethod)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*, const CMPIArgs*,
                             CMPIArgs*, CMPIStatus*);
    CMPIStatus (*setProperty)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                              const CMPIValue*, CMPIType);
    CMPIData (*getProperty)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*, CMPIStatus*);
    CMPIEnumeration* (*enumerateInstancesFiltered)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*,
                                                   const char**, const char*, const char*, CMPIStatus*);
    CMPIEnumeration* (*associatorsFiltered)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                                            const char*, const char*, const char*, const char**, const char*,
                                            const char*, CMPIStatus*);
    CMPIEnumeration* (*referencesFiltered)(const CMPIBroker*, const CMPIContext*, const CMPIObjectPath*, const char*,
                                           const char*, const char**, const char*, const char*, CMPIStatus*);
};

struct _CMPIBrokerEncFT {
    CMPIVersion ftVersion;
    CMPIInstance* (*newInstance)(const CMPIBroker*, const CMPIObjectPath*, CMPIStatus*);
    CMPIObjectPath* (*newObjectPath)(const CMPIBroker*, const char*, const char*, CMPIStatus*);
    CMPIArgs* (*newArgs)(const CMPIBroker*, CMPIStatus*);
    CMPIString* (*newString)(const CMPIBroker*, const char*, CMPIStatus*);
    CMPIArray* (*newArray)(const CMPIBroker*, CMPICount, CMPIType, CMPIStatus*);
    CMPIDateTime* (*newDateTime)(const CMPIBroker*, CMPIStatus*);
    CMPIDateTime* (*newDateTimeFromBinary)(const CMPIBroker*, CMPIUint64, CMPIBoolean, CMPIStatus*);
    CMPIDateTime* (*newDateTimeFromChars)(const CMPIBroker*, const char*, CMPIStatus*);
    CMPISelectExp* (*newSelectExp)(const CMPIBroker*, const char*, const char*, CMPIArray**, CMPIStatus*);
    CMPIBoolean (*classPathIsA)(const CMPIBroker*, const CMPIObjectPath*, const char*, CMPIStatus*);
    CMPIString* (*toString)(const CMPIBroker*, const void*, CMPIStatus*);
    CMPIBoolean (*isOfType)(const CMPIBroker*, const void*, const char*, CMPIStatus*);
    CMPIString* (*getType)(const CMPIBroker*, const void*, CMPIStatus*);
    CMPIString* (*getMessage)(const CMPIBroker*, const char*, const char*, CMPIStatus*, CMPICount, ...);
    CMPIStatus (*logMessage)(const CMPIBroker*, CMPISeverity, const char*, const char*, const CMPIString*);
    CMPIStatus (*trace)(const CMPIBroker*, CMPILevel, const char*, const char*, const CMPIString*);
};

struct _CMPIContext {
    const void* hdl;
    const CMPIContextFT* ft;
};

struct _CMPIContextFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIContext*);
    CMPIContext* (*clone)(const CMPIContext*, CMPIStatus*);
    CMPIData (*getEntry)(const CMPIContext*, const char*, CMPIStatus*);
    CMPIData (*getEntryAt)(const CMPIContext*, CMPICount, CMPIString**, CMPIStatus*);
    CMPICount (*getEntryCount)(const CMPIContext*, CMPIStatus*);
    CMPIStatus (*addEntry)(const CMPIContext*, const char*, const CMPIValue*, CMPIType);
};

struct _CMPIResult {
    const void* hdl;
    const CMPIResultFT* ft;
};

struct _CMPIResultFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIResult*);
    CMPIResult* (*clone)(const CMPIResult*, CMPIStatus*);
    CMPIStatus (*returnData)(const CMPIResult*, const CMPIValue*, CMPIType);
    CMPIStatus (*returnInstance)(const CMPIResult*, const CMPIInstance*);
    CMPIStatus (*returnObjectPath)(const CMPIResult*, const CMPIObjectPath*);
    CMPIStatus (*returnDone)(const CMPIResult*);
};

struct _CMPIString {
    const void* hdl;
    const CMPIStringFT* ft;
};

struct _CMPIStringFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIString*);
    CMPIString* (*clone)(const CMPIString*, CMPIStatus*);
    const char* (*getCharPtr)(const CMPIString*, CMPIStatus*);
};

struct _CMPIArray {
    const void* hdl;
    const CMPIArrayFT* ft;
};

struct _CMPIArrayFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIArray*);
    CMPIArray* (*clone)(const CMPIArray*, CMPIStatus*);
    CMPICount (*getSize)(const CMPIArray*, CMPIStatus*);
    CMPIType (*getSimpleType)(const CMPIArray*, CMPIStatus*);
    CMPIData (*getElementAt)(const CMPIArray*, CMPICount, CMPIStatus*);
    CMPIStatus (*setElementAt)(const CMPIArray*, CMPICount, const CMPIValue*, CMPIType);
};

struct _CMPIEnumeration {
    const void* hdl;
    const CMPIEnumerationFT* ft;
};

struct _CMPIEnumerationFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIEnumeration*);
    CMPIEnumeration* (*clone)(const CMPIEnumeration*, CMPIStatus*);
    CMPIData (*getNext)(const CMPIEnumeration*, CMPIStatus*);
    CMPIBoolean (*hasNext)(const CMPIEnumeration*, CMPIStatus*);
    CMPIArray* (*toArray)(const CMPIEnumeration*, CMPIStatus*);
};

struct _CMPIInstance {
    const void* hdl;
    const CMPIInstanceFT* ft;
};

struct _CMPIInstanceFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIInstance*);
    CMPIInstance* (*clone)(const CMPIInstance*, CMPIStatus*);
    CMPIData (*getProperty)(const CMPIInstance*, const char*, CMPIStatus*);
    CMPIData (*getPropertyAt)(const CMPIInstance*, CMPICount, CMPIString**, CMPIStatus*);
    CMPICount (*getPropertyCount)(const CMPIInstance*, CMPIStatus*);
    CMPIStatus (*setProperty)(const CMPIInstance*, const char*, const CMPIValue*, CMPIType);
    CMPIObjectPath* (*getObjectPath)(const CMPIInstance*, CMPIStatus*);
    CMPIStatus (*setPropertyFilter)(const CMPIInstance*, const char**, const char**);
    CMPIStatus (*setObjectPath)(const CMPIInstance*, const CMPIObjectPath*);
};

struct _CMPIObjectPath {
    const void* hdl;
    const CMPIObjectPathFT* ft;
};

struct _CMPIObjectPathFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIObjectPath*);
    CMPIObjectPath* (*clone)(const CMPIObjectPath*, CMPIStatus*);
    CMPIStatus (*setNameSpace)(const CMPIObjectPath*, const char*);
    CMPIString* (*getNameSpace)(const CMPIObjectPath*, CMPIStatus*);
    CMPIStatus (*setHostname)(const CMPIObjectPath*, const char*);
    CMPIString* (*getHostname)(const CMPIObjectPath*, CMPIStatus*);
    CMPIStatus (*setClassName)(const CMPIObjectPath*, const char*);
    CMPIString* (*getClassName)(const CMPIObjectPath*, CMPIStatus*);
    CMPIStatus (*addKey)(const CMPIObjectPath*, const char*, const CMPIValue*, CMPIType);
    CMPIData (*getKey)(const CMPIObjectPath*, const char*, CMPIStatus*);
    CMPIData (*getKeyAt)(const CMPIObjectPath*, CMPICount, CMPIString**, CMPIStatus*);
    CMPICount (*getKeyCount)(const CMPIObjectPath*, CMPIStatus*);
    CMPIStatus (*setNameSpaceFromObjectPath)(const CMPIObjectPath*, const CMPIObjectPath*);
    CMPIStatus (*setHostAndNameSpaceFromObjectPath)(const CMPIObjectPath*, const CMPIObjectPath*);
    CMPIData (*getClassQualifier)(const CMPIObjectPath*, const char*, CMPIStatus*);
    CMPIData (*getPropertyQualifier)(const CMPIObjectPath*, const char*, const char*, CMPIStatus*);
    CMPIData (*getMethodQualifier)(const CMPIObjectPath*, const char*, const char*, CMPIStatus*);
    CMPIData (*getParameterQualifier)(const CMPIObjectPath*, const char*, const char*, const char*, CMPIStatus*);
    CMPIString* (*toString)(const CMPIObjectPath*, CMPIStatus*);
};

struct _CMPIArgs {
    const void* hdl;
    const CMPIArgsFT* ft;
};

struct _CMPIArgsFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIArgs*);
    CMPIArgs* (*clone)(const CMPIArgs*, CMPIStatus*);
    CMPIStatus (*addArg)(const CMPIArgs*, const char*, const CMPIValue*, CMPIType);
    CMPIData (*getArg)(const CMPIArgs*, const char*, CMPIStatus*);
    CMPIData (*getArgAt)(const CMPIArgs*, CMPICount, CMPIString**, CMPIStatus*);
    CMPICount (*getArgCount)(const CMPIArgs*, CMPIStatus*);
};

struct _CMPIDateTime {
    const void* hdl;
    const CMPIDateTimeFT* ft;
};

struct _CMPIDateTimeFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIDateTime*);
    CMPIDateTime* (*clone)(const CMPIDateTime*, CMPIStatus*);
    CMPIUint64 (*getBinaryFormat)(const CMPIDateTime*, CMPIStatus*);
    CMPIString* (*getStringFormat)(const CMPIDateTime*, CMPIStatus*);
    CMPIBoolean (*isInterval)(const CMPIDateTime*, CMPIStatus*);
};

struct _CMPIInstanceMI {
    const void* hdl;
    const CMPIInstanceMIFT* ft;
};

struct _CMPIInstanceMIFT {
    CMPIVersion ftVersion;
    int miVersion;
    const char* miName;
    CMPIStatus (*cleanup)(CMPIInstanceMI*, const CMPIContext*, CMPIBoolean);
    CMPIStatus (*enumerateInstanceNames)(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*);
    CMPIStatus (*enumerateInstances)(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*,
                                     const char**);
    CMPIStatus (*getInstance)(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*,
                              const char**);
    CMPIStatus (*createInstance)(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*,
                                 const CMPIInstance*);
    CMPIStatus (*modifyInstance)(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*,
                                 const CMPIInstance*, const char**);
    CMPIStatus (*deleteInstance)(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*);
    CMPIStatus (*execQuery)(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*, const char*,
                            const char*);
};

struct _CMPIAssociationMI {
    const void* hdl;
    const CMPIAssociationMIFT* ft;
};

struct _CMPIAssociationMIFT {
    CMPIVersion ftVersion;
    int miVersion;
    const char* miName;
    CMPIStatus (*cleanup)(CMPIAssociationMI*, const CMPIContext*, CMPIBoolean);
    CMPIStatus (*associators)(CMPIAssociationMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*,
                              const char*, const char*, const char*, const char*, const char**);
    CMPIStatus (*associatorNames)(CMPIAssociationMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*,
                                  const char*, const char*, const char*, const char*);
    CMPIStatus (*references)(CMPIAssociationMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*,
                             const char*, const char*, const char**);
    CMPIStatus (*referenceNames)(CMPIAssociationMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*,
                                 const char*, const char*);
};

struct _CMPIMethodMI {
    const void* hdl;
    const CMPIMethodMIFT* ft;
};

struct _CMPIMethodMIFT {
    CMPIVersion ftVersion;
    int miVersion;
    const char* miName;
    CMPIStatus (*cleanup)(CMPIMethodMI*, const CMPIContext*, CMPIBoolean);
    CMPIStatus (*invokeMethod)(CMPIMethodMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*, const char*,
                               const CMPIArgs*, CMPIArgs*);
};

struct _CMPIPropertyMI {
    const void* hdl;
    const CMPIPropertyMIFT* ft;
};

struct _CMPIPropertyMIFT {
    CMPIVersion ftVersion;
    int miVersion;
    const char* miName;
    CMPIStatus (*cleanup)(CMPIPropertyMI*, const CMPIContext*, CMPIBoolean);
    CMPIStatus (*setProperty)(CMPIPropertyMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*,
                              const char*, CMPIData);
    CMPIStatus (*getProperty)(CMPIPropertyMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*,
                              const char*);
};

#ifdef __cplusplus
}
#endif

#endif
