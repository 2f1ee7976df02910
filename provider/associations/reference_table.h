// References and ReferenceNames as tables: one row per association that a source class takes part in. Both operations
// share the rows and differ in the last step only.
#pragma once

#include "provider/associations/shapes.h"
#include "provider/associations/traversal.h"
#include "provider/common/memory.h"

#include <span>

namespace fcip {

/// What a member was asked.
struct reference_request {
    const char* member; ///< the member's own name, for traces
    const char* key_value;
    const char* association_class; ///< may be null, which matches nothing
    const CMPIResult* result;
    const char* name_space;
};

/// A platform record that a branch fetches, after its lookup and before either end. Without it the branch ends with -1.
enum class platform_record {
    none,
    fc_port,          ///< the Fibre Channel port behind the link's FCIP interface
    port_of_link,     ///< the Ethernet port that carries the link
    port_of_if_index, ///< the port with the key's interface index
    profile,          ///< the link's profile
};

/// What is known of the source when the ends are made.
struct reference_source : traversal_source {
    platform_ptr<PmPortInfo> port;
    FcipEntityEntry profile{};
};

/// Makes the path of an end; null or -1 when it cannot be made.
using reference_path_maker = CMPIObjectPath*(const char* class_name, const char* name_space,
                                             const reference_source& source);

/// One end of an association.
struct reference_end {
    const char* class_name; ///< the class text that the path's builder is given
    reference_path_maker* make;
};

/// The name policy of rows whose association bears the name that the client wrote.
inline constexpr const char* as_passed = nullptr;

/// A branch. Rows are tested in order, without regard to case.
struct reference_row {
    int location;                  ///< number in the location trace of the branch: its place in the table, from 1
    const char* association_class; ///< the text that is compared
    key_use key;
    platform_record record;
    association_shape shape;
    const char* name; ///< the association's class name, or as_passed
    reference_end first;
    reference_end second;
};

/// The line that a member prints with the association class on entry.
enum class class_line { none, plain, starred };

/// The branches of one source class.
struct reference_table {
    std::span<const reference_row> rows;
    class_line line = class_line::none;
    int failed_lookup = -1; ///< what the member returns after a failed lookup
};

/// The frame of the members that answer with instances: traces, picks the branch, reads the key, makes both ends,
/// returns the association.
/// @return 0; -1 when a lookup fails (but for failed_lookup) or an end cannot be made: nothing is returned then
int return_references(const reference_table& table, const reference_request& request);

/// The same for members that answer with paths.
int return_reference_names(const reference_table& table, const reference_request& request);

} // namespace fcip
