// Paths, instances and values out of elements whose structure is valid.
#pragma once

#include "host/cimxml/call.h"
#include "host/cimxml/xml_reader.h"
#include "host/mof/schema.h"

namespace cmpihost::cimxml {

/// What the functions below throw: a Refusal with status 400.
Refusal request_not_valid();

/// A Refusal with a CIM error; the envelope is empty.
Refusal invalid_parameter(std::string description);

/// The names of a LOCALNAMESPACEPATH, joined by slashes.
std::string read_namespace(const XmlElement& local_namespace_path);

/// An INSTANCENAME, INSTANCEPATH or LOCALINSTANCEPATH. Keys have the type that the class declares, whatever the client
/// says; where it declares none, or one that the text does not fit, the type that the client names, else the one that
/// the text suggests. An unnamed key is the only key of its class.
/// @throws Refusal a key twice, a number or boolean that is none
Object read_instance_path(const XmlElement& element, const mof::Schema& schema);

/// The path within a VALUE.REFERENCE, to a class or an instance.
Target read_reference(const XmlElement& value_reference, const mof::Schema& schema);

/// An INSTANCE. Embedded instances stay the text that they came in.
/// @throws Refusal a value that its TYPE has not
Object read_instance(const XmlElement& element, const mof::Schema& schema);

/// The parameter of a method: a PARAMVALUE. Without PARAMTYPE it is a string.
Property read_method_parameter(const XmlElement& element, const mof::Schema& schema);

} // namespace cmpihost::cimxml
