#include "simulator/scenario_writer.h"

#include "simulator/scenario_fields.h"
#include "simulator/statistics_layout.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include <arpa/inet.h>

namespace switchsim {
namespace {

/// How many bytes the UTF-8 character at the beginning of a text has; 0 if it is none.
std::size_t character_length(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const std::size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (length == 0 || first > 0xF4 || length > text.size())
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80)
            return 0;
    const unsigned char second = length > 2 ? static_cast<unsigned char>(text[1]) : 0;
    const bool refused = (first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) ||
                         (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F);
    return refused ? 0 : length;
}

/// A text as a TOML string. Bytes that are no UTF-8 become question marks, for TOML has no place for them.
std::string quote(std::string_view text) {
    std::string result = "\"";
    while (!text.empty()) {
        const std::size_t length = character_length(text);
        const char first = text[0];
        char escape[8] = "?";
        if (length == 1 && (first < ' ' || first == '\x7F'))
            std::snprintf(escape, sizeof escape, "\\u%04X", static_cast<unsigned>(first));
        else if (first == '"' || first == '\\')
            std::snprintf(escape, sizeof escape, "\\%c", first);
        else if (length > 0)
            escape[0] = '\0';
        result += escape[0] != '\0' ? std::string_view(escape) : text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result + "\"";
}

std::string address_text(const ip_addr_value& address) {
    char text[INET6_ADDRSTRLEN] = "none";
    if (address.family == ip_family_ipv4)
        inet_ntop(AF_INET, address.address, text, sizeof text);
    else if (address.family == ip_family_ipv6)
        inet_ntop(AF_INET6, address.address, text, sizeof text);
    return text;
}

/// An integer; beyond what TOML's hold as a text.
std::string integer_text(std::uint64_t value) {
    const std::string digits = std::to_string(value);
    return value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) ? quote(digits) : digits;
}

std::string seconds_text(std::uint64_t milliseconds) {
    const std::string whole = std::to_string(milliseconds / 1000);
    return milliseconds % 1000 == 0 ? whole : whole + "." + std::to_string(1000 + milliseconds % 1000).substr(1);
}

/// Lines of TOML, table by table. Keys that have their default are not written.
class Lines {
  public:
    void table(const std::string& header) { text_ += (text_.empty() ? "" : "\n") + header + "\n"; }
    void raw(std::string_view key, const std::string& value) { text_ += std::string(key) + " = " + value + "\n"; }
    void text(std::string_view key, const std::string& value) { raw(key, quote(value)); }

    void text(std::string_view key, const std::string& value, const std::string& fallback) {
        if (value != fallback)
            text(key, value);
    }
    void number(std::string_view key, std::uint64_t value) { raw(key, integer_text(value)); }
    void number(std::string_view key, std::uint64_t value, std::uint64_t fallback) {
        if (value != fallback)
            number(key, value);
    }
    void flag(std::string_view key, std::uint32_t value, std::uint32_t fallback) {
        if (value != fallback)
            raw(key, value == 0 ? "false" : value == 1 ? "true" : std::to_string(value));
    }
    void boolean(std::string_view key, bool value, bool fallback) {
        if (value != fallback)
            raw(key, value ? "true" : "false");
    }
    void number_or_false(std::string_view key, const std::optional<std::uint8_t>& value) {
        raw(key, value ? std::to_string(*value) : "false");
    }
    /// Names what the switch cannot answer.
    void unreadable(const std::vector<std::string>& what) {
        std::string list;
        for (const std::string& one : what)
            list += (list.empty() ? "" : ", ") + one;
        if (!list.empty())
            text_ += "# cannot be read: " + list + "\n";
    }
    std::string take() { return std::move(text_); }

