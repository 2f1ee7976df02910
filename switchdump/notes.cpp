#include "switchdump/notes.h"

#include <set>
#include <vector>

namespace switchdump {

namespace {

std::vector<std::string> what_is_missing(const switchsim::Switch& contents) {
    std::vector<std::string> missing;
    const auto note = [&](const std::string& what, bool is_there) {
        if (!is_there)
            missing.push_back(what);
    };
    note("wwn", contents.wwn != switchsim::Wwn{});
    note("profiles", !contents.profiles.empty());
    note("tunnels", !contents.links.empty());
    note("ports", !contents.ports.empty());
    std::set<std::uint32_t> vsans;
    for (const auto& [if_index, port] : contents.ports)
        vsans.insert(port.vsan_id);
    for (const std::uint32_t id : vsans) {
        const auto vsan = contents.vsans.find(id);
        note("vsan " + std::to_string(id), vsan != contents.vsans.end());
        note("name of vsan " + std::to_string(id), vsan == contents.vsans.end() || !vsan->second.name.empty());
    }
    return missing;
}

} // namespace

std::string notes(const switchsim::Switch& contents) {
    std::string text;
    for (const std::string& one : what_is_missing(contents))
        text += (text.empty() ? "# cannot be read: " : ", ") + one;
    return text.empty() ? "" : text + "\n\n";
}

} // namespace switchdump
