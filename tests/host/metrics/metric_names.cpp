// Names of metrics and labels.
#include "host/metrics/metric_names.h"

#include <gtest/gtest.h>

#include <vector>

namespace cmpihost::metrics {
namespace {

TEST(MetricNames, WordsOfANameAreInSmallLetters) {
    const std::vector<std::pair<const char*, const char*>> rows{
        {"ReceivedPDUs", "received_pdus"},
        {"ReceivedPDUHeaderErrors", "received_pdu_header_errors"},
        {"ReceivedPDUUnknownProtocolErrors", "received_pdu_unknown_protocol_errors"},
        {"FCSErrors", "fcs_errors"},
        {"InternalMACTransmitErrors", "internal_mac_transmit_errors"},
        {"LateCollissions", "late_collissions"},
        {"ZANTO_IPEndPointStatistics", "zanto_ip_end_point_statistics"},
        {"WAN_TOV", "wan_tov"},
        {"IPv4Address", "i_pv4_address"},
        {"TcpRemPort", "tcp_rem_port"},
        {"U8", "u8"},
        {"already_small", "already_small"},
        {"__Odd__Name", "odd_name"},
        {"", ""},
    };
    for (const auto& [name, expected] : rows)
        EXPECT_EQ(snake_case(name, {}), expected) << name;
}

TEST(MetricNames, AcronymsAreWordsWhereCapitalsMeet) {
    const std::vector<std::string> acronyms{"FCIP", "TCP", "IP", "IPv4", "PDU"};
    const std::vector<std::pair<const char*, const char*>> rows{
        {"FCIPTCPEndpoint", "fcip_tcp_endpoint"},
        {"FCIPProtocolEndPoint", "fcip_protocol_end_point"},
        {"IPv4Address", "ipv4_address"},
        {"SentPDUs", "sent_pdus"},
    };
    for (const auto& [name, expected] : rows)
        EXPECT_EQ(snake_case(name, acronyms), expected) << name;
    EXPECT_EQ(snake_case("FCIPTCPEndpoint", {}), "fciptcp_endpoint");
}

TEST(MetricNames, LabelsArePrometheusNamesAndNotItsOwn) {
    for (const char* taken : {"Job", "Instance", "LE", "Quantile", "1st", ""})
        EXPECT_TRUE(label_name(taken, {}).starts_with("key_")) << taken;
    EXPECT_EQ(label_name("InstanceID", {}), "instance_id");
    EXPECT_EQ(label_name("Name", {}), "name");
}

} // namespace
} // namespace cmpihost::metrics
