// The switch's own provider: its four classes, of the two-site switch and of generated ones.
#include "host/broker/loader.h"
#include "host/cim/path_text.h"
#include "platform/services.h"
#include "simulator/switchsim.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <fstream>
#include <future>
#include <set>
#include <sstream>
#include <thread>

namespace {

using namespace cmpihost;
using enum Request::Operation;

constexpr const char* all_classes[] = {"ZANTO_PhysicalComputerSystem", "ZANTO_LogicalComputerSystem",
                                       "ZANTO_EthernetPort", "ZANTO_FCPort"};

class SwitchProvider : public testing::Test {
  protected:
    void SetUp() override {
        switchsim::reset();
        ASSERT_EQ(switchsim::load(FCIP_SOURCE_DIR "/scenarios/two-site.toml"), "");
        library_.create("switchsimProvider");
    }
    void TearDown() override {
        EXPECT_EQ(switchsim::complaints(), std::vector<std::string>{});
        EXPECT_FALSE(switchsim::lock_held());
        switchsim::reset();
    }

    const Provider& provider() const { return library_.provider(); }

    Answer ask(Request::Operation operation, const Object& path,
               std::optional<std::vector<std::string>> properties = std::nullopt) const {
        Request request;
        request.operation = operation;
        request.path = path;
        request.properties = std::move(properties);
        return run(provider(), request);
    }

    Answer ask(Request::Operation operation, const std::string& class_name) const {
        return ask(operation, Object{class_name, "root/cimv2", {}, {}, {}});
    }

    Answer get(const std::string& path, std::optional<std::vector<std::string>> properties = std::nullopt) const {
        return ask(get_instance, parse_path("root/cimv2:" + path), std::move(properties));
    }

    /// The values of a key, joined.
    std::string names(const std::string& class_name, const char* key) const {
        std::string text;
        for (const Object& path : ask(enumerate_instance_names, class_name).objects)
            text += std::get<std::string>(path.key(key)->value.data) + " ";
        return text;
    }

    /// The one number of a port's OperationalStatus, then its EnabledState.
    std::pair<std::uint64_t, std::uint64_t> state_of(const std::string& port) const {
        const Answer answer = get(port);
        EXPECT_EQ(answer.objects.size(), 1U) << port;
        if (answer.objects.size() != 1)
            return {};
        const auto& statuses = std::get<Value::Array>(answer.objects[0].property("OperationalStatus")->value.data);
        EXPECT_EQ(statuses.size(), 1U);
        return {std::get<std::uint64_t>(statuses.at(0).data),
                std::get<std::uint64_t>(answer.objects[0].property("EnabledState")->value.data)};
    }

    /// What the platform's service makes, as a value.
    template <class Make>
    static Object by_platform(Make make) {
        const CallScope scope;
        mutex_lock();
        const Object object = describe(make());
        mutex_unlock();
        return object;
    }

