#include "simulator/counters.h"

#include "simulator/bytes.h"

namespace switchsim {

std::uint8_t* record_of(Switch& contents, const CounterPlace& place) {
    if (place.table == CounterTable::link_errors) {
        const auto row = contents.link_errors.find(place.row);
        return row == contents.link_errors.end() ? nullptr : row->second.bytes;
    }
    const auto row = contents.ports.find(place.row.first);
    if (row == contents.ports.end())
        return nullptr;
    Port& port = row->second;
    const auto bytes = [](std::vector<std::uint8_t>& payload) { return payload.empty() ? nullptr : payload.data(); };
    switch (place.table) {
    case CounterTable::port_counters:
        return port.counters ? port.counters->bytes : nullptr;
    case CounterTable::mac_statistics:
        return bytes(port.mac_statistics);
    case CounterTable::ip_statistics:
        return bytes(port.ip_statistics);
    default:
        return port.tcp_statistics.empty() ? nullptr : bytes(port.tcp_statistics[0]);
    }
}

std::map<CounterPlace, Rate> rates_from_now(Switch& contents) {
    std::map<CounterPlace, Rate> rates = contents.rates;
    for (auto& [place, rate] : rates) {
        rate.since = contents.now;
        if (const std::uint8_t* record = record_of(contents, place))
            rate.start = place.bits == 64 ? get_big<std::uint64_t>(record, place.offset)
                                          : get_big<std::uint32_t>(record, place.offset);
    }
    return rates;
}

} // namespace switchsim
