#include "simulator/interface_numbers.h"
#include "simulator/scenario_fields.h"
#include "simulator/scenario_parts.h"

namespace switchsim {
namespace {

using Profile = FcipEntityEntry;
using Link = FcipLinkEntry;

void read_profile(TableReader& reader, Switch& contents) {
    Profile row{};
    row.entity_id = reader.required<std::uint32_t>("id", 1).value_or(0);
    const auto address = reader.address("address");
    if (!address)
        reader.missing("address", "an IPv4 or IPv6 address");
    row.local_address = address.value_or(ip_addr_value{});
    read_words(reader, profile_words, row);
    row.address_if_index =
        read_ethernet_reference(reader, contents, "address_interface", "address_if_index").value_or(0);
    if (row.entity_id == 0)
        reader.errors().doubt("profile");
    else if (!contents.profiles.emplace(row.entity_id, row).second)
        reader.fail("id", "an id that no other profile has");
    reader.finish();
}

/// The tunnel's row of the link table.
Link read_link(TableReader& reader, const Switch& contents) {
    Link row{};
    row.entity_id = reader.required<std::uint32_t>("profile", 1).value_or(0);
    const bool profile_missing = reader.boolean("profile_missing").value_or(false);
    if (!profile_missing && row.entity_id != 0 && !contents.profiles.contains(row.entity_id) &&
        !reader.errors().doubts("profile"))
        reader.fail("profile", "the id of a [[profile]], or profile_missing = true");
    row.link_index = reader.required<std::uint32_t>("index").value_or(0);
    row.link_if_index = reader.number<std::uint32_t>("if_index", 1).value_or(fcip_base + row.link_index);
    const auto address = reader.address("remote_address");
    if (!address)
        reader.missing("remote_address", "an IPv4 or IPv6 address");
    row.remote_address = address.value_or(ip_addr_value{});
    row.remote_entity_id = reader.number<std::uint32_t>("remote_profile").value_or(row.entity_id);
    if (const auto wwn = reader.wwn("remote_wwn"))
        std::copy(wwn->begin(), wwn->end(), row.remote_wwn);
    read_words(reader, link_words, row);
    row.ethernet_if_index = read_ethernet_reference(reader, contents, "ethernet", "ethernet_if_index").value_or(0);
    row.physical_if_index =
        read_ethernet_reference(reader, contents, "physical", "physical_if_index").value_or(row.ethernet_if_index);
    return row;
}

/// The tunnel's TCP connection, whose key is made of the link's and both ends' ports.
void read_connection(TableReader& reader, const Link& link, Switch& contents) {
    auto inner = reader.table("connection");
    if (!inner)
        return;
    FcipTcpConnEntry row{};
    read_words(*inner, connection_words, row);
    inner->finish();
    const auto profile = contents.profiles.find(link.entity_id);
    const std::uint32_t local_port = profile == contents.profiles.end() ? 0 : profile->second.listen_port;
    contents.connections[{link.entity_id, link.link_index, static_cast<std::uint16_t>(local_port),
                          static_cast<std::uint16_t>(link.remote_tcp_port)}] = row;
}

void read_errors(TableReader& reader, const LinkKey& key, Switch& contents) {
    auto inner = reader.table("errors");
    if (!inner)
        return;
    FcipLinkErrors& errors = contents.link_errors[key];
    read_counters(*inner, link_error_fields, errors.bytes, CounterTable::link_errors, key, contents);
    inner->finish();
}

/// A byte, or false for none.
std::optional<std::uint8_t> read_number_or_false(TableReader& reader, std::string_view key,
                                                 std::optional<std::uint8_t> fallback) {
    if (reader.is_false(key))
        return std::nullopt;
    const auto given = reader.number<std::uint8_t>(key);
    return given ? given : fallback;
}

/// The FCIP interface's row of the port table. It sits where its Ethernet port does, if nothing else is said.
Port read_fcip_interface(TableReader& reader, const Link& link, const Switch& contents) {
    Port port;
    port.kind = kind_fcip;
    port.mtu = fcip_mtu;
    port.fc_interface = true;
    const auto carrier = contents.ports.find(link.ethernet_if_index);
    const bool is_carried = carrier != contents.ports.end();
    port.slot = read_number_or_false(reader, "slot", is_carried ? carrier->second.slot : std::nullopt);
    port.port = read_number_or_false(reader, "port", is_carried ? carrier->second.port : std::nullopt);
    read_interface(reader, contents, port, default_name(link), default_name(link));
    return port;
}

void read_tunnel(TableReader& reader, Switch& contents) {
    const Link row = read_link(reader, contents);
    const LinkKey key{row.entity_id, row.link_index};
    const bool has_key = row.entity_id != 0 && reader.has("index") && reader.good({"index"});
    if (has_key && !contents.links.emplace(key, row).second)
        reader.fail("index", "an index that no other tunnel of the profile has");
    read_connection(reader, row, contents);
    read_errors(reader, key, contents);
    Port port = read_fcip_interface(reader, row, contents);
    const bool has_port_row = reader.boolean("port_row").value_or(true);
    if (has_port_row && has_key && reader.good({"index", "if_index"}))
        add_port(reader, contents, "index", row.link_if_index, std::move(port));
    reader.finish();
}

} // namespace

void read_profiles(TableReader& root, Switch& contents) {
    for (TableReader& reader : root.tables("profile"))
        read_profile(reader, contents);
}

void read_tunnels(TableReader& root, Switch& contents) {
    for (TableReader& reader : root.tables("tunnel"))
        read_tunnel(reader, contents);
}

} // namespace switchsim
