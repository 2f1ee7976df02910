// Entries beside the management interfaces: nothing in the provider calls them.
#pragma once

#include "provider/common/broker.h"

#include <cstdint>

/// Finds and returns the instance that a key value names, without a key scan and without the lock: the caller holds it.
/// Lookup modes and classes are its own; see the table in uncalled.cpp.
/// @return -1, also when an instance was returned
extern "C" __attribute__((visibility("default"))) int get_fcip_instance(const char* class_name, const char* key_value,
                                                                        const CMPIResult* result,
                                                                        const char** properties, const char* name_space,
                                                                        const CMPIObjectPath* path);

namespace fcip {

/// Prints a record of error counters, a field a line: a 32-bit word, three more, then eight 64-bit values, big-endian,
/// of which the low 32 bits show. A debugging aid.
/// @param record 80 bytes
void print_errors(const std::uint8_t* record);

} // namespace fcip
