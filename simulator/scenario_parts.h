// The parts of a scenario, in the order in which they have to be read: later ones refer to earlier ones.
#pragma once

#include "simulator/scenario_fields.h"
#include "simulator/scenario_reader.h"

namespace switchsim {

/// [[ethernet]], [[fibre_channel]] and [[port_channel]]. @param default_slots whether the scenario does not list the
/// slots
void read_ports(TableReader& root, bool default_slots, Switch& contents);

/// [[profile]].
void read_profiles(TableReader& root, Switch& contents);

/// [[tunnel]]: rows of the link, connection, error and port tables.
void read_tunnels(TableReader& root, Switch& contents);

/// [[vsan]] and [[wwn_text]].
void read_vsans(TableReader& root, Switch& contents);
void read_wwn_texts(TableReader& root, Switch& contents);

/// [clock] and [[event]].
void read_clock(TableReader& root, Switch& contents);
void read_events(TableReader& root, Switch& contents);

/// Reads a record's counters, and the rates of those that move.
void read_counters(TableReader& reader, std::span<const CounterField> fields, std::uint8_t* record, CounterTable table,
                   const LinkKey& row, Switch& contents);

/// The keys that ports and FCIP interfaces share: VSAN, MTU, names and what goes wrong with them.
/// @param name the display name and kernel name that the interface has without those keys
void read_interface(TableReader& reader, const Switch& contents, Port& port, const std::string& name,
                    const std::string& kernel_name);

/// Adds a port row. An interface index that is taken is an error of the key if_index, or of the one that it comes from.
void add_port(TableReader& reader, Switch& contents, std::string_view key, std::uint32_t if_index, Port port);

/// The interface index that a "SLOT/PORT" key gives for an Ethernet port of the scenario, or its `raw_key` as it is.
std::optional<std::uint32_t> read_ethernet_reference(TableReader& reader, const Switch& contents, std::string_view key,
                                                     std::string_view raw_key);

template <class Row, std::size_t size>
void read_words(TableReader& reader, const WordField<Row> (&fields)[size], Row& row) {
    for (const WordField<Row>& field : fields) {
        const auto value = field.is_flag ? reader.flag(field.key) : reader.number(field.key, 0U, field.highest);
        row.*field.word = value.value_or(field.fallback);
    }
}

} // namespace switchsim
