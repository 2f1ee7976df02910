// How FCIP_GetInstance serves each class.
#pragma once

#include "provider/mi/gets.h"

#include <span>

namespace fcip {

/// The rows of FCIP_GetInstance, in test order.
std::span<const class_row<get_route>> get_instance_routes();

} // namespace fcip
