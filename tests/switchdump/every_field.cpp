#include "tests/switchdump/capture_test.h"

#include "simulator/bytes.h"

#include <algorithm>

namespace {

/// A number that no other call gives.
std::uint32_t other_number() {
    static std::uint32_t last = 1000;
    return last += 7;
}

template <class Row, std::size_t size>
void change_words(const switchsim::WordField<Row> (&fields)[size], Row& row) {
    for (const auto& field : fields)
        row.*field.word = other_number();
}

void change_counters(std::span<const switchsim::CounterField> fields, std::uint8_t* record) {
    for (const auto& field : fields)
        field.put(record, (std::uint64_t{0xF000} << 48 | std::uint64_t{other_number()} << 32) + other_number());
}

/// An address of a private network, of the same family.
void change_address(ip_addr_value& address) {
    if (address.family == ip_family_none)
        return;
    const bool is_ipv4 = address.family == ip_family_ipv4;
    std::fill(std::begin(address.address), std::end(address.address), std::uint8_t{0});
    address.address[0] = is_ipv4 ? 10 : 0xFD;
    switchsim::put_big(address.address, is_ipv4 ? 2 : 14, static_cast<std::uint16_t>(other_number()));
}

void change_wwn(std::uint8_t* bytes, switchsim::Switch& contents) {
    switchsim::Wwn wwn{0x50, 0x60};
    switchsim::put_big(wwn.data(), 4, other_number());
    std::ranges::copy(wwn, bytes);
    if (contents.wwn_texts.size() < 5)
        contents.wwn_texts[wwn] = "text of WWN " + std::to_string(other_number());
}

void change_port(switchsim::Port& port) {
    port.name = "n " + std::to_string(other_number()) + " \"\\\t\u00fc";
    port.kernel_name = "k" + std::to_string(other_number());
    port.mtu = other_number();
    port.config_word = other_number();
    port.fc_interface = !port.fc_interface;
    change_counters(switchsim::port_counter_fields, port.counters.emplace().bytes);
    if (port.kind != switchsim::kind_ethernet)
        return;
    const std::string number = std::to_string(other_number());
    port.network_address =
        port.slot == 1 ? "AA:bb:cc:dd:" + number.substr(0, 2) + ":" + number.substr(2, 2) : "no MAC " + number;
    port.subnet_mask = {1, 2, 3, 4};
    port.prefix_length = 77;
    port.eth_stats_mtu = other_number();
    port.mac_statistics.resize(switchsim::mac_statistics_size);
    port.ip_statistics.resize(switchsim::ip_statistics_size);
    port.tcp_statistics.assign(1, switchsim::Payload(switchsim::tcp_statistics_size));
    for (std::uint16_t left = 3; left-- > 0;) {
        port.tcp_statistics.emplace_back(switchsim::tcp_continuation_size);
        switchsim::put_big(port.tcp_statistics.back().data(), switchsim::tcp_more_offset, left);
    }
    change_counters(switchsim::mac_statistics_fields, port.mac_statistics.data());
    change_counters(switchsim::ip_statistics_fields, port.ip_statistics.data());
    change_counters(switchsim::tcp_statistics_fields, port.tcp_statistics[0].data());
}

} // namespace

void change_every_field() {
    auto& contents = switchsim::the_switch();
    contents.name = "a switch";
    contents.system_name = "system";
    contents.wwn_texts.clear();
    change_wwn(contents.wwn.data(), contents);
    contents.ip_configuration = {other_number(), 200};
    for (auto& [id, vsan] : contents.vsans)
        vsan = {"system " + std::to_string(id), "domain " + std::to_string(id)};
    contents.connections.clear();
    for (auto& [id, profile] : contents.profiles) {
        change_address(profile.local_address);
        change_words(switchsim::profile_words, profile);
        profile.address_if_index = other_number();
    }
    for (auto& [key, link] : contents.links) {
        change_words(switchsim::link_words, link);
        link.remote_entity_id = other_number();
        change_address(link.remote_address);
        change_wwn(link.remote_wwn, contents);
        change_counters(switchsim::link_error_fields, contents.link_errors[key].bytes);
        const auto profile = contents.profiles.find(link.entity_id);
        const std::uint32_t port = profile == contents.profiles.end() ? 0 : profile->second.listen_port;
        auto& connection = contents.connections[{link.entity_id, link.link_index, static_cast<std::uint16_t>(port),
                                                 static_cast<std::uint16_t>(link.remote_tcp_port)}];
        change_words(switchsim::connection_words, connection);
        connection.purpose = 3;
    }
    for (auto& [if_index, port] : contents.ports)
        change_port(port);
}
