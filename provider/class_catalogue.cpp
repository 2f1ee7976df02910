#include "provider/class_catalogue.h"

#include <algorithm>

#include <strings.h>

namespace fcip {

namespace {

constexpr const char* any_key = nullptr;

constexpr class_key keys[] = {
    {"ZANTO_FCIPProtocolEndPoint", "Name"},
    {"ZANTO_EthernetPort", "DeviceID"},
    {"ZANTO_EthernetPortStatistics", "InstanceID"},
    {"ZANTO_IPProtocolEndPoint", "Name"},
    {"ZANTO_TCPProtocolEndPoint", "Name"},
    {"ZANTO_LanEndPoint", "Name"},
    {"ZANTO_FCIPSettings", "InstanceID"},
    {"ZANTO_IPSettings", "InstanceID"},
    {"ZANTO_TCPSettings", "InstanceID"},
    {"ZANTO_TCPEndPointStatistics", "InstanceID"},
    {"ZANTO_IPEndPointStatistics", "InstanceID"},
    {"ZANTO_RemoteFCIPPort", "Name"},
    {"ZANTO_RemoteIPServiceAccessPoint", "Name"},
    {"ZANTO_RemoteTCPPort", "Name"},
    {"ZANTO_FCIPProfile", "InstanceID"},
    // The first key of an association's path counts as its key, whatever it is called.
    {"ZANTO_FCIPPEBasedOn", any_key},
    {"ZANTO_SANIPEndpoint", any_key},
    {"ZANTO_SANTCPEndpoint", any_key},
    {"ZANTO_SANFCIPEndpoint", any_key},
    {"ZANTO_FCIPTCPEndpoint", any_key},
    {"ZANTO_TCPIPEndpoint", any_key},
    {"ZANTO_FCIPElementSettingData", any_key},
    {"ZANTO_TCPElementSettingData", any_key},
    {"ZANTO_IPElementSettingData", any_key},
    {"ZANTO_EthernetPortStatisticalData", any_key},
};

} // namespace

std::span<const class_key> class_keys() {
    return keys;
}

int check_key_name(const char* class_name, const char* key_name) {
    return std::ranges::any_of(keys, [&](const class_key& row) {
        return strcasecmp(row.class_name, class_name) == 0 &&
               (row.key_name == any_key || strcasecmp(row.key_name, key_name) == 0);
    });
}

} // namespace fcip
