#include "simulator/provider/switch_classes.h"

#include "simulator/provider/computer_systems.h"
#include "simulator/provider/ports.h"

#include <strings.h>

namespace switchsim {

namespace {

constexpr SwitchClass classes[] = {
    {physical_system_class, "Name", physical_system_ids, is_physical_system, system_path_of, physical_system},
    {logical_system_class, "Name", logical_system_ids, is_logical_system, system_path_of, logical_system},
    {ethernet_port_class, "DeviceID", ethernet_port_ids, is_ethernet_port, port_path_of, ethernet_port},
    {fc_port_class, "DeviceID", fc_port_ids, is_fc_port, port_path_of, fc_port},
};

} // namespace

const SwitchClass* find_class(const char* name) {
    for (const SwitchClass& row : classes)
        if (strcasecmp(row.name, name) == 0)
            return &row;
    return nullptr;
}

} // namespace switchsim
