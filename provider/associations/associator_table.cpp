#include "provider/associations/associator_table.h"

#include "provider/common/trace.h"

#include <algorithm>

#include <strings.h>

namespace fcip {

namespace {

bool answers(const associator_row& row, const char* association_class) {
    if (row.association_class == not_served)
        return false;
    return row.association_class == any_other || strcasecmp(row.association_class, association_class) == 0;
}

const associator_row* at_location(std::span<const associator_row> rows, int location) {
    const auto row = std::ranges::find(rows, location, &associator_row::location);
    return row == rows.end() ? nullptr : &*row;
}

/// The branch that a request takes; null if there is none.
const associator_row* branch_of(const associator_source& source, const associator_request& request) {
    for (int location = 1;; ++location) {
        const associator_row* row = request.wants_paths ? at_location(source.names_differ, location) : nullptr;
        if (row == nullptr)
            row = at_location(source.rows, location);
        if (row == nullptr || answers(*row, request.association_class))
            return row;
    }
}

int traverse(const associator_source& source, const associator_request& request) {
    trace_entering(request.member);
    if (source.announces_class)
        trace("Association Class ", request.association_class == nullptr ? "(null)" : request.association_class, " \n");
    if (request.association_class == nullptr)
        return 0; // without "Exiting"
    if (const associator_row* row = branch_of(source, request)) {
        trace_location(request.member, row->location);
        traversal_source from;
        if (find_source(row->key, request.key_value, from) == 0)
            row->end(request, *row, from);
    }
    trace_exiting(request.member);
    return 0;
}

} // namespace

int return_associators(const associator_source& source, associator_request request) {
    return traverse(source, request);
}

int return_associator_names(const associator_source& source, associator_request request) {
    request.wants_paths = true;
    return traverse(source, request);
}

} // namespace fcip
