// The CIM utility service: ports, computer systems and associations as the platform makes them.
#include "host/broker/broker.h"
#include "tests/simulator/simulator_test.h"

using namespace cmpihost;
using switchsim::Fault;
using switchsim::the_switch;

namespace {

constexpr const char* name_space = "root/cimv2";
constexpr const char* gigabit_id = "-2097086463"; // 0x83010001, signed

Property text(const char* name, std::string value) {
    return {name, "string", {std::move(value)}};
}

Property number(const char* name, const char* type, std::uint64_t value) {
    return {name, type, {value}};
}

std::vector<Property> port_keys(const char* class_name, const char* id) {
    return {text("SystemCreationClassName", "ZANTO_PhysicalComputerSystem"), text("SystemName", "edge-sw1"),
            text("CreationClassName", class_name), text("DeviceID", id)};
}

std::vector<Property> operator+(std::vector<Property> left, const std::vector<Property>& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Object reference_of(const Object& object, const char* role) {
    const Property* end = object.properties.empty() ? object.key(role) : object.property(role);
    if (!end || end->type != "reference")
        return {};
    return *std::get<Value::Reference>(end->value.data);
}

class CimUtility : public SimulatorTest {
  protected:
    static PmPortInfo port_info(std::uint32_t if_index) {
        PmPortInfo info{};
        std::memcpy(info.bytes, &if_index, sizeof if_index);
        return info;
    }

    void expect_place(const Object& object, const char* class_name) {
        EXPECT_EQ(object.class_name, class_name);
        EXPECT_EQ(object.name_space, name_space);
        EXPECT_EQ(object.host, "edge-sw1");
    }

    CallScope scope;
    PmPortInfo gigabit_info = port_info(gigabit);
};

} // namespace

// ---------------------------------------------------------------------------------------------- ports

TEST_F(CimUtility, PortPathIsMadeOfItsIndexWhicheverTextComesFirst) {
    for (const bool class_first : {false, true}) {
        const auto* path =
            fcport_fill_reference_pm(class_first ? "ZANTO_EthernetPort" : name_space,
                                     class_first ? name_space : "ZANTO_EthernetPort", &gigabit_info, broker());
        ASSERT_TRUE(path);
        const Object object = describe(path);
        expect_place(object, "ZANTO_EthernetPort");
        EXPECT_EQ(object.keys, port_keys("ZANTO_EthernetPort", gigabit_id));
    }
}

TEST_F(CimUtility, ClassIsRecognisedInAnyCase) {
    const auto* path = fcport_fill_reference_pm("cim_port", name_space, &gigabit_info, broker());
    ASSERT_TRUE(path);
    EXPECT_EQ(describe(path).class_name, "cim_port");
    EXPECT_EQ(fcport_fill_reference_pm("root", "cimv2", &gigabit_info, broker()), nullptr);
    EXPECT_EQ(take_complaint(), "fcport_fill_reference_pm: neither text is a class name");
}

TEST_F(CimUtility, PortInstanceHasKeysAndFacts) {
    const std::vector<Property> facts{
        text("ElementName", "GigabitEthernet1/1"), text("Caption", "GigabitEthernet1/1"),
        text("Name", "GigabitEthernet1/1"),        text("PermanentAddress", "02:00:00:aa:bb:cc"),
        number("PortNumber", "uint16", 1),         number("ActiveMaximumTransmissionUnit", "uint64", 2300)};
    for (const bool class_first : {false, true}) {
        const auto* instance =
            fcport_build_instance_pm(class_first ? "ZANTO_EthernetPort" : name_space,
                                     class_first ? name_space : "ZANTO_EthernetPort", &gigabit_info, nullptr, broker());
        ASSERT_TRUE(instance);
        const Object object = describe(instance);
        expect_place(object, "ZANTO_EthernetPort");
        EXPECT_EQ(object.keys, port_keys("ZANTO_EthernetPort", gigabit_id));
        EXPECT_EQ(object.properties, port_keys("ZANTO_EthernetPort", gigabit_id) + facts);
    }
}

TEST_F(CimUtility, PortInstanceLeavesOutWhatThePortHasNot) {
    const std::vector<Property> facts{text("ElementName", "fcip1"), text("Caption", "fcip1"), text("Name", "fcip1"),
                                      number("ActiveMaximumTransmissionUnit", "uint64", 2300)};
    the_switch().ports[fcip1].port.reset();
    PmPortInfo info = port_info(fcip1);
    const auto* instance = fcport_build_instance_pm("ZANTO_FCPort", name_space, &info, nullptr, broker());
    ASSERT_TRUE(instance);
    EXPECT_EQ(describe(instance).properties, port_keys("ZANTO_FCPort", "167772160") + facts);
}

TEST_F(CimUtility, PortOfAnUnknownIndexHasItsKeysAlone) {
    PmPortInfo info = port_info(77);
    const auto* instance = fcport_build_instance_pm("ZANTO_FCPort", name_space, &info, nullptr, broker());
    ASSERT_TRUE(instance);
    EXPECT_EQ(describe(instance).properties, port_keys("ZANTO_FCPort", "77"));
}

TEST_F(CimUtility, PortInstanceIsFilteredButForItsKeys) {
    const char* properties[] = {"elementname", nullptr};
    const auto* instance =
        fcport_build_instance_pm("ZANTO_EthernetPort", name_space, &gigabit_info, properties, broker());
    ASSERT_TRUE(instance);
    EXPECT_EQ(describe(instance).properties, port_keys("ZANTO_EthernetPort", gigabit_id) +
                                                 std::vector<Property>{text("ElementName", "GigabitEthernet1/1")});
}

TEST_F(CimUtility, NoPortGivesNothing) {
    EXPECT_EQ(fcport_build_instance_pm("ZANTO_EthernetPort", name_space, nullptr, nullptr, broker()), nullptr);
    EXPECT_EQ(fcport_fill_reference_pm("ZANTO_EthernetPort", name_space, nullptr, broker()), nullptr);
}

TEST_F(CimUtility, NamelessSwitchHasEmptyNames) {
    the_switch().has_name = false;
    const auto* path = fcport_fill_reference_pm("ZANTO_EthernetPort", name_space, &gigabit_info, broker());
    ASSERT_TRUE(path);
    EXPECT_EQ(describe(path).key("SystemName")->value, Value{std::string()});
}

TEST_F(CimUtility, PortStatisticsAssociationTiesPortAndStatistics) {
    const auto* instance =
        fcport_build_instance_pm(name_space, "zanto_EthernetPortStatisticalData", &gigabit_info, nullptr, broker());
    const auto* path =
        fcport_fill_reference_pm(name_space, "ZANTO_EthernetPortStatisticalData", &gigabit_info, broker());
    ASSERT_TRUE(instance);
    ASSERT_TRUE(path);
    expect_place(describe(path), "ZANTO_EthernetPortStatisticalData");
    EXPECT_EQ(describe(instance).properties.size(), 2U);
    EXPECT_EQ(describe(path).keys.size(), 2U);
    for (const Object& object : {describe(instance), describe(path)}) {
        const Object port = reference_of(object, "ManagedElement");
        expect_place(port, "ZANTO_EthernetPort");
        EXPECT_EQ(port.keys, port_keys("ZANTO_EthernetPort", gigabit_id));
        const Object statistics = reference_of(object, "Stats");
        expect_place(statistics, "ZANTO_EthernetPortStatistics");
        EXPECT_EQ(statistics.keys, std::vector<Property>{text("InstanceID", gigabit_id)});
    }
}

// ---------------------------------------------------------------------------------------------- computer systems

TEST_F(CimUtility, SystemPathIsMadeOfTheKey) {
    const auto* path = switch_fill_reference_str("ZANTO_LogicalComputerSystem", name_space, "the key", broker());
    ASSERT_TRUE(path);
    expect_place(describe(path), "ZANTO_LogicalComputerSystem");
    EXPECT_EQ(describe(path).keys, (std::vector<Property>{text("CreationClassName", "ZANTO_LogicalComputerSystem"),
                                                          text("Name", "the key")}));
}

TEST_F(CimUtility, PhysicalSystemIsNamedAfterTheSwitch) {
    the_switch().system_name = "edge-sw1.example.net";
    const auto* path = switch_fill_reference("ZANTO_PhysicalComputerSystem", name_space, broker());
    ASSERT_TRUE(path);
    expect_place(describe(path), "ZANTO_PhysicalComputerSystem");
    EXPECT_EQ(describe(path).keys, (std::vector<Property>{text("CreationClassName", "ZANTO_PhysicalComputerSystem"),
                                                          text("Name", "edge-sw1.example.net")}));
}

TEST_F(CimUtility, SystemInstanceHasItsNameAndIsFiltered) {
    const auto* instance =
        switch_build_instance_str("ZANTO_LogicalComputerSystem", name_space, "the key", 0, nullptr, broker());
    ASSERT_TRUE(instance);
    expect_place(describe(instance), "ZANTO_LogicalComputerSystem");
    EXPECT_EQ(describe(instance).properties,
              (std::vector<Property>{text("CreationClassName", "ZANTO_LogicalComputerSystem"), text("Name", "the key"),
                                     text("ElementName", "the key"), text("NameFormat", "Other")}));
    const char* properties[] = {"NameFormat", nullptr};
    const auto* filtered =
        switch_build_instance_str("ZANTO_LogicalComputerSystem", name_space, "the key", 0, properties, broker());
    ASSERT_TRUE(filtered);
    EXPECT_EQ(describe(filtered).properties.size(), 3U);
    EXPECT_FALSE(describe(filtered).property("ElementName"));
}

// ---------------------------------------------------------------------------------------------- associations

TEST_F(CimUtility, AssociationBearsBothReferences) {
    Object end;
    end.class_name = "ZANTO_EthernetPort";
    end.name_space = name_space;
    end.keys = {text("DeviceID", "1")};
    CMPIObjectPath* first = new_path(end);
    end.keys = {text("DeviceID", "2")};
    CMPIObjectPath* second = new_path(end);
    const auto* instance = association_class_build_instance_path("ZANTO_TCPIPEndpoint", name_space, first, second,
                                                                 "Antecedent", "Dependent", broker());
    ASSERT_TRUE(instance);
    const Object object = describe(instance);
    expect_place(object, "ZANTO_TCPIPEndpoint");
    EXPECT_EQ(object.properties.size(), 2U);
    EXPECT_EQ(reference_of(object, "Antecedent").keys, std::vector<Property>{text("DeviceID", "1")});
    EXPECT_EQ(reference_of(object, "Dependent").keys, std::vector<Property>{text("DeviceID", "2")});
}

TEST_F(CimUtility, SettingAssociationIsDefaultAndCurrent) {
    CMPIObjectPath* end = fcport_fill_reference_pm("ZANTO_EthernetPort", name_space, &gigabit_info, broker());
    const auto* instance = association_class_build_instance_path("ZANTO_IPElementSettingData", name_space, end, end,
                                                                 "ManagedElement", "SettingData", broker());
    ASSERT_TRUE(instance);
    const Object object = describe(instance);
    ASSERT_EQ(object.properties.size(), 4U);
    EXPECT_EQ(object.properties[2], number("IsDefault", "uint16", 1));
    EXPECT_EQ(object.properties[3], number("IsCurrent", "uint16", 1));
}

TEST_F(CimUtility, AssociationWithoutAnEndIsNone) {
    CMPIObjectPath* end = fcport_fill_reference_pm("ZANTO_EthernetPort", name_space, &gigabit_info, broker());
    EXPECT_EQ(association_class_build_instance_path("ZANTO_A", name_space, nullptr, end, "A", "B", broker()), nullptr);
    EXPECT_EQ(association_class_build_instance_path("ZANTO_A", name_space, end, nullptr, "A", "B", broker()), nullptr);
}

// ---------------------------------------------------------------------------------------------- failures

namespace {

/// All functions of the service, each called the right way; the result is whether they made something.
std::vector<std::pair<const char*, bool (*)()>> cim_utility_calls() {
    static PmPortInfo port{};
    static CMPIObjectPath* end = nullptr;
    end = switch_fill_reference("ZANTO_PhysicalComputerSystem", name_space, broker());
    return {
        {"fcport_build_instance_pm",
         [] { return fcport_build_instance_pm("ZANTO_FCPort", name_space, &port, nullptr, broker()) != nullptr; }},
        {"fcport_fill_reference_pm",
         [] { return fcport_fill_reference_pm("ZANTO_FCPort", name_space, &port, broker()) != nullptr; }},
        {"association_class_build_instance_path",
         [] {
             return association_class_build_instance_path("ZANTO_A", name_space, end, end, "A", "B", broker()) !=
                    nullptr;
         }},
        {"switch_build_instance_str",
         [] { return switch_build_instance_str("ZANTO_S", name_space, "key", 0, nullptr, broker()) != nullptr; }},
        {"switch_fill_reference", [] { return switch_fill_reference("ZANTO_S", name_space, broker()) != nullptr; }},
        {"switch_fill_reference_str",
         [] { return switch_fill_reference_str("ZANTO_S", name_space, "key", broker()) != nullptr; }},
    };
}

} // namespace

TEST_F(CimUtility, FaultsGiveNull) {
    for (const auto& [name, call] : cim_utility_calls()) {
        SCOPED_TRACE(name);
        for (const Fault fault : test::read_faults) {
            EXPECT_TRUE(call());
            switchsim::inject(name, fault, 1);
            EXPECT_FALSE(call());
        }
    }
}

TEST_F(CimUtility, LockIsWanted) {
    for (const auto& [name, call] : cim_utility_calls()) {
        SCOPED_TRACE(name);
        mutex_unlock();
        call();
        mutex_lock();
        EXPECT_EQ(take_complaint(), std::string(name) + ": called without the process-wide lock");
    }
}

TEST_F(CimUtility, BrokerThatMakesNothingGivesNull) {
    for (const auto& [name, call] : cim_utility_calls()) {
        SCOPED_TRACE(name);
        const unsigned before = scope.objects_made();
        ASSERT_TRUE(call());
        const unsigned made = scope.objects_made() - before;
        ASSERT_GE(made, 1U);
        for (unsigned nth = 1; nth <= made; ++nth) {
            scope.fail_object(nth);
            EXPECT_FALSE(call()) << "object " << nth << " of " << made;
        }
        scope.fail_object(0);
    }
}

TEST_F(CimUtility, ArgumentsAreChecked) {
    EXPECT_EQ(fcport_build_instance_pm(nullptr, "ZANTO_FCPort", &gigabit_info, nullptr, broker()), nullptr);
    EXPECT_EQ(take_complaint(), "fcport_build_instance_pm: the class name or namespace is null");
    EXPECT_EQ(fcport_build_instance_pm("ZANTO_FCPort", nullptr, &gigabit_info, nullptr, broker()), nullptr);
    EXPECT_EQ(take_complaint(), "fcport_build_instance_pm: the class name or namespace is null");
    EXPECT_EQ(fcport_build_instance_pm("ZANTO_FCPort", name_space, &gigabit_info, nullptr, nullptr), nullptr);
    EXPECT_EQ(take_complaint(), "fcport_build_instance_pm: the broker is null");
    EXPECT_EQ(fcport_fill_reference_pm("ZANTO_FCPort", name_space, &gigabit_info, nullptr), nullptr);
    EXPECT_EQ(take_complaint(), "fcport_fill_reference_pm: the broker is null");
    EXPECT_EQ(switch_fill_reference(nullptr, name_space, broker()), nullptr);
    EXPECT_EQ(take_complaint(), "switch_fill_reference: the class name is null");
    EXPECT_EQ(switch_fill_reference("ZANTO_S", name_space, nullptr), nullptr);
    EXPECT_EQ(take_complaint(), "switch_fill_reference: the broker is null");
    EXPECT_EQ(switch_fill_reference_str("ZANTO_S", name_space, nullptr, broker()), nullptr);
    EXPECT_EQ(take_complaint(), "switch_fill_reference_str: the key is null");
    EXPECT_EQ(switch_build_instance_str("ZANTO_S", nullptr, "key", 0, nullptr, broker()), nullptr);
    EXPECT_EQ(take_complaint(), "switch_build_instance_str: the namespace is null");
    EXPECT_EQ(switch_build_instance_str("ZANTO_S", name_space, nullptr, 0, nullptr, broker()), nullptr);
    EXPECT_EQ(take_complaint(), "switch_build_instance_str: the key is null");
    EXPECT_EQ(switch_build_instance_str("ZANTO_S", name_space, "key", 1, nullptr, broker()), nullptr);
    EXPECT_EQ(take_complaint(), "switch_build_instance_str: the constant is 1, expected 0");
    CMPIObjectPath* end = switch_fill_reference("ZANTO_S", name_space, broker());
    EXPECT_EQ(association_class_build_instance_path("ZANTO_A", name_space, end, end, nullptr, "B", broker()), nullptr);
    EXPECT_EQ(take_complaint(), "association_class_build_instance_path: the first role is null");
    EXPECT_EQ(association_class_build_instance_path("ZANTO_A", name_space, end, end, "A", nullptr, broker()), nullptr);
    EXPECT_EQ(take_complaint(), "association_class_build_instance_path: the second role is null");
}
