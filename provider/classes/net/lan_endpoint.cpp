#include "provider/classes/net/lan_endpoint.h"

#include "provider/access/ports.h"
#include "provider/access/systems.h"
#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"

namespace fcip {

namespace {

/// A port's interface type; Ethernet where it cannot be had.
std::uint8_t interface_kind(const PmPortInfo& port) {
    const interface_type type = type_of(port_if_index(port));
    return type.status == 0 ? type.kind : std::uint8_t{interface_kind_ethernet};
}

/// The key Name: interface index and network address.
std::array<char, 99> name_text(const PmPortInfo& port) {
    const auto address = network_address(port, interface_kind(port));
    return join_text<99>({index_text(port_if_index(port)).data(), ":", address.data()});
}

} // namespace

CMPIInstance* lan_endpoint_build_instance(const char* class_name, const char* name_space, std::uint32_t if_index,
                                          const char** properties) {
    auto port = fetch_port(platform_exact, if_index);
    if (port == nullptr)
        return nullptr;
    const auto name = name_text(*port);
    CMPIInstance* instance = new_switch_instance(class_name, name_space);
    if (!is_usable(instance))
        return instance;
    set_string(instance, "SystemCreationClassName", physical_computer_system);
    if (port_if_index(*port) != 0) {
        set_string(instance, "SystemName", switch_wwn_text().data());
        set_string(instance, "Name", name.data());
        set_string(instance, "CreationClassName", "ZANTO_LANEndPoint");
        set_string(instance, "NameFormat", "Other");
    }
    filter_properties(instance, properties);
    port.reset();
    trace_exiting(__func__); // and no Entering
    return instance;
}

CMPIObjectPath* lan_endpoint_fill_reference(const char* class_name, const char* name_space, std::uint32_t if_index) {
    trace_entering(__func__);
    auto port = fetch_port(platform_exact, if_index);
    if (port == nullptr)
        return nullptr;
    const auto name = name_text(*port);
    CMPIObjectPath* path = new_path(name_space, class_name);
    if (is_usable(path)) {
        set_switch_host(path);
        // The system's name, not its WWN, and another spelling of the class: unlike the instance.
        add_string_key(path, "SystemName", text_or_empty(CSgetName(mts_q)));
        add_string_key(path, "SystemCreationClassName", physical_computer_system);
        add_string_key(path, "CreationClassName", "ZANTO_LanEndPoint");
        add_string_key(path, "Name", name.data());
    }
    port.reset();
    trace_exiting(__func__);
    return path;
}

} // namespace fcip
