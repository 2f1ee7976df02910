// CMPI objects: all calls of the broker's and its objects' function tables but those of results.h. They go through the
// tables and not through the standard's convenience calls, which are macros in some header sets and strictly typed
// inline functions in others.
#pragma once

#include "provider/common/broker.h"

#include <array>
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

/// Sets the host that a path names.
void set_host(CMPIObjectPath* path, const char* host);

/// Applies the request's property list (null = all) with an empty list of keys.
void filter_properties(CMPIInstance* instance, const char** properties);

/// Setters of one key each.
void add_string_key(CMPIObjectPath* path, const char* name, const char* text);
void add_uint16_key(CMPIObjectPath* path, const char* name, std::uint16_t value);
void add_reference_key(CMPIObjectPath* path, const char* name, CMPIObjectPath* reference);

/// What a path carries; "" for a text that the broker cannot read.
const char* path_class_name(const CMPIObjectPath* path);
const char* path_name_space(const CMPIObjectPath* path);

/// A key of a path: its name, cut as all key texts are, and its value.
struct path_key {
    std::array<char, 254> name;
    CMPIData data;
};

/// How many keys a path has, and the one at `index`, from 0.
CMPICount key_count(const CMPIObjectPath* path);
path_key key_at(const CMPIObjectPath* path, CMPICount index);

/// Whether the broker made an object that can be used: not null, and with a handle.
bool is_usable(const CMPIObjectPath* path);
bool is_usable(const CMPIInstance* instance);

/// A new path of the class in the namespace; may be null or without handle.
CMPIObjectPath* new_path(const char* name_space, const char* class_name, const CMPIBroker* broker = _broker);

/// A new instance of the path; may be null or without handle.
CMPIInstance* new_instance(const CMPIObjectPath* path, const CMPIBroker* broker = _broker);

/// A new string; may be null.
CMPIString* new_string(const char* text);

} // namespace fcip
