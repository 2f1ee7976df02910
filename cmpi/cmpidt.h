/*
 * CMPI data types: the scalars, type codes and return codes that a provider and a broker meet on.
 *
 * Written from the public CMPI standard, as far as function-table version 100 needs it. Plain C, so that providers
 * in either language can use it.
 */
#ifndef CMPI_CMPIDT_H
#define CMPI_CMPIDT_H

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
#define CMPICurrentVersion CMPIVersion100

/* Encapsulated types: a handle that belongs to the broker, and the table of what can be done with it. */
typedef struct _CMPIBroker CMPIBroker;
typedef struct _CMPIContext CMPIContext;
typedef struct _CMPIResult CMPIResult;
typedef struct _CMPIString CMPIString;
typedef struct _CMPIArray CMPIArray;
typedef struct _CMPIEnumeration CMPIEnumeration;
typedef struct _CMPIInstance CMPIInstance;
typedef struct _CMPIObjectPath CMPIObjectPath;
typedef struct _CMPIArgs CMPIArgs;
typedef struct _CMPIDateTime CMPIDateTime;
typedef struct _CMPISelectExp CMPISelectExp;
typedef struct _CMPIInstanceMI CMPIInstanceMI;
typedef struct _CMPIAssociationMI CMPIAssociationMI;
typedef struct _CMPIMethodMI CMPIMethodMI;
typedef struct _CMPIPropertyMI CMPIPropertyMI;

/* Function tables (cmpift.h). */
typedef struct _CMPIBrokerFT CMPIBrokerFT;
typedef struct _CMPIBrokerEncFT CMPIBrokerEncFT;
typedef struct _CMPIBrokerExtFT CMPIBrokerExtFT;
typedef struct _CMPIContextFT CMPIContextFT;
typedef struct _CMPIResultFT CMPIResultFT;
typedef struct _CMPIStringFT CMPIStringFT;
typedef struct _CMPIArrayFT CMPIArrayFT;
typedef struct _CMPIEnumerationFT CMPIEnumerationFT;
typedef struct _CMPIInstanceFT CMPIInstanceFT;
typedef struct _CMPIObjectPathFT CMPIObjectPathFT;
typedef struct _CMPIArgsFT CMPIArgsFT;
typedef struct _CMPIDateTimeFT CMPIDateTimeFT;
typedef struct _CMPIInstanceMIFT CMPIInstanceMIFT;
typedef struct _CMPIAssociationMIFT CMPIAssociationMIFT;
typedef struct _CMPIMethodMIFT CMPIMethodMIFT;
typedef struct _CMPIPropertyMIFT CMPIPropertyMIFT;

typedef struct _CMPIValuePtr CMPIValuePtr;
typedef union _CMPIValue CMPIValue;
typedef struct _CMPIData CMPIData;
typedef struct _CMPIStatus CMPIStatus;

/* Type codes. A value of type CMPI_chars is handed over as the character pointer itself, in the place of the
 * CMPIValue pointer; every other type as the address of a CMPIValue. */
#define CMPI_null ((CMPIType)0x0000)
#define CMPI_boolean ((CMPIType)0x0002)
#define CMPI_char16 ((CMPIType)0x0003)
#define CMPI_real32 ((CMPIType)0x0008)
#define CMPI_real64 ((CMPIType)0x000c)
#define CMPI_uint8 ((CMPIType)0x0080)
#define CMPI_uint16 ((CMPIType)0x0090)
#define CMPI_uint32 ((CMPIType)0x00a0)
#define CMPI_uint64 ((CMPIType)0x00b0)
#define CMPI_sint8 ((CMPIType)0x00c0)
#define CMPI_sint16 ((CMPIType)0x00d0)
#define CMPI_sint32 ((CMPIType)0x00e0)
#define CMPI_sint64 ((CMPIType)0x00f0)
#define CMPI_instance ((CMPIType)0x1000)
#define CMPI_ref ((CMPIType)0x1100)
#define CMPI_args ((CMPIType)0x1200)
#define CMPI_class ((CMPIType)0x1300)
#define CMPI_filter ((CMPIType)0x1400)
#define CMPI_enumeration ((CMPIType)0x1500)
#define CMPI_string ((CMPIType)0x1600)
#define CMPI_chars ((CMPIType)0x1700)
#define CMPI_dateTime ((CMPIType)0x1800)
#define CMPI_ptr ((CMPIType)0x1900)
/* Flag: an array of the type it is added to. */
#define CMPI_ARRAY ((CMPIType)0x2000)

#define CMPI_goodValue ((CMPIValueState)0)
#define CMPI_nullValue ((CMPIValueState)0x0100)
#define CMPI_keyValue ((CMPIValueState)0x0200)
#define CMPI_notFound ((CMPIValueState)0x0400)
#define CMPI_badValue ((CMPIValueState)0x8000)

/* Bits of the context entry CMPIInvocationFlags. */
typedef unsigned int CMPIFlags;
#define CMPI_FLAG_LocalOnly 1
#define CMPI_FLAG_DeepInheritance 2
#define CMPI_FLAG_IncludeQualifiers 4
#define CMPI_FLAG_IncludeClassOrigin 8

/* Names of the context entries that a broker gives every call. */
#define CMPIInitNameSpace "CMPIInitNameSpace"
#define CMPIInvocationFlags "CMPIInvocationFlags"
#define CMPIPrincipal "CMPIPrincipal"

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

typedef enum _CMPISeverity { CMPI_SEV_INFO = 1, CMPI_SEV_WARNING = 2, CMPI_SEV_ERROR = 3 } CMPISeverity;

typedef enum _CMPILevel { CMPI_LEV_INFO = 1, CMPI_LEV_WARNING = 2, CMPI_LEV_VERBOSE = 3 } CMPILevel;

/* A block of bytes: the only value that carries its own length. */
struct _CMPIValuePtr {
    void* ptr;
    CMPICount length;
};

/* The value part of a CMPIData; the type code beside it says which member holds. */
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

/* A typed value as the getters return it. */
struct _CMPIData {
    CMPIType type;
    CMPIValueState state;
    CMPIValue value;
};

/* What every operation returns: a code and, optionally, a text for the client. */
struct _CMPIStatus {
    CMPIrc rc;
    CMPIString* msg;
};

#ifdef __cplusplus
}
#endif

#endif
