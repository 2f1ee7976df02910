// Properties, keys and texts of CMPI objects.
#pragma once

#include "provider/common/broker.h"

#include <cstdint>

namespace fcip {

/// A CMPI string's characters; "" for a null string or one that the broker cannot read.
const char* chars_of(const CMPIString* string);

/// `text`, or "" for null.
const char* text_or_empty(const char* text);

/// A flag handed on as the low byte of its word, not normalised.
constexpr CMPIBoolean low_byte(std::uint32_t word) {
    return static_cast<CMPIBoolean>(word & 0xff);
}

/// Setters of one property each, named after the CIM type that the client sees.
void set_string(CMPIInstance* instance, const char* name, const char* text);
void set_boolean(CMPIInstance* instance, const char* name, CMPIBoolean value); ///< the byte is handed on as it is
void set_uint8(CMPIInstance* instance, const char* name, std::uint8_t value);
void set_uint16(CMPIInstance* instance, const char* name, std::uint16_t value);
void set_uint32(CMPIInstance* instance, const char* name, std::uint32_t value);
void set_uint64(CMPIInstance* instance, const char* name, std::uint64_t value);
void set_reference(CMPIInstance* instance, const char* name, CMPIObjectPath* path);

/// Applies the request's property list (null = all) with an empty list of keys.
void filter_properties(CMPIInstance* instance, const char** properties);

/// Setters of one key each.
void add_string_key(CMPIObjectPath* path, const char* name, const char* text);
void add_uint16_key(CMPIObjectPath* path, const char* name, std::uint16_t value);
void add_reference_key(CMPIObjectPath* path, const char* name, CMPIObjectPath* reference);

/// Whether the broker made an object that can be used: not null, and with a handle.
bool is_usable(const CMPIObjectPath* path);
bool is_usable(const CMPIInstance* instance);

/// A new path of the class in the namespace; may be null or without handle.
CMPIObjectPath* new_path(const char* name_space, const char* class_name);

/// A new instance of the path; may be null or without handle.
CMPIInstance* new_instance(const CMPIObjectPath* path);

} // namespace fcip
