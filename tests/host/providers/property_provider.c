/*
 * A provider with a property interface and no other, made with the stub of cmpimacs.h: Test_Store keeps one property,
 * Size, which is 7 at first. It refuses other names, and values that are no uint32.
 */
#include "cmpimacs.h"

#include <stdio.h>
#include <string.h>

static const CMPIBroker* broker;
static CMPIUint32 size = 7;

static CMPIStatus StorePropertyCleanup(CMPIPropertyMI* mi, const CMPIContext* context, CMPIBoolean terminating) {
    (void)mi, (void)context;
    printf("cleanup of properties, terminating %d\n", terminating);
    CMReturn(CMPI_RC_OK);
}

static CMPIStatus StoreSetProperty(CMPIPropertyMI* mi, const CMPIContext* context, const CMPIResult* result,
                                   const CMPIObjectPath* path, const char* name, CMPIData data) {
    (void)mi, (void)context, (void)path;
    if (strcmp(name, "Size") != 0)
        CMReturnWithChars(broker, CMPI_RC_ERR_NO_SUCH_PROPERTY, name);
    if (CMIsNullValue(data) || data.type != CMPI_uint64 || data.value.uint64 > 0xffffffffU)
        CMReturn(CMPI_RC_ERR_TYPE_MISMATCH);
    size = (CMPIUint32)data.value.uint64;
    CMReturnDone(result);
    CMReturn(CMPI_RC_OK);
}

static CMPIStatus StoreGetProperty(CMPIPropertyMI* mi, const CMPIContext* context, const CMPIResult* result,
                                   const CMPIObjectPath* path, const char* name) {
    CMPIValue value;
    (void)mi, (void)context, (void)path;
    if (strcmp(name, "Size") != 0)
        CMReturnWithChars(broker, CMPI_RC_ERR_NO_SUCH_PROPERTY, name);
    value.uint32 = size;
    CMReturnData(result, &value, CMPI_uint32);
    CMReturnDone(result);
    CMReturn(CMPI_RC_OK);
}

CMPropertyMIStub(Store, Store, broker, printf("factory of properties\n"))
