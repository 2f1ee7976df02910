// Every slot of every function table is filled, and those without a meaning here say so.
#include "tests/host/host_test.h"

#include "host/broker/enumeration.h"

#include <array>
#include <cstring>

namespace cmpihost {
namespace {

/// The function pointers from `first` to the end of a table. They lie one behind the other.
template <class Table>
std::vector<void*> slots(const Table* table, std::size_t first) {
    std::vector<void*> pointers((sizeof(Table) - first) / sizeof(void*));
    std::memcpy(pointers.data(), reinterpret_cast<const char*>(table) + first, pointers.size() * sizeof(void*));
    return pointers;
}

template <class Table>
void expect_full(const char* name, const Table* table, std::size_t first, std::size_t count) {
    SCOPED_TRACE(name);
    const std::vector<void*> pointers = slots(table, first);
    EXPECT_EQ(pointers.size(), count);
    for (std::size_t i = 0; i < pointers.size(); ++i)
        EXPECT_NE(pointers[i], nullptr) << "slot " << i;
}

class BrokerTables : public InScope {};

TEST_F(BrokerTables, TheBrokerNamesItself) {
    EXPECT_NE(broker()->hdl, nullptr);
    EXPECT_EQ(broker()->bft->brokerVersion, 100);
    EXPECT_STREQ(broker()->bft->brokerName, "cmpihost");
    EXPECT_EQ(broker()->bft->brokerCapabilities, 0u);
    EXPECT_EQ(broker()->eft->ftVersion, 100);
}

TEST_F(BrokerTables, EverySlotIsFilled) {
    expect_full("broker", broker()->bft, offsetof(CMPIBrokerFT, prepareAttachThread), 21);
    expect_full("encapsulated", broker()->eft, offsetof(CMPIBrokerEncFT, newInstance), 16);
    expect_full("path", new_object_path()->ft, offsetof(CMPIObjectPathFT, release), 19);
    expect_full("instance", new_instance()->ft, offsetof(CMPIInstanceFT, release), 9);
    expect_full("string", CMNewString(broker(), "", nullptr)->ft, offsetof(CMPIStringFT, release), 3);
    expect_full("array", broker()->eft->newArray(broker(), 1, CMPI_string, nullptr)->ft, offsetof(CMPIArrayFT, release),
                6);
    expect_full("args", broker()->eft->newArgs(broker(), nullptr)->ft, offsetof(CMPIArgsFT, release), 6);
    expect_full("date-time", broker()->eft->newDateTime(broker(), nullptr)->ft, offsetof(CMPIDateTimeFT, release), 5);
    expect_full("enumeration", new_enumeration({}, true)->ft, offsetof(CMPIEnumerationFT, release), 5);
    expect_full("context", scope.context()->ft, offsetof(CMPIContextFT, release), 6);
    expect_full("result", scope.result()->ft, offsetof(CMPIResultFT, release), 6);
}

TEST_F(BrokerTables, EveryTableIsOfVersion100) {
    EXPECT_EQ(new_object_path()->ft->ftVersion, 100);
    EXPECT_EQ(new_instance()->ft->ftVersion, 100);
    EXPECT_EQ(CMNewString(broker(), "", nullptr)->ft->ftVersion, 100);
    EXPECT_EQ(broker()->eft->newArray(broker(), 1, CMPI_string, nullptr)->ft->ftVersion, 100);
    EXPECT_EQ(broker()->eft->newArgs(broker(), nullptr)->ft->ftVersion, 100);
    EXPECT_EQ(broker()->eft->newDateTime(broker(), nullptr)->ft->ftVersion, 100);
    EXPECT_EQ(new_enumeration({}, true)->ft->ftVersion, 100);
    EXPECT_EQ(scope.context()->ft->ftVersion, 100);
    EXPECT_EQ(scope.result()->ft->ftVersion, 100);
}

/// Calls a slot that takes a status last and expects a refusal and null.
template <class Slot, class... Arguments>
void expect_refused(Slot slot, Arguments... arguments) {
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(slot(arguments..., &status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(slot(arguments..., nullptr), nullptr) << "a null status";
}

TEST_F(BrokerTables, RequestsBackToTheServerAreNotSupported) {
    const CMPIBroker* b = broker();
    const CMPIBrokerFT& ft = *b->bft;
    const CMPIContext* context = scope.context();
    const CMPIObjectPath* path = new_object_path();
    const CMPIInstance* instance = new_instance();
    const char** all = nullptr;
    const char* none = nullptr;
    expect_refused(ft.enumerateInstanceNames, b, context, path);
    expect_refused(ft.getInstance, b, context, path, all);
    expect_refused(ft.createInstance, b, context, path, instance);
    expect_refused(ft.execQuery, b, context, path, "SELECT * FROM C", "WQL");
    expect_refused(ft.enumerateInstances, b, context, path, all);
    expect_refused(ft.associators, b, context, path, none, none, none, none, all);
    expect_refused(ft.associatorNames, b, context, path, none, none, none, none);
    expect_refused(ft.references, b, context, path, none, none, all);
    expect_refused(ft.referenceNames, b, context, path, none, none);
    expect_refused(ft.enumerateInstancesFiltered, b, context, path, all, none, none);
    expect_refused(ft.associatorsFiltered, b, context, path, none, none, none, none, all, none, none);
    expect_refused(ft.referencesFiltered, b, context, path, none, none, all, none, none);
    EXPECT_EQ(ft.deliverIndication(b, context, "root/test", instance).rc, CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(ft.modifyInstance(b, context, path, instance, all).rc, CMPI_RC_ERR_NOT_SUPPORTED);
    EXPECT_EQ(ft.deleteInstance(b, context, path).rc, CMPI_RC_ERR_NOT_SUPPORTED);
    CMPIValue value{};
    EXPECT_EQ(ft.setProperty(b, context, path, "P", &value, CMPI_uint8).rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(BrokerTables, RequestsForDataAreNotSupported) {
    const CMPIBrokerFT& ft = *broker()->bft;
    const CMPIObjectPath* path = new_object_path();
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(ft.getProperty(broker(), scope.context(), path, "P", &status).state, CMPI_nullValue);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_SUPPORTED);
    status.rc = CMPI_RC_OK;
    EXPECT_EQ(ft.invokeMethod(broker(), scope.context(), path, "M", nullptr, nullptr, &status).state, CMPI_nullValue);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(BrokerTables, QualifiersAreNotSupported) {
    const CMPIObjectPath* path = new_object_path();
    CMPIStatus status{CMPI_RC_OK, nullptr};
    const auto refused = [&status](CMPIData data) {
        const bool expected = data.state == CMPI_nullValue && status.rc == CMPI_RC_ERR_NOT_SUPPORTED;
        status.rc = CMPI_RC_OK;
        return expected;
    };
    EXPECT_TRUE(refused(path->ft->getClassQualifier(path, "Q", &status)));
    EXPECT_TRUE(refused(path->ft->getPropertyQualifier(path, "P", "Q", &status)));
    EXPECT_TRUE(refused(path->ft->getMethodQualifier(path, "M", "Q", &status)));
    EXPECT_TRUE(refused(path->ft->getParameterQualifier(path, "M", "P", "Q", &status)));
}

TEST_F(BrokerTables, SelectExpressionsAreNotSupported) {
    CMPIArray** projection = nullptr;
    expect_refused(broker()->eft->newSelectExp, broker(), "SELECT * FROM C", "WQL", projection);
}

TEST_F(BrokerTables, ResultsAreNotCloned) {
    const CMPIResult* result = scope.result();
    expect_refused(result->ft->clone, result);
}

// ----------------------------------------------------------------------------------------- questions about objects

struct NamedObject {
    const void* object;
    const char* type;
};

TEST_F(BrokerTables, ObjectsKnowTheirType) {
    const std::array objects{
        NamedObject{new_object_path(), "CMPIObjectPath"},
        NamedObject{new_instance(), "CMPIInstance"},
        NamedObject{CMNewString(broker(), "s", nullptr), "CMPIString"},
        NamedObject{broker()->eft->newArray(broker(), 1, CMPI_string, nullptr), "CMPIArray"},
        NamedObject{broker()->eft->newArgs(broker(), nullptr), "CMPIArgs"},
        NamedObject{broker()->eft->newDateTime(broker(), nullptr), "CMPIDateTime"},
        NamedObject{new_enumeration({}, true), "CMPIEnumeration"},
        NamedObject{scope.context()->ft->clone(scope.context(), nullptr), "CMPIContext"},
    };
    for (const NamedObject& object : objects) {
        SCOPED_TRACE(object.type);
        EXPECT_EQ(text(broker()->eft->getType(broker(), object.object, nullptr)), object.type);
        EXPECT_EQ(broker()->eft->isOfType(broker(), object.object, object.type, nullptr), 1);
        EXPECT_EQ(broker()->eft->isOfType(broker(), object.object, "CMPISelectExp", nullptr), 0);
    }
}

TEST_F(BrokerTables, OtherPointersHaveNoType) {
    for (const void* pointer : {static_cast<const void*>(nullptr), static_cast<const void*>(wild_pointer<void>())}) {
        CMPIStatus status{CMPI_RC_OK, nullptr};
        EXPECT_EQ(broker()->eft->getType(broker(), pointer, &status), nullptr);
        EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_HANDLE);
        status.rc = CMPI_RC_OK;
        EXPECT_EQ(broker()->eft->isOfType(broker(), pointer, "CMPIString", &status), 0);
        EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_HANDLE);
        status.rc = CMPI_RC_OK;
        EXPECT_EQ(broker()->eft->toString(broker(), pointer, &status), nullptr);
        EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_HANDLE);
    }
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(broker()->eft->isOfType(broker(), new_object_path(), nullptr, &status), 0);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

TEST_F(BrokerTables, ObjectsReadAsText) {
    const auto as_text = [](const void* object) { return text(broker()->eft->toString(broker(), object, nullptr)); };
    EXPECT_EQ(as_text(CMNewString(broker(), "s", nullptr)), "s");
    EXPECT_EQ(as_text(new_object_path()), "root/test:C");
    EXPECT_EQ(as_text(new_instance()), "root/test:C");
    EXPECT_EQ(as_text(new_date_time("00000001000000.000000:000")), "00000001000000.000000:000");
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(broker()->eft->toString(broker(), broker()->eft->newArgs(broker(), nullptr), &status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(BrokerTables, AClassPathIsOfItsOwnClassAndUnknownOtherwise) {
    const auto is_a = [](const CMPIObjectPath* path, const char* name, CMPIrc expected) {
        CMPIStatus status{CMPI_RC_ERROR, nullptr};
        const CMPIBoolean answer = broker()->eft->classPathIsA(broker(), path, name, &status);
        EXPECT_EQ(status.rc, expected);
        return answer != 0;
    };
    const CMPIObjectPath* path = new_object_path("CIM_Port");
    EXPECT_TRUE(is_a(path, "cim_port", CMPI_RC_OK));
    EXPECT_FALSE(is_a(path, "CIM_LogicalPort", CMPI_RC_ERR_NOT_SUPPORTED));
    EXPECT_FALSE(is_a(nullptr, "CIM_Port", CMPI_RC_ERR_INVALID_PARAMETER));
    EXPECT_FALSE(is_a(path, nullptr, CMPI_RC_ERR_INVALID_PARAMETER));
    EXPECT_FALSE(is_a(wild_pointer<CMPIObjectPath>(), "CIM_Port", CMPI_RC_ERR_INVALID_HANDLE));
}

// ------------------------------------------------------------------------------------------------------- messages

TEST_F(BrokerTables, MessagesAreTheDefaultTextWithItsArguments) {
    const auto& eft = *broker()->eft;
    EXPECT_EQ(text(eft.getMessage(broker(), "id", "plain $0 $", nullptr, 0)), "plain $0 $");
    EXPECT_EQ(text(eft.getMessage(broker(), "id", "$0 of $1 in $2$3", nullptr, 4, CMPI_uint32, 7u, CMPI_sint64,
                                  static_cast<CMPISint64>(-8), CMPI_chars, "text", CMPI_boolean, 1)),
              "7 of -8 in textTRUE");
    EXPECT_EQ(text(eft.getMessage(broker(), "id", "$0,$1,$2,$3", nullptr, 4, CMPI_sint32, -1, CMPI_uint64,
                                  static_cast<CMPIUint64>(9), CMPI_real64, 0.5, CMPI_string,
                                  CMNewString(broker(), "string", nullptr))),
              "-1,9,0.500000,string");
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(eft.getMessage(broker(), "id", "$0", &status, 1, CMPI_ref, nullptr), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(eft.getMessage(broker(), "id", nullptr, nullptr, 0), nullptr);
}

TEST_F(BrokerTables, TheLogGoesToStandardError) {
    testing::internal::CaptureStderr();
    const CMPIString* string = CMNewString(broker(), "from a string", nullptr);
    EXPECT_EQ(broker()->eft->logMessage(broker(), CMPI_SEV_ERROR, "id", "text", nullptr).rc, CMPI_RC_OK);
    EXPECT_EQ(broker()->eft->logMessage(broker(), CMPI_SEV_INFO, nullptr, nullptr, string).rc, CMPI_RC_OK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "log (severity 3): id: text\nlog (severity 1): : from a string\n");
}

TEST_F(BrokerTables, TheTraceGoesToStandardOutput) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(broker()->eft->trace(broker(), CMPI_LEV_WARNING, "part", "text", nullptr).rc, CMPI_RC_OK);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "trace (level 2): part: text\n");
}

TEST(RcNames, AreThoseOfTheStandard) {
    const std::array<std::pair<int, const char*>, 24> names{{
        {0, "OK"},
        {1, "FAILED"},
        {2, "ACCESS_DENIED"},
        {3, "INVALID_NAMESPACE"},
        {4, "INVALID_PARAMETER"},
        {5, "INVALID_CLASS"},
        {6, "NOT_FOUND"},
        {7, "NOT_SUPPORTED"},
        {8, "CLASS_HAS_CHILDREN"},
        {9, "CLASS_HAS_INSTANCES"},
        {10, "INVALID_SUPERCLASS"},
        {11, "ALREADY_EXISTS"},
        {12, "NO_SUCH_PROPERTY"},
        {13, "TYPE_MISMATCH"},
        {14, "QUERY_LANGUAGE_NOT_SUPPORTED"},
        {15, "INVALID_QUERY"},
        {16, "METHOD_NOT_AVAILABLE"},
        {17, "METHOD_NOT_FOUND"},
        {50, "DO_NOT_UNLOAD"},
        {51, "NEVER_UNLOAD"},
        {60, "INVALID_HANDLE"},
        {61, "INVALID_DATA_TYPE"},
        {100, "ERROR_SYSTEM"},
        {200, "ERROR"},
    }};
    for (const auto& [rc, name] : names)
        EXPECT_EQ(rc_name(rc), name);
    for (const int unknown : {-1, 18, 49, 201})
        EXPECT_EQ(rc_name(unknown), "UNKNOWN");
}

} // namespace
} // namespace cmpihost
