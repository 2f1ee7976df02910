#include "simulator/bytes.h"
#include "simulator/call.h"
#include "simulator/identity.h"
#include "simulator/state.h"

#include <cmpimacs.h>

#include <charconv>

#include <strings.h>

using namespace switchsim;

namespace {

constexpr const char* physical_system = "ZANTO_PhysicalComputerSystem";
constexpr const char* port_statistics_association = "ZANTO_EthernetPortStatisticalData";

struct ClassAndNamespace {
    const char* class_name;
    const char* name_space;
};

/// A class name begins with its schema's name, and namespaces do not.
bool is_class(const char* text) {
    return strncasecmp(text, "ZANTO_", 6) == 0 || strncasecmp(text, "CIM_", 4) == 0;
}

/// Tells class name and namespace apart, whichever comes first.
std::optional<ClassAndNamespace> tell_apart(const Call& call, Function function, const char* one, const char* other) {
    if (!call.expect_pointer("the class name or namespace", one) ||
        !call.expect_pointer("the class name or namespace", other))
        return std::nullopt;
    if (is_class(other))
        return ClassAndNamespace{other, one};
    if (is_class(one))
        return ClassAndNamespace{one, other};
    complain(function, "neither text is a class name");
    return std::nullopt;
}

bool expect_names(const Call& call, const char* class_name, const char* name_space, const CMPIBroker* broker) {
    return call.expect_pointer("the class name", class_name) && call.expect_pointer("the namespace", name_space) &&
           call.expect_pointer("the broker", broker);
}

const char* text_or_empty(const char* text) {
    return text ? text : "";
}

void add_key(CMPIObjectPath* path, const char* name, const char* value) {
    CMAddKey(path, name, value, CMPI_chars);
}

void set_text(CMPIInstance* instance, const char* name, const char* value) {
    CMSetProperty(instance, name, value, CMPI_chars);
}

void set_reference(CMPIInstance* instance, const char* name, CMPIObjectPath* path) {
    CMPIValue value{};
    value.ref = path;
    CMSetProperty(instance, name, &value, CMPI_ref);
}

/// A path without keys that bears the switch's name as its host.
CMPIObjectPath* new_path(const CMPIBroker* broker, const char* name_space, const char* class_name) {
    CMPIObjectPath* path = CMNewObjectPath(broker, name_space, class_name, nullptr);
    if (path)
        CMSetHostname(path, text_or_empty(switch_name()));
    return path;
}

// ---------------------------------------------------------------------------------------------- ports

struct PortKeys {
    char device_id[12];
    const char* class_name;
};

PortKeys port_keys(const PmPortInfo& info, const char* class_name) {
    PortKeys keys{{}, class_name};
    const auto number = static_cast<std::int32_t>(get_host(info.bytes, 0));
    std::to_chars(std::begin(keys.device_id), std::end(keys.device_id) - 1, number);
    return keys;
}

CMPIObjectPath* port_path(const PortKeys& keys, const char* name_space, const CMPIBroker* broker) {
    CMPIObjectPath* path = new_path(broker, name_space, keys.class_name);
    if (!path)
        return nullptr;
    add_key(path, "SystemCreationClassName", physical_system);
    add_key(path, "SystemName", text_or_empty(system_name()));
    add_key(path, "CreationClassName", keys.class_name);
    add_key(path, "DeviceID", keys.device_id);
    return path;
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

CMPIInstance* port_instance(const PmPortInfo& info, const ClassAndNamespace& names, const char** properties,
                            const CMPIBroker* broker) {
    const PortKeys keys = port_keys(info, names.class_name);
    CMPIObjectPath* path = port_path(keys, names.name_space, broker);
    CMPIInstance* instance = path ? CMNewInstance(broker, path, nullptr) : nullptr;
    if (!instance)
        return nullptr;
    set_text(instance, "SystemCreationClassName", physical_system);
    set_text(instance, "SystemName", text_or_empty(system_name()));
    set_text(instance, "CreationClassName", keys.class_name);
    set_text(instance, "DeviceID", keys.device_id);
    if (const Port* port = find_port(get_host(info.bytes, 0)))
        set_port_facts(instance, *port);
    const char* key_names[] = {"SystemCreationClassName", "SystemName", "CreationClassName", "DeviceID", nullptr};
    if (properties)
        CMSetPropertyFilter(instance, properties, key_names);
    return instance;
}

/// The two ends of the association between an Ethernet port and its statistics.
struct StatisticsEnds {
    CMPIObjectPath* port;
    CMPIObjectPath* statistics;
};

std::optional<StatisticsEnds> statistics_ends(const PmPortInfo& info, const char* name_space,
                                              const CMPIBroker* broker) {
    const PortKeys keys = port_keys(info, "ZANTO_EthernetPort");
    StatisticsEnds ends{port_path(keys, name_space, broker),
                        new_path(broker, name_space, "ZANTO_EthernetPortStatistics")};
    if (!ends.port || !ends.statistics)
        return std::nullopt;
    add_key(ends.statistics, "InstanceID", keys.device_id);
    return ends;
}

CMPIInstance* statistics_association_instance(const PmPortInfo& info, const ClassAndNamespace& names,
                                              const char** properties, const CMPIBroker* broker) {
    const auto ends = statistics_ends(info, names.name_space, broker);
    CMPIObjectPath* path = ends ? new_path(broker, names.name_space, names.class_name) : nullptr;
    CMPIInstance* instance = path ? CMNewInstance(broker, path, nullptr) : nullptr;
    if (!instance)
        return nullptr;
    set_reference(instance, "ManagedElement", ends->port);
    set_reference(instance, "Stats", ends->statistics);
    const char* key_names[] = {"ManagedElement", "Stats", nullptr};
    if (properties)
        CMSetPropertyFilter(instance, properties, key_names);
    return instance;
}

CMPIObjectPath* statistics_association_path(const PmPortInfo& info, const ClassAndNamespace& names,
                                            const CMPIBroker* broker) {
    const auto ends = statistics_ends(info, names.name_space, broker);
    CMPIObjectPath* path = ends ? new_path(broker, names.name_space, names.class_name) : nullptr;
    if (!path)
        return nullptr;
    CMPIValue value{};
    value.ref = ends->port;
    CMAddKey(path, "ManagedElement", &value, CMPI_ref);
    value.ref = ends->statistics;
    CMAddKey(path, "Stats", &value, CMPI_ref);
    return path;
}

bool is_statistics_association(const ClassAndNamespace& names) {
    return strcasecmp(names.class_name, port_statistics_association) == 0;
}

// ---------------------------------------------------------------------------------------------- computer systems

CMPIObjectPath* system_path(const char* class_name, const char* name_space, const char* name,
                            const CMPIBroker* broker) {
    CMPIObjectPath* path = new_path(broker, name_space, class_name);
    if (!path)
        return nullptr;
    add_key(path, "CreationClassName", class_name);
    add_key(path, "Name", name);
    return path;
}

} // namespace

CMPIInstance* fcport_build_instance_pm(const char* name_or_class, const char* class_or_name, PmPortInfo* port,
                                       const char** properties, const CMPIBroker* broker) {
    const Call call(Function::fcport_build_instance_pm);
    const auto names = tell_apart(call, Function::fcport_build_instance_pm, name_or_class, class_or_name);
    if (!names || !call.expect_pointer("the broker", broker) || !port || call.returns_null())
        return nullptr;
    return is_statistics_association(*names) ? statistics_association_instance(*port, *names, properties, broker)
                                             : port_instance(*port, *names, properties, broker);
}

CMPIObjectPath* fcport_fill_reference_pm(const char* name_or_class, const char* class_or_name, PmPortInfo* port,
                                         const CMPIBroker* broker) {
    const Call call(Function::fcport_fill_reference_pm);
    const auto names = tell_apart(call, Function::fcport_fill_reference_pm, name_or_class, class_or_name);
    if (!names || !call.expect_pointer("the broker", broker) || !port || call.returns_null())
        return nullptr;
    return is_statistics_association(*names)
               ? statistics_association_path(*port, *names, broker)
               : port_path(port_keys(*port, names->class_name), names->name_space, broker);
}

CMPIInstance* association_class_build_instance_path(const char* class_name, const char* name_space,
                                                    CMPIObjectPath* first, CMPIObjectPath* second, const char* role1,
                                                    const char* role2, const CMPIBroker* broker) {
    const Call call(Function::association_class_build_instance_path);
    if (!expect_names(call, class_name, name_space, broker) || !call.expect_pointer("the first role", role1) ||
        !call.expect_pointer("the second role", role2) || !first || !second || call.returns_null())
        return nullptr;
    CMPIObjectPath* path = new_path(broker, name_space, class_name);
    CMPIInstance* instance = path ? CMNewInstance(broker, path, nullptr) : nullptr;
    if (!instance)
        return nullptr;
    set_reference(instance, role1, first);
    set_reference(instance, role2, second);
    if (strcasecmp(role1, "ManagedElement") == 0 && strcasecmp(role2, "SettingData") == 0) {
        CMPIValue one{};
        one.uint16 = 1;
        CMSetProperty(instance, "IsDefault", &one, CMPI_uint16);
        CMSetProperty(instance, "IsCurrent", &one, CMPI_uint16);
    }
    return instance;
}

CMPIInstance* switch_build_instance_str(const char* class_name, const char* name_space, const char* key, int constant_0,
                                        const char** properties, const CMPIBroker* broker) {
    const Call call(Function::switch_build_instance_str);
    if (!expect_names(call, class_name, name_space, broker) || !call.expect_pointer("the key", key) ||
        !call.expect("the constant", constant_0, {0}) || call.returns_null())
        return nullptr;
    CMPIObjectPath* path = system_path(class_name, name_space, key, broker);
    CMPIInstance* instance = path ? CMNewInstance(broker, path, nullptr) : nullptr;
    if (!instance)
        return nullptr;
    set_text(instance, "CreationClassName", class_name);
    set_text(instance, "Name", key);
    set_text(instance, "ElementName", key);
    set_text(instance, "NameFormat", "Other");
    const char* key_names[] = {"CreationClassName", "Name", nullptr};
    if (properties)
        CMSetPropertyFilter(instance, properties, key_names);
    return instance;
}

CMPIObjectPath* switch_fill_reference(const char* class_name, const char* name_space, const CMPIBroker* broker) {
    const Call call(Function::switch_fill_reference);
    if (!expect_names(call, class_name, name_space, broker) || call.returns_null())
        return nullptr;
    return system_path(class_name, name_space, text_or_empty(system_name()), broker);
}

CMPIObjectPath* switch_fill_reference_str(const char* class_name, const char* name_space, const char* key,
                                          const CMPIBroker* broker) {
    const Call call(Function::switch_fill_reference_str);
    if (!expect_names(call, class_name, name_space, broker) || !call.expect_pointer("the key", key) ||
        call.returns_null())
        return nullptr;
    return system_path(class_name, name_space, key, broker);
}
