#include "simulator/commands.h"

#include "simulator/command_rows.h"
#include "simulator/counters.h"
#include "simulator/scenario.h"
#include "simulator/scenario_fields.h"
#include "simulator/scenario_reader.h"
#include "simulator/scenario_writer.h"
#include "simulator/whole_number.h"

#include <algorithm>
#include <sstream>

namespace switchsim {
namespace {

using Words = std::vector<std::string>;

/// The switch with one row alone, and what rows refer to.
Switch part_of(const Switch& contents, const Target& target) {
    Switch part = contents;
    part.events.clear();
    part.rates = rates_from_now(part);
    if (target.section != "tunnel") {
        part.links.clear();
        return part;
    }
    const FcipLinkEntry& link = contents.links.at(target.key);
    const auto port = part.ports.find(link.link_if_index);
    if (port != part.ports.end() && port->second.kind == kind_fcip && !owns_interface(contents, target.key))
        part.ports.erase(port); // another tunnel's
    part.links = {{target.key, link}};
    return part;
}

/// How many rows stand before a row.
template <class Table>
std::size_t rank(const Table& table, const typename Table::key_type& key) {
    return static_cast<std::size_t>(std::distance(table.begin(), table.lower_bound(key)));
}

/// Where a row stands among those of its section, which stand in the order of their keys.
std::size_t position_of(const Switch& contents, const Target& target) {
    if (target.section == "tunnel")
        return 0;
    if (target.section == "profile")
        return rank(contents.profiles, target.key.first);
    if (target.section == "vsan")
        return rank(contents.vsans, target.key.first);
    if (target.section == "wwn_text")
        return rank(contents.wwn_texts, wwn_of(target.key));
    const std::uint8_t kind = contents.ports.at(target.key.first).kind;
    return static_cast<std::size_t>(std::ranges::count_if(
        contents.ports, [&](const auto& row) { return row.second.kind == kind && row.first < target.key.first; }));
}

/// A row as a scenario has it.
toml::table row_of(const Switch& contents, const Target& target) {
    const toml::table document = toml::parse(write_scenario(part_of(contents, target)));
    if (const auto* table = document[target.section].as_table())
        return *table;
    const auto* rows = document[target.section].as_array();
    return rows ? *rows->get(position_of(contents, target))->as_table() : toml::table{};
}

std::string text_of_row(const std::string& section, const toml::table& row) {
    toml::table document;
    document.insert(section, toml::array{row});
    std::ostringstream text;
    text << document << "\n";
    return text.str();
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

/// A value as put() takes it, in one line; of a key that is not there "default".
std::string value_text(const toml::node* node) {
    if (!node)
        return "default";
    std::ostringstream text;
    constexpr auto flags = toml::format_flags::allow_unicode_strings; // a text is in one line, too
    if (const toml::table* table = node->as_table()) {
        toml::table in_line = *table;
        in_line.is_inline(true);
        text << toml::toml_formatter(in_line, flags);
    } else {
        text << toml::toml_formatter(*node, flags);
    }
    std::string line = text.str();
    std::ranges::replace(line, '\n', ' '); // between the elements of an array
    return line;
}

/// The settings, "KEY VALUE" in a line each, that make one row of another. @param prefix of inner tables' keys
std::string settings_between(const toml::table& present, const toml::table& wanted, const std::string& prefix = "") {
    toml::table keys = present;
    for (const auto& [key, node] : wanted)
        keys.insert(key, node);
    std::string lines;
    for (const auto& [key, node] : keys) {
        const toml::node* one = present.get(key.str());
        const toml::node* other = wanted.get(key.str());
        const std::string name = prefix + std::string(key.str());
        if (one && other && one->is_table() && other->is_table())
            lines += settings_between(*one->as_table(), *other->as_table(), name + ".");
        else if (value_text(one) != value_text(other))
            lines += name + " " + value_text(other) + "\n";
    }
    return lines;
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

void put_setting(toml::table& row, const Target& target, const std::string& key, const std::string& word) {
    const bool is_status = target.section == "tunnel" && key == "status";
    put(row, key, is_status && word == "up" ? "1" : is_status && word == "down" ? "2" : word);
}

/// Does what stands behind a row's name: a key and its value, or several of these as lines of one word.
void put_settings(toml::table& row, const Target& target, const Words& words) {
    const std::size_t count = words.size() - target.words_taken;
    if (count == 2)
        return put_setting(row, target, words[target.words_taken], words[target.words_taken + 1]);
    std::istringstream lines(count == 1 ? words[target.words_taken] : "");
    bool any = false;
    for (std::string line; std::getline(lines, line); any = true) {
        const std::size_t blank = line.find(' ');
        if (blank == std::string::npos)
            throw CommandError{"set: expected a key and a value"};
        put_setting(row, target, line.substr(0, blank), line.substr(blank + 1));
    }
    if (!any)
        throw CommandError{"set: expected a key and a value"};
}

/// Puts a row in the place of another; says what it is called then.
std::string replace_row(Switch& contents, const Target& target, const toml::table& row) {
    if (target.section == "switch" || target.section == "ip") {
        put_identity(contents, target.section, row);
        return target.section;
    }
    const auto rates = contents.rates;
    const auto rates_in_text = rates_from_now(contents);
    erase(contents, target);
    const Switch others = contents;
    take_or_throw(contents, read_rows(text_of_row(target.section, row), "set", std::move(contents)));
    for (auto& [place, rate] : contents.rates) // what was not set goes on as it began
        if (const auto in_text = rates_in_text.find(place); in_text != rates_in_text.end() && in_text->second == rate)
            rate = rates.at(place);
    return new_rows(others, contents).at(0);
}

/// The command that gives a row its settings back, whatever has become of the rows that they refer to.
Event command_of(const Target& target, const std::string& name, std::string settings) {
    constexpr std::pair<const char*, const char*> references[] = {{"\nvsan ", "vsan_missing true\n"},
                                                                  {"\nslot ", "card_missing true\n"},
                                                                  {"\nprofile ", "profile_missing true\n"}};
    const std::string lines = "\n" + settings;
    for (const auto& [key, flag] : references)
        if (lines.find(key) != std::string::npos && (key[1] != 's' || target.section != "tunnel"))
            settings += flag;
    if (std::ranges::count(settings, '\n') > 1)
        return {0, "set " + name, std::nullopt, std::move(settings)};
    settings.pop_back();
    return {0, "set " + name + " " + settings, std::nullopt, ""};
}

void set(Change& change, const Words& words) {
    const Target target = target_of(change.contents, words);
    const bool begins_ip = target.section == "ip" && !change.contents.ip_configuration;
    const toml::table before = row_of(change.contents, target);
    toml::table row = before;
    put_settings(row, target, words);
    const std::string name = replace_row(change.contents, target, row);
    if (begins_ip) {
        change.undo.push_back({0, "remove ip", std::nullopt, ""});
        return;
    }
    const Target present = target_of(change.contents, words_of({0, "set " + name, std::nullopt, ""}));
    std::string settings = settings_between(row_of(change.contents, present), before);
    if (!settings.empty())
        change.undo.push_back(command_of(target, name, std::move(settings)));
}

std::uint8_t card_of(const Words& words) {
    const auto slot = words.size() == 3 ? whole_number<std::uint32_t>(words[2]) : std::nullopt;
    if (!slot || *slot > 255)
        throw CommandError{words[0] + " card: expected a slot from 0 to 255"};
    return static_cast<std::uint8_t>(*slot);
}

void remove_card(Change& change, const Words& words) {
    auto& slots = change.contents.slots;
    const auto slot = std::ranges::find(slots, card_of(words));
    if (slot == slots.end())
        throw CommandError{"no line card is in slot " + words[2]};
    slots.erase(slot);
    change.undo.push_back({0, "add card " + words[2], std::nullopt, ""});
}

void remove_ip(Change& change) {
    if (!change.contents.ip_configuration)
        throw CommandError{"there is no [ip]"};
    const toml::table row = row_of(change.contents, {"ip", {}, 2});
    change.undo.push_back({0, "set ip", std::nullopt,
                           "forwarding " + value_text(row.get("forwarding")) + "\ndefault_ttl " +
                               value_text(row.get("default_ttl")) + "\n"});
    change.contents.ip_configuration.reset();
}

/// A row's text by which it comes back whatever has become of the rows that it refers to.
std::string text_to_return(const std::string& section, toml::table row) {
    const bool is_tunnel = section == "tunnel";
    const bool is_port = std::ranges::any_of(port_kinds, [&](const PortKind& kind) { return section == kind.section; });
    if (is_tunnel)
        row.insert_or_assign("profile_missing", true);
    if (is_port)
        row.insert_or_assign("card_missing", true);
    if (is_tunnel || is_port)
        row.insert_or_assign("vsan_missing", true);
    return text_of_row(section, row);
}

void remove(Change& change, const Words& words) {
    if (words.size() > 1 && words[1] == "card")
        return remove_card(change, words);
    const Target target = target_of(change.contents, words);
    if (words.size() != target.words_taken || target.section == "switch")
        throw CommandError{"remove: expected what, and its name"};
    if (target.section == "ip")
        return remove_ip(change);
    change.undo.push_back({0, "add", std::nullopt, text_to_return(target.section, row_of(change.contents, target))});
    erase(change.contents, target);
}

void add(Change& change, const Words& words) {
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
        for (const std::string& name : new_rows(change.contents, result.contents))
            change.undo.push_back({0, "remove " + name, std::nullopt, ""});
    take_or_throw(change.contents, std::move(result));
}

struct Verb {
    const char* name;
    void (*run)(Change& change, const Words& words);
};
constexpr Verb verbs[] = {{"set", set}, {"add", add}, {"remove", remove}};

const Verb* verb_of(const Words& words) {
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

bool is_event_command(const Words& words) {
    const bool is_short = words.size() == 2 && (words[0] == "add" || words == Words{"remove", "ip"});
    return verb_of(words) && (words.size() >= 3 || is_short);
}

Change change(Switch contents, const Words& words) {
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
