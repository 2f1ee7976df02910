/*
 * CMPI data types of the set in this folder, which stands for the headers of a later version, as a CIM server's
 * development package may have them: type codes are plain numbers, the convenience calls of cmpimacs.h are inline
 * functions with strict types, and the function tables of cmpift.h go on behind their members of version 100.
 */
#ifndef LATER_CMPIDT_H
#define LATER_CMPIDT_H

#ifdef __cplusplus
extern "C" {
#endif

typedef unsigned char CMPIBoolean;
typedef unsigned short CMPIChar16;
typedef unsigned char CMPIUint8;
typedef unsigned short CMPIUint16;
typedef unsigned int CMPIUint32;
typedef unsigned long long CMPIUint64;
typedef signed char CMPISint8;
typedef short CMPISint16;
typedef int CMPISint32;
typedef long long CMPISint64;
typedef float CMPIReal32;
typedef double CMPIReal64;
typedef unsigned int CMPICount;
typedef unsigned short CMPIType;
typedef unsigned short CMPIValueState;
typedef int CMPIVersion;

#define CMPIVersion100 100
#define CMPIVersion210 210
#define CMPICurrentVersion CMPIVersion210

typedef struct _CMPIBroker CMPIBroker;
typedef struct _CMPIContext CMPIContext;
typedef struct _CMPIContextFT CMPIContextFT;
typedef struct _CMPIResult CMPIResult;
typedef struct _CMPIResultFT CMPIResultFT;
typedef struct _CMPIString CMPIString;
typedef struct _CMPIStringFT CMPIStringFT;
typedef struct _CMPIArray CMPIArray;
typedef struct _CMPIArrayFT CMPIArrayFT;
typedef struct _CMPIEnumeration CMPIEnumeration;
typedef struct _CMPIEnumerationFT CMPIEnumerationFT;
typedef struct _CMPIInstance CMPIInstance;
typedef struct _CMPIInstanceFT CMPIInstanceFT;
typedef struct _CMPIObjectPath CMPIObjectPath;
typedef struct _CMPIObjectPathFT CMPIObjectPathFT;
typedef struct _CMPIArgs CMPIArgs;
typedef struct _CMPIArgsFT CMPIArgsFT;
typedef struct _CMPIDateTime CMPIDateTime;
typedef struct _CMPIDateTimeFT CMPIDateTimeFT;
typedef struct _CMPISelectExp CMPISelectExp;
typedef struct _CMPIBrokerFT CMPIBrokerFT;
typedef struct _CMPIBrokerEncFT CMPIBrokerEncFT;
typedef struct _CMPIBrokerExtFT CMPIBrokerExtFT;
typedef struct _CMPIInstanceMI CMPIInstanceMI;
typedef struct _CMPIInstanceMIFT CMPIInstanceMIFT;
typedef struct _CMPIAssociationMI CMPIAssociationMI;
typedef struct _CMPIAssociationMIFT CMPIAssociationMIFT;
typedef struct _CMPIMethodMI CMPIMethodMI;
typedef struct _CMPIMethodMIFT CMPIMethodMIFT;
typedef struct _CMPIPropertyMI CMPIPropertyMI;
typedef struct _CMPIPropertyMIFT CMPIPropertyMIFT;
typedef struct _CMPIStatus CMPIStatus;
typedef struct _CMPIData CMPIData;
typedef struct _CMPIValuePtr CMPIValuePtr;
typedef union _CMPIValue CMPIValue;

#define CMPI_null 0x0000
#define CMPI_boolean 0x0002
#define CMPI_char16 0x0003
#define CMPI_real32 0x0008
#define CMPI_real64 0x000c
#define CMPI_uint8 0x0080
#define CMPI_uint16 0x0090
#define CMPI_uint32 0x00a0
#define CMPI_uint64 0x00b0
#define CMPI_sint8 0x00c0
#define CMPI_sint16 0x00d0
#define CMPI_sint32 0x00e0
#define CMPI_sint64 0x00f0
#define CMPI_instance 0x1000
#define CMPI_ref 0x1100
#define CMPI_args 0x1200
#define CMPI_class 0x1300
#define CMPI_filter 0x1400
#define CMPI_enumeration 0x1500
#define CMPI_string 0x1600
#define CMPI_chars 0x1700
#define CMPI_dateTime 0x1800
#define CMPI_ptr 0x1900
#define CMPI_ARRAY 0x2000

#define CMPI_goodValue 0
#define CMPI_nullValue 0x0100
#define CMPI_keyValue 0x0200
#define CMPI_notFound 0x0400
#define CMPI_badValue 0x8000

typedef enum _CMPIrc {
    CMPI_RC_OK = 0,
    CMPI_RC_ERR_FAILED = 1,
    CMPI_RC_ERR_ACCESS_DENIED = 2,
    CMPI_RC_ERR_INVALID_NAMESPACE = 3,
    CMPI_RC_ERR_INVALID_PARAMETER = 4,
    CMPI_RC_ERR_INVALID_CLASS = 5,
    CMPI_RC_ERR_NOT_FOUND = 6,
    CMPI_RC_ERR_NOT_SUPPORTED = 7,
    CMPI_RC_ERR_CLASS_HAS_CHILDREN = 8,
    CMPI_RC_ERR_CLASS_HAS_INSTANCES = 9,
    CMPI_RC_ERR_INVALID_SUPERCLASS = 10,
    CMPI_RC_ERR_ALREADY_EXISTS = 11,
    CMPI_RC_ERR_NO_SUCH_PROPERTY = 12,
    CMPI_RC_ERR_TYPE_MISMATCH = 13,
    CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED = 14,
    CMPI_RC_ERR_INVALID_QUERY = 15,
    CMPI_RC_ERR_METHOD_NOT_AVAILABLE = 16,
    CMPI_RC_ERR_METHOD_NOT_FOUND = 17,
    CMPI_RC_DO_NOT_UNLOAD = 50,
    CMPI_RC_NEVER_UNLOAD = 51,
    CMPI_RC_ERR_INVALID_HANDLE = 60,
    CMPI_RC_ERR_INVALID_DATA_TYPE = 61,
    CMPI_RC_ERROR_SYSTEM = 100,
    CMPI_RC_ERROR = 200
} CMPIrc;

typedef unsigned int CMPISeverity;
typedef unsigned int CMPILevel;

struct _CMPIValuePtr {
    void* ptr;
    CMPICount length;
};

union _CMPIValue {
    CMPIBoolean boolean;
    CMPIChar16 char16;
    CMPIUint8 uint8;
    CMPIUint16 uint16;
    CMPIUint32 uint32;
    CMPIUint64 uint64;
    CMPISint8 sint8;
    CMPISint16 sint16;
    CMPISint32 sint32;
    CMPISint64 sint64;
    CMPIReal32 real32;
    CMPIReal64 real64;
    CMPIInstance* inst;
    CMPIObjectPath* ref;
    CMPIArgs* args;
    CMPISelectExp* filter;
    CMPIEnumeration* Enum;
    CMPIArray* array;
    CMPIString* string;
    char* chars;
    CMPIDateTime* dateTime;
    CMPIValuePtr dataPtr;
    CMPISint8 Byte;
    CMPISint16 Short;
    CMPISint32 Int;
    CMPISint64 Long;
    CMPIReal32 Float;
    CMPIReal64 Double;
};

struct _CMPIData {
    CMPIType type;
    CMPIValueState state;
    CMPIValue value;
};

struct _CMPIStatus {
    CMPIrc rc;
    CMPIString* msg;
};

#ifdef __cplusplus
}
#endif

#endif
