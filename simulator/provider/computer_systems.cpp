#include "simulator/provider/computer_systems.h"

#include "simulator/identity.h"
#include "simulator/provider/values.h"

#include <cmpimacs.h>

#include <algorithm>
#include <set>

namespace switchsim {

namespace {

constexpr std::uint16_t dedicated_switch = 5; // the standard's number

using VsanRow = std::map<std::uint32_t, Vsan>::value_type;

/// The VSAN of this name, or else of this domain; null if there is none.
const VsanRow* find_vsan(const Switch& contents, const std::string& id) {
    const auto find = [&contents](const auto& matches) {
        const auto row = std::ranges::find_if(contents.vsans, matches);
        return row == contents.vsans.end() ? nullptr : &*row;
    };
    const VsanRow* named = find([&id](const VsanRow& row) { return row.second.name == id; });
    return named ? named : find([&id](const VsanRow& row) { return row.second.domain == id; });
}

/// What else a system is known by: what each of the texts is, and the text.
void set_identifiers(const CMPIBroker* broker, CMPIInstance* instance, const std::vector<std::string>& descriptions,
                     const std::vector<std::string>& texts) {
    set_texts(broker, instance, "OtherIdentifyingInfo", texts);
    set_texts(broker, instance, "IdentifyingDescriptions", descriptions);
}

CMPIInstance* system_of(const CimClass& of, const std::string& id, const char** properties) {
    CMPIInstance* instance = system_instance(of, id.c_str(), properties);
    if (!instance)
        return nullptr;
    set_state(of.broker, instance, state_good);
    set_numbers(of.broker, instance, "Dedicated", {dedicated_switch});
    return instance;
}

} // namespace

CMPIObjectPath* system_path_of(const CimClass& of, const std::string& id) {
    return system_path(of, id.c_str());
}

std::vector<std::string> physical_system_ids(const Switch&) {
    return {physical_system_name()};
}

bool is_physical_system(const Switch&, const std::string& id) {
    return id == physical_system_name();
}

CMPIInstance* physical_system(Look& look, const CimClass& of, const std::string& id, const char** properties) {
    CMPIInstance* instance = system_of(of, id, properties);
    if (!instance)
        return nullptr;
    if (const char* name = switch_name())
        CMSetProperty(instance, "ElementName", name, CMPI_chars);
    set_identifiers(of.broker, instance, {"WWN"}, {wwn_text(look.contents.wwn)});
    return instance;
}

std::vector<std::string> logical_system_ids(const Switch& contents) {
    std::vector<std::string> ids;
    std::set<std::string_view> seen;
    for (const auto& [number, vsan] : contents.vsans)
        if (seen.insert(vsan.name).second)
            ids.push_back(vsan.name);
    return ids;
}

bool is_logical_system(const Switch& contents, const std::string& id) {
    return find_vsan(contents, id) != nullptr;
}

CMPIInstance* logical_system(Look& look, const CimClass& of, const std::string& id, const char** properties) {
    const VsanRow* row = find_vsan(look.contents, id);
    CMPIInstance* instance = row ? system_of(of, id, properties) : nullptr;
    if (!instance)
        return nullptr;
    const auto& [number, vsan] = *row;
    std::vector<std::string> descriptions{"VSAN id"};
    std::vector<std::string> texts{std::to_string(number)};
    if (vsan.domain) {
        descriptions.emplace_back("administrative domain");
        texts.push_back(*vsan.domain);
    }
    set_identifiers(of.broker, instance, descriptions, texts);
    return instance;
}

} // namespace switchsim
