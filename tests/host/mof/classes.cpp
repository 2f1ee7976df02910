// The MOF of the provider's classes against a table of what the provider sets: every class, superclass, key, property
// and type; and their documentation against the same table.
#include "host/mof/check.h"
#include "tests/host/mof/mof_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace cmpihost::mof {
namespace {

/// A class, its superclass ("" for none), its keys and "TYPE NAME" of every property that the provider sets.
struct Row {
    const char* name;
    const char* superclass;
    const char* keys;
    const char* set;
};

constexpr const char* endpoint_keys = "SystemCreationClassName SystemName CreationClassName Name";
constexpr const char* port_keys = "SystemCreationClassName SystemName CreationClassName DeviceID";
constexpr const char* setting_keys = "ManagedElement SettingData IsDefault IsCurrent";
constexpr const char* setting_set =
    "reference ManagedElement, reference SettingData, uint16 IsDefault, uint16 IsCurrent";
constexpr const char* dependency_keys = "Antecedent Dependent";
constexpr const char* dependency_set = "reference Antecedent, reference Dependent";
constexpr const char* statistics_keys = "ManagedElement Stats";
constexpr const char* statistics_set = "reference ManagedElement, reference Stats";

const Row rows[] = {
    {"ZANTO_FCIPProtocolEndPoint", "CIM_ProtocolEndpoint", endpoint_keys,
     "string SystemCreationClassName, string SystemName, string Name, string CreationClassName, string NameFormat, "
     "uint16 TunnelID, string RemoteIPAddress, string LocalIPAddress, string RemoteWWN, string LocalWWN, "
     "uint32 CommittedRate, boolean Compression, boolean SelectiveACK, boolean WAN_TOV, boolean PathMTU, "
     "uint32 MaxRetransmissions, uint32 KeepAliveTimeout, uint16 RetransmitTime, uint16 ProtocolIFType"},
    {"ZANTO_RemoteFCIPPort", "CIM_RemotePort", endpoint_keys,
     "string SystemCreationClassName, string SystemName, string Name, string CreationClassName, string NameFormat, "
     "string RemoteIPAddress, string LocalIPAddress, uint16 InfoFormat, string OtherInfoFormatDescription, "
     "string AccessInfo, string PortInfo, uint16 PortProtocol, string OtherProtocolDescription"},
    {"ZANTO_FCIPProfile", "CIM_SettingData", "InstanceID",
     "string InstanceID, string Name, string Caption, string ElementName, string FcipEntityAddress, "
     "uint32 FcipEntityTcpConnPort, boolean FcipEntitySeqNumWrap, boolean FcipEntitySACKOption, "
     "boolean FcipEntityPHBSupport"},
    {"ZANTO_FCIPSettings", "CIM_SettingData", "InstanceID",
     "string SystemCreationClassName, string SystemName, string ElementName, string InstanceID, "
     "string CreationClassName, uint16 ConnectionUsageFlags, uint32 SpecialFrameTimeout, uint32 KeepAliveTimeout, "
     "uint32 TunnelID, boolean PassiveMode, uint32 NumTcpConnections, boolean CheckTimestamp, "
     "uint32 TimeStampTolerance, uint32 TcpRemPort, boolean LocalPortEnable, boolean SpecialFrameEnable, "
     "boolean BPortKAEnable, uint32 CntrlQOSField, uint32 DataQOSField, uint32 EthIfIndex, boolean WriteAccelerator, "
     "boolean TapeAccelerator, boolean IPSec, boolean WriteAccOper, boolean TapeAccOper, boolean TapeAccReadOper, "
     "uint32 IPComp, uint32 FlowCtrlBufSize"},
    {"ZANTO_IPSettings", "CIM_SettingData", "InstanceID",
     "string Caption, string Description, string ElementName, string InstanceID, boolean EnableIPForwarding, "
     "uint32 FragmentationTimeout, uint32 DefaultTimeToLive"},
    {"ZANTO_TCPSettings", "CIM_SettingData", "InstanceID",
     "string SystemCreationClassName, string SystemName, string InstanceID, string Description, string Caption, "
     "string ElementName, uint16 RetransmissionTimeoutMax, uint16 RetransmissionTimeoutMin, "
     "uint16 RetransmissionTimeoutAlgorithm"},
    {"ZANTO_IPProtocolEndPoint", "CIM_IPProtocolEndpoint", endpoint_keys,
     "string SystemCreationClassName, string SystemName, string IPv4Address, string IPv6Address, string Name, "
     "string CreationClassName, string NameFormat, string SubnetMask, uint8 PrefixLength, uint32 MaxTransmissionUnit, "
     "uint16 AddressOrigin, uint16 ProtocolIFType, boolean EnableIPForwarding, boolean PathMTUDiscovery, "
     "boolean FragmentationEnabled"},
    {"ZANTO_RemoteIPServiceAccessPoint", "CIM_RemoteServiceAccessPoint", endpoint_keys,
     "string SystemCreationClassName, string SystemName, string Name, string CreationClassName, string NameFormat, "
     "string IPv4Address, string OtherInfoFormatDescription, string AccessInfo, uint16 InfoFormat, "
     "uint16 AddressOrigin, uint16 ProtocolIFType"},
    {"ZANTO_RemoteIPPort", "CIM_RemotePort", endpoint_keys, ""}, // paths only
    {"ZANTO_TCPProtocolEndPoint", "CIM_TCPProtocolEndpoint", endpoint_keys,
     "string SystemCreationClassName, string SystemName, string Name, string CreationClassName, string NameFormat, "
     "uint32 PortNumber, uint32 RemotePortNumber, uint32 MaximumSegmentSize, uint32 ReceiverWindowSize, "
     "uint32 ConnectionTimeOut, string ConnectionPurpose"},
    {"ZANTO_RemoteTCPPort", "CIM_RemotePort", endpoint_keys,
     "string SystemCreationClassName, string SystemName, string Name, string CreationClassName, string NameFormat, "
     "uint32 RemotePortNumber, uint32 PortNumber"},
    {"ZANTO_IPEndPointStatistics", "CIM_StatisticalData", "InstanceID",
     "string InstanceID, string SystemName, string CreationClassName, uint32 ReceivedPDUs, "
     "uint32 ReceivedPDUHeaderErrors, uint32 ReceivedPDUAddressErrors, uint32 ReceivedPDUForwards, "
     "uint32 ReceivedPDUUnknownProtocolErrors, uint32 ReceivedPDUDiscards, uint32 PDUDelivers, uint32 SentPDUs, "
     "uint32 SentPDUDiscards, uint32 SentPDUNoRouteErrors, uint32 ReassemblyRequireds, uint32 ReassembledPackets, "
     "uint32 ReassemblyFailed, uint32 Fragmentation, uint32 FragmentationFaileds, uint32 FragmentedPDUCreates, "
     "uint32 RouteEntriesDiscards"},
    {"ZANTO_TCPEndPointStatistics", "CIM_StatisticalData", "InstanceID",
     "string SystemCreationClassName, string SystemName, uint32 ReceivedSegmentsInError, uint32 SentResetSegments, "
     "string InstanceID, string CreationClassName, uint64 TooManyErrors, uint64 KeepAliveTimeOut, "
     "uint64 DatagramsDropped, uint64 SaParamMismatch"},
    {"ZANTO_TCPStatisticalData", "CIM_StatisticalData", "InstanceID",
     "string SystemCreationClassName, string SystemName, uint32 ReceivedSegmentsInError, uint32 SentResetSegments, "
     "string InstanceID, uint32 ActiveOpenConnections, uint32 PassiveOpenConnections, uint32 AttemptFails, "
     "uint32 EstablishedResets, uint32 EstablishedConnections, uint32 ReceivedSegments, uint32 RetransmittedSegments"},
    // Getting a LAN endpoint yields an IP endpoint's properties.
    {"ZANTO_LANEndPoint", "CIM_LANEndpoint", endpoint_keys,
     "string SystemCreationClassName, string SystemName, string Name, string CreationClassName, string NameFormat, "
     "string IPv4Address, string IPv6Address, string SubnetMask, uint8 PrefixLength, uint32 MaxTransmissionUnit, "
     "uint16 AddressOrigin, uint16 ProtocolIFType, boolean EnableIPForwarding, boolean PathMTUDiscovery, "
     "boolean FragmentationEnabled"},
    {"ZANTO_EthernetPortStatistics", "CIM_NetworkPortStatistics", "InstanceID",
     "string InstanceID, string Caption, string ElementName, string Description, uint64 BroadcastFramesReceived, "
     "uint64 BroadcastFramesTransmitted, uint64 MulticastFramesTransmitted, uint64 MulticastFramesReceived, "
     "uint64 UnicastFramesTransmitted, uint64 PacketsTransmitted, uint64 UnicastFramesReceived, "
     "uint64 PacketsReceived, uint64 BytesTransmitted, uint64 BytesReceived, uint32 SymbolErrors, "
     "uint64 AlignmentErrors, uint64 FCSErrors, uint32 SingleCollisionFrames, uint32 MultipleCollisionFrames, "
     "uint32 DeferredTransmissions, uint64 LateCollissions, uint64 ExcessiveCollissions, "
     "uint32 InternalMACTransmitErrors, uint32 InternalMACReceiveErrors, uint32 CarrierSenseErrors, "
     "uint32 FrameTooLongs"},
    // The platform makes these; the properties are those of the simulator.
    {"ZANTO_EthernetPort", "CIM_EthernetPort", port_keys,
     "string SystemCreationClassName, string SystemName, string CreationClassName, string DeviceID, "
     "string ElementName, string Caption, string Name, string PermanentAddress, uint16 PortNumber, "
     "uint64 ActiveMaximumTransmissionUnit"},
    {"ZANTO_FCPort", "CIM_FCPort", port_keys,
     "string SystemCreationClassName, string SystemName, string CreationClassName, string DeviceID, "
     "string ElementName, string Caption, string Name, string PermanentAddress, uint16 PortNumber, "
     "uint64 ActiveMaximumTransmissionUnit"},
    {"ZANTO_LogicalComputerSystem", "CIM_ComputerSystem", "CreationClassName Name",
     "string CreationClassName, string Name, string ElementName, string NameFormat"},
    {"ZANTO_PhysicalComputerSystem", "CIM_ComputerSystem", "CreationClassName Name", ""}, // paths only
    {"ZANTO_FCIPElementSettingData", "", setting_keys, setting_set},
    {"ZANTO_IPElementSettingData", "", "",
     "reference ManagedElement, reference SettingData, uint16 IsDefault, uint16 IsCurrent, reference Antecedent, "
     "reference Dependent"},
    {"ZANTO_TCPElementSettingData", "", setting_keys, setting_set},
    {"ZANTO_FCIPTCPEndpoint", "CIM_BindsTo", dependency_keys, dependency_set},
    {"ZANTO_TCPIPEndpoint", "CIM_BindsTo", dependency_keys, dependency_set},
    {"ZANTO_SANFCIPEndpoint", "CIM_Dependency", dependency_keys, dependency_set},
    {"ZANTO_SANIPEndpoint", "CIM_Dependency", dependency_keys, dependency_set},
    {"ZANTO_SANTCPEndpoint", "CIM_BindsTo", dependency_keys, dependency_set},
    {"ZANTO_FCPortProtocolEndPoint", "CIM_DeviceSAPImplementation", dependency_keys, dependency_set},
    {"ZANTO_SwitchHostedFCIPAccessPoint", "CIM_HostedAccessPoint", dependency_keys, dependency_set},
    {"ZANTO_SwitchHostedIPAccessPoint", "CIM_HostedDependency", dependency_keys, dependency_set},
    {"ZANTO_SwitchHostedTCPAccessPoint", "CIM_HostedDependency", dependency_keys, dependency_set},
    {"ZANTO_FCIPPEBasedOn", "", "",
     "reference GroupComponent, reference PartComponent, reference Antecedent, reference Dependent"},
    {"ZANTO_IPEthernetEndpoint", "CIM_Dependency", dependency_keys, dependency_set},
    {"ZANTO_EthernetPortProtocolEndpoint", "CIM_DeviceSAPImplementation", dependency_keys, dependency_set},
    {"ZANTO_IPEndPointStatisticalData", "", statistics_keys, statistics_set},
    {"ZANTO_TCPEndPointStatisticalData", "", statistics_keys, statistics_set},
    {"ZANTO_EthernetPortStatisticalData", "CIM_ElementStatisticalData", statistics_keys, statistics_set},
};

using Names = std::set<std::string>;

Names words(const std::string& text, char delimiter) {
    std::istringstream stream(text);
    Names found;
    for (std::string word; std::getline(stream >> std::ws, word, delimiter);)
        found.insert(word);
    return found;
}

class MofClasses : public testing::TestWithParam<Row> {
  protected:
    const Row& row = GetParam();
    const ClassDeclaration* declaration = provider_schema().find(row.name);

