// CMPIInstance, its property filter included.
#include "host/broker/scope.h"
#include "tests/host/host_test.h"

#include <array>

namespace cmpihost {
namespace {

class Instances : public InScope {
  protected:
    void set(const char* name, CMPIUint32 number) {
        CMPIValue value{};
        value.uint32 = number;
        EXPECT_EQ(CMSetProperty(instance, name, &value, CMPI_uint32).rc, CMPI_RC_OK);
    }

    std::vector<std::string> names() {
        std::vector<std::string> all;
        for (const Property& property : describe(instance).properties)
            all.push_back(property.name);
        return all;
    }

    using Names = std::vector<std::string>;
    CMPIInstance* instance = new_instance("Class");
};

TEST_F(Instances, TakeNamesAndKeysOfTheirPath) {
    CMPIObjectPath* path = new_object_path("Class");
    CMSetHostname(path, "host");
    CMAddKey(path, "Name", "n", CMPI_chars);
    const CMPIInstance* made = CMNewInstance(broker(), path, nullptr);
    EXPECT_EQ(describe(made), (Object{"Class", "root/test", "host", {string_property("Name", "n")}, {}}));
    EXPECT_EQ(describe(made->ft->getObjectPath(made, nullptr)), describe(path));
}

TEST_F(Instances, NeedALivePath) {
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(CMNewInstance(broker(), nullptr, &status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(CMNewInstance(broker(), wild_pointer<CMPIObjectPath>(), &status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(Instances, PropertiesKeepTheirOrder) {
    set("C", 3);
    set("A", 1);
    EXPECT_EQ(instance->ft->getPropertyCount(instance, nullptr), 2u);
    CMPIString* name = nullptr;
    EXPECT_EQ(instance->ft->getPropertyAt(instance, 0, &name, nullptr).value.uint32, 3u);
    EXPECT_EQ(text(name), "C");
    EXPECT_EQ(instance->ft->getPropertyAt(instance, 1, &name, nullptr).value.uint32, 1u);
    EXPECT_EQ(text(name), "A");
}

TEST_F(Instances, SettingAPropertyAgainReplacesItInPlace) {
    set("First", 1);
    set("Second", 2);
    EXPECT_EQ(CMSetProperty(instance, "FIRST", "text", CMPI_chars).rc, CMPI_RC_OK);
    EXPECT_EQ(describe(instance).properties,
              (std::vector<Property>{string_property("First", "text"), uint_property("Second", 2, "uint32")}));
}

TEST_F(Instances, PropertiesAreFoundWithoutRegardToCase) {
    set("Name", 1);
    EXPECT_EQ(CMGetProperty(instance, "nAME", nullptr).value.uint32, 1u);
}

TEST_F(Instances, AbsentPropertiesAreNotFound) {
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(CMGetProperty(instance, "P", &status).state, CMPI_notFound);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NO_SUCH_PROPERTY);
    status.rc = CMPI_RC_OK;
    EXPECT_EQ(instance->ft->getPropertyAt(instance, 0, nullptr, &status).state, CMPI_notFound);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NO_SUCH_PROPERTY);
    EXPECT_EQ(CMGetProperty(instance, nullptr, &status).state, CMPI_notFound);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

TEST_F(Instances, ANameIsNeeded) {
    EXPECT_EQ(CMSetProperty(instance, nullptr, "v", CMPI_chars).rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(CMSetProperty(instance, "", "v", CMPI_chars).rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

// --------------------------------------------------------------------------------------------------------- filter

TEST_F(Instances, AFilterLetsThroughWhatItNamesWithoutRegardToCase) {
    std::array properties{"b", static_cast<const char*>(nullptr)};
    std::array no_keys{static_cast<const char*>(nullptr)};
    EXPECT_EQ(CMSetPropertyFilter(instance, properties.data(), no_keys.data()).rc, CMPI_RC_OK);
    set("A", 1);
    set("B", 2);
    EXPECT_EQ(names(), Names{"B"});
    EXPECT_EQ(CMGetProperty(instance, "A", nullptr).state, CMPI_notFound);
}

TEST_F(Instances, AFilterRemovesWhatWasSetBefore) {
    set("A", 1);
    set("B", 2);
    std::array properties{"B", static_cast<const char*>(nullptr)};
    CMSetPropertyFilter(instance, properties.data(), nullptr);
    EXPECT_EQ(names(), Names{"B"});
}

TEST_F(Instances, AFilterKeepsKeys) {
    set("K", 1);
    std::array properties{"B", static_cast<const char*>(nullptr)};
    std::array keys{"k", "L", static_cast<const char*>(nullptr)};
    CMSetPropertyFilter(instance, properties.data(), keys.data());
    set("A", 1);
    set("L", 2);
    EXPECT_EQ(names(), (Names{"K", "L"}));
}

TEST_F(Instances, ANullFilterLetsEverythingThrough) {
    std::array keys{"K", static_cast<const char*>(nullptr)};
    set("A", 1);
    CMSetPropertyFilter(instance, nullptr, keys.data());
    set("B", 2);
    EXPECT_EQ(names(), (Names{"A", "B"}));
}

TEST_F(Instances, AnEmptyFilterLetsNothingThrough) {
    std::array none{static_cast<const char*>(nullptr)};
    set("A", 1);
    CMSetPropertyFilter(instance, none.data(), none.data());
    set("B", 2);
    EXPECT_EQ(names(), Names{});
}

TEST_F(Instances, ANewFilterReplacesTheOld) {
    std::array none{static_cast<const char*>(nullptr)};
    CMSetPropertyFilter(instance, none.data(), none.data());
    CMSetPropertyFilter(instance, nullptr, nullptr);
    set("A", 1);
    EXPECT_EQ(names(), Names{"A"});
}

TEST_F(Instances, AFilteredPropertyIsCheckedAllTheSame) {
    std::array none{static_cast<const char*>(nullptr)};
    CMSetPropertyFilter(instance, none.data(), none.data());
    CMPIValue value{};
    value.ref = wild_pointer<CMPIObjectPath>();
    EXPECT_EQ(CMSetProperty(instance, "R", &value, CMPI_ref).rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(CMSetProperty(instance, nullptr, &value, CMPI_ref).rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

// ----------------------------------------------------------------------------------------------- path, clone, null

TEST_F(Instances, TakeANewPathAndKeepTheirProperties) {
    set("A", 1);
    CMPIObjectPath* path = CMNewObjectPath(broker(), "root/new", "New", nullptr);
    CMAddKey(path, "K", "v", CMPI_chars);
    EXPECT_EQ(instance->ft->setObjectPath(instance, path).rc, CMPI_RC_OK);
    EXPECT_EQ(
        describe(instance),
        (Object{"New", "root/new", std::nullopt, {string_property("K", "v")}, {uint_property("A", 1, "uint32")}}));
    EXPECT_EQ(instance->ft->setObjectPath(instance, nullptr).rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(instance->ft->setObjectPath(instance, wild_pointer<CMPIObjectPath>()).rc, CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(Instances, ClonesAreIndependentAndKeepTheFilter) {
    std::array properties{"A", static_cast<const char*>(nullptr)};
    CMSetPropertyFilter(instance, properties.data(), nullptr);
    set("A", 1);
    CMPIInstance* clone = instance->ft->clone(instance, nullptr);
    set("A", 2);
    CMSetProperty(clone, "B", "dropped", CMPI_chars);
    EXPECT_EQ(instance->ft->release(instance).rc, CMPI_RC_OK);
    EXPECT_EQ(describe(clone).properties, std::vector<Property>{uint_property("A", 1, "uint32")});
}

TEST_F(Instances, EmptyHandlesAreRefused) {
    const CMPIInstanceFT& ft = *instance->ft;
    const CMPIInstance emptied{nullptr, &ft};
    for (const CMPIInstance* none : {static_cast<const CMPIInstance*>(nullptr), &emptied}) {
        CMPIStatus status{CMPI_RC_OK, nullptr};
        const auto refused = [&status] {
            const bool invalid = status.rc == CMPI_RC_ERR_INVALID_HANDLE;
            status.rc = CMPI_RC_OK;
            return invalid;
        };
        EXPECT_TRUE(ft.clone(none, &status) == nullptr && refused());
        EXPECT_TRUE(ft.getObjectPath(none, &status) == nullptr && refused());
        EXPECT_TRUE(ft.getProperty(none, "P", &status).state == CMPI_notFound && refused());
        EXPECT_TRUE(ft.getPropertyAt(none, 0, nullptr, &status).state == CMPI_notFound && refused());
        EXPECT_TRUE(ft.getPropertyCount(none, &status) == 0 && refused());
        CMPIValue value{};
        EXPECT_EQ(ft.setProperty(none, "P", &value, CMPI_uint8).rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(ft.setPropertyFilter(none, nullptr, nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(ft.setObjectPath(none, new_object_path()).rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(ft.release(const_cast<CMPIInstance*>(none)).rc, CMPI_RC_ERR_INVALID_HANDLE);
    }
}

TEST_F(Instances, GetRoomForAsManyPropertiesAsTheLastHadUpToALimit) {
    const Store& store = State::innermost()->store;
    set("P0", 0);
    CMReturnInstance(scope.result(), instance);
    EXPECT_EQ(store.likely_properties, 1u);
    for (CMPIUint32 i = 1; i < 60; ++i)
        set(("P" + std::to_string(i)).c_str(), i);
    CMReturnInstance(scope.result(), instance);
    EXPECT_EQ(store.likely_properties, 48u);
}

} // namespace
} // namespace cmpihost
