// The commands of a running switch.
#include "simulator/call.h"
#include "simulator/commands.h"
#include "simulator/live.h"
#include "simulator/scenario_writer.h"
#include "simulator/state.h"
#include "simulator/whole_number.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace switchsim {
namespace {

using Words = std::vector<std::string>;

CommandResult wrong(const std::string& what) {
    return {false, what};
}

std::string seconds_text(std::uint64_t milliseconds) {
    return std::to_string(milliseconds / 1000) + "." + std::to_string(1000 + milliseconds % 1000).substr(1) + " s";
}

CommandResult show(const Words& words) {
    if (words.size() != 1)
        return wrong("show: expected nothing behind it");
    const Switch& contents = current();
    std::string text = "switch " + contents.name + "\nclock " + seconds_text(contents.now) + "\n";
    for (const std::uint8_t slot : contents.slots)
        text += "card " + std::to_string(slot) + "\n";
    for (const auto& [if_index, port] : contents.ports)
        if (port.kind != kind_fcip)
            text += "port " + std::to_string(if_index) + " " + port.name + "\n";
    for (const auto& [id, profile] : contents.profiles)
        text += "profile " + std::to_string(id) + "\n";
    for (const auto& [key, link] : contents.links)
        text += "tunnel " + std::to_string(key.first) + "/" + std::to_string(std::uint64_t{key.second} + 1) +
                " status " + std::to_string(link.status) + "\n";
    for (const std::string& line : planned_faults())
        text += line + "\n";
    for (const Event& event : contents.events)
        text += "event at " + seconds_text(event.at) + ": " + event.command + "\n";
    text += std::to_string(contents.rates.size()) + " counters move\n";
    return {true, text};
}

CommandResult change_switch(const Words& words) {
    Change changed = change(current(), words);
    if (!changed.error.empty())
        return wrong(changed.error);
    replace_switch(std::move(changed.contents));
    return {true, ""};
}

/// fault FUNCTION [nth] [shape]: the n-th call from now on, or every one.
CommandResult fault(const Words& words) {
    const std::string nth_text = words.size() > 2 ? words[2] : "every";
    const auto nth = nth_text == "every" ? std::optional(every_call) : whole_number<unsigned>(nth_text);
    const std::string shape = words.size() > 3 ? words[3] : "fail";
    const auto fault = fault_by_name(shape);
    if (words.size() < 2 || words.size() > 4 || !fault || !nth || (*nth == every_call && nth_text != "every"))
        return wrong("fault: expected FUNCTION [NTH|every [fail|fail_leaving_record|succeed_without_record|short_reply|"
                     "wrong_status|no_reply]]");
    if (!can_happen(words[1], *fault))
        return wrong("fault: " + shape + " can never happen to " + words[1]);
    inject(words[1], *fault, *nth);
    return {true, ""};
}

CommandResult delay_function(const Words& words) {
    const auto milliseconds = words.size() == 3 ? whole_number<unsigned>(words[2]) : std::nullopt;
    if (!milliseconds || *milliseconds > 600000)
        return wrong("delay: expected FUNCTION and milliseconds from 0 to 600000");
    if (!can_be_delayed(words[1]))
        return wrong("delay: " + words[1] + " can never take longer");
    delay(words[1], *milliseconds);
    return {true, ""};
}

CommandResult clear(const Words& words) {
    if (words.size() != 1)
        return wrong("clear: expected nothing behind it");
    clear_faults();
    return {true, ""};
}

CommandResult step_clock(const Words& words) {
    const auto seconds = words.size() == 2 ? whole_number<double>(words[1]) : std::nullopt;
    if (!seconds || !(*seconds >= 0 && *seconds <= static_cast<double>(longest_clock) / 1000))
        return wrong("step: expected seconds from 0 to 1000000000");
    const auto milliseconds = static_cast<std::uint64_t>(std::llround(*seconds * 1000));
    if (current().now + milliseconds > longest_clock)
        return wrong("step: the clock goes to 1000000000 s, and stands at " + seconds_text(current().now));
    step(milliseconds);
    return {true, ""};
}

CommandResult save(const Words& words) {
    return words.size() == 1 ? CommandResult{true, write_scenario(current())}
                             : wrong("save: expected nothing behind it");
}

struct Verb {
    const char* name;
    CommandResult (*run)(const Words& words);
};
constexpr Verb verbs[] = {
    {"show", show},   {"set", change_switch},    {"add", change_switch}, {"remove", change_switch},
    {"fault", fault}, {"delay", delay_function}, {"clear", clear},       {"step", step_clock},
    {"save", save},
};

} // namespace

CommandResult command(const std::vector<std::string>& words) {
    ensure_loaded();
    advance();
    const auto* verb = std::find_if(std::begin(verbs), std::end(verbs),
                                    [&](const Verb& one) { return !words.empty() && words[0] == one.name; });
    if (verb == std::end(verbs))
        return wrong("expected show, set, add, remove, fault, delay, clear, step or save");
    try {
        return verb->run(words);
    } catch (const std::invalid_argument& error) {
        return wrong(error.what());
    }
}

} // namespace switchsim
