// Scenario files: loaded whole or not at all; and what is written of a switch reads back as the same.
#include "fuzz/invariant.h"
#include "provider/access/fcip_tables.h"
#include "provider/access/lock.h"
#include "simulator/switchsim.h"

#include <array>
#include <cctype>
#include <cstring>

namespace {

constexpr const char* mark = "unchanged";

void prepare() {
    fuzz::drop_trace();
    switchsim::complaints_are_fatal(true);
    switchsim::reset();
    switchsim::stop_clock(true);
    const fcip::platform_lock lock;
    fuzz::require(init_mts(&mts_q) >= 0, "the queue opens");
}

/// Whether the text may ask for a generated switch so large that it only costs time: a number of five digits or more.
bool is_huge(std::string_view text) {
    if (text.find("generate") == std::string_view::npos)
        return false;
    const auto belongs_to_word = [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; };
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t began = at;
        while (at < text.size() && belongs_to_word(static_cast<unsigned char>(text[at])))
            ++at;
        if (at - began > 4 && std::isdigit(static_cast<unsigned char>(text[began])) != 0)
            return true;
    }
    return false;
}

/// A text as a caller without a word about its length gets it.
template <class Write>
void read_text(Write write) {
    std::array<char, switchsim::longest_text + 2> buffer{};
    buffer.back() = '#';
    write(buffer.data());
    fuzz::require(strnlen(buffer.data(), buffer.size()) <= switchsim::longest_text && buffer.back() == '#',
                  "a text ends within the room that callers give");
}

void read_texts() {
    const fcip::platform_lock lock;
    for (const auto& row : switchsim::the_switch().ports) {
        const std::uint32_t if_index = row.first;
        PmPortInfo info{};
        std::memcpy(info.bytes, &if_index, sizeof if_index);
        read_text([&](char* buffer) { fcip_if_str(if_index, buffer); });
        read_text([&](char* buffer) { sprintf_if_index(buffer, if_index); });
        read_text([&](char* buffer) { netcfg_print_ifname(buffer, if_index); });
        read_text([&](char* buffer) { pm_cim_get_network_address(buffer, &info, row.second.kind); });
    }
    for (const auto& row : switchsim::the_switch().links)
        read_text([&](char* buffer) { cim_sprintf_wwn(buffer, row.second.remote_wwn); });
}

/// The tables as the provider reads them.
void walk_tables() {
    const fcip::platform_lock lock;
    std::size_t links = 0;
    fcip::walk_links(mts_q, [&](const FcipLinkEntry& link) {
        fuzz::require(link.entity_id != 0, "no link has the profile number 0");
        ++links;
        return fcip::walk::go_on;
    });
    fuzz::require(links == switchsim::the_switch().links.size(), "a walk sees every link");
    std::size_t profiles = 0;
    fcip::walk_entities(mts_q, [&](const FcipEntityEntry& profile) {
        fuzz::require(profile.entity_id != 0, "no profile has the number 0");
        ++profiles;
        return fcip::walk::go_on;
    });
    fuzz::require(profiles == switchsim::the_switch().profiles.size(), "a walk sees every profile");
}

void write_and_read() {
    const fcip::platform_lock lock;
    const std::string saved = switchsim::command({"save"}).text;
    const std::string message = switchsim::load_text(saved, "saved");
    fuzz::require(message.empty(), "what is saved loads");
    fuzz::require(switchsim::command({"save"}).text == saved, "what is saved and loaded is saved as the same");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool prepared = (prepare(), true);
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (!prepared || is_huge(text))
        return 0;
    switchsim::generate(0);
    switchsim::the_switch().name = mark;
    const std::string message = switchsim::load_text(text, "scenario");
    if (message.empty()) {
        walk_tables();
        read_texts();
        write_and_read();
        return 0;
    }
    fuzz::require(fuzz::is_one_line(message) && message.starts_with("scenario:"),
                  "an error is one line that begins with the file");
    fuzz::require(switchsim::the_switch().name == mark && switchsim::the_switch().links.empty(),
                  "nothing is half-loaded");
    return 0;
}
