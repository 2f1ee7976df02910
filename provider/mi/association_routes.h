// Which traversal serves a source class. The four tables differ on purpose.
#pragma once

#include "provider/associations/associators.h"
#include "provider/associations/references.h"
#include "provider/common/class_row.h"

#include <span>

namespace fcip {

/// The rows of each operation, in test order; null = nothing is returned.
std::span<const class_row<associators_member*>> associators_routes();
std::span<const class_row<associator_names_member*>> associator_names_routes();
std::span<const class_row<references_member*>> references_routes();
std::span<const class_row<reference_names_member*>> reference_names_routes();

} // namespace fcip
