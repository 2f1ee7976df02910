// Associators and AssociatorNames as tables: one row per association that a source class takes part in.
#pragma once

#include "provider/associations/ends.h"

#include <span>

namespace fcip {

struct associator_row;

/// What a row does in place of building its far end and returning it.
using far_end_function = void(const traversal_request& request, const associator_row& row,
                              const traversal_source& source);

/// A branch. Rows are tried in order; the association class is compared without regard to case.
struct associator_row {
    int location;           ///< number in the location trace of the branch; 0 = it has none
    const char* class_name; ///< the association class
    key_use key;
    platform_record record;
    association_end far_end;
    far_end_function* instead = nullptr; ///< what is done in place of returning the far end
};

/// The branches of one source class.
struct associator_table {
    std::span<const associator_row> rows;
    const associator_row* other_names = nullptr; ///< what names that no row has are answered by
    bool announces_class = false;                ///< prints "Association Class ..." on entry
};

/// The frame of the members: traces, and for each row of the association class reads the key, fetches what the row
/// needs and returns the far end as it is: a null that a builder gives goes out too. Always 0.
int return_associators(const associator_table& table, const traversal_request& request);

/// Has the platform look for the Ethernet port with the source's interface index and return it by itself.
far_end_function return_walked_port;

/// Makes the path of the far end, and does not return it.
far_end_function make_path_only;

} // namespace fcip
