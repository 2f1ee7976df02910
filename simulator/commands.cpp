#include "simulator/commands.h"

#include "simulator/scenario.h"
#include "simulator/scenario_reader.h"
#include "simulator/scenario_writer.h"
#include "simulator/whole_number.h"

#include <algorithm>
#include <sstream>

namespace switchsim {
namespace {

/// What is wrong with a command: one line.
struct CommandError {
    std::string text;
};

/// A row that a command names.
struct Target {
    std::string section;     ///< as in a scenario: "tunnel", "ethernet", ...
    LinkKey key;             ///< of a tunnel; else {its number or interface index, 0}
    std::size_t words_taken; ///< of the command
};

/// "3", or "1/3" for the profile and the tunnel's number.
LinkKey tunnel_of(const Switch& contents, const std::string& name) {
    const std::size_t slash = name.find('/');
    const auto profile = slash == std::string::npos ? std::nullopt : whole_number<std::uint32_t>(name.substr(0, slash));
    const auto number = whole_number<std::uint32_t>(slash == std::string::npos ? name : name.substr(slash + 1));
    std::vector<LinkKey> found;
    for (const auto& [key, link] : contents.links)
        if (number && key.second == *number - 1 && (slash == std::string::npos || key.first == profile))
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
    for (const auto& [if_index, port] : contents.ports) {
        const std::string place =
            (port.slot ? std::to_string(*port.slot) : "") + "/" + (port.port ? std::to_string(*port.port) : "");
        if (port.kind == kind && (index == if_index || place == name))
            return if_index;
    }
    throw CommandError{"no such port is called " + name};
}

/// The row that the words name, from `words[1]` on.
Target target_of(const Switch& contents, const std::vector<std::string>& words) {
    if (words.size() > 1 && (words[1] == "switch" || words[1] == "ip"))
        return {words[1], {}, 2};
    if (words.size() < 3)
        throw CommandError{words[0] + ": expected what, and its name"};
    const std::string& section = words[1];
    const std::string& name = words[2];
    if (section == "tunnel")
        return {section, tunnel_of(contents, name), 3};
    if (section == "ethernet")
        return {section, {port_of(contents, kind_ethernet, name), 0}, 3};
    if (section == "fibre_channel")
        return {section, {port_of(contents, kind_fibre_channel, name), 0}, 3};
    if (section == "port_channel")
        return {section, {port_of(contents, kind_port_channel, name), 0}, 3};
    const std::uint32_t number = whole_number<std::uint32_t>(name).value_or(0);
    if (section == "profile" ? contents.profiles.contains(number)
                             : section == "vsan" && contents.vsans.contains(number))
        return {section, {number, 0}, 3};
    if (section == "profile" || section == "vsan")
        throw CommandError{"no " + section + " is called " + name};
    throw CommandError{"\"" + section +
                       "\" is none of tunnel, profile, ethernet, fibre_channel, port_channel, vsan, "
                       "card, switch, ip"};
}

/// The switch with one row alone, and what rows refer to.
Switch part_of(const Switch& contents, const Target& target) {
    Switch part = contents;
    part.events.clear();
    if (target.section != "tunnel")
        part.links.clear();
    else
        part.links = {{target.key, contents.links.at(target.key)}};
    return part;
}

/// A row as a scenario has it.
toml::table row_of(const Switch& contents, const Target& target) {
    const toml::table document = toml::parse(write_scenario(part_of(contents, target)));
    if (const auto* table = document[target.section].as_table())
        return *table;
    const auto* rows = document[target.section].as_array();
    if (!rows)
        return {};
    std::size_t position = 0; // rows stand in the order of their keys
    if (target.section == "profile")
        position = static_cast<std::size_t>(
            std::distance(contents.profiles.begin(), contents.profiles.find(target.key.first)));
    else if (target.section == "vsan")
        position =
            static_cast<std::size_t>(std::distance(contents.vsans.begin(), contents.vsans.find(target.key.first)));
    else if (target.section != "tunnel") {
        const std::uint8_t kind = contents.ports.at(target.key.first).kind;
        for (const auto& [if_index, port] : contents.ports)
            position += port.kind == kind && if_index < target.key.first ? 1 : 0;
    }
    return *rows->get(position)->as_table();
}

std::string text_of_row(const std::string& section, const toml::table& row) {
    toml::table document;
    document.insert(section, toml::array{row});
    std::ostringstream text;
    text << document << "\n";
    return text.str();
}

/// Takes a row away, with all that stands behind it.
void erase(Switch& contents, const Target& target) {
    const std::uint32_t number = target.key.first;
    const bool is_tunnel = target.section == "tunnel";
    std::uint32_t if_index = is_tunnel ? contents.links.at(target.key).link_if_index : number;
    if (target.section == "profile") {
        contents.profiles.erase(number);
        return;
    }
    if (target.section == "vsan") {
        contents.vsans.erase(number);
        return;
    }
    if (is_tunnel) {
        contents.links.erase(target.key);
        contents.link_errors.erase(target.key);
        std::erase_if(contents.connections, [&](const auto& row) {
            return LinkKey{std::get<0>(row.first), std::get<1>(row.first)} == target.key;
        });
    }
    const auto port = contents.ports.find(if_index);
    if (port != contents.ports.end() && (!is_tunnel || port->second.kind == kind_fcip))
        contents.ports.erase(port);
    std::erase_if(contents.rates, [&](const auto& rate) {
        const CounterPlace& place = rate.first;
        return place.row == (place.table == CounterTable::link_errors ? target.key : LinkKey{if_index, 0}) &&
               (is_tunnel || place.table != CounterTable::link_errors);
    });
}

/// A value as TOML has it; a text without quotes is a text.
void put(toml::table& row, const std::string& key, const std::string& value) {
    const std::size_t point = key.find('.');
    if (point != std::string::npos) {
        toml::table* inner = row[key.substr(0, point)].as_table();
        if (!inner)
            throw CommandError{"there is no table " + key.substr(0, point)};
        put(*inner, key.substr(point + 1), value);
        return;
    }
    if (value == "default") {
        row.erase(key);
        return;
    }
    try {
        const toml::table parsed = toml::parse("value = " + value);
        if (parsed.size() == 1) {
            row.insert_or_assign(key, *parsed.get("value"));
            return;
        }
    } catch (const toml::parse_error&) { // no value of TOML's: a text
    }
    row.insert_or_assign(key, value);
}

/// The value that a key of a row has, as a word of a command.
std::string value_of(const toml::table& row, const std::string& key) {
    const auto node = row.at_path(key);
    if (!node)
        return "default";
    std::ostringstream text;
    text << node;
    return text.str();
}

void take_or_throw(Switch& contents, ScenarioResult result) {
    if (!result.errors.empty())
        throw CommandError{result.errors[0]};
    contents = std::move(result.contents);
}

void put_identity(Switch& contents, const std::string& section, const toml::table& row) {
    toml::table document;
    document.insert("switch", toml::table{{"name", contents.name}});
    document.insert_or_assign(section, row);
    std::ostringstream text;
    text << document;
    ScenarioResult result = read_scenario(text.str(), "set");
    if (!result.errors.empty())
        throw CommandError{result.errors[0]};
    if (section == "ip") {
        contents.ip_configuration = result.contents.ip_configuration;
        return;
    }
    contents.name = std::move(result.contents.name);
    contents.system_name = std::move(result.contents.system_name);
    contents.has_name = result.contents.has_name;
    contents.wwn = result.contents.wwn;
    contents.slots = std::move(result.contents.slots);
}

void set(Change& change, const std::vector<std::string>& words) {
    const Target target = target_of(change.contents, words);
    if (words.size() != target.words_taken + 2)
        throw CommandError{"set: expected a key and a value"};
    const std::string& key = words[target.words_taken];
    const std::string& word = words[target.words_taken + 1];
    toml::table row = row_of(change.contents, target);
    Event undo;
    for (std::size_t i = 0; i <= target.words_taken; ++i)
        undo.command += words[i] + " ";
    undo.command += value_of(row, key);
    change.undo.push_back(std::move(undo));
    const bool is_status = target.section == "tunnel" && key == "status";
    put(row, key, is_status && word == "up" ? "1" : is_status && word == "down" ? "2" : word);
    if (target.section == "switch" || target.section == "ip") {
        put_identity(change.contents, target.section, row);
        return;
    }
    erase(change.contents, target);
    take_or_throw(change.contents, read_rows(text_of_row(target.section, row), "set", std::move(change.contents)));
}

std::uint8_t card_of(const std::vector<std::string>& words) {
    const auto slot = words.size() == 3 ? whole_number<std::uint32_t>(words[2]) : std::nullopt;
    if (!slot || *slot > 255)
        throw CommandError{words[0] + " card: expected a slot from 0 to 255"};
    return static_cast<std::uint8_t>(*slot);
}

void remove(Change& change, const std::vector<std::string>& words) {
    auto& slots = change.contents.slots;
    if (words.size() > 1 && words[1] == "card") {
        const auto slot = std::ranges::find(slots, card_of(words));
        if (slot == slots.end())
            throw CommandError{"no line card is in slot " + words[2]};
        slots.erase(slot);
        change.undo.push_back({0, "add card " + words[2], std::nullopt, ""});
        return;
    }
    const Target target = target_of(change.contents, words);
    if (target.words_taken != 3 || words.size() != 3)
        throw CommandError{"remove: expected what, and its name"};
    change.undo.push_back({0, "add", std::nullopt, text_of_row(target.section, row_of(change.contents, target))});
    erase(change.contents, target);
}

/// Which rows are there after, and were not before, as commands that remove them: those that refer to others first.
std::vector<Event> removals(const Switch& before, const Switch& after) {
    std::vector<Event> events;
    const auto add = [&](const std::string& what) { events.push_back({0, "remove " + what, std::nullopt, ""}); };
    for (const auto& [key, link] : after.links)
        if (!before.links.contains(key))
            add("tunnel " + std::to_string(key.first) + "/" + std::to_string(std::uint64_t{key.second} + 1));
    for (const auto& [id, profile] : after.profiles)
        if (!before.profiles.contains(id))
            add("profile " + std::to_string(id));
    for (const auto& [if_index, port] : after.ports)
        if (!before.ports.contains(if_index) && port.kind != kind_fcip)
            add((port.kind == kind_ethernet        ? "ethernet "
                 : port.kind == kind_fibre_channel ? "fibre_channel "
                                                   : "port_channel ") +
                std::to_string(if_index));
    for (const auto& [id, vsan] : after.vsans)
        if (!before.vsans.contains(id))
            add("vsan " + std::to_string(id));
    return events;
}

void add(Change& change, const std::vector<std::string>& words) {
    if (words.size() > 1 && words[1] == "card") {
        const std::uint8_t slot = card_of(words);
        if (std::ranges::count(change.contents.slots, slot) > 0)
            throw CommandError{"a line card is in slot " + words[2] + " already"};
        change.contents.slots.push_back(slot);
        change.undo.push_back({0, "remove card " + words[2], std::nullopt, ""});
        return;
    }
    if (words.size() != 2)
        throw CommandError{"add: expected rows, or card and a slot"};
    ScenarioResult result = read_rows(words[1], "rows", change.contents);
    if (result.errors.empty())
        change.undo = removals(change.contents, result.contents);
    take_or_throw(change.contents, std::move(result));
}

struct Verb {
    const char* name;
    void (*run)(Change& change, const std::vector<std::string>& words);
};
constexpr Verb verbs[] = {{"set", set}, {"add", add}, {"remove", remove}};

const Verb* verb_of(const std::vector<std::string>& words) {
    const auto* found = std::find_if(std::begin(verbs), std::end(verbs),
                                     [&](const Verb& one) { return !words.empty() && words[0] == one.name; });
    return found == std::end(verbs) ? nullptr : found;
}

} // namespace

std::vector<std::string> words_of(const Event& event) {
    std::istringstream line(event.command);
    std::vector<std::string> words;
    for (std::string word; line >> word;)
        words.push_back(word);
    // A value may be a text with blanks: what stands behind the key is one word.
    const bool of_row = words.size() > 4 && words[0] == "set" && words[1] != "switch" && words[1] != "ip";
    const std::size_t value = of_row ? 4 : 3;
    if (words.size() > value + 1 && words[0] == "set") {
        std::size_t at = 0;
        for (std::size_t i = 0; i < value; ++i)
            at = event.command.find(words[i], at) + words[i].size();
        at = event.command.find_first_not_of(" \t", at);
        words.resize(value);
        words.push_back(event.command.substr(at));
    }
    if (!event.rows.empty())
        words.push_back(event.rows);
    return words;
}

bool is_event_command(const std::vector<std::string>& words) {
    return verb_of(words) && words.size() >= (words[0] == "add" ? 2U : 3U);
}

Change change(Switch contents, const std::vector<std::string>& words) {
    Change result{std::move(contents), {}, {}};
    const Verb* verb = verb_of(words);
    try {
        if (!verb)
            throw CommandError{"\"" + (words.empty() ? "" : words[0]) + "\" is none of set, add, remove"};
        verb->run(result, words);
    } catch (const CommandError& error) {
        result.error = error.text;
    } catch (const toml::parse_error& error) {
        result.error = std::string(error.description());
    }
    std::ranges::replace(result.error, '\n', ' ');
    return result;
}

} // namespace switchsim
