// Ports: their records, the walk over them, VSAN queries, and the Ethernet port of an interface index.
#include "provider/access/ports.h"
#include "tests/provider/access/access_test.h"

#include <cstring>

namespace {

/// A call of one of the platform's two port builders, as it arrived.
struct builder_call {
    std::string first;
    std::string second;
    std::uint32_t if_index;
    const char** properties;
    const CMPIBroker* broker;
};

std::vector<builder_call> instance_calls;
std::vector<builder_call> path_calls;
int built_instance; // their addresses stand for what the builders make
int built_path;

} // namespace

// In place of the simulator's, which take class name and namespace in either order.
CMPIInstance* fcport_build_instance_pm(const char* name_or_class, const char* class_or_name, PmPortInfo* port,
                                       const char** properties, const CMPIBroker* broker) {
    instance_calls.push_back({name_or_class, class_or_name, fcip::port_if_index(*port), properties, broker});
    return reinterpret_cast<CMPIInstance*>(&built_instance);
}

CMPIObjectPath* fcport_fill_reference_pm(const char* name_or_class, const char* class_or_name, PmPortInfo* port,
                                         const CMPIBroker* broker) {
    path_calls.push_back({name_or_class, class_or_name, fcip::port_if_index(*port), nullptr, broker});
    return reinterpret_cast<CMPIObjectPath*>(&built_path);
}

namespace fcip {
namespace {

class Ports : public AccessTest {
  protected:
    static switchsim::Port& port(std::uint32_t if_index, std::uint8_t kind = interface_kind_ethernet) {
        switchsim::Port& row = the_switch().ports[if_index];
        row.kind = kind;
        return row;
    }

