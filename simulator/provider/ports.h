// ZANTO_EthernetPort and ZANTO_FCPort.
#pragma once

#include "simulator/provider/look.h"

#include <string>
#include <vector>

namespace switchsim {

// Members of SwitchClass. The id of a port is its DeviceID.

CMPIObjectPath* port_path_of(const CimClass& of, const std::string& id);

std::vector<std::string> ethernet_port_ids(const Switch& contents);
bool is_ethernet_port(const Switch& contents, const std::string& id);
CMPIInstance* ethernet_port(Look& look, const CimClass& of, const std::string& id, const char** properties);

/// The ports that a Fibre Channel interface is behind, those of the tunnels among them.
std::vector<std::string> fc_port_ids(const Switch& contents);
bool is_fc_port(const Switch& contents, const std::string& id);
CMPIInstance* fc_port(Look& look, const CimClass& of, const std::string& id, const char** properties);

} // namespace switchsim
