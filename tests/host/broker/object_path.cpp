// CMPIObjectPath.
#include "tests/host/host_test.h"

namespace cmpihost {
namespace {

class ObjectPaths : public InScope {
  protected:
    CMPIrc add_uint32(const char* name, CMPIUint32 number) {
        CMPIValue value{};
        value.uint32 = number;
        return CMAddKey(path, name, &value, CMPI_uint32).rc;
    }

    CMPIObjectPath* path = new_object_path("Class");
};

TEST_F(ObjectPaths, CarryNamesAsGiven) {
    EXPECT_EQ(text(CMGetNameSpace(path, nullptr)), "root/test");
    EXPECT_EQ(text(CMGetClassName(path, nullptr)), "Class");
    EXPECT_EQ(text(CMGetHostname(path, nullptr)), "");
    EXPECT_FALSE(describe(path).host.has_value());
    EXPECT_EQ(path->ft->setNameSpace(path, "other").rc, CMPI_RC_OK);
    EXPECT_EQ(path->ft->setClassName(path, "Other").rc, CMPI_RC_OK);
    EXPECT_EQ(CMSetHostname(path, "switch").rc, CMPI_RC_OK);
    EXPECT_EQ(text(CMGetNameSpace(path, nullptr)), "other");
    EXPECT_EQ(text(CMGetClassName(path, nullptr)), "Other");
    EXPECT_EQ(text(CMGetHostname(path, nullptr)), "switch");
    EXPECT_EQ(describe(path), (Object{"Other", "other", "switch", {}, {}}));
}

TEST_F(ObjectPaths, NeedAClassNameButNoNamespace) {
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(CMNewObjectPath(broker(), "root/test", nullptr, &status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_PARAMETER);
    const CMPIObjectPath* bare = CMNewObjectPath(broker(), nullptr, "C", &status);
    EXPECT_EQ(status.rc, CMPI_RC_OK);
    EXPECT_EQ(text(CMGetNameSpace(bare, nullptr)), "");
}

TEST_F(ObjectPaths, KeysKeepOrderTypeAndValue) {
    EXPECT_EQ(CMAddKey(path, "Name", "n", CMPI_chars).rc, CMPI_RC_OK);
    EXPECT_EQ(add_uint32("Number", 5), CMPI_RC_OK);
    EXPECT_EQ(CMGetKeyCount(path, nullptr), 2u);
    CMPIString* name = nullptr;
    CMPIStatus status{CMPI_RC_ERROR, nullptr};
    const CMPIData first = CMGetKeyAt(path, 0, &name, &status);
    EXPECT_EQ(status.rc, CMPI_RC_OK);
    EXPECT_EQ(text(name), "Name");
    EXPECT_EQ(first.type, CMPI_string);
    EXPECT_EQ(first.state, CMPI_goodValue);
    EXPECT_EQ(text(first.value.string), "n");
    const CMPIData second = CMGetKeyAt(path, 1, nullptr, nullptr);
    EXPECT_EQ(second.type, CMPI_uint32);
    EXPECT_EQ(second.value.uint32, 5u);
}

TEST_F(ObjectPaths, KeysAreFoundWithoutRegardToCase) {
    add_uint32("Number", 5);
    EXPECT_EQ(CMGetKey(path, "nUMBER", nullptr).value.uint32, 5u);
}

TEST_F(ObjectPaths, AddingAKeyAgainReplacesItInPlace) {
    add_uint32("A", 1);
    add_uint32("B", 2);
    EXPECT_EQ(CMAddKey(path, "a", "text", CMPI_chars).rc, CMPI_RC_OK);
    EXPECT_EQ(describe(path).keys,
              (std::vector<Property>{string_property("A", "text"), uint_property("B", 2, "uint32")}));
}

TEST_F(ObjectPaths, AbsentKeysAreNotFound) {
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(CMGetKey(path, "Name", &status).state, CMPI_notFound);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_FOUND);
    status.rc = CMPI_RC_OK;
    EXPECT_EQ(CMGetKeyAt(path, 0, nullptr, &status).state, CMPI_notFound);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_FOUND);
    EXPECT_EQ(CMGetKey(path, nullptr, &status).state, CMPI_notFound);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

TEST_F(ObjectPaths, KeysAreNeitherNullNorArraysNorInstances) {
    CMPIValue value{};
    EXPECT_EQ(CMAddKey(path, "K", nullptr, CMPI_chars).rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(CMAddKey(path, "K", &value, CMPI_ref).rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(CMAddKey(path, nullptr, "v", CMPI_chars).rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(CMAddKey(path, "", "v", CMPI_chars).rc, CMPI_RC_ERR_INVALID_PARAMETER);
    value.inst = new_instance();
    EXPECT_EQ(CMAddKey(path, "K", &value, CMPI_instance).rc, CMPI_RC_ERR_INVALID_DATA_TYPE);
    value.array = broker()->eft->newArray(broker(), 1, CMPI_uint8, nullptr);
    EXPECT_EQ(CMAddKey(path, "K", &value, CMPI_ARRAY | CMPI_uint8).rc, CMPI_RC_ERR_INVALID_DATA_TYPE);
    EXPECT_EQ(CMAddKey(path, "K", &value, CMPI_ptr).rc, CMPI_RC_ERR_INVALID_DATA_TYPE);
    EXPECT_EQ(CMGetKeyCount(path, nullptr), 0u);
}

TEST_F(ObjectPaths, KeysThatPointNowhereAreRefused) {
    CMPIValue value{};
    value.ref = wild_pointer<CMPIObjectPath>();
    EXPECT_EQ(CMAddKey(path, "K", &value, CMPI_ref).rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(CMAddKey(path, "K", &value, CMPI_instance).rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(CMGetKeyCount(path, nullptr), 0u);
}

TEST_F(ObjectPaths, TakeNamesFromAnotherPath) {
    CMPIObjectPath* source = CMNewObjectPath(broker(), "root/source", "Source", nullptr);
    CMSetHostname(source, "host");
    EXPECT_EQ(path->ft->setNameSpaceFromObjectPath(path, source).rc, CMPI_RC_OK);
    EXPECT_EQ(describe(path), (Object{"Class", "root/source", std::nullopt, {}, {}}));
    EXPECT_EQ(path->ft->setHostAndNameSpaceFromObjectPath(path, source).rc, CMPI_RC_OK);
    EXPECT_EQ(describe(path), (Object{"Class", "root/source", "host", {}, {}}));
    EXPECT_EQ(path->ft->setNameSpaceFromObjectPath(path, nullptr).rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(path->ft->setHostAndNameSpaceFromObjectPath(path, wild_pointer<CMPIObjectPath>()).rc,
              CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(ObjectPaths, ReadAsText) {
    CMSetHostname(path, "host");
    CMAddKey(path, "Name", "a\"b\\c", CMPI_chars);
    add_uint32("Number", 5);
    EXPECT_EQ(text(path->ft->toString(path, nullptr)), R"(//host/root/test:Class.Name="a\"b\\c",Number=5)");
}

TEST_F(ObjectPaths, ClonesAreIndependent) {
    add_uint32("A", 1);
    CMPIObjectPath* clone = path->ft->clone(path, nullptr);
    CMSetHostname(clone, "clone");
    EXPECT_FALSE(describe(path).host.has_value());
    EXPECT_EQ(path->ft->release(path).rc, CMPI_RC_OK);
    EXPECT_FALSE(is_live(path));
    EXPECT_EQ(describe(clone), (Object{"Class", "root/test", "clone", {uint_property("A", 1, "uint32")}, {}}));
    EXPECT_EQ(clone->ft->release(clone).rc, CMPI_RC_OK);
}

TEST_F(ObjectPaths, NullArgumentsAreRefused) {
    EXPECT_EQ(path->ft->setNameSpace(path, nullptr).rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(path->ft->setClassName(path, nullptr).rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(path->ft->setHostname(path, nullptr).rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

TEST_F(ObjectPaths, EmptyHandlesAreRefused) {
    const CMPIObjectPathFT& ft = *path->ft;
    const CMPIObjectPath emptied{nullptr, &ft};
    for (const CMPIObjectPath* none : {static_cast<const CMPIObjectPath*>(nullptr), &emptied}) {
        CMPIStatus status{CMPI_RC_OK, nullptr};
        const auto refused = [&status] {
            const bool invalid = status.rc == CMPI_RC_ERR_INVALID_HANDLE;
            status.rc = CMPI_RC_OK;
            return invalid;
        };
        EXPECT_TRUE(ft.clone(none, &status) == nullptr && refused());
        EXPECT_TRUE(ft.getNameSpace(none, &status) == nullptr && refused());
        EXPECT_TRUE(ft.getHostname(none, &status) == nullptr && refused());
        EXPECT_TRUE(ft.getClassName(none, &status) == nullptr && refused());
        EXPECT_TRUE(ft.toString(none, &status) == nullptr && refused());
        EXPECT_TRUE(ft.getKey(none, "K", &status).state == CMPI_notFound && refused());
        EXPECT_TRUE(ft.getKeyAt(none, 0, nullptr, &status).state == CMPI_notFound && refused());
        EXPECT_TRUE(ft.getKeyCount(none, &status) == 0 && refused());
        EXPECT_EQ(ft.setNameSpace(none, "n").rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(ft.setHostname(none, "n").rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(ft.setClassName(none, "n").rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(ft.addKey(none, "n", reinterpret_cast<const CMPIValue*>("v"), CMPI_chars).rc,
                  CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(ft.setNameSpaceFromObjectPath(none, path).rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(ft.setHostAndNameSpaceFromObjectPath(none, path).rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(ft.release(const_cast<CMPIObjectPath*>(none)).rc, CMPI_RC_ERR_INVALID_HANDLE);
    }
}

} // namespace
} // namespace cmpihost