    std::uint32_t vsan_id_ = untouched;
};

// ---------------------------------------------------------------------------------------------- records and the walk

TEST_F(Ports, RecordFieldsStandAtTheirOffsetsInHostOrder) {
    PmPortInfo record{};
    const std::uint32_t values[] = {0x83000001, 2300, 20};
    std::memcpy(record.bytes, &values[0], 4);
    std::memcpy(record.bytes + 28, &values[1], 4);
    std::memcpy(record.bytes + 213, &values[2], 4);
    EXPECT_EQ(port_if_index(record), 0x83000001u);
    EXPECT_EQ(port_mtu(record), 2300u);
    EXPECT_EQ(port_vsan_id(record), 20u);
}

TEST_F(Ports, PortIsReadExactlyOrAsTheNextOne) {
    port(0x83000001);
    port(0x83000005);
    call([] {
        EXPECT_EQ(port_if_index(*fetch_port(platform_exact, 0x83000005)), 0x83000005u);
        EXPECT_EQ(fetch_port(platform_exact, 0x83000004), nullptr);
        EXPECT_EQ(port_if_index(*fetch_port(platform_next_port, 0x83000001)), 0x83000005u);
        EXPECT_EQ(fetch_port(platform_next_port, 0x83000005), nullptr);
    });
}

TEST_F(Ports, PortThatCannotBeReadIsNull) {
    port(5);
    for (const auto fault : test::read_faults) {
        switchsim::clear_faults();
        switchsim::inject("pm_cim_get_port_info", fault);
        call([] { EXPECT_EQ(fetch_port(platform_exact, 5), nullptr); });
    }
}

TEST_F(Ports, WalkVisitsThePortsBehindTheFirstPortKeyInOrder) {
    for (const std::uint32_t if_index : {1u, 0x82FFFFFFu, 0x83000000u, 0xFFFFFFFFu, 0x84000000u})
        port(if_index);
    std::vector<std::uint32_t> visited;
    call([&] {
        walk_ports([&](PmPortInfo& record) {
            visited.push_back(port_if_index(record));
            std::memset(record.bytes, 0, 4); // the walk keeps its own key
            return walk::go_on;
        });
    });
    EXPECT_EQ(visited, (std::vector<std::uint32_t>{0x83000000, 0x84000000, 0xFFFFFFFF}));
}

TEST_F(Ports, WalkEndsWhenTheVisitorSaysSoOrAReadFails) {
    port(0x83000000);
    port(0x83000001);
    port(0x83000002);
    int visits = 0;
    const auto count = [&](walk answer) {
        visits = 0;
        call([&] {
            walk_ports([&](const PmPortInfo&) {
                ++visits;
                return answer;
            });
        });
        return visits;
    };
    EXPECT_EQ(count(walk::stop), 1);
    EXPECT_EQ(count(walk::go_on), 3);
    for (const auto fault : test::read_faults) {
        switchsim::clear_faults();
        switchsim::inject("pm_cim_get_port_info", fault, 2);
        EXPECT_EQ(count(walk::go_on), 1);
    }
}

TEST_F(Ports, TypeIsTheFirstByteOr0WhenTheQueryFails) {
    port(5, interface_kind_5);
    port(6).type_known = false;
    call([] {
        EXPECT_EQ(type_of(5).status, 0);
        EXPECT_EQ(type_of(5).kind, 5);
        EXPECT_TRUE(type_of(5).is(interface_kind_5));
        EXPECT_FALSE(type_of(5).is(interface_kind_ethernet));
        EXPECT_NE(type_of(6).status, 0);
        EXPECT_EQ(type_of(6).kind, 0);
        EXPECT_FALSE(type_of(6).is(0)) << "a failed query is no kind at all";
        EXPECT_NE(type_of(7).status, 0);
    });
}

TEST_F(Ports, PortsOfKind2And5AndOfNoKnownKindMayHaveStatistics) {
    for (int kind = 0; kind <= 255; ++kind)
        EXPECT_EQ(may_have_statistics({0, static_cast<std::uint8_t>(kind)}), kind == 2 || kind == 5) << kind;
    EXPECT_TRUE(may_have_statistics({-1, 0}));
}

// ---------------------------------------------------------------------------------------------- VSANs

TEST_F(Ports, VsanIdIsThePortRecords) {
    port(5).vsan_id = 0x01020304;
    EXPECT_EQ(call([&] { return get_vsan_id(5, &vsan_id_); }), 0);
    EXPECT_EQ(vsan_id_, 0x01020304u);
    EXPECT_EQ(trace, "");
}

TEST_F(Ports, VsanIdOfAPortThatCannotBeReadIsMinusOneWithATrace) {
    port(5);
    for (const auto fault : test::read_faults) {
        switchsim::clear_faults();
        switchsim::inject("pm_cim_get_port_info", fault);
        EXPECT_EQ(call([&] { return get_vsan_id(5, &vsan_id_); }), -1);
        EXPECT_EQ(trace, "error : pm_cim_get_port_info ");
        EXPECT_EQ(vsan_id_, untouched);
    }
}

TEST_F(Ports, VsanOfAnInterfaceIsPrintedWithTheWordBesideIt) {
    port(5).vsan_id = 20;
    port(5).config_word = 0xFFFFFFFF;
    EXPECT_EQ(call([&] { return get_vsan_from_ifindex(5, &vsan_id_); }), 0);
    EXPECT_EQ(vsan_id_, 20u);
    EXPECT_EQ(trace, " fcip interface is in the vsan 20 \n fcip interface is in the vsan -1 \n");
}

TEST_F(Ports, VsanWithoutConfigurationIsMinusOneWithoutATrace) {
    port(5);
    for (const auto fault : test::read_faults) {
        switchsim::clear_faults();
        switchsim::inject("pm_cmi_get_port_config", fault);
        EXPECT_EQ(call([&] { return get_vsan_from_ifindex(5, &vsan_id_); }), -1);
        EXPECT_EQ(trace, "");
        EXPECT_EQ(vsan_id_, untouched);
    }
}

// ---------------------------------------------------------------------------------------------- key values

TEST_F(Ports, EthernetIndexIsTheFirstTokenOfTheKey) {
    const std::pair<const char*, std::uint32_t> rows[] = {{"12:3", 12},
                                                          {"12_3", 12},
                                                          {"12", 12},
                                                          {":_12", 12},
                                                          {"12abc", 12},
                                                          {"abc", 0},
                                                          {"-2097152000", 0x83000000},
                                                          {"2197815296", 0x7FFFFFFF}, // clamped
                                                          {"-99999999999999999999", 0x80000000}};
    for (const auto& [key, expected] : rows) {
        std::uint32_t if_index = untouched;
        EXPECT_EQ(call([&if_index, text = key] { return get_eth_ifidx_from_keyvalue(&if_index, text); }), 0) << key;
        EXPECT_EQ(if_index, expected) << key;
        EXPECT_EQ(trace, "Entering get_eth_ifidx_from_keyvalue\nif_index : " +
                             std::to_string(static_cast<std::int32_t>(expected)) +
                             " \nExiting get_eth_ifidx_from_keyvalue\n")
            << key;
    }
}

TEST_F(Ports, EthernetIndexOfAKeyWithoutATokenIsMinusOne) {
    for (const char* key : {"", ":", "_:_"}) {
        std::uint32_t if_index = untouched;
        EXPECT_EQ(call([&] { return get_eth_ifidx_from_keyvalue(&if_index, key); }), -1) << key;
        EXPECT_EQ(if_index, untouched) << key;
        EXPECT_EQ(trace, "Entering get_eth_ifidx_from_keyvalue\nExiting get_eth_ifidx_from_keyvalue\n") << key;
    }
}

TEST_F(Ports, EthernetIndexIsReadFromTheFirst511Characters) {
    std::uint32_t if_index = untouched;
    const std::string key = std::string(509, '_') + "123";
    EXPECT_EQ(call([&] { return get_eth_ifidx_from_keyvalue(&if_index, key.c_str()); }), 0);
    EXPECT_EQ(if_index, 12u);
}

// ---------------------------------------------------------------------------------------------- Ethernet ports

/// What was handed to the result, in order.
std::vector<const void*> returned;

CMPIStatus take_instance(const CMPIResult*, const CMPIInstance* instance) {
    returned.push_back(instance);
    return {};
}

CMPIStatus take_path(const CMPIResult*, const CMPIObjectPath* path) {
    returned.push_back(path);
    return {};
}

class EthernetPort : public Ports {
  protected:
    void SetUp() override {
        Ports::SetUp();
        instance_calls.clear();
        path_calls.clear();
        returned.clear();
        table_.returnInstance = take_instance;
        table_.returnObjectPath = take_path;
        port(0x83000000);
        port(0x83000001);
        port(0x83000002, 1);
        port(0x83000003);
    }

