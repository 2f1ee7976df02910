// Values of every type, set and got back.
#include "tests/host/host_test.h"

#include "host/broker/values.h"

#include <array>
#include <limits>

namespace cmpihost {
namespace {

struct TypeName {
    CMPIType type;
    const char* name;
};

constexpr std::array type_names{
    TypeName{CMPI_null, "null"},         TypeName{CMPI_boolean, "boolean"},   TypeName{CMPI_char16, "char16"},
    TypeName{CMPI_real32, "real32"},     TypeName{CMPI_real64, "real64"},     TypeName{CMPI_uint8, "uint8"},
    TypeName{CMPI_uint16, "uint16"},     TypeName{CMPI_uint32, "uint32"},     TypeName{CMPI_uint64, "uint64"},
    TypeName{CMPI_sint8, "sint8"},       TypeName{CMPI_sint16, "sint16"},     TypeName{CMPI_sint32, "sint32"},
    TypeName{CMPI_sint64, "sint64"},     TypeName{CMPI_instance, "instance"}, TypeName{CMPI_ref, "reference"},
    TypeName{CMPI_dateTime, "datetime"}, TypeName{CMPI_string, "string"},
};

TEST(TypeNames, GoBothWays) {
    for (const TypeName& row : type_names) {
        EXPECT_EQ(type_name(row.type), row.name);
        EXPECT_EQ(type_code(row.name), row.type);
        if (row.type == CMPI_null)
            continue;
        const auto array = static_cast<CMPIType>(row.type | CMPI_ARRAY);
        EXPECT_EQ(type_name(array), std::string(row.name) + "[]");
        EXPECT_EQ(type_code(std::string(row.name) + "[]"), array);
    }
}

TEST(TypeNames, CharsCountAsString) {
    EXPECT_EQ(type_name(CMPI_chars), "string");
    EXPECT_EQ(type_name(CMPI_ARRAY | CMPI_chars), "string[]");
}

TEST(TypeNames, TypesOutsideOfCimHaveNone) {
    for (const CMPIType type :
         {CMPI_args, CMPI_class, CMPI_filter, CMPI_enumeration, CMPI_ptr, CMPI_ARRAY, static_cast<CMPIType>(0x0001)})
        EXPECT_EQ(type_name(type), "") << type;
    EXPECT_EQ(type_code("uint128"), CMPI_null);
}

class Values : public InScope {
  protected:
    /// Sets a property and gets it back.
    CMPIData through(const CMPIValue& value, CMPIType type) {
        EXPECT_EQ(CMSetProperty(instance, "P", &value, type).rc, CMPI_RC_OK);
        CMPIStatus status{CMPI_RC_ERROR, nullptr};
        const CMPIData data = CMGetProperty(instance, "P", &status);
        EXPECT_EQ(status.rc, CMPI_RC_OK);
        EXPECT_EQ(data.type, type);
        EXPECT_EQ(data.state, CMPI_goodValue);
        return data;
    }

    CMPIrc set(const CMPIValue& value, CMPIType type) { return CMSetProperty(instance, "P", &value, type).rc; }

    const Value described() { return describe(instance).property("P")->value; }

