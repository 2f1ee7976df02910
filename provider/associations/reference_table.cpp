#include "provider/associations/reference_table.h"

#include "provider/access/ports.h"
#include "provider/common/results.h"
#include "provider/common/trace.h"

#include <strings.h>

namespace fcip {

namespace {

/// The last step: makes an association of the given name and returns it; returns nothing when an end is missing.
using last_step = void(const reference_request& request, const reference_row& row, const char* name,
                       CMPIObjectPath* first, CMPIObjectPath* second);

bool both(const CMPIObjectPath* first, const CMPIObjectPath* second) {
    return is_object(first) && is_object(second);
}

void return_association(const reference_request& request, const reference_row& row, const char* name,
                        CMPIObjectPath* first, CMPIObjectPath* second) {
    const CMPIInstance* association =
        build_association_instance(row.shape, name, request.name_space, first, second, _broker);
    if (both(first, second))
        return_instance(request.result, association);
}

void return_association_path(const reference_request& request, const reference_row& row, const char* name,
                             CMPIObjectPath* first, CMPIObjectPath* second) {
    const CMPIObjectPath* association =
        fill_association_reference(row.shape, name, request.name_space, first, second, _broker);
    if (both(first, second))
        return_path(request.result, association);
}

void print_class_line(class_line line, const char* association_class) {
    const char* text = association_class == nullptr ? "(null)" : association_class;
    if (line == class_line::starred)
        trace(" ****** Result Class :", text, "  ********** \n");
    else if (line == class_line::plain)
        trace("Result Class :", text, " \n");
}

const reference_row* branch_of(const reference_table& table, const char* association_class) {
    if (association_class == nullptr)
        return nullptr;
    for (const reference_row& row : table.rows)
        if (strcasecmp(row.association_class, association_class) == 0)
            return &row;
    return nullptr;
}

/// Fetches what a branch needs beside the link. False if it cannot be had.
bool fetch_record(platform_record record, reference_source& source) {
    switch (record) {
    case platform_record::none:
        return true;
    case platform_record::fc_port:
        source.port.reset(pm_cim_find_interface(platform_exact, source.link.link_if_index, mts_q));
        return source.port != nullptr;
    case platform_record::port_of_link:
        source.port = fetch_port(platform_exact, source.link.ethernet_if_index);
        return source.port != nullptr;
    case platform_record::port_of_if_index:
        source.port = fetch_port(platform_exact, source.if_index);
        return source.port != nullptr;
    case platform_record::profile:
        return get_profile_from_link_entry(&source.link, &source.profile) == 0;
    }
    return false;
}

CMPIObjectPath* make(const reference_end& end, const reference_request& request, const reference_source& source) {
    return end.make(end.class_name, request.name_space, source);
}

int follow(const reference_table& table, const reference_row& row, const reference_request& request,
           last_step* finish) {
    trace_location(request.member, row.location);
    reference_source source;
    if (find_source(row.key, request.key_value, source) != 0)
        return table.failed_lookup;
    if (!fetch_record(row.record, source))
        return -1;
    CMPIObjectPath* first = make(row.first, request, source);
    CMPIObjectPath* second = make(row.second, request, source);
    finish(request, row, row.name == as_passed ? request.association_class : row.name, first, second);
    if (!both(first, second))
        return -1;
    trace_exiting(request.member); // the failures above leave without it
    return 0;
}

int traverse(const reference_table& table, const reference_request& request, last_step* finish) {
    trace_entering(request.member);
    print_class_line(table.line, request.association_class);
    if (const reference_row* row = branch_of(table, request.association_class))
        return follow(table, *row, request, finish);
    trace_exiting(request.member);
    return 0;
}

} // namespace

int return_references(const reference_table& table, const reference_request& request) {
    return traverse(table, request, return_association);
}

int return_reference_names(const reference_table& table, const reference_request& request) {
    return traverse(table, request, return_association_path);
}

} // namespace fcip
