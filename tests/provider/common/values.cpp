// What the broker's functions are handed, byte by byte, and what is made of what they answer.
#include "provider/common/values.h"
#include "provider/common/text.h"
#include "tests/support/provider_test.h"

#include <cstring>

using namespace test;

namespace {

using value_bytes = std::array<std::uint8_t, sizeof(CMPIValue)>;

/// A property or key as it was handed over.
struct Given {
    const void* object = nullptr;
    std::string name;
    CMPIType type = CMPI_null;
    const void* value = nullptr;
    value_bytes bytes{}; ///< of the value area; zero for texts, which have none
};

Given given;

template <typename Object>
CMPIStatus listen(const Object* object, const char* name, const CMPIValue* value, CMPIType type) {
    given = {object, name, type, value, {}};
    if (type != CMPI_chars)
        std::memcpy(given.bytes.data(), value, sizeof(CMPIValue));
    return {CMPI_RC_OK, nullptr};
}

/// Leaves something behind on the stack for whoever does not clear it.
__attribute__((noinline)) void soil_the_stack() {
    std::array<volatile std::uint8_t, 4096> dirt;
    for (auto& byte : dirt)
        byte = 0xa5;
}

/// A value area that is zero but for one number.
template <typename Number>
value_bytes area_of(Number number) {
    value_bytes bytes{};
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

class Values : public ::testing::Test {
  protected:
    Values() {
        instance_functions.setProperty = listen<CMPIInstance>;
        path_functions.addKey = listen<CMPIObjectPath>;
    }

    /// The last call handed over a cleared, aligned area.
    void expect_given(const void* object, CMPIType type, const value_bytes& bytes) {
        EXPECT_EQ(given.object, object);
        EXPECT_EQ(given.name, "Name");
        EXPECT_EQ(given.type, type);
        EXPECT_EQ(given.bytes, bytes);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(given.value) % alignof(CMPIValue), 0u);
    }

    CMPIInstanceFT instance_functions{};
    CMPIObjectPathFT path_functions{};
    CMPIInstance instance{nullptr, &instance_functions};
    CMPIObjectPath path{nullptr, &path_functions};
    CMPIObjectPath other{nullptr, nullptr};
};

template <typename Setter, typename Object, typename Value>
void set_on_a_soiled_stack(Setter setter, Object* object, Value value) {
    soil_the_stack();
    setter(object, "Name", value);
}

TEST_F(Values, PropertiesAreClearedAreasOfTheirType) {
    set_on_a_soiled_stack(fcip::set_boolean, &instance, CMPIBoolean{0x81});
    expect_given(&instance, CMPI_boolean, area_of(CMPIBoolean{0x81})); // not normalised
    set_on_a_soiled_stack(fcip::set_uint8, &instance, std::uint8_t{0xf1});
    expect_given(&instance, CMPI_uint8, area_of(std::uint8_t{0xf1}));
    set_on_a_soiled_stack(fcip::set_uint16, &instance, std::uint16_t{0xf102});
    expect_given(&instance, CMPI_uint16, area_of(std::uint16_t{0xf102}));
    set_on_a_soiled_stack(fcip::set_uint32, &instance, std::uint32_t{0xf1020304});
    expect_given(&instance, CMPI_uint32, area_of(std::uint32_t{0xf1020304}));
    set_on_a_soiled_stack(fcip::set_uint64, &instance, std::uint64_t{0xf102030405060708});
    expect_given(&instance, CMPI_uint64, area_of(std::uint64_t{0xf102030405060708}));
    set_on_a_soiled_stack(fcip::set_reference, &instance, &other);
    expect_given(&instance, CMPI_ref, area_of(reinterpret_cast<std::uintptr_t>(&other)));
}

TEST_F(Values, KeysAreClearedAreasOfTheirType) {
    set_on_a_soiled_stack(fcip::add_uint16_key, &path, std::uint16_t{0xf102});
    expect_given(&path, CMPI_uint16, area_of(std::uint16_t{0xf102}));
    set_on_a_soiled_stack(fcip::add_reference_key, &path, &other);
    expect_given(&path, CMPI_ref, area_of(reinterpret_cast<std::uintptr_t>(&other)));
}

TEST_F(Values, TextsStandInThePlaceOfTheArea) {
    const char* text = "text";
    fcip::set_string(&instance, "Name", text);
    EXPECT_EQ(given.type, CMPI_chars);
    EXPECT_EQ(given.value, text);
    fcip::add_string_key(&path, "Name", text);
    EXPECT_EQ(given.object, &path);
    EXPECT_EQ(given.type, CMPI_chars);
    EXPECT_EQ(given.value, text);
}

// ---------------------------------------------------------------------------------------------- what paths carry

class Paths : public ProviderTest {};

const char* no_chars(const CMPIString* /*string*/, CMPIStatus* /*status*/) {
    return nullptr;
}

CMPIString* no_string(const CMPIObjectPath* /*path*/, CMPIStatus* /*status*/) {
    return nullptr;
}

TEST_F(Paths, CarryClassNamespaceAndKeys) {
    CMPIObjectPath* path = fcip::new_path("root/cimv2", "ZANTO_X");
    fcip::add_string_key(path, "Name", "value");
    fcip::add_uint16_key(path, "Number", 7);
    EXPECT_STREQ(fcip::path_class_name(path), "ZANTO_X");
    EXPECT_STREQ(fcip::path_name_space(path), "root/cimv2");
    ASSERT_EQ(fcip::key_count(path), 2u);
    const fcip::path_key first = fcip::key_at(path, 0);
    EXPECT_STREQ(first.name.data(), "Name");
    ASSERT_EQ(first.data.type, CMPI_string);
    EXPECT_STREQ(fcip::chars_of(first.data.value.string), "value");
    const fcip::path_key second = fcip::key_at(path, 1);
    EXPECT_STREQ(second.name.data(), "Number");
    ASSERT_EQ(second.data.type, CMPI_uint16);
    EXPECT_EQ(second.data.value.uint16, 7);
}

TEST_F(Paths, CutTheNamesOfTheirKeys) {
    CMPIObjectPath* path = fcip::new_path("root/cimv2", "ZANTO_X");
    fcip::add_string_key(path, std::string(300, 'n').c_str(), "value");
    EXPECT_EQ(std::string(fcip::key_at(path, 0).name.data()), std::string(253, 'n'));
}

TEST_F(Paths, GiveEmptyTextsForStringsThatAreMissing) {
    CMPIObjectPathFT functions{};
    functions.getClassName = no_string;
    functions.getNameSpace = no_string;
    const CMPIObjectPath path{nullptr, &functions};
    EXPECT_STREQ(fcip::path_class_name(&path), "");
    EXPECT_STREQ(fcip::path_name_space(&path), "");

    CMPIStringFT unreadable{};
    unreadable.getCharPtr = no_chars;
    const CMPIString string{nullptr, &unreadable};
    EXPECT_STREQ(fcip::chars_of(&string), "");
}

TEST_F(Paths, NameTheHostThatWasSet) {
    CMPIObjectPath* path = fcip::new_path("root/cimv2", "ZANTO_X");
    EXPECT_EQ(cmpihost::describe(path).host, std::nullopt);
    fcip::set_host(path, "switch");
    EXPECT_EQ(cmpihost::describe(path).host, "switch");
}

TEST_F(Paths, AreMadeByTheBrokerThatIsAsked) {
    const CMPIBroker* broker = _broker;
    _broker = nullptr;
    const CMPIObjectPath* path = fcip::new_path("root/cimv2", "ZANTO_X", broker);
    ASSERT_TRUE(fcip::is_usable(path));
    EXPECT_TRUE(fcip::is_usable(fcip::new_instance(path, broker)));
    _broker = broker;
    EXPECT_STREQ(fcip::chars_of(fcip::new_string("text")), "text");
}

} // namespace
