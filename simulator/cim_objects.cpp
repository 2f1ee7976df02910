#include "simulator/cim_objects.h"

#include "simulator/identity.h"
#include "simulator/state.h"

#include <cmpimacs.h>

namespace switchsim {

namespace {

const char* text_or_empty(const char* text) {
    return text ? text : "";
}

void add_key(CMPIObjectPath* path, const char* name, const char* value) {
    CMAddKey(path, name, value, CMPI_chars);
}

void set_text(CMPIInstance* instance, const char* name, const char* value) {
    CMSetProperty(instance, name, value, CMPI_chars);
}

/// An instance of the path that keeps its keys and, if there is a list, what that names.
CMPIInstance* new_instance(const CimClass& of, CMPIObjectPath* path, const char** properties, const char** keys) {
    CMPIInstance* instance = path ? CMNewInstance(of.broker, path, nullptr) : nullptr;
    if (instance && properties)
        CMSetPropertyFilter(instance, properties, keys);
    return instance;
}

void set_port_facts(CMPIInstance* instance, const Port& port) {
    set_text(instance, "ElementName", port.name.c_str());
    set_text(instance, "Caption", port.name.c_str());
    set_text(instance, "Name", port.name.c_str());
    if (!port.network_address.empty())
        set_text(instance, "PermanentAddress", port.network_address.c_str());
    CMPIValue value{};
    if (port.port) {
        value.uint16 = *port.port;
        CMSetProperty(instance, "PortNumber", &value, CMPI_uint16);
    }
    value.uint64 = port.mtu;
    CMSetProperty(instance, "ActiveMaximumTransmissionUnit", &value, CMPI_uint64);
}

} // namespace

CMPIObjectPath* new_path(const CimClass& of) {
    CMPIObjectPath* path = CMNewObjectPath(of.broker, of.name_space, of.name, nullptr);
    if (path)
        CMSetHostname(path, text_or_empty(switch_name()));
    return path;
}

const char* physical_system_name() {
    return text_or_empty(system_name());
}

std::string device_id(std::uint32_t if_index) {
    return std::to_string(static_cast<std::int32_t>(if_index));
}

CMPIObjectPath* port_path(const CimClass& of, std::uint32_t if_index) {
    CMPIObjectPath* path = new_path(of);
    if (!path)
        return nullptr;
    add_key(path, "SystemCreationClassName", physical_system_class);
    add_key(path, "SystemName", physical_system_name());
    add_key(path, "CreationClassName", of.name);
    add_key(path, "DeviceID", device_id(if_index).c_str());
    return path;
}

CMPIInstance* port_instance(const CimClass& of, std::uint32_t if_index, const char** properties) {
    const char* keys[] = {"SystemCreationClassName", "SystemName", "CreationClassName", "DeviceID", nullptr};
    CMPIInstance* instance = new_instance(of, port_path(of, if_index), properties, keys);
    if (!instance)
        return nullptr;
    set_text(instance, "SystemCreationClassName", physical_system_class);
    set_text(instance, "SystemName", physical_system_name());
    set_text(instance, "CreationClassName", of.name);
    set_text(instance, "DeviceID", device_id(if_index).c_str());
    if (const Port* port = find_port(if_index))
        set_port_facts(instance, *port);
    return instance;
}

CMPIObjectPath* system_path(const CimClass& of, const char* name) {
    CMPIObjectPath* path = new_path(of);
    if (!path)
        return nullptr;
    add_key(path, "CreationClassName", of.name);
    add_key(path, "Name", name);
    return path;
}

CMPIInstance* system_instance(const CimClass& of, const char* name, const char** properties) {
    const char* keys[] = {"CreationClassName", "Name", nullptr};
    CMPIInstance* instance = new_instance(of, system_path(of, name), properties, keys);
    if (!instance)
        return nullptr;
    set_text(instance, "CreationClassName", of.name);
    set_text(instance, "Name", name);
    set_text(instance, "ElementName", name);
    set_text(instance, "NameFormat", "Other");
    return instance;
}

} // namespace switchsim
