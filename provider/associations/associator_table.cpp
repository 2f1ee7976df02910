#include "provider/associations/associator_table.h"

#include "provider/access/ports.h"
#include "provider/common/results.h"
#include "provider/common/trace.h"

#include <strings.h>

namespace fcip {

namespace {

void follow(const associator_row& row, const traversal_request& request) {
    if (row.location != 0)
        trace_location(request.member, row.location);
    traversal_source source;
    if (find_source(row.key, request.key_value, source) != 0 ||
        !fetch_record(row.record, source, request.member, row.location))
        return;
    const auto& [class_name, made] = row.far_end;
    if (row.instead != nullptr)
        row.instead(request, row, source);
    else if (request.answer == wanted::paths)
        return_path(request.result, made.fill(class_name, request.name_space, source));
    else
        return_instance(request.result, made.build(class_name, request.name_space, source, request.properties));
}

} // namespace

int return_associators(const associator_table& table, const traversal_request& request) {
    trace_entering(request.member);
    const char* association_class = request.association_class;
    if (table.announces_class)
        trace("Association Class ", association_class == nullptr ? "(null)" : association_class, " \n");
    if (association_class == nullptr)
        return 0; // without "Exiting"
    bool is_served = false;
    for (const associator_row& row : table.rows)
        if (strcasecmp(row.class_name, association_class) == 0) {
            follow(row, request);
            is_served = true;
        }
    if (!is_served && table.other_names != nullptr)
        follow(*table.other_names, request);
    trace_exiting(request.member);
    return 0;
}

void return_walked_port(const traversal_request& request, const associator_row& row, const traversal_source& source) {
    get_etherport_from_if_index(source.if_index, request.answer == wanted::instances ? 1 : 0, row.far_end.class_name,
                                request.result, request.name_space, request.properties, _broker);
}

void make_path_only(const traversal_request& request, const associator_row& row, const traversal_source& source) {
    row.far_end.of.fill(row.far_end.class_name, request.name_space, source);
}

} // namespace fcip
