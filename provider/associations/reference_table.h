// References and ReferenceNames as tables: one row per association that a source class takes part in. Both operations
// share the rows and differ in the last step only.
#pragma once

#include "provider/associations/ends.h"
#include "provider/associations/shapes.h"

#include <span>

namespace fcip {

/// The name policy of rows whose association bears the name that the client wrote.
inline constexpr const char* as_passed = nullptr;

/// A branch. Rows are tried in order; the association class is compared without regard to case.
struct reference_row {
    int location;           ///< number in the location trace of the branch
    const char* class_name; ///< the association class
    key_use key;
    platform_record record; ///< fetched before either end is made; without it the branch ends with -1
    association_shape shape;
    const char* name; ///< the association's class name, or as_passed
    association_end first;
    association_end second;
};

/// The line that a member prints with the association class on entry.
enum class class_line { none, plain, starred };

/// The branches of one source class.
struct reference_table {
    std::span<const reference_row> rows;
    class_line line = class_line::none;
    int failed_lookup = -1; ///< what the member returns after a failed lookup
};

/// The frame of the members: traces, picks the branch, reads the key, makes both ends and returns the association.
/// @return 0; -1 when a lookup fails (but for failed_lookup) or an end cannot be made: nothing is returned then
int return_references(const reference_table& table, const traversal_request& request);

} // namespace fcip
