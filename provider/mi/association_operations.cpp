#include "provider/mi/association_operations.h"

#include "provider/access/lock.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"
#include "provider/mi/association_routes.h"
#include "provider/mi/key_scan.h"

namespace fcip {

namespace {

/// The texts of an operation.
struct operation {
    const char* name;
    const char* found_end; ///< ends the line of a key that is found
    const char* no_key;    ///< printed as it stands
};

constexpr operation associators{"FCIP_Associators", "\n", "associators can't find key\n"};
constexpr operation associator_names{"FCIP_AssociatorNames", "\n", "associator names can't find key\n"};
constexpr operation references{"FCIP_References", " \n", "references can't find key\n"};
constexpr operation reference_names{"FCIP_ReferenceNames", " \n", "references names can't find key\n"};

/// The object that a request starts from.
struct source_object {
    const char* class_name;
    found_key key;
};

/// The frame's beginning: traces, and finds the source object's key, or prints that it cannot.
source_object find_source_object(const operation& asked, const CMPIObjectPath* path) {
    const char* class_name = path_class_name(path);
    trace_entering(asked.name);
    const found_key key = scan_keys(class_name, path, asked.found_end);
    if (!key.found)
        trace(asked.no_key);
    return {class_name, key};
}

/// The member that serves a source class; null if there is none.
template <typename Member>
Member* member_of(std::span<const class_row<Member*>> routes, const source_object& source) {
    const auto* row = row_for(routes, source.class_name);
    return row == nullptr ? nullptr : row->serves;
}

/// The frame's end.
CMPIStatus end(const operation& asked) {
    trace_exiting(asked.name);
    return served();
}

} // namespace

CMPIStatus FCIP_Associators(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                            const CMPIObjectPath* path, const char* association_class, const char* result_class,
                            const char* role, const char* result_role, const char** properties) {
    const source_object source = find_source_object(associators, path);
    if (!source.key.found)
        return key_not_found();
    {
        const platform_lock lock;
        if (const auto member = member_of(associators_routes(), source))
            member(source.key.value.data(), association_class, result_class, role, result_role, properties, result,
                   path_name_space(path));
    }
    return end(associators);
}

CMPIStatus FCIP_AssociatorNames(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                                const CMPIObjectPath* path, const char* association_class, const char* result_class,
                                const char* role, const char* result_role) {
    const source_object source = find_source_object(associator_names, path);
    if (!source.key.found)
        return key_not_found();
    {
        const platform_lock lock;
        if (const auto member = member_of(associator_names_routes(), source))
            member(source.key.value.data(), association_class, result_class, role, result_role, result,
                   path_name_space(path));
    }
    return end(associator_names);
}

CMPIStatus FCIP_References(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                           const CMPIObjectPath* path, const char* result_class, const char* role,
                           const char** properties) {
    const source_object source = find_source_object(references, path);
    if (!source.key.found)
        return key_not_found();
    {
        const platform_lock lock;
        if (const auto member = member_of(references_routes(), source))
            member(source.key.value.data(), result_class, role, properties, result, path_name_space(path));
    }
    return end(references);
}

CMPIStatus FCIP_ReferenceNames(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                               const CMPIObjectPath* path, const char* result_class, const char* role) {
    const source_object source = find_source_object(reference_names, path);
    if (!source.key.found)
        return key_not_found();
    {
        const platform_lock lock;
        if (const auto member = member_of(reference_names_routes(), source))
            member(source.key.value.data(), result_class, role, result, path_name_space(path));
    }
    return end(reference_names);
}

} // namespace fcip
