#include "provider/mi/class_catalogue.h"

#include <strings.h>

namespace fcip {

namespace {

constexpr class_row<const char*> keys[] = {
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

std::span<const class_row<const char*>> class_keys() {
    return keys;
}

int check_key_name(const char* class_name, const char* key_name) {
    const auto* row = row_for(keys, class_name);
    return row != nullptr && (row->serves == any_key || strcasecmp(row->serves, key_name) == 0) ? 1 : 0;
}

} // namespace fcip
