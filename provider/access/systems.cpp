#include "provider/access/systems.h"

#include "provider/access/ports.h"
#include "provider/common/results.h"
#include "provider/common/trace.h"

#include <cstring>

namespace fcip {

namespace {

/// Storage of a VSAN or domain entry; the services alone know what is in it.
using opaque_entry = platform_storage<4096>;

constexpr std::size_t system_name_length = 20;

/// Finds the key of an interface's VSAN. False when the VSAN or its domain cannot be read.
bool vsan_key(std::uint32_t if_index, platform_text& key) {
    std::uint32_t vsan_id = 0;
    get_vsan_id(if_index, &vsan_id); // a failure leaves VSAN 0
    trace("vsan_index ", as_signed(vsan_id), " \n");

    opaque_entry vsan;
    opaque_entry domain;
    std::memcpy(vsan.data(), &vsan_id, sizeof vsan_id);
    if (vsan_cim_get_vsanEntry(mts_q, platform_exact, vsan.data()) != 0 ||
        dm_cim_get_dmEntry(mts_q, vsan_id, 1, domain.data()) != 0)
        return false;
    if (vsan_cim_get_vsan_key(key.data(), vsan.data(), domain.data()) != 0)
        trace("error during get vsan id");
    return true;
}

} // namespace

int get_vsan_wwn(std::uint32_t if_index, char* buffer) {
    const fetched<PmPortInfo> port = read_port(platform_exact, if_index);
    if (port.status != 0) {
        trace("error : pm_cim_get_port_info ");
        return -1;
    }
    if (port.row == nullptr)
        return -1;

    opaque_entry domain;
    if (dm_cim_get_dmEntry(mts_q, port_vsan_id(*port.row), 1, domain.data()) != 0) {
        trace("error : dm_cim_get_dmEntry ");
        std::strcpy(buffer, "NULL");
        return -1;
    }
    platform_text key{};
    vsan_cim_get_vsan_admindomain_key(key.data(), domain.data());
    std::memset(buffer, 0, system_name_length);
    std::memcpy(buffer, key.data(), strnlen(key.data(), system_name_length)); // a name of full length is not terminated
    return 0;
}

system_name_text vsan_system_name(std::uint32_t if_index) {
    system_name_text text{};
    get_vsan_wwn(if_index, text.data());
    return text;
}

void add_system_name_key(CMPIObjectPath* path, std::uint32_t if_index, const char* fallback) {
    system_name_text text{};
    const bool known = get_vsan_wwn(if_index, text.data()) == 0;
    add_string_key(path, "SystemName", known ? text.data() : fallback);
}

CMPIInstance* get_logical_computer_instance(std::uint32_t if_index, const char* name_space, const char** properties,
                                            const CMPIBroker* broker) {
    trace_entering(__func__);
    platform_text key{};
    if (!vsan_key(if_index, key))
        return minus_one<CMPIInstance>();
    return switch_build_instance_str(logical_computer_system, name_space, key.data(), 0, properties, broker);
}

CMPIObjectPath* get_logical_computer_keys(std::uint32_t if_index, const char* name_space, const CMPIBroker* broker) {
    trace_entering(__func__);
    platform_text key{};
    if (!vsan_key(if_index, key))
        return minus_one<CMPIObjectPath>();
    return switch_fill_reference_str(logical_computer_system, name_space, key.data(), broker);
}

void set_switch_host(CMPIObjectPath* path) {
    set_host(path, text_or_empty(getCSName()));
}

CMPIInstance* new_switch_instance(const char* class_name, const char* name_space, const char* exit_trace) {
    CMPIObjectPath* path = new_path(name_space, class_name);
    if (!is_usable(path)) {
        if (exit_trace != nullptr)
            trace_exiting(exit_trace);
        return nullptr;
    }
    set_switch_host(path);
    return new_instance(path);
}

platform_text wwn_text(const std::uint8_t wwn[8]) {
    platform_text text{};
    cim_sprintf_wwn(text.data(), wwn);
    return text;
}

platform_text switch_wwn_text() {
    alignas(std::max_align_t) std::uint8_t wwn[8];
    init_wwn(wwn);
    system_cim_get_switch_wwn(mts_q, wwn);
    return wwn_text(wwn);
}

} // namespace fcip
