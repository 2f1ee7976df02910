#include "provider/mi/class_catalogue.h"

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

const class_key* key_of(const char* class_name) {
    const auto row = std::ranges::find_if(
        keys, [class_name](const class_key& each) { return strcasecmp(each.class_name, class_name) == 0; });
    return row == std::end(keys) ? nullptr : row;
}

bool is_key(const class_key* row, const char* key_name) {
    return row != nullptr && (row->key_name == any_key || strcasecmp(row->key_name, key_name) == 0);
}

int check_key_name(const char* class_name, const char* key_name) {
    return is_key(key_of(class_name), key_name) ? 1 : 0;
}

} // namespace fcip
