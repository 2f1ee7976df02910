// CMPIContext and CMPIEnumeration.
#include "tests/host/host_test.h"

#include "host/broker/enumeration.h"

namespace cmpihost {
namespace {

class Contexts : public InScope {
  protected:
    const CMPIContext* context = scope.context();
};

TEST_F(Contexts, CarryWhatEveryCallIsTold) {
    const CMPIData flags = context->ft->getEntry(context, CMPIInvocationFlags, nullptr);
    EXPECT_EQ(flags.type, CMPI_uint32);
    EXPECT_EQ(flags.value.uint32, 0u);
    EXPECT_EQ(text(context->ft->getEntry(context, CMPIInitNameSpace, nullptr).value.string), "root/cimv2");
    const CMPIData principal = context->ft->getEntry(context, CMPIPrincipal, nullptr);
    EXPECT_EQ(principal.type, CMPI_string);
    EXPECT_NE(text(principal.value.string), "");
    EXPECT_EQ(context->ft->getEntryCount(context, nullptr), 3u);
    CMPIString* name = nullptr;
    EXPECT_EQ(context->ft->getEntryAt(context, 0, &name, nullptr).type, CMPI_uint32);
    EXPECT_EQ(text(name), "CMPIInvocationFlags");
}

TEST_F(Contexts, TakeEntries) {
    EXPECT_EQ(context->ft->addEntry(context, "Mine", reinterpret_cast<const CMPIValue*>("m"), CMPI_chars).rc,
              CMPI_RC_OK);
    EXPECT_EQ(text(context->ft->getEntry(context, "Mine", nullptr).value.string), "m");
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(context->ft->getEntry(context, "Absent", &status).state, CMPI_notFound);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_FOUND);
    EXPECT_EQ(context->ft->getEntryAt(context, 4, nullptr, &status).state, CMPI_notFound);
}

TEST_F(Contexts, LastUntilTheCallEnds) {
    EXPECT_EQ(context->ft->release(const_cast<CMPIContext*>(context)).rc, CMPI_RC_OK);
    EXPECT_EQ(context->ft->getEntryCount(context, nullptr), 3u);
    CMPIContext* clone = context->ft->clone(context, nullptr);
    EXPECT_EQ(clone->ft->getEntryCount(clone, nullptr), 3u);
    EXPECT_EQ(clone->ft->release(clone).rc, CMPI_RC_OK);
    EXPECT_FALSE(is_live(clone));
}

TEST_F(Contexts, EmptyHandlesAreRefused) {
    const CMPIContextFT& ft = *context->ft;
    CMPIValue value{};
    EXPECT_EQ(ft.addEntry(nullptr, "A", &value, CMPI_uint8).rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(ft.getEntry(nullptr, "A", nullptr).state, CMPI_notFound);
    EXPECT_EQ(ft.getEntryAt(nullptr, 0, nullptr, nullptr).state, CMPI_notFound);
    EXPECT_EQ(ft.getEntryCount(nullptr, nullptr), 0u);
    EXPECT_EQ(ft.clone(nullptr, nullptr), nullptr);
    EXPECT_EQ(ft.release(nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
}

// --------------------------------------------------------------------------------------------------- enumerations

class Enumerations : public InScope {
  protected:
    const std::vector<Object> two{{"A", "root/test", std::nullopt, {}, {string_property("P", "a")}},
                                  {"B", "root/test", std::nullopt, {}, {}}};
};

TEST_F(Enumerations, GiveInstancesInOrder) {
    CMPIEnumeration* all = new_enumeration(two, true);
    CMPIStatus status{CMPI_RC_ERROR, nullptr};
    EXPECT_EQ(all->ft->hasNext(all, &status), 1);
    EXPECT_EQ(status.rc, CMPI_RC_OK);
    const CMPIData first = all->ft->getNext(all, nullptr);
    EXPECT_EQ(first.type, CMPI_instance);
    EXPECT_EQ(describe(first.value.inst), two[0]);
    EXPECT_EQ(describe(all->ft->getNext(all, nullptr).value.inst), two[1]);
    EXPECT_EQ(all->ft->hasNext(all, nullptr), 0);
    EXPECT_EQ(all->ft->getNext(all, &status).state, CMPI_notFound);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_NOT_FOUND);
}

TEST_F(Enumerations, GivePaths) {
    CMPIEnumeration* all = new_enumeration({two[1]}, false);
    const CMPIData first = all->ft->getNext(all, nullptr);
    EXPECT_EQ(first.type, CMPI_ref);
    EXPECT_EQ(describe(first.value.ref), two[1]);
}

TEST_F(Enumerations, BecomeArrays) {
    CMPIEnumeration* all = new_enumeration(two, true);
    all->ft->getNext(all, nullptr);
    const CMPIArray* array = all->ft->toArray(all, nullptr);
    EXPECT_EQ(array->ft->getSize(array, nullptr), 2u);
    EXPECT_EQ(array->ft->getSimpleType(array, nullptr), CMPI_instance);
    EXPECT_EQ(describe(array->ft->getElementAt(array, 1, nullptr).value.inst), two[1]);
}

TEST_F(Enumerations, ClonesGoOnAlone) {
    CMPIEnumeration* all = new_enumeration(two, true);
    CMPIEnumeration* clone = all->ft->clone(all, nullptr);
    all->ft->getNext(all, nullptr);
    EXPECT_EQ(all->ft->release(all).rc, CMPI_RC_OK);
    EXPECT_EQ(describe(clone->ft->getNext(clone, nullptr).value.inst), two[0]);
}

TEST_F(Enumerations, EmptyHandlesAreRefused) {
    const CMPIEnumerationFT& ft = *new_enumeration({}, true)->ft;
    CMPIStatus status{CMPI_RC_OK, nullptr};
    EXPECT_EQ(ft.getNext(nullptr, &status).state, CMPI_notFound);
    EXPECT_EQ(status.rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(ft.hasNext(nullptr, nullptr), 0);
    EXPECT_EQ(ft.toArray(nullptr, nullptr), nullptr);
    EXPECT_EQ(ft.clone(nullptr, nullptr), nullptr);
    EXPECT_EQ(ft.release(nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
}

} // namespace
} // namespace cmpihost
