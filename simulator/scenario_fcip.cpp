#include "simulator/interface_numbers.h"
#include "simulator/scenario_parts.h"

namespace switchsim {
namespace {

using Profile = FcipEntityEntry;
using Link = FcipLinkEntry;

constexpr WordField<Profile> profile_words[] = {
    {"port", &Profile::listen_port, 3225},
    {"sack", &Profile::sack, 1, true},
    {"sequence_number_wrap", &Profile::sequence_number_wrap, 1, true},
    {"phb_support", &Profile::phb_support, 0, true},
    {"pmtu_discovery", &Profile::pmtu_discovery, 1, true},
    {"pmtu_reset_timeout", &Profile::pmtu_reset_timeout, 3600},
    {"keep_alive", &Profile::keep_alive, 60},
    {"minimum_retransmit_time", &Profile::minimum_retransmit_time, 200},
    {"maximum_retransmissions", &Profile::maximum_retransmissions, 4},
    {"send_buffer_size", &Profile::send_buffer_size, 0},
    {"round_trip_time", &Profile::round_trip_time, 1000},
    {"maximum_bandwidth", &Profile::maximum_bandwidth, 1000000},
    {"minimum_bandwidth", &Profile::minimum_bandwidth, 500000},
    {"cwm", &Profile::cwm, 1, true},
    {"burst_size", &Profile::burst_size, 50},
    {"maximum_jitter", &Profile::maximum_jitter, 0},
};

constexpr WordField<Link> link_words[] = {
    {"cost", &Link::cost, 1000},
    {"status", &Link::status, 1},
    {"passive_mode", &Link::passive_mode, 0, true},
    {"tcp_connections", &Link::tcp_connections, 2},
    {"check_timestamp", &Link::check_timestamp, 0, true},
    {"timestamp_tolerance", &Link::timestamp_tolerance, 2000},
    {"remote_port", &Link::remote_tcp_port, 3225},
    {"local_port_enable", &Link::local_port_enable, 1, true},
    {"special_frame_enable", &Link::special_frame_enable, 0, true},
    {"word_88", &Link::unread_88, 0},
    {"bport_keep_alive_enable", &Link::bport_keep_alive_enable, 0, true},
    {"control_qos", &Link::control_qos, 0},
    {"data_qos", &Link::data_qos, 0},
    {"write_acceleration", &Link::write_acceleration, 0, true},
    {"compression_mode", &Link::compression_mode, 1},
    {"tape_acceleration", &Link::tape_acceleration, 0, true},
    {"flow_control_buffer_size", &Link::flow_control_buffer_size, 0},
    {"ipsec", &Link::ipsec, 0, true},
    {"write_acceleration_operational", &Link::write_acceleration_operational, 0, true},
    {"tape_acceleration_operational", &Link::tape_acceleration_operational, 0, true},
    {"tape_read_acceleration_operational", &Link::tape_read_acceleration_operational, 0, true},
};

constexpr WordField<FcipTcpConnEntry> connection_words[] = {
    {"purpose", &FcipTcpConnEntry::purpose, 1},
    {"receiver_window_size", &FcipTcpConnEntry::receiver_window_size, 65535},
    {"maximum_segment_size", &FcipTcpConnEntry::maximum_segment_size, 1460},
    {"timeout", &FcipTcpConnEntry::connection_timeout, 30},
};

void read_profile(TableReader& reader, Switch& contents) {
    Profile row{};
    row.entity_id = reader.required<std::uint32_t>("id", 1);
    const auto address = reader.address("address");
    row.local_address = address ? *address : reader.missing<ip_addr_value>("address", "an IPv4 or IPv6 address");
    read_words(reader, profile_words, row);
    row.address_if_index =
        read_ethernet_reference(reader, contents, "address_interface", "address_if_index").value_or(0);
    reader.finish();
    if (!contents.profiles.emplace(row.entity_id, row).second)
        reader.fail("id", "an id that no other profile has");
}

/// The tunnel's row of the link table.
Link read_link(TableReader& reader, const Switch& contents) {
    Link row{};
    row.entity_id = reader.required<std::uint32_t>("profile", 1);
    const bool profile_missing = reader.boolean("profile_missing").value_or(false);
    if (!profile_missing && !contents.profiles.contains(row.entity_id))
        reader.fail("profile", "the id of a [[profile]], or profile_missing = true");
    row.link_index = reader.required<std::uint32_t>("index");
    row.link_if_index = reader.number<std::uint32_t>("if_index", 1).value_or(fcip_base + row.link_index);
    const auto address = reader.address("remote_address");
    row.remote_address =
        address ? *address : reader.missing<ip_addr_value>("remote_address", "an IPv4 or IPv6 address");
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
    inner->counters(link_error_fields, errors.bytes);
    inner->finish();
}

/// The FCIP interface's row of the port table. It sits where its Ethernet port does.
Port read_fcip_interface(TableReader& reader, const Link& link, const Switch& contents) {
    Port port;
    port.kind = kind_fcip;
    port.mtu = 2300;
    port.fc_interface = true;
    const auto carrier = contents.ports.find(link.ethernet_if_index);
    if (carrier != contents.ports.end()) {
        port.slot = carrier->second.slot;
        port.port = carrier->second.port;
    }
    const std::string name = "fcip" + std::to_string(std::uint64_t{link.link_index} + 1);
    read_interface(reader, contents, port, name, name);
    return port;
}

void read_tunnel(TableReader& reader, Switch& contents) {
    const Link row = read_link(reader, contents);
    const LinkKey key{row.entity_id, row.link_index};
    if (!contents.links.emplace(key, row).second)
        reader.fail("index", "an index that no other tunnel of the profile has");
    read_connection(reader, row, contents);
    read_errors(reader, key, contents);
    Port port = read_fcip_interface(reader, row, contents);
    if (reader.boolean("port_row").value_or(true))
        add_port(reader, contents, reader.has("if_index") ? "if_index" : "index", row.link_if_index, std::move(port));
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