  private:
    Library library_{FCIP_BINARY_DIR "/lib/libswitchsimProvider.so"};
};

Property text(const char* name, const char* value) {
    return {name, "string", {std::string(value)}};
}

Property number(const char* name, std::uint64_t value, const char* type = "uint16") {
    return {name, type, {value}};
}

Property texts(const char* name, const std::vector<std::string>& values) {
    Value::Array array;
    for (const std::string& value : values)
        array.push_back({value});
    return {name, "string[]", {array}};
}

Property numbers(const char* name, std::uint64_t value) {
    return {name, "uint16[]", {Value::Array{{value}}}};
}

// ---------------------------------------------------------------------------------------------- what there is

TEST_F(SwitchProvider, NamesWhatTheTwoSiteSwitchHas) {
    EXPECT_EQ(names("ZANTO_PhysicalComputerSystem", "Name"), "dc-east-sw1.example.net ");
    EXPECT_EQ(names("ZANTO_LogicalComputerSystem", "Name"),
              "200100005E112233 200A00005E112233 201400005E112233 201E00005E112233 206300005E112233 ");
    EXPECT_EQ(names("ZANTO_EthernetPort", "DeviceID"), "-2097086463 -2097086462 -2097020927 -2097020926 -2046820352 ");
    EXPECT_EQ(names("ZANTO_FCPort", "DeviceID"),
              "16777216 16842753 16842754 16908289 16973825 167772160 167772161 167772162 167772163 167772164 "
              "167772165 167772166 167772167 167772168 -2080374783 ");
}

TEST_F(SwitchProvider, NamesWhatAGeneratedSwitchHas) {
    switchsim::generate(1000);
    for (const auto& [class_name, count] :
         {std::pair("ZANTO_PhysicalComputerSystem", 1U), std::pair("ZANTO_LogicalComputerSystem", 4U),
          std::pair("ZANTO_EthernetPort", 4U), std::pair("ZANTO_FCPort", 1000U)}) {
        EXPECT_EQ(ask(enumerate_instance_names, class_name).objects.size(), count) << class_name;
        EXPECT_EQ(ask(enumerate_instances, class_name).objects.size(), count) << class_name;
    }
}

TEST_F(SwitchProvider, NamesInstancesAndGetsAreTheSameObjects) {
    const auto expect_same = [this](const char* class_name) {
        const Answer paths = ask(enumerate_instance_names, class_name);
        const Answer instances = ask(enumerate_instances, class_name);
        ASSERT_EQ(paths.objects.size(), instances.objects.size());
        ASSERT_FALSE(paths.objects.empty());
        EXPECT_TRUE(paths.done && instances.done);
        for (std::size_t at = 0; at < paths.objects.size(); ++at) {
            const Answer got = ask(get_instance, paths.objects[at]);
            EXPECT_TRUE(got.done);
            EXPECT_EQ(got.objects, std::vector{instances.objects[at]});
            EXPECT_EQ(instances.objects[at].keys, paths.objects[at].keys);
        }
    };
    for (const char* class_name : all_classes)
        expect_same(class_name);
    switchsim::generate(100);
    for (const char* class_name : all_classes)
        expect_same(class_name);
}

TEST_F(SwitchProvider, NamesAnEmptySwitchAndNothingInIt) {
    switchsim::generate(0);
    switchsim::the_switch().ports.clear();
    switchsim::the_switch().vsans.clear();
    EXPECT_EQ(names("ZANTO_PhysicalComputerSystem", "Name"), "generated ");
    for (const char* class_name : {"ZANTO_LogicalComputerSystem", "ZANTO_EthernetPort", "ZANTO_FCPort"}) {
        const Answer answer = ask(enumerate_instances, class_name);
        EXPECT_TRUE(answer.objects.empty());
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
    }
}

TEST_F(SwitchProvider, NamesAVsanOnceWhereTwoHaveTheName) {
    switchsim::the_switch().vsans.at(10).name = "twins";
    switchsim::the_switch().vsans.at(30).name = "twins";
    EXPECT_EQ(names("ZANTO_LogicalComputerSystem", "Name"),
              "200100005E112233 twins 201400005E112233 206300005E112233 ");
}

// ---------------------------------------------------------------------------------------------- keys

TEST_F(SwitchProvider, KeysOfPortsAreThoseThatThePlatformMakes) {
    for (const char* class_name : {"ZANTO_EthernetPort", "ZANTO_FCPort"})
        for (const Object& path : ask(enumerate_instance_names, class_name).objects) {
            const auto id = std::stoi(std::get<std::string>(path.key("DeviceID")->value.data));
            PmPortInfo info{};
            std::memcpy(info.bytes, &id, sizeof id);
            EXPECT_EQ(by_platform([&] { return fcport_fill_reference_pm(class_name, "root/cimv2", &info, broker()); }),
                      path);
        }
}

TEST_F(SwitchProvider, KeysOfSystemsAreThoseThatThePlatformMakes) {
    const auto physical = ask(enumerate_instance_names, "ZANTO_PhysicalComputerSystem").objects.at(0);
    EXPECT_EQ(by_platform([] { return switch_fill_reference("ZANTO_PhysicalComputerSystem", "root/cimv2", broker()); }),
              physical);
    const auto logical = ask(enumerate_instance_names, "ZANTO_LogicalComputerSystem").objects.at(1);
    EXPECT_EQ(by_platform([] {
                  return switch_fill_reference_str("ZANTO_LogicalComputerSystem", "root/cimv2", "200A00005E112233",
                                                   broker());
              }),
              logical);
}

TEST_F(SwitchProvider, AVsanIsKnownByItsDomainsNameToo) {
    switchsim::the_switch().vsans.at(10) = {"its name", "its domain"};
    for (const char* name : {"its name", "its domain"}) {
        const Answer got = get("ZANTO_LogicalComputerSystem.Name=\"" + std::string(name) + "\"");
        ASSERT_EQ(got.objects.size(), 1U);
        EXPECT_EQ(*got.objects[0].property("Name"), text("Name", name));
        EXPECT_EQ(*got.objects[0].property("OtherIdentifyingInfo"),
                  texts("OtherIdentifyingInfo", {"10", "its domain"}));
    }
}

TEST_F(SwitchProvider, KeysThatNameNothingAreNotFound) {
    for (const char* path : {
             "ZANTO_PhysicalComputerSystem.Name=\"another\"",
             "ZANTO_PhysicalComputerSystem.CreationClassName=\"ZANTO_PhysicalComputerSystem\"",
             "ZANTO_LogicalComputerSystem.Name=\"NULL\"",
             "ZANTO_LogicalComputerSystem.Name=\"200A00005E112233\",CreationClassName=\"CIM_ComputerSystem\"",
             "ZANTO_LogicalComputerSystem.Name=10",
             "ZANTO_EthernetPort.DeviceID=\"167772160\"",  // a tunnel's interface
             "ZANTO_FCPort.DeviceID=\"-2097086463\"",      // an Ethernet port
             "ZANTO_EthernetPort.DeviceID=\"2197880833\"", // unsigned
             "ZANTO_FCPort.DeviceID=\"0167772160\"",       // in other digits
             "ZANTO_FCPort.DeviceID=\"167772160 \"",       //
             "ZANTO_FCPort.DeviceID=\"4462739456\"",       // beyond 32 bits
             "ZANTO_FCPort.DeviceID=\"\"",                 //
             "ZANTO_FCPort.Name=\"fcip1\"",                // no key
             "ZANTO_FCPort.DeviceID=\"167772160\",SystemName=\"another\"",
             "ZANTO_FCPort.DeviceID=\"167772160\",Name=\"fcip1\"",
             "ZANTO_FCPort.DeviceID=\"167772160\",Name=\"\"",
             "ZANTO_FCPort.DeviceID=\"167772160\",Name=1",
         }) {
        const Answer got = get(path);
        EXPECT_EQ(got.rc, CMPI_RC_ERR_NOT_FOUND) << path;
        EXPECT_TRUE(got.objects.empty()) << path;
    }
}

TEST_F(SwitchProvider, ClassNamesMayBeSpeltInAnyCase) {
    const Answer got = get("zanto_fcport.deviceid=\"167772160\",creationclassname=\"ZANTO_FCPORT\"");
    ASSERT_EQ(got.objects.size(), 1U);
    EXPECT_EQ(got.objects[0].class_name, "ZANTO_FCPort");
    EXPECT_EQ(*got.objects[0].key("CreationClassName"), text("CreationClassName", "ZANTO_FCPort"));
}

// ---------------------------------------------------------------------------------------------- properties

TEST_F(SwitchProvider, PropertiesOfTheSwitch) {
    EXPECT_EQ(ask(enumerate_instances, "ZANTO_PhysicalComputerSystem").objects.at(0).properties,
              (std::vector{text("CreationClassName", "ZANTO_PhysicalComputerSystem"),
                           text("Name", "dc-east-sw1.example.net"), text("ElementName", "dc-east-sw1"),
                           text("NameFormat", "Other"), numbers("OperationalStatus", 2), number("EnabledState", 2),
                           numbers("Dedicated", 5), texts("OtherIdentifyingInfo", {"20:00:00:00:5e:11:22:33"}),
                           texts("IdentifyingDescriptions", {"WWN"})}));
}

TEST_F(SwitchProvider, PropertiesOfAVsan) {
    const auto vsans = ask(enumerate_instances, "ZANTO_LogicalComputerSystem").objects;
    EXPECT_EQ(vsans.at(1).properties,
              (std::vector{text("CreationClassName", "ZANTO_LogicalComputerSystem"), text("Name", "200A00005E112233"),
                           text("ElementName", "200A00005E112233"), text("NameFormat", "Other"),
                           numbers("OperationalStatus", 2), number("EnabledState", 2), numbers("Dedicated", 5),
                           texts("OtherIdentifyingInfo", {"10", "200A00005E112233"}),
                           texts("IdentifyingDescriptions", {"VSAN id", "administrative domain"})}));
    EXPECT_EQ(*vsans.at(4).property("OtherIdentifyingInfo"), texts("OtherIdentifyingInfo", {"99"})) << "no domain";
}

TEST_F(SwitchProvider, PropertiesOfAnEthernetPort) {
    const char* system_class = "ZANTO_PhysicalComputerSystem";
    EXPECT_EQ(ask(enumerate_instances, "ZANTO_EthernetPort").objects.at(0).properties,
              (std::vector{text("SystemCreationClassName", system_class), text("SystemName", "dc-east-sw1.example.net"),
                           text("CreationClassName", "ZANTO_EthernetPort"), text("DeviceID", "-2097086463"),
                           text("ElementName", "GigabitEthernet1/1"), text("Caption", "GigabitEthernet1/1"),
                           text("Name", "GigabitEthernet1/1"), text("PermanentAddress", "02:00:5e:11:01:01"),
                           number("PortNumber", 1), number("ActiveMaximumTransmissionUnit", 2300, "uint64"),
                           numbers("OperationalStatus", 2), number("EnabledState", 2), number("LinkTechnology", 2)}));
}

TEST_F(SwitchProvider, ATunnelsInterfaceIsAPortOfAnotherType) {
    const Answer tunnel = get("ZANTO_FCPort.DeviceID=\"167772160\"");
    ASSERT_EQ(tunnel.objects.size(), 1U);
    EXPECT_EQ(*tunnel.objects[0].property("PortType"), number("PortType", 1));
    EXPECT_EQ(*tunnel.objects[0].property("OtherPortType"), text("OtherPortType", "FCIP"));
    EXPECT_EQ(*tunnel.objects[0].property("LinkTechnology"), number("LinkTechnology", 4));
    const Answer port = get("ZANTO_FCPort.DeviceID=\"16842753\"");
    ASSERT_EQ(port.objects.size(), 1U);
    EXPECT_EQ(port.objects[0].property("PortType"), nullptr);
}

TEST_F(SwitchProvider, StatesAreThoseOfCardsAndTunnels) {
    using State = std::pair<std::uint64_t, std::uint64_t>;
    constexpr State good{2, 2};
    constexpr State stopped{10, 6};
    constexpr State lost{13, 6};
    constexpr State unknown{0, 0};
    EXPECT_EQ(state_of("ZANTO_FCPort.DeviceID=\"167772160\""), good);
    EXPECT_EQ(state_of("ZANTO_FCPort.DeviceID=\"167772164\""), stopped) << "tunnel 5 is down";
    EXPECT_EQ(state_of("ZANTO_FCPort.DeviceID=\"167772167\""), unknown) << "tunnel 8 has status 3";
    EXPECT_EQ(state_of("ZANTO_FCPort.DeviceID=\"16973825\""), lost) << "slot 3 has no card";
    EXPECT_EQ(state_of("ZANTO_EthernetPort.DeviceID=\"-2046820352\""), good) << "needs no card";
    mutex_lock();
    EXPECT_TRUE(switchsim::command({"set", "tunnel", "1", "status", "down"}).good);
    EXPECT_TRUE(switchsim::command({"remove", "card", "2"}).good);
    mutex_unlock();
    EXPECT_EQ(state_of("ZANTO_FCPort.DeviceID=\"167772160\""), stopped);
    EXPECT_EQ(state_of("ZANTO_EthernetPort.DeviceID=\"-2097086463\""), good);
    EXPECT_EQ(state_of("ZANTO_EthernetPort.DeviceID=\"-2097020927\""), lost);
}

TEST_F(SwitchProvider, APropertyListLeavesTheKeysAndWhatItNames) {
    const Answer got = get("ZANTO_FCPort.DeviceID=\"167772160\"", std::vector<std::string>{"enabledstate", "NoSuch"});
    ASSERT_EQ(got.objects.size(), 1U);
    std::string left;
    for (const Property& property : got.objects[0].properties)
        left += property.name + " ";
    EXPECT_EQ(left, "SystemCreationClassName SystemName CreationClassName DeviceID EnabledState ");
    const Answer keys = ask(enumerate_instances, Object{"ZANTO_LogicalComputerSystem", "root/cimv2", {}, {}, {}},
                            std::vector<std::string>{});
    ASSERT_EQ(keys.objects.size(), 5U);
    EXPECT_EQ(keys.objects[0].properties.size(), 2U);
}

/// "NAME TYPE" of the rows "| `NAME` | TYPE | ..." under the heading "### CLASS" of the classes' documentation.
std::set<std::string> documented(const std::string& class_name) {
    std::ifstream file(FCIP_SOURCE_DIR "/docs/classes.md");
    std::set<std::string> properties;
    bool here = false;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("## ") || line.starts_with("### "))
            here = line == "### " + class_name;
        std::string bar, name, next_bar, type;
        std::istringstream(line) >> bar >> name >> next_bar >> type;
        if (here && name.starts_with('`') && (type.starts_with("string") || type.starts_with("uint")))
            properties.insert(name.substr(1, name.size() - 2) + ' ' + type);
    }
    return properties;
}

