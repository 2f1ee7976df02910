#include "provider/associations/reference_table.h"

#include "provider/common/class_row.h"
#include "provider/common/results.h"
#include "provider/common/trace.h"

namespace fcip {

namespace {

void print_class_line(class_line line, const char* association_class) {
    const char* text = association_class == nullptr ? "(null)" : association_class;
    if (line == class_line::starred)
        trace(" ****** Result Class :", text, "  ********** \n");
    else if (line == class_line::plain)
        trace("Result Class :", text, " \n");
}

/// What following a branch came to.
enum class outcome { no_source, no_end, returned };

/// Makes an association of its two ends and returns it. A missing end is told by the shape's builder.
outcome tie(const reference_row& row, const traversal_request& request, CMPIObjectPath* first, CMPIObjectPath* second) {
    const char* name = row.name == as_passed ? request.association_class : row.name;
    const bool has_ends = is_object(first) && is_object(second);
    if (request.answer == wanted::paths) {
        const CMPIObjectPath* path = row.shape.fill(name, request.name_space, first, second, _broker);
        if (has_ends)
            return_path(request.result, path);
    } else {
        const CMPIInstance* instance = row.shape.build(name, request.name_space, first, second, _broker);
        if (has_ends)
            return_instance(request.result, instance);
    }
    return has_ends ? outcome::returned : outcome::no_end;
}

outcome follow(const reference_row& row, const traversal_request& request) {
    trace_location(request.member, row.location);
    traversal_source source;
    if (find_source(row.key, request.key_value, source) != 0)
        return outcome::no_source;
    if (!fetch_record(row.record, source, request.member, row.location))
        return outcome::no_end;
    CMPIObjectPath* first = row.first.of.fill(row.first.class_name, request.name_space, source);
    CMPIObjectPath* second = row.second.of.fill(row.second.class_name, request.name_space, source);
    return tie(row, request, first, second);
}

} // namespace

int return_references(const reference_table& table, const traversal_request& request) {
    trace_entering(request.member);
    print_class_line(table.line, request.association_class);
    if (const reference_row* row = row_for(table.rows, request.association_class)) {
        const outcome came_to = follow(*row, request);
        if (came_to != outcome::returned) // without "Exiting"
            return came_to == outcome::no_source ? table.failed_lookup : -1;
    }
    trace_exiting(request.member);
    return 0;
}

} // namespace fcip
