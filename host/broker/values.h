// CMPI values to held values and back.
#pragma once

#include "host/broker/broker.h"
#include "host/broker/held.h"

namespace cmpihost {

/// The type code of a CIM type name as type_name() gives it; CMPI_null for "null" and for any other text.
CMPIType type_code(std::string_view name);

/// The CIM type name of a code, as type_name() gives it; empty for a code that is no CIM type.
std::string_view type_text(CMPIType type);

/// Reads a value as a setter gets it into memory of `store`: a null pointer, and a null handle inside, are NULL; chars
/// become a string.
/// @return OK; ERR_INVALID_DATA_TYPE for a type that is no CIM type; ERR_INVALID_HANDLE for a handle that is no live
/// object of the innermost scope (never dereferenced); ERR_TYPE_MISMATCH for an array of another element type
CMPIrc read_value(Store& store, const CMPIValue* value, CMPIType type, HeldValue& out);

/// A held value as a getter gives it. Strings, references, arrays and date-times become objects of the innermost
/// scope; where one cannot be made the state is CMPI_badValue and the status ERR_FAILED.
CMPIData give_value(const HeldValue& value, CMPIType type, CMPIStatus* status);

/// The data of a getter that finds nothing: state CMPI_notFound, `rc` in the status.
CMPIData nothing_found(CMPIStatus* status, CMPIrc rc);

/// Getters and setters that instances, paths, contexts and arguments share. `missing` is the answer to an absent name
/// and to an index out of range. A null or empty name is ERR_INVALID_PARAMETER. Setting a name again replaces its type
/// and value in its old place.
CMPIData get_named(const HeldProperties& values, const char* name, CMPIStatus* status, CMPIrc missing);
CMPIData get_indexed(const HeldProperties& values, CMPICount index, CMPIString** name, CMPIStatus* status,
                     CMPIrc missing);
CMPIrc set_named(Store& store, HeldProperties& values, const char* name, const CMPIValue* value, CMPIType type);

/// The second half of set_named(), for a value already read into `store`.
void put_named(Store& store, HeldProperties& values, std::string_view name, CMPIType type, const HeldValue& value);

} // namespace cmpihost
