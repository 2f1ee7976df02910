// Every kind of request that clients can make of the small switch, for tests that sweep over all of them.
#pragma once

#include "tests/support/request_test.h"

namespace test {

/// The classes of instances, in the spelling of the catalogue.
inline constexpr const char* served_classes[] = {
    "ZANTO_FCIPProtocolEndPoint", "ZANTO_RemoteFCIPPort",
    "ZANTO_FCIPProfile",          "ZANTO_FCIPSettings",
    "ZANTO_IPSettings",           "ZANTO_TCPSettings",
    "ZANTO_IPProtocolEndPoint",   "ZANTO_RemoteIPServiceAccessPoint",
    "ZANTO_RemoteIPPort",         "ZANTO_TCPProtocolEndPoint",
    "ZANTO_RemoteTCPPort",        "ZANTO_TCPEndPointStatistics",
    "ZANTO_IPEndPointStatistics", "ZANTO_TCPStatisticalData",
    "ZANTO_LanEndPoint",          "ZANTO_EthernetPortStatistics",
    "ZANTO_EthernetPort",
};

/// The nineteen association classes, in the spelling of the catalogue.
inline constexpr const char* association_classes[] = {
    "ZANTO_FCIPElementSettingData",
    "ZANTO_IPElementSettingData",
    "ZANTO_TCPElementSettingData",
    "ZANTO_FCIPTCPEndpoint",
    "ZANTO_TCPIPEndpoint",
    "ZANTO_SANFCIPEndpoint",
    "ZANTO_SANIPEndpoint",
    "ZANTO_SANTCPEndpoint",
    "ZANTO_FCPortProtocolEndPoint",
    "ZANTO_SwitchHostedFCIPAccessPoint",
    "ZANTO_SwitchHostedIPAccessPoint",
    "ZANTO_SwitchHostedTCPAccessPoint",
    "ZANTO_FCIPPEBasedOn",
    "ZANTO_IPEthernetEndpoint",
    "ZANTO_EthernetPortProtocolEndpoint",
    "CIM_HostedAccessPoint",
    "ZANTO_IPEndPointStatisticalData",
    "ZANTO_TCPEndPointStatisticalData",
    "ZANTO_EthernetPortStatisticalData",
};

/// Names that some member answers besides, as if they were association classes.
inline constexpr const char* other_association_names[] = {
    "ZANTO_FCIPTCPEnpoint",
    "ZANTO_EthernetPortStatistics",
    "ZANTO_TCPEndPointStatistics",
};

/// Both of them.
std::vector<const char*> association_names();

/// One object of each class that association operations know as a source; all of tunnel 1 and its Ethernet port.
std::vector<cmpihost::Object> source_objects();

/// Enumerations of every class and association, a get of every source, and every association operation from every
/// source along every association.
std::vector<cmpihost::Request> all_requests();

/// What a request is, for messages.
std::string name_of(const cmpihost::Request& request);

} // namespace test
