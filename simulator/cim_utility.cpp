#include "simulator/bytes.h"
#include "simulator/call.h"
#include "simulator/cim_objects.h"
#include "simulator/state.h"

#include <cmpimacs.h>

#include <strings.h>

using namespace switchsim;

namespace {

constexpr const char* port_statistics_association = "ZANTO_EthernetPortStatisticalData";

/// A class name begins with its schema's name, and namespaces do not.
bool is_class(const char* text) {
    return strncasecmp(text, "ZANTO_", 6) == 0 || strncasecmp(text, "CIM_", 4) == 0;
}

/// Tells class name and namespace apart, whichever comes first.
std::optional<CimClass> tell_apart(const Call& call, Function function, const char* one, const char* other,
                                   const CMPIBroker* broker) {
    if (!call.expect_pointer("the class name or namespace", one) ||
        !call.expect_pointer("the class name or namespace", other))
        return std::nullopt;
    if (is_class(other))
        return CimClass{other, one, broker};
    if (is_class(one))
        return CimClass{one, other, broker};
    complain(function, "neither text is a class name");
    return std::nullopt;
}

bool expect_names(const Call& call, const CimClass& of) {
    return call.expect_pointer("the class name", of.name) && call.expect_pointer("the namespace", of.name_space) &&
           call.expect_pointer("the broker", of.broker);
}

void set_reference(CMPIInstance* instance, const char* name, CMPIObjectPath* path) {
    CMPIValue value{};
    value.ref = path;
    CMSetProperty(instance, name, &value, CMPI_ref);
}

// ---------------------------------------------------------------------------------------------- ports

std::uint32_t if_index_of(const PmPortInfo& info) {
    return get_host(info.bytes, 0);
}

/// The two ends of the association between an Ethernet port and its statistics.
struct StatisticsEnds {
    CMPIObjectPath* port;
    CMPIObjectPath* statistics;
};

std::optional<StatisticsEnds> statistics_ends(const PmPortInfo& info, const CimClass& association) {
    const auto of = [&association](const char* name) {
        return CimClass{name, association.name_space, association.broker};
    };
    StatisticsEnds ends{port_path(of(ethernet_port_class), if_index_of(info)),
                        new_path(of("ZANTO_EthernetPortStatistics"))};
    if (!ends.port || !ends.statistics)
        return std::nullopt;
    CMAddKey(ends.statistics, "InstanceID", device_id(if_index_of(info)).c_str(), CMPI_chars);
    return ends;
}

CMPIInstance* statistics_association_instance(const PmPortInfo& info, const CimClass& of, const char** properties) {
    const auto ends = statistics_ends(info, of);
    CMPIObjectPath* path = ends ? new_path(of) : nullptr;
    CMPIInstance* instance = path ? CMNewInstance(of.broker, path, nullptr) : nullptr;
    if (!instance)
        return nullptr;
    set_reference(instance, "ManagedElement", ends->port);
    set_reference(instance, "Stats", ends->statistics);
    const char* key_names[] = {"ManagedElement", "Stats", nullptr};
    if (properties)
        CMSetPropertyFilter(instance, properties, key_names);
    return instance;
}

CMPIObjectPath* statistics_association_path(const PmPortInfo& info, const CimClass& of) {
    const auto ends = statistics_ends(info, of);
    CMPIObjectPath* path = ends ? new_path(of) : nullptr;
    if (!path)
        return nullptr;
    CMPIValue value{};
    value.ref = ends->port;
    CMAddKey(path, "ManagedElement", &value, CMPI_ref);
    value.ref = ends->statistics;
    CMAddKey(path, "Stats", &value, CMPI_ref);
    return path;
}

bool is_statistics_association(const CimClass& of) {
    return strcasecmp(of.name, port_statistics_association) == 0;
}

} // namespace

CMPIInstance* fcport_build_instance_pm(const char* name_or_class, const char* class_or_name, PmPortInfo* port,
                                       const char** properties, const CMPIBroker* broker) {
    const Call call(Function::fcport_build_instance_pm);
    const auto of = tell_apart(call, Function::fcport_build_instance_pm, name_or_class, class_or_name, broker);
    if (!of || !call.expect_pointer("the broker", broker) || !port || call.returns_null())
        return nullptr;
    return is_statistics_association(*of) ? statistics_association_instance(*port, *of, properties)
                                          : port_instance(*of, if_index_of(*port), properties);
}

CMPIObjectPath* fcport_fill_reference_pm(const char* name_or_class, const char* class_or_name, PmPortInfo* port,
                                         const CMPIBroker* broker) {
    const Call call(Function::fcport_fill_reference_pm);
    const auto of = tell_apart(call, Function::fcport_fill_reference_pm, name_or_class, class_or_name, broker);
    if (!of || !call.expect_pointer("the broker", broker) || !port || call.returns_null())
        return nullptr;
    return is_statistics_association(*of) ? statistics_association_path(*port, *of)
                                          : port_path(*of, if_index_of(*port));
}

CMPIInstance* association_class_build_instance_path(const char* class_name, const char* name_space,
                                                    CMPIObjectPath* first, CMPIObjectPath* second, const char* role1,
                                                    const char* role2, const CMPIBroker* broker) {
    const Call call(Function::association_class_build_instance_path);
    const CimClass of{class_name, name_space, broker};
    if (!expect_names(call, of) || !call.expect_pointer("the first role", role1) ||
        !call.expect_pointer("the second role", role2) || !first || !second || call.returns_null())
        return nullptr;
    CMPIObjectPath* path = new_path(of);
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
    const CimClass of{class_name, name_space, broker};
    if (!expect_names(call, of) || !call.expect_pointer("the key", key) ||
        !call.expect("the constant", constant_0, {0}) || call.returns_null())
        return nullptr;
    return system_instance(of, key, properties);
}

CMPIObjectPath* switch_fill_reference(const char* class_name, const char* name_space, const CMPIBroker* broker) {
    const Call call(Function::switch_fill_reference);
    const CimClass of{class_name, name_space, broker};
    return expect_names(call, of) && !call.returns_null() ? system_path(of, physical_system_name()) : nullptr;
}

CMPIObjectPath* switch_fill_reference_str(const char* class_name, const char* name_space, const char* key,
                                          const CMPIBroker* broker) {
    const Call call(Function::switch_fill_reference_str);
    const CimClass of{class_name, name_space, broker};
    return expect_names(call, of) && call.expect_pointer("the key", key) && !call.returns_null() ? system_path(of, key)
                                                                                                 : nullptr;
}