TEST_F(SwitchProvider, PropertiesAreTheDocumentedOnes) {
    // None of the Fibre Channel ports has one.
    switchsim::the_switch().ports.at(16842753).network_address = "20:41:00:00:5e:11:22:33";
    for (const char* class_name : all_classes) {
        std::set<std::string> answered;
        for (const Object& object : ask(enumerate_instances, class_name).objects)
            for (const Property& property : object.properties)
                answered.insert(property.name + ' ' + property.type);
        EXPECT_EQ(answered, documented(class_name)) << class_name;
    }
}

// ---------------------------------------------------------------------------------------------- manners

TEST_F(SwitchProvider, OtherClassesAndChangesAreNotSupported) {
    for (const auto operation : {enumerate_instances, enumerate_instance_names, get_instance})
        for (const char* class_name : {"ZANTO_FCIPProtocolEndPoint", "CIM_ComputerSystem", ""})
            EXPECT_EQ(ask(operation, class_name).rc, CMPI_RC_ERR_NOT_SUPPORTED) << class_name;
    for (const auto operation : {create_instance, modify_instance, delete_instance, exec_query, associators, references,
                                 associator_names, reference_names})
        EXPECT_EQ(ask(operation, "ZANTO_FCPort").rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(SwitchProvider, ClockMovesBeforeEachAnswer) {
    ASSERT_EQ(switchsim::load_text(
                  "[switch]\nname = \"s\"\n[clock]\nnow = 5\n[[vsan]]\nid = 1\nname = \"a\"\ndomain = \"a\"\n"
                  "[[event]]\nat = 5\ndo = \"set vsan 1 name b\"\n",
                  "here"),
              "");
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    while (names("ZANTO_LogicalComputerSystem", "Name") != "b " && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_EQ(names("ZANTO_LogicalComputerSystem", "Name"), "b ");
}

TEST_F(SwitchProvider, NoRequestSeesHalfOfAChange) {
    const auto count = [this] { return ask(enumerate_instance_names, "ZANTO_LogicalComputerSystem").objects.size(); };
    ASSERT_EQ(count(), 5U);
    mutex_lock();
    auto& vsans = switchsim::the_switch().vsans;
    vsans[200] = {"one", "one"};
    const unsigned before = switchsim::calls("mutex_lock");
    auto answer = std::async(std::launch::async, count);
    const auto is_there = [&answer] {
        return answer.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready;
    };
    while (switchsim::calls("mutex_lock") == before && !is_there())
        continue; // until the request waits for the lock, or has not waited
    vsans[201] = {"other", "other"};
    mutex_unlock();
    EXPECT_EQ(answer.get(), 7U);
}

TEST_F(SwitchProvider, CallsOfItAreNoPlatformCalls) {
    switchsim::clear_counts();
    switchsim::inject_at(1, switchsim::Fault::fail);
    for (const char* class_name : all_classes)
        EXPECT_FALSE(ask(enumerate_instances, class_name).objects.empty());
    EXPECT_EQ(switchsim::total_calls(), 0U) << "faults are for the provider under test";
    switchsim::clear_faults();
}

TEST_F(SwitchProvider, ABrokerWithoutMemoryIsToldOrLosesAProperty) {
    for (const char* class_name : all_classes)
        for (const auto operation : {enumerate_instances, enumerate_instance_names}) {
            Request request;
            request.operation = operation;
            request.path = {class_name, "root/cimv2", {}, {}, {}};
            const std::size_t all = run(provider(), request).objects.size();
            unsigned refused = 0;
            for (unsigned nth = 1; nth <= 40; ++nth) {
                const Answer answer = run(provider(), request, nth);
                EXPECT_EQ(answer.null_results, 0U);
                if (answer.rc == CMPI_RC_OK)
                    EXPECT_EQ(answer.objects.size(), all) << class_name << ' ' << nth;
                else
                    ++refused;
            }
            EXPECT_GT(refused, 0U) << class_name;
        }
}

} // namespace
