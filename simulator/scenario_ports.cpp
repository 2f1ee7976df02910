#include "simulator/interface_numbers.h"
#include "simulator/scenario_parts.h"

#include <algorithm>

namespace switchsim {
namespace {

std::string list_of(const std::vector<std::uint8_t>& slots) {
    std::string list;
    for (const std::uint8_t slot : slots)
        list += (list.empty() ? "" : ", ") + std::to_string(slot);
    return "[" + list + "]";
}

/// Slot and port, each of which a port may be without.
void read_place(TableReader& reader, const Switch& contents, bool default_slots, Port& port) {
    if (!reader.is_false("slot"))
        port.slot = reader.required<std::uint8_t>("slot");
    if (!reader.is_false("port"))
        port.port = reader.required<std::uint8_t>("port");
    const bool card_missing = reader.boolean("card_missing").value_or(false);
    if (port.slot && !card_missing && std::ranges::count(contents.slots, *port.slot) == 0 &&
        !reader.errors().doubts("slots"))
        reader.wrong("slot", std::to_string(*port.slot) + " is not one of [switch] slots, which are " +
                                 list_of(contents.slots) + (default_slots ? " (the default)" : "") +
                                 "; expected one of them, or card_missing = true");
}

/// The interface index, given or derived; none where slot, port or index are wrong.
std::optional<std::uint32_t> read_if_index(TableReader& reader, const PortKind& kind, const Port& port) {
    const auto given = reader.number<std::uint32_t>("if_index", kind.lowest);
    if (given || !reader.good({"slot", "port", "if_index"}))
        return given;
    if (port.slot && port.port)
        return slot_and_port(kind.base, *port.slot, *port.port);
    reader.fail("if_index", "an interface index, for it cannot be derived without slot and port");
    return std::nullopt;
}

std::vector<std::uint8_t> read_statistics(TableReader& reader, std::string_view key,
                                          std::span<const CounterField> fields, std::size_t size, CounterTable table,
                                          const LinkKey& row, Switch& contents) {
    auto statistics = reader.table(key);
    if (!statistics)
        return {};
    Payload payload(size);
    read_counters(*statistics, fields, payload.data(), table, row, contents);
    statistics->finish();
    return payload;
}

std::vector<Payload> read_tcp_statistics(TableReader& reader, const LinkKey& row, Switch& contents) {
    auto statistics = reader.table("tcp_statistics");
    if (!statistics)
        return {};
    std::vector<Payload> replies{Payload(tcp_statistics_size)};
    read_counters(*statistics, tcp_statistics_fields, replies[0].data(), CounterTable::tcp_statistics, row, contents);
    const std::uint32_t continuations = statistics->number("continuations", 0U, 1000U).value_or(1);
    for (std::uint32_t left = continuations; left > 0; --left) {
        Payload reply(tcp_continuation_size);
        put_big(reply.data(), tcp_more_offset, static_cast<std::uint16_t>(left - 1));
        replies.push_back(std::move(reply));
    }
    statistics->finish();
    return replies;
}

std::optional<PmPortCounters> read_port_counters(TableReader& reader, const LinkKey& row, Switch& contents) {
    auto counters = reader.table("counters");
    if (!counters)
        return std::nullopt;
    PmPortCounters record{};
    read_counters(*counters, port_counter_fields, record.bytes, CounterTable::port_counters, row, contents);
    counters->finish();
    return record;
}

/// A MAC address, or any text that the port manager gives instead.
std::string read_network_address(TableReader& reader) {
    const auto mac = reader.mac("mac");
    const auto text = reader.short_text("network_address");
    if (reader.has("mac") && reader.has("network_address"))
        reader.fail("network_address", "either this key or mac");
    return mac ? *mac : text.value_or("");
}

void read_ethernet_facts(TableReader& reader, const LinkKey& row, Port& port, Switch& contents) {
    port.network_address = read_network_address(reader);
    port.subnet_mask = reader.ipv4("subnet_mask");
    port.prefix_length = reader.number<std::uint8_t>("prefix_length", 0, 128);
    if (!reader.is_false("counter_mtu"))
        port.eth_stats_mtu = reader.number<std::uint32_t>("counter_mtu").value_or(port.mtu);
    port.mac_statistics = read_statistics(reader, "mac_statistics", mac_statistics_fields, mac_statistics_size,
                                          CounterTable::mac_statistics, row, contents);
    port.ip_statistics = read_statistics(reader, "ip_statistics", ip_statistics_fields, ip_statistics_size,
                                         CounterTable::ip_statistics, row, contents);
    port.tcp_statistics = read_tcp_statistics(reader, row, contents);
}

void read_port(TableReader& reader, const PortKind& kind, bool default_slots, Switch& contents) {
    Port port;
    port.kind = kind.kind;
    port.mtu = kind.mtu;
    port.fc_interface = kind.has_fc_interface;
    read_place(reader, contents, default_slots, port);
    const auto if_index = read_if_index(reader, kind, port);
    read_interface(reader, contents, port, default_name(kind, port), default_kernel_name(kind, port));
    const LinkKey row{if_index.value_or(0), 0};
    port.counters = read_port_counters(reader, row, contents);
    if (kind.kind == kind_ethernet)
        read_ethernet_facts(reader, row, port, contents);
    if (if_index)
        add_port(reader, contents, "port", *if_index, std::move(port));
    else
        reader.errors().doubt(kind.section);
    reader.finish();
}

} // namespace

void read_counters(TableReader& reader, std::span<const CounterField> fields, std::uint8_t* record, CounterTable table,
                   const LinkKey& row, Switch& contents) {
    reader.counters(fields, record, contents.now, [&](const CounterField& field, const Rate& rate) {
        contents.rates[{table, row, field.offset, field.bits}] = rate;
    });
}

void read_interface(TableReader& reader, const Switch& contents, Port& port, const std::string& name,
                    const std::string& kernel_name) {
    port.name = reader.short_text("name").value_or(name);
    port.kernel_name = reader.short_text("kernel_name").value_or(kernel_name);
    port.type_known = reader.boolean("type_known").value_or(true);
    port.fc_interface = reader.boolean("fc_interface").value_or(port.fc_interface);
    port.mtu = reader.number<std::uint32_t>("mtu").value_or(port.mtu);
    port.vsan_id = reader.number<std::uint32_t>("vsan").value_or(1);
    const bool vsan_missing = reader.boolean("vsan_missing").value_or(false);
    if (!vsan_missing && !contents.vsans.contains(port.vsan_id) && reader.good({"vsan", "vsan_missing"}) &&
        !reader.errors().doubts("vsan"))
        reader.wrong("vsan", reader.has("vsan")
                                 ? "expected the id of a [[vsan]], or vsan_missing = true"
                                 : "1 (the default) is not the id of a [[vsan]]; expected one, or vsan_missing = true");
    port.config_word = reader.number<std::uint32_t>("config_word");
}

void add_port(TableReader& reader, Switch& contents, std::string_view key, std::uint32_t if_index, Port port) {
    if (contents.ports.emplace(if_index, std::move(port)).second)
        return;
    if (reader.has("if_index"))
        reader.fail("if_index", "an interface index that no other interface has, not " + std::to_string(if_index));
    else
        reader.wrong(key, std::to_string(if_index) + " (the default of if_index) is another interface's");
}

std::optional<std::uint32_t> read_ethernet_reference(TableReader& reader, const Switch& contents, std::string_view key,
                                                     std::string_view raw_key) {
    const auto raw = reader.number<std::uint32_t>(raw_key);
    const auto place = reader.place(key);
    if (!place)
        return raw;
    if (reader.has(raw_key)) {
        reader.fail(key, "either this key or " + std::string(raw_key));
        return raw;
    }
    const auto port = std::ranges::find_if(contents.ports, [&](const auto& row) {
        return row.second.kind == kind_ethernet && row.second.slot == place->first && row.second.port == place->second;
    });
    if (port != contents.ports.end())
        return port->first;
    if (!reader.errors().doubts("ethernet"))
        reader.fail(key, "slot and port of an [[ethernet]] port; for any other index use " + std::string(raw_key));
    return std::nullopt;
}

void read_ports(TableReader& root, bool default_slots, Switch& contents) {
    for (const PortKind& kind : port_kinds) {
        for (TableReader& reader : root.tables(kind.section))
            read_port(reader, kind, default_slots, contents);
    }
}

} // namespace switchsim
