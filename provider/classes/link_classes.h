// The classes whose objects link rows stand for, each with its two builders. Tables name a class by its pair; tables of
// instances use the one builder, tables of paths the other.
#pragma once

#include "provider/classes/fcip/fcip_protocol_endpoint.h"
#include "provider/classes/fcip/fcip_settings.h"
#include "provider/classes/fcip/ip_settings.h"
#include "provider/classes/fcip/remote_fcip_port.h"
#include "provider/classes/fcip/tcp_settings.h"
#include "provider/classes/net/ip_protocol_endpoint.h"
#include "provider/classes/net/ip_statistics.h"
#include "provider/classes/net/remote_ip_service_access_point.h"
#include "provider/classes/net/remote_tcp_port.h"
#include "provider/classes/net/statistics_path.h"
#include "provider/classes/net/tcp_protocol_endpoint.h"
#include "provider/classes/net/tcp_statistics.h"

namespace fcip::classes {

inline constexpr link_class fcip_pe{fcip_pe_build_instance, fcip_pe_fill_reference};
inline constexpr link_class fcip_remote_pe{fcip_remote_pe_build_instance, fcip_remote_pe_fill_reference};
inline constexpr link_class fcip_settings{fcip_settings_build_instance, fcip_settings_fill_reference};
inline constexpr link_class ip_settings{ip_settings_build_instance, ip_settings_fill_reference};
inline constexpr link_class tcp_settings{tcp_settings_build_instance, tcp_settings_fill_reference};
inline constexpr link_class ip_pe{ip_pe_build_instance, ip_pe_fill_reference};
inline constexpr link_class ip_remote_pe{ip_remote_pe_build_instance, ip_remote_pe_fill_reference};
inline constexpr link_class tcp_pe{tcp_pe_build_instance, tcp_pe_fill_reference};
inline constexpr link_class tcp_remote_pe{tcp_remote_pe_build_instance, tcp_remote_pe_fill_reference};
inline constexpr link_class remote_service_ap{remote_service_ap_build_instance, remote_service_ap_fill_reference};
inline constexpr link_class ip_statistics{ip_statistics_build_instance, stat_fill_reference};
inline constexpr link_class tcp_statistics{tcp_statistics_build_instance, stat_fill_reference};
inline constexpr link_class tcp_statistical_data{tcp_statistical_data_build_instance, stat_fill_reference};

} // namespace fcip::classes
