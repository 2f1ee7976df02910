// Associators and AssociatorNames as tables: one row per association that a source class takes part in.
#pragma once

#include "provider/associations/traversal.h"
#include "provider/common/broker.h"

#include <span>

namespace fcip {

/// What a member was asked.
struct associator_request {
    const char* member; ///< the member's own name, for traces
    const char* key_value;
    const char* association_class; ///< may be null
    const CMPIResult* result;
    const char* name_space;
    const char** properties = nullptr;
    bool wants_paths = false; ///< AssociatorNames
};

struct associator_row;

/// Makes the object at the far end of a branch and returns it to the client, as it is: a null that a builder gives goes
/// out too. Returns nothing where the platform lacks what leads to the far end.
using far_end = void(const associator_request& request, const associator_row& row, const traversal_source& source);

/// A branch. Rows are tested in order, without regard to case.
struct associator_row {
    int location;                  ///< number in the location trace of the branch: its place in the table, from 1
    const char* association_class; ///< the text that is compared
    key_use key;
    const char* class_name; ///< the class text that the far end's builder is given
    far_end* end;
};

/// Texts that stand for no association class.
inline constexpr const char* not_served = nullptr;
inline constexpr char any_other[] = "any other name";

/// The class text of far ends whose class the platform helper knows.
inline constexpr const char* own_class = nullptr;

/// The branches of one source class.
struct associator_source {
    std::span<const associator_row> rows;
    std::span<const associator_row> names_differ = {}; ///< AssociatorNames: stand in for the rows of the same location
    bool announces_class = false;                      ///< prints "Association Class ..." on entry
};

/// The frame of the members: traces, picks the branch, reads the key, returns the far end. Always 0.
int return_associators(const associator_source& source, associator_request request);

/// The same for members that answer with paths.
int return_associator_names(const associator_source& source, associator_request request);

} // namespace fcip
