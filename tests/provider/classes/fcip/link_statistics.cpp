#include "provider/classes/fcip/link_statistics.h"

#include "tests/support/class_test.h"
#include "tests/support/front_broker.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace test {

namespace {

class LinkStatistics : public ClassTest {
  protected:
    CMPIInstance* empty_instance() {
        CMPIObjectPath* path = CMNewObjectPath(_broker, name_space, made_up_class, nullptr);
        return CMNewInstance(_broker, path, nullptr);
    }

    CMPIInstance* populate(CMPIInstance* instance, const FcipLinkErrors& errors) {
        return call([&] { return populate_fcip_statistics(instance, &errors); });
    }
};

TEST_F(LinkStatistics, SetsTheNineCountersInOrder) {
    FcipLinkErrors errors{};
    std::iota(std::begin(errors.bytes), std::end(errors.bytes), std::uint8_t{0});
    const Rows expected = {
        {"FcipLossofFcSynchs", "uint64", std::to_string(0x08090A0B0C0D0E0F)},
        {"FcipSfNotRcv", "uint64", std::to_string(0x1011121314151617)},
        {"FcipSfRespNotRcv", "uint64", std::to_string(0x18191A1B1C1D1E1F)},
        {"FcipSfRespMismatch", "uint64", std::to_string(0x2021222324252627)},
        {"FcipSfInvalidNonce", "uint64", std::to_string(0x28292A2B2C2D2E2F)},
        {"FcipDuplicateSfRcv", "uint64", std::to_string(0x3031323334353637)},
        {"FcipSfInvalidWWN", "uint64", std::to_string(0x38393A3B3C3D3E3F)},
        {"FcipBB2LkaTimeOut", "uint64", std::to_string(0x4041424344454647)},
        {"FcipSntpTimeStampExp", "uint64", std::to_string(0x48494A4B4C4D4E4F)},
    };
    CMPIInstance* instance = empty_instance();
    EXPECT_EQ(populate(instance, errors), instance);
    EXPECT_EQ(properties(instance), expected);
    EXPECT_EQ(trace, entering("populate_fcip_statistics") + exiting("populate_fcip_statistics"));
}

TEST_F(LinkStatistics, Bytes00000001_00000002Are4294967298) {
    FcipLinkErrors errors{};
    errors.bytes[11] = 1;
    errors.bytes[15] = 2;
    EXPECT_EQ(value_of(populate(empty_instance(), errors), "FcipLossofFcSynchs"), "4294967298");
}

TEST_F(LinkStatistics, CountersUseAll64Bits) {
    FcipLinkErrors errors{};
    std::fill(errors.bytes, errors.bytes + sizeof errors.bytes, std::uint8_t{0xFF});
    EXPECT_EQ(value_of(populate(empty_instance(), errors), "FcipSntpTimeStampExp"), "18446744073709551615");
}

TEST_F(LinkStatistics, CountersNeedNoAlignment) {
    alignas(8) std::uint8_t block[1 + sizeof(FcipLinkErrors)] = {};
    block[1 + 23] = 5;
    const auto* errors = reinterpret_cast<const FcipLinkErrors*>(block + 1);
    EXPECT_EQ(value_of(populate(empty_instance(), *errors), "FcipSfNotRcv"), "5");
}

TEST_F(LinkStatistics, ANullInstanceIsReturnedAsNull) {
    EXPECT_EQ(populate(nullptr, FcipLinkErrors{}), nullptr);
    EXPECT_EQ(trace, entering("populate_fcip_statistics"));
}

TEST_F(LinkStatistics, AnInstanceWithoutHandleIsReturnedUnchanged) {
    const FrontBroker front;
    CMPIInstance* instance = FrontBroker::instance_without_handle();
    EXPECT_EQ(populate(instance, FcipLinkErrors{}), instance);
    EXPECT_EQ(trace, entering("populate_fcip_statistics"));
}

} // namespace

} // namespace test
