#include "simulator/provider/ports.h"

#include "simulator/provider/values.h"
#include "simulator/whole_number.h"

#include <cmpimacs.h>

#include <algorithm>

namespace switchsim {

namespace {

// The standard's numbers.
constexpr std::uint16_t technology_ethernet = 2;
constexpr std::uint16_t technology_fibre_channel = 4;
constexpr std::uint16_t port_type_other = 1;

/// The interface index of a DeviceID that device_id() would write; nothing for any other text.
std::optional<std::uint32_t> if_index_of(const std::string& id) {
    const auto number = whole_number<std::int32_t>(id);
    const auto if_index = static_cast<std::uint32_t>(number.value_or(0));
    return device_id(if_index) == id ? std::optional(if_index) : std::nullopt;
}

bool has_ethernet(const Port& port) {
    return port.kind == kind_ethernet;
}

bool has_fibre_channel(const Port& port) {
    return port.fc_interface;
}

using Wanted = bool (*)(const Port& port);

std::vector<std::string> ids_of(const Switch& contents, Wanted wanted) {
    std::vector<std::string> ids;
    for (const auto& [if_index, port] : contents.ports)
        if (wanted(port))
            ids.push_back(device_id(if_index));
    return ids;
}

bool is_wanted(const Switch& contents, const std::string& id, Wanted wanted) {
    const auto if_index = if_index_of(id);
    const auto port = if_index ? contents.ports.find(*if_index) : contents.ports.end();
    return port != contents.ports.end() && wanted(port->second);
}

/// A tunnel's status as the state of its interface.
State state_of_tunnel(std::uint32_t status) {
    return status == 1 ? state_good : status == 2 ? state_stopped : state_unknown;
}

State state_of(Look& look, std::uint32_t if_index, const Port& port) {
    const auto& cards = look.contents.slots;
    if (port.slot && std::ranges::find(cards, *port.slot) == cards.end())
        return state_not_there;
    const auto status = port.kind == kind_fcip ? look.tunnel_status(if_index) : std::nullopt;
    return status ? state_of_tunnel(*status) : state_good;
}

CMPIInstance* port_of(Look& look, const CimClass& of, const std::string& id, const char** properties,
                      std::uint16_t technology) {
    const std::uint32_t if_index = if_index_of(id).value_or(0);
    const auto port = look.contents.ports.find(if_index);
    CMPIInstance* instance = port != look.contents.ports.end() ? port_instance(of, if_index, properties) : nullptr;
    if (!instance)
        return nullptr;
    set_state(of.broker, instance, state_of(look, if_index, port->second));
    set_number(instance, "LinkTechnology", technology);
    if (port->second.kind == kind_fcip) {
        set_number(instance, "PortType", port_type_other);
        CMSetProperty(instance, "OtherPortType", "FCIP", CMPI_chars);
    }
    return instance;
}

} // namespace

CMPIObjectPath* port_path_of(const CimClass& of, const std::string& id) {
    return port_path(of, if_index_of(id).value_or(0));
}

std::vector<std::string> ethernet_port_ids(const Switch& contents) {
    return ids_of(contents, has_ethernet);
}

bool is_ethernet_port(const Switch& contents, const std::string& id) {
    return is_wanted(contents, id, has_ethernet);
}

CMPIInstance* ethernet_port(Look& look, const CimClass& of, const std::string& id, const char** properties) {
    return port_of(look, of, id, properties, technology_ethernet);
}

std::vector<std::string> fc_port_ids(const Switch& contents) {
    return ids_of(contents, has_fibre_channel);
}

bool is_fc_port(const Switch& contents, const std::string& id) {
    return is_wanted(contents, id, has_fibre_channel);
}

CMPIInstance* fc_port(Look& look, const CimClass& of, const std::string& id, const char** properties) {
    return port_of(look, of, id, properties, technology_fibre_channel);
}

} // namespace switchsim
