#include "simulator/scenario.h"

#include "simulator/files.h"
#include "simulator/scenario_parts.h"
#include "simulator/scenario_text.h"

#include <algorithm>

namespace switchsim {
namespace {

/// [switch]. Says whether it lists the slots.
bool read_identity(TableReader& root, Switch& contents) {
    auto reader = root.table("switch");
    if (!reader) {
        root.missing("switch", "a table [switch]");
        root.errors().doubt("slots");
        return false;
    }
    const auto name = reader->text("name");
    if (!name)
        reader->missing("name", "a text");
    contents.name = name.value_or("");
    contents.system_name = reader->text("system_name").value_or("");
    contents.has_name = reader->boolean("has_name").value_or(true);
    contents.wwn = reader->wwn("wwn").value_or(contents.wwn);
    const auto slots = reader->bytes("slots");
    contents.slots = slots.value_or(std::vector<std::uint8_t>{1});
    const auto misspelt = reader->misspelt();
    if (!reader->good({"slots"}) || std::ranges::count(misspelt, "slots") > 0)
        root.errors().doubt("slots");
    reader->finish();
    return slots.has_value();
}

/// [ip]
void read_ip_configuration(TableReader& root, Switch& contents) {
    auto reader = root.table("ip");
    if (!reader)
        return;
    contents.ip_configuration.emplace();
    contents.ip_configuration->forwarding = reader->flag("forwarding").value_or(0);
    contents.ip_configuration->default_ttl = reader->number<std::uint8_t>("default_ttl").value_or(64);
    reader->finish();
}

} // namespace

void read_vsans(TableReader& root, Switch& contents) {
    for (TableReader& reader : root.tables("vsan")) {
        const auto id = reader.required<std::uint32_t>("id", 1, 4094);
        Vsan vsan;
        vsan.name = reader.short_text("name").value_or("VSAN" + std::to_string(id.value_or(0)));
        if (!reader.is_false("domain")) {
            vsan.domain = reader.short_text("domain");
            if (!vsan.domain)
                reader.missing("domain", "a text, or false for a VSAN without a domain entry");
        }
        if (!id)
            root.errors().doubt("vsan");
        else if (!contents.vsans.emplace(*id, std::move(vsan)).second)
            reader.fail("id", "an id that no other VSAN has");
        reader.finish();
    }
}

void read_wwn_texts(TableReader& root, Switch& contents) {
    for (TableReader& reader : root.tables("wwn_text")) {
        const auto wwn = reader.wwn("wwn");
        const auto text = reader.short_text("text");
        if (!wwn)
            reader.missing("wwn", "a WWN");
        if (!text)
            reader.missing("text", "a text");
        if (wwn && !contents.wwn_texts.emplace(*wwn, text.value_or("")).second)
            reader.fail("wwn", "a WWN that no other [[wwn_text]] has");
        reader.finish();
    }
}

namespace {

/// [generate]: everything but the switch's identity and IP configuration is made up.
void read_generator(TableReader& root, TableReader& reader, bool slots_given, Switch& contents) {
    GeneratorSizes sizes;
    sizes.tunnels = reader.required("tunnels", 0U, 1000000U).value_or(0);
    sizes.profiles = reader.number("profiles", 1U, 65535U).value_or(0);
    sizes.ethernet_ports = reader.number("ethernet_ports", 1U, 64U).value_or(sizes.ethernet_ports);
    sizes.vsans = reader.number("vsans", 1U, 4094U).value_or(sizes.vsans);
    reader.finish();
    for (const char* key : {"vsan", "ethernet", "fibre_channel", "port_channel", "profile", "tunnel", "wwn_text"}) {
        if (root.has(key))
            root.fail(key, "nothing but [switch], [ip], [clock] and [[event]] beside [generate]");
    }
    if (!root.errors().empty())
        return;
    Switch made = generate_switch(sizes);
    made.name = std::move(contents.name);
    made.system_name = std::move(contents.system_name);
    made.has_name = contents.has_name;
    made.wwn = contents.wwn;
    made.now = contents.now;
    made.seed = contents.seed;
    if (slots_given)
        made.slots = std::move(contents.slots);
    if (contents.ip_configuration)
        made.ip_configuration = contents.ip_configuration;
    contents = std::move(made);
}

/// In the order in which they refer to each other.
void read_all_rows(TableReader& root, bool default_slots, Switch& contents) {
    read_vsans(root, contents);
    read_ports(root, default_slots, contents);
    read_profiles(root, contents);
    read_tunnels(root, contents);
    read_wwn_texts(root, contents);
}

Switch read_switch(const toml::table& document, ScenarioErrors& errors) {
    Switch contents;
    TableReader root(document, "", errors);
    root.announce({"switch", "ip", "generate", "vsan", "ethernet", "fibre_channel", "port_channel", "profile", "tunnel",
                   "wwn_text", "clock", "event"});
    for (const std::string& section : root.misspelt())
        errors.doubt(section);
    const bool slots_given = read_identity(root, contents);
    read_ip_configuration(root, contents);
    read_clock(root, contents);
    if (auto generator = root.table("generate")) {
        read_generator(root, *generator, slots_given, contents);
    } else {
        read_all_rows(root, !slots_given, contents);
    }
    read_events(root, contents);
    root.finish();
    return contents;
}

template <class Place>
std::string located(const std::string& origin, const Place& where) {
    return origin + ":" + std::to_string(where.line) + ":" + std::to_string(where.column) + ": ";
}

/// Messages quote keys, which may hold any character.
std::string one_line(std::string message) {
    for (char& character : message) {
        if (static_cast<unsigned char>(character) < ' ')
            character = '?';
    }
    return message;
}

/// Parses the text and hands it to `take`, which gives the switch and notes what is wrong.
template <class Take>
ScenarioResult read(std::string_view toml, const std::string& origin, Take take) {
    if (const auto stray = stray_character(toml))
        return {{}, {located(origin, *stray) + "TOML: expected ASCII outside comments and strings of one line"}};
    try {
        ScenarioErrors errors;
        ScenarioResult result{take(toml::parse(toml), errors), {}};
        for (const ScenarioError& error : errors.in_order())
            result.errors.push_back(one_line(located(origin, error.where) + error.text));
        return result;
    } catch (const toml::parse_error& error) {
        return {{}, {one_line(located(origin, error.source().begin) + "TOML: " + std::string(error.description()))}};
    }
}

} // namespace

ScenarioResult read_scenario(std::string_view toml, const std::string& origin) {
    return read(toml, origin,
                [](const toml::table& document, ScenarioErrors& errors) { return read_switch(document, errors); });
}

ScenarioResult read_rows(std::string_view toml, const std::string& origin, Switch contents) {
    return read(toml, origin, [&](const toml::table& document, ScenarioErrors& errors) {
        TableReader root(document, "", errors);
        read_all_rows(root, false, contents);
        root.finish();
        return std::move(contents);
    });
}

ScenarioResult read_scenario_file(const std::string& file) {
    std::string reason;
    const auto text = read_file(file, reason);
    if (!text)
        return {{}, {file + ": cannot read: " + reason}};
    return read_scenario(*text, file);
}

} // namespace switchsim
