// Which traversal serves a source class. The four tables differ on purpose.
#pragma once

#include "provider/associations/associators.h"
#include "provider/associations/references.h"

#include <span>

namespace fcip {

/// A row: the source class that is tested, and the member that serves it; null = nothing is returned.
template <typename Member>
struct association_route {
    const char* class_name;
    Member* member;
};

/// The rows of each operation, in test order.
std::span<const association_route<associators_member>> associators_routes();
std::span<const association_route<associator_names_member>> associator_names_routes();
std::span<const association_route<references_member>> references_routes();
std::span<const association_route<reference_names_member>> reference_names_routes();

} // namespace fcip
