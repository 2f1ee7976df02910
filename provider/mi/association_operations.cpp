#include "provider/mi/association_operations.h"

#include "provider/access/lock.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"
#include "provider/mi/association_routes.h"
#include "provider/mi/key_scan.h"

#include <strings.h>

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

/// The first row whose class it is; null if there is none.
template <typename Member>
Member* member_of(std::span<const association_route<Member>> routes, const char* class_name) {
    for (const auto& route : routes)
        if (strcasecmp(route.class_name, class_name) == 0)
            return route.member;
    return nullptr;
}

/// The frame of the four operations. `call` is handed the member, the key value and the path's namespace.
template <typename Member, typename Call>
CMPIStatus answer(const operation& asked, std::span<const association_route<Member>> routes, const CMPIObjectPath* path,
                  Call call) {
    const char* class_name = chars_of(CMGetClassName(path, nullptr));
    trace_entering(asked.name);
    const found_key key = scan_keys(class_name, path, asked.found_end);
    if (!key.found) {
        trace(asked.no_key);
        return key_not_found();
    }
    {
        const platform_lock lock;
        if (Member* member = member_of(routes, class_name))
            call(member, key.value.data(), chars_of(CMGetNameSpace(path, nullptr)));
    }
    trace_exiting(asked.name);
    return served();
}

} // namespace

CMPIStatus FCIP_Associators(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                            const CMPIObjectPath* path, const char* association_class, const char* result_class,
                            const char* role, const char* result_role, const char** properties) {
    return answer(associators, associators_routes(), path,
                  [&](associators_member* member, const char* key_value, const char* name_space) {
                      member(key_value, association_class, result_class, role, result_role, properties, result,
                             name_space);
                  });
}

CMPIStatus FCIP_AssociatorNames(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                                const CMPIObjectPath* path, const char* association_class, const char* result_class,
                                const char* role, const char* result_role) {
    return answer(associator_names, associator_names_routes(), path,
                  [&](associator_names_member* member, const char* key_value, const char* name_space) {
                      member(key_value, association_class, result_class, role, result_role, result, name_space);
                  });
}

CMPIStatus FCIP_References(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                           const CMPIObjectPath* path, const char* result_class, const char* role,
                           const char** properties) {
    return answer(references, references_routes(), path,
                  [&](references_member* member, const char* key_value, const char* name_space) {
                      member(key_value, result_class, role, properties, result, name_space);
                  });
}

CMPIStatus FCIP_ReferenceNames(CMPIAssociationMI* /*mi*/, const CMPIContext* /*context*/, const CMPIResult* result,
                               const CMPIObjectPath* path, const char* result_class, const char* role) {
    return answer(reference_names, reference_names_routes(), path,
                  [&](reference_names_member* member, const char* key_value, const char* name_space) {
                      member(key_value, result_class, role, result, name_space);
                  });
}

} // namespace fcip