    CMPIInstance* instance = new_instance();
};

template <class Number>
struct Extremes {
    static constexpr std::array numbers{std::numeric_limits<Number>::lowest(), Number{1},
                                        std::numeric_limits<Number>::max()};
};

#define EXPECT_NUMBERS(MEMBER, TYPE, NUMBER, STORED)                                                                   \
    for (const NUMBER number : Extremes<NUMBER>::numbers) {                                                            \
        CMPIValue value{};                                                                                             \
        value.MEMBER = number;                                                                                         \
        EXPECT_EQ(through(value, TYPE).value.MEMBER, number);                                                          \
        EXPECT_EQ(described(), Value{static_cast<STORED>(number)});                                                    \
    }                                                                                                                  \
    EXPECT_EQ(describe(instance).property("P")->type, #MEMBER)

TEST_F(Values, NumbersKeepTypeAndValue) {
    EXPECT_NUMBERS(uint8, CMPI_uint8, CMPIUint8, std::uint64_t);
    EXPECT_NUMBERS(uint16, CMPI_uint16, CMPIUint16, std::uint64_t);
    EXPECT_NUMBERS(uint32, CMPI_uint32, CMPIUint32, std::uint64_t);
    EXPECT_NUMBERS(uint64, CMPI_uint64, CMPIUint64, std::uint64_t);
    EXPECT_NUMBERS(sint8, CMPI_sint8, CMPISint8, std::int64_t);
    EXPECT_NUMBERS(sint16, CMPI_sint16, CMPISint16, std::int64_t);
    EXPECT_NUMBERS(sint32, CMPI_sint32, CMPISint32, std::int64_t);
    EXPECT_NUMBERS(sint64, CMPI_sint64, CMPISint64, std::int64_t);
    EXPECT_NUMBERS(char16, CMPI_char16, CMPIChar16, std::uint64_t);
    EXPECT_NUMBERS(real32, CMPI_real32, CMPIReal32, double);
    EXPECT_NUMBERS(real64, CMPI_real64, CMPIReal64, double);
}

TEST_F(Values, Booleans) {
    CMPIValue value{};
    EXPECT_EQ(through(value, CMPI_boolean).value.boolean, 0);
    EXPECT_EQ(described(), Value{false});
    value.boolean = 1;
    EXPECT_EQ(through(value, CMPI_boolean).value.boolean, 1);
    EXPECT_EQ(described(), Value{true});
}

TEST_F(Values, CharsAreStoredAsString) {
    EXPECT_EQ(CMSetProperty(instance, "P", "text", CMPI_chars).rc, CMPI_RC_OK);
    const CMPIData data = CMGetProperty(instance, "P", nullptr);
    EXPECT_EQ(data.type, CMPI_string);
    EXPECT_EQ(text(data.value.string), "text");
    EXPECT_EQ(described(), Value{std::string("text")});
}

TEST_F(Values, Strings) {
    CMPIValue value{};
    value.string = CMNewString(broker(), "text", nullptr);
    EXPECT_EQ(text(through(value, CMPI_string).value.string), "text");
}

TEST_F(Values, ReferencesAreCopies) {
    CMPIValue value{};
    value.ref = new_object_path("Other");
    CMAddKey(value.ref, "Name", "before", CMPI_chars);
    const CMPIObjectPath* got = through(value, CMPI_ref).value.ref;
    CMAddKey(value.ref, "Name", "after", CMPI_chars);
    EXPECT_EQ(text(CMGetKey(got, "Name", nullptr).value.string), "before");
    const Value held = described();
    EXPECT_EQ(std::get<Value::Reference>(held.data)->key("name")->value, Value{std::string("before")});
}

TEST_F(Values, EmbeddedInstances) {
    CMPIValue value{};
    value.inst = new_instance("Inner");
    CMSetProperty(value.inst, "Inside", "x", CMPI_chars);
    const CMPIInstance* got = through(value, CMPI_instance).value.inst;
    EXPECT_EQ(text(CMGetProperty(got, "Inside", nullptr).value.string), "x");
    EXPECT_EQ(describe(instance).property("P")->type, "instance");
}

TEST_F(Values, DateTimes) {
    CMPIValue value{};
    value.dateTime = new_date_time("20260102030405.000006-300");
    const CMPIDateTime* got = through(value, CMPI_dateTime).value.dateTime;
    EXPECT_EQ(text(got->ft->getStringFormat(got, nullptr)), "20260102030405.000006-300");
    EXPECT_EQ(described(), Value{std::string("20260102030405.000006-300")});
}

TEST_F(Values, Arrays) {
    CMPIValue value{};
    value.array = broker()->eft->newArray(broker(), 2, CMPI_uint16, nullptr);
    CMPIValue element{};
    element.uint16 = 7;
    EXPECT_EQ(value.array->ft->setElementAt(value.array, 1, &element, CMPI_uint16).rc, CMPI_RC_OK);
    const CMPIArray* got = through(value, CMPI_ARRAY | CMPI_uint16).value.array;
    EXPECT_EQ(got->ft->getSize(got, nullptr), 2u);
    EXPECT_EQ(got->ft->getSimpleType(got, nullptr), CMPI_uint16);
    EXPECT_EQ(got->ft->getElementAt(got, 0, nullptr).state, CMPI_nullValue);
    EXPECT_EQ(got->ft->getElementAt(got, 1, nullptr).value.uint16, 7);
    EXPECT_EQ(described(), (Value{Value::Array{Value{}, Value{std::uint64_t{7}}}}));
    EXPECT_EQ(describe(instance).property("P")->type, "uint16[]");
    EXPECT_EQ(set(value, CMPI_ARRAY | CMPI_uint32), CMPI_RC_ERR_TYPE_MISMATCH);
}

TEST_F(Values, NullPointersAndNullHandlesAreNull) {
    CMPIValue empty{};
    for (const CMPIType type :
         {CMPI_string, CMPI_ref, CMPI_instance, CMPI_dateTime, static_cast<CMPIType>(CMPI_ARRAY | CMPI_string)}) {
        EXPECT_EQ(set(empty, type), CMPI_RC_OK);
        EXPECT_EQ(CMGetProperty(instance, "P", nullptr).state, CMPI_nullValue);
        EXPECT_EQ(CMGetProperty(instance, "P", nullptr).type, type);
        EXPECT_EQ(described(), Value{});
    }
    for (const CMPIType type : {CMPI_chars, CMPI_uint8, CMPI_boolean, CMPI_null}) {
        EXPECT_EQ(CMSetProperty(instance, "P", nullptr, type).rc, CMPI_RC_OK);
        EXPECT_EQ(CMGetProperty(instance, "P", nullptr).state, CMPI_nullValue);
    }
}

TEST_F(Values, PointersThatAreNoLiveObjectAreRefused) {
    CMPIValue value{};
    value.ref = wild_pointer<CMPIObjectPath>();
    EXPECT_EQ(set(value, CMPI_ref), CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(set(value, CMPI_instance), CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(set(value, CMPI_string), CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(set(value, CMPI_dateTime), CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(set(value, CMPI_ARRAY | CMPI_string), CMPI_RC_ERR_INVALID_HANDLE);
    value.ref = new_object_path();
    EXPECT_EQ(value.ref->ft->release(value.ref).rc, CMPI_RC_OK);
    EXPECT_EQ(set(value, CMPI_ref), CMPI_RC_ERR_INVALID_HANDLE) << "a released path";
    value.inst = new_instance();
    EXPECT_EQ(set(value, CMPI_ref), CMPI_RC_ERR_INVALID_HANDLE) << "an instance given as a path";
    EXPECT_EQ(describe(instance).property("P"), nullptr);
}

TEST_F(Values, TypesThatNoPropertyHasAreRefused) {
    CMPIValue value{};
    for (const CMPIType type : {CMPI_args, CMPI_class, CMPI_filter, CMPI_enumeration, CMPI_ptr})
        EXPECT_EQ(set(value, type), CMPI_RC_ERR_INVALID_DATA_TYPE) << type;
}

TEST(ValueEquality, ComparesWhatReferencesLeadTo) {
    const auto reference = [](const char* name) {
        Object object;
        object.class_name = name;
        return Value{std::make_shared<const Object>(object)};
    };
    EXPECT_EQ(reference("A"), reference("A"));
    EXPECT_FALSE(reference("A") == reference("B"));
    EXPECT_FALSE(reference("A") == Value{Value::Reference()});
    EXPECT_FALSE(Value{std::uint64_t{1}} == Value{std::int64_t{1}});
}

} // namespace
} // namespace cmpihost
