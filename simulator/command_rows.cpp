#include "simulator/command_rows.h"

#include "simulator/scenario_fields.h"
#include "simulator/whole_number.h"

#include <algorithm>
#include <cstring>

namespace switchsim {
namespace {

/// "3", or "1/3" for the profile and the tunnel's number.
LinkKey tunnel_of(const Switch& contents, const std::string& name) {
    const std::size_t slash = name.find('/');
    const auto profile = slash == std::string::npos ? std::nullopt : whole_number<std::uint32_t>(name.substr(0, slash));
    const auto number = whole_number<std::uint64_t>(slash == std::string::npos ? name : name.substr(slash + 1));
    std::vector<LinkKey> found;
    for (const auto& [key, link] : contents.links)
        if (number == std::uint64_t{key.second} + 1 && (slash == std::string::npos || key.first == profile))
            found.push_back(key);
    if (found.empty())
        throw CommandError{"no tunnel is called " + name};
    if (found.size() > 1)
        throw CommandError{"several tunnels are called " + name + "; name one by PROFILE/NUMBER"};
    return found[0];
}

/// "1/2" for slot and port, or an interface index.
std::uint32_t port_of(const Switch& contents, std::uint8_t kind, const std::string& name) {
    const auto index = whole_number<std::uint32_t>(name);
    for (const auto& [if_index, port] : contents.ports)
        if (port.kind == kind && (index == if_index || number_text(port.slot) + "/" + number_text(port.port) == name))
            return if_index;
    throw CommandError{"no such port is called " + name};
}

/// A row whose name is its number or its WWN.
LinkKey other_row_of(const Switch& contents, const std::string& section, const std::string& name) {
    const std::uint32_t number = whole_number<std::uint32_t>(name).value_or(0);
    if (section == "profile" ? contents.profiles.contains(number)
                             : section == "vsan" && contents.vsans.contains(number))
        return {number, 0};
    for (const auto& [wwn, text] : contents.wwn_texts)
        if (section == "wwn_text" && plain_text(wwn) == name)
            return halves_of(wwn);
    if (section == "profile" || section == "vsan" || section == "wwn_text")
        throw CommandError{"no " + section + " is called " + name};
    throw CommandError{"\"" + section +
                       "\" is none of tunnel, profile, ethernet, fibre_channel, port_channel, vsan, wwn_text, "
                       "card, switch, ip"};
}

void erase_tunnel(Switch& contents, const LinkKey& key) {
    if (owns_interface(contents, key))
        contents.ports.erase(contents.links.at(key).link_if_index);
    contents.links.erase(key);
    contents.link_errors.erase(key);
    std::erase_if(contents.connections, [&](const auto& row) {
        return LinkKey{std::get<0>(row.first), std::get<1>(row.first)} == key;
    });
    std::erase_if(contents.rates, [&](const auto& rate) {
        return rate.first.table == CounterTable::link_errors && rate.first.row == key;
    });
}

void erase_port(Switch& contents, std::uint32_t if_index) {
    contents.ports.erase(if_index);
    std::erase_if(contents.rates, [&](const auto& rate) {
        return rate.first.table != CounterTable::link_errors && rate.first.row == LinkKey{if_index, 0};
    });
}

} // namespace

LinkKey halves_of(const Wwn& wwn) {
    LinkKey halves;
    std::memcpy(&halves.first, wwn.data(), 4);
    std::memcpy(&halves.second, wwn.data() + 4, 4);
    return halves;
}

Wwn wwn_of(const LinkKey& halves) {
    Wwn wwn;
    std::memcpy(wwn.data(), &halves.first, 4);
    std::memcpy(wwn.data() + 4, &halves.second, 4);
    return wwn;
}

bool owns_interface(const Switch& contents, const LinkKey& key) {
    const std::uint32_t if_index = contents.links.at(key).link_if_index;
    const auto port = contents.ports.find(if_index);
    const auto first =
        std::ranges::find_if(contents.links, [&](const auto& row) { return row.second.link_if_index == if_index; });
    return port != contents.ports.end() && port->second.kind == kind_fcip && first->first == key;
}

Target target_of(const Switch& contents, const std::vector<std::string>& words) {
    if (words.size() > 1 && (words[1] == "switch" || words[1] == "ip"))
        return {words[1], {}, 2};
    if (words.size() < 3)
        throw CommandError{words[0] + ": expected what, and its name"};
    const std::string& section = words[1];
    const std::string& name = words[2];
    if (section == "tunnel")
        return {section, tunnel_of(contents, name), 3};
    for (const PortKind& kind : port_kinds)
        if (section == kind.section)
            return {section, {port_of(contents, kind.kind, name), 0}, 3};
    return {section, other_row_of(contents, section, name), 3};
}

void erase(Switch& contents, const Target& target) {
    if (target.section == "tunnel")
        erase_tunnel(contents, target.key);
    else if (target.section == "profile")
        contents.profiles.erase(target.key.first);
    else if (target.section == "vsan")
        contents.vsans.erase(target.key.first);
    else if (target.section == "wwn_text")
        contents.wwn_texts.erase(wwn_of(target.key));
    else
        erase_port(contents, target.key.first);
}

std::vector<std::string> new_rows(const Switch& before, const Switch& after) {
    std::vector<std::string> names;
    for (const auto& [key, link] : after.links)
        if (!before.links.contains(key))
            names.push_back("tunnel " + std::to_string(key.first) + "/" +
                            std::to_string(std::uint64_t{key.second} + 1));
    for (const auto& [id, profile] : after.profiles)
        if (!before.profiles.contains(id))
            names.push_back("profile " + std::to_string(id));
    for (const PortKind& kind : port_kinds)
        for (const auto& [if_index, port] : after.ports)
            if (port.kind == kind.kind && !before.ports.contains(if_index))
                names.push_back(std::string(kind.section) + " " + std::to_string(if_index));
    for (const auto& [id, vsan] : after.vsans)
        if (!before.vsans.contains(id))
            names.push_back("vsan " + std::to_string(id));
    for (const auto& [wwn, text] : after.wwn_texts)
        if (!before.wwn_texts.contains(wwn))
            names.push_back("wwn_text " + plain_text(wwn));
    return names;
}

} // namespace switchsim