    int get(std::uint32_t if_index, int want_instance) {
        return call([&] {
            return get_etherport_from_if_index(if_index, want_instance, "ignored", &result_, "root/x", properties_,
                                               cmpihost::broker());
        });
    }

    CMPIResultFT table_{};
    CMPIResult result_{nullptr, &table_};
    const char* properties_[2] = {"MTU", nullptr};
};

TEST_F(EthernetPort, InstanceIsBuiltWithClassThenNamespace) {
    EXPECT_EQ(get(0x83000001, 1), 0);
    ASSERT_EQ(instance_calls.size(), 1u);
    EXPECT_EQ(instance_calls[0].first, "ZANTO_EthernetPort");
    EXPECT_EQ(instance_calls[0].second, "root/x");
    EXPECT_EQ(instance_calls[0].if_index, 0x83000001u);
    EXPECT_EQ(instance_calls[0].properties, properties_);
    EXPECT_EQ(instance_calls[0].broker, cmpihost::broker());
    EXPECT_EQ(returned, (std::vector<const void*>{&built_instance}));
    EXPECT_TRUE(path_calls.empty());
    EXPECT_EQ(trace, "");
}

TEST_F(EthernetPort, PathIsMadeWithNamespaceThenClass) {
    EXPECT_EQ(get(0x83000001, 0), 0);
    ASSERT_EQ(path_calls.size(), 1u);
    EXPECT_EQ(path_calls[0].first, "root/x");
    EXPECT_EQ(path_calls[0].second, "ZANTO_EthernetPort");
    EXPECT_EQ(path_calls[0].if_index, 0x83000001u);
    EXPECT_EQ(path_calls[0].broker, cmpihost::broker());
    EXPECT_EQ(returned, (std::vector<const void*>{&built_path}));
    EXPECT_TRUE(instance_calls.empty());
}

TEST_F(EthernetPort, WalkGoesOnBehindTheMatch) {
    get(0x83000000, 1);
    EXPECT_EQ(calls("pm_cim_get_port_info"), 3u) << "up to the port that is no Ethernet port";
    EXPECT_EQ(calls("if_index_get_type"), 3u);
}

TEST_F(EthernetPort, InterfaceThatIsNoEthernetPortReturnsNothingAnd0) {
    for (const std::uint32_t if_index : {0x83000002u, 0x99u, 0x82FFFFFFu}) {
        EXPECT_EQ(get(if_index, 1), 0);
        EXPECT_EQ(get(if_index, 0), 0);
    }
    EXPECT_TRUE(returned.empty());
}

TEST_F(EthernetPort, EthernetPortBehindAnotherKindOfPortIsNotReached) {
    EXPECT_EQ(get(0x83000003, 1), 0);
    EXPECT_TRUE(returned.empty());
}

TEST_F(EthernetPort, FailedTypeQueryEndsTheWalk) {
    port(0x83000000).type_known = false;
    EXPECT_EQ(get(0x83000001, 1), 0);
    EXPECT_TRUE(returned.empty());
    EXPECT_EQ(calls("pm_cim_get_port_info"), 1u);
}

TEST_F(EthernetPort, FailedReadEndsTheWalk) {
    for (const auto fault : test::read_faults) {
        switchsim::clear_faults();
        switchsim::inject("pm_cim_get_port_info", fault, 2);
        EXPECT_EQ(get(0x83000001, 1), 0);
        EXPECT_TRUE(returned.empty());
    }
}

// ---------------------------------------------------------------------------------------------- small helpers

TEST_F(Ports, InitWwnClearsEightBytes) {
    std::uint8_t wwn[10];
    std::memset(wwn, 0xEE, sizeof wwn);
    init_wwn(wwn + 1);
    EXPECT_EQ(wwn[0], 0xEE);
    for (int byte = 1; byte <= 8; ++byte)
        EXPECT_EQ(wwn[byte], 0) << byte;
    EXPECT_EQ(wwn[9], 0xEE);
}

TEST_F(Ports, MtuIsStoredCutTo16BitsAndPrintedWhole) {
    PmPortInfo record{};
    for (const std::uint32_t mtu : {1500u, 65536u + 9u, 0xFFFFFFFFu}) {
        std::memcpy(record.bytes + 28, &mtu, sizeof mtu);
        std::uint16_t cut = 0;
        EXPECT_EQ(call([&] { return pm_cli_eth_intf_prefix_print(&record, &cut); }), 0);
        EXPECT_EQ(cut, mtu & 0xFFFF);
        EXPECT_EQ(trace, "    MTU " + std::to_string(mtu) + "  bytes\n");
    }
}

} // namespace
} // namespace fcip
