// Every builder in one form, each called on an object of the small switch, so that what holds for all of them is tested
// on all of them.
#pragma once

#include "provider/classes/fcip/fcip_profile.h"
#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/classes/fcip/fcip_settings.h"
#include "provider/classes/fcip/ip_settings.h"
#include "provider/classes/fcip/remote_fcip_port.h"
#include "provider/classes/fcip/tcp_settings.h"
#include "provider/classes/net/ethernet_port_statistics.h"
#include "provider/classes/net/ip_protocol_endpoint.h"
#include "provider/classes/net/ip_statistics.h"
#include "provider/classes/net/lan_endpoint.h"
#include "provider/classes/net/remote_ip_service_access_point.h"
#include "provider/classes/net/remote_tcp_port.h"
#include "provider/classes/net/statistics_path.h"
#include "provider/classes/net/tcp_protocol_endpoint.h"
#include "provider/classes/net/tcp_statistics.h"
#include "tests/support/class_test.h"

#include <cstring>

namespace test {

using InstanceBuilder = CMPIInstance*(const char* class_name, const char** properties);
using PathBuilder = CMPIObjectPath*(const char* class_name);

/// On tunnel 3, the second row of its table.
template <fcip::link_instance_builder* builder>
CMPIInstance* of_link(const char* class_name, const char** properties) {
    return builder(class_name, name_space, &switchsim::the_switch().links.at(tunnel_3), properties);
}
template <fcip::link_path_builder* builder>
CMPIObjectPath* of_link(const char* class_name) {
    return builder(class_name, name_space, &switchsim::the_switch().links.at(tunnel_3));
}

inline CMPIInstance* of_profile(const char* class_name, const char** properties) {
    return fcip::fcip_profile_build_instance(class_name, name_space, &switchsim::the_switch().profiles.at(3),
                                             properties);
}
inline CMPIObjectPath* of_profile(const char* class_name) {
    return fcip::fcip_profile_fill_reference(class_name, name_space, &switchsim::the_switch().profiles.at(3));
}

/// The port manager's record of a port, as far as builders read it.
inline PmPortInfo port_record(std::uint32_t if_index) {
    PmPortInfo record{};
    std::memcpy(record.bytes, &if_index, sizeof if_index);
    return record;
}

inline CMPIInstance* of_ethernet_port(const char* class_name, const char** properties) {
    const PmPortInfo record = port_record(ethernet_1);
    return fcip::eth_statistics_build_instance(class_name, name_space, &record, properties);
}
inline CMPIObjectPath* of_ethernet_port(const char* class_name) {
    const PmPortInfo record = port_record(ethernet_1);
    return fcip::eth_statistics_fill_reference(class_name, name_space, &record);
}

inline CMPIInstance* of_lan_endpoint(const char* class_name, const char** properties) {
    return fcip::lan_endpoint_build_instance(class_name, name_space, ethernet_1, properties);
}
inline CMPIObjectPath* of_lan_endpoint(const char* class_name) {
    return fcip::lan_endpoint_fill_reference(class_name, name_space, ethernet_1);
}

} // namespace test
