// When the records that a request fetches are released: after what was made of them, ahead of or behind its return to
// the CIM server, and before the request's last line.
#include "provider/associations/associators.h"
#include "provider/associations/references.h"
#include "provider/common/values.h"
#include "provider/mi/instance_operations.h"
#include "tests/provider/access/call_marks.h"
#include "tests/support/provider_test.h"

#include <cstdio>

namespace {

using switchsim::Fault;

/// A result that prints a marker for each object that it is handed.
class MarkingResult {
  public:
    MarkingResult() {
        functions_.returnInstance = [](const CMPIResult*, const CMPIInstance*) { return returned(); };
        functions_.returnObjectPath = [](const CMPIResult*, const CMPIObjectPath*) { return returned(); };
    }

    const CMPIResult* get() const { return &result_; }

  private:
    static CMPIStatus returned() {
        std::printf("[return]");
        return {CMPI_RC_OK, nullptr};
    }

    CMPIResultFT functions_{};
    CMPIResult result_{nullptr, &functions_};
};

class Releases : public test::ProviderTest {
  protected:
    void SetUp() override {
        ProviderTest::SetUp();
        the_switch().ports.at(test::ethernet_1).ip_statistics.assign(172, 0);
    }

    void TearDown() override {
        EXPECT_TRUE(test::held_records().empty());
        ProviderTest::TearDown();
    }

    void associators(fcip::associators_member* member, const char* key, const char* association) {
        call([&] { return member(key, association, nullptr, nullptr, nullptr, nullptr, result.get(), "root/cimv2"); });
    }

    void references(fcip::references_member* member, const char* key, const char* association) {
        call([&] { return member(key, association, nullptr, nullptr, result.get(), "root/cimv2"); });
    }

    void get(const char* class_name, const char* key_value) {
        CMPIObjectPath* path = fcip::new_path("root/cimv2", class_name);
        fcip::add_string_key(path, "InstanceID", key_value);
        captured([&] { return fcip::FCIP_GetInstance(nullptr, nullptr, result.get(), path, nullptr).rc; });
    }

    /// Expects the trace, from the text `from` on, to begin and to end so.
    void expect_from(const std::string& from, const std::string& begin, const std::string& end) {
        const auto position = trace.rfind(from);
        ASSERT_NE(position, std::string::npos) << trace;
        const std::string rest = trace.substr(position + from.size());
        EXPECT_TRUE(rest.starts_with(begin)) << rest;
        EXPECT_TRUE(rest.ends_with(end)) << rest;
    }

    MarkingResult result;
};

const std::string looked_up = "Exiting get_fcip_link_entry_from\n";

// ---------------------------------------------------------------------------------------------- gets

TEST_F(Releases, GetOfTcpStatisticsReleasesTheErrorsAheadOfTheReturn) {
    get("ZANTO_TCPEndPointStatistics", "16777216");
    expect_from(looked_up, "[errors]Entering tcp_statistical_data_build_instance\n",
                "Exiting tcp_statistical_data_build_instance\n[release errors][return]Exiting FCIP_GetInstance\n");
}

TEST_F(Releases, GetReleasesTheErrorsOfAFailedQueryAheadOfItsLine) {
    switchsim::inject("fcip_snmp_get_link_errors", Fault::fail_leaving_record);
    get("ZANTO_TCPEndPointStatistics", "16777216");
    expect_from(looked_up,
                "[errors][release errors] Function : FCIP_GetInstance Line 418 \n"
                "Entering tcp_statistical_data_build_instance\n",
                "Exiting tcp_statistical_data_build_instance\n[return]Exiting FCIP_GetInstance\n");
}

TEST_F(Releases, GetOfPortStatisticsReleasesThePortBehindTheReturn) {
    get("ZANTO_EthernetPortStatistics", "-2097152000");
    expect_from("\tfound key InstanceID : -2097152000\n", "[port]Entering eth_statistics_build_instance\n[counters]",
                "[release counters]Exiting eth_statistics_build_instance\n"
                "[return][release port]Exiting FCIP_GetInstance\n");
}

// ---------------------------------------------------------------------------------------------- associators

TEST_F(Releases, AssociatorsReleaseTheErrorsBehindTheReturn) {
    associators(fcip::get_ip_pe_associators, "16777216_x", "ZANTO_IPEndPointStatisticalData");
    expect_from(looked_up, "[errors]Entering ip_statistics_build_instance\n",
                "Exiting ip_statistics_build_instance\n[return][release errors]Exiting get_ip_pe_associators\n");
}

TEST_F(Releases, AssociatorsReleaseTheErrorsOfAFailedQueryAheadOfItsLine) {
    switchsim::inject("fcip_snmp_get_link_errors", Fault::fail_leaving_record);
    associators(fcip::get_ip_pe_associators, "16777216_x", "ZANTO_IPEndPointStatisticalData");
    expect_from(looked_up,
                "[errors][release errors] Function : get_ip_pe_associators Line 2 \n"
                "Entering ip_statistics_build_instance\n",
                "Exiting ip_statistics_build_instance\n[return]Exiting get_ip_pe_associators\n");
}

TEST_F(Releases, AssociatorsReleaseTheLinkReadAgainBehindTheReturn) {
    associators(fcip::get_tcp_pe_associators, "16777216", "ZANTO_TCPElementSettingData");
    expect_from(looked_up, "[link]Entering tcp_settings_build_instance\n",
                "Exiting tcp_settings_build_instance\n[return][release link]Exiting get_tcp_pe_associators\n");
}

// ---------------------------------------------------------------------------------------------- references

TEST_F(Releases, ReferencesReleaseThePortBehindTheReturn) {
    references(fcip::get_lan_endpoint_references, "-2097152000:x", "ZANTO_EthernetPortProtocolEndpoint");
    expect_from("Exiting get_eth_ifidx_from_keyvalue\n", "[port]Entering lan_endpoint_fill_reference\n[port]",
                "[release port]Exiting lan_endpoint_fill_reference\n"
                "[return][release port]Exiting get_lan_endpoint_references\n");
}

} // namespace