    void SetUp() override { ASSERT_NE(declaration, nullptr); }
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

TEST_P(MofClasses, HasTheSuperclass) {
    EXPECT_EQ(declaration->name, row.name);
    EXPECT_EQ(declaration->superclass, row.superclass);
    EXPECT_FALSE(declaration->abstract);
}

TEST_P(MofClasses, HasTheKeys) {
    Names keys;
    for (const PropertyDeclaration& property : declaration->properties)
        if (property.key)
            keys.insert(property.name);
    EXPECT_EQ(keys, words(row.keys, ' '));
}

TEST_P(MofClasses, DeclaresEveryPropertyThatIsSetWithItsType) {
    for (const std::string& set : words(row.set, ',')) {
        const std::string name = set.substr(set.find(' ') + 1);
        const PropertyDeclaration* property = declaration->property(name);
        ASSERT_NE(property, nullptr) << name;
        EXPECT_EQ(property->type + ' ' + property->name, set);
    }
}

TEST_P(MofClasses, DeclaresNothingElse) {
    const Names set = words(row.set, ',');
    for (const PropertyDeclaration& property : declaration->properties)
        if (property.origin == row.name) {
            EXPECT_TRUE(set.contains(property.type + ' ' + property.name)) << property.name;
        }
}

TEST_P(MofClasses, DescribesItselfAndWhatItDeclares) {
    const auto described = [](const std::vector<Qualifier>& qualifiers) {
        const Qualifier* description = find_qualifier(qualifiers, "Description");
        const auto* text = description ? std::get_if<std::string>(&description->value.data) : nullptr;
        return text && !text->empty() && !description->propagated;
    };
    EXPECT_TRUE(described(declaration->qualifiers));
    for (const PropertyDeclaration& property : declaration->properties)
        if (property.origin == row.name) {
            EXPECT_TRUE(described(property.qualifiers)) << property.name;
        }
}

INSTANTIATE_TEST_SUITE_P(All, MofClasses, testing::ValuesIn(rows),
                         [](const testing::TestParamInfo<Row>& row) { return std::string(row.param.name + 6); });

// ---------------------------------------------------------------------------------------------- all together

TEST(MofSchema, AcceptsTheInstancesThatTheProviderMakes) {
    unsigned instances = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        if (provider_schema().find(row.name)->association || *row.set == '\0')
            continue; // what stands in associations is tested below
        Object object{row.name, "root/cimv2", std::nullopt, {}, {}};
        for (const std::string& set : words(row.set, ','))
            object.properties.push_back({set.substr(set.find(' ') + 1), set.substr(0, set.find(' ')), {true}});
        const auto findings = check(provider_schema(), object, Kind::instance);
        EXPECT_EQ(known_deviations().unexpected(findings), std::vector<std::string>{});
        ++instances;
    }
    EXPECT_EQ(instances, 18u);
}

TEST(MofSchema, HasNoClassBesideTheTable) {
    Names declared;
    Names expected;
    for (const ClassDeclaration& declaration : provider_schema().classes())
        if (is_ours(declaration))
            declared.insert(declaration.name);
    for (const Row& row : rows)
        expected.insert(row.name);
    EXPECT_EQ(declared, expected);
}

TEST(MofSchema, NoClassOfOursDerivesFromAnotherOfOurs) {
    for (const ClassDeclaration& declaration : provider_schema().classes())
        if (is_ours(declaration)) {
            EXPECT_FALSE(declaration.superclass.starts_with("ZANTO_")) << declaration.name;
        }
}

TEST(MofSchema, EveryFileOfTheFolderIsIncluded) {
    Names files;
    for (const auto& entry : std::filesystem::directory_iterator(schema_folder))
        if (entry.path().extension() == ".mof" && entry.path().filename() != "fcip.mof" &&
            entry.path().filename() != "interop.mof") // a schema by itself
            files.insert(entry.path().filename().string());
    Names used;
    for (const QualifierDeclaration& declaration : provider_schema().qualifiers())
        used.insert(std::filesystem::path(declaration.place.file).filename().string());
    for (const ClassDeclaration& declaration : provider_schema().classes())
        used.insert(std::filesystem::path(declaration.place.file).filename().string());
    EXPECT_EQ(used, files);
}

TEST(MofSchema, TheStandardsClassesAreInTheirOwnFile) {
    for (const ClassDeclaration& declaration : provider_schema().classes()) {
        const bool in_excerpt = std::filesystem::path(declaration.place.file).filename() == "dmtf.mof";
        EXPECT_EQ(in_excerpt, declaration.name.starts_with("CIM_")) << declaration.name;
    }
}

TEST(MofSchema, QualifiersAndInteropClassesAreNotDeployed) {
    for (const QualifierDeclaration& declaration : provider_schema().qualifiers())
        EXPECT_EQ(std::filesystem::path(declaration.place.file).filename(), "qualifiers.mof") << declaration.name;
    std::ifstream file(schema_folder + "fcip.mof");
    unsigned included = 0;
    for (std::string line; std::getline(file, line);) {
        included += line.starts_with("#pragma include") ? 1U : 0U;
        for (const char* other : {"dmtf.mof", "qualifiers.mof", "interop.mof"})
            EXPECT_EQ(line.find(other), std::string::npos) << line;
    }
    EXPECT_GT(included, 10U);
}

// ---------------------------------------------------------------------------------------------- units

/// Class and name of our properties that a predicate holds for.
template <class Predicate>
Names properties_where(Predicate holds) {
    Names found;
    for (const ClassDeclaration& declaration : provider_schema().classes())
        for (const PropertyDeclaration& property : declaration.properties)
            if (property.origin.starts_with("ZANTO_") && holds(property))
                found.insert(declaration.name + '.' + property.name);
    return found;
}

const Value* qualifier_of(const PropertyDeclaration& property, std::string_view name) {
    const Qualifier* qualifier = find_qualifier(property.qualifiers, name);
    return qualifier == nullptr ? nullptr : &qualifier->value;
}

bool has_unit(const PropertyDeclaration& property, const std::string& unit) {
    const Value* value = qualifier_of(property, "PUnit");
    return value != nullptr && *value == Value{unit};
}

TEST(MofUnits, HighHalvesOfCountersCountIn2ToThe32) {
    const Names expected = {"ZANTO_EthernetPortStatistics.SymbolErrors",
                            "ZANTO_EthernetPortStatistics.SingleCollisionFrames",
                            "ZANTO_EthernetPortStatistics.MultipleCollisionFrames",
                            "ZANTO_EthernetPortStatistics.DeferredTransmissions",
                            "ZANTO_EthernetPortStatistics.InternalMACTransmitErrors",
                            "ZANTO_EthernetPortStatistics.InternalMACReceiveErrors",
                            "ZANTO_EthernetPortStatistics.CarrierSenseErrors",
                            "ZANTO_EthernetPortStatistics.FrameTooLongs"};
    EXPECT_EQ(properties_where([](const auto& property) { return has_unit(property, "count * 2^32"); }), expected);
}

TEST(MofUnits, CountsThatCanFallAreNoCounters) {
    const Names expected = {"ZANTO_IPEndPointStatistics.ReassemblyRequireds", "ZANTO_FCIPSettings.NumTcpConnections",
                            "ZANTO_FCIPProtocolEndPoint.MaxRetransmissions",
                            "ZANTO_TCPStatisticalData.EstablishedConnections"};
    EXPECT_EQ(properties_where([](const auto& property) {
                  return has_unit(property, "count") && qualifier_of(property, "Counter") == nullptr;
              }),
              expected);
}

TEST(MofUnits, EveryCounterHasAUnitOfCounts) {
    const auto is_counter = [](const auto& property) { return qualifier_of(property, "Counter") != nullptr; };
    const auto counts = [](const auto& property) {
        return has_unit(property, "count") || has_unit(property, "count * 2^32");
    };
    EXPECT_EQ(properties_where([&](const auto& property) { return is_counter(property) && !counts(property); }),
              Names{});
    EXPECT_EQ(properties_where(is_counter).size(), 44u);
}

// ---------------------------------------------------------------------------------------------- documentation

/// "TYPE NAME" of the rows "| `NAME` | TYPE | ..." under each heading "### CLASS" of the classes' documentation, up to
/// what other providers set.
std::map<std::string, Names> documented() {
    std::ifstream file(FCIP_SOURCE_DIR "/docs/classes.md");
    std::map<std::string, Names> classes;
    const Names types = {"string", "boolean", "uint8", "uint16", "uint32", "uint64"};
    std::string class_name;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("### "))
            classes[class_name = line.substr(4)];
        if (line.starts_with("#### "))
            class_name.clear();
        std::string bar, name, next_bar, type;
        std::istringstream(line) >> bar >> name >> next_bar >> type;
        if (!class_name.empty() && bar == "|" && next_bar == "|" && name.starts_with('`') && types.contains(type))
            classes[class_name].insert(type + ' ' + name.substr(1, name.size() - 2));
    }
    return classes;
}

TEST(MofDocumentation, HasEveryPropertyOfEveryClass) {
    const auto classes = documented();
    EXPECT_EQ(classes.size(), std::size(rows) + 1); // and CIM_HostedAccessPoint
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(classes.contains(row.name));
        Names expected = words(row.set, ',');
        std::erase_if(expected, [](const std::string& set) { return set.starts_with("reference"); });
        EXPECT_EQ(classes.at(row.name), expected);
    }
}

} // namespace
} // namespace cmpihost::mof