  private:
    std::string text_;
};

std::uint64_t field_value(const CounterField& field, const std::uint8_t* record) {
    return field.bits == 64 ? get_big<std::uint64_t>(record, field.offset)
                            : get_big<std::uint32_t>(record, field.offset);
}

/// Where a record's counters are, to find those that move.
struct Record {
    const Switch& contents;
    CounterTable table;
    LinkKey row;
    const std::uint8_t* bytes;
};

/// When and where a counter began to move, unless that is now.
std::string begin_text(const Record& record, const Rate& rate, std::uint64_t value) {
    return (rate.start == value ? "" : ", start = " + integer_text(rate.start)) +
           (rate.since == record.contents.now ? "" : ", since = " + seconds_text(rate.since));
}

void write_counters(Lines& lines, const std::string& header, std::span<const CounterField> fields,
                    const Record& record) {
    lines.table("[" + header + "]");
    for (const CounterField& field : fields) {
        const std::uint64_t value = field_value(field, record.bytes);
        const auto found = record.contents.rates.find({record.table, record.row, field.offset, field.bits});
        if (found == record.contents.rates.end()) {
            lines.number(field.key, value, 0);
            continue;
        }
        const Rate& rate = found->second;
        lines.raw(field.key, "{ value = " + integer_text(value) + ", rate = " + integer_text(rate.per_second) +
                                 ", period = " + seconds_text(rate.period) +
                                 ", jitter = " + std::to_string(rate.jitter) + begin_text(record, rate, value) + " }");
    }
}

template <class Row, std::size_t size>
void write_words(Lines& lines, const WordField<Row> (&fields)[size], const Row& row) {
    for (const WordField<Row>& field : fields) {
        if (field.is_flag)
            lines.flag(field.key, row.*field.word, field.fallback);
        else
            lines.number(field.key, row.*field.word, field.fallback);
    }
}

void write_identity(Lines& lines, const Switch& contents) {
    lines.table("[switch]");
    lines.text("name", contents.name);
    lines.text("system_name", contents.system_name, "");
    lines.boolean("has_name", contents.has_name, true);
    if (contents.wwn != Wwn{})
        lines.text("wwn", plain_text(contents.wwn));
    std::string slots;
    for (const std::uint8_t slot : contents.slots)
        slots += (slots.empty() ? "" : ", ") + std::to_string(slot);
    lines.raw("slots", "[" + slots + "]");
    if (!contents.ip_configuration) {
        lines.unreadable({"ip"});
        return;
    }
    lines.table("[ip]");
    lines.flag("forwarding", contents.ip_configuration->forwarding, 0);
    lines.number("default_ttl", contents.ip_configuration->default_ttl, 64);
}

void write_vsans(Lines& lines, const Switch& contents) {
    for (const auto& [id, vsan] : contents.vsans) {
        lines.table("[[vsan]]");
        lines.number("id", id);
        lines.text("name", vsan.name, "VSAN" + std::to_string(id));
        lines.raw("domain", vsan.domain ? quote(*vsan.domain) : "false");
    }
}

/// The keys that ports and FCIP interfaces share.
void write_interface(Lines& lines, const Switch& contents, const Port& port, std::uint32_t mtu, bool fc_interface) {
    lines.boolean("type_known", port.type_known, true);
    lines.boolean("fc_interface", port.fc_interface, fc_interface);
    lines.number("mtu", port.mtu, mtu);
    lines.number("vsan", port.vsan_id, 1);
    lines.boolean("vsan_missing", !contents.vsans.contains(port.vsan_id), false);
    if (port.config_word)
        lines.number("config_word", *port.config_word, port.vsan_id);
}

void write_ethernet_facts(Lines& lines, const Port& port) {
    if (!port.network_address.empty())
        lines.text(is_mac(port.network_address) ? "mac" : "network_address", port.network_address);
    if (port.subnet_mask) {
        char mask[INET_ADDRSTRLEN];
        lines.text("subnet_mask", inet_ntop(AF_INET, port.subnet_mask->data(), mask, sizeof mask));
    }
    if (port.prefix_length)
        lines.number("prefix_length", *port.prefix_length);
    if (!port.eth_stats_mtu)
        lines.raw("counter_mtu", "false");
    else
        lines.number("counter_mtu", *port.eth_stats_mtu, port.mtu);
    std::vector<std::string> unreadable;
    const auto note = [&](const char* what, bool readable) {
        if (!readable)
            unreadable.emplace_back(what);
    };
    note("network_address", !port.network_address.empty());
    note("subnet_mask", port.subnet_mask.has_value());
    note("prefix_length", port.prefix_length.has_value());
    note("counters", port.counters.has_value());
    note("mac_statistics", !port.mac_statistics.empty());
    note("ip_statistics", !port.ip_statistics.empty());
    note("tcp_statistics", !port.tcp_statistics.empty());
    lines.unreadable(unreadable);
}

void write_statistics(Lines& lines, const Switch& contents, const LinkKey& row, const Port& port) {
    if (!port.mac_statistics.empty())
        write_counters(lines, "ethernet.mac_statistics", mac_statistics_fields,
                       {contents, CounterTable::mac_statistics, row, port.mac_statistics.data()});
    if (!port.ip_statistics.empty())
        write_counters(lines, "ethernet.ip_statistics", ip_statistics_fields,
                       {contents, CounterTable::ip_statistics, row, port.ip_statistics.data()});
    if (port.tcp_statistics.empty())
        return;
    write_counters(lines, "ethernet.tcp_statistics", tcp_statistics_fields,
                   {contents, CounterTable::tcp_statistics, row, port.tcp_statistics[0].data()});
    lines.number("continuations", port.tcp_statistics.size() - 1, 1);
}

void write_port(Lines& lines, const Switch& contents, const PortKind& kind, std::uint32_t if_index, const Port& port) {
    lines.table("[[" + std::string(kind.section) + "]]");
    lines.number_or_false("slot", port.slot);
    lines.number_or_false("port", port.port);
    lines.boolean("card_missing", port.slot && std::ranges::count(contents.slots, *port.slot) == 0, false);
    if (!port.slot || !port.port || slot_and_port(kind.base, *port.slot, *port.port) != if_index)
        lines.number("if_index", if_index);
    lines.text("name", port.name, default_name(kind, port));
    lines.text("kernel_name", port.kernel_name, default_kernel_name(kind, port));
    write_interface(lines, contents, port, kind.mtu, kind.has_fc_interface);
    if (kind.kind == kind_ethernet)
        write_ethernet_facts(lines, port);
    if (port.counters)
        write_counters(lines, std::string(kind.section) + ".counters", port_counter_fields,
                       {contents, CounterTable::port_counters, {if_index, 0}, port.counters->bytes});
    else if (kind.kind != kind_ethernet) // which names it with its other facts
        lines.unreadable({"counters"});
    if (kind.kind == kind_ethernet)
        write_statistics(lines, contents, {if_index, 0}, port);
}

void write_ports(Lines& lines, const Switch& contents) {
    for (const PortKind& kind : port_kinds)
        for (const auto& [if_index, port] : contents.ports)
            if (port.kind == kind.kind)
                write_port(lines, contents, kind, if_index, port);
}

void write_profiles(Lines& lines, const Switch& contents) {
    for (const auto& [id, row] : contents.profiles) {
        lines.table("[[profile]]");
        lines.number("id", id);
        lines.text("address", address_text(row.local_address));
        write_words(lines, profile_words, row);
        lines.number("address_if_index", row.address_if_index, 0);
    }
}

void write_link(Lines& lines, const Switch& contents, const FcipLinkEntry& row) {
    lines.table("[[tunnel]]");
    lines.number("profile", row.entity_id);
    lines.boolean("profile_missing", !contents.profiles.contains(row.entity_id), false);
    lines.number("index", row.link_index);
    lines.number("if_index", row.link_if_index, std::uint32_t{fcip_base + row.link_index});
    lines.text("remote_address", address_text(row.remote_address));
    lines.number("remote_profile", row.remote_entity_id, row.entity_id);
    Wwn wwn;
    std::copy(std::begin(row.remote_wwn), std::end(row.remote_wwn), wwn.begin());
    if (wwn != Wwn{})
        lines.text("remote_wwn", plain_text(wwn));
    write_words(lines, link_words, row);
    lines.number("ethernet_if_index", row.ethernet_if_index, 0);
    lines.number("physical_if_index", row.physical_if_index, row.ethernet_if_index);
}

void write_fcip_interface(Lines& lines, const Switch& contents, const FcipLinkEntry& row, const Port* port) {
    if (!port) {
        lines.raw("port_row", "false");
        lines.boolean("vsan_missing", !contents.vsans.contains(1), false);
        return;
    }
    lines.text("name", port->name, default_name(row));
    lines.text("kernel_name", port->kernel_name, default_name(row));
    // The default is the carrying port's place. Of another tunnel's interface it would depend on the order of rows.
    const auto carrier = contents.ports.find(row.ethernet_if_index);
    const bool is_carried = carrier != contents.ports.end();
    const bool is_tunnel = is_carried && carrier->second.kind == kind_fcip;
    if (is_tunnel || port->slot != (is_carried ? carrier->second.slot : std::nullopt))
        lines.number_or_false("slot", port->slot);
    if (is_tunnel || port->port != (is_carried ? carrier->second.port : std::nullopt))
        lines.number_or_false("port", port->port);
    write_interface(lines, contents, *port, fcip_mtu, true);
}

/// The table that the tunnel's connection stands in, and its error counters.
void write_tunnel_tables(Lines& lines, const Switch& contents, const FcipLinkEntry& row) {
    const auto profile = contents.profiles.find(row.entity_id);
    const std::uint32_t local_port = profile == contents.profiles.end() ? 0 : profile->second.listen_port;
    const auto connection =
        contents.connections.find({row.entity_id, row.link_index, static_cast<std::uint16_t>(local_port),
                                   static_cast<std::uint16_t>(row.remote_tcp_port)});
    const auto errors = contents.link_errors.find({row.entity_id, row.link_index});
    std::vector<std::string> unreadable;
    if (connection == contents.connections.end())
        unreadable.emplace_back("connection");
    if (errors == contents.link_errors.end())
        unreadable.emplace_back("errors");
    lines.unreadable(unreadable);
    if (connection != contents.connections.end()) {
        lines.table("[tunnel.connection]");
        write_words(lines, connection_words, connection->second);
    }
    if (errors != contents.link_errors.end())
        write_counters(lines, "tunnel.errors", link_error_fields,
                       {contents, CounterTable::link_errors, errors->first, errors->second.bytes});
}

void write_tunnels(Lines& lines, const Switch& contents) {
    std::set<std::uint32_t> owned; // an interface is the first tunnel's that has its index
    for (const auto& [key, row] : contents.links) {
        const auto port = contents.ports.find(row.link_if_index);
        const bool owns =
            port != contents.ports.end() && port->second.kind == kind_fcip && owned.insert(row.link_if_index).second;
        write_link(lines, contents, row);
        write_fcip_interface(lines, contents, row, owns ? &port->second : nullptr);
        write_tunnel_tables(lines, contents, row);
    }
}

void write_clock(Lines& lines, const Switch& contents) {
    if (contents.now == 0 && contents.seed == 0)
        return;
    lines.table("[clock]");
    lines.raw("now", seconds_text(contents.now));
    lines.number("seed", contents.seed, 0);
}

void write_events(Lines& lines, const Switch& contents) {
    for (const Event& event : contents.events) {
        lines.table("[[event]]");
        lines.raw("at", seconds_text(event.at));
        if (event.lasts)
            lines.raw("for", seconds_text(*event.lasts));
        lines.text("do", event.command);
        lines.text("rows", event.rows, "");
    }
}

} // namespace

std::string write_scenario(const Switch& contents) {
    Lines lines;
    write_identity(lines, contents);
    write_clock(lines, contents);
    write_vsans(lines, contents);
    write_ports(lines, contents);
    write_profiles(lines, contents);
    write_tunnels(lines, contents);
    for (const auto& [wwn, text] : contents.wwn_texts) {
        lines.table("[[wwn_text]]");
        lines.text("wwn", plain_text(wwn));
        lines.text("text", text);
    }
    write_events(lines, contents);
    return lines.take();
}

} // namespace switchsim
