#include "switchdump/capture.h"

#include "platform/services.h"
#include "provider/common/memory.h"
#include "simulator/bytes.h"
#include "simulator/interface_numbers.h"
#include "simulator/scenario_fields.h"
#include "switchdump/line_cards.h"

#include <algorithm>
#include <set>

namespace switchdump {

namespace {

using fcip::platform_ptr;
using switchsim::Port;
using switchsim::Switch;

/// A text that a platform call writes into a buffer whose length it is not told; none if the call fails.
template <class Write>
std::optional<std::string> written(Write write) {
    char text[256] = {};
    if (write(text) != 0)
        return std::nullopt;
    return std::string(text, strnlen(text, sizeof text));
}

template <class Value, class Read>
std::optional<Value> stored(Read read) {
    alignas(std::max_align_t) Value value{};
    return read(&value) == 0 ? std::optional(value) : std::nullopt;
}

void read_wwn_text(const std::uint8_t* bytes, Switch& contents) {
    switchsim::Wwn wwn;
    std::copy(bytes, bytes + wwn.size(), wwn.begin());
    const auto text = written([&](char* buffer) { return cim_sprintf_wwn(buffer, wwn.data()); });
    if (text != switchsim::plain_text(wwn))
        contents.wwn_texts[wwn] = text.value_or("");
}

void read_identity(Switch& contents) {
    const char* name = getCSName();
    const char* system_name = CSgetName(mts_q);
    contents.has_name = name || system_name;
    contents.name = name ? name : "";
    if (system_name && contents.name != system_name)
        contents.system_name = system_name;
    alignas(std::max_align_t) std::uint8_t wwn[8] = {};
    system_cim_get_switch_wwn(mts_q, wwn);
    std::copy(std::begin(wwn), std::end(wwn), contents.wwn.begin());
    read_wwn_text(wwn, contents);
}

void read_ip_configuration(Switch& contents) {
    void* block = nullptr;
    std::uint32_t length = 8;
    const int status = cmi_req_resp(873, 1, 0, &block, &length, 0, 0, 35, mts_q, 5);
    const platform_ptr<std::uint8_t> reply(static_cast<std::uint8_t*>(block));
    if (status != 0 || !reply)
        return;
    std::uint8_t bytes[8] = {};
    std::copy_n(reply.get(), std::min<std::size_t>(length, sizeof bytes), bytes);
    contents.ip_configuration = {switchsim::get_big<std::uint32_t>(bytes, 0), bytes[4]};
}

void read_profiles(Switch& contents) {
    for (std::uint32_t key = 0;;) {
        const auto row = fcip::fetch<FcipEntityEntry>(
            [&](FcipEntityEntry** out) { return fcip_get_entity_entry(mts_q, platform_next, key, out, 5); });
        if (!row || row.row->entity_id <= key)
            return;
        key = row.row->entity_id;
        contents.profiles[key] = *row.row;
    }
}

/// The rows that are found by a link's key: its connection and its error counters.
void read_link_details(const FcipLinkEntry& link, Switch& contents) {
    const auto profile = contents.profiles.find(link.entity_id);
    const std::uint32_t local_port = profile == contents.profiles.end() ? 0 : profile->second.listen_port;
    const FcipTcpConnKey key{link.entity_id, link.link_index, static_cast<std::uint16_t>(local_port),
                             static_cast<std::uint16_t>(link.remote_tcp_port)};
    const auto connection = fcip::fetch<FcipTcpConnEntry>(
        [&](FcipTcpConnEntry** out) { return fcip_get_tcpconn_entry(mts_q, platform_exact, &key, out, 15); });
    if (connection)
        contents.connections[{key.entity_id, key.link_index, key.local_port, key.remote_port}] = *connection.row;
    const std::uint32_t words[] = {link.entity_id, link.link_index};
    const auto errors = fcip::fetch<FcipLinkErrors>(
        [&](FcipLinkErrors** out) { return fcip_snmp_get_link_errors(mts_q, platform_exact, words, out, 10); });
    if (errors)
        contents.link_errors[{link.entity_id, link.link_index}] = *errors.row;
}

void read_links(Switch& contents) {
    switchsim::LinkKey key{};
    for (;;) {
        const std::uint32_t words[] = {key.first, key.second};
        const auto row = fcip::fetch<FcipLinkEntry>(
            [&](FcipLinkEntry** out) { return fcip_get_link_entry(mts_q, platform_next, words, out, 30, 1); });
        if (!row || switchsim::LinkKey{row.row->entity_id, row.row->link_index} <= key)
            return;
        key = {row.row->entity_id, row.row->link_index};
        contents.links[key] = *row.row;
        read_link_details(*row.row, contents);
        read_wwn_text(row.row->remote_wwn, contents);
    }
}

/// Which section of a scenario an interface goes to. One whose kind is none that scenarios know is seen as not
/// Ethernet, which is all that the provider asks; of one whose kind cannot be read, its index tells.
std::uint8_t kind_of(std::uint32_t if_index, bool is_tunnel, Port& port) {
    alignas(std::max_align_t) std::uint8_t type[16] = {};
    port.type_known = if_index_get_type(if_index, type) == 0;
    const bool can_be_ethernet = if_index >= switchsim::ethernet_base;
    if (!port.type_known)
        return is_tunnel         ? switchsim::kind_fcip
               : can_be_ethernet ? switchsim::kind_ethernet
                                 : switchsim::kind_fibre_channel;
    if (type[0] == switchsim::kind_fcip && is_tunnel)
        return switchsim::kind_fcip;
    const bool is_ethernet = type[0] == switchsim::kind_ethernet && can_be_ethernet;
    return is_ethernet || type[0] == switchsim::kind_port_channel ? type[0]
                                                                  : std::uint8_t{switchsim::kind_fibre_channel};
}

void read_configuration(std::uint32_t if_index, Port& port) {
    const std::uint32_t key[] = {if_index, if_index};
    std::uint32_t aux = 0;
    const auto config = fcip::fetch<PmPortConfig>(
        [&](PmPortConfig** out) { return pm_cmi_get_port_config(mts_q, 1, 1, key, &aux, out, 4); });
    if (config && switchsim::get_host(config.row->bytes, 217) != port.vsan_id)
        port.config_word = switchsim::get_host(config.row->bytes, 217);
}

void read_ethernet_facts(const PmPortInfo& info, std::uint32_t if_index, Port& port) {
    port.network_address =
        written([&](char* text) { return pm_cim_get_network_address(text, &info, port.kind); }).value_or("");
    void* block = nullptr;
    const int mask_status = ipconf_get_intf_ip_address(mts_q, if_index, &block);
    const platform_ptr<std::uint8_t> mask(static_cast<std::uint8_t*>(block));
    if (mask_status == 0 && mask)
        std::copy_n(mask.get() + 4, 4, port.subnet_mask.emplace().begin());
    block = nullptr;
    const int prefix_status = ipconf_get_if_inet_addrs(mts_q, if_index, &block);
    const platform_ptr<std::uint8_t> prefix(static_cast<std::uint8_t*>(block));
    if (prefix_status == 0 && prefix && switchsim::get_host(prefix.get(), 32) <= 128)
        port.prefix_length = static_cast<std::uint8_t>(switchsim::get_host(prefix.get(), 32));
    alignas(std::max_align_t) std::uint8_t counters[4096] = {};
    if (pm_get_clear_eth_stats(mts_q, if_index, if_index, 1, counters) == 0)
        port.eth_stats_mtu = switchsim::get_big<std::uint32_t>(counters, 28);
    if (port.slot) // without one, no scenario has a line card that answers
        read_line_card(if_index, port);
}

Port read_port(const PmPortInfo& info, bool is_tunnel) {
    const std::uint32_t if_index = switchsim::get_host(info.bytes, 0);
    Port port;
    port.kind = kind_of(if_index, is_tunnel, port);
    port.name = written([&](char* text) { return sprintf_if_index(text, if_index); }).value_or("");
    port.kernel_name = written([&](char* text) { return netcfg_print_ifname(text, if_index); }).value_or("");
    port.slot = stored<std::uint8_t>([&](std::uint8_t* slot) { return if_index_get_slot(if_index, slot); });
    port.port = stored<std::uint8_t>([&](std::uint8_t* number) { return if_index_get_port(if_index, number); });
    port.mtu = switchsim::get_host(info.bytes, 28);
    port.vsan_id = switchsim::get_host(info.bytes, 213);
    read_configuration(if_index, port);
    port.fc_interface = platform_ptr<PmPortInfo>(pm_cim_find_interface(platform_exact, if_index, mts_q)) != nullptr;
    const auto counters = fcip::fetch<PmPortCounters>(
        [&](PmPortCounters** out) { return pm_get_port_counters(mts_q, if_index, 0, 6, out); });
    if (counters)
        port.counters = *counters.row;
    if (port.kind == switchsim::kind_ethernet)
        read_ethernet_facts(info, if_index, port);
    return port;
}

fcip::fetched<PmPortInfo> fetch_port(int operation, std::uint32_t if_index) {
    return fcip::fetch<PmPortInfo>(
        [&](PmPortInfo** out) { return pm_cim_get_port_info(out, operation, if_index, mts_q); });
}

/// Reads the port table, and the tunnels' interfaces by their index, should the walk not come to them.
void read_ports(Switch& contents) {
    std::set<std::uint32_t> tunnels;
    for (const auto& row : contents.links)
        tunnels.insert(row.second.link_if_index);
    for (std::uint32_t if_index = 0;;) {
        const auto info = fetch_port(platform_next_port, if_index);
        if (!info || switchsim::get_host(info.row->bytes, 0) <= if_index)
            break;
        if_index = switchsim::get_host(info.row->bytes, 0);
        contents.ports[if_index] = read_port(*info.row, tunnels.contains(if_index));
    }
    for (const std::uint32_t if_index : tunnels) {
        const auto info =
            contents.ports.contains(if_index) ? fcip::fetched<PmPortInfo>{} : fetch_port(platform_exact, if_index);
        if (info)
            contents.ports[if_index] = read_port(*info.row, true);
    }
}

/// The slots that answered anything have a line card.
void find_slots(Switch& contents) {
    std::set<std::uint8_t> slots;
    for (const auto& [if_index, port] : contents.ports)
        if (port.slot && (!port.mac_statistics.empty() || !port.ip_statistics.empty() || !port.tcp_statistics.empty()))
            slots.insert(*port.slot);
    contents.slots.assign(slots.begin(), slots.end());
}

void read_vsan(std::uint32_t id, Switch& contents) {
    alignas(std::max_align_t) std::uint8_t vsan[4096] = {};
    alignas(std::max_align_t) std::uint8_t domain[4096] = {};
    switchsim::put_host(vsan, 0, id);
    const bool has_entry = vsan_cim_get_vsanEntry(mts_q, platform_exact, vsan) == 0;
    const bool has_domain = dm_cim_get_dmEntry(mts_q, id, 1, domain) == 0;
    if (!has_entry && !has_domain)
        return;
    switchsim::Vsan& row = contents.vsans[id];
    if (has_domain)
        row.domain = written([&](char* key) { return vsan_cim_get_vsan_admindomain_key(key, domain); }).value_or("");
    else
        row.name = "VSAN" + std::to_string(id);
    if (has_entry && has_domain)
        row.name = written([&](char* key) { return vsan_cim_get_vsan_key(key, vsan, domain); }).value_or("");
}

/// The VSANs that ports are in; there is no other list of them.
void read_vsans(Switch& contents) {
    constexpr std::uint32_t highest = 4094;
    std::set<std::uint32_t> ids;
    for (const auto& [if_index, port] : contents.ports)
        if (port.vsan_id >= 1 && port.vsan_id <= highest)
            ids.insert(port.vsan_id);
    for (const std::uint32_t id : ids)
        read_vsan(id, contents);
}

} // namespace

Switch capture() {
    Switch contents;
    read_identity(contents);
    read_ip_configuration(contents);
    read_profiles(contents);
    read_links(contents);
    read_ports(contents);
    find_slots(contents);
    read_vsans(contents);
    return contents;
}

} // namespace switchdump
