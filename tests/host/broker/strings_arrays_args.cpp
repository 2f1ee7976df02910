// CMPIString, CMPIArray, CMPIArgs.
#include "tests/host/host_test.h"

namespace cmpihost {
namespace {

class Strings : public InScope {};

TEST_F(Strings, CopyTheirText) {
    std::string original = "text";
    const CMPIString* string = CMNewString(broker(), original.c_str(), nullptr);
    original = "gone";
    EXPECT_EQ(text(string), "text");
}

TEST_F(Strings, NeedAText) {
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(CMNewString(broker(), nullptr, &status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

TEST_F(Strings, ClonesOutliveTheOriginal) {
    CMPIString* string = CMNewString(broker(), "text", nullptr);
    CMPIString* clone = string->ft->clone(string, nullptr);
    EXPECT_EQ(string->ft->release(string).rc, CMPI_RC_OK);
    EXPECT_EQ(text(clone), "text");
    EXPECT_EQ(clone->ft->release(clone).rc, CMPI_RC_OK);
}

TEST_F(Strings, EmptyHandlesAreRefused) {
    const CMPIStringFT& ft = *CMNewString(broker(), "", nullptr)->ft;
    const CMPIString emptied{nullptr, &ft};
    for (const CMPIString* none : {static_cast<const CMPIString*>(nullptr), &emptied}) {
        CMPIStatus status{CMPI_RC_OK, nullptr};
        EXPECT_EQ(ft.getCharPtr(none, &status), nullptr);
        EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_HANDLE);
        EXPECT_EQ(ft.clone(none, nullptr), nullptr);
        EXPECT_EQ(ft.release(const_cast<CMPIString*>(none)).rc, CMPI_RC_ERR_INVALID_HANDLE);
    }
}

// --------------------------------------------------------------------------------------------------------- arrays

class Arrays : public InScope {
  protected:
    CMPIArray* make(CMPICount size, CMPIType type, CMPIStatus* status = nullptr) {
        return broker()->eft->newArray(broker(), size, type, status);
    }
};

TEST_F(Arrays, StartWithNulls) {
    const CMPIArray* array = make(2, CMPI_sint32);
    EXPECT_EQ(array->ft->getSize(array, nullptr), 2u);
    EXPECT_EQ(array->ft->getSimpleType(array, nullptr), CMPI_sint32);
    for (const CMPICount i : {0u, 1u}) {
        const CMPIData data = array->ft->getElementAt(array, i, nullptr);
        EXPECT_EQ(data.type, CMPI_sint32);
        EXPECT_EQ(data.state, CMPI_nullValue);
    }
}

TEST_F(Arrays, KeepElements) {
    const CMPIArray* array = make(2, CMPI_sint32);
    CMPIValue value{};
    value.sint32 = -5;
    EXPECT_EQ(array->ft->setElementAt(array, 1, &value, CMPI_sint32).rc, CMPI_RC_OK);
    EXPECT_EQ(array->ft->getElementAt(array, 1, nullptr).value.sint32, -5);
    EXPECT_EQ(array->ft->getElementAt(array, 1, nullptr).state, CMPI_goodValue);
    EXPECT_EQ(array->ft->setElementAt(array, 1, nullptr, CMPI_null).rc, CMPI_RC_OK);
    EXPECT_EQ(array->ft->getElementAt(array, 1, nullptr).state, CMPI_nullValue);
}

TEST_F(Arrays, OfCharsAreOfStrings) {
    const CMPIArray* array = make(1, CMPI_chars);
    EXPECT_EQ(array->ft->getSimpleType(array, nullptr), CMPI_string);
    EXPECT_EQ(array->ft->setElementAt(array, 0, reinterpret_cast<const CMPIValue*>("t"), CMPI_chars).rc, CMPI_RC_OK);
    EXPECT_EQ(text(array->ft->getElementAt(array, 0, nullptr).value.string), "t");
}

TEST_F(Arrays, HaveOneType) {
    const CMPIArray* array = make(1, CMPI_uint8);
    CMPIValue value{};
    EXPECT_EQ(array->ft->setElementAt(array, 0, &value, CMPI_uint16).rc, CMPI_RC_ERR_TYPE_MISMATCH);
    EXPECT_EQ(array->ft->getElementAt(array, 0, nullptr).state, CMPI_nullValue);
}

TEST_F(Arrays, HaveBounds) {
    const CMPIArray* array = make(1, CMPI_uint8);
    CMPIValue value{};
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(array->ft->setElementAt(array, 1, &value, CMPI_uint8).rc, CMPI_RC_ERR_INVALID_PARAMETER);
    EXPECT_EQ(array->ft->getElementAt(array, 1, &status).state, CMPI_notFound);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_FOUND);
    EXPECT_EQ(make(0, CMPI_uint8)->ft->getSize(make(0, CMPI_uint8), nullptr), 0u);
}

TEST_F(Arrays, OfImpossibleTypesOrSizesAreRefused) {
    for (const CMPIType type : {CMPI_null, CMPI_args, CMPI_ptr, static_cast<CMPIType>(CMPI_ARRAY | CMPI_uint8)}) {
        CMPIStatus status{CMPI_RC_OK, nullptr};
        EXPECT_EQ(make(1, type, &status), nullptr);
        EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_DATA_TYPE);
    }
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(make(0xffffffff, CMPI_uint8, &status), nullptr);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

TEST_F(Arrays, ClonesAreIndependent) {
    CMPIArray* array = make(1, CMPI_uint8);
    CMPIValue value{};
    value.uint8 = 1;
    array->ft->setElementAt(array, 0, &value, CMPI_uint8);
    const CMPIArray* clone = array->ft->clone(array, nullptr);
    EXPECT_EQ(array->ft->release(array).rc, CMPI_RC_OK);
    EXPECT_EQ(clone->ft->getElementAt(clone, 0, nullptr).value.uint8, 1);
}

TEST_F(Arrays, EmptyHandlesAreRefused) {
    const CMPIArrayFT& ft = *make(1, CMPI_uint8)->ft;
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(ft.getSize(nullptr, &status), 0u);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(ft.getSimpleType(nullptr, nullptr), CMPI_null);
    EXPECT_EQ(ft.getElementAt(nullptr, 0, nullptr).state, CMPI_notFound);
    CMPIValue value{};
    EXPECT_EQ(ft.setElementAt(nullptr, 0, &value, CMPI_uint8).rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(ft.clone(nullptr, nullptr), nullptr);
    EXPECT_EQ(ft.release(nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
}

// ----------------------------------------------------------------------------------------------------------- args

class Args : public InScope {};

TEST_F(Args, KeepNamedValues) {
    CMPIArgs* args = broker()->eft->newArgs(broker(), nullptr);
    CMPIValue value{};
    value.uint16 = 3;
    EXPECT_EQ(args->ft->addArg(args, "Count", &value, CMPI_uint16).rc, CMPI_RC_OK);
    EXPECT_EQ(args->ft->addArg(args, "Name", reinterpret_cast<const CMPIValue*>("n"), CMPI_chars).rc, CMPI_RC_OK);
    EXPECT_EQ(args->ft->getArgCount(args, nullptr), 2u);
    EXPECT_EQ(args->ft->getArg(args, "COUNT", nullptr).value.uint16, 3);
    CMPIString* name = nullptr;
    EXPECT_EQ(text(args->ft->getArgAt(args, 1, &name, nullptr).value.string), "n");
    EXPECT_EQ(text(name), "Name");
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(args->ft->getArg(args, "Absent", &status).state, CMPI_notFound);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_FOUND);
    const CMPIArgs* clone = args->ft->clone(args, nullptr);
    EXPECT_EQ(args->ft->release(args).rc, CMPI_RC_OK);
    EXPECT_EQ(clone->ft->getArgCount(clone, nullptr), 2u);
}

TEST_F(Args, EmptyHandlesAreRefused) {
    const CMPIArgsFT& ft = *broker()->eft->newArgs(broker(), nullptr)->ft;
    CMPIValue value{};
    EXPECT_EQ(ft.addArg(nullptr, "A", &value, CMPI_uint8).rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(ft.getArg(nullptr, "A", nullptr).state, CMPI_notFound);
    EXPECT_EQ(ft.getArgAt(nullptr, 0, nullptr, nullptr).state, CMPI_notFound);
    EXPECT_EQ(ft.getArgCount(nullptr, nullptr), 0u);
    EXPECT_EQ(ft.clone(nullptr, nullptr), nullptr);
    EXPECT_EQ(ft.release(nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
}

} // namespace
} // namespace cmpihost
