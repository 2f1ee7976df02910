#include "provider/access/ports.h"

#include "provider/common/results.h"
#include "provider/common/trace.h"

#include <cstring>

namespace fcip {

fetched<PmPortInfo> read_port(int operation, std::uint32_t if_index) {
    return fetch<PmPortInfo>(
        [&](PmPortInfo** record) { return pm_cim_get_port_info(record, operation, if_index, mts_q); });
}

platform_ptr<PmPortInfo> fetch_port(int operation, std::uint32_t if_index) {
    return read_port(operation, if_index).take();
}

interface_type type_of(std::uint32_t if_index) {
    platform_storage<16> type;
    const int status = if_index_get_type(if_index, type.data());
    return {status, status == 0 ? type.bytes[0] : std::uint8_t{0}};
}

platform_text interface_name(std::uint32_t if_index) {
    platform_text name{};
    sprintf_if_index(name.data(), if_index);
    return name;
}

std::array<char, 32> network_address(const PmPortInfo& port, std::uint8_t kind) {
    platform_text address{};
    pm_cim_get_network_address(address.data(), &port, kind);
    return copy_text<32>(address.data());
}

int get_vsan_id(std::uint32_t if_index, std::uint32_t* vsan_id) {
    const platform_ptr<PmPortInfo> port = fetch_port(platform_exact, if_index);
    if (port == nullptr) {
        trace("error : pm_cim_get_port_info ");
        return -1;
    }
    *vsan_id = port_vsan_id(*port);
    return 0;
}

int get_vsan_from_ifindex(std::uint32_t if_index, std::uint32_t* vsan_id) {
    const std::array<std::uint32_t, 2> key{if_index, if_index};
    std::uint32_t aux = 0;
    const auto config = fetch<PmPortConfig>(
        [&](PmPortConfig** record) { return pm_cmi_get_port_config(mts_q, 1, 1, key.data(), &aux, record, 4); });
    if (!config)
        return -1;
    *vsan_id = read_host32(config.row->bytes + 213);
    trace(" fcip interface is in the vsan ", as_signed(*vsan_id), " \n");
    trace(" fcip interface is in the vsan ", as_signed(read_host32(config.row->bytes + 217)), " \n");
    return 0;
}

int get_eth_ifidx_from_keyvalue(std::uint32_t* if_index, const char* key_value) {
    trace_entering(__func__);
    auto text = copy_text<512>(key_value);
    char* rest = nullptr;
    const char* token = strtok_r(text.data(), ":_", &rest);
    if (token != nullptr) {
        *if_index = static_cast<std::uint32_t>(parse_decimal(token));
        trace("if_index : ", as_signed(*if_index), " \n");
    }
    trace_exiting(__func__);
    return token != nullptr ? 0 : -1;
}

int get_etherport_from_if_index(std::uint32_t if_index, int want_instance, const char* /*class_name*/,
                                const CMPIResult* result, const char* name_space, const char** properties,
                                const CMPIBroker* broker) {
    constexpr const char* ethernet_port = "ZANTO_EthernetPort";
    walk_ports([&](PmPortInfo& port) {
        if (!type_of(port_if_index(port)).is(interface_kind_ethernet))
            return walk::stop;
        if (port_if_index(port) == if_index) {
            // The two port builders take class and namespace in opposite orders here.
            if (want_instance != 0)
                return_instance(result, fcport_build_instance_pm(ethernet_port, name_space, &port, properties, broker));
            else
                return_path(result, fcport_fill_reference_pm(name_space, ethernet_port, &port, broker));
        }
        return walk::go_on; // not even the match ends the walk
    });
    return 0;
}

void init_wwn(std::uint8_t wwn[8]) {
    std::memset(wwn, 0, 8);
}

int pm_cli_eth_intf_prefix_print(const PmPortInfo* port, std::uint16_t* mtu) {
    *mtu = static_cast<std::uint16_t>(port_mtu(*port));
    trace("    MTU ", port_mtu(*port), "  bytes\n");
    return 0;
}

} // namespace fcip
